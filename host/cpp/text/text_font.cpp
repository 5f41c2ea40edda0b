#include "text/text_font.h"

#include "ov.h"
#include "text/substitutes.h"
#include "text/tolerance_signs.h"
#include "trt.h"

#include <optional>

namespace host {

namespace {

constexpr int tabBlanks = 4;

bool isSwitch(char32_t c) {
    return c < 32 && c != '\t';
}

/// The file to draw a character with: the font's own, else any that has it, else the font's mark for a gap.
FontFile* fileFor(FontFile* own, char32_t c) {
    if (!own || own->glyph(c).index || c == ' ' || c == 0xA0) return own;
    FontFile* other = textFonts().library().findFor(c);
    return other ? other : own;
}

/// A TrueType face or its stand-in.
class FaceFont : public TextFont {
public:
    FaceFont(FontFile* file, double width, bool bold, bool italic, FaceSigns signs = FaceSigns::Letters,
             bool isStroked = false)
        : file_(file), width_(width), signs_(signs) {
        stroked_ = isStroked;
        slanted_ = italic && file && !file->italic();
        thickened_ = bold && file && !file->bold();
    }

private:
    Glyph measure(char32_t c) override {
        if (isSwitch(c) || !file_) return {};
        if (c == '\t') return {nullptr, 0, tabBlanks * file_->glyph(' ').advance * width_, 0, width_};
        if (signs_ == FaceSigns::Symbols) c = symbolFor(c);
        if (signs_ == FaceSigns::Tolerances) c = toleranceSignFor(c);
        FontFile* file = fileFor(file_, c);
        const FileGlyph& glyph = file->glyph(c);
        return {file, glyph.index, glyph.advance * width_, 0, width_};
    }

    FontFile* file_;
    double width_; ///< a stand-in is stretched to the width of the missing face
    FaceSigns signs_;
};

/// A host font: cells from its table, what is drawn of a glyph centred in them.
class NumberFont : public TextFont {
public:
    NumberFont(const HostFontLook& look, int number, FontFile* file, bool bold, bool italic)
        : widths_(loadHostFont(number)), file_(file), isGreek_(look.greek) {
        slanted_ = italic && file && !file->italic();
        thickened_ = bold && file && !file->bold();
        stroked_ = look.isStroked();
        overhang_ = (italic ? 0.4 : 0.2) * widths_.average * 0.01;
        setScale();
    }

private:
    /// One scale for all glyphs, so that letters keep their proportions: that which makes the average letter
    /// fill the average cell.
    void setScale() {
        double cells = 0, ink = 0;
        for (int c = '0'; file_ && c <= 'z'; ++c) {
            if (widths_.byCode[c] < 0) continue;
            cells += widths_.byCode[c] * 0.01;
            ink += file_->glyph(shown(static_cast<char32_t>(c))).ink;
        }
        if (ink > 0 && cells > 0) scale_ = cells / ink;
    }

    char32_t shown(char32_t c) const { return isGreek_ ? greekFor(c) : c; }

    double cellOf(char32_t c) const {
        const int code = c == 0xA0 ? ' ' : hostFontCode(c);
        const double width = code >= 0 ? widths_.byCode[code] : HostFontWidths::undefined;
        return (width < 0 ? widths_.average : width) * 0.01;
    }

    Glyph measure(char32_t c) override {
        if (isSwitch(c)) return {};
        const double cell = cellOf(c);
        if (c == '\t')
            return {nullptr, 0, widths_.byCode['\t'] < 0 ? tabBlanks * cellOf(' ') : cell, 0, scale_};
        c = shown(c);
        FontFile* file = fileFor(file_, c);
        if (!file) return {nullptr, 0, cell, 0, 1};
        const FileGlyph& glyph = file->glyph(c);
        const double room = cell + overhang_;
        const double scale = glyph.ink * scale_ > room ? room / glyph.ink : scale_;
        return {file, glyph.index, cell, cell / 2 - (glyph.left + glyph.ink / 2) * scale, scale};
    }

    HostFontWidths widths_;
    FontFile* file_;
    bool isGreek_;
    double scale_ = 1;
    double overhang_; ///< what is drawn may be this much wider than its cell, lest it run into its neighbours
};

void tellSubstitute(std::string_view face, const Substitute& substitute) {
    constexpr int message = 30001;
    constexpr const char* text = "Schriftart \"%s\" ist nicht installiert, ersetzt durch \"%s\"!";
    ovwritealpha(UtFormatMsg(TrtMsgGet("cad_msg.txt", message, text), text, std::string(face).c_str(),
                             std::string(substitute.family).c_str()));
}

std::optional<TextFonts> fonts; // empty until the first text

} // namespace

TextFonts& textFonts() {
    return fonts ? *fonts : fonts.emplace();
}

void resetTextFonts() {
    fonts.reset();
}

const Glyph& TextFont::lookUp(char32_t c) {
    const auto [entry, isNew] = glyphs_.try_emplace(c);
    if (isNew) entry->second = measure(c);
    if (c < 128) low_[c] = &entry->second;
    return entry->second;
}

TextFont& TextFonts::resolve(const FontKey& key) {
    if (last_ && key.number == lastNumber_ && key.bold == lastBold_ && key.italic == lastItalic_ &&
        key.face == lastFace_) {
        return *last_;
    }
    std::string name = std::to_string(key.number) + (key.bold ? "b" : "-") + (key.italic ? "i" : "-");
    if (key.number == 0) name += key.face;
    auto& font = fonts_[name];
    if (!font) font = make(key);
    last_ = font.get();
    lastNumber_ = key.number;
    lastFace_ = key.face;
    lastBold_ = key.bold;
    lastItalic_ = key.italic;
    return *last_;
}

std::unique_ptr<TextFont> TextFonts::make(const FontKey& key) {
    if (key.number != 0) {
        const HostFontLook& look = hostFontLook(key.number);
        const bool italic = key.italic || look.italic;
        FontFile* file = library_.find(look.family, key.bold || look.bold, italic);
        return std::make_unique<NumberFont>(look, key.number, file, key.bold || look.bold, italic);
    }
    const std::string face(key.face);
    if (library_.hasFamily(face)) {
        return std::make_unique<FaceFont>(library_.find(face, key.bold, key.italic), 1.0, key.bold,
                                          key.italic);
    }
    const Substitute& substitute = substituteFor(face);
    if (!face.empty() && told_.insert(face).second) tellSubstitute(face, substitute);
    const bool bold = key.bold || substitute.bold, italic = key.italic || substitute.italic;
    FontFile* file = library_.find(std::string(substitute.family), bold, italic);
    return std::make_unique<FaceFont>(file, substitute.width, bold, italic, substitute.signs,
                                      substitute.isStroked);
}

} // namespace host
