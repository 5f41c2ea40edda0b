#include "dx_georeference.h"

#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "../import/dx_transform.h"
#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_scale.h"
#include "../session/session_state.h"
#include "ge.h"
#include "mt.h"

namespace {

constexpr int METRE = 5;
constexpr int PROJECTED = 2; ///< kind of reference that the host is given

void tell(const UtCString& text) {
    CiOutput(DxCiContextId).String(text);
}

void rotationAbout(const RPT& centre, double angle, Mat44 m) {
    Mat44 there, turn, back;
    Mt44Ident(there);
    Mt44Ident(back);
    there[3][0] = -centre.x, there[3][1] = -centre.y;
    back[3][0] = centre.x, back[3][1] = centre.y;
    Mt44MakeRotate(2, angle, turn);
    Mt44Concat(there, turn, m);
    Mt44Concat(m, back, m);
}

void shiftBy(double x, double y, Mat44 m) {
    Mat44 shift;
    Mt44Ident(shift);
    shift[3][0] = x, shift[3][1] = y;
    Mt44Concat(m, shift, m);
}

/// A reference: a point of the drawing, its coordinates in the drawing's unit, the angle of north.
struct Reference {
    RPT point;
    double x, y, angle;
};

/// From the drawing as it was read to where the reference that the host has wants it.
void matrixOnto(const Reference& own, const Reference& present, Mat44 m) {
    rotationAbout(own.point, -own.angle, m);
    shiftBy(own.x, own.y, m);
    shiftBy(-own.point.x, -own.point.y, m);
    shiftBy(present.point.x, present.point.y, m);
    shiftBy(-present.x, -present.y, m);
    Mat44 turn;
    rotationAbout(present.point, present.angle, turn);
    Mt44Concat(m, turn, m);
}

int moveImportedObjects(const Mat44 m) {
    CiPat patterns(DxCiContextId);
    int result = 0;
    for (_ObObject* object : DxImportedObjects) {
        const int error = patterns.Trans(DsCsr(object), m, 1, 1);
        if (!result) result = error;
    }
    return result;
}

/// Model space becomes the active one again, with the shift that its entities were drawn with.
int returnToModel() {
    DxActSpace = 0;
    DxPlotCount = DxViewportCount = 1;
    if (const int error = DxSetExtMinMaxIns(nullptr)) return error;
    if (const int error = DxfSetScale(1)) return error;
    DxShiftX = DxModelShift.x;
    DxShiftY = DxModelShift.y;
    return 0;
}

} // namespace

bool DxHasGeoData() {
    return DxDocuments.current_ && !DxDocuments.current_->objects.geoData.empty();
}

int DxApplyGeoreference(const Mat44 m) {
    const DX_GEODATA_TYPE data = DxDocuments.requireCurrent().objects.geoData[0];
    if (data.coordinateType == 0) return 0;
    const RPT3& reference = data.coordinateType == 1 ? data.referencePoint : data.designPoint;
    if (data.designPoint.z != 0)
        tell(UtFormat("%s: %s", DxMsg(7336).c_str(), UtFormat("%.2f", data.referencePoint.z).c_str()));
    GeVec north(data.northDirection);
    north.Normalize();
    const double angle = GeVec(0, 1, 0).GetAngleBetween(north, GeVec(0, 0, 1));
    return DxCiSetGeoRef({data.designPoint.x, data.designPoint.y}, reference.x, reference.y, angle, m);
}

int DxCiSetGeoRef(const RPT& design, double x, double y, double angle, const Mat44 m) {
    if (const int error = returnToModel()) return error;
    RPT3 point{design.x, design.y, 0};
    DxTrans3DRpt(&point, m);
    const double factor = GeUnit(METRE).factor() / GeUnit(DxUnit).factor();
    const Reference own{DxPointToContext(point.x, point.y), x * factor, y * factor, angle};
    CiDrawing drawing(DxCiContextId);
    Reference present{};
    if (drawing.ActGeoRef(&present.point, &present.x, &present.y, &present.angle))
        return drawing.SetGeoRef(0, own.point, own.x, own.y, own.angle, 0.0, PROJECTED);
    tell(DxMsg(12354));
    Mat44 onto;
    matrixOnto(own, present, onto);
    return moveImportedObjects(onto);
}
