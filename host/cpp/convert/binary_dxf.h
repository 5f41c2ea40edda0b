// Binary DXF and its text form.
//
// A binary file is a sentinel of 22 bytes and then groups to the end: a code, little endian, and a value
// whose width follows from the code. Files up to AC1009 write codes in one byte, 255 announcing one of two
// bytes; later ones write two bytes always.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

namespace host {

/// What the first line of a binary DXF file begins with.
inline constexpr std::string_view binaryDxfSentinel{"AutoCAD Binary DXF\r\n\x1a\0", 22};

enum class DxfValue { Text, Double, Int16, Int32, Int64, Bool, Chunk, Unknown };

/// Kind of value behind a group code; Unknown for codes whose width no file tells.
DxfValue dxfValueKind(int code);

/// Writes the binary file's groups as text DXF. A file that is cut or damaged gives the groups in front of
/// the damage; its reader will find no end. False when not even one group was found or writing failed.
bool binaryDxfToText(std::string_view bytes, std::FILE* out);

/// Offset behind as many whole groups at the start of a binary file, at most all of them.
std::size_t binaryDxfOffset(std::string_view bytes, long groups);

/// Writes text DXF as a binary file of the version that its header names. Comments are left out. False for
/// a text that isn't made of groups, and when writing failed.
bool textDxfToBinary(std::string_view text, std::FILE* out);

/// Turns a text DXF file into the binary one of the same name, which takes its place once it is whole. Empty,
/// or what went wrong; then the text stays.
std::string makeBinaryDxf(const std::string& path);

} // namespace host
