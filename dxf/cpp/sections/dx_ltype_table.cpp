// LTYPE records.
#include "../config/dx_linetypes.h"
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "../session/session_state.h"
#include "dx_tables_read.h"

#include <algorithm>
#include <iterator>

namespace {

using R = DX_LTYPE_TYPE;
constexpr int dashCode = 49;
constexpr auto fields = dxFields<R>({
    {2, &R::name},
    {3, &R::description},
    {5, &R::handle},
    {40, &R::totalLength},
    {70, &R::flags},
    {72, &R::alignment},
    {73, &R::elementCount},
});

/// Takes dashes, as many as group 73 has announced by then.
struct Dashes {
    DX_LTYPE_TYPE& lineType;
    int taken = 0;

    void operator()(const DxPair& pair) {
        const int room = std::min<int>(lineType.elementCount, std::size(lineType.dashes));
        if (pair.code == dashCode && taken < room) lineType.dashes[taken++] = DxfReadConvDouble(pair.text);
    }
};

/// A line type that the configuration numbered by name takes its pattern from the export's template, which
/// knows it better than the built-in patterns do.
void takePattern(DX_LTYPE_TYPE& known, const DX_LTYPE_TYPE& read) {
    if (!DxIsExport || known.number < 2) return;
    const int number = known.number;
    const DX_NAME name = known.name;
    known = read;
    known.number = number;
    known.name = name;
}

} // namespace

int DxReadLType(DxTableNames& names) {
    DX_LTYPE_TYPE lineType;
    DxInitLType(&lineType);
    if (const int error = DxReadFields(lineType, fields, Dashes{lineType})) return error;
    lineType.elementCount = std::clamp<int>(lineType.elementCount, 0, std::size(lineType.dashes));

    DX_NAME upper = lineType.name;
    DxUpperName(upper);
    if (upper.view() == "BYBLOCK" || upper.view() == "BYLAYER") return 0;
    DxTables& tables = DxDocuments.currentTables();
    const auto [known, isNew] =
        names.lineTypes.emplace(upper.view(), static_cast<int>(tables.lineTypes.size()));
    if (!isNew) {
        takePattern(tables.lineTypes[static_cast<std::size_t>(known->second)], lineType);
        return 0;
    }
    return tables.lineTypes.add(lineType) ? 2360 : 0;
}
