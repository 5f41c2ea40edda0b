// A font as texts use it: a face or a host font with its style, and a cell for each character.
#pragma once

#include "text/font_files.h"
#include "text/host_fonts.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace host {

/// One character of a font. Lengths are relative to the character width parameter, except where noted.
struct Glyph {
    FontFile* file = nullptr; ///< null: nothing to draw
    unsigned index = 0;
    double cell = 0;   ///< width of the cell
    double offset = 0; ///< of the glyph's own origin from the left edge of the cell
    double scale = 1;  ///< width of the glyph relative to its file's, both to the capital letters' height
};

class TextFont {
public:
    virtual ~TextFont() = default;
    /// The character's cell; measured once and kept. A reference stays valid.
    const Glyph& glyph(char32_t c) {
        if (c < 128 && low_[c]) return *low_[c];
        return lookUp(c);
    }
    bool slanted() const { return slanted_; }     ///< the file has no italics: they are made by slanting
    bool stroked() const { return stroked_; }     ///< stands in for a font of single strokes, which are lines
    bool thickened() const { return thickened_; } ///< the file isn't bold: its strokes are drawn thicker

protected:
    virtual Glyph measure(char32_t c) = 0;
    bool slanted_ = false, thickened_ = false, stroked_ = false;

private:
    const Glyph& lookUp(char32_t c);
    const Glyph* low_[128] = {}; ///< into glyphs_, null until measured
    std::unordered_map<char32_t, Glyph> glyphs_;
};

/// What names a font.
struct FontKey {
    int number = 1; ///< host font number, 0: face
    std::string_view face;
    bool bold = false, italic = false;
};

/// All fonts in use.
class TextFonts {
public:
    /// The font of a key. The first time that a face isn't installed the user is told what stands in for it.
    TextFont& resolve(const FontKey& key);
    FontLibrary& library() { return library_; }

private:
    std::unique_ptr<TextFont> make(const FontKey& key);
    FontLibrary library_;
    std::unordered_map<std::string, std::unique_ptr<TextFont>> fonts_;
    std::unordered_set<std::string> told_; ///< missing faces that the user knows of
    TextFont* last_ = nullptr;             ///< texts come in runs of one font
    int lastNumber_ = 0;
    std::string lastFace_;
    bool lastBold_ = false, lastItalic_ = false;
};

/// The program's fonts; made at first use, so that runs without texts don't load any.
TextFonts& textFonts();
/// Forgets all fonts, and so their tables and what the user was told.
void resetTextFonts();

} // namespace host
