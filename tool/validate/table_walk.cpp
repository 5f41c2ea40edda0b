// The TABLES section: heads, records, counts, names.

#include "checks.h"
#include "extended_data.h"
#include "section_walks.h"
#include "text.h"
#include "value_checks.h"

#include <algorithm>
#include <cmath>

namespace validate {

namespace {

struct TableRow {
    std::string_view name;
    Names names;
};

/// In the order in which files have them.
constexpr TableRow kTables[] = {
    {"VPORT", Names::Viewport},  {"LTYPE", Names::LineType},    {"LAYER", Names::Layer},
    {"STYLE", Names::TextStyle}, {"VIEW", Names::View},         {"UCS", Names::Ucs},
    {"APPID", Names::App},       {"DIMSTYLE", Names::DimStyle}, {"BLOCK_RECORD", Names::None},
};

size_t tableIndex(std::string_view name) {
    size_t i = 0;
    while (i < std::size(kTables) && kTables[i].name != name) ++i;
    return i;
}

std::string_view valueOf(std::span<const Tag> tags, int code) {
    for (const Tag& tag : tags)
        if (tag.code == code) return tag.value;
    return {};
}

} // namespace

bool TableWalk::has(std::string_view table) const {
    return std::find(seen_.begin(), seen_.end(), table) != seen_.end();
}

void TableWalk::record(std::span<const Tag> tags) {
    const Tag& start = tags.front();
    const Place place{start.line, 0, start.value, session_.section};
    if (start.value == "TABLE") {
        if (isOpen_) {
            session_.out.add(Rule::MissingEndTable, place_, "the table ", table_, " is not closed by ENDTAB");
            close(place);
        }
        open(tags);
    } else if (start.value == "ENDTAB") {
        if (!isOpen_) session_.out.add(Rule::OutOfPlace, place, "ENDTAB without TABLE");
        close(place);
    } else if (!isOpen_ || start.value != table_) {
        session_.out.add(Rule::OutOfPlace, place, inQuotes(start.value),
                         isOpen_ ? " stands in the table " : " stands outside of all tables", table_);
    } else {
        Record record{.tags = tags, .name = start.value};
        readRecord(session_, record, rows_);
        checkRecord(session_, record, rows_);
        define(record);
        ++records_;
    }
}

void TableWalk::finish() {
    if (!isOpen_) return;
    session_.out.add(Rule::MissingEndTable, place_, "the table ", table_, " is not closed by ENDTAB");
    close(place_);
}

void TableWalk::close(const Place& place) {
    // Line types ByLayer and ByBlock and the blocks of the model and the paper don't count for everybody.
    const bool hasBuiltIn = session_.atLeast(Version::R13) && (table_ == "LTYPE" || table_ == "BLOCK_RECORD");
    if (isOpen_ && said_ >= 0 && said_ < records_ - (hasBuiltIn ? 2 : 0))
        session_.out.add(Rule::TableCount, place_.at(place_.line), "the table says ", said_,
                         " records, there are ", records_);
    isOpen_ = false;
    table_ = {};
    session_.place = place;
}

void TableWalk::open(std::span<const Tag> tags) {
    table_ = trimmed(valueOf(tags, 2));
    isOpen_ = true;
    records_ = 0;
    Record head{.tags = tags, .name = "TABLE"};
    readRecord(session_, head, rows_);
    handle_ = head.handle;
    session_.place.kind = table_;
    place_ = session_.place;
    session_.model.objects.back().ownerSettled = true;
    if (!session_.atLeast(Version::R13) && head.hasHandle) session_.model.objects.back().handle = head.handle;
    checkValues(session_, tags.subspan(1));
    const size_t index = tableIndex(table_);
    if (valueOf(tags, 2).empty())
        session_.out.add(Rule::SectionName, place_, "a table without a name");
    else if (index == std::size(kTables) || (table_ == "BLOCK_RECORD" && !session_.atLeast(Version::R13)))
        session_.out.add(Rule::UnknownTable, place_, inQuotes(table_), " is no table of ",
                         versionName(session_.version));
    else if (has(table_))
        session_.out.add(Rule::RepeatedTable, place_, "the table ", table_, " stands twice");
    else if (index < orderSeen_)
        session_.out.add(Rule::TableOrder, place_, "the table ", table_, " stands behind ",
                         kTables[orderSeen_].name);
    if (index < std::size(kTables)) {
        seen_.push_back(table_);
        orderSeen_ = std::max(orderSeen_, index);
    }
    checkHead(tags, head);
}

void TableWalk::checkHead(std::span<const Tag> tags, const Record& head) {
    const std::string_view count = valueOf(tags, 70);
    said_ = count.empty() ? -1 : readInteger(count).value_or(-1);
    if (count.empty()) session_.out.add(Rule::MissingGroup, place_, "the table head lacks its flags (70)");
    for (size_t i = 1; i < head.extended; ++i)
        if (tags[i].code == 102 && session_.atLeast(Version::R13))
            i = checkAppGroup(session_, head, i);
        else
            checkHeadTag(tags[i], head);
    checkExtendedData(session_, head);
    if (!session_.atLeast(Version::R13)) return;
    const auto marker = [&](std::string_view name) {
        return std::count_if(tags.begin(), tags.end(),
                             [&](const Tag& tag) { return tag.code == 100 && tag.value == name; });
    };
    if (marker("AcDbSymbolTable") == 0)
        session_.out.add(Rule::NoOwnMarker, place_, "the marker AcDbSymbolTable is missing");
    if (head.hasOwner && head.owner != 0)
        session_.out.addAs(Level::Warning, Rule::WrongOwner, place_, "the owner of a table is 0, not ",
                           handleText(head.owner));
    if (table_ != "DIMSTYLE" || !session_.atLeast(Version::R2000)) return;
    const auto handles =
        std::count_if(tags.begin(), tags.end(), [](const Tag& tag) { return tag.code == 340; });
    const auto said = readInteger(valueOf(tags, 71)).value_or(-1);
    if (marker("AcDbDimStyleTable") == 0)
        session_.out.add(Rule::DimStyleHead, place_, "the marker AcDbDimStyleTable is missing");
    else if (valueOf(tags, 71).empty() && handles == 0)
        session_.out.addAs(Level::Note, Rule::DimStyleHead, place_,
                           "group 71, the number of handles (340), is missing");
    else if (said != handles)
        session_.out.add(Rule::DimStyleHead, place_, "group 71 says ", said, " handles (340), there are ",
                         handles);
}

/// A group that a table head may have: a strict reader refuses any other.
void TableWalk::checkHeadTag(const Tag& tag, const Record& head) {
    const bool markers = session_.atLeast(Version::R13);
    const bool dimStyle = table_ == "DIMSTYLE" && session_.atLeast(Version::R2000);
    switch (tag.code) {
    case 2:
    case 70: return;
    case 5:
    case 330:
        if (markers) return;
        break;
    case 105:
        if (markers && table_ == "DIMSTYLE") return;
        break;
    case 100:
        if (markers && (tag.value == "AcDbSymbolTable" || (dimStyle && tag.value == "AcDbDimStyleTable")))
            return;
        break;
    case 71:
        if (dimStyle) return;
        break;
    case 340:
        if (dimStyle) {
            addPointer(session_, head, tag, Strength::Hard, "DIMSTYLE");
            return;
        }
        break;
    default: break;
    }
    session_.out.add(Rule::TableHead, session_.at(tag), "group ", tag.code,
                     " does not belong into the head of ", table_);
}

void TableWalk::define(const Record& record) {
    const Tag* name = record.find(2);
    const size_t index = tableIndex(table_);
    if (!name || index == std::size(kTables)) return;
    const Names names = kTables[index].names;
    // The style of a shape file has no name.
    const bool shapeFile = names == Names::TextStyle && record.integer(70) & 1;
    if (!(shapeFile && name->value.empty())) {
        checkDefinedName(session_, session_.at(*name), names, name->value);
        if (names != Names::None) defineName(session_, session_.at(*name), names, name->value);
    }
    Object& object = session_.model.objects[record.object];
    if (object.hasOwner && object.owner == handle_ && handle_ != 0) object.ownerSettled = true;
}

void checkLayer(Session& session, const Record& record) {
    if (const Tag* colour = record.find(62)) {
        const auto number = readInteger(colour->value);
        if (number && (*number == 0 || *number < -256 || *number > 256))
            session.out.add(Rule::BadColour, session.at(*colour), "there is no layer colour ",
                            trimmed(colour->value));
    }
    const Tag* plot = record.find(390);
    if (plot && readHandle(plot->value) == uint64_t{0} && session.atLeast(Version::R2000))
        session.out.add(Rule::LostHard, session.at(*plot), "the plot style (390) of a layer may not be 0");
}

void checkLineType(Session& session, const Record& record) {
    double sum = 0;
    for (size_t i = record.body; i < record.extended; ++i)
        if (record.tags[i].code == 49) sum += std::abs(readReal(record.tags[i].value));
    const Tag* length = record.find(40);
    if (length && std::abs(readReal(length->value) - sum) > 1e-4 * std::max(1.0, sum))
        session.out.add(Rule::LinePatternSum, session.at(*length), "the length ", trimmed(length->value),
                        " is not the sum of the dashes");
}

void checkBlockRecord(Session& session, const Record& record) {
    const Tag* name = record.find(2);
    const Tag* layout = record.find(340);
    session.model.blockRecords.push_back({record.object, name ? name->value : std::string_view{},
                                          layout ? handleValue(*layout) : 0, layout != nullptr});
}

} // namespace validate
