// The groups of TEXT and MTEXT.
#include "../export/dx_write_entities.h"
#include "../export/export_state.h"
#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_text_codes.h"
#include "dx_text_import.h"
#include "dx_write_text.h"
#include "mt.h"

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace {

double roundedDegrees(double angle) {
    return std::round(angle * 1e4) / 1e4;
}

/// What a matrix does to a text.
struct Turn {
    double rotation; ///< of the text, degrees
    double xScale, yScale;
};

int writePoint(int code, const RPT& p, double z) {
    DxWriteDouble(code, p.x);
    DxWriteDouble(code + 10, p.y);
    return DxWriteDouble(code + 20, z);
}

int writeHead(const char* name, const DX_TEXT_TYPE& text) {
    return DxWriteEntityHead(name, {UtCString(text.base.layer.view()), {}, text.base.color});
}

/// A format code with its value; a value that is `usual` needs none.
std::string formatCode(char letter, double value, double usual) {
    constexpr double smallest = 1e-6;
    if (std::abs(value - usual) < smallest) return {};
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 9);
    return std::string("\\") + letter + std::string(digits, end.ptr) + ";";
}

/// What the groups of an MTEXT can't say of its characters stands as codes in front of them.
std::string formatCodes(const DX_TEXT_TYPE& text) {
    std::string codes;
    if (text.justification == 1) codes += "\\pqc;";
    if (text.justification == 2) codes += "\\pqr;";
    codes += formatCode('W', text.widthFactor, 1.0);
    codes += formatCode('Q', text.oblique, 0.0);
    return text.charSpacing < 0 ? codes : codes + formatCode('T', text.charSpacing, -1.0);
}

/// Where a piece of a text ends that takes up to 250 bytes in the file. A target of code pages may need an
/// escape for a character: 7 bytes, or 14 for one that has four bytes here.
std::size_t pieceEnd(std::string_view text) {
    constexpr std::size_t most = 250;
    const bool isUtf8 = DxMiscCheckVersion(DX_LEVEL_UTF8);
    std::size_t bytes = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t start = pos;
        DxNextChar(text, pos);
        const std::size_t length = pos - start;
        bytes += isUtf8 || length == 1 ? length : length == 4 ? 14 : 7;
        if (bytes > most) return start;
    }
    return text.size();
}

/// Group 1; the pieces in front stand in groups 3.
int writeMtextValue(std::string_view rest) {
    for (std::size_t end = pieceEnd(rest); end < rest.size(); end = pieceEnd(rest)) {
        DxWriteString(3, UtCString(rest.substr(0, end)));
        rest.remove_prefix(end);
    }
    return DxWriteString(1, UtCString(rest));
}

int writeMtext(const DX_TEXT_TYPE& text, const RPT& point, const Turn& turn) {
    writeHead("MTEXT", text);
    DxWriteString(100, "AcDbMText");
    writePoint(10, point, text.point.z);
    DxWriteSize(40, text.height * turn.yScale);
    DxWriteDouble(41, text.boxWidth * turn.xScale);
    DxWriteInt(71, text.attachment);
    DxWriteInt(72, 5);
    writeMtextValue(formatCodes(text) + text.text);
    DxWriteString(7, text.style);
    DxWriteDouble(50, turn.rotation);
    if (text.lineSpacing != 1.0) DxWriteDouble(44, text.lineSpacing);
    if (text.backFlag && DxMiscCheckVersion(DX_LEVEL_SHEETS)) {
        DxWriteInt(90, text.backFlag);
        DxWriteInt(63, text.backColor < 0 ? 256 : DxEntityColor(text.backColor));
        DxWriteDouble(45, text.backScale); // a reader expects it with a background
    }
    return DxWriteError();
}

int writeText(const DX_TEXT_TYPE& text, const RPT& point, const RPT& second, const Turn& turn) {
    writeHead("TEXT", text);
    DxWriteSubClass("AcDbText");
    writePoint(10, point, text.point.z);
    DxWriteSize(40, text.height * turn.yScale);
    DxWriteString(1, text.text);
    DxWriteDouble(50, turn.rotation);
    DxWriteSize(41, text.widthFactor);
    DxWriteDouble(51, text.oblique);
    DxWriteString(7, text.style);
    DxWriteInt(72, text.horAlign);
    writePoint(11, second, text.second.z);
    DxWriteSubClass("AcDbText");
    return DxWriteInt(73, text.verAlign);
}

} // namespace

int DxWriteTextOrMtext(const DX_TEXT_TYPE& text, const Mat32 matrix, double leftShift) {
    RPT point;
    RPT second;
    MtTransRPt({text.point.x, text.point.y}, matrix, &point);
    MtTransRPt({text.second.x, text.second.y}, matrix, &second);
    const Turn turn{roundedDegrees(MtGetRot(matrix) * DX_DEGREES + text.rotation), MtGetScale(matrix),
                    std::hypot(matrix[1][0], matrix[1][1])};
    if (!text.isMtext) return writeText(text, point, second, turn);
    // An import takes the text of a dimension's block from where it stands.
    if (DxBlockType != DX_BLOCK_DIMENSION)
        point.x += text.height * turn.yScale * (leftShift + DxCharSpacingShift(text.charSpacing));
    return writeMtext(text, point, turn);
}
