#include "store/look_tables.h"
#include "store/origin_tables.h"
#include "store/store.h"

#include "services/open_file.h"
#include "store/sheet_tables.h"
#include "store/space_rows.h"
#include "store/table_reader.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

static void checkForm(int unit, double scale, int format) {
    if (unit < 1 || unit > 8) throw StoreError("the unit isn't one");
    if (format < 0 || format > 6) throw StoreError("the sheet format isn't one");
    if (!std::isfinite(scale) || scale <= 0) throw StoreError("the scale isn't one");
}

static DrawingHead readHead(Database& db, Drawing& drawing) {
    std::vector<DrawingHead> heads;
    readRows<DrawingHead>(db, [&](const Keys<DrawingHead>&) -> DrawingHead& { return heads.emplace_back(); });
    if (heads.size() != 1) throw StoreError("its settings are missing");
    const DrawingHead& head = heads[0];
    checkForm(head.unit, head.scale, head.format);
    // Patterns to come need numbers, too.
    if (head.lastNumber < 0 || head.lastNumber > 2'000'000'000 || head.activeNumber < 0 ||
        head.nextWorkId < 1)
        throw StoreError("its settings are out of range");
    drawing.unit = head.unit;
    drawing.scale = head.scale;
    drawing.format = head.format;
    drawing.nextWorkId = head.nextWorkId;
    drawing.fileName = head.fileName;
    return head;
}

static void readSource(Database& db, std::int64_t version, Drawing& drawing) {
    if (!hasTable<DrawingSource>(version)) return;
    std::vector<DrawingSource> sources;
    readRows<DrawingSource>(
        db, [&](const Keys<DrawingSource>&) -> DrawingSource& { return sources.emplace_back(); });
    drawing.unitAssumed = !sources.empty() && sources.front().unitAssumed;
}

static void readSpace(Database& db, std::int64_t version, Drawing& drawing) {
    if (hasTable<Curve>(version)) readPatternLists(db, drawing, &Pattern::curves);
    if (!hasTable<FaceList>(version)) return;
    readPatternLists(db, drawing, &Pattern::faceLists);
    readPatternLists(db, drawing, &Pattern::facets);
    readPatternLists(db, drawing, &Pattern::pointClouds);
    readPatternLists(db, drawing, &Pattern::solids);
    for (const Pattern& pattern : drawing.patterns) checkSpace(pattern);
}

static void readPatterns(Database& db, std::int64_t version, const DrawingHead& head, Drawing& drawing) {
    readRows<Pattern>(db, [&](const Keys<Pattern>& key) -> Pattern& {
        if (key[0] <= drawing.lastNumber || key[0] > head.lastNumber)
            throw StoreError("a pattern number is out of range");
        return drawing.restorePattern(key[0]);
    });
    drawing.lastNumber = head.lastNumber;
    drawing.activeNumber = drawing.find(head.activeNumber) ? head.activeNumber : 0;
    readPatternLists(db, drawing, &Pattern::attributes);
    if (hasTable<ElementAttribute>(version)) readPatternLists(db, drawing, &Pattern::elementAttributes);
    if (hasTable<Relation>(version))
        readRows<Relation>(
            db, [&](const Keys<Relation>& key) -> Relation& { return ownerOf(drawing, key[0]).relation; });
    readPatternLists(db, drawing, &Pattern::splines);
    readPatternLists(db, drawing, &Pattern::hatches);
    readPatternLists(db, drawing, &Pattern::texts);
    if (hasTable<Arrow>(version)) readPatternLists(db, drawing, &Pattern::arrows);
    if (hasTable<Dimension>(version)) readPatternLists(db, drawing, &Pattern::dimensions);
    readSpace(db, version, drawing);
    readHatchParts(db, version, drawing);
    readPartLists(db, drawing, &Pattern::texts, &Text::lines);
    if (hasTable<Origin>(version)) readOrigins(db, drawing);
}

static void readStates(Database& db, std::int64_t version, Drawing& drawing) {
    std::vector<NamedState> states;
    readRows<NamedState>(db,
                         [&](const Keys<NamedState>& key) -> NamedState& { return append(states, key[0]); });
    for (const NamedState& state : states) drawing.states[state.name] = state.settings;
    if (!hasTable<NamedTextState>(version)) return;
    std::vector<NamedTextState> textStates;
    readRows<NamedTextState>(
        db, [&](const Keys<NamedTextState>& key) -> NamedTextState& { return append(textStates, key[0]); });
    for (const NamedTextState& state : textStates) {
        StateSettings& settings = drawing.states[state.name];
        settings.textBackOn = state.settings.textBackOn;
        settings.textBits = state.settings.textBits;
        settings.swapsTextColours = state.settings.swapsTextColours;
    }
}

/// What names a thing is one line, or it would mean something else wherever names are listed by lines.
static void checkName(const std::string& name) {
    if (name.find_first_of(std::string_view("\n\r\0", 3)) != std::string::npos)
        throw StoreError("a name has several lines");
}

static void checkNames(const Drawing& drawing) {
    for (const Layer& layer : drawing.layers) checkName(layer.name);
    for (const View& view : drawing.views) checkName(view.name);
    for (const auto& [number, lineType] : drawing.lineTypes) checkName(lineType.name);
    for (const Pattern& pattern : drawing.patterns) checkName(pattern.ids.layer);
}

static void readTables(Database& db, std::int64_t version, Drawing& drawing) {
    readRows<Layer>(db, [&](const Keys<Layer>& key) -> Layer& { return append(drawing.layers, key[0]); });
    if (hasTable<LayerLook>(version)) readLooks(db, drawing);
    if (hasTable<Material>(version))
        readRows<Material>(
            db, [&](const Keys<Material>& key) -> Material& { return append(drawing.materials, key[0]); });
    drawing.views.clear();
    readRows<View>(db, [&](const Keys<View>& key) -> View& { return append(drawing.views, key[0]); });
    for (const View& view : drawing.views) checkForm(view.unit, view.scale, view.format);
    readRows<WorkPlane>(db,
                        [&](const Keys<WorkPlane>& key) -> WorkPlane& { return drawing.workPlanes[key[0]]; });
    readRows<LineType>(db, [&](const Keys<LineType>& key) -> LineType& { return drawing.lineTypes[key[0]]; });
    readRows<Rgb>(db, [&](const Keys<Rgb>& key) -> Rgb& { return drawing.pens[key[0]]; });
    readStates(db, version, drawing);
    std::vector<ImportedPattern> imported;
    readRows<ImportedPattern>(
        db, [&](const Keys<ImportedPattern>& key) -> ImportedPattern& { return append(imported, key[0]); });
    for (const ImportedPattern& pattern : imported) drawing.lastInterfaceIds.push_back(pattern.number);
}

/// What elements refer to must be there: splines in a pattern; a contour has none.
static void checkElements(const Drawing& drawing) {
    for (const Pattern& pattern : drawing.patterns) {
        const auto splines = static_cast<double>(pattern.splines.size());
        for (const Element& element : pattern.elements)
            if (element.type == ElementType::Spline &&
                !(element.cx >= 0 && element.cx < splines && element.cx == std::floor(element.cx)))
                throw StoreError("an element belongs to no spline");
        for (const Hatch& hatch : pattern.hatches)
            for (const Contour& contour : hatch.contours)
                for (const Element& element : contour)
                    if (element.type == ElementType::Spline) throw StoreError("a contour holds a spline");
    }
}

template <class Record>
static void checkTable(Database& db, std::int64_t version) {
    if (!hasTable<Record>(version)) return;
    Statement query(db, std::string("SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = '") +
                            Row<Record>::table + "'");
    if (!query.next() || query.text(0) != createSql<Record>())
        throw StoreError(std::string("its table ") + Row<Record>::table + " isn't as it should be");
}

template <class Record>
struct Checked {
    using Type = Record;
};

template <class... R>
static void checkTables(Database& db, std::int64_t version, const std::tuple<Checked<R>...>&) {
    (checkTable<R>(db, version), ...);
}

/// Refuses what isn't a drawing file that this program knows, ahead of reading its content. Gives its
/// version.
static std::int64_t checkFile(Database& db) {
    if (db.number("PRAGMA application_id") != kDrawingFileId) throw StoreError("it isn't a drawing file");
    const std::int64_t version = db.number("PRAGMA user_version");
    if (version > kDrawingFileVersion)
        throw StoreError("it was written by a newer program (file version " + std::to_string(version) +
                         ", known up to " + std::to_string(kDrawingFileVersion) + ")");
    if (version < 1) throw StoreError("the file is damaged");
    if (db.text("PRAGMA quick_check(1)") != "ok") throw StoreError("the file is damaged");
    checkTables(db, version, ForEachRow<Checked>{});
    return version;
}

static bool hasContent(const std::string& path) {
    struct stat about {};
    return stat(path.c_str(), &about) == 0 && about.st_size > 0;
}

/// How to read the file so that nothing is made beside it. A log of changes, which a program that works on
/// the file keeps beside it, would have to be read too.
static Database::Mode modeFor(const std::string& path) {
    const int file = openRegular(path);
    if (file < 0) throw StoreError(errno == EINVAL ? "it isn't a file" : std::strerror(errno));
    constexpr off_t writeVersion = 18;
    std::array<char, 2> versions{};
    const ssize_t count = pread(file, versions.data(), versions.size(), writeVersion);
    close(file);
    const bool usesLog = count == 2 && versions[0] == 2 && versions[1] == 2;
    if (usesLog && hasContent(path + "-wal")) throw StoreError("another program is at work on it");
    return usesLog ? Database::Mode::ReadAlone : Database::Mode::Read;
}

static void readDatabase(Drawing& drawing, const std::string& path) {
    Database db(path, modeFor(path));
    const std::int64_t version = checkFile(db);
    readPatterns(db, version, readHead(db, drawing), drawing);
    readTables(db, version, drawing);
    readSheets(db, version, drawing);
    readSource(db, version, drawing);
    checkNames(drawing);
    checkElements(drawing);
    drawing.recount();
    db.close();
}

std::string loadDrawing(Drawing& drawing, const std::string& path) {
    try {
        Drawing loaded;
        readDatabase(loaded, path);
        drawing = std::move(loaded);
        return {};
    } catch (const std::exception& error) {
        return "Can't load " + path + ": " + error.what();
    }
}

} // namespace host
