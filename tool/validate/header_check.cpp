// The HEADER section: variables, their codes and versions, what they name.

#include "header_variables.h"
#include "section_walks.h"
#include "text.h"
#include "value_checks.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace validate {

namespace {

/// One variable with its values.
struct Variable {
    std::string_view name;
    std::span<const Tag> values;
    uint32_t line = 0;
};

/// Calls `use` for each variable of the section.
template <typename Use>
void forEachVariable(std::span<const Tag> tags, Use use) {
    for (size_t i = 0; i < tags.size();) {
        if (tags[i].code != 9) {
            ++i;
            continue;
        }
        size_t end = i + 1;
        while (end < tags.size() && tags[end].code != 9) ++end;
        use(Variable{trimmed(tags[i].value), tags.subspan(i + 1, end - i - 1), tags[i].line});
        i = end;
    }
}

std::unordered_map<std::string_view, size_t> indexVariables() {
    std::unordered_map<std::string_view, size_t> index;
    for (size_t i = 0; i < headerVariables().size(); ++i) index.try_emplace(headerVariables()[i].name, i);
    return index;
}

/// The rows of a variable, none when it is unknown.
std::span<const HeaderVariable> rowsOf(std::string_view name) {
    static const auto index = indexVariables();
    const auto found = index.find(name);
    if (found == index.end()) return {};
    const auto rest = headerVariables().subspan(found->second);
    const auto end =
        std::find_if(rest.begin(), rest.end(), [&](const auto& row) { return row.name != name; });
    return {rest.begin(), end};
}

bool isActive(const Session& session, const HeaderVariable& row) {
    return session.version >= row.since && session.version <= row.until;
}

void checkShape(Session& session, const Variable& variable, const HeaderVariable& row) {
    const auto codeAt = [&](size_t i) { return i < variable.values.size() ? variable.values[i].code : -1; };
    size_t fitting = 0;
    while (fitting < row.dimensions && codeAt(fitting) == row.code + static_cast<int>(fitting) * 10)
        ++fitting;
    const bool thirdMissing = row.dimensions == 3 && fitting == 2 && variable.values.size() == 2;
    const bool thirdTooMany =
        row.dimensions == 2 && fitting == 2 && variable.values.size() == 3 && codeAt(2) == row.code + 20;
    if (thirdMissing && session.version == Version::Old) return;
    if (thirdMissing || thirdTooMany)
        session.out.addAs(session.atLeast(Version::R13) ? Level::Warning : Level::Note, Rule::VariableCode,
                          session.place, variable.name, thirdMissing ? " has no" : " has a",
                          " third coordinate");
    else if (variable.values.empty())
        session.out.add(Rule::VariableCode, session.place, variable.name, " has no value");
    else if (fitting < row.dimensions || variable.values.size() > row.dimensions)
        session.out.add(Rule::VariableCode, session.place, variable.name, " has group ",
                        codeAt(std::min(fitting, variable.values.size() - 1)), ", its code is ", row.code);
}

void checkVariable(Session& session, const Variable& variable) {
    const auto rows = rowsOf(variable.name);
    if (rows.empty()) {
        session.out.add(Rule::UnknownVariable, session.place, "the variable ", inQuotes(variable.name),
                        " is not known");
        return;
    }
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return isActive(session, r); });
    if (row != rows.end()) {
        checkShape(session, variable, *row);
    } else {
        // Readers of before R13 skip what they don't know; the oldest files have variables of their own.
        const bool later = session.version < rows.front().since;
        session.out.add(Rule::LaterVariable, session.place, variable.name,
                        later ? " came with " : " ended with ",
                        versionName(later ? rows.front().since : rows.back().until));
    }
}

void takeSettings(Session& session, const Variable& variable) {
    const Tag& value = variable.values.front();
    if (variable.name == "$HANDSEED") {
        session.hasHandleSeed = true;
        session.handleSeed = handleValue(value);
    } else if (variable.name == "$EXTNAMES") {
        session.longNames = readInteger(value.value).value_or(1) != 0;
    } else if (variable.name == "$DWGCODEPAGE") {
        session.page = findCodePage(value.value);
        if (!session.page && !session.atLeast(Version::R2007))
            session.out.add(Rule::UnknownCodePage, session.place, "the code page ", inQuotes(value.value),
                            " is not known");
    }
}

bool isZeroAxis(const Variable& variable) {
    constexpr std::string_view axes[] = {"$UCSXDIR", "$UCSYDIR", "$PUCSXDIR", "$PUCSYDIR"};
    if (std::find(std::begin(axes), std::end(axes), variable.name) == std::end(axes)) return false;
    return std::all_of(variable.values.begin(), variable.values.end(),
                       [](const Tag& tag) { return isPlainReal(tag.value) && readReal(tag.value) == 0; });
}

/// Arrows that programs draw without a block of that name.
bool isBuiltInArrow(std::string_view name) {
    constexpr std::string_view arrows[] = {
        "DOT",         "DOTSMALL",    "DOTBLANK",   "ORIGIN",   "ORIGIN2",  "OPEN",      "OPEN90",
        "OPEN30",      "CLOSED",      "SMALL",      "NONE",     "OBLIQUE",  "BOXFILLED", "BOXBLANK",
        "CLOSEDBLANK", "DATUMFILLED", "DATUMBLANK", "INTEGRAL", "ARCHTICK", "."};
    if (!name.empty() && name.front() == '_') name.remove_prefix(1);
    return std::any_of(std::begin(arrows), std::end(arrows),
                       [&](std::string_view a) { return sameName(a, name); });
}

bool isNamed(const Session& session, Names table, std::string_view name) {
    if (name.empty()) return true;
    if (table == Names::LineType && (sameName(name, "BYLAYER") || sameName(name, "BYBLOCK"))) return true;
    if (table == Names::Block && isBuiltInArrow(name)) return true;
    return session.model.names[static_cast<size_t>(table)].isDefined(name);
}

} // namespace

void checkHeader(Session& session, std::span<const Tag> tags) {
    std::unordered_set<std::string_view> seen;
    forEachVariable(tags, [&](const Variable& variable) {
        session.place = {variable.line, 0, variable.name, Section::Header};
        checkValues(session, variable.values);
        const bool repeats = variable.name == "$CUSTOMPROPERTYTAG" || variable.name == "$CUSTOMPROPERTY";
        if (!seen.insert(variable.name).second && !repeats)
            session.out.add(Rule::VariableTwice, session.place, variable.name, " stands twice");
        if (variable.name == "$ACADVER" && seen.size() > 1)
            session.out.add(Rule::VersionNotFirst, session.place, "$ACADVER is not the first variable");
        checkVariable(session, variable);
        if (!variable.values.empty()) takeSettings(session, variable);
        if (!variable.values.empty() && isZeroAxis(variable))
            session.out.add(Rule::ZeroVector, session.place, variable.name, " has no length");
    });
    session.place = {tags.front().line, 0, {}, Section::Header};
    if (session.versionText.empty())
        session.out.add(Rule::NoVersion, session.place, "$ACADVER is missing, the file counts as R12");
    if (!session.hasHandleSeed && session.atLeast(Version::R13))
        session.out.add(Rule::NoHandleSeed, session.place, "$HANDSEED is missing");
}

void checkHeaderReferences(Session& session, std::span<const Tag> tags) {
    forEachVariable(tags, [&](const Variable& variable) {
        const auto rows = rowsOf(variable.name);
        if (rows.empty() || variable.values.empty()) return;
        const Tag& value = variable.values.front();
        const Place place{variable.line, 0, variable.name, Section::Header};
        const Names names = rows.front().names;
        if (names != Names::None && !isNamed(session, names, value.value))
            session.out.addAs(session.atLeast(Version::R13) && names != Names::Block ? Level::Warning
                                                                                     : Level::Note,
                              Rule::VariableName, place, variable.name, " names ", inQuotes(value.value),
                              ", which is not defined");
        if (value.code >= 340 && valueType(value.code) == ValueType::Handle && handleValue(value) != 0 &&
            session.model.find(handleValue(value)) == kNone)
            session.out.add(Rule::VariableHandle, place, variable.name, " points at ", trimmed(value.value),
                            ", which does not exist");
    });
}

} // namespace validate
