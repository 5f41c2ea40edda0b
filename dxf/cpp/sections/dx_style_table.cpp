// STYLE records: text styles.
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "../session/dx_reader.h"
#include "../session/dx_unicode.h"
#include "dx_tables_import.h"
#include "dx_tables_read.h"

#include <algorithm>

namespace {

using R = DX_STYLE_TYPE;
constexpr auto fields = dxFields<R>({
    {2, &R::name, DX_UPPER},
    {5, &R::handle},
    {40, &R::height},
    {41, &R::widthFactor},
    {50, &R::obliqueAngle},
});

/// Font file and, in the extended data of "ACAD", the TrueType face with its marks.
struct Fonts {
    DX_STYLE_TYPE& style;
    bool inAcad = false;

    void operator()(const DxPair& pair) {
        constexpr int italicBit = 1 << 24, boldBit = 1 << 25;
        switch (pair.code) {
        case 3: DxConvStyleFilename(pair.text, &style.fontFile); break;
        case 1001: inAcad = pair.text == "ACAD"; break;
        case 1000:
            if (inAcad) style.fontFamily.assign(DxReadDecoded(pair.text));
            break;
        case 1071:
            if (!inAcad) break;
            style.italic = DxAtoi(pair.text) & italicBit ? 1 : 0;
            style.bold = DxAtoi(pair.text) & boldBit ? 1 : 0;
            break;
        default: break;
        }
    }
};

/// Overwrites the style at `index`, or appends it with -1.
int putStyle(const DX_STYLE_TYPE& style, int& index) {
    auto& styles = DxDocuments.currentTables().styles;
    if (index >= 0) {
        styles[index] = style;
        return 0;
    }
    if (styles.add(style)) return 2360;
    index = static_cast<int>(styles.size()) - 1;
    return 0;
}

} // namespace

int DxReadStyle(DxTableNames& names) {
    DX_STYLE_TYPE style = {};
    style.widthFactor = 1.0;
    if (const int error = DxReadFields(style, fields, Fonts{style})) return error;
    if (style.widthFactor == 0) style.widthFactor = 1.0;
    const auto known = names.styles.find(std::string(style.name.view()));
    int index = known == names.styles.end() ? -1 : known->second;
    if (const int error = putStyle(style, index)) return error;
    names.styles.emplace(style.name.view(), index);
    return 0;
}

int DxTableAddStyle(const DX_STYLE_TYPE* rec, int* index) {
    const auto& styles = DxDocuments.currentTables().styles;
    const auto* known = std::find_if(styles.begin(), styles.end(),
                                     [&](const R& style) { return style.name.view() == rec->name.view(); });
    *index = known == styles.end() ? -1 : static_cast<int>(known - styles.begin());
    return putStyle(*rec, *index);
}

int DxTableGetStyleIndex(const DX_STYLE_TYPE& rec, int& index) {
    const auto equals = [&](const R& style) {
        return style.height == rec.height && style.widthFactor == rec.widthFactor &&
               style.obliqueAngle == rec.obliqueAngle && style.italic == rec.italic &&
               style.bold == rec.bold && style.fontFile.view() == rec.fontFile.view() &&
               style.fontFamily.view() == rec.fontFamily.view();
    };
    const auto& styles = DxDocuments.currentTables().styles;
    const auto* known = std::find_if(styles.begin(), styles.end(), equals);
    if (known == styles.end()) return 1005;
    index = static_cast<int>(known - styles.begin());
    return 0;
}

void DxConvStyleFilename(std::string_view source, DX_NAME* target) {
    std::string name = DxHostText(source).str();
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (const std::size_t shx = name.find(".shx"); shx != std::string::npos) name.resize(shx);
    const std::size_t separator = name.find_last_of("/\\:");
    const bool hasPath = separator != std::string::npos && separator > 0;
    target->assign(hasPath ? std::string_view(name).substr(separator + 1) : name);
}
