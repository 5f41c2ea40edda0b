#include "dx_attributes_export.h"

#include "../config/config_state.h"
#include "attributes_state.h"
#include "dx_codes.h"
#include "uo.h"
#include "ut.h"

#include <new>
#include <sstream>
#include <string_view>

void DxAttribInit() {
    DxAttribEnd();
    FILE* file = UtFileOpen(UoSubstOVPath("$HD_U/$HD_VE/int/dxf/dflt/write_attr"), "r");
    if (!file) return;
    std::string line;
    while (UtReadLine(file, line) == 0) {
        std::istringstream words(line);
        std::string hostName;
        std::string dxfName;
        if (words >> hostName >> dxfName) DxAttribNames[hostName] = dxfName;
    }
    UtFileClose(file);
}

void DxAttribEnd() {
    DxAttribNames.clear();
    DxAttribList.clear();
}

UtCString DxAttribConvert(const UtCString& hostName) {
    constexpr std::string_view ownClass = "dxf", ownPrefix = "dxf::";
    if (DxWriteAttr)
        if (const auto known = DxAttribNames.find(hostName.str()); known != DxAttribNames.end())
            return known->second;
    const std::string_view name = hostName.str();
    if (name.substr(0, ownPrefix.size()) == ownPrefix) return UtCString(name.substr(ownPrefix.size()));
    return name == ownClass || !DxWriteAttr ? UtCString() : hostName;
}

int DxAttribAdd(const DX_ATTRIB_TYPE* attrib) {
    try {
        DxAttribList.push_back(*attrib);
    } catch (const std::bad_alloc&) {
        return DX_ERR_MEMORY;
    }
    return 0;
}

int DxAttribMove(std::vector<DX_ATTRIB_TYPE>* attribs) {
    *attribs = std::move(DxAttribList);
    DxAttribList.clear();
    return 0;
}
