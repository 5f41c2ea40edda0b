#include "dx_text_host.h"

#include "../host/dx_host.h"
#include "ci_text.h"
#include "ds.h"
#include "dx_text_codes.h"
#include "text_state.h"

#include <algorithm>
#include <vector>

namespace {

DsCsr cursorOf(int pat, int row) {
    DsDpatCsr parts;
    parts.SetPatNo(pat);
    parts.SetElRow(row);
    parts.SetDtype(D_TEXT);
    return {parts, 0};
}

/// Blanks at the end of a line would not count in the size of a face.
void holdBlanks(std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == ' ')
            out += "\u00A0";
        else
            out += c;
    }
    text.swap(out);
}

/// Blank texts would only have held a line's place.
void removeBlankTexts() {
    for (auto place = DxTextList.rbegin(); place != DxTextList.rend(); ++place) {
        UtCString text;
        const bool isRead = DxCiTextGet(place->pat, place->row, nullptr, &text) == 0;
        if (isRead && text.str().find_first_not_of(" \t") == std::string::npos)
            CiText(DxCiContextId).Del(cursorOf(place->pat, place->row));
    }
}

} // namespace

int DxCiTextAdd(int pat, int* row, const RPT3& point, const UtCString& text, int type, double lineLength) {
    CiText texts(DxCiContextId);
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(pat, &cursor)) return error;
    const bool hasEscapes = text.str().find('\\') != std::string::npos;
    const int added = Dxovtext(cursor, point, hasEscapes ? DxTextConv2Unicode(text.str()) : text);
    if (added) return added;
    *row = cursor.Get().elRow;
    if (lineLength > 0) {
        if (const int error = texts.ChgLineLen(cursor, lineLength)) return error;
    }
    constexpr int ofDimension = 3;
    return type == ofDimension ? texts.SetDimType(cursor, type) : 0;
}

int DxCiTextGet(int pat, int row, RPT3* point, UtCString* text) {
    return CiText(DxCiContextId).Get(cursorOf(pat, row), point ? 1 : 0, 1, point, text);
}

int DxCiTextChg(int pat, int row, const RPT3& point, const UtCString& text) {
    return CiText(DxCiContextId).Chg(cursorOf(pat, row), point, DxTextConv2Unicode(text.str()));
}

int DxCiTextSize(const UtCString& text, double* width, double* height) {
    CiText texts(DxCiContextId);
    OV_TEXT_PARM parm;
    if (const int error = texts.ActParams(&parm)) return error;
    std::string shown = DxTextConv2Unicode(text.str()).str();
    if (DxCiTextIsTtf(static_cast<unsigned short>(parm.font))) holdBlanks(shown);
    return texts.Size(shown, width, height);
}

int DxCiTextIsTtf(unsigned short font) {
    return DsTextIsTtf(font) ? 1 : 0;
}

void DxTextListInit(int size) {
    DxTextList.clear();
    DxTextListSize = static_cast<std::size_t>(std::max(size, 0));
    DxTextList.reserve(DxTextListSize);
}

void DxTextListAdd(int pat, int row) {
    if (DxTextList.size() < DxTextListSize) DxTextList.push_back({pat, row});
}

int DxTextListJoin() {
    constexpr int byPosition = 4, dontFit = 2360;
    if (DxTextList.size() < 2) return 0;
    std::vector<DsCsr> cursors;
    cursors.reserve(DxTextList.size());
    for (const DX_TEXT_PLACE& place : DxTextList) cursors.push_back(cursorOf(place.pat, place.row));
    DsCsr target;
    if (const int error = DsCursorFromPatNo(DxActPat, &target)) return error;
    const int result =
        CiText(DxCiContextId).JoinTexts(cursors.data(), static_cast<int>(cursors.size()), byPosition, target);
    if (result != dontFit) return result;
    removeBlankTexts();
    return 0;
}
