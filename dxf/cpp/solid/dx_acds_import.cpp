#include "dx_acds_import.h"

#include "../sections/dx_section.h"
#include "../session/dx_documents.h"

int DxReadAcdsSection() {
    bool found = false;
    if (const int error = DxEnterSection("ACDSDATA", found); error || !found) return error;
    DxDocuments.requireCurrent().acdsRead.Set(1);
    return DxSkipSection();
}
