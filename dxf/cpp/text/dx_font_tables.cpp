// The metric tables: ".chr" files of DXF fonts, "std.%d" files of host fonts.
#include "../session/dx_messages.h"
#include "../session/dx_numbers.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "dx_text_codes.h"
#include "dx_text_fonts.h"
#include "os.h"
#include "uo.h"
#include "ut.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

constexpr int cantOpen = 1008;

UtCString fontPath(std::string_view font) {
    return OsGetEnvDflt("HD_U", "/u") + "/1700/int/dxf/font/" + UtCString(font) + ".chr";
}

/// True for a name that leads out of the folder of the tables.
bool leadsAway(std::string_view font) {
    return font.empty() || font.find_first_of("/\\") != std::string::npos;
}

/// Three codes beyond the byte stand for signs that stroke fonts keep in places of their own.
int placeOf(int code) {
    switch (code) {
    case 256: return 176;
    case 257: return 177;
    case 258: return 29;
    default: return code >= 0 && code < 256 ? code : -1;
    }
}

/// A length of a table, in hundredths; -1 is a width that isn't defined.
std::int16_t hundredths(std::string_view text, int least) {
    constexpr int most = 10000;
    return static_cast<std::int16_t>(std::clamp(DxAtoi(text), least, most));
}

void takeFontLine(DxFontTable& table, std::string_view line) {
    const std::size_t first = line.find(',');
    const std::size_t second = first == std::string_view::npos ? first : line.find(',', first + 1);
    if (second == std::string_view::npos || line.find(',', second + 1) != std::string_view::npos) return;
    const int place = placeOf(DxAtoi(line));
    if (place < 0) return;
    table.cells[static_cast<std::size_t>(place)] = {hundredths(line.substr(first + 1), -1),
                                                    hundredths(line.substr(second + 1), -10000)};
}

void setPlain(DxFontTable& table) {
    for (std::size_t c = 0; c < table.cells.size(); ++c)
        if (DxIsPlain(static_cast<char>(c))) table.plain[c] = table.cells[c];
}

void setAverages(DxFontTable& table) {
    double widths = 0, spaces = 0;
    int count = 0;
    for (const DxFontTable::Cell& cell : table.cells) {
        if (cell.width < 0) continue;
        widths += cell.width;
        spaces += cell.space;
        ++count;
    }
    if (count == 0) return;
    table.averageWidth = widths / count;
    table.averageSpace = spaces / count;
}

bool readFontTable(DxFontTable& table) {
    FILE* file = leadsAway(table.name) ? nullptr : UtFileOpen(fontPath(table.name), "r");
    if (!file) return false;
    std::string line;
    if (UtReadLine(file, line) == 0) table.heightValue = DxAtof(line);
    while (UtReadLine(file, line) == 0) takeFontLine(table, line);
    UtFileClose(file);
    setPlain(table);
    setAverages(table);
    return true;
}

/// The record of a font, read when it is asked for first.
int indexOf(std::string_view font) {
    const auto [entry, isNew] = DxFontTableIndex.try_emplace(std::string(font), 0);
    if (!isNew) return entry->second;
    entry->second = static_cast<int>(DxFontTables.size());
    DxFontTable& table = *DxFontTables.emplace_back(std::make_unique<DxFontTable>());
    table.name = font;
    table.isLoaded = readFontTable(table);
    return entry->second;
}

void readCadTable(FILE* file, DxCadFontTable& table) {
    constexpr std::size_t lineLimit = 199;
    int code = 0;
    std::string text;
    while (UtReadLine(file, text) == 0) {
        const std::string_view line = std::string_view(text).substr(0, lineLimit);
        if (line.starts_with('P')) table.isProportional = true;
        if (line.size() > 2 && line[0] == '*' && line[2] == ';') code = DxAtoi(line.substr(3));
        if (line.starts_with('W') && code >= 1 && code <= 255)
            table.width[static_cast<std::size_t>(code)] =
                static_cast<std::uint16_t>(hundredths(line.substr(1), 0));
    }
}

void setAverage(DxCadFontTable& table) {
    double sum = 0;
    int count = 0;
    for (const std::uint16_t width : table.width) {
        if (width == DxCadFontTable::undefined) continue;
        sum += width;
        ++count;
    }
    if (count == 0) table.width.fill(100);
    table.averageWidth = count ? static_cast<int>(std::lround(sum / count)) : 100;
}

} // namespace

int DxTextLoadCharConv(std::string_view font) {
    DxFontTable& table = *DxFontTables[static_cast<std::size_t>(indexOf(font))];
    if (table.isLoaded) return 0;
    if (!table.isTold) {
        const UtCString path = fontPath(font);
        DxProtoMsg(DxMsg(5738, std::string(font).c_str(), path.c_str()), 1);
    }
    table.isTold = true;
    return cantOpen;
}

int DxTextGetFontIndex(std::string_view font) {
    return DxTextLoadCharConv(font) == 0 ? indexOf(font) : -1;
}

bool DxTextHasFont(std::string_view font) {
    return DxFontTables[static_cast<std::size_t>(indexOf(font))]->isLoaded;
}

int DxTextLoadCadConv(int font) {
    const UtCString path = UoSubstOVPath("$HD_U/$VE/cad/glob/font/std.") + UtFormat("%d", font);
    FILE* file = UtFileOpen(path, "r");
    if (!file) return cantOpen;
    DxCadFontTable& table = *DxCadFontTables.emplace_back(std::make_unique<DxCadFontTable>());
    table.number = font;
    table.width.fill(DxCadFontTable::undefined);
    readCadTable(file, table);
    UtFileClose(file);
    setAverage(table);
    return 0;
}

int DxTextGetCadFontIndex(int font) {
    const auto [entry, isNew] = DxCadFontTableIndex.try_emplace(font, -1);
    if (isNew && DxTextLoadCadConv(font) == 0) entry->second = static_cast<int>(DxCadFontTables.size()) - 1;
    return entry->second >= 0 ? entry->second : static_cast<int>(DxCadFontTables.size()) - 1;
}
