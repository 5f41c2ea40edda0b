#include "dx_acds.h"

#include "../sections/dx_section.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"

int DxReadAcdsSection() {
    DxDisplay(DxMsg(5779));
    DxPair pair;
    const int error = DxReadPair(pair);
    if (error || pair.code != 2 || pair.text != "ACDSDATA") return error;
    DxfDocument& document = DxDocuments.requireCurrent();
    document.sectionSeen.Set(1);
    document.acdsRead.Set(1);
    return DxSkipSection();
}

int DxReadAcdsFree() {
    return 0;
}
