// Writing the rows of a drawing file: tables are made and filled by the records' descriptions in rows.h.
#pragma once

#include "store/rows.h"
#include "store/sqlite.h"

#include <deque>
#include <memory>

namespace host {

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
    void operator()(const char*, const std::vector<std::int32_t>& values) { keep(packIntegers(values)); }
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

/// A list that belongs to a pattern, in order.
template <class Record>
void putList(Tables& tables, int pattern, const std::vector<Record>& list) {
    std::int64_t position = 0;
    for (const Record& record : list) tables.of<Record>().put({pattern, position++}, record);
}

/// A list that belongs to the object at `owner` in one of the pattern's lists.
template <class Record>
void putList(Tables& tables, int pattern, std::int64_t owner, const std::vector<Record>& list) {
    std::int64_t position = 0;
    for (const Record& record : list) tables.of<Record>().put({pattern, owner, position++}, record);
}

} // namespace host
