// UtConvertDwg2Dxf: binary DXF by own means, DWG by the external program that the session names.
#include "ut.h"

#include "convert/binary_dxf.h"
#include "services/failure.h"
#include "services/session.h"
#include "services/system_path.h"

#include <cerrno>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>

extern char** environ; // NOLINT: the system's

using namespace host;

static constexpr int errorNotApplicable = 3011;
static constexpr int errorWrite = 9000;
static constexpr int errorNotOpened = 9001;
static constexpr int errorEndOfFile = 9003;

/// Converts `view` into the file `target`, and removes what a failure leaves of it.
static int convertBinary(const UT_FILE_VIEW& view, const UtCString& target) {
    FILE* out = UtFileOpen(target, "wb");
    if (!out) return errorWrite;
    const bool converted = binaryDxfToText({view.data, view.size}, out);
    const bool closed = UtFileClose(out) == 0;
    if (converted && closed) return 0;
    std::remove(systemPath(target).c_str());
    return closed ? errorEndOfFile : errorWrite;
}

static bool runProgram(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    pid_t child = 0;
    if (::posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return false;
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// A name that a program can't take for an option.
static std::string asArgument(const UtCString& name) {
    const std::string path = systemPath(name);
    return !path.empty() && path.front() == '-' ? "./" + path : path;
}

static int convertByProgram(const UtCString& source, const UtCString& target) {
    std::istringstream command(session().dwgConverter);
    std::vector<std::string> words;
    for (std::string word; command >> word;) words.push_back(word);
    if (words.empty()) return errorNotApplicable;
    words.push_back(asArgument(source));
    words.push_back(asArgument(target));
    if (runProgram(words) && UtIsFile(target)) return 0;
    std::remove(systemPath(target).c_str());
    return errorNotApplicable;
}

static bool isBinaryDxf(std::string_view content) {
    return content.substr(0, 18) == binaryDxfSentinel.substr(0, 18);
}

long long UtConvertedByte(const UtCString& source, long line) {
    FILE* in = UtFileOpen(source, "rb");
    if (!in) return -1;
    UT_FILE_VIEW view;
    const bool mapped = UtFileMap(in, view) == 0;
    const std::string_view content(mapped && view.data ? view.data : "", mapped ? view.size : 0);
    const long long offset =
        isBinaryDxf(content) ? static_cast<long long>(binaryDxfOffset(content, line / 2)) : -1;
    if (mapped) UtFileUnmap(view);
    UtFileClose(in);
    return offset;
}

int UtConvertDwg2Dxf(const UtCString& source, const UtCString& target) {
    if (callFails()) return errorNotApplicable;
    FILE* in = UtFileOpen(source, "rb");
    if (!in) return errorNotOpened;
    UT_FILE_VIEW view;
    const bool mapped = UtFileMap(in, view) == 0;
    const std::string_view content(view.data ? view.data : "", view.size);
    const bool binary = isBinaryDxf(content);
    int error = errorNotOpened;
    if (mapped && binary)
        error = convertBinary(view, target);
    else if (mapped)
        error = convertByProgram(source, target);
    UtFileUnmap(view);
    UtFileClose(in);
    return error;
}
