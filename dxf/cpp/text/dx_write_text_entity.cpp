// The groups of TEXT and MTEXT.
#include "../export/dx_write_entities.h"
#include "../export/export_state.h"
#include "../session/dx_writer.h"
#include "dx_write_text.h"
#include "mt.h"

#include <cmath>

namespace {

constexpr double degrees = 57.29577951308232;

double roundedDegrees(double angle) {
    return std::round(angle * 1e4) / 1e4;
}

int writePoint(int code, const RPT& p, double z) {
    int error = DxWriteDouble(code, p.x);
    error |= DxWriteDouble(code + 10, p.y);
    return error | DxWriteDouble(code + 20, z);
}

int writeHead(const char* name, const DX_TEXT_TYPE& text) {
    int error = DxWriteString(0, name);
    error |= DxWriteEntityIds(0, DxOwnerHandle);
    error |= DxWriteString(8, text.base.layer);
    return error | DxWriteColor(text.base.color);
}

int writeMtext(const DX_TEXT_TYPE& text, const RPT& point, double rotation, double scale) {
    int error = writeHead("MTEXT", text);
    error |= DxWriteString(100, "AcDbMText");
    error |= writePoint(10, point, text.point.z);
    error |= DxWriteDouble(40, text.height * scale);
    error |= DxWriteDouble(41, text.boxWidth * scale);
    error |= DxWriteInt(71, text.attachment);
    error |= DxWriteInt(72, 5);
    error |= DxWriteString(1, text.text);
    error |= DxWriteString(7, text.style);
    error |= DxWriteDouble(50, rotation);
    if (text.backFlag && DxMiscCheckVersion(5)) {
        error |= DxWriteInt(90, text.backFlag);
        error |= DxWriteInt(63, text.backColor < 0 ? 256 : text.backColor);
        error |= DxWriteDouble(45, text.backScale); // a reader expects it with a background
    }
    return error;
}

int writeText(const DX_TEXT_TYPE& text, const RPT& point, const RPT& second, double rotation, double scale) {
    int error = writeHead("TEXT", text);
    error |= DxWriteSubClass("AcDbText");
    error |= writePoint(10, point, text.point.z);
    error |= DxWriteDouble(40, text.height * scale);
    error |= DxWriteString(1, text.text);
    error |= DxWriteDouble(50, rotation);
    error |= DxWriteDouble(41, text.widthFactor);
    error |= DxWriteDouble(51, text.oblique);
    error |= DxWriteString(7, text.style);
    error |= DxWriteInt(72, text.horAlign);
    error |= writePoint(11, second, text.second.z);
    error |= DxWriteSubClass("AcDbText");
    return error | DxWriteInt(73, text.verAlign);
}

} // namespace

int DxWriteTextOrMtext(const DX_TEXT_TYPE& text, const Mat32 matrix) {
    RPT point;
    RPT second;
    MtTransRPt({text.point.x, text.point.y}, matrix, &point);
    MtTransRPt({text.second.x, text.second.y}, matrix, &second);
    const double rotation = roundedDegrees(MtGetRot(matrix) * degrees + text.rotation);
    const double scale = MtGetScale(matrix);
    return text.isMtext ? writeMtext(text, point, rotation, scale)
                        : writeText(text, point, second, rotation, scale);
}
