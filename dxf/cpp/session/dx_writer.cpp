#include "dx_writer.h"

#include "../config/config_state.h"
#include "dx_documents.h"
#include "dx_messages.h"
#include "dx_protocol.h"
#include "session_state.h"
#include "ut.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>

namespace {

constexpr int WRITE_FAILED = 9000;
constexpr int OPEN_FAILED = 9001;
constexpr std::size_t STREAM_BUFFER = 1U << 20;
/// Longest number: 309 digits in front of the point, a sign, the point and the decimals.
constexpr int MAX_DECIMALS = 99;

FILE* currentStream() {
    return DxDocuments.currentStream();
}

/// The code line, right-aligned in three columns, with its line feed. Gives the end.
char* putCode(char* at, int code) {
    char digits[12];
    char* end = std::to_chars(digits, std::end(digits), code).ptr;
    for (auto n = end - digits; n < 3; ++n) *at++ = ' ';
    at = std::copy(digits, end, at);
    *at++ = '\n';
    return at;
}

int emit(FILE* stream, const char* text, std::size_t size) {
    if (DxBlockBuffering && DxBlockLines) {
        DxBlockLines->emplace_back(text, size);
        return 0;
    }
    if (!stream) return WRITE_FAILED;
    return std::fwrite(text, 1, size, stream) == size ? 0 : WRITE_FAILED;
}

/// Writes the pair of a value whose bytes are final.
int putPair(FILE* stream, int code, std::string_view value) {
    char small[256];
    if (value.size() < sizeof small - 16) {
        char* at = putCode(small, code);
        if (!value.empty()) std::memcpy(at, value.data(), value.size());
        at += value.size();
        *at++ = '\n';
        return emit(stream, small, static_cast<std::size_t>(at - small));
    }
    std::string text(small, putCode(small, code));
    text.append(value).push_back('\n');
    return emit(stream, text.data(), text.size());
}

/// "%.*f" of a value; a value that isn't finite counts as 0, since no reader takes it.
char* putDouble(char* at, char* last, double value) {
    if (!(value - value == 0.0)) value = 0.0;
    const int digits = std::clamp(DxDigits, 0, MAX_DECIMALS);
    return std::to_chars(at, last, value, std::chars_format::fixed, digits).ptr;
}

bool isPlainAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 32 && c < 127; });
}

/// The next code point of well-formed UTF-8; a stray byte counts as U+FFFD.
unsigned nextCodePoint(const std::string& s, std::size_t& i) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned first = byte(i++);
    int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    if (first < 0x80) return first;
    if (more == 0) return 0xFFFD;
    unsigned value = first & (0x3FU >> more);
    for (; more > 0 && i < s.size() && (byte(i) & 0xC0U) == 0x80U; --more)
        value = value << 6 | (byte(i++) & 0x3FU);
    return more == 0 ? value : 0xFFFD;
}

void addEscape(std::string& out, unsigned unit) {
    static constexpr char HEX[] = "0123456789ABCDEF";
    out += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) out += HEX[unit >> shift & 15U];
}

/// The bytes of the code page; what it lacks, and the control characters 28 to 31, as escapes or as "?".
std::string ansiText(const std::string& text, bool escapes) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        const unsigned c = nextCodePoint(text, i);
        unsigned char byte = 0;
        if (escapes && c >= 28 && c <= 31) {
            addEscape(out, c);
        } else if (c < 128) {
            out += static_cast<char>(c);
        } else if (UtCUtf_Unicode2Ansi(c, DxCodePage, byte)) {
            out += static_cast<char>(byte);
        } else if (!escapes) {
            out += '?';
        } else if (c > 0xFFFF) { // a surrogate pair
            addEscape(out, 0xD800 + ((c - 0x10000) >> 10));
            addEscape(out, 0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            addEscape(out, c);
        }
    }
    return out;
}

/// A value line ends at its line feed, so that line feeds and NULs can't be part of a value.
std::string singleLine(std::string text) {
    std::erase(text, '\0');
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

} // namespace

bool DxMiscCheckVersion(int level) {
    return level >= DxWriteVersion;
}

int DxWriteFileInt(FILE* stream, int code, int value) {
    char text[32];
    char digits[12];
    char* at = putCode(text, code);
    char* end = std::to_chars(digits, std::end(digits), value).ptr;
    for (auto n = end - digits; n < 6; ++n) *at++ = ' ';
    at = std::copy(digits, end, at);
    *at++ = '\n';
    return emit(stream, text, static_cast<std::size_t>(at - text));
}

int DxWriteInt(int code, int value) {
    return DxWriteFileInt(currentStream(), code, value);
}

int DxWriteIntVer(int level, int code, int value) {
    return DxMiscCheckVersion(level) ? DxWriteInt(code, value) : 0;
}

int DxWriteFileDouble(FILE* stream, int code, double value) {
    char text[512];
    char* at = putDouble(putCode(text, code), std::end(text) - 1, value);
    *at++ = '\n';
    return emit(stream, text, static_cast<std::size_t>(at - text));
}

int DxWriteDouble(int code, double value) {
    return DxWriteFileDouble(currentStream(), code, value);
}

int DxWriteFileDoubleFix(FILE* stream, int code, double value) {
    char text[512];
    char* start = putCode(text, code);
    char* at = putDouble(start, std::end(text) - 32, value);
    while (at - start < 20) *at++ = ' ';
    *at++ = '\n';
    return emit(stream, text, static_cast<std::size_t>(at - text));
}

int DxWriteDoubleFix(int code, double value) {
    return DxWriteFileDoubleFix(currentStream(), code, value);
}

int DxWriteDoubleVer(int level, int code, double value) {
    return DxMiscCheckVersion(level) ? DxWriteDouble(code, value) : 0;
}

int DxWriteFileString(FILE* stream, int code, const UtCString& value) {
    const std::string& text = value.str();
    if (isPlainAscii(text))
        return putPair(stream, code, text); // most values: the same bytes in every encoding
    const bool utf8 = code >= 1 && code <= 9 && DxMiscCheckVersion(4);
    return putPair(stream, code, singleLine(utf8 ? text : ansiText(text, DxMiscCheckVersion(6))));
}

int DxWriteString(int code, const UtCString& value) {
    return DxWriteFileString(currentStream(), code, value);
}

int DxWriteName(int code, const DX_NAME& value) {
    return DxWriteString(code, UtCString(value.view()));
}

int DxWriteFileColor(FILE* stream, int colour) {
    if (colour == -9998 || colour == -1) return 0;
    return DxWriteFileInt(stream, 62, colour == -9999 ? 0 : colour);
}

int DxWriteColor(int colour) {
    return DxWriteFileColor(currentStream(), colour);
}

int DxWriteFileLinetype(FILE* stream, const UtCString& name) {
    return name.IsEmpty() ? 0 : DxWriteFileString(stream, 6, name);
}

int DxWriteLinetype(const UtCString& name) {
    return DxWriteFileLinetype(currentStream(), name);
}

static int writeHandle(FILE* stream, int code, std::uint32_t handle) {
    char digits[16];
    char* end = std::to_chars(digits, std::end(digits), handle, 16).ptr;
    std::transform(digits, end, digits, [](char c) { return c >= 'a' ? static_cast<char>(c - 32) : c; });
    return putPair(stream, code, {digits, static_cast<std::size_t>(end - digits)});
}

std::uint32_t DxGetNextReference() {
    return ++DxNextHandle;
}

int DxWriteFileReference(FILE* stream) {
    return writeHandle(stream, 5, DxGetNextReference());
}

int DxWriteReference() {
    return DxWriteFileReference(currentStream());
}

int DxWriteVariableReference(int code) {
    return DxWriteVariableReference2(code, DxGetNextReference());
}

int DxWriteVariableReference2(int code, std::uint32_t handle) {
    return DxMiscCheckVersion(6) ? writeHandle(currentStream(), code, handle) : 0;
}

int DxWriteSubClass(const char* name) {
    return DxMiscCheckVersion(6) ? DxWriteString(100, name) : 0;
}

// ---- streams ---------------------------------------------------------------------------------------

static FILE* openForWriting(const UtCString& path, int message) {
    FILE* stream = UtFileOpen(path, "w");
    if (stream)
        std::setvbuf(stream, nullptr, _IOFBF, STREAM_BUFFER);
    else
        DxProtoMsg(DxMsg(message, path.c_str()), 1);
    return stream;
}

static FILE* openTemporary(const char* prefix, UtCString& path, int message) {
    path = UtTempFileName(UtGetTempDir(), prefix);
    FILE* stream = openForWriting(path, message);
    if (!stream) path = UtCString();
    return stream;
}

int DxWriteOpen() {
    // The target is written beside its place, so that an older file of this name stays whole until the new
    // one is.
    DxHeaderPath = DxFileName + ".part";
    DxHeaderStream = UtFileOpen(DxHeaderPath, "w");
    if (!DxHeaderStream) {
        DxProtoMsg(DxMsg(5809, DxFileName.c_str()), 1);
        DxHeaderPath = UtCString();
        return OPEN_FAILED;
    }
    std::setvbuf(DxHeaderStream, nullptr, _IOFBF, STREAM_BUFFER);
    DxBodyStream = openTemporary("DXF", DxBodyPath, 5707);
    if (!DxBodyStream) return OPEN_FAILED;
    DxImageStream1 = openTemporary("DXF_IMG1", DxImagePath1, 5809);
    if (!DxImageStream1) return OPEN_FAILED;
    DxImageStream2 = openTemporary("DXF_IMG2", DxImagePath2, 5809);
    return DxImageStream2 ? 0 : OPEN_FAILED;
}

static int closeStream(FILE*& stream) {
    const int failed = stream ? UtFileClose(stream) : 0;
    stream = nullptr;
    return failed ? WRITE_FAILED : 0;
}

static void removeFile(UtCString& path) {
    if (!path.IsEmpty()) UtFileRemove(path);
    path = UtCString();
}

int DxWriteClose(bool complete) {
    DxDocuments.select(nullptr);
    int result = closeStream(DxHeaderStream);
    closeStream(DxBodyStream);
    closeStream(DxImageStream1);
    closeStream(DxImageStream2);
    removeFile(DxBodyPath);
    removeFile(DxImagePath1);
    removeFile(DxImagePath2);
    if (DxHeaderPath.IsEmpty()) return result;
    // An incomplete file takes the target's place only where it costs nobody a file.
    if ((complete && result == 0) || !DxTargetExisted) {
        if (UtFileRename(DxHeaderPath, DxFileName) != 0) result = WRITE_FAILED;
    }
    if (result != 0 || (!complete && DxTargetExisted)) UtFileRemove(DxHeaderPath);
    DxHeaderPath = UtCString();
    return complete ? result : 0;
}

// ---- units -----------------------------------------------------------------------------------------

/// $INSUNITS by host unit 1 to 8.
static constexpr int INSUNITS[] = {0, 12, 13, 4, 5, 6, 7, 1, 2};

int DxUnitToDXF(int hostUnit) {
    return hostUnit >= 1 && hostUnit <= 8 ? INSUNITS[hostUnit] : 0;
}

int DxUnitToCAD(int dxfUnit) {
    const auto* found = std::find(std::begin(INSUNITS) + 1, std::end(INSUNITS), dxfUnit);
    return dxfUnit > 0 && found != std::end(INSUNITS) ? static_cast<int>(found - std::begin(INSUNITS)) : 0;
}
