// Files from text to binary.
#include "convert/binary_dxf.h"

#include "store/replace.h"
#include "ut.h"

namespace host {

/// The binary form of a mapped text, written to a file of its own.
static bool writeBinary(const UT_FILE_VIEW& view, const std::string& path) {
    std::FILE* out = std::fopen(path.c_str(), "wb");
    if (!out) return false;
    const bool done = textDxfToBinary({view.data ? view.data : "", view.size}, out);
    return std::fclose(out) == 0 && done;
}

std::string makeBinaryDxf(const std::string& path) {
    FILE* in = UtFileOpen(path, "rb");
    UT_FILE_VIEW view;
    if (!in || UtFileMap(in, view) != 0) {
        if (in) UtFileClose(in);
        return "the text form can't be read again";
    }
    ReplacementFile target(path);
    const bool done = writeBinary(view, target.path());
    UtFileUnmap(view);
    UtFileClose(in);
    return done ? target.commit() : "the binary form can't be written";
}

} // namespace host
