// Variables of the HEADER section.

#include "header_variables.h"
#include "mends.h"
#include "text.h"

#include <algorithm>
#include <unordered_set>

namespace repair {

using validate::HeaderVariable;
using validate::trimmed;

namespace {

std::string_view nameOf(const Variable& variable) {
    return trimmed(variable.name.value);
}

std::string_view versionText(Version version) {
    constexpr std::string_view names[] = {"AC1006", "AC1009", "AC1012", "AC1014", "AC1015",
                                          "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};
    return names[static_cast<size_t>(version)];
}

/// The row of the variable for the version, null when it has none; `known` says whether any version has it.
const HeaderVariable* rowOf(const Document& document, std::string_view name, bool& known) {
    known = false;
    for (const HeaderVariable& row : validate::headerVariables()) {
        if (row.name != name) continue;
        known = true;
        if (document.version >= row.since && document.version <= row.until) return &row;
    }
    return nullptr;
}

void dropRepeated(Document& document, Log& log) {
    std::unordered_set<std::string_view> seen;
    std::erase_if(document.header, [&](const Variable& variable) {
        const std::string_view name = nameOf(variable);
        if (name == "$CUSTOMPROPERTYTAG" || name == "$CUSTOMPROPERTY" || seen.insert(name).second)
            return false;
        log.addAt(Rule::VariableTwice, variable.name.line, Section::Header, "the second ", name,
                  " is left out");
        return true;
    });
}

void putVersionFirst(Document& document, Log& log) {
    auto& header = document.header;
    const auto found =
        std::find_if(header.begin(), header.end(), [](const Variable& v) { return nameOf(v) == "$ACADVER"; });
    if (found == header.begin() && found != header.end()) return;
    if (found == header.end()) {
        log.addAt(Rule::NoVersion, 0, Section::Header, "$ACADVER ", versionText(document.version),
                  " is added");
        header.insert(header.begin(), Variable{{9, "$ACADVER"}, {Pair{1, versionText(document.version)}}});
        return;
    }
    log.addAt(Rule::VersionNotFirst, found->name.line, Section::Header, "$ACADVER is put in front");
    std::rotate(header.begin(), found, found + 1);
}

bool isInteger(int code) {
    using validate::ValueType;
    const ValueType type = validate::valueType(code);
    return type == ValueType::I16 || type == ValueType::I32 || type == ValueType::I64 ||
           type == ValueType::Bool;
}

/// Whether the values have the codes of the row, after what can be set right. `change` says what was.
bool fitCodes(Variable& variable, const HeaderVariable& row, std::string& change) {
    auto& values = variable.values;
    std::erase_if(values, [](const Pair& pair) { return pair.code == 999; });
    if (row.dimensions == 3 && values.size() == 2) {
        values.push_back({row.code + 20, "0.0"});
        change = words::tr("gets its third coordinate");
    } else if (row.dimensions == 2 && values.size() == 3) {
        values.pop_back();
        change = words::tr("loses its third coordinate");
    } else if (row.dimensions == 1 && values.size() == 1 && values[0].code != row.code &&
               isInteger(values[0].code) && isInteger(row.code)) {
        values[0].code = row.code;
        change = words::tr("gets its group code");
    }
    if (values.size() != row.dimensions) return false;
    for (size_t i = 0; i < values.size(); ++i)
        if (values[i].code != row.code + static_cast<int>(i) * 10) return false;
    return true;
}

void fitToVersion(Document& document, Log& log) {
    std::erase_if(document.header, [&](Variable& variable) {
        bool known = false;
        const std::string_view name = nameOf(variable);
        const HeaderVariable* row = rowOf(document, name, known);
        if (!known) return false; // perhaps somebody's own
        if (!row) {
            log.addAt(Rule::LaterVariable, variable.name.line, Section::Header, name, ", which ",
                      versionName(document.version), " does not have, is left out");
            return true;
        }
        std::string change;
        const bool fits = fitCodes(variable, *row, change);
        if (!fits || !change.empty())
            log.addAt(Rule::VariableCode, variable.name.line, Section::Header, name, ' ',
                      fits ? std::string_view(change)
                           : words::tr("with other groups than its own is left out"));
        return !fits;
    });
}

} // namespace

void mendHeader(Document& document, Log& log) {
    if (!document.hasHeader && document.atLeast(Version::R13)) {
        log.addAt(Rule::MissingSection, 0, Section::None, "the section HEADER is added");
        document.hasHeader = true;
    }
    if (!document.hasHeader) return;
    dropRepeated(document, log);
    fitToVersion(document, log);
    putVersionFirst(document, log);
}

void mendHandleSeed(Document& document, Log& log) {
    if (!document.hasHeader) return;
    constexpr std::string_view name = "$HANDSEED";
    uint64_t highest = 0;
    document.forEachRecord([&](Record& record, Section) { highest = std::max(highest, record.handle()); });
    Variable* variable = document.variable(name);
    if (!variable && !document.atLeast(Version::R13)) return;
    if (!variable) {
        document.header.push_back(Variable{{9, name}, {document.handlePair(5, highest + 1)}});
        log.addAt(Rule::NoHandleSeed, 0, Section::Header, "$HANDSEED is added");
        return;
    }
    const uint64_t seed =
        variable->values.empty() ? 0 : validate::readHandle(variable->values[0].value).value_or(0);
    if (seed > highest || highest + 1 == 0) return;
    variable->values = {document.handlePair(5, highest + 1)};
    log.addAt(Rule::HandleSeed, variable->name.line, Section::Header, "$HANDSEED becomes ",
              validate::handleText(highest + 1));
}

} // namespace repair
