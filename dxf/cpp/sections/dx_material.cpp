// MATERIAL objects.
#include "../session/dx_fields.h"
#include "../session/dx_unicode.h"
#include "dx_objects_import.h"
#include "sections_state.h"

namespace {

using R = DX_MATERIAL_TYPE;
constexpr auto fields = dxFields<R>({
    {5, &R::handle},
    {70, &R::ambientOverride},
    {40, &R::ambientFactor},
    {71, &R::diffuseOverride},
    {41, &R::diffuseFactor},
    {91, &R::diffuseColor},
    {42, &R::diffuseBlend},
    {72, &R::diffuseSource},
    {73, &R::diffuseProjection},
    {74, &R::diffuseTiling},
    {75, &R::diffuseFit},
    {44, &R::gloss},
    {76, &R::specularOverride},
    {45, &R::specularFactor},
    {92, &R::specularColor},
    {46, &R::specularBlend},
    {77, &R::specularSource},
    {78, &R::specularProjection},
    {79, &R::specularTiling},
    {170, &R::specularFit},
    {48, &R::reflectionBlend},
    {171, &R::reflectionSource},
    {172, &R::reflectionProjection},
    {173, &R::reflectionTiling},
    {174, &R::reflectionFit},
    {140, &R::opacity},
    {141, &R::opacityFactor},
    {175, &R::opacitySource},
    {176, &R::opacityProjection},
    {177, &R::opacityTiling},
    {178, &R::opacityFit},
    {143, &R::bumpBlend},
    {179, &R::bumpSource},
    {145, &R::refractionIndex},
    {146, &R::refractionBlend},
    {274, &R::refractionProjection},
    {275, &R::refractionTiling},
    {276, &R::refractionFit},
});

/// A group that counts at one of its occurrences only.
struct Occurrence {
    int code, which;
    int& (*member)(DX_MATERIAL_TYPE&);
};
constexpr Occurrence occurrences[] = {
    {90, 1, [](R& m) -> int& { return m.ambientColor; }},
    {90, 2, [](R& m) -> int& { return m.illumination[0]; }},
    {93, 1, [](R& m) -> int& { return m.illumination[1]; }},
    {94, 1, [](R& m) -> int& { return m.illumination[2]; }},
    {270, 1, [](R& m) -> int& { return m.bumpProjection; }},
    {271, 1, [](R& m) -> int& { return m.bumpTiling; }},
    {272, 1, [](R& m) -> int& { return m.bumpFit; }},
    {273, 1, [](R& m) -> int& { return m.refractionSource; }},
    {270, 2, [](R& m) -> int& { return m.further[0]; }},
    {272, 2, [](R& m) -> int& { return m.further[1]; }},
    {270, 3, [](R& m) -> int& { return m.further[2]; }},
    {273, 2, [](R& m) -> int& { return m.further[3]; }},
};

/// Names and files; texts by their group.
UtCString* textOf(R& material, int code) {
    switch (code) {
    case 1: return &material.name;
    case 2: return &material.description;
    case 3: return &material.diffuseFile;
    case 4: return &material.specularFile;
    case 6: return &material.reflectionFile;
    case 7: return &material.opacityFile;
    case 8: return &material.bumpFile;
    case 9: return &material.refractionFile;
    default: return nullptr;
    }
}

/// Takes what the table can't: texts, and groups that stand more than once.
class Rest {
public:
    explicit Rest(R& material) : material_(material) {}
    void operator()(const DxPair& pair) {
        if (UtCString* text = textOf(material_, pair.code)) {
            *text = DxHostText(pair.text);
            return;
        }
        if (pair.code == 148) material_.reals[0] = DxfReadConvDouble(pair.text);
        if (pair.code == 464) material_.reals[1] = DxfReadConvDouble(pair.text);
        if (pair.code == 468) material_.reals[2] = DxfReadConvDouble(pair.text);
        const int which = ++counts_[pair.code];
        for (const Occurrence& occurrence : occurrences)
            if (occurrence.code == pair.code && occurrence.which == which)
                occurrence.member(material_) = DxAtoi(pair.text);
    }

private:
    R& material_;
    std::map<int, int> counts_; ///< by group code
};

} // namespace

int DxGetMaterial() {
    DX_MATERIAL_TYPE material;
    if (const int error = DxReadFields(material, fields, Rest(material), DX_OBJECT_VALUE)) return error;
    DxMaterials.try_emplace(material.handle, material);
    return 0;
}
