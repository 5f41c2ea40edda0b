// Names that records use and nothing defines: the layer, style or block is made, with plain values.

#include "header_variables.h"
#include "mends.h"
#include "new_records.h"
#include "record_groups.h"
#include "text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <unordered_set>

namespace repair {

using validate::Names;
using validate::sameName;
using validate::upperCase;

namespace {

struct TableOf {
    Names names;
    Rule rule;
    std::string_view table;
    const char* what;
    std::string_view builtIn; ///< up to R12 known without a record, divided by '|'
};
constexpr TableOf kTables[] = {
    {Names::Layer, Rule::UnknownLayer, "LAYER", "layer", "0"},
    {Names::LineType, Rule::UnknownLineType, "LTYPE", "line type", "CONTINUOUS|BYLAYER|BYBLOCK"},
    {Names::TextStyle, Rule::UnknownTextStyle, "STYLE", "text style", "STANDARD"},
    {Names::DimStyle, Rule::UnknownDimStyle, "DIMSTYLE", "dimension style", "STANDARD"},
    {Names::App, Rule::UnknownApp, "APPID", "application name", "ACAD"},
};

/// Names as files up to R14 may have them, or as later ones may.
bool isSound(const Document& document, std::string_view name, Names names) {
    const bool isLong = document.atLeast(Version::R2000);
    if (name.empty() || name != validate::trimmed(name)) return false;
    if (names == Names::App) return true;
    if (name.size() > (isLong ? 255U : 31U)) return false;
    const auto fits = [&](char c) {
        if (isLong)
            return static_cast<unsigned char>(c) >= 0x20 &&
                   std::string_view("<>/\\\":;?*,=`").find(c) == std::string_view::npos;
        return std::isalnum(static_cast<unsigned char>(c)) || c == '$' || c == '-' || c == '_' || c == '|';
    };
    if (name.front() == '*') name.remove_prefix(1); // a system's own
    return std::all_of(name.begin(), name.end(), fits);
}

/// Letters beyond ASCII are not compared without regard to case, so such a name may be there after all.
bool isAscii(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

class NameMend {
public:
    NameMend(Document& document, Log& log) : document_(document), log_(log) {}

    void run() {
        for (const TableOf& row : kTables)
            if (const Table* table = document_.table(row.table))
                for (const Record& record : table->records)
                    known(row.names).insert(upperCase(record.text(2)));
        for (const Block& block : document_.blocks) known(Names::Block).insert(upperCase(block.name()));
        document_.forEachRecord([&](Record& record, Section section) { lookAt(record, section); });
        for (const Use& use : missing_) define(use);
        lookAtHeader();
    }

private:
    struct Use {
        Names names;
        std::string_view name;
        Rule rule;
        uint32_t line;
        Section section;
    };

    std::unordered_set<std::string>& known(Names names) { return known_[static_cast<size_t>(names)]; }

    void use(Names names, std::string_view name, Rule rule, uint32_t line, Section section) {
        if (names == Names::LineType && (sameName(name, "BYLAYER") || sameName(name, "BYBLOCK"))) return;
        if (known(names).count(upperCase(name)) || !isAscii(name) || !isSound(document_, name, names)) return;
        for (const TableOf& row : kTables)
            if (row.names == names && !document_.atLeast(Version::R13) &&
                validate::inList(row.builtIn, upperCase(name)))
                return;
        known(names).insert(upperCase(name));
        missing_.push_back({names, name, rule, line, section});
    }

    static Rule ruleOf(Names names) {
        for (const TableOf& row : kTables)
            if (row.names == names) return row.rule;
        return Rule::UnknownBlock;
    }

    static bool hasTable(Names names) {
        return names == Names::Block || std::any_of(std::begin(kTables), std::end(kTables),
                                                    [&](const TableOf& row) { return row.names == names; });
    }

    void lookAt(Record& record, Section section) {
        forEachGroup(record, [&](const GroupAt& at) {
            if (!at.group || !hasTable(at.group->names)) return;
            const Pair& pair = record.pairs[at.index];
            use(at.group->names, pair.value, ruleOf(at.group->names), pair.line, section);
        });
        for (size_t i = record.extendedStart(); i < record.pairs.size(); ++i) {
            const Pair& pair = record.pairs[i];
            if (pair.code == 1001) use(Names::App, pair.value, Rule::UnknownApp, pair.line, section);
            if (pair.code == 1003) use(Names::Layer, pair.value, Rule::UnknownLayer, pair.line, section);
        }
        if (record.kind() == "ACAD_TABLE") lookAtTable(record, section);
        if (record.kind() == "DIMENSION") lookAtDimension(record, section);
    }

    void lookAtTable(const Record& record, Section section) {
        const Pair* block = record.find(2);
        if (block) use(Names::Block, block->value, Rule::TableBlock, block->line, section);
    }

    /// Programs draw the picture of a dimension again when it names none.
    void lookAtDimension(Record& record, Section section) {
        const Pair* block = record.find(2);
        if (!block || block->value.empty() || known(Names::Block).count(upperCase(block->value)) ||
            !isAscii(block->value))
            return;
        log_.add(Rule::DimensionBlock, record, section, "the name of the lost block ", inQuotes(block->value),
                 " is left out");
        record.erase(static_cast<size_t>(block - record.pairs.data()));
    }

    void define(const Use& use) {
        if (use.names == Names::Block) {
            uint64_t owner = 0;
            if (Table* records =
                    document_.atLeast(Version::R13) ? document_.table("BLOCK_RECORD") : nullptr) {
                records->records.push_back(newTableRecord(document_, *records, use.name));
                owner = records->records.back().handle();
            }
            document_.hasBlocks = true;
            document_.blocks.push_back(newBlock(document_, use.name, owner));
            log_.addAt(use.rule, use.line, use.section, "the block ", inQuotes(use.name), " is added, empty");
            return;
        }
        const auto row = std::find_if(std::begin(kTables), std::end(kTables),
                                      [&](const TableOf& r) { return r.names == use.names; });
        Table& table = tableOf(row->table);
        table.records.push_back(newTableRecord(document_, table, use.name));
        log_.addAt(use.rule, use.line, use.section, "the ", row->what, ' ', inQuotes(use.name), " is added");
    }

    /// Up to R12 a table may be missing.
    Table& tableOf(std::string_view name) {
        if (Table* table = document_.table(name)) return *table;
        document_.hasTables = true;
        constexpr std::string_view order = "VPORT LTYPE LAYER STYLE VIEW UCS APPID DIMSTYLE";
        auto at = document_.tables.begin();
        while (at != document_.tables.end() && order.find(at->name()) < order.find(name)) ++at;
        return *document_.tables.insert(at, newTable(document_, name));
    }

    void lookAtHeader() {
        missing_.clear();
        for (const Variable& variable : document_.header) {
            const auto rows = validate::headerVariables();
            const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) {
                return r.name == validate::trimmed(variable.name.value);
            });
            if (row == rows.end() || row->names == Names::Block || !hasTable(row->names) ||
                variable.values.empty())
                continue;
            if (!variable.values[0].value.empty())
                use(row->names, variable.values[0].value, Rule::VariableName, variable.name.line,
                    Section::Header);
        }
        for (const Use& use : missing_) define(use);
    }

    Document& document_;
    Log& log_;
    std::array<std::unordered_set<std::string>, validate::kNameTables> known_{};
    std::vector<Use> missing_{};
};

} // namespace

void mendNames(Document& document, Log& log) {
    NameMend(document, log).run();
}

} // namespace repair
