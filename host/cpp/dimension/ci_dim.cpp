// CiDim: the dimensions of patterns by cursor.
#include "ci_dim.h"

#include "dimension/dim_text.h"
#include "drawing/host_state.h"
#include "services/failure.h"

#include <algorithm>

using namespace host;

namespace {

Pattern* patternOf(const DsCsr& cursor) {
    return callFails() ? nullptr : openDrawing().find(cursor.Get().patNo);
}

bool isOn(const DsCsr& cursor, const Pattern& pattern) {
    const DS_CURSOR_STRUCT& at = cursor.Get();
    return at.type == D_DIMENSION && at.elRow >= 0 &&
           static_cast<std::size_t>(at.elRow) < pattern.dimensions.size();
}

int aim(DsCsr& cursor, int row) {
    const Pattern* pattern = patternOf(cursor);
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= pattern->dimensions.size())
        return errorNoSuchObject;
    cursor.Get().elRow = row;
    cursor.Get().partNo = cursor.Get().vertNo = 0;
    cursor.Get().type = D_DIMENSION;
    return 0;
}

void removeText(Pattern& pattern, int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= pattern.texts.size()) return;
    pattern.texts.erase(pattern.texts.begin() + row);
    --openDrawing().elementCount;
    forgetTextRow(pattern, row);
}

} // namespace

int CiDim::First(DsCsr& cursor) {
    return aim(cursor, 0);
}

int CiDim::Next(DsCsr& cursor) {
    return aim(cursor, cursor.Get().type == D_DIMENSION ? cursor.Get().elRow + 1 : 0);
}

int CiDim::Count(const DsCsr& cursor, long* count) {
    const Pattern* pattern = patternOf(cursor);
    if (!pattern) return errorNoSuchObject;
    *count = static_cast<long>(pattern->dimensions.size());
    return 0;
}

int CiDim::GetText(const DsCsr& cursor, int* valueRow, int* toleranceRow) {
    const Pattern* pattern = patternOf(cursor);
    if (!pattern || !isOn(cursor, *pattern)) return errorNoSuchObject;
    const Dimension& dimension = pattern->dimensions[static_cast<std::size_t>(cursor.Get().elRow)];
    *valueRow = dimension.textRow;
    *toleranceRow = dimension.tolRow;
    return 0;
}

int CiDim::Del(const DsCsr& cursor) {
    Pattern* pattern = patternOf(cursor);
    if (!pattern || !isOn(cursor, *pattern)) return errorNoSuchObject;
    const auto place = pattern->dimensions.begin() + cursor.Get().elRow;
    const int rows[] = {std::max(place->textRow, place->tolRow), std::min(place->textRow, place->tolRow)};
    pattern->dimensions.erase(place);
    --openDrawing().elementCount;
    for (const int row : rows) removeText(*pattern, row);
    return 0;
}

int CiDim::DimListToAppDim(const DsCsr dimensions[], int count, int* done, _ObObject** made,
                           const UtCString& /*kind*/) {
    *done = 0;
    *made = nullptr;
    for (int i = 0; i < count; ++i) {
        const Pattern* pattern = patternOf(dimensions[i]);
        if (!pattern || !isOn(dimensions[i], *pattern)) return errorNoSuchObject;
    }
    return 0;
}
