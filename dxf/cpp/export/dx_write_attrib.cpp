#include "dx_write_attrib.h"

#include "../session/dx_writer.h"
#include "dx_write_entities.h"
#include "export_state.h"
#include "mt.h"

#include <cmath>
#include <string_view>

static constexpr double degrees = 57.29577951308232;

static int writePoint(int code, const RPT3& p, const Mat32 matrix) {
    RPT at;
    MtTransRPt({p.x, p.y}, matrix, &at);
    int error = DxWriteDouble(code, at.x);
    if (!error) error = DxWriteDouble(code + 10, at.y);
    return error ? error : DxWriteDouble(code + 20, p.z);
}

static int writeText(const DX_ATTRIB_TYPE& a, const Mat32 matrix) {
    int error = DxWriteSubClass("AcDbText");
    if (!error) error = writePoint(10, a.insertion, matrix);
    if (!error) error = DxWriteDouble(40, a.height * std::hypot(matrix[1][0], matrix[1][1]));
    if (!error) error = DxWriteString(1, a.value);
    if (!error) error = DxWriteDouble(50, std::round((MtGetRot(matrix) * degrees + a.rotation) * 1e4) / 1e4);
    if (!error) error = DxWriteDouble(41, a.widthFactor);
    if (!error) error = DxWriteDouble(51, a.oblique);
    if (!error) error = DxWriteString(7, a.style);
    if (!error) error = DxWriteInt(72, a.horizontalJustify);
    return error ? error : writePoint(11, a.alignment, matrix);
}

int DxAttribWrite(const char* type, const DX_ATTRIB_TYPE& a, const Mat32 matrix, std::uint32_t owner) {
    const bool definition = std::string_view(type) == "ATTDEF";
    int error = DxWriteString(0, type);
    if (!error) error = DxWriteEntityIds(0, owner ? owner : DxOwnerHandle);
    if (!error) error = DxWriteString(8, a.base.layer);
    if (!error) error = DxWriteColor(a.base.color);
    if (!error) error = writeText(a, matrix);
    if (!error) error = DxWriteSubClass(definition ? "AcDbAttributeDefinition" : "AcDbAttribute");
    if (!error && definition) error = DxWriteString(3, a.tag);
    if (!error) error = DxWriteString(2, a.tag);
    if (!error) error = DxWriteInt(70, a.flags);
    return error ? error : DxWriteInt(74, a.verticalJustify);
}
