// Tables of solids and materials.
#pragma once

#include "drawing/solid.h"
#include "store/space_rows.h"

#include <array>

namespace host {

template <>
struct Row<Solid> {
    static constexpr int since = 4;
    static constexpr const char* table = "solid_models";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v.bytes("data", r.data);
        auto& [x, y, z, origin] = r.place;
        v("xx", x.x), v("xy", x.y), v("xz", x.z), v("yx", y.x), v("yy", y.y), v("yz", y.z);
        v("zx", z.x), v("zy", z.y), v("zz", z.z), v("tx", origin.x), v("ty", origin.y), v("tz", origin.z);
        v("pen", r.pen), v("line_type", r.lineType), v("material", r.material);
        faceListColumns(v, r.wires);
    }
};

template <>
struct Row<Material> {
    static constexpr int since = 4;
    static constexpr const char* table = "materials";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.name);
        v("diffuse_red", r.diffuse[0]), v("diffuse_green", r.diffuse[1]), v("diffuse_blue", r.diffuse[2]);
        v("diffuse_intensity", r.diffuseIntensity);
        v("specular_red", r.specular[0]), v("specular_green", r.specular[1]),
            v("specular_blue", r.specular[2]);
        v("specular_intensity", r.specularIntensity), v("picture", r.picture);
    }
};

} // namespace host
