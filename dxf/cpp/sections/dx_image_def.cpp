// IMAGEDEF objects.
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "../session/dx_unicode.h"
#include "dx_objects_import.h"

namespace {

using R = DX_IMAGE_DEF_TYPE;
constexpr auto fields = dxFields<R>({
    {5, &R::handle},
    {10, &R::pixelsX},
    {20, &R::pixelsY},
    {11, &R::pixelSizeX},
    {21, &R::pixelSizeY},
    {280, &R::loaded},
    {281, &R::units},
});

} // namespace

int DxGetImageDef() {
    DX_IMAGE_DEF_TYPE record;
    const auto rest = [&record](const DxPair& pair) {
        if (pair.code == 1) record.fileName = DxHostText(pair.text);
    };
    if (const int error = DxReadFields(record, fields, rest, DX_OBJECT_VALUE)) return error;
    DxDocuments.requireCurrent().objects.imageDefs.push_back(std::move(record));
    return 0;
}
