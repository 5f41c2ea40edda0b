// Texts, leaders, dimensions, tables: groups that belong together, nested data.

#include "checks.h"
#include "cursor.h"
#include "value_checks.h"

namespace validate {

void checkText(Session& session, const Record& record) {
    const auto value = [&](size_t part, int code) {
        const Tag* tag = record.findIn(part, code);
        return tag ? readInteger(tag->value).value_or(0) : 0;
    };
    const int64_t horizontal = value(1, 72), vertical = value(2, record.name == "TEXT" ? 73 : 74);
    if ((horizontal != 0 || vertical != 0) && !record.findIn(1, 11))
        session.out.add(Rule::MissingGroup, session.place, "an aligned text lacks its alignment point (11)");
    if (horizontal >= 3 && horizontal <= 5 && vertical != 0)
        session.out.add(Rule::GroupsTogether, session.place, "the horizontal alignment ", horizontal,
                        " excludes a vertical one");
}

void checkMText(Session& session, const Record& record) {
    bool last = false;
    for (Cursor cursor(record, "AcDbMText"); !cursor.atEnd(); cursor.step()) {
        if (cursor.code() == 3 && last)
            session.out.add(Rule::GroupOrder, session.at(cursor.tag()),
                            "a text chunk (3) behind the last one (1)");
        last = last || cursor.code() == 1;
    }
    if (record.integer(90) & 1 && !(record.find(63) && record.find(45)))
        session.out.add(Rule::GroupsTogether, session.place,
                        "a background fill (90) without colour (63) and scale (45)");
}

void checkLeader(Session& session, const Record& record) {
    const Tag* count = record.find(76);
    if (count && record.integer(76) < 2)
        session.out.add(Rule::ValueRange, session.at(*count), "a leader needs at least 2 vertices");
    if (record.integer(73, 3) != 3 && !record.find(340))
        session.out.add(Rule::GroupsTogether, session.place,
                        "a leader with an annotation (73) lacks its handle (340)");
}

void checkDimension(Session& session, const Record& record) {
    const Tag* block = record.find(2);
    if (block && !block->value.empty())
        session.model.blockUses.push_back({block->value, session.at(*block), Rule::DimensionBlock});
}

namespace {

/// The first row and column count of a table, and what there is of both.
void checkTableSizes(Session& session, const Record& record) {
    const Tag* rows = nullptr;
    const Tag* columns = nullptr;
    int64_t heights = 0, widths = 0, cells = 0;
    for (Cursor cursor(record, "AcDbTable"); !cursor.atEnd(); cursor.step()) {
        if (cursor.code() == 91 && !rows) rows = &cursor.tag();
        if (cursor.code() == 92 && !columns) columns = &cursor.tag();
        heights += cursor.code() == 141;
        widths += cursor.code() == 142;
        cells += cursor.code() == 171;
    }
    if (!rows || !columns) return;
    const int64_t rowCount = readInteger(rows->value).value_or(0),
                  columnCount = readInteger(columns->value).value_or(0);
    if (heights != rowCount)
        session.out.add(Rule::WrongCount, session.at(*rows), rowCount, " rows, ", heights,
                        " row heights (141)");
    else if (widths != columnCount)
        session.out.add(Rule::WrongCount, session.at(*columns), columnCount, " columns, ", widths,
                        " column widths (142)");
    else if (cells != heights * widths)
        session.out.add(Rule::WrongCount, session.place, cells, " cells (171) in ", heights, " rows and ",
                        widths, " columns");
}

} // namespace

void checkTable(Session& session, const Record& record) {
    const Tag* block = record.find(2);
    if (block && !block->value.empty())
        session.model.blockUses.push_back({block->value, session.at(*block), Rule::TableBlock});
    checkTableSizes(session, record);
}

namespace {

struct Nesting {
    int code;
    std::string_view value;
    int level; ///< that the brace opens or closes
    bool opens;
};

constexpr Nesting kNesting[] = {
    {300, "CONTEXT_DATA{", 1, true},
    {302, "LEADER{", 2, true},
    {304, "LEADER_LINE{", 3, true},
    {301, "}", 1, false},
    {303, "}", 2, false},
    {305, "}", 3, false},
};

/// Kinds that handles outside of the context data lead to.
std::string_view targetOf(int code) {
    switch (code) {
    case 340: return "MLEADERSTYLE";
    case 341: return "LTYPE";
    case 343: return "STYLE";
    case 342:
    case 344:
    case 345: return "BLOCK_RECORD";
    default: return {};
    }
}

/// First of the pointers that the record has noted so far; they are in the order of lines.
size_t firstPointer(const Session& session, const Record& record) {
    const auto& pointers = session.model.pointers;
    size_t first = pointers.size();
    while (first > 0 && pointers[first - 1].object == record.object) --first;
    return first;
}

const Nesting* nestingOf(const Tag& tag) {
    for (const Nesting& nesting : kNesting)
        if (nesting.code == tag.code && trimmed(tag.value) == nesting.value) return &nesting;
    return nullptr;
}

} // namespace

void checkMultiLeader(Session& session, const Record& record) {
    int level = 0;
    bool style = false;
    auto& pointers = session.model.pointers;
    size_t pointer = firstPointer(session, record);
    for (Cursor cursor(record, "AcDbMLeader"); !cursor.atEnd(); cursor.step()) {
        const Tag& tag = cursor.tag();
        style = style || (level == 0 && tag.code == 340);
        while (pointer < pointers.size() && pointers[pointer].line < tag.line) ++pointer;
        if (level == 0 && pointer < pointers.size() && pointers[pointer].line == tag.line)
            pointers[pointer].wanted = targetOf(tag.code);
        const Nesting* nesting = nestingOf(tag);
        if (!nesting) continue;
        if (level != nesting->level - nesting->opens) {
            session.out.add(Rule::NestedData, session.at(tag), "group ", tag.code, ' ', inQuotes(tag.value),
                            " does not fit the nesting");
            return;
        }
        level += nesting->opens ? 1 : -1;
    }
    if (level != 0) session.out.add(Rule::NestedData, session.place, "nested data are not closed");
    if (!style)
        session.out.add(Rule::MissingGroup, session.place, "the handle of the style (340) is missing");
}

} // namespace validate
