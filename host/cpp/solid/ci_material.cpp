// Materials of the drawing.
#include "ci_3d.h"

#include "drawing/host_state.h"
#include "services/failure.h"

#include <algorithm>

using namespace host;

void RENDERING_ENGINE::init(MATERIAL& material) {
    constexpr double grey = 0.5;
    material = {{grey, grey, grey}, 1, {0, 0, 0}, 0};
}

void RENDERING_ENGINE::init(TEXTURE& texture) {
    texture = {{1, 1}, {0, 0}, 0};
}

int Ci3d::CreateVisMaterial(const UtCString& name, const RENDERING_ENGINE::MATERIAL& material,
                            int /*textureCount*/, const RENDERING_ENGINE::TEXTURE* /*textures*/,
                            const std::vector<RENDERING_ENGINE::Image>& files, MatDbKey& key,
                            unsigned long& number) {
    if (callFails()) return errorNoMemory;
    if (name.IsEmpty()) return errorNotApplicable;
    Material made;
    made.name = name.str();
    std::copy_n(material.diffuse, 3, made.diffuse.begin());
    std::copy_n(material.specular, 3, made.specular.begin());
    made.diffuseIntensity = material.diffuseIntensity;
    made.specularIntensity = material.specularIntensity;
    if (!files.empty()) made.picture = files[0].file.str();
    auto& materials = openDrawing().materials;
    auto found = std::find(materials.begin(), materials.end(), made);
    if (found == materials.end()) found = materials.insert(found, std::move(made));
    number = key.id = static_cast<unsigned long>(found - materials.begin()) + 1;
    return 0;
}
