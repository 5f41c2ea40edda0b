// The table of records: topology, geometry, attributes.
#include "acis_class.h"
#include "acis_geometry_layouts.h"
#include "acis_name_index.h"

namespace ACIS {
namespace {

// ---- what records begin with ------------------------------------------------------------------------
constexpr Field entityPrefix[] = {
    ptr("attrib").link(),
    integer("id").from(700).besideId().orElse(-1),
};
constexpr Field geometryPrefix[] = {
    ptr("attrib").link(),
    integer("id").from(700).besideId().orElse(-1),
    extra("stamp").besideId(),
    ptr("pattern").from(700).besideId(),
};
constexpr Field attributePrefix[] = {
    ptr("attrib").link(), integer("id").from(700).besideId().orElse(-1),
    ptr("next").link(),   ptr("previous").link(),
    ptr("owner"),
};

// ---- topology ---------------------------------------------------------------------------------------
constexpr Field box = field(Type::Box, "box");

constexpr Field body[] = {ptr("lump"), ptr("wire"), ptr("transform"), box};
constexpr Field lump[] = {ptr("next"), ptr("shell"), ptr("body"), box};
constexpr Field shell[] = {ptr("next"),           ptr("subshell"), ptr("face"),
                           ptr("wire").from(107), ptr("lump"),     box};
constexpr Field subshell[] = {ptr("owner"), ptr("next"), ptr("child"), ptr("face"), ptr("wire").from(107)};
constexpr Field wire[] = {
    ptr("next"),
    ptr("coedge"),
    ptr("owner"),
    ptr("subshell").from(107),
    logical("side", words::inside).from(107),
    box,
};
/// Which side of a two-sided face holds material.
constexpr Field doubleSided[] = {logical("containment", words::inside)};
constexpr Layout faceSides[] = {{}, doubleSided};
constexpr Field sides() {
    Field f = field(Type::Choice, "sides").from(105);
    f.words = &words::sides;
    f.parts = faceSides;
    return f;
}
constexpr Field face[] = {
    ptr("next"), ptr("loop"), ptr("shell"), ptr("subshell"), ptr("surface"), logical("sense", words::sense),
    sides(),     box,
};
constexpr Field loop[] = {ptr("next"), ptr("coedge"), ptr("face"), box};
constexpr Field coedge[] = {
    ptr("next"),
    ptr("previous"),
    ptr("partner"),
    ptr("edge"),
    logical("sense", words::sense),
    ptr("owner"),
    integer("stamp").inAsm(21800).seen(),
    ptr("pcurve"),
};
constexpr Field tcoedge[] = {group("coedge", coedge), real("start"), real("end")};
constexpr Field edge[] = {
    ptr("start"),
    real("start_parameter").from(500).seen().filledBy(Fill::StartParameter),
    ptr("end"),
    real("end_parameter").from(500).seen().filledBy(Fill::EndParameter),
    ptr("coedge"),
    ptr("curve"),
    logical("sense", words::sense),
    string("convexity").from(500).seen().orElse("unknown"),
    box,
};
constexpr Field tedge[] = {group("edge", edge), real("tolerance")};
/// The end of the edge that the vertex is.
constexpr Field vertex[] = {ptr("edge"), integer("end").inAsm(21200).seen(), ptr("point")};
constexpr Field tvertex[] = {group("vertex", vertex), real("tolerance")};

// ---- geometry ---------------------------------------------------------------------------------------
constexpr Field point[] = {position("position")};
constexpr Field transform[] = {
    vec("x"),
    vec("y"),
    vec("z"),
    vec("shift"),
    real("scale"),
    logical("rotate", words::rotate),
    logical("reflect", words::reflect),
    logical("shear", words::shear),
};
constexpr Field pcurve[] = {field(Type::Pcurve, "type")};

// ---- attributes -------------------------------------------------------------------------------------
constexpr Field actions[] = {
    code("split", words::split),
    code("merge", words::merge),
    code("trans", words::trans),
    code("copy", words::split).from(600).orElse(2),
};
constexpr Field generic[] = {group("actions", actions)};
constexpr Field named[] = {group("actions", actions), string("name")};
constexpr Field namedString[] = {group("named", named), string("value")};
constexpr Field namedInteger[] = {group("named", named), integer("value")};
constexpr Field namedLong[] = {group("named", named), field(Type::Long, "value")};
constexpr Field namedReal[] = {group("named", named), real("value")};
constexpr Field namedPointer[] = {group("named", named), ptr("value")};
constexpr Field namedPosition[] = {group("named", named), position("value")};
constexpr Field namedVector[] = {group("named", named), vec("value")};
constexpr Field colour[] = {real("red"), real("green"), real("blue"), extra("opacity")};
constexpr Field number[] = {integer("value")};
constexpr Field material[] = {integer("low"), integer("high")};
constexpr Field persistent[] = {integer("a"), integer("b"), integer("c")};
constexpr Field history[] = {repeat("items", persistent)};
constexpr Field template_[] = {ptr("refinement"), ptr("vertices")};
constexpr Field edgeItem[] = {ptr("edge"), extra("stamp")};
constexpr Field vertexEdges[] = {repeat("edges", edgeItem)};
constexpr Field persistentName[] = {string("base"), integer("time"), integer("index"), integer("copy")};
constexpr Field settings[] = {field(Type::Settings, "settings")};
constexpr Field token[] = {integer("kind")};
constexpr Field tokens[] = {repeat("tokens", token)};
constexpr Field header[] = {string("version")};

constexpr Class topology(std::string_view name, Id id, Layout fields) {
    return {name, id, Prefix::Geometry, fields, false};
}
constexpr Class attribute(std::string_view name, Layout fields = {}) {
    return {name, Id::Attrib, Prefix::Attribute, fields};
}
constexpr Class entity(std::string_view name, Id id = Id::Other, Layout fields = {}) {
    return {name, id, Prefix::Entity, fields};
}
constexpr Class leaving(Class c) {
    c.leaves700 = true;
    return c;
}

constexpr Class classes[] = {
    attribute("ole_attribute-st-attrib"),
    attribute("rgb_color-st-attrib", colour),
    attribute("id_attribute-st-attrib", number),
    attribute("id_attribute-st-attrib-attrib", number),
    attribute("display_attribute-st-attrib", number),
    attribute("display_attribute-st-attrib-attrib", number),
    attribute("named_attribute-st-attrib"),
    attribute("named_string_attribute-named_attribute-st-attrib"),
    attribute("pid_name-sg-attrib", persistentName),
    attribute("name_attrib-gen-attrib", named),
    attribute("string_attrib-name_attrib-gen-attrib", namedString),
    attribute("integer_attrib-name_attrib-gen-attrib", namedInteger),
    attribute("entity_attrib-name_attrib-gen-attrib", namedPointer),
    attribute("pointer_attrib-name_attrib-gen-attrib", namedPointer),
    attribute("position_attrib-name_attrib-gen-attrib", namedPosition),
    attribute("real_attrib-name_attrib-gen-attrib", namedReal),
    attribute("vector_attrib-name_attrib-gen-attrib", namedVector),
    attribute("int64_attrib-name_attrib-gen-attrib", namedLong),
    attribute("fmesh-eye-attrib"),
    attribute("ptlist-eye-attrib"),
    attribute("ref_vt-eye-attrib", template_),
    attribute("f_body-eye-attrib"),
    attribute("fface-eye-attrib"),
    attribute("copar-eye-attrib"),
    attribute("epar-eye-attrib"),
    attribute("fmesh-lwd-attrib"),
    attribute("ptlist-lwd-attrib"),
    attribute("ref_vt-lwd-attrib", template_),
    attribute("f_body-lwd-attrib"),
    attribute("fface-lwd-attrib"),
    attribute("copar-lwd-attrib"),
    attribute("epar-lwd-attrib"),
    attribute("persubent-acadsolidhistory-attrib", history),
    attribute("color-adesk-attrib", number),
    attribute("truecolor-adesk-attrib", number),
    attribute("material-adesk-attrib", material),
    attribute("materialmapper-adesk-attrib"),
    attribute("spline_data-adesk-attrib"),
    attribute("entityid-bsi-attrib"),
    attribute("colour-tsl-attrib", number),
    attribute("render-rbase-attrib"),
    attribute("vertedge-sys-attrib", vertexEdges),
    attribute("tag-sys-attrib"),
    attribute("const_chamfer-ffblend-blend-sys-attrib"),
    attribute("const_round-ffblend-blend-sys-attrib"),
    attribute("const_blend-ffblend-blend-sys-attrib"),
    attribute("const_round-const_blend-ffblend-blend-sys-attrib"),
    attribute("vblend-blend-sys-attrib"),
    attribute("dxid-attrib"),
    attribute("attrib"),
    topology("body", Id::Body, body),
    entity("transform", Id::Transform, transform),
    entity("eye_refinement", Id::Other, settings),
    entity("refinement"),
    entity("vertex_template", Id::Other, tokens),
    topology("lump", Id::Lump, lump),
    topology("shell", Id::Shell, shell),
    topology("subshell", Id::SubShell, subshell),
    topology("coedge", Id::Coedge, coedge),
    topology("edge", Id::Edge, edge),
    topology("loop", Id::Loop, loop),
    topology("face", Id::Face, face),
    topology("vertex", Id::Vertex, vertex),
    topology("wire", Id::Wire, wire),
    entity("rh_entity"),
    entity("rh_background-rh_entity"),
    entity("rh_material-rh_entity"),
    entity("rh_light-rh_entity"),
    topology("point", Id::Point, point),
    topology("plane-surface", Id::Plane, planeFields),
    topology("cone-surface", Id::Cone, coneFields),
    topology("sphere-surface", Id::Sphere, sphereFields),
    topology("torus-surface", Id::Torus, torusFields),
    topology("straight-curve", Id::Straight, straightFields),
    topology("ellipse-curve", Id::Ellipse, ellipseFields),
    topology("intcurve-curve", Id::Intcurve, intcurveFields),
    topology("spline-surface", Id::Spline, splineFields),
    topology("pcurve", Id::PCurve, pcurve),
    topology("tcoedge-coedge", Id::Tcoedge, tcoedge),
    topology("tedge-edge", Id::Tedge, tedge),
    topology("tvertex-vertex", Id::Tvertex, tvertex),
    attribute(
        "aggregate_simgeom_attribute-aggregate_simgeom_base_attribute-aggregate_body_attribute-attrib_hh-"
        "attrib"),
    attribute(
        "aggregate_analytic_solver_attribute-aggregate_geombuild_base_attribute-aggregate_body_attribute-"
        "attrib_hh-attrib"),
    attribute(
        "aggregate_advspl_attribute-aggregate_geombuild_base_attribute-aggregate_body_attribute-attrib_hh-"
        "attrib"),
    attribute(
        "aggregate_isospline_attribute-aggregate_geombuild_base_attribute-aggregate_body_attribute-attrib_"
        "hh-attrib"),
    attribute(
        "aggregate_sharped_attribute-aggregate_geombuild_base_attribute-aggregate_body_attribute-attrib_hh-"
        "attrib"),
    attribute("aggregate_simgeom_attribute-aggregate_simgeom_base_attribute-attrib_hh-attrib"),
    attribute("aggregate_stitch_attribute-aggregate_stitch_base_attribute-attrib_hh-attrib"),
    attribute(
        "aggregate_secndry_attribute-aggregate_geombuild_base_attribute-aggregate_body_attribute-attrib_hh-"
        "attrib"),
    attribute(
        "attrib_hh_coedge_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_curve_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_edge_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_face_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_loop_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_lump_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_pcurve_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_shell_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_surface_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "attrib_hh_vertex_geombuild-attrib_entity_geombuild-individual_entity_attribute-attrib_hh-attrib"),
    attribute(
        "individual_simgeom_attribute-simgeom_base_entity_attribute-individual_entity_attribute-attrib_hh-"
        "attrib"),
    attribute("ufld_surf_simp_attrib-ufld_pos_track_attrib-at_ufld-attrib"),
    leaving(entity("annotation", Id::Annotation)),
    leaving(entity("split_annotation-annotation", Id::Annotation)),
    leaving(entity("asmheader", Id::Attrib_Unknown_AsmHeader, header)),
};
static_assert(std::size(classes) == 104);

/// Bases that stand in no file by themselves, but end the names of records that do.
constexpr Class bases[] = {
    attribute("gen-attrib", generic),
    {"degenerate_curve-curve", Id::Degenerate, Prefix::Geometry, degenerateFields, false},
    {"undefc-curve", Id::Other, Prefix::Geometry, undefinedFields, false},
    {"mesh_surface-surface", Id::Other, Prefix::Geometry, {}},
    {"curve", Id::Other, Prefix::Geometry, {}},
    {"surface", Id::Other, Prefix::Geometry, {}},
};
constexpr Class unknown = {"", Id::UnknownEntity, Prefix::Entity, {}};
constexpr Class raw = {"", Id::UnknownEntity, Prefix::None, {}};

constexpr auto index = [] {
    NameIndex<std::size(classes) + std::size(bases)> names;
    for (std::size_t i = 0; i < std::size(classes); ++i) names.add(classes[i].name, i);
    for (std::size_t i = 0; i < std::size(bases); ++i) names.add(bases[i].name, std::size(classes) + i);
    names.sort();
    return names;
}();

} // namespace

const Class* findClass(std::string_view name) {
    const int row = index.find(name);
    if (row < 0) return nullptr;
    const auto at = static_cast<std::size_t>(row);
    return at < std::size(classes) ? &classes[at] : &bases[at - std::size(classes)];
}

const Class& rawClass() {
    return raw;
}

const Class& classOf(std::string_view name, bool& isWhole) {
    isWhole = true;
    while (true) {
        if (const Class* found = findClass(name)) return *found;
        isWhole = false;
        const std::size_t dash = name.find('-');
        if (dash == std::string_view::npos) return unknown;
        name.remove_prefix(dash + 1);
    }
}

const Class& classOf(Id id) {
    for (const Class& c : classes)
        if (c.id == id) return c;
    return unknown;
}

std::span<const Class> allClasses() {
    return classes;
}

Layout prefixOf(Prefix prefix) {
    if (prefix == Prefix::None) return {};
    if (prefix == Prefix::Geometry) return geometryPrefix;
    if (prefix == Prefix::Attribute) return attributePrefix;
    return entityPrefix;
}

Layout geometryOf(std::string_view word, bool& known) {
    struct Row {
        std::string_view word;
        Layout fields;
    };
    static constexpr Row rows[] = {
        {"plane", planeFields},      {"cone", coneFields},         {"sphere", sphereFields},
        {"torus", torusFields},      {"spline", splineFields},     {"straight", straightFields},
        {"ellipse", ellipseFields},  {"intcurve", intcurveFields}, {"degenerate_curve", degenerateFields},
        {"undefc", undefinedFields}, {"null_surface", {}},         {"null_curve", {}},
    };
    known = true;
    for (const Row& row : rows)
        if (row.word == word) return row.fields;
    known = false;
    return {};
}

} // namespace ACIS
