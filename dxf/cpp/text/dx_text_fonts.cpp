// Styles: DXF fonts and faces on one side, host fonts and faces on the other.
#include "dx_text_fonts.h"

#include "../config/config_state.h"
#include "../config/dx_names.h"
#include "../sections/dx_tables_import.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "uo.h"

#include <algorithm>

namespace {

constexpr std::string_view usualFont = "txt";

/// The entry that is the default of the font map; it always exists in a session.
std::string_view defaultDxfFont() {
    return DxFonts.empty() ? usualFont : DxFonts[0].font.view();
}

void takeStyle(const DX_STYLE_TYPE& style, DxCharset& charset) {
    charset.fontFile = style.fontFile;
    charset.face = style.fontFamily;
    charset.bits[DX_BIT_ITALIC] = style.italic;
    charset.bits[DX_BIT_BOLD] = style.bold;
    charset.widthFactor = style.widthFactor;
    if (charset.face.empty()) return;
    charset.font = 0;
    std::string_view file = charset.fontFile.view();
    if (file.size() >= 4 && file[file.size() - 4] == '.') charset.fontFile.s[file.size() - 4] = 0;
}

/// Entries of the font map in their order: each that names the font or the face takes it over, so that the
/// last one wins, and one may lead on to another.
void takeFontMap(DxCharset& charset) {
    for (const DX_FONT_TYPE& entry : DxFonts) {
        const std::string_view name = entry.font.view();
        if (name != charset.fontFile.view() && (charset.face.empty() || name != charset.face.view()))
            continue;
        charset.font = entry.number;
        charset.face = entry.hostFont;
        charset.factor = entry.factor;
    }
}

const DX_STYLE_TYPE* findStyle(std::string_view name) {
    const auto& styles = DxDocuments.currentTables().styles;
    DxStyleIndex& index = DxTextStyleIndex();
    const auto found = index.byName.find(std::string(name));
    return found == index.byName.end() ? nullptr : &styles[found->second];
}

DxCharset findCharset(std::string_view style, std::string_view defaultFont) {
    DxCharset charset;
    charset.fontFile.assign(defaultFont.empty() ? usualFont : defaultFont);
    charset.face.clear();
    if (const DX_STYLE_TYPE* found = findStyle(style)) takeStyle(*found, charset);
    takeFontMap(charset);
    return charset;
}

/// The DXF font of the font map's entry for a host font; the default's if none names it.
std::string_view mappedDxfFont(int font, std::string_view face) {
    for (std::size_t i = 1; i < DxFonts.size(); ++i) {
        const DX_FONT_TYPE& entry = DxFonts[i];
        const bool isMeant = font != 0 ? entry.number == font
                                       : !face.empty() && entry.number == 0 && entry.hostFont.view() == face;
        if (isMeant) return entry.font.view();
    }
    if (font != 0) DxProtoMsg(DxMsg(5737, font), 0);
    return defaultDxfFont();
}

struct WantedStyle {
    std::string name;
    bool isFace;
    int bold, italic;
};

bool fits(const DX_STYLE_TYPE& style, const WantedStyle& wanted) {
    if (!wanted.isFace) return style.fontFile.view() == wanted.name;
    return style.fontFamily.view() == wanted.name && style.bold == wanted.bold &&
           style.italic == wanted.italic;
}

DX_STYLE_TYPE newStyle(const WantedStyle& wanted) {
    DX_STYLE_TYPE style{};
    style.handle = ++DxNextHandle;
    style.widthFactor = 1.0;
    std::string name = wanted.name, file = wanted.name;
    if (wanted.isFace) {
        file += ".ttf";
        style.fontFamily.assign(wanted.name);
        style.bold = wanted.bold;
        style.italic = wanted.italic;
        if (wanted.bold || wanted.italic) name += ' ';
        if (wanted.bold) name += 'B';
        if (wanted.italic) name += 'I';
    }
    style.name.assign(name);
    style.fontFile.assign(file);
    return style;
}

} // namespace

const DxTextOptions& DxGetTextOptions() {
    DxTextOptions& options = DxTextOptionsRead;
    if (options.isRead) return options;
    options.isRead = true;
    UtCString font;
    int isFixed = 0;
    if (UoGetMacVarS("$DxfDfltFont", &font) == 0) options.defaultFont = font.str();
    options.isFixFont = UoGetMacVarI("&DxfFixFont", &isFixed) == 0 && isFixed != 0;
    return options;
}

DxStyleIndex& DxTextStyleIndex() {
    const DxTables& tables = DxDocuments.currentTables();
    if (DxLastStyleTables != &tables) {
        DxLastStyleTables = &tables;
        DxLastStyleIndex = &DxStyleIndexes[&tables];
    }
    DxStyleIndex& index = *DxLastStyleIndex;
    for (; index.indexed < tables.styles.size(); ++index.indexed)
        index.byName.try_emplace(std::string(tables.styles[index.indexed].name.view()), index.indexed);
    return index;
}

const DxCharset& DxTextGetCharset(std::string_view style, std::string_view defaultFont) {
    DxStyleIndex& index = DxTextStyleIndex();
    if (index.last && index.lastStyle == style && index.lastDefault == defaultFont) return *index.last;
    std::string key(defaultFont);
    key += '\1';
    key += style;
    const auto [entry, isNew] = index.charsets.try_emplace(std::move(key));
    if (isNew) entry->second = findCharset(style, defaultFont);
    index.lastStyle = style;
    index.lastDefault = defaultFont;
    index.last = &entry->second;
    return entry->second;
}

const DX_STYLE_TYPE* DxTextGetDXFStyle(int font, const UtCString& face, const int bits[DX_BIT_COUNT]) {
    constexpr int acad14 = 6;
    const std::string& faceName = face.str();
    const bool isFace = font == 0 && !faceName.empty() && DxWriteVersion <= acad14;
    const WantedStyle wanted{isFace ? faceName : std::string(mappedDxfFont(font, faceName)), isFace,
                             bits[DX_BIT_BOLD] ? 1 : 0, bits[DX_BIT_ITALIC] ? 1 : 0};
    auto& styles = DxDocuments.currentTables().styles;
    const auto* known =
        std::find_if(styles.begin(), styles.end(), [&](const DX_STYLE_TYPE& s) { return fits(s, wanted); });
    if (known != styles.end()) return known;
    DX_STYLE_TYPE made = newStyle(wanted);
    UtCString name(made.name.view());
    DxCheckName(name);
    made.name.assign(name.str());
    int index = 0;
    return DxTableAddStyle(&made, &index) == 0 ? &styles[static_cast<std::size_t>(index)] : nullptr;
}
