// Pens with a look of their own.
#include "pens.h"

#include "drawing/host_state.h"
#include "services/failure.h"

using namespace host;

int UoPenSetLook(int pen, const OV_PEN_LOOK& look) {
    constexpr int lastPen = 1023;
    if (callFails()) return errorNoMemory;
    if (pen < 1 || pen > lastPen) return errorNotApplicable;
    openDrawing().penLooks[pen] = look;
    return 0;
}

int UoPenGetLook(int pen, OV_PEN_LOOK* look) {
    if (callFails()) return errorNoMemory;
    const auto& looks = openDrawing().penLooks;
    const auto found = looks.find(pen);
    if (found == looks.end()) return errorNoSuchObject;
    *look = found->second;
    return 0;
}
