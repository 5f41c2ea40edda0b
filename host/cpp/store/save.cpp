#include "store/store.h"

#include "store/replace.h"
#include "store/rows.h"
#include "store/sqlite.h"

#include <deque>
#include <memory>

namespace host {

namespace {

/// Visitor: binds a record's members to the parameters of an INSERT.
class RowBinder {
public:
    RowBinder(Statement& insert, int first) : insert_(insert), index_(first) {}
    void operator()(const char*, const std::string& text) { insert_.bindText(index_++, text); }
    void operator()(const char*, const double& value) { insert_.bind(index_++, value); }
    template <class Integer>
    requires std::is_integral_v<Integer>
    void operator()(const char*, const Integer& value) {
        insert_.bind(index_++, static_cast<std::int64_t>(value));
    }
    void operator()(const char*, const std::vector<RPT>& points) { keep(packPoints(points)); }
    void operator()(const char*, const std::vector<RPT3>& points) { keep(packPoints(points)); }
    void operator()(const char*, const std::vector<double>& values) { keep(packReals(values)); }
    void operator()(const char*, const std::vector<Element>& elements) {
        ElementColumns columns = packElements(elements);
        for (std::string* column : {&columns.types, &columns.info, &columns.pens, &columns.lineTypes,
                                    &columns.targets, &columns.centres})
            keep(std::move(*column));
    }
    void bytes(const char*, const std::string& data) { insert_.bindBlob(index_++, data); }

private:
    void keep(std::string blob) { insert_.bindBlob(index_++, blobs_.emplace_back(std::move(blob))); }

    Statement& insert_;
    int index_;
    std::deque<std::string> blobs_; ///< until the row is written
};

template <class Record>
std::string insertSql() {
    const std::size_t count = Row<Record>::keys.size() + listColumns<Record>().count;
    std::string marks = "?";
    for (std::size_t i = 1; i < count; ++i) marks += ", ?";
    return std::string("INSERT INTO ") + Row<Record>::table + " (" + columnNames<Record>() + ") VALUES (" +
           marks + ")";
}

/// Makes the table of a record and writes its rows.
template <class Record>
class TableWriter {
public:
    explicit TableWriter(Database& db) : db_(db), insert_(create(db), insertSql<Record>()) {}

    void put(std::initializer_list<std::int64_t> keys, const Record& record) {
        int index = 0;
        for (const std::int64_t key : keys) insert_.bind(index++, key);
        RowBinder binder(insert_, index);
        Row<Record>::columns(binder, record);
        insert_.insert();
        ++rows_;
    }
    /// The file holds as many rows as were written.
    void check() {
        if (db_.number(std::string("SELECT count(*) FROM ") + Row<Record>::table) != rows_)
            throw StoreError(std::string("rows of table ") + Row<Record>::table + " are missing");
    }

private:
    static Database& create(Database& db) {
        db.run(createSql<Record>());
        return db;
    }

    Database& db_;
    Statement insert_;
    std::int64_t rows_ = 0;
};

/// All tables of a file being written.
class Tables {
public:
    explicit Tables(Database& db) : writers_(open(db, static_cast<Writers*>(nullptr))) {}

    template <class Record>
    TableWriter<Record>& of() {
        return *std::get<std::unique_ptr<TableWriter<Record>>>(writers_);
    }
    void check() {
        std::apply([](auto&... writer) { (writer->check(), ...); }, writers_);
    }

private:
    template <class Record>
    using Holder = std::unique_ptr<TableWriter<Record>>;
    using Writers = ForEachRow<Holder>;
    template <class... W>
    static Writers open(Database& db, std::tuple<std::unique_ptr<W>...>*) {
        return Writers{std::make_unique<W>(db)...};
    }

    Writers writers_;
};

} // namespace

/// A list that belongs to a pattern, in order.
template <class Record>
static void putList(Tables& tables, int pattern, const std::vector<Record>& list) {
    std::int64_t position = 0;
    for (const Record& record : list) tables.of<Record>().put({pattern, position++}, record);
}

/// A list that belongs to the object at `owner` in one of the pattern's lists.
template <class Record>
static void putList(Tables& tables, int pattern, std::int64_t owner, const std::vector<Record>& list) {
    std::int64_t position = 0;
    for (const Record& record : list) tables.of<Record>().put({pattern, owner, position++}, record);
}

static void putPattern(Tables& tables, const Pattern& pattern) {
    tables.of<Pattern>().put({pattern.number}, pattern);
    putList(tables, pattern.number, pattern.attributes);
    putList(tables, pattern.number, pattern.splines);
    putList(tables, pattern.number, pattern.hatches);
    putList(tables, pattern.number, pattern.texts);
    putList(tables, pattern.number, pattern.dimensions);
    putList(tables, pattern.number, pattern.bitmaps);
    putList(tables, pattern.number, pattern.faces);
    putList(tables, pattern.number, pattern.curves);
    putList(tables, pattern.number, pattern.pointClouds);
    putList(tables, pattern.number, pattern.solids);
    for (std::size_t i = 0; i < pattern.hatches.size(); ++i) {
        putList(tables, pattern.number, static_cast<std::int64_t>(i), pattern.hatches[i].contours);
        putList(tables, pattern.number, static_cast<std::int64_t>(i), pattern.hatches[i].families);
    }
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
}

static void writeDatabase(const Drawing& drawing, const std::string& path) {
    Database db(path, Database::Mode::Create);
    // The file is new and replaces nothing until it is whole: a journal would only cost time.
    db.run("PRAGMA page_size = 8192; PRAGMA encoding = 'UTF-8'; PRAGMA journal_mode = OFF;"
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
