#include "dx_driver_frame.h"

#include "dx_session.h"

#include "ci.h"
#include "ds.h"
#include "uo.h"

double DxMacroNumber(const char* name) {
    double value = 0;
    return SuGetVarReal(name, &value) ? 0 : value;
}

/// Each option that the host sets through a macro variable holds for one run.
static void clearMacroVariables() {
    for (const char* name :
         {"$DxfName", "$DxfConfig", "$DxfDfltFont", "$DxfUnit", "$DxfPaperUnit", "$DxfLoadInto"})
        UoPutMacVarS(name, "");
    for (const char* name : {"&DxfExt", "&DxfModus", "&DxfVerbose", "&DxfFixFont", "&DxfParseExt", "&DxfUnit",
                             "&DxfPaper", "&DxfPaperUnit", "&DxfUserLtScale", "&DxfInsbase"})
        UoPutMacVarD(name, 0.0);
}

void DxDriverFrame::begin() {
    assemblyFlag_ = DsAssemblySetMgrUpdateFlag(0);
    UoPutMacVarD("&DxfStat", 1.0);
    UoStartInitEpsNew(1.0);
    DxInoutSaveParams(18);
    CiContext::Add(&contextId_);
    CiContext::SetUnit(contextId_, "m");
}

void DxDriverFrame::giveBack() {
    DxInoutSaveParams(0);
}

void DxDriverFrame::endSession() {
    clearMacroVariables();
    DxfInit2(0);
}

void DxDriverFrame::endAssembly() {
    DsAssemblySetMgrUpdateFlag(assemblyFlag_);
    DsAssemblyUpdateAct();
}

void DxDriverFrame::announce(int message, const UtCString& fileName) const {
    if (fileName.IsEmpty() || !(DxMacroNumber("&DxfVerbose") > 0.5)) return;
    CiOutput(contextId_).String(UtFormat("%s %s\n", DxMsg(message).c_str(), fileName.c_str()));
}
