#include "text/host_fonts.h"

#include "uo.h"
#include "ut.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

namespace host {

namespace {

constexpr HostFontLook looks[] = {
    {1, "Routed Gothic"},
    {2, "osifont"},
    {3, "Routed Gothic"},
    {4, "Liberation Serif"},
    {5, "Liberation Serif", false, true},
    {6, "Liberation Serif", true},
    {7, "DejaVu Sans", false, false, true},
    {8, "osifont", false, true},
    {9, "DejaVu Sans Mono"},
};

constexpr std::u32string_view greekLower = U"αβχδεφγηι∂κλμνοπϑρστυ∈ωξψζ";
constexpr std::u32string_view greekUpper = U"ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥ∇ΩΞΨΖ";
static_assert(greekLower.size() == 26 && greekUpper.size() == 26);

// Windows 1252 from 0x80 to 0x9F; 0: undefined.
constexpr char16_t windows1252[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

int number(const std::string& line, std::size_t at) {
    int value = 0;
    if (at < line.size()) std::from_chars(line.data() + at, line.data() + line.size(), value);
    return value;
}

void readWidths(FILE* stream, HostFontWidths& font) {
    constexpr int widest = 10000;
    int code = 0;
    std::string line;
    while (UtReadLine(stream, line) == 0) {
        if (line.size() > 2 && line[0] == '*' && line[2] == ';') code = number(line, 3);
        if (!line.empty() && line[0] == 'W' && code >= 1 && code <= 255) {
            font.byCode[code] = std::clamp(number(line, 1), 0, widest);
        }
    }
}

} // namespace

HostFontWidths loadHostFont(int number) {
    HostFontWidths font;
    font.byCode.fill(HostFontWidths::undefined);
    const UtCString path = UoSubstOVPath("$HD_U/$VE/cad/glob/font/std.") + std::to_string(number);
    if (FILE* stream = UtFileOpen(path, "r")) {
        readWidths(stream, font);
        UtFileClose(stream);
    }
    double sum = 0;
    int count = 0;
    for (const double width : font.byCode) {
        if (width > 0) sum += width, ++count;
    }
    if (count == 0) font.byCode.fill(100);
    font.average = count ? sum / count : 100;
    return font;
}

const HostFontLook& hostFontLook(int number) {
    const auto* found = std::find_if(std::begin(looks), std::end(looks),
                                     [&](const HostFontLook& look) { return look.number == number; });
    return found == std::end(looks) ? looks[0] : *found;
}

char32_t greekFor(char32_t c) {
    if (c >= 'a' && c <= 'z') return greekLower[c - 'a'];
    return c >= 'A' && c <= 'Z' ? greekUpper[c - 'A'] : c;
}

int hostFontCode(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c < 0x100)) return static_cast<int>(c);
    const auto* found = std::find(std::begin(windows1252), std::end(windows1252), c);
    return found == std::end(windows1252) || c == 0 ? -1 : static_cast<int>(0x80 + (found - windows1252));
}

} // namespace host
