// CiText: the texts of patterns by cursor.
#include "ci_text.h"

#include "dimension/dim_text.h"
#include "drawing/context.h"
#include "drawing/host_state.h"
#include "services/failure.h"
#include "text/join.h"
#include "text/text_parm.h"

#include <cmath>
#include <set>

using namespace host;

static Pattern* patternOf(const DsCsr& cursor) {
    return openDrawing().find(cursor.Get().patNo);
}

/// The text that a cursor is on; null when it is on none.
static Text* textOf(const DsCsr& cursor) {
    const DS_CURSOR_STRUCT& at = cursor.Get();
    Pattern* pattern = patternOf(cursor);
    const bool inside = pattern && at.type == D_TEXT && at.elRow >= 0 &&
                        static_cast<std::size_t>(at.elRow) < pattern->texts.size();
    return inside ? &pattern->texts[static_cast<std::size_t>(at.elRow)] : nullptr;
}

static void place(Text& text, const RPT3& point) {
    text.x = point.x;
    text.y = point.y;
    text.z = point.z;
}

static void aimAtLast(DsCsr& cursor, const Pattern& pattern) {
    cursor.Get().elRow = static_cast<int>(pattern.texts.size()) - 1;
    cursor.Get().vertNo = 0;
    cursor.Get().type = D_TEXT;
}

int CiText::Add(DsCsr& cursor, const RPT3& point, const UtCString& text) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = patternOf(cursor);
    if (!pattern) return errorNoSuchObject;
    place(addText(*pattern, text.str()), scaled(point, contextFactor(contextId_)));
    aimAtLast(cursor, *pattern);
    return 0;
}

int CiText::Get(const DsCsr& cursor, int withPoint, int withText, RPT3* point, UtCString* text) {
    if (callFails()) return errorNoMemory;
    const Text* found = textOf(cursor);
    if (!found) return errorNoSuchObject;
    if (withPoint) *point = scaled({found->x, found->y, found->z}, 1 / contextFactor(contextId_));
    if (withText) *text = joinLines(found->lines);
    return 0;
}

int CiText::Chg(const DsCsr& cursor, const RPT3& point, const UtCString& text) {
    if (callFails()) return errorNoMemory;
    Text* found = textOf(cursor);
    if (!found) return errorNoSuchObject;
    place(*found, scaled(point, contextFactor(contextId_)));
    found->lines = splitLines(text.str());
    return 0;
}

int CiText::ChgLineLen(const DsCsr& cursor, double length) {
    if (callFails()) return errorNoMemory;
    Text* found = textOf(cursor);
    if (!found) return errorNoSuchObject;
    if (!std::isfinite(length) || length < 0) return errorNotApplicable;
    found->lineLength = length * contextFactor(contextId_);
    return 0;
}

int CiText::SetDimType(const DsCsr& cursor, int type) {
    if (callFails()) return errorNoMemory;
    Text* found = textOf(cursor);
    if (!found) return errorNoSuchObject;
    found->dimType = type;
    return 0;
}

int CiText::GetDimType(const DsCsr& cursor, int* type) {
    if (callFails()) return errorNoMemory;
    const Text* found = textOf(cursor);
    if (!found) return errorNoSuchObject;
    *type = found->dimType;
    return 0;
}

/// Removes the text in a row; the rows behind it move up.
static void removeText(Pattern& pattern, int row) {
    pattern.texts.erase(pattern.texts.begin() + row);
    --openDrawing().elementCount;
    forgetTextRow(pattern, row);
}

int CiText::Del(const DsCsr& cursor) {
    if (callFails()) return errorNoMemory;
    if (!textOf(cursor)) return errorNoSuchObject;
    removeText(*patternOf(cursor), cursor.Get().elRow);
    return 0;
}

int CiText::Size(const UtCString& text, double* width, double* height) {
    if (const int error = ovtextsize(text, width, height)) return error;
    const double factor = 1 / contextFactor(contextId_);
    *width *= factor;
    *height *= factor;
    return 0;
}

int CiText::ActParams(OV_TEXT_PARM* parm) {
    return ovtextparamsttf(5, parm);
}

int CiText::JoinTexts(const DsCsr cursors[], int count, int mode, DsCsr& target) {
    constexpr int dontFit = 2360, byPosition = 4;
    if (callFails()) return errorNoMemory;
    Pattern* pattern = patternOf(target);
    if (!pattern) return errorNoSuchObject;
    if (mode != byPosition) return errorNotApplicable;
    std::vector<Text> texts;
    std::set<std::pair<int, int>> rows; // of all texts, in ascending order
    for (int i = 0; i < count; ++i) {
        const Text* text = textOf(cursors[i]);
        if (!text) return errorNoSuchObject;
        const bool isNew = rows.emplace(cursors[i].Get().patNo, cursors[i].Get().elRow).second;
        if (isNew) texts.push_back(*text);
    }
    std::optional<Text> joined = joinTexts(texts, openDrawing());
    if (!joined) return dontFit;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        removeText(*openDrawing().find(row->first), row->second);
    pattern->texts.push_back(std::move(*joined));
    ++openDrawing().elementCount;
    aimAtLast(target, *pattern);
    return 0;
}

bool DsTextIsTtf(unsigned short font) {
    return font == 0;
}

bool OsUserIsSpecialChar(unsigned char byte) {
    return byte == OV_SWITCH_UNDERLINE || byte == OV_SWITCH_OVERLINE || byte == OV_SWITCH_STRIKE;
}

int CiText::First(DsCsr& cursor) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternOf(cursor);
    if (!pattern || pattern->texts.empty()) return errorNoSuchObject;
    cursor.Get().elRow = 0;
    cursor.Get().vertNo = 0;
    cursor.Get().type = D_TEXT;
    return 0;
}

int CiText::Count(const DsCsr& pattern, long* count) {
    if (callFails()) return errorNoMemory;
    const Pattern* found = patternOf(pattern);
    if (!found) return errorNoSuchObject;
    *count = static_cast<long>(found->texts.size());
    return 0;
}
