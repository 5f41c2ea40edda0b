// What stands in which table of the drawing file: each record's columns, described once for making the
// table, writing a row and reading it. docs/drawing-file.md tells the same to people.
#pragma once

#include "store/hatch_rows.h"
#include "store/packing.h"
#include "store/pattern_rows.h"
#include "store/sheet_rows.h"
#include "store/solid_rows.h"
#include "store/space_rows.h"

#include <array>
#include <string>
#include <tuple>
#include <utility>

namespace host {

inline constexpr int kDrawingFileId = 0x54445731; ///< PRAGMA application_id, "TDW1"
inline constexpr int kDrawingFileVersion = 4;     ///< PRAGMA user_version; each Row says since which

/// The drawing's own settings.
struct DrawingHead {
    int unit = 3;
    double scale = 1;
    int format = 1, nextWorkId = 1, activeNumber = 0, lastNumber = 0;
    std::string fileName;
};

/// What a pattern state stands for, with its name.
struct NamedState {
    std::string name;
    StateSettings settings;
};

/// What a pattern state says of the look of texts, beyond their pen.
struct NamedTextState : NamedState {};

/// What is known of the file that the drawing came from.
struct DrawingSource {
    bool unitAssumed = false;
};

/// A pattern of the last import, as a row.
struct ImportedPattern {
    int number = 0;
};

using Attribute = std::pair<std::string, std::string>;
using TextLine = std::string;

/// Table, key columns and columns of a record. `columns` hands each member to the visitor by name.
template <class Record>
struct Row;

template <>
struct Row<DrawingHead> {
    static constexpr const char* table = "drawing";
    static constexpr std::array<const char*, 0> keys{};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("unit", r.unit), v("scale", r.scale), v("format", r.format);
        v("next_work_id", r.nextWorkId), v("active_pattern", r.activeNumber), v("last_pattern", r.lastNumber);
        v("file_name", r.fileName);
    }
};

template <>
struct Row<DrawingSource> {
    static constexpr int since = 4;
    static constexpr const char* table = "source";
    static constexpr std::array<const char*, 0> keys{};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("unit_assumed", r.unitAssumed);
    }
};

template <>
struct Row<Pattern> {
    static constexpr const char* table = "patterns";
    static constexpr std::array keys{"number"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("visible", r.visible), v("group_number", r.groupNumber), v("work_id", r.workId);
        v("group_name", r.ids.group), v("level", r.ids.level), v("class", r.ids.cls), v("name", r.ids.name);
        v("layer", r.ids.layer), v("obstat", r.ids.obstat);
        v("elements", r.elements);
        v("faces_joined", r.facesJoined);
    }
};

template <>
struct Row<Attribute> {
    static constexpr const char* table = "attributes";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.first), v("value", r.second);
    }
};

template <>
struct Row<Spline> {
    static constexpr const char* table = "splines";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("degree", r.degree), v("start_fixed", r.startFixed), v("end_fixed", r.endFixed);
        v("start_angle", r.startAngle), v("end_angle", r.endAngle), v("points", r.points);
    }
};

template <>
struct Row<Hatch> {
    static constexpr const char* table = "hatches";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("solid", r.solid), v("fill_pen", r.fillPen), v("transparency", r.transparency);
        v("pattern_name", r.patternName);
    }
};

template <>
struct Row<Contour> {
    static constexpr const char* table = "contours";
    static constexpr std::array keys{"pattern", "hatch", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("elements", r);
    }
};

template <>
struct Row<HatchFamily> {
    static constexpr const char* table = "hatch_families";
    static constexpr std::array keys{"pattern", "hatch", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("angle", r.angle), v("distance", r.distance), v("origin_x", r.originX), v("origin_y", r.originY);
        v("line_offset", r.offset), v("pen", r.pen), v("line_type", r.lineType), v("dashes", r.dashes);
    }
};

template <>
struct Row<Text> {
    static constexpr const char* table = "texts";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("x", r.x), v("y", r.y), v("z", r.z), v("height", r.height), v("width", r.width);
        v("angle", r.angle), v("slant", r.slant), v("font", r.font), v("face", r.face);
        v("style_bits", r.styleBits), v("pen", r.pen), v("origin", r.origin);
        v("justification", r.justification), v("line_distance", r.lineDistance), v("spacing", r.spacing);
        v("line_length", r.lineLength), v("fill_pen", r.fillPen), v("back_on", r.backOn);
        v("back_type", r.backType), v("dim_type", r.dimType);
    }
};

template <>
struct Row<TextLine> {
    static constexpr const char* table = "text_lines";
    static constexpr std::array keys{"pattern", "text", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("line", r);
    }
};

template <>
struct Row<Layer> {
    static constexpr const char* table = "layers";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.name), v("visible", r.visible), v("locked", r.locked);
    }
};

template <>
struct Row<View> {
    static constexpr const char* table = "views";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.name), v("format", r.format), v("unit", r.unit), v("scale", r.scale);
    }
};

template <>
struct Row<WorkPlane> {
    static constexpr const char* table = "work_planes";
    static constexpr std::array keys{"id"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("ax", r.a.x), v("ay", r.a.y), v("az", r.a.z), v("bx", r.b.x), v("by", r.b.y), v("bz", r.b.z);
        v("cx", r.c.x), v("cy", r.c.y), v("cz", r.c.z);
    }
};

template <>
struct Row<LineType> {
    static constexpr const char* table = "line_types";
    static constexpr std::array keys{"number"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.name), v("dashes", r.dashes);
    }
};

template <>
struct Row<Rgb> {
    static constexpr const char* table = "pens";
    static constexpr std::array keys{"number"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("r", r.r), v("g", r.g), v("b", r.b);
    }
};

template <>
struct Row<NamedState> {
    static constexpr const char* table = "states";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.name), v("pen", r.settings.pen), v("line_type", r.settings.lineType);
        v("hatch_pen", r.settings.hatchPen), v("text_pen", r.settings.textPen), v("pen_3d", r.settings.pen3d);
    }
};

template <>
struct Row<NamedTextState> {
    static constexpr int since = 3;
    static constexpr const char* table = "text_states";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("name", r.name), v("back_on", r.settings.textBackOn), v("bits", r.settings.textBits);
        v("swaps_colours", r.settings.swapsTextColours);
    }
};

template <>
struct Row<ImportedPattern> {
    static constexpr const char* table = "imported_patterns";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("pattern", r.number);
    }
};

} // namespace host

#include "store/dimension_rows.h"
#include "store/look_rows.h"
#include "store/origin_rows.h"

namespace host {

/// All records, each with a table: `Holder<A>, Holder<B>, …` in a tuple.
template <template <class> class Holder>
using ForEachRow =
    std::tuple<Holder<DrawingHead>, Holder<Pattern>, Holder<Attribute>, Holder<Spline>, Holder<Hatch>,
               Holder<Contour>, Holder<HatchFamily>, Holder<HatchExclusion>, Holder<HatchLines>,
               Holder<HatchGradient>, Holder<HatchSource>, Holder<HatchBack>, Holder<Text>, Holder<TextLine>,
               Holder<Arrow>, Holder<Dimension>, Holder<Solid>, Holder<FaceList>, Holder<Facets>,
               Holder<Curve>, Holder<PointCloud>, Holder<Material>, Holder<Layer>, Holder<View>,
               Holder<WorkPlane>, Holder<LineType>, Holder<Rgb>, Holder<NamedState>, Holder<NamedTextState>,
               Holder<ImportedPattern>, Holder<Relation>, Holder<ElementAttribute>, Holder<Bitmap>,
               Holder<ViewDetails>, Holder<ViewInsert>, Holder<SheetPattern>, Holder<GeoReference>,
               Holder<LayerLook>, Holder<OV_PEN_LOOK>, Holder<DrawingSource>, Holder<Origin>, Holder<Placed>,
               Holder<Definition>, Holder<DefinitionPattern>>;

/// Visitor: lists the columns' declarations.
class ColumnLister {
public:
    void operator()(const char* name, const std::string&) { add(name, "TEXT NOT NULL"); }
    void operator()(const char* name, const double&) { add(name, "REAL"); }
    template <class Integer>
    requires std::is_integral_v<Integer>
    void operator()(const char* name, const Integer&) { add(name, "INTEGER NOT NULL"); }
    template <class Item>
    void operator()(const char* name, const std::vector<Item>&) {
        add(name, "BLOB NOT NULL");
    }
    void operator()(const char*, const std::vector<Element>&) {
        for (const char* name : {"types", "info", "pens", "line_types", "targets", "centres"})
            add(name, "BLOB NOT NULL");
    }
    void bytes(const char* name, const std::string&) { add(name, "BLOB NOT NULL"); }

    std::string names, declarations; ///< each with ", " ahead of every entry
    int count = 0;

private:
    void add(const char* name, const char* kind) {
        names += std::string(", ") + name;
        declarations += std::string(", ") + name + " " + kind;
        ++count;
    }
};

template <class Record>
ColumnLister listColumns() {
    ColumnLister lister;
    const Record record{};
    Row<Record>::columns(lister, record);
    return lister;
}

/// Key columns, and behind them the others.
template <class Record>
std::string columnNames() {
    std::string names;
    for (const char* key : Row<Record>::keys) names += std::string(", ") + key;
    return (names + listColumns<Record>().names).substr(2);
}

template <class Record>
std::string keyNames() {
    std::string names;
    for (const char* key : Row<Record>::keys) names += std::string(names.empty() ? "" : ", ") + key;
    return names;
}

/// The statement that makes the table, as it stands in the file's schema.
template <class Record>
std::string createSql() {
    std::string columns;
    for (const char* key : Row<Record>::keys) columns += std::string(", ") + key + " INTEGER NOT NULL";
    columns += listColumns<Record>().declarations;
    const std::string keys = keyNames<Record>();
    const std::string tail = keys.empty() ? ")" : ", PRIMARY KEY (" + keys + ")) WITHOUT ROWID";
    return std::string("CREATE TABLE ") + Row<Record>::table + " (" + columns.substr(2) + tail;
}

} // namespace host
