// Cursors, visibility, element types, layers and the switches of the drawing store.
#include "ds.h"

#include "drawing/host_state.h"
#include "drawing/objects.h"
#include "services/failure.h"

using namespace host;

CC_GLOBAL Cc_global; // NOLINT: the host's global settings

/// Marks an element type as one of a member of a figure.
static constexpr int groupMark = 0x100;

void DsCsr::PutId(_ObObject* object) {
    at_ = DS_CURSOR_STRUCT{};
    at_.patNo = patternOf(object);
}

int DsCursorFromPatNo(int patNo, DsCsr* cursor) {
    if (callFails()) return errorNoMemory;
    if (!openDrawing().find(patNo)) return errorNoSuchObject;
    cursor->PutId(objectOf(patNo));
    return 0;
}

int DsCursorToPatNo(const DsCsr* cursor) {
    return cursor->Get().patNo;
}

int DsDpatToCursor(const DsDpatCsr& parts, DsCsr* cursor) {
    if (callFails()) return errorNoMemory;
    if (!openDrawing().find(parts.Get().patNo)) return errorNoSuchObject;
    cursor->Get() = parts.Get();
    return 0;
}

_ObObject* DsObListGetOb(int patNo) {
    return openDrawing().find(patNo) ? objectOf(patNo) : nullptr;
}

bool DsVisTest2d(const DsCsr* cursor) {
    const Pattern* pattern = openDrawing().find(cursor->Get().patNo);
    return pattern && openDrawing().isVisible(*pattern);
}

int DsElemGetTypeInfo(int patNo, int elRow, int* type) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern || elRow < 0 || static_cast<std::size_t>(elRow) >= pattern->elements.size())
        return errorNoSuchObject;
    const Element& element = pattern->elements[static_cast<std::size_t>(elRow)];
    const bool spline = element.type == ElementType::Spline;
    constexpr unsigned member = 4;
    *type = spline ? static_cast<int>(ElementType::Draw) : static_cast<int>(element.type);
    if (spline || (element.info & member)) *type |= groupMark;
    return 0;
}

bool DsElemTypeIsElemGroup(int type) {
    return (type & groupMark) != 0;
}

int DsAssemblySetMgrUpdateFlag(int flag) {
    const int old = drawingState().assemblyUpdate;
    drawingState().assemblyUpdate = flag;
    return old;
}

int DsAssemblyUpdateAct() {
    return callFails() ? errorNoMemory : 0;
}

namespace DsLayerApi {
int AddDXFLayer(const UtCString& name, bool visible, bool locked) {
    if (callFails()) return errorNoMemory;
    if (name.IsEmpty()) return errorNotApplicable;
    const Layer* known = openDrawing().findLayer(name.str());
    openDrawing().putLayer({name.str(), visible, locked, known ? known->look : LayerLook{}});
    return 0;
}
} // namespace DsLayerApi

namespace CcmLayerMgrApi {
int UpdateOnLoad(int /*flag*/) {
    return callFails() ? errorNoMemory : 0;
}
} // namespace CcmLayerMgrApi

namespace DsDb {
int Act() {
    constexpr int withoutFile = 8;
    return openDrawing().fileName.empty() ? withoutFile : 0;
}
} // namespace DsDb

double DsCoordSysActiveAngle() {
    return 0; // the drawing has one coordinate system
}
