#include "dx_config_rows.h"

#include "../session/dx_reader.h"
#include "../session/dx_unicode.h"
#include "dx_colors.h"
#include "dx_config_lines.h"
#include "dx_linetypes.h"
#include "dx_scan.h"

namespace {

bool isDefault(std::string_view text) {
    return text == "DEF";
}
bool isPen(int pen) {
    return pen >= 0 && pen < DX_PEN_COUNT;
}
/// A colour to write. Below 0 are those that aren't written as a number: none, by layer, by block.
bool isWritableColor(int color) {
    return color < DX_COLOR_COUNT;
}
/// A name has one form only, whichever way its characters are written.
std::string nameOf(std::string_view text) {
    return DxHostText(text).str();
}
bool isNumber(std::string_view text) {
    return UtCString(text).IsNumber();
}

// ---- colours -------------------------------------------------------------------------------------------

int addColor(DxTable<DX_COLOR_PAIR>& pairs, int& fallback, std::string_view left, std::string_view right) {
    const std::string_view color = DxTrimmed(left);
    const int pen = DxAtoi(right);
    if (!isDefault(color)) return DxAddColorPair(pairs, DxAtoi(color), pen);
    if (isPen(pen)) fallback = pen;
    return 0;
}
int addPenToCad(std::string_view color, std::string_view pen, int) {
    return addColor(DxPenToCad, DxDefaultPen, color, pen);
}
int addFillToCad(std::string_view color, std::string_view fill, int) {
    return addColor(DxFillToCad, DxDefaultFill, color, fill);
}
int setPenToDxf(std::string_view pen, std::string_view color, int) {
    const int from = DxAtoi(pen);
    const int to = DxAtoi(color);
    if (isPen(from) && isWritableColor(to)) DxPenToDxf[from] = to;
    return 0;
}
int addFillToDxf(std::string_view fill, std::string_view color, int) {
    const int to = DxAtoi(color);
    return isWritableColor(to) ? DxFillToDxf.add({to, DxAtoi(fill)}) : 0;
}

// ---- line types ----------------------------------------------------------------------------------------

int addLtToCad(std::string_view name, std::string_view number, int) {
    DX_LT_PAIR pair{};
    pair.name.assign(nameOf(name));
    pair.number = DxAtoi(number);
    return DxLtToCad.add(pair);
}
int addLtToDxf(std::string_view number, std::string_view name, int) {
    return DxAddLinetype(DxAtoi(number), nameOf(name));
}

// ---- characters ----------------------------------------------------------------------------------------

int addCharPair(int dxf, int host, int set) {
    return DxCharPairs[set].add({dxf, host});
}
int addCharText(std::string_view text, int code, int set) {
    DX_CHAR_TEXT record{};
    record.text.assign(text);
    record.code = code;
    return DxCharTexts[set].add(record);
}
int addCharToCad(std::string_view left, std::string_view right, int special) {
    const std::string_view dxf = DxTrimmed(left);
    const int host = DxAtoi(right);
    return isNumber(dxf) ? addCharPair(DxAtoi(dxf), host, special) : addCharText(dxf, host, special);
}
int addCharToDxf(std::string_view left, std::string_view right, int special) {
    const std::string_view host = DxTrimmed(left);
    const std::string_view dxf = DxTrimmed(right);
    if (isNumber(dxf)) return addCharPair(DxAtoi(dxf), DxAtoi(host), special);
    if (!host.starts_with('^')) return addCharText(dxf, DxAtoi(host), special);
    if (special) return 0;
    DxFinishCode = DxAtoi(host.substr(1));
    DxFinishText.assign(dxf);
    return 0;
}

// ---- fonts ---------------------------------------------------------------------------------------------

int addFont(std::string_view dxf, std::string_view host, double factor) {
    DX_FONT_TYPE record{};
    record.font.assign(nameOf(dxf));
    record.number = DxAtoi(host);
    if (record.number == 0) record.hostFont.assign(host);
    record.factor = factor;
    return DxFonts.add(record);
}
int addFontToCad(std::string_view dxf, std::string_view host, int) {
    if (dxf == "@") {
        DxSpecialCadFont = DxAtoi(host);
        return 0;
    }
    const std::size_t comma = host.find(',');
    const double factor = comma == std::string_view::npos ? 0.0 : DxAtof(host.substr(comma + 1));
    return addFont(dxf, host.substr(0, comma), factor);
}
int addFontToDxf(std::string_view host, std::string_view dxf, int) {
    if (host != "@") return addFont(dxf, host, 0.0);
    DxSpecialDxfFont = dxf;
    return 0;
}

// ---- names ---------------------------------------------------------------------------------------------

int addAttribute(std::string_view dxf, std::string_view host, int) {
    DX_ATTR_PAIR pair{};
    pair.dxf.assign(nameOf(dxf));
    pair.host.assign(nameOf(host));
    return DxAttrMap.add(pair);
}
int addLayerToCad(std::string_view dxf, std::string_view host, int) {
    DX_LAYER_PAIR pair{};
    pair.dxf.assign(nameOf(dxf));
    pair.host.assign(nameOf(host));
    return DxLayerMap.add(pair);
}
int addLayerToDxf(std::string_view host, std::string_view dxf, int) {
    return addLayerToCad(dxf, host, 0);
}

// clang-format off
constexpr DxDataSection SECTIONS[] = {
    {"#PEN-DXF-TO-CAD",   0, addPenToCad},
    {"#FILL-DXF-TO-CAD",  0, addFillToCad},
    {"#LT-DXF-TO-CAD",    0, addLtToCad},
    {"#CHAR-DXF-TO-CAD",  0, addCharToCad},
    {"#FONT-DXF-TO-CAD",  0, addFontToCad},
    {"#ATTR-DXF-TO-CAD",  0, addAttribute},
    {"#LAYER-DXF-TO-CAD", 0, addLayerToCad},
    {"#PEN-CAD-TO-DXF",   1, setPenToDxf},
    {"#FILL-CAD-TO-DXF",  1, addFillToDxf},
    {"#LT-CAD-TO-DXF",    1, addLtToDxf},
    {"#CHAR-CAD-TO-DXF",  1, addCharToDxf},
    {"#FONT-CAD-TO-DXF",  1, addFontToDxf},
    {"#LAYER-CAD-TO-DXF", 1, addLayerToDxf},
};
// clang-format on

} // namespace

std::span<const DxDataSection> DxDataSections() {
    return SECTIONS;
}

int DxAddColorPair(DxTable<DX_COLOR_PAIR>& pairs, int color, int pen) {
    const bool isValid = color >= 1 && color < DX_COLOR_COUNT && isPen(pen);
    return isValid ? pairs.add({color, pen}) : 0;
}

const DxDataSection* DxFindDataSection(std::string_view header, int isExport) {
    for (const DxDataSection& section : SECTIONS)
        if (section.header == header && section.isExport == (isExport != 0)) return &section;
    return nullptr;
}

int DxConfigDecode(FILE* file, std::string_view header, int count, int isExport, int special) {
    if (header == "#FLAGS-START") return DxReadFlagSection(file, isExport);
    const DxDataSection* section = DxFindDataSection(header, isExport);
    if (!section) return 0;
    // The count is the file's word; the end of the file ends the section too.
    std::string line;
    for (int i = 0; i < count && DxReadConfigLine(file, line); ++i) {
        const std::size_t bar = line.find('|');
        if (bar == std::string::npos) continue;
        const std::string_view text = line;
        if (const int error = section->add(text.substr(0, bar), text.substr(bar + 1), special)) return error;
    }
    return 0;
}
