// The host's own fonts, known by number: character widths from tables, drawn with a font file of like shape.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace host {

/// Widths of a host font, in hundredths of the character width parameter. Codes are those of Windows 1252.
struct HostFontWidths {
    static constexpr double undefined = -1;
    std::array<double, 256> byCode; ///< `undefined` where the table has none
    double average = 100;           ///< of the codes that have a width, a whole number; stands for all others
};

/// The table "$HD_U/$VE/cad/glob/font/std.<number>"; all widths are 100 when it can't be read.
HostFontWidths loadHostFont(int number);

/// How a host font is drawn.
struct HostFontLook {
    int number;
    const char* family;
    bool bold = false, italic = false;
    bool greek = false; ///< Greek letters stand in the places of Latin ones

    /// Whether the font itself has single strokes. Two whose names begin like those of such are TrueType.
    bool isStroked() const {
        const std::string_view drawn = family;
        return (drawn == "osifont" || drawn == "Routed Gothic") && number != 8 && number != 28;
    }
};
/// The look of a host font; that of font 1 for a number without one.
const HostFontLook& hostFontLook(int number);

/// The Greek letter in the place of a Latin one; other characters stay.
char32_t greekFor(char32_t c);

/// The sign in the place of a character of the face Symbol; other characters stay.
char32_t symbolFor(char32_t c);

/// The code of a character in the tables, -1 when they can't have it.
int hostFontCode(char32_t c);

} // namespace host
