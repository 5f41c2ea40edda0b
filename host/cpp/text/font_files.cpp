#include "text/font_files.h"

#include "ut_string.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>

namespace host {

namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

Pattern familyPattern(const std::string& family) {
    Pattern pattern(FcPatternCreate(), FcPatternDestroy);
    if (pattern && !family.empty()) {
        FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    }
    return pattern;
}

/// The best match of a pattern that fontconfig's rules have completed.
Pattern bestMatch(FcPattern* pattern) {
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result{};
    return {FcFontMatch(nullptr, pattern, &result), FcPatternDestroy};
}

bool filePath(FcPattern* pattern, std::string& path, int& index) {
    FcChar8* file = nullptr;
    if (!pattern || FcPatternGetString(pattern, FC_FILE, 0, &file) != FcResultMatch) return false;
    path = reinterpret_cast<const char*>(file);
    if (FcPatternGetInteger(pattern, FC_INDEX, 0, &index) != FcResultMatch) index = 0;
    return true;
}

/// Some fonts have a mere block for the Cyrillic letter, but its Latin twin, which looks the same.
char32_t twinOf(char32_t c) {
    constexpr char32_t cyrillicIo = 0x0451, cyrillicCapitalIo = 0x0401;
    return c == cyrillicIo ? U'ë' : c == cyrillicCapitalIo ? U'Ë' : c;
}

/// A language that only a font made for the character's script claims to cover; null for other scripts. Some
/// fonts have a few ideographs, and a text should have all of them from one.
const char* languageOf(char32_t c) {
    constexpr char32_t firstRadical = 0x2E80, lastIdeograph = 0x9FFF;
    return c >= firstRadical && c <= lastIdeograph ? "ja" : nullptr;
}

/// FreeType shares one library object among all faces; FontFile objects keep it alive.
std::shared_ptr<FT_LibraryRec_> freetype() {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library)) return nullptr;
    return {library, FT_Done_FreeType};
}

} // namespace

struct FontFile::Handles {
    std::shared_ptr<FT_LibraryRec_> library;
    FT_Face face = nullptr;

    Handles() = default;
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;
    ~Handles() {
        if (face) FT_Done_Face(face);
    }
};

std::unique_ptr<FontFile> FontFile::open(const std::string& path, int faceIndex) {
    auto handles = std::make_unique<Handles>();
    handles->library = freetype();
    if (!handles->library ||
        FT_New_Face(handles->library.get(), path.c_str(), faceIndex & 0xFFFF, &handles->face)) {
        return nullptr;
    }
    if (!FT_IS_SCALABLE(handles->face) || handles->face->units_per_EM == 0) return nullptr;
    return std::unique_ptr<FontFile>(new FontFile(std::move(handles), path, faceIndex));
}

FontFile::FontFile(std::unique_ptr<Handles> handles, std::string path, int faceIndex)
    : handles_(std::move(handles)), path_(std::move(path)), faceIndex_(faceIndex) {
    italic_ = (handles_->face->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
    bold_ = (handles_->face->style_flags & FT_STYLE_FLAG_BOLD) != 0;
    singleStrokes_ = family() == "osifont" || family().starts_with("Routed Gothic");
    unitsPerCap_ = capHeight();
    emPerCap_ = handles_->face->units_per_EM / unitsPerCap_;
}

FontFile::~FontFile() = default;

std::string FontFile::family() const {
    return handles_->face->family_name ? handles_->face->family_name : "";
}

/// Height of an H in font units: what the font says, else measured, else the usual share of the em square.
double FontFile::capHeight() const {
    FT_Face face = handles_->face;
    const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    if (os2 && os2->version >= 2 && os2->version != 0xFFFF && os2->sCapHeight > 0) return os2->sCapHeight;
    const FT_UInt index = FT_Get_Char_Index(face, 'H');
    if (index && FT_Load_Glyph(face, index, FT_LOAD_NO_SCALE) == 0 && face->glyph->metrics.height > 0) {
        return static_cast<double>(face->glyph->metrics.height);
    }
    return face->units_per_EM * 0.72;
}

const FileGlyph& FontFile::glyph(char32_t c) {
    const auto [entry, isNew] = glyphs_.try_emplace(c);
    if (!isNew) return entry->second;
    FileGlyph& glyph = entry->second;
    glyph.index = FT_Get_Char_Index(handles_->face, c);
    const FT_UInt twin = glyph.index ? FT_Get_Char_Index(handles_->face, twinOf(c)) : 0;
    if (twin) glyph.index = twin;
    if (FT_Load_Glyph(handles_->face, glyph.index, FT_LOAD_NO_SCALE) == 0) {
        const FT_Glyph_Metrics& metrics = handles_->face->glyph->metrics;
        glyph.advance = static_cast<double>(metrics.horiAdvance) / unitsPerCap_;
        glyph.left = static_cast<double>(metrics.horiBearingX) / unitsPerCap_;
        glyph.ink = static_cast<double>(metrics.width) / unitsPerCap_;
    }
    return glyph;
}

FontLibrary::FontLibrary() {
    FcInit();
}

FontLibrary::~FontLibrary() = default;

bool FontLibrary::hasFamily(const std::string& family) {
    if (families_.empty()) listFamilies();
    return families_.contains(UtCString(family).Lower().str());
}

void FontLibrary::listFamilies() {
    const Pattern all(FcPatternCreate(), FcPatternDestroy);
    FcObjectSet* objects = FcObjectSetBuild(FC_FAMILY, static_cast<char*>(nullptr));
    FcFontSet* fonts = FcFontList(nullptr, all.get(), objects);
    FcObjectSetDestroy(objects);
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcChar8* name = nullptr;
        for (int n = 0; FcPatternGetString(fonts->fonts[i], FC_FAMILY, n, &name) == FcResultMatch; ++n) {
            families_.insert(UtCString(reinterpret_cast<const char*>(name)).Lower().str());
        }
    }
    if (fonts) FcFontSetDestroy(fonts);
}

FontFile* FontLibrary::find(const std::string& family, bool bold, bool italic) {
    std::string key = family;
    key += bold ? "\1b" : "\1";
    key += italic ? "i" : "";
    const auto [entry, isNew] = byStyle_.try_emplace(key, nullptr);
    if (!isNew) return entry->second;
    const Pattern pattern = familyPattern(family);
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddInteger(pattern.get(), FC_WIDTH, FC_WIDTH_NORMAL);
    const Pattern match = bestMatch(pattern.get());
    std::string path;
    int index = 0;
    if (filePath(match.get(), path, index)) entry->second = openOnce(path, index);
    return entry->second;
}

FontFile* FontLibrary::findFor(char32_t c) {
    const auto [entry, isNew] = byChar_.try_emplace(c, nullptr);
    if (!isNew) return entry->second;
    const Pattern pattern = familyPattern("sans-serif");
    FcCharSet* chars = FcCharSetCreate();
    FcCharSetAddChar(chars, c);
    FcPatternAddCharSet(pattern.get(), FC_CHARSET, chars);
    if (const char* language = languageOf(c))
        FcPatternAddString(pattern.get(), FC_LANG, reinterpret_cast<const FcChar8*>(language));
    FcCharSetDestroy(chars);
    const Pattern match = bestMatch(pattern.get());
    std::string path;
    int index = 0;
    if (filePath(match.get(), path, index)) {
        FontFile* file = openOnce(path, index);
        if (file && file->glyph(c).index) entry->second = file;
    }
    return entry->second;
}

FontFile* FontLibrary::openOnce(const std::string& path, int faceIndex) {
    auto [entry, isNew] = files_.try_emplace(path + '\1' + std::to_string(faceIndex));
    if (isNew) entry->second = FontFile::open(path, faceIndex);
    return entry->second.get();
}

} // namespace host

// Fontconfig finds its settings through offsets, which the leak checker doesn't know for pointers.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
extern "C" const char* __lsan_default_suppressions(); // NOLINT: the checker's name
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
extern "C" const char* __lsan_default_options(); // NOLINT: the checker's name
extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
#endif
#endif
