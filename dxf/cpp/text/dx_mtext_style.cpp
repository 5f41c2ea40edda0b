#include "dx_mtext_style.h"

#include "../sections/dx_tables_import.h"
#include "../session/dx_documents.h"
#include "../session/dx_unicode.h"
#include "dx_mtext.h"
#include "dx_text_fonts.h"

namespace {

/// Marks behind the first "|", divided by others: a letter and a number each.
void takeOptions(std::string_view options, DX_STYLE_TYPE& style) {
    for (;;) {
        const std::string_view option = options.substr(0, options.find('|'));
        const int isOn = option.substr(option.empty() ? 0 : 1) == "1" ? 1 : 0;
        if (option.starts_with('b')) style.bold = isOn;
        if (option.starts_with('i')) style.italic = isOn;
        if (option.size() == options.size()) return;
        options.remove_prefix(option.size() + 1);
    }
}

DX_STYLE_TYPE describe(std::string_view font, bool isFileCode) {
    constexpr std::size_t longestFace = 156;
    DX_STYLE_TYPE style{};
    style.name.assign("STANDARD");
    style.fontFile.assign("txt");
    style.widthFactor = 1.0;
    const std::size_t bar = font.find('|');
    if (bar != std::string_view::npos) takeOptions(font.substr(bar + 1), style);
    std::string_view name = font.substr(0, bar);
    const bool isFile = DxMtextIsShapeFont(name) || (isFileCode && DxTextHasFont(name));
    if (isFile) {
        DxConvStyleFilename(name.substr(0, name.find('.')), &style.fontFile);
        return style;
    }
    if (name.starts_with('@')) name.remove_prefix(1);
    const std::string face(name.substr(0, DxCharsLength(name, longestFace)));
    style.fontFamily.assign(face);
    style.fontFile.assign(face + ".ttf");
    return style;
}

std::string keyOf(const DX_STYLE_TYPE& style) {
    std::string key(style.fontFile.view());
    key += '|';
    key += style.fontFamily.view();
    key += style.bold ? "|b" : "|";
    key += style.italic ? "i" : "";
    return key;
}

/// Enters a style under a name that no style of a file has.
int enter(DX_STYLE_TYPE& style) {
    const std::size_t count = DxDocuments.currentTables().styles.size();
    const DX_NAME& font = style.fontFamily.empty() ? style.fontFile : style.fontFamily;
    const UtCString name = UtFormat("$#:-)%i%s", static_cast<int>(count), font.c_str());
    style.name.assign(name.Lower().str());
    int index = -1;
    return DxTableAddStyle(&style, &index) == 0 ? index : -1;
}

} // namespace

void DxMtextFindStyle(std::string_view font, bool isFileCode, DX_NAME* style) {
    DX_STYLE_TYPE wanted = describe(font, isFileCode);
    auto& made = DxTextStyleIndex().made;
    const auto [entry, isNew] = made.try_emplace(keyOf(wanted), -1);
    if (isNew && DxTableGetStyleIndex(wanted, entry->second) != 0) entry->second = enter(wanted);
    if (entry->second < 0) return;
    *style = DxDocuments.currentTables().styles[static_cast<std::size_t>(entry->second)].name;
}
