#include "dx_write_attrib.h"

#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_write_entities.h"
#include "export_state.h"
#include "mt.h"

#include <cmath>
#include <string_view>

static int writePoint(int code, const RPT3& p, const Mat32 matrix) {
    RPT at;
    MtTransRPt({p.x, p.y}, matrix, &at);
    DxWriteDouble(code, at.x);
    DxWriteDouble(code + 10, at.y);
    return DxWriteDouble(code + 20, p.z);
}

static int writeText(const DX_ATTRIB_TYPE& a, const Mat32 matrix) {
    DxWriteSubClass("AcDbText");
    writePoint(10, a.insertion, matrix);
    DxWriteSize(40, a.height * std::hypot(matrix[1][0], matrix[1][1]));
    DxWriteString(1, a.value);
    DxWriteDouble(50, std::round((MtGetRot(matrix) * DX_DEGREES + a.rotation) * 1e4) / 1e4);
    DxWriteSize(41, a.widthFactor);
    DxWriteDouble(51, a.oblique);
    DxWriteString(7, a.style);
    DxWriteInt(72, a.horizontalJustify);
    return writePoint(11, a.alignment, matrix);
}

int DxAttribWrite(const char* type, const DX_ATTRIB_TYPE& a, const Mat32 matrix, std::uint32_t owner) {
    const bool definition = std::string_view(type) == "ATTDEF";
    DxWriteEntityHead(type, {UtCString(a.base.layer.view()), {}, a.base.color}, 0, owner);
    writeText(a, matrix);
    DxWriteSubClass(definition ? "AcDbAttributeDefinition" : "AcDbAttribute");
    if (definition) DxWriteString(3, a.tag);
    DxWriteString(2, a.tag);
    DxWriteInt(70, a.flags);
    return DxWriteInt(74, a.verticalJustify);
}
