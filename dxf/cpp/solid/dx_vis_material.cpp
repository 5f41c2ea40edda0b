// Materials of the file as materials of the host.
#include "../host/dx_host_facets.h"
#include "../host/dx_host_solid.h"
#include "../sections/sections_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_acis_import.h"
#include "solid_state.h"

#include <array>

namespace {

/// Red, green and blue from 0 to 1, of a colour with red highest.
std::array<double, 3> partsOf(int colour) {
    constexpr double step = 0.00392156862745098;
    const auto part = [colour](int shift) { return (colour >> shift & 255) * step; };
    return {part(16), part(8), part(0)};
}

/// The pen is set even when the host makes no material.
int makeMaterial(const DX_MATERIAL_TYPE& from, int& pen, MatDbKey& key, unsigned long& number) {
    RENDERING_ENGINE::MATERIAL material;
    RENDERING_ENGINE::init(material);
    const auto diffuse = partsOf(from.diffuseColor), specular = partsOf(from.specularColor);
    std::copy(diffuse.begin(), diffuse.end(), material.diffuse);
    material.diffuseIntensity = static_cast<float>(from.diffuseFactor);
    DxCiGetClosestPen(static_cast<std::uint32_t>(from.diffuseColor), &pen);
    std::copy(specular.begin(), specular.end(), material.specular);
    material.specularIntensity = static_cast<float>(from.specularFactor);
    UtCString file = from.diffuseFile;
    if (file.IsEmpty() || DxReadFindPath(file)) file = UtCString();
    return DxCiCreateVisMaterial(from.name, material, file, key, number);
}

} // namespace

void DxCiGetVisMatInfo(unsigned long handle, int& pen, MatDbKey& key, unsigned long& number) {
    if (handle == 0) return;
    if (const auto known = DxVisMaterials.find(handle); known != DxVisMaterials.end()) {
        pen = known->second.pen;
        number = known->second.number;
        key = known->second.key;
        return;
    }
    DxProtoMsg(DxMsg(12228, UtFormat("%lX", handle).c_str()), 0);
    const auto found = DxMaterials.find(static_cast<std::uint32_t>(handle));
    if (found == DxMaterials.end()) return;
    if (makeMaterial(found->second, pen, key, number) == 0) DxVisMaterials[handle] = {pen, number, key};
}
