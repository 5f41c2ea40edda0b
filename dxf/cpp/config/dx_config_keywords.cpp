#include "dx_config.h"

#include "../session/dx_protocol.h"
#include "../session/dx_reader.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "dx_colors.h"
#include "dx_config_lines.h"
#include "dx_config_rows.h"
#include "dx_linetypes.h"
#include "dx_scan.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr int BAD_LINE = 1006;

bool contains(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

// ---- switches and numbers ------------------------------------------------------------------------------

int setAllLayers(const DxScanned&, std::string_view) {
    DxAllLayers = 1;
    return 0;
}
int setWritePoly(const DxScanned&, std::string_view) {
    DxWritePoly = 1;
    return 0;
}
int setFreeDimsOnly(const DxScanned&, std::string_view) {
    DxDimMode = 1;
    return 0;
}
int setPatternToBlock(const DxScanned&, std::string_view) {
    DxPatternToBlock = 1;
    return 0;
}
int setElements(const DxScanned& values, std::string_view) {
    DxMaxElements = values.numbers[0];
    return 0;
}
int setReadSpace(const DxScanned& values, std::string_view) {
    const int space = values.numbers[0];
    if (space < 0 || space > 2)
        DxProtoMsg(UtFormat("READSPACE = %d is no space: 0 model, 1 paper, 2 both.", space), 1);
    else
        DxReadSpace = space;
    return 0;
}
int setTextFactor(const DxScanned& values, std::string_view) {
    DxTextFactor = values.real;
    return 0;
}
int setDigits(const DxScanned& values, std::string_view) {
    DxDigits = std::clamp(values.numbers[0], 0, 99);
    return 0;
}
int ignore(const DxScanned&, std::string_view) {
    return 0;
}

int setTrim(const DxScanned&, std::string_view line) {
    const std::string_view words = line.substr(1);
    if (contains(words, "RIGHT")) {
        DxLineTrim = 1;
    } else if (contains(words, "LEFT")) {
        DxLineTrim = 2;
    } else if (contains(words, "BOTH")) {
        DxLineTrim = 4;
    }
    return 0;
}

// ---- patterns ------------------------------------------------------------------------------------------

int findOrderWord(std::string_view line) {
    if (contains(line, "NAME")) return DX_ORDER_NAME;
    if (contains(line, "GROUP")) return DX_ORDER_GROUP;
    if (contains(line, "LEVEL")) return DX_ORDER_LEVEL;
    if (contains(line, "CLASS")) return DX_ORDER_CLASS;
    return DX_ORDER_NONE;
}
int setLayerToPattern(const DxScanned&, std::string_view line) {
    DxLayerToPattern = 1;
    DxLayerOrder = findOrderWord(line);
    return 0;
}
int setBlockToPattern(const DxScanned&, std::string_view line) {
    DxBlockToPattern = 1;
    DxBlockOrder = findOrderWord(line);
    return 0;
}

/// Exactly four entries: elements, text, hatch, dimension.
int setOrder(const DxScanned&, std::string_view line) {
    constexpr int ENTRIES = 4;
    std::array<std::string_view, ENTRIES + 1> entries;
    DxTakeWord(line);
    std::size_t count = 0;
    while (count < entries.size()) {
        const std::string_view entry = line.substr(0, line.find(','));
        if (DxTrimmed(entry).empty()) break;
        entries[count++] = entry;
        line.remove_prefix(std::min(entry.size() + 1, line.size()));
    }
    if (count != ENTRIES) return BAD_LINE;
    for (int i = 0; i < ENTRIES; ++i) DxDecodeOrder(i, entries[static_cast<std::size_t>(i)]);
    return 0;
}

// ---- pens and line types -------------------------------------------------------------------------------

bool isPen(int pen) {
    return pen >= 0 && pen < DX_PEN_COUNT;
}

int addPens(const DxScanned& values, std::string_view) {
    constexpr int COLORS = 9;
    for (int i = 0; i < COLORS; ++i)
        if (const int error = DxAddColorPair(DxPenToCad, i + 1, values.numbers[i])) return error;
    if (values.count > COLORS && isPen(values.numbers[COLORS])) DxDefaultPen = values.numbers[COLORS];
    return 0;
}
int setColorsOfPens(const DxScanned& values, std::string_view) {
    for (int pen = 0; pen < values.count; ++pen) {
        const int color = values.numbers[pen];
        if (color < DX_COLOR_COUNT) DxPenToDxf[pen] = color;
    }
    return 0;
}
int addColor(const DxScanned& values, std::string_view) {
    return values.count == 2 ? DxAddColorPair(DxPenToCad, values.numbers[0], values.numbers[1]) : 0;
}
int addFillColor(const DxScanned& values, std::string_view) {
    return DxAddColorPair(DxFillToCad, values.numbers[0], values.numbers[1]);
}
int addLinetypeNumber(const DxScanned& values, std::string_view) {
    DX_LT_PAIR pair{};
    pair.name.assign(values.words[0]);
    pair.number = values.numbers[0];
    return DxLtToCad.add(pair);
}
int addNumberedLinetype(const DxScanned& values, std::string_view) {
    std::string_view name = values.words[0];
    if (name.ends_with(',')) name.remove_suffix(1); // written without a blank ahead of the comma
    return DxAddLinetype(values.numbers[0], name);
}

// ---- names and characters ------------------------------------------------------------------------------

int addAttribute(const DxScanned& values, std::string_view) {
    DX_ATTR_PAIR pair{};
    pair.dxf.assign(values.words[0]);
    pair.host.assign(values.words[1]);
    return DxAttrMap.add(pair);
}
int addCharacter(const DxScanned& values, std::string_view) {
    return DxCharPairs[0].add({values.numbers[0], values.numbers[1]});
}
/// TEXT 'string' … > code
int addCharacterText(const DxScanned&, std::string_view line) {
    const std::size_t open = line.find('\'');
    const std::size_t close = open == std::string_view::npos ? open : line.find('\'', open + 1);
    const std::size_t arrow = close == std::string_view::npos ? close : line.find('>', close);
    if (arrow == std::string_view::npos || close == open + 1) return BAD_LINE;
    const DxScanned code = DxScanLine(line.substr(arrow + 1), "%d");
    if (code.count != 1) return BAD_LINE;
    DX_CHAR_TEXT record{};
    record.text.assign(line.substr(open + 1, close - open - 1));
    record.code = code.numbers[0];
    return DxCharTexts[0].add(record);
}

// clang-format off
constexpr DxConfigKeyword KEYWORDS[] = {
    {"ALL_LAYER",        {},                                                                     0, setAllLayers},
    {"WRITE_POLY",       {},                                                                     0, setWritePoly},
    {"FREE_DIMS_ONLY",   {},                                                                     0, setFreeDimsOnly},
    {"ELEMENTS",         "ELEMENTS = %d",                                                        1, setElements},
    {"ORDER",            {},                                                                     0, setOrder},
    {"LAYER->PATTERN",   {},                                                                     0, setLayerToPattern},
    {"BLOCK->PATTERN",   {},                                                                     0, setBlockToPattern},
    {"PATTERN->BLOCK",   {},                                                                     0, setPatternToBlock},
    {"COLOR->PEN",       "COLOR->PEN %d, %d, %d, %d, %d, %d, %d, %d, %d, DEFAULT %d",            9, addPens},
    {"PEN->COLOR",       "PEN->COLOR %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d",               11, setColorsOfPens},
    {"COLOR_NO",         "COLOR_NO %d = %d",                                                     0, addColor},
    {"ATTR",             "ATTR %s %s",                                                           2, addAttribute},
    {"FILLCOLOR",        "FILLCOLOR %d = %d",                                                    2, addFillColor},
    {"READSPACE",        "READSPACE = %d",                                                       1, setReadSpace},
    {"TEXTFACTOR",       "TEXTFACTOR = %lf",                                                     1, setTextFactor},
    {"DIGITS",           "DIGITS = %d",                                                          1, setDigits},
    {"LINETYPE->NUMBER", "LINETYPE->NUMBER %s = %d",                                             2, addLinetypeNumber},
    {"NUMBER->LINETYPE", "NUMBER->LINETYPE %d = %s , %s",                                        2, addNumberedLinetype},
    {"TRIM",             {},                                                                     0, setTrim},
    {"LANGUAGE",         {},                                                                     0, ignore},
    {"ASCII",            "ASCII %d <-> %d",                                                      2, addCharacter},
    {"TEXT",             {},                                                                     0, addCharacterText},
};
// clang-format on

int readKeyword(std::string_view line) {
    if (line.empty() || line[0] == '!') return 0;
    const int error = DxDecodeLine(line);
    if (error == BAD_LINE) DxProtoMsg(UtFormat("Error in Defaultfile: %s", std::string(line).c_str()), 1);
    return error;
}

/// A line of this format has at most 127 characters; what stands behind them counts as the next one.
int readKeywords(FILE* file) {
    constexpr std::size_t LONGEST_LINE = 127;
    for (std::string line; DxReadConfigLine(file, line);) {
        for (std::string_view rest = line; !rest.empty();) {
            const std::size_t length = DxCharsLength(rest, LONGEST_LINE);
            if (const int error = readKeyword(DxTrimmed(rest.substr(0, length)))) return error;
            rest.remove_prefix(length);
        }
    }
    return 0;
}

} // namespace

std::span<const DxConfigKeyword> DxConfigKeywords() {
    return KEYWORDS;
}

int DxDecodeLine(std::string_view line) {
    std::string_view rest = line;
    std::string_view keyword = DxTakeWord(rest);
    if (keyword.ends_with(',')) keyword.remove_suffix(1);
    const auto* row =
        std::find_if(std::begin(KEYWORDS), std::end(KEYWORDS),
                     [&](const DxConfigKeyword& candidate) { return candidate.keyword == keyword; });
    if (row == std::end(KEYWORDS)) return BAD_LINE;
    const DxScanned values = DxScanLine(DxTrimmed(line), row->format);
    return values.count < row->needed ? BAD_LINE : row->apply(values, line);
}

void DxDecodeOrder(int elementClass, std::string_view text) {
    static constexpr std::pair<std::string_view, int> ORDERS[] = {
        {"GROUP", DX_ORDER_GROUP}, {"CLASS", DX_ORDER_CLASS}, {"LEVEL", DX_ORDER_LEVEL},
        {"NAME", DX_ORDER_NAME},   {"ATTR", DX_ORDER_ATTR},
    };
    text = DxTrimmed(text);
    if (text.starts_with('\'')) {
        std::string name(text);
        std::erase(name, '\'');
        DxLayerKinds[elementClass] = DX_ORDER_FIXED;
        DxLayerFixedNames[elementClass] = DxTrimmed(name);
        return;
    }
    for (const auto& [word, order] : ORDERS)
        if (word == text) DxLayerKinds[elementClass] = order;
}

int DxReadDefaultFile(const UtCString& name, int isExport) {
    DxConfigFile file(UtFileOpen(name + (isExport ? ".write" : ".read"), "r"));
    if (!file) file.reset(UtFileOpen(name, "r"));
    if (!file) {
        DxProtoMsg(UtFormat("Can't open Configurefile %s !", name.c_str()), 1);
        return 0;
    }
    DxSkipByteOrderMark(file.get());
    return readKeywords(file.get());
}
