// CiDrawing, CiView, CiWork: the drawing as a file, its views and work planes.
#include "ci.h"

#include "drawing/context.h"
#include "drawing/host_state.h"
#include "drawing/objects.h"
#include "ge.h"
#include "services/failure.h"

#include <algorithm>

using namespace host;

// ---- the drawing as a file -------------------------------------------------------------------------

int CiDrawing::StoreWorkFile(int /*mode*/) {
    if (callFails()) return errorNoMemory;
    DrawingState& state = drawingState();
    state.workFile = state.drawing;
    state.workFileName = "work:" + state.drawing.fileName;
    return 0;
}

int CiDrawing::ReadWorkFile(const UtCString& name, int /*mode*/) {
    DrawingState& state = drawingState();
    if (callFails() || !state.workFile || name.str() != state.workFileName) return errorNoSuchObject;
    state.drawing = *state.workFile;
    state.chainRow = -1;
    return 0;
}

UtCString CiDrawing::GetLastWorkFileName() const {
    return drawingState().workFileName;
}

UtCString CiDrawing::GetLockFileName() const {
    return drawingState().lockFileName;
}

int CiDrawing::UnlockDrawing() {
    if (callFails()) return errorNoMemory;
    drawingState().lockFileName.clear();
    return 0;
}

int CiDrawing::CheckReadLock(const UtCString& name) {
    if (callFails()) return errorNoMemory;
    drawingState().lockFileName = name.str();
    return 0;
}

UtCString CiDrawing::GetLastFileName() const {
    return openDrawing().fileName;
}

int CiDrawing::SetLastFileName(const UtCString& name) {
    if (callFails()) return errorNoMemory;
    openDrawing().fileName = name.str();
    return 0;
}

int CiDrawing::SetLastInterfaceIds(_ObObject* const* objects, int count) {
    if (callFails()) return errorNoMemory;
    std::vector<int>& ids = openDrawing().lastInterfaceIds;
    ids.clear();
    for (int i = 0; i < count; ++i)
        if (const int number = patternOf(objects[i])) ids.push_back(number);
    return 0;
}

// ---- views -----------------------------------------------------------------------------------------

static auto findView(const std::string& name) {
    std::vector<View>& views = openDrawing().views;
    return std::find_if(views.begin(), views.end(), [&](const View& view) { return view.name == name; });
}

UtCString CiView::GetDfltViewName() {
    const std::vector<View>& views = openDrawing().views;
    return views.empty() ? UtCString() : UtCString(views.front().name);
}

int CiView::Show(const UtCString& name) {
    if (callFails() || findView(name.str()) == openDrawing().views.end()) return errorNoSuchObject;
    drawingState().shownView = name.str();
    return 0;
}

int CiView::ExportToTempView(int phase, UtCString* name) {
    if (callFails()) return errorNoMemory;
    DrawingState& state = drawingState();
    if (phase == 1) {
        if (state.drawing.views.empty()) return errorNoSuchObject;
        View view = state.drawing.views.front();
        view.name += " (export)";
        *name = state.exportView = view.name;
        state.drawing.views.push_back(std::move(view));
        return 0;
    }
    const auto made = findView(state.exportView);
    if (state.exportView.empty() || made == state.drawing.views.end()) return errorNoSuchObject;
    state.drawing.views.erase(made);
    state.exportView.clear();
    return 0;
}

// ---- work planes -----------------------------------------------------------------------------------

int CiWork::Add(int* id, const RPT3& a, const RPT3& b, const RPT3& c) {
    if (callFails()) return errorNoMemory;
    const double factor = contextFactor(contextId_);
    Drawing& drawing = openDrawing();
    *id = drawing.nextWorkId++;
    drawing.workPlanes[*id] = {scaled(a, factor), scaled(b, factor), scaled(c, factor)};
    return 0;
}

int CiWork::GetMat(int id, Mat44 matrix) {
    const auto found = openDrawing().workPlanes.find(id);
    if (callFails() || found == openDrawing().workPlanes.end()) return errorNoSuchObject;
    const double back = 1 / contextFactor(contextId_);
    const WorkPlane& plane = found->second;
    GeMat44(scaled(plane.a, back), scaled(plane.b, back), scaled(plane.c, back)).CopyTo(matrix);
    return 0;
}
