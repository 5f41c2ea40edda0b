#include "dx_objects_import.h"

#include "../session/dx_documents.h"
#include "dx_section.h"

int DxReadObjectsSection() {
    bool found = false;
    if (const int error = DxEnterSection("OBJECTS", found); error || !found) return error;
    DxDocuments.requireCurrent().objectsRead.Set(1);
    return DxSkipSection();
}
