#include "dx_objects.h"

#include "../session/dx_documents.h"
#include "../session/dx_sections.h"

int DxReadObjectsSection() {
    bool found = false;
    const int error = DxBeginSection("OBJECTS", "OBJECTS", &found);
    if (error || !found) return error;
    DxDocuments.requireCurrent().objectsRead.Set(1);
    return DxSkipToEndOfSection();
}
