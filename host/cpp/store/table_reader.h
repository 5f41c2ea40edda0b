// Reading the rows of a drawing file: each value is checked for its kind and range, each list for gaps.
#pragma once

#include "store/rows.h"
#include "store/sqlite.h"

#include <limits>
#include <string>

namespace host {

/// Visitor: takes a record's members from the columns of a row, each of its kind and within its range.
class RowReader {
public:
    RowReader(Statement& query, int first) : query_(query), index_(first) {}
    void operator()(const char*, std::string& text) { text = query_.text(index_++); }
    void operator()(const char*, double& value) { value = query_.real(index_++); }
    template <class Integer>
    requires std::is_integral_v<Integer>
    void operator()(const char* name, Integer& value) {
        const std::int64_t stored = query_.integer(index_++);
        if (stored < std::numeric_limits<Integer>::min() || stored > std::numeric_limits<Integer>::max())
            throw StoreError(std::string("a value in column '") + name + "' is out of range");
        value = static_cast<Integer>(stored);
    }
    template <class Item>
    void operator()(const char*, std::vector<Item>& items) {
        unpack(query_.blob(index_++), items);
    }
    void operator()(const char*, std::vector<Element>& elements) {
        ElementColumns columns;
        for (std::string* column : {&columns.types, &columns.info, &columns.pens, &columns.lineTypes,
                                    &columns.targets, &columns.centres})
            *column = query_.blob(index_++);
        elements = unpackElements(columns);
    }
    void bytes(const char*, std::string& data) { data = query_.blob(index_++); }

private:
    Statement& query_;
    int index_;
};

template <class Record>
using Keys = std::array<int, Row<Record>::keys.size()>;

inline int toInt(std::int64_t value) {
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        throw StoreError("a number is out of range");
    return static_cast<int>(value);
}

/// Whether files of a version have the table of a record; a missing one is empty.
template <class Record>
bool hasTable(std::int64_t version) {
    if constexpr (requires { Row<Record>::since; }) return version >= Row<Record>::since;
    return true;
}

/// Reads a table in the order of its keys; `place` gives the record that a row's keys stand for.
template <class Record, class Place>
void readRows(Database& db, Place place) {
    const std::string keys = keyNames<Record>();
    Statement query(db, "SELECT " + columnNames<Record>() + " FROM " + Row<Record>::table +
                            (keys.empty() ? "" : " ORDER BY " + keys));
    while (query.next()) {
        Keys<Record> key;
        int column = 0;
        for (int& part : key) part = toInt(query.integer(column++));
        RowReader reader(query, column);
        Row<Record>::columns(reader, place(key));
    }
}

/// The next item of a list, which must be the one at `position`.
template <class Record>
Record& append(std::vector<Record>& list, int position) {
    if (position < 0 || static_cast<std::size_t>(position) != list.size())
        throw StoreError("a list has gaps");
    return list.emplace_back();
}

inline Pattern& ownerOf(Drawing& drawing, int number) {
    Pattern* pattern = drawing.find(number);
    if (!pattern) throw StoreError("an object belongs to no pattern");
    return *pattern;
}

template <class Record>
Record& itemOf(std::vector<Record>& list, int position) {
    if (position < 0 || static_cast<std::size_t>(position) >= list.size())
        throw StoreError("a part belongs to no object");
    return list[static_cast<std::size_t>(position)];
}

template <class Record, class Owner>
void readPatternLists(Database& db, Drawing& drawing, std::vector<Record> Owner::*list) {
    readRows<Record>(db, [&](const Keys<Record>& key) -> Record& {
        return append(ownerOf(drawing, key[0]).*list, key[1]);
    });
}

template <class Record, class Owner>
void readPartLists(Database& db, Drawing& drawing, std::vector<Owner> Pattern::*owners,
                   std::vector<Record> Owner::*list) {
    readRows<Record>(db, [&](const Keys<Record>& key) -> Record& {
        return append(itemOf(ownerOf(drawing, key[0]).*owners, key[1]).*list, key[2]);
    });
}

} // namespace host
