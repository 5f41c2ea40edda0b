// Look-ups in what the OBJECTS section of a file says.
#include "dx_documents.h"

#include <algorithm>

const DX_LAYOUT_TYPE* DxObjects::layoutOf(const DX_BLOCK_RECORD_TYPE& record) const {
    const auto* found = std::find_if(layouts.begin(), layouts.end(), [&](const DX_LAYOUT_TYPE& layout) {
        return layout.blockRecord == record.handle && layout.handle == record.layoutHandle;
    });
    return found == layouts.end() ? nullptr : found;
}

const DX_IMAGE_DEF_TYPE* DxObjects::imageDef(std::uint32_t handle) const {
    const auto found =
        std::find_if(imageDefs.begin(), imageDefs.end(),
                     [=](const DX_IMAGE_DEF_TYPE& definition) { return definition.handle == handle; });
    return found == imageDefs.end() ? nullptr : &*found;
}
