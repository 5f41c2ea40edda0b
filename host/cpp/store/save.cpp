#include "store/look_tables.h"
#include "store/origin_tables.h"
#include "store/store.h"

#include "store/replace.h"
#include "store/sheet_tables.h"
#include "store/table_writer.h"

namespace host {

static void putPattern(Tables& tables, const Pattern& pattern) {
    tables.of<Pattern>().put({pattern.number}, pattern);
    putList(tables, pattern.number, pattern.attributes);
    putList(tables, pattern.number, pattern.elementAttributes);
    if (pattern.relation != Relation{}) tables.of<Relation>().put({pattern.number}, pattern.relation);
    putList(tables, pattern.number, pattern.splines);
    putList(tables, pattern.number, pattern.hatches);
    putList(tables, pattern.number, pattern.texts);
    putList(tables, pattern.number, pattern.arrows);
    putList(tables, pattern.number, pattern.dimensions);
    putList(tables, pattern.number, pattern.faceLists);
    putList(tables, pattern.number, pattern.facets);
    putList(tables, pattern.number, pattern.curves);
    putList(tables, pattern.number, pattern.pointClouds);
    putList(tables, pattern.number, pattern.solids);
    putHatchParts(tables, pattern);
    for (std::size_t i = 0; i < pattern.texts.size(); ++i)
        putList(tables, pattern.number, static_cast<std::int64_t>(i), pattern.texts[i].lines);
}

static bool isContent(const Pattern* pattern) {
    return pattern && pattern->number > 0 && !pattern->scratch;
}

static DrawingHead headOf(const Drawing& drawing) {
    DrawingHead head;
    head.unit = drawing.unit;
    head.scale = drawing.scale;
    head.format = drawing.format;
    head.nextWorkId = drawing.nextWorkId;
    head.activeNumber = isContent(drawing.find(drawing.activeNumber)) ? drawing.activeNumber : 0;
    head.lastNumber = drawing.lastNumber;
    head.fileName = drawing.fileName;
    return head;
}

static void putDrawing(Tables& tables, const Drawing& drawing) {
    tables.of<DrawingHead>().put({}, headOf(drawing));
    for (const Pattern& pattern : drawing.patterns)
        if (isContent(&pattern)) putPattern(tables, pattern);
    std::int64_t position = 0;
    for (const Layer& layer : drawing.layers) tables.of<Layer>().put({position++}, layer);
    putLooks(tables, drawing);
    position = 0;
    for (const Material& material : drawing.materials) tables.of<Material>().put({position++}, material);
    position = 0;
    for (const View& view : drawing.views) tables.of<View>().put({position++}, view);
    position = 0;
    for (const int number : drawing.lastInterfaceIds)
        tables.of<ImportedPattern>().put({position++}, ImportedPattern{number});
    position = 0;
    for (const auto& [name, settings] : drawing.states) {
        const NamedTextState state{{name, settings}};
        tables.of<NamedState>().put({position}, state);
        tables.of<NamedTextState>().put({position++}, state);
    }
    for (const auto& [id, plane] : drawing.workPlanes) tables.of<WorkPlane>().put({id}, plane);
    for (const auto& [number, lineType] : drawing.lineTypes) tables.of<LineType>().put({number}, lineType);
    for (const auto& [number, color] : drawing.pens) tables.of<Rgb>().put({number}, color);
    if (drawing.unitAssumed) tables.of<DrawingSource>().put({}, {true});
    writeSheets(tables, drawing);
    putOrigins(tables, drawing);
}

static void writeDatabase(const Drawing& drawing, const std::string& path) {
    Database db(path, Database::Mode::Create);
    // The file is new and replaces nothing until it is whole, so that a journal beside it would only cost
    // time. A database that distrusts its schema always has one; in memory it leaves nothing behind.
    db.run("PRAGMA page_size = 8192; PRAGMA encoding = 'UTF-8'; PRAGMA journal_mode = MEMORY;"
           "PRAGMA synchronous = OFF; PRAGMA locking_mode = EXCLUSIVE; BEGIN;"
           "PRAGMA application_id = " +
           std::to_string(kDrawingFileId) + "; PRAGMA user_version = " + std::to_string(kDrawingFileVersion));
    {
        Tables tables(db);
        putDrawing(tables, drawing);
        db.run("COMMIT");
        if (db.text("PRAGMA quick_check(1)") != "ok") throw StoreError("the written file failed its check");
        tables.check();
    }
    db.close();
}

std::string saveDrawing(const Drawing& drawing, const std::string& path) {
    ReplacementFile file(path);
    try {
        writeDatabase(drawing, file.path());
    } catch (const std::exception& error) {
        return "Can't save " + path + ": " + error.what();
    }
    return file.commit();
}

} // namespace host
