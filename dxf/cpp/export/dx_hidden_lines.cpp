#include "dx_hidden_lines.h"

#include "../session/dx_protocol.h"

#include "uo.h"

void DxHiddPats() {
    DxBeep("Hidden-line patterns aren't available in this build.");
    UoPutMacVarD("&DxfStat", 3011);
}
