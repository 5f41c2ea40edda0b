#include "dx_section.h"

#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"

int DxEnterSection(const char* name, bool& found, const char* shownName) {
    DxfDocument& document = DxDocuments.requireCurrent();
    document.sectionSeen.Set(0);
    DxPair pair;
    const int error = DxReadPair(pair);
    found = error == 0 && pair.code == 2 && pair.text == name;
    if (found) {
        document.sectionSeen.Set(1);
        return 0;
    }
    DxProtoMsg(DxMsg(5701, shownName ? shownName : name), 1);
    if (!error) DxUnGetLine();
    return error;
}

int DxSkipSection() {
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code == 0 && pair.text == "ENDSEC") return 0;
    }
}
