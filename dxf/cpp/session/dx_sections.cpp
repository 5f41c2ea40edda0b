#include "dx_sections.h"

#include "dx_documents.h"
#include "dx_messages.h"
#include "dx_protocol.h"

int DxBeginSection(const char* name, const char* reportedName, bool* found) {
    DxfDocument& document = DxDocuments.requireCurrent();
    document.sectionSeen.Set(0);
    DxPair pair;
    const int error = DxReadPair(pair);
    *found = !error && pair.code == 2 && pair.text == name;
    if (*found) {
        document.sectionSeen.Set(1);
        return 0;
    }
    DxProtoMsg(DxMsg(5701, reportedName), 0);
    DxUnGetLine();
    return error;
}

int DxSkipToEndOfSection() {
    DxPair pair;
    while (true) {
        if (const int error = DxReadPair(pair, 161, DxShowsPercent())) return error;
        if (pair.code == 0 && pair.text == "ENDSEC") return 0;
    }
}
