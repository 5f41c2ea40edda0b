#include "dx_objects_import.h"

#include "../session/dx_documents.h"
#include "dx_section.h"
#include "err.h"

#include <string_view>

namespace {

struct ObjectKind {
    std::string_view name;
    int (*read)();
};
constexpr ObjectKind kinds[] = {{"GEODATA", DxGetGEODATA},
                                {"LAYOUT", DxGetLayout},
                                {"IMAGEDEF", DxGetImageDef},
                                {"MATERIAL", DxGetMaterial}};

} // namespace

int DxReadObjectsSection() {
    bool found = false;
    if (const int error = DxEnterSection("OBJECTS", found); error || !found) return error;
    DxDocuments.requireCurrent().objectsRead.Set(1);
    ErrClassErrType errors("dxf/cpp/oDX_objects");
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code != 0) continue;
        if (pair.text == "ENDSEC") return 0;
        for (const ObjectKind& kind : kinds) {
            if (pair.text != kind.name) continue;
            errors.Set(kind.read());
            break;
        }
    }
}
