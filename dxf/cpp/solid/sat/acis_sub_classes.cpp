// The table of sub-records: intersection curves, spline surfaces, parameter curves.
#include "acis_class.h"
#include "acis_name_index.h"

namespace ACIS {
namespace {

// ---- shared parts -----------------------------------------------------------------------------------
constexpr Field discontinuity = field(Type::Reals, "discontinuity");
constexpr Field curveBreaks[] = {discontinuity, discontinuity, discontinuity};
constexpr Field surfaceBreaks[] = {discontinuity, discontinuity, discontinuity,
                                   discontinuity, discontinuity, discontinuity};

/// How much of the B-spline a file has: all of it, its parameters, its range.
constexpr Field curveFull[] = {field(Type::Spline3, "shape"), real("fit")};
constexpr Field curveSummary[] = {field(Type::Reals, "parameters"), real("fit"),
                                  code("closure", words::closure)};
constexpr Field curveNone[] = {interval("shape_range"), code("closure", words::closure)};
constexpr Layout curveLevels[] = {curveFull, curveSummary, curveNone};

constexpr Field surfaceFull[] = {field(Type::SplineSurface, "shape"), real("fit")};
constexpr Field surfaceSummary[] = {
    field(Type::Reals, "u_parameters"),
    field(Type::Reals, "v_parameters"),
    real("fit"),
    code("u_closure", words::closure),
    code("v_closure", words::closure),
    code("u_singularity", words::singularity),
    code("v_singularity", words::singularity),
};
constexpr Field surfaceNone[] = {
    interval("u_range"),
    interval("v_range"),
    code("u_closure", words::closure).from(500),
    code("v_closure", words::closure).from(500),
    code("u_singularity", words::singularity).from(500),
    code("v_singularity", words::singularity).from(500),
};
constexpr Layout surfaceLevels[] = {surfaceFull, surfaceSummary, surfaceNone};

/// The word stands in files from 500 on; an older file means `old`.
constexpr Field level(std::span<const Layout> parts, double old = 0) {
    Field f = field(Type::Choice, "level").from(500).orElse(old);
    f.words = &words::level;
    f.parts = parts;
    return f;
}

constexpr Field onSurfaces[] = {
    field(Type::Surface, "surface1"),
    field(Type::Surface, "surface2"),
    field(Type::Spline2, "image1"),
    field(Type::Spline2, "image2"),
};
constexpr Field curveCommon[] = {
    level(curveLevels),
    group("images", onSurfaces),
    interval("safe_range").from(107),
    group("breaks", curveBreaks).from(300),
    extra("stamp").onlyModern(),
};
constexpr Field curve = group("common", curveCommon);

constexpr Field surfaceCommon[] = {
    level(surfaceLevels),
    group("breaks", surfaceBreaks).from(300),
    extra("stamp").onlyModern(),
};
constexpr Field surface = group("common", surfaceCommon);

/// A surface that a file up to 400 describes by its construction alone.
constexpr Field constructed[] = {
    level(surfaceLevels, 2),
    group("breaks", surfaceBreaks).from(300),
    extra("stamp").onlyModern(),
};
constexpr Field made = group("common", constructed);

// ---- intersection curves ----------------------------------------------------------------------------
constexpr Field exactCur[] = {
    curve,
    interval("extension").from(201).optional(),
    extra("start_extension").onlyModern(),
    extra("end_extension").onlyModern(),
};
constexpr Field intersection[] = {curve};
constexpr Field heldCurve[] = {curve, logical("holder", words::holder), extra("final").onlyModern()};
constexpr Field projected[] = {
    curve,
    field(Type::Curve, "curve"),
    interval("curve_range"),
    logical("holder", words::holder),
};
constexpr Field offsetPair[] = {curve, real("offset1"), real("offset2")};
constexpr Field offsetOnSurface[] = {
    curve,
    interval("u"),
    interval("v"),
    field(Type::Curve, "curve"),
    interval("curve_range"),
    real("distance"),
    real("shift"),
    real("scale"),
};
constexpr Field silhouette[] = {curve, vec("view"), real("draft").optional()};
constexpr Field taperSilhouette[] = {curve, vec("view"), real("angle")};
constexpr Field lawList[] = {field(Type::Law, "law")};
constexpr Field lawCurve[] = {
    curve, real("start"), real("end"), field(Type::Law, "law"), repeat("laws", lawList),
};
/// Turns about an axis at a pitch, with the radius as major and minor vector. No B-spline stands beside it.
constexpr Field helix[] = {
    interval("angle"), position("root"), vec("major"), vec("minor"),
    vec("pitch"),      real("taper"),    vec("axis"),  group("images", onSurfaces),
};

// ---- spline surfaces --------------------------------------------------------------------------------
constexpr Field exactSur[] = {
    surface,
    interval("u_extension").from(201).optional(),
    interval("v_extension").from(201).optional(),
    extra("extension").onlyModern(),
};
constexpr Field revolved[] = {field(Type::Curve, "profile"), position("root"), vec("axis"), made};
constexpr Field summed[] = {field(Type::Curve, "u_curve"), field(Type::Curve, "v_curve"), position("datum"),
                            made};
constexpr Field offsetCaches[] = {surface};
constexpr Field offsetSurface[] = {
    field(Type::Surface, "surface"),
    real("distance"),
    real("u_start").until(500),
    real("u_end").until(500),
    real("v_start").until(500),
    real("v_end").until(500),
    logical("is_reversed", words::numbers).from(202).until(500),
    logical("u_sense", words::sense).from(500),
    logical("v_sense", words::sense).from(500),
    extra("flag").onlyModern(),
    group("common", offsetCaches).from(500),
};
constexpr Field part[] = {interval("u"), interval("v"), field(Type::Surface, "surface")};
constexpr Field ruled[] = {field(Type::Curve, "curve1"), field(Type::Curve, "curve2"), surface};
constexpr Field cylinder[] = {
    real("start").onlyLegacy(),    real("end").onlyLegacy(),      vec("direction").onlyLegacy(),
    position("root").onlyLegacy(), field(Type::Curve, "profile"), surface,
};
constexpr Field tube[] = {surface, real("radius"), field(Type::Curve, "spine")};
constexpr Field taper[] = {
    field(Type::Surface, "surface"),
    field(Type::Curve, "curve"),
    field(Type::Spline2, "image"),
    real("angle"),
    surface,
};
constexpr Field edgeTaper[] = {group("taper", taper), vec("draft")};
constexpr Field shadowTaper[] = {group("taper", taper), vec("draft"), real("sine"), real("cosine")};
constexpr Field ruledTaper[] = {
    group("taper", taper), vec("draft"), real("sine"), real("cosine"), real("factor").from(600).optional(),
};
constexpr Field lawSurface[] = {
    real("u_start"),         real("u_end"),           real("v_start"), real("v_end"),
    field(Type::Law, "law"), repeat("laws", lawList), surface,
};
constexpr Field helixCircle[] = {
    interval("angle"), interval("section"), real("radius_scale"), group("helix", helix), real("radius"),
};
constexpr Field helixLine[] = {
    interval("angle"),
    interval("section"),
    group("helix", helix),
    vec("section_line"),
};

constexpr Field explicitImage[] = {
    field(Type::Spline2, "image"),
    real("fit"),
    field(Type::Surface, "surface"),
};

constexpr SubClass subClasses[] = {
    {"exactcur", "exact_int_cur", SubKind::Curve, exactCur},
    {"surfintcur", "int_int_cur", SubKind::Curve, intersection},
    {"surfcur", "surf_int_cur", SubKind::Curve, heldCurve},
    {"parcur", "par_int_cur", SubKind::Curve, heldCurve},
    {"bldcur", "blend_int_cur", SubKind::Curve, heldCurve},
    {"projcur", "proj_int_cur", SubKind::Curve, projected},
    {"offintcur", "off_int_cur", SubKind::Curve, offsetPair},
    {"offsetintcur", "offset_int_cur", SubKind::Curve, {}},
    {"offsurfintcur", "off_surf_int_cur", SubKind::Curve, offsetOnSurface},
    {"blndsprngcur", "spring_int_cur", SubKind::Curve, {}},
    {"parasil", "para_silh_int_cur", SubKind::Curve, silhouette},
    {"perspsil", "persp_silh_int_cur", SubKind::Curve, {}},
    {"tapersil", "taper_silh_int_cur", SubKind::Curve, taperSilhouette},
    {"subsetintcur", "subset_int_cur", SubKind::Curve, {}},
    {"d5c2_cur", "skin_int_cur", SubKind::Curve, {}},
    {"lawintcur", "law_int_cur", SubKind::Curve, lawCurve},
    {"helix_int_cur", "helix_int_cur", SubKind::Curve, helix, false, false},
    {"comp_int_cur", "comp_int_cur", SubKind::Curve, {}, false},
    {"defm_int_cur", "defm_int_cur", SubKind::Curve, {}, false},
    {"sss_int_cur", "sss_int_cur", SubKind::Curve, {}, false},

    {"exactsur", "exact_spl_sur", SubKind::Surface, exactSur},
    {"rotsur", "rot_spl_sur", SubKind::Surface, revolved},
    {"sumsur", "sum_spl_sur", SubKind::Surface, summed},
    {"pipesur", "pipe_spl_sur", SubKind::Surface, {}},
    {"tubesur", "tube_spl_sur", SubKind::Surface, tube},
    {"offsur", "off_spl_sur", SubKind::Surface, offsetSurface},
    {"subsur", "sub_spl_sur", SubKind::Surface, part, true, false},
    {"rulesur", "rule_sur", SubKind::Surface, ruled},
    {"cylsur", "cyl_spl_sur", SubKind::Surface, cylinder},
    {"sweepsur", "sweep_spl_sur", SubKind::Surface, {}},
    {"skinsur", "skin_spl_sur", SubKind::Surface, {}},
    {"skinsur2", "skin_spl_sur2", SubKind::Surface, {}},
    {"loftsur", "loft_spl_sur", SubKind::Surface, {}},
    {"netsur", "net_spl_sur", SubKind::Surface, {}},
    {"lawsur", "law_spl_sur", SubKind::Surface, lawSurface},
    {"rbblnsur", "rb_blend_spl_sur", SubKind::Surface, {}},
    {"pipeblnsur", "pipe_blend_spl_sur", SubKind::Surface, {}},
    {"varblendsplsur", "var_blend_spl_sur", SubKind::Surface, {}},
    {"srfsrfblndsur", "srf_srf_v_bl_spl_sur", SubKind::Surface, {}},
    {"crvcrvblndsur", "crv_crv_v_bl_spl_sur", SubKind::Surface, {}},
    {"crvsrfblndsur", "crv_srf_v_bl_spl_sur", SubKind::Surface, {}},
    {"sfcvfreeblndsur", "sfcv_free_bl_spl_sur", SubKind::Surface, {}},
    {"vertexblendsur", "VBL_SURF", SubKind::Surface, {}},
    {"offsetvbsur", "VBL_OFFSURF", SubKind::Surface, {}},
    {"tapersur", "taper_spl_sur", SubKind::Surface, taper},
    {"edgetapersur", "edge_tpr_spl_sur", SubKind::Surface, edgeTaper},
    {"orthosur", "ortho_spl_sur", SubKind::Surface, {}},
    {"shadowtapersur", "shadow_tpr_spl_sur", SubKind::Surface, shadowTaper},
    {"swepttapersur", "swept_tpr_spl_sur", SubKind::Surface, shadowTaper},
    {"ruledtapersur", "ruled_tpr_spl_sur", SubKind::Surface, ruledTaper},
    {"sssblndsur", "sss_blend_spl_sur", SubKind::Surface, {}, false},
    {"g2blnsur", "g2_blend_spl_sur", SubKind::Surface, {}, false},
    {"sclclftsur", "scaled_cloft_spl_sur", SubKind::Surface, {}, false},
    {"cl_loft_spl_sur", "cl_loft_spl_sur", SubKind::Surface, {}, false},
    {"defmsur", "defm_spl_sur", SubKind::Surface, {}, false},
    {"comp_spl_sur", "comp_spl_sur", SubKind::Surface, {}, false},
    {"t_spl_sur", "t_spl_sur", SubKind::Surface, {}, false},
    {"helix_spl_circ", "helix_spl_circ", SubKind::Surface, helixCircle, false, false},
    {"helix_spl_line", "helix_spl_line", SubKind::Surface, helixLine, false, false},
    {"stripc", "", SubKind::Surface, {}},
    {"tri3sur", "", SubKind::Surface, {}},
    {"meshsurf", "", SubKind::Surface, {}},

    {"exppc", "exp_par_cur", SubKind::Pcurve, explicitImage},
    {"imppc", "imp_par_cur", SubKind::Pcurve, {}},
};

constexpr std::string_view OLD_SWEEP = "sweep_sur"; ///< a third name of one of them

constexpr std::size_t rowOf(std::string_view name) {
    std::size_t row = 0;
    while (subClasses[row].name != name) ++row;
    return row;
}

constexpr auto index = [] {
    NameIndex<2 * std::size(subClasses) + 1> names;
    for (std::size_t i = 0; i < std::size(subClasses); ++i) {
        names.add(subClasses[i].name, i);
        if (!subClasses[i].modernName.empty()) names.add(subClasses[i].modernName, i);
    }
    names.add(OLD_SWEEP, rowOf("sweepsur"));
    names.sort();
    return names;
}();

} // namespace

const SubClass* findSubClass(std::string_view name) {
    const int row = index.find(name);
    return row < 0 ? nullptr : &subClasses[row];
}

const SubClass& exactCurve() {
    return subClasses[rowOf("exactcur")];
}
const SubClass& exactSurface() {
    return subClasses[rowOf("exactsur")];
}
const SubClass& exactPcurve() {
    return subClasses[rowOf("exppc")];
}

} // namespace ACIS
