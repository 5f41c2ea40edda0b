// What a file is, judged by its first bytes, and in words why it can't be read or written.
#pragma once

#include <string>

namespace tool {

/// The kinds that are told apart. Anything without a mark of its own counts as text, and so as a DXF file.
enum class FileKind { Text, BinaryDxf, Dwg, DrawingFile, Other };

struct FileLook {
    FileKind kind = FileKind::Text;
    std::string name; ///< in words, "a PNG picture"; empty for Text
};

/// Looks at the first bytes of a file. Text when it can't be opened.
FileLook lookAtFile(const std::string& path);

/// Why `path` can't be read as a drawing, with the path and the system's reason ("plan.dxf: no such file");
/// empty when it may be tried. Says what the file is where it is something else: a folder, a picture, an
/// empty file, a DWG when no converter is named.
std::string whyNotReadable(const std::string& path);

/// The system's reason why no file can be made at `target`; empty when none is known.
std::string whyNotWritable(const std::string& target);

/// "torva-dxf: input and output are one file" and its like: why a file that is to be `purpose` ("dxf", "tdw",
/// "picture" or "mesh") may not go to `target`; empty when it may. Refused are the input itself under
/// whatever name, and endings that belong to another kind of file. "-" and what isn't a plain file may always
/// be written to.
std::string whyNotTarget(const std::string& input, const std::string& target, const std::string& purpose);

} // namespace tool
