// Names that are used and defined, blocks and their records.

#include "reference_checks.h"
#include "text.h"
#include "value_checks.h"

#include <algorithm>
#include <unordered_set>

namespace validate {

namespace {

struct TableRule {
    Names table;
    Rule rule;
    const char* what;
    std::string_view builtIn; ///< divided by '|': names that programs up to R12 know without a table
};

constexpr TableRule kRules[] = {
    {Names::Layer, Rule::UnknownLayer, "layer", "0"},
    {Names::LineType, Rule::UnknownLineType, "line type", "CONTINUOUS|BYLAYER|BYBLOCK"},
    {Names::TextStyle, Rule::UnknownTextStyle, "text style", "STANDARD"},
    {Names::DimStyle, Rule::UnknownDimStyle, "dimension style", "STANDARD"},
    {Names::Block, Rule::UnknownBlock, "block", ""},
    {Names::App, Rule::UnknownApp, "application name", "ACAD"},
};

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void checkUses(Session& session, const TableRule& row) {
    const bool old = !session.atLeast(Version::R13);
    const Level usual = row.rule == Rule::UnknownBlock ? Level::Error
                        : old                          ? Level::Warning
                                                       : levelOf(row.rule);
    for (const NameEntry& entry : session.model.table(row.table).entries) {
        if (entry.defined.line != 0 || entry.uses == 0) continue;
        if (old && inList(row.builtIn, upperCase(entry.shown))) continue;
        // Up to R12, readers make up what is missing, except blocks. Case beyond ASCII is not compared.
        const Level level = isAscii(entry.shown) ? usual : Level::Note;
        session.out.addAs(level, row.rule, entry.used, "the ", row.what, ' ', inQuotes(entry.shown),
                          " is not defined, used ", entry.uses, entry.uses == 1 ? " time" : " times");
    }
}

struct NeededRecord {
    Names table;
    std::string_view name;
    const char* what;
    Version since;
};

constexpr NeededRecord kNeeded[] = {
    {Names::LineType, "CONTINUOUS", "line type Continuous", Version::R13},
    {Names::LineType, "BYLAYER", "line type ByLayer", Version::R13},
    {Names::LineType, "BYBLOCK", "line type ByBlock", Version::R13},
    {Names::Layer, "0", "layer 0", Version::R13},
    {Names::TextStyle, "STANDARD", "text style Standard", Version::R13},
    {Names::App, "ACAD", "application name ACAD", Version::R13},
};

void checkNeeded(Session& session) {
    for (const NeededRecord& needed : kNeeded)
        if (session.atLeast(needed.since) && !session.model.table(needed.table).isDefined(needed.name))
            session.out.add(Rule::MissingRecord, {0, 0, {}, Section::Tables}, "the ", needed.what,
                            " is missing");
    if (!session.atLeast(Version::R13)) return;
    const auto& styles = session.model.table(Names::DimStyle).entries;
    if (std::none_of(styles.begin(), styles.end(), [](const NameEntry& e) { return e.defined.line != 0; }))
        session.out.add(Rule::MissingRecord, {0, 0, {}, Section::Tables}, "there is no dimension style");
    if (!session.model.table(Names::Viewport).isDefined("*ACTIVE"))
        session.out.addAs(Level::Note, Rule::MissingRecord, {0, 0, {}, Section::Tables},
                          "the view *Active (VPORT) is missing");
}

// --- blocks

void checkBlockRecords(Session& session) {
    const Model& model = session.model;
    std::unordered_set<std::string> blocks;
    std::unordered_map<std::string, uint64_t> records;
    for (const Block& block : model.blocks) blocks.insert(upperCase(block.name));
    for (const BlockRecord& record : model.blockRecords) {
        const Place place = model.placeOf(record.object);
        if (!records.emplace(upperCase(record.name), place.handle).second)
            session.out.add(Rule::RepeatedName, place, "the name ", inQuotes(record.name),
                            " is defined twice");
        else if (!blocks.count(upperCase(record.name)))
            session.out.add(Rule::RecordNoBlock, place, "there is no BLOCK ", inQuotes(record.name));
    }
    for (const Block& block : model.blocks) {
        const auto record = records.find(upperCase(block.name));
        const Object& object = model.objects[block.object];
        if (record == records.end())
            session.out.add(Rule::BlockNoRecord, model.placeOf(block.object), "there is no BLOCK_RECORD ",
                            inQuotes(block.name));
        else if (object.hasOwner && object.owner != record->second && session.atLeast(Version::R2000))
            session.out.add(Rule::WrongOwner, model.placeOf(block.object), "the owner ",
                            handleText(object.owner), " is not the BLOCK_RECORD ", handleText(record->second),
                            " of this name");
    }
    for (std::string_view name : {"*MODEL_SPACE", "*PAPER_SPACE"})
        if (!records.count(std::string(name)) && !blocks.count(std::string(name)))
            session.out.add(Rule::MissingRecord, {0, 0, {}, Section::Tables}, "the block ", name,
                            " is missing");
}

bool isLayoutBlock(std::string_view name) {
    const std::string upper = upperCase(name);
    return upper == "*MODEL_SPACE" || upper.rfind("*PAPER_SPACE", 0) == 0;
}

/// A layout and the record of its block point at each other.
void checkLayoutBlocks(Session& session) {
    const Model& model = session.model;
    std::unordered_map<uint64_t, const Layout*> layouts;
    std::unordered_set<uint64_t> recordHandles;
    for (const Layout& layout : model.layouts) layouts.emplace(model.objects[layout.object].handle, &layout);
    for (const BlockRecord& record : model.blockRecords) {
        const uint64_t handle = model.objects[record.object].handle;
        recordHandles.insert(handle);
        const auto found = layouts.find(record.layout);
        const Place place = model.placeOf(record.object);
        if (found != layouts.end() && found->second->blockRecord != handle)
            session.out.add(Rule::LayoutNoBlock, place, "the layout ", inQuotes(found->second->name),
                            " does not point back at this block");
        else if (record.layout == 0 && isLayoutBlock(record.name))
            // Readers make layouts up when there are none at all.
            session.out.addAs(layouts.empty() ? Level::Note : Level::Warning, Rule::LayoutNoBlock, place,
                              "the block ", inQuotes(record.name), " has no layout (340)");
    }
    for (const Layout& layout : model.layouts)
        if (!recordHandles.count(layout.blockRecord))
            session.out.add(Rule::LayoutNoBlock, model.placeOf(layout.object), "the layout ",
                            inQuotes(layout.name), " has no block (330)");
}

/// Finds rings in the graph of who inserts whom, without recursion.
class RingSearch {
public:
    explicit RingSearch(Session& session) : session_(session), edges_(session.model.inserts) {
        std::sort(edges_.begin(), edges_.end());
        state_.resize(session.model.table(Names::Block).entries.size(), State::New);
    }

    void run() {
        for (const auto& edge : edges_)
            if (state_[edge.first] == State::New) walk(edge.first);
    }

private:
    enum class State : uint8_t { New, Open, Done };
    struct Step {
        uint32_t block;
        size_t next; ///< edge to follow next
    };

    size_t firstEdge(uint32_t block) const {
        return static_cast<size_t>(
            std::lower_bound(edges_.begin(), edges_.end(), std::pair<uint32_t, uint32_t>{block, 0}) -
            edges_.begin());
    }

    void walk(uint32_t start) {
        std::vector<Step> path{{start, firstEdge(start)}};
        state_[start] = State::Open;
        while (!path.empty()) {
            Step& step = path.back();
            if (step.next == edges_.size() || edges_[step.next].first != step.block) {
                state_[step.block] = State::Done;
                path.pop_back();
                continue;
            }
            const uint32_t inserted = edges_[step.next++].second;
            if (state_[inserted] == State::Open)
                report(inserted);
            else if (state_[inserted] == State::New) {
                state_[inserted] = State::Open;
                path.push_back({inserted, firstEdge(inserted)});
            }
        }
    }

    void report(uint32_t block) {
        const NameEntry& entry = session_.model.table(Names::Block).entries[block];
        session_.out.add(Rule::BlockRing, entry.defined, "the block ", inQuotes(entry.shown),
                         " inserts itself, directly or through others");
    }

    Session& session_;
    std::vector<std::pair<uint32_t, uint32_t>>& edges_;
    std::vector<State> state_;
};

} // namespace

void checkNames(Session& session) {
    for (const TableRule& row : kRules) checkUses(session, row);
    checkNeeded(session);
}

void checkBlocks(Session& session) {
    const NameTable& blocks = session.model.table(Names::Block);
    for (const BlockUse& use : session.model.blockUses)
        if (!blocks.isDefined(use.name))
            session.out.addAs(session.atLeast(Version::R13) ? Level::Error : Level::Warning, use.rule,
                              use.place, "the block ", inQuotes(use.name), " is not defined");
    if (session.atLeast(Version::R13)) checkBlockRecords(session);
    if (session.atLeast(Version::R2000)) checkLayoutBlocks(session);
    RingSearch(session).run();
}

} // namespace validate
