// GEODATA objects.
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "dx_objects_import.h"

namespace {

using R = DX_GEODATA_TYPE;
constexpr auto fields = dxFields<R>({
    {5, &R::handle},
    {10, &R::designPoint},
    {11, &R::referencePoint},
    {12, &R::northDirection},
    {70, &R::coordinateType},
    {90, &R::version},
    {95, &R::scaleEstimation},
    {141, &R::value141},
    {142, &R::value142},
    {210, &R::upDirection},
    {330, &R::owner},
});

} // namespace

int DxGetGEODATA() {
    DX_GEODATA_TYPE record{};
    const auto rest = [&record](const DxPair& pair) {
        if (pair.code == 294) record.flag294 = pair.text == "0" ? 1 : 0;
    };
    if (const int error = DxReadFields(record, fields, rest, DX_OBJECT_VALUE)) return error;
    record.northDirection.z = 0; // a direction in the plane
    return DxDocuments.requireCurrent().objects.geoData.add(record) ? 2360 : 0;
}
