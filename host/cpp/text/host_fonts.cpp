#include "text/host_fonts.h"

#include "uo.h"
#include "ut.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>

namespace host {

namespace {

using std::string_view_literals::operator""sv;

// The same numbers and fonts as in int/dxf/font/make_tables.py.
// clang-format off
constexpr HostFontLook looks[] = {
    {1, "Routed Gothic"},                                // txt
    {2, "osifont"},                                      // isocp
    {3, "Routed Gothic"},                                // romans
    {4, "Liberation Serif"},                             // romanc
    {5, "Liberation Serif", false, true},                // italic
    {6, "Liberation Serif", true},                       // gothic
    {7, "DejaVu Sans", false, false, true},              // greekc
    {8, "osifont"},                                      // isocpeur
    {9, "DejaVu Sans Mono"},                             // monotxt
    {10, "Routed Gothic"},                               // simplex
    {11, "Routed Gothic"},                               // romand
    {12, "Liberation Serif", true},                      // romant
    {13, "Liberation Serif"},                            // complex
    {14, "Liberation Serif", false, true},               // italicc
    {15, "Liberation Serif", false, true},               // italict
    {16, "Liberation Serif", false, true},               // scripts
    {17, "Liberation Serif", false, true},               // scriptc
    {18, "Liberation Serif", true},                      // gothice
    {19, "Liberation Serif", true},                      // gothicg
    {20, "Liberation Serif", true},                      // gothici
    {21, "DejaVu Sans", false, false, true},             // greek
    {22, "DejaVu Sans", false, false, true},             // greeks
    {23, "osifont"},                                     // isocp2
    {24, "osifont"},                                     // isocp3
    {25, "osifont"},                                     // isoct
    {26, "osifont"},                                     // isoct2
    {27, "osifont"},                                     // isoct3
    {28, "osifont"},                                     // isocteur
    {29, "osifont"},                                     // iso
    {30, "osifont"},                                     // iso3098b
    {31, "osifont"},                                     // din
    {32, "Routed Gothic"},                               // bold
    {33, "Routed Gothic"},                               // standard
};
// clang-format on

constexpr std::u32string_view greekLower = U"αβχδεφγηι∂κλμνοπϑρστυ∈ωξψζ";
constexpr std::u32string_view greekUpper = U"ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥ∇ΩΞΨΖ";
static_assert(greekLower.size() == 26 && greekUpper.size() == 26);

// The face Symbol from A to Z, a to z and 0xA0 on; 0: a sign of no use in texts.
constexpr std::u32string_view symbolUpper = U"ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ";
constexpr std::u32string_view symbolLower = U"αβχδεφγηιϕκλμνοπθρστυϖωξψζ";
constexpr std::u32string_view symbolHigh =
    U"€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓°±″≥×∝∂•÷≠≡≈…\0\0↵ℵℑℜ℘⊗⊕∅∩∪⊃⊇⊄⊂⊆∈∉∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓◊〈®©™∑"sv;
static_assert(symbolUpper.size() == 26 && symbolLower.size() == 26);

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
        if (width >= 0) sum += width, ++count;
    }
    if (count == 0) font.byCode.fill(100);
    font.average = count ? std::round(sum / count) : 100;
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

char32_t symbolFor(char32_t c) {
    if (c >= 'A' && c <= 'Z') return symbolUpper[c - 'A'];
    if (c >= 'a' && c <= 'z') return symbolLower[c - 'a'];
    constexpr char32_t firstHigh = 0xA0;
    const bool isHigh = c >= firstHigh && c - firstHigh < symbolHigh.size() && symbolHigh[c - firstHigh];
    return isHigh ? symbolHigh[c - firstHigh] : c;
}

int hostFontCode(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c < 0x100)) return static_cast<int>(c);
    const auto* found = std::find(std::begin(windows1252), std::end(windows1252), c);
    return found == std::end(windows1252) || c == 0 ? -1 : static_cast<int>(0x80 + (found - windows1252));
}

} // namespace host
