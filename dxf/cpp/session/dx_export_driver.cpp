#include "dx_session.h"

#include "uo.h"

void DxWriteDXF(const UtCString& /*configName*/, const UtCString& /*fileName*/) {
    DxBeep("Export isn't available in this build.");
    UoPutMacVarD("&DxfStat", 3011);
}
