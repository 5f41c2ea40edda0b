#include "dx_writer.h"

#include "../config/config_state.h"
#include "../export/export_state.h"
#include "dx_codes.h"
#include "dx_decimals.h"
#include "dx_documents.h"
#include "dx_unicode.h"
#include "session_state.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

/// Code line of any int, with its line feed.
constexpr std::size_t LONGEST_CODE = 16;
constexpr std::size_t FIX_COLUMNS = 20;

FILE* currentStream() {
    return DxDocuments.currentStream();
}

/// The code lines of the codes of up to three digits.
constexpr auto CODE_LINES = [] {
    std::array<std::array<char, 4>, 1000> lines{};
    for (std::size_t code = 0; code < lines.size(); ++code) {
        const char hundreds = code >= 100 ? static_cast<char>('0' + code / 100) : ' ';
        const char tens = code >= 10 ? static_cast<char>('0' + code / 10 % 10) : ' ';
        lines[code] = {hundreds, tens, static_cast<char>('0' + code % 10), '\n'};
    }
    return lines;
}();

/// The code line, right-aligned in three columns, with its line feed. Gives the end.
char* putCode(char* at, int code) {
    if (static_cast<unsigned>(code) < CODE_LINES.size()) {
        const auto& line = CODE_LINES[static_cast<unsigned>(code)];
        return std::copy(line.begin(), line.end(), at);
    }
    at = std::to_chars(at, at + LONGEST_CODE - 1, code).ptr; // three columns or more, and the line feed
    *at++ = '\n';
    return at;
}

char* putBytes(char* at, std::string_view bytes) {
    return std::copy(bytes.begin(), bytes.end(), at);
}

/// Writes the pair of a value whose bytes are final.
int putPair(FILE* stream, int code, std::string_view value) {
    const bool isShort = value.size() <= DX_SINK_MOST - LONGEST_CODE - 1;
    char* at = putCode(DxSinkRoom(stream, LONGEST_CODE + (isShort ? value.size() + 1 : 0)), code);
    if (isShort) {
        at = putBytes(at, value);
        *at++ = '\n';
    }
    DxSinkTake(stream, at);
    if (!isShort) {
        DxSinkPut(stream, value);
        DxSinkPut(stream, "\n");
    }
    return DxWriteError();
}

/// The number as DxWriteSize has it. Gives the end.
char* putSize(char* at, double value) {
    constexpr int digits = 9;
    const double smallest = 100 * std::pow(10.0, -DxDigits);
    if (!(value > 0 && value < smallest)) return DxPutFixed(at, value, DxDigits);
    return std::to_chars(at, at + DX_LONGEST_FIXED, value, std::chars_format::general, digits).ptr;
}

bool isPlainAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 32 && c < 127; });
}

/// The bytes of the code page, or of its half that all have in common; what that lacks, and the control
/// characters 28 to 31, as escapes or as "?".
std::string ansiText(std::string_view text, bool escapes, bool isAscii = false) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t c = DxNextChar(text, i);
        unsigned char byte = 0;
        // What stands for a byte that the code page doesn't have must not become that byte again.
        const bool isControl = escapes && ((c >= 28 && c <= 31) || (c >= 0x80 && c <= 0x9F));
        if (c < 128 && !isControl) {
            out += static_cast<char>(c);
        } else if (!isControl && !isAscii && UtCUtf_Unicode2Ansi(c, DxCodePage, byte)) {
            out += static_cast<char>(byte);
        } else if (!escapes) {
            out += '?';
            ++DxUnwrittenCounts[DX_UNWRITTEN_CHARACTER];
        } else {
            DxAppendEscape(out, c);
        }
    }
    return out;
}

/// UTF-8 as a reader takes it, whatever the host's text holds.
std::string wellFormed(std::string_view text) {
    return DxIsUtf8(text) ? std::string(text) : UtCString(text, UT_CP_UTF8).str();
}

/// A value line ends at its line feed, so that line feeds and NULs can't be part of a value.
std::string singleLine(std::string text) {
    std::erase(text, '\0');
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

/// The bytes of a value in the encoding of its code and the target version.
std::string encoded(int code, std::string_view text) {
    const bool utf8 = code >= 1 && code <= 9 && DxMiscCheckVersion(DX_LEVEL_UTF8);
    return singleLine(utf8 ? wellFormed(text) : ansiText(text, DxMiscCheckVersion(DX_LEVEL_HANDLES)));
}

} // namespace

bool DxMiscCheckVersion(int level) {
    return level >= DxWriteVersion;
}

int DxWriteFileInt(FILE* stream, int code, int value) {
    char digits[12];
    char* end = std::to_chars(digits, std::end(digits), value).ptr;
    char* at = putCode(DxSinkRoom(stream, LONGEST_CODE + sizeof digits + 1), code);
    for (auto n = end - digits; n < 6; ++n) *at++ = ' ';
    at = std::copy(digits, end, at);
    *at++ = '\n';
    DxSinkTake(stream, at);
    return DxWriteError();
}

int DxWriteInt(int code, int value) {
    return DxWriteFileInt(currentStream(), code, value);
}

int DxWriteIntVer(int level, int code, int value) {
    return DxMiscCheckVersion(level) ? DxWriteInt(code, value) : DxWriteError();
}

int DxWriteFileDouble(FILE* stream, int code, double value) {
    char* at = DxSinkRoom(stream, LONGEST_CODE + DX_LONGEST_FIXED + 1);
    at = DxPutFixed(putCode(at, code), value, DxDigits);
    *at++ = '\n';
    DxSinkTake(stream, at);
    return DxWriteError();
}

int DxWriteSize(int code, double value) {
    FILE* stream = currentStream();
    char* at = putCode(DxSinkRoom(stream, LONGEST_CODE + DX_LONGEST_FIXED + 1), code);
    at = putSize(at, value);
    *at++ = '\n';
    DxSinkTake(stream, at);
    return DxWriteError();
}

int DxWriteDouble(int code, double value) {
    return DxWriteFileDouble(currentStream(), code, value);
}

int DxWriteFileDoubleFix(FILE* stream, int code, double value) {
    char digits[DX_LONGEST_FIXED + FIX_COLUMNS];
    char* end = DxPutFixed(digits, value, DxDigits);
    while (end < digits + FIX_COLUMNS) *end++ = ' ';
    return putPair(stream, code, {digits, static_cast<std::size_t>(end - digits)});
}

int DxWriteDoubleFix(int code, double value) {
    return DxWriteFileDoubleFix(currentStream(), code, value);
}

int DxWriteDoubleVer(int level, int code, double value) {
    return DxMiscCheckVersion(level) ? DxWriteDouble(code, value) : DxWriteError();
}

int DxWriteFileString(FILE* stream, int code, DxOutText value) {
    const std::string_view text = value.view;
    if (isPlainAscii(text))
        return putPair(stream, code, text); // most values: the same bytes in every encoding
    return putPair(stream, code, encoded(code, text));
}

int DxWriteString(int code, DxOutText value) {
    return DxWriteFileString(currentStream(), code, value);
}

int DxWriteExtendedString(int code, DxOutText value) {
    const bool isUtf8File = DxMiscCheckVersion(DX_LEVEL_UTF8);
    return isUtf8File ? DxWriteString(code, ansiText(value.view, true, true)) : DxWriteString(code, value);
}

static bool isWrittenColor(int colour) {
    return colour != -9998 && colour != -1;
}
static int fileColor(int colour) {
    return colour == -9999 ? 0 : DxEntityColor(colour);
}

static const OV_PEN_LOOK* lookOf(int colour) {
    if (colour < DX_COLOR_OF_LOOK) return nullptr;
    const auto found = DxWriteLooks.find(colour);
    return found == DxWriteLooks.end() ? nullptr : &found->second;
}

int DxEntityColor(int colour) {
    constexpr int byLayer = 256, white = 7;
    if (const OV_PEN_LOOK* look = lookOf(colour)) return look->color;
    return colour >= 0 && colour <= byLayer ? colour : white;
}

/// Groups of a colour, with all that belongs to the look of a pen.
template <class Put>
static void eachColorGroup(int colour, Put put) {
    constexpr int byLayer = -1;
    if (DxWriteInvisible) put(60, 1);
    const OV_PEN_LOOK* look = lookOf(colour);
    if (!look) {
        if (isWrittenColor(colour)) put(62, fileColor(colour));
        return;
    }
    if (!look->isColorOfLayer) put(62, look->color);
    if (look->weight != byLayer && DxMiscCheckVersion(DX_LEVEL_HANDLES)) put(370, look->weight);
    if (!look->isColorOfLayer && look->trueColor >= 0 && DxMiscCheckVersion(DX_LEVEL_TRUE_COLOR))
        put(420, look->trueColor);
}

int DxWriteFileColor(FILE* stream, int colour) {
    eachColorGroup(colour, [stream](int code, int value) { DxWriteFileInt(stream, code, value); });
    return DxWriteError();
}

std::string DxColorText(int colour) {
    std::string text;
    eachColorGroup(colour,
                   [&text](int code, int value) { text += DxPairText(code, UtFormat("%6d", value)); });
    return text;
}

int DxWriteColor(int colour) {
    return DxWriteFileColor(currentStream(), colour);
}

int DxWriteFileLinetype(FILE* stream, DxOutText name) {
    return name.view.empty() ? DxWriteError() : DxWriteFileString(stream, 6, name);
}

int DxWriteLinetype(DxOutText name) {
    return DxWriteFileLinetype(currentStream(), name);
}

static char* putHandle(char* at, std::uint32_t handle) {
    static constexpr char HEX[] = "0123456789ABCDEF";
    int shift = 0;
    while (shift < 28 && handle >> shift > 15U) shift += 4;
    for (; shift >= 0; shift -= 4) *at++ = HEX[handle >> shift & 15U];
    return at;
}

static int writeHandle(FILE* stream, int code, std::uint32_t handle) {
    char digits[8];
    const char* end = putHandle(digits, handle);
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
    return DxMiscCheckVersion(DX_LEVEL_HANDLES) ? writeHandle(currentStream(), code, handle) : DxWriteError();
}

int DxWriteSubClass(const char* name) {
    return DxMiscCheckVersion(DX_LEVEL_HANDLES) ? DxWriteString(100, name) : DxWriteError();
}

// ---- several pairs at once -------------------------------------------------------------------------

std::string DxPairText(int code, DxOutText value) {
    char line[LONGEST_CODE];
    std::string text(line, putCode(line, code));
    text += isPlainAscii(value.view) ? std::string(value.view) : encoded(code, value.view);
    text += '\n';
    return text;
}

/// Room that a run asks for at a time, and what one number or handle needs at most.
static constexpr std::size_t RUN_ROOM = 4096;
static constexpr std::size_t LONGEST_NUMBER = LONGEST_CODE + DX_LONGEST_FIXED + 1;

DxPairRun::DxPairRun()
    : stream_(currentStream()), at_(DxSinkRoom(stream_, RUN_ROOM)), limit_(at_ + RUN_ROOM) {}

void DxPairRun::reserve(std::size_t size) {
    if (static_cast<std::size_t>(limit_ - at_) >= size) return;
    DxSinkTake(stream_, at_);
    at_ = DxSinkRoom(stream_, RUN_ROOM);
    limit_ = at_ + RUN_ROOM;
}

void DxPairRun::pairs(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view slice = bytes.substr(0, RUN_ROOM);
        bytes.remove_prefix(slice.size());
        reserve(slice.size());
        at_ = putBytes(at_, slice);
    }
}

void DxPairRun::real(int code, double value) {
    reserve(LONGEST_NUMBER);
    at_ = DxPutFixed(putCode(at_, code), value, DxDigits);
    *at_++ = '\n';
}

void DxPairRun::size(int code, double value) {
    reserve(LONGEST_NUMBER);
    at_ = putSize(putCode(at_, code), value);
    *at_++ = '\n';
}

void DxPairRun::handle(int code, std::uint32_t handle) {
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return;
    reserve(LONGEST_NUMBER);
    at_ = putHandle(putCode(at_, code), handle);
    *at_++ = '\n';
}

int DxPairRun::end() {
    DxSinkTake(stream_, at_);
    return DxWriteError();
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
