#include "dx_spaces.h"

#include "../host/dx_context.h"
#include "../session/dx_reader.h"
#include "../session/session_state.h"
#include "ci_view.h"

int DxCiSwitchToReadSpace() {
    const DxTempContext context;
    if (context.result()) return context.result();
    if (const int error = CiContext::Update(context.id())) return error;
    if (DxActSpace) return 0;
    CiView views(context.id());
    const UtCString name = views.GetDfltViewName();
    return name.IsEmpty() ? 3006 : views.Show(name);
}

int DxDrawView(const DX_VIEW_TYPE& /*view*/, const Mat44 /*m*/) {
    return 0;
}

int DxFinishPaperSpaces(const Mat44 /*m*/) {
    return 0;
}

int DxFinishModelSpace(const Mat44 /*m*/) {
    return 0;
}

int DxDrawVP(const char* end, const Mat44 /*m*/) {
    return DxReadUntil(0, end);
}
