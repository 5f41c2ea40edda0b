#include "dx_dim_format.h"

#include "../config/config_state.h"
#include "../session/dx_numbers.h"
#include "../session/dx_unicode.h"
#include "../text/dx_text_fonts.h"
#include "../text/text_state.h"
#include "uo.h"

#include <algorithm>

namespace {

constexpr char DIVIDER = 1;
constexpr std::string_view NUMBER_HOLDER = "<>", DEGREE = "\u00B0";

bool isDigitAt(std::string_view text, std::size_t index) {
    return index < text.size() && text[index] >= '0' && text[index] <= '9';
}

/// What stands around the number, with "<>" in its place behind a prefix.
std::string aroundNumber(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && !DxDimparIsValChar(text, start)) ++start;
    if (start == text.size()) return {};
    std::size_t end = start;
    while (end < text.size() && DxDimparIsValChar(text, end)) ++end;
    std::string around;
    if (start > 0) around.append(text.substr(0, start)).append(NUMBER_HOLDER);
    const std::size_t lineEnd = std::min(text.find('\n', start), text.size());
    if (end < lineEnd) around.append(text.substr(end, lineEnd - end));
    return around;
}

std::string formatOf(int kind, std::string_view text) {
    constexpr std::string_view blankHolder = " <>";
    std::string format = aroundNumber(text);
    if (format.starts_with(blankHolder)) format.erase(0, blankHolder.size());
    const bool isAngular = kind == OV_DIM_ANGLE || kind == OV_DIM_ARC;
    if (format == NUMBER_HOLDER || (isAngular && format == DEGREE)) format.clear();
    std::replace(format.begin(), format.end(), '\n', ' ');
    return format;
}

void forgetBlank(std::string& part) {
    if (part == " ") part.clear();
}

} // namespace

DX_DIM_TEXT_PARTS DxDimparSplitDimText(std::string_view text) {
    DX_DIM_TEXT_PARTS parts;
    const std::size_t divider = text.find(DIVIDER);
    parts.value = text.substr(0, divider);
    forgetBlank(parts.value);
    if (divider == std::string_view::npos) return parts;
    const std::string_view rest = text.substr(divider + 1);
    std::size_t end = rest.find('\n');
    if (end == std::string_view::npos) end = rest.find(DIVIDER);
    parts.upper = rest.substr(0, end);
    forgetBlank(parts.upper);
    if (end == std::string_view::npos) return parts;
    parts.lower = rest.substr(end + 1);
    if (parts.lower.starts_with(' ')) parts.lower.erase(0, 1);
    return parts;
}

bool DxDimparIsValChar(std::string_view text, std::size_t index) {
    const char c = text[index];
    if (isDigitAt(text, index) || c == '.' || c == ',' || c == '"' || c == '\'') return true;
    return (c == ' ' || c == '/') && index > 0 && isDigitAt(text, index - 1) && isDigitAt(text, index + 1);
}

const DX_STYLE_TYPE* DxDimparExtractFormat(int kind, std::string_view text, const OV_DIM_TXT_PARM& txt,
                                           DX_DIM_STYLE* style) {
    std::string format = formatOf(kind, text);
    const DX_STYLE_TYPE* textStyle = DxConvTextToDXF(format, txt.fontKind, txt.face, txt.words);
    if (style) style->strings[0].assign(format);
    return textStyle;
}

int DxDimToleranceKind(int pat, int kind) {
    constexpr int two = 2;
    UtCString id;
    const bool isMark = kind == two && UoGetSingleAttr(pat, "id", &id) == 0 && id == "dimx";
    return isMark ? DX_DIM_TOL_FINISH : kind;
}

void DxDimparCheckTol(OV_DIM_TXT_PARM& txt, int tolKind, DX_DIM_TEXT_PARTS& parts, int* tolRow) {
    if (tolKind == DX_DIM_TOL_FINISH && DxFinishCode >= 0 && DxAtoi(parts.upper) == DxFinishCode) {
        DxAppendChar(parts.value, U'0' + static_cast<char32_t>(DxFinishCode));
        DxFinishPending = 1;
        txt.fixed = 1;
        *tolRow = OV_DIM_NO_TEXT;
    } else if (parts.upper.empty() && parts.lower.empty()) {
        *tolRow = OV_DIM_NO_TEXT;
    }
}
