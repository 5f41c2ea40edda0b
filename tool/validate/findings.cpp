#include "findings.h"

#include "text.h"

#include <algorithm>

namespace validate {

std::string_view sectionName(Section section) {
    constexpr std::string_view names[] = {"",         "HEADER",  "CLASSES",        "TABLES",   "BLOCKS",
                                          "ENTITIES", "OBJECTS", "THUMBNAILIMAGE", "ACDSDATA", "?"};
    return names[static_cast<size_t>(section)];
}

bool Selection::hasRule(int number) const {
    const auto holds = [number](const std::vector<int>& rules) {
        return std::find(rules.begin(), rules.end(), number) != rules.end();
    };
    return (only.empty() || holds(only)) && !holds(ignored);
}

Findings::Findings(const Selection& selection)
    : limit_(selection.limit), level_(selection.level), wanted_(allRules().size()), met_(allRules().size()),
      counts_(allRules().size()) {
    for (size_t i = 0; i < wanted_.size(); ++i) wanted_[i] = selection.hasRule(allRules()[i].number);
}

bool Findings::count(Level level, Rule rule) {
    const size_t row = indexOf(rule);
    met_[row] = true;
    if (!wanted_[row]) return false;
    ++levels_[static_cast<size_t>(level)];
    if (level < level_) return false;
    const size_t number = ++counts_[row];
    const bool room = limit_ == 0 || number <= limit_;
    truncated_ = truncated_ || !room;
    return room;
}

void Findings::keep(Level level, Rule rule, const Place& place, std::string text) {
    std::string kind =
        inQuotes(place.kind); // as a message shows it: a hostile name can't bring control bytes in
    kept_.push_back({static_cast<int>(rule), level, place.line, 0,
                     place.handle ? handleText(place.handle) : "", std::string(sectionName(place.section)),
                     kind.substr(1, kind.size() - 2), std::move(text)});
}

void Findings::moveTo(Report& report) {
    std::stable_sort(kept_.begin(), kept_.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    report.findings = std::move(kept_);
    report.notes = levels_[0];
    report.warnings = levels_[1];
    report.errors = levels_[2];
    report.truncated = truncated_;
    for (size_t i = 0; i < counts_.size(); ++i)
        if (counts_[i]) report.counts[allRules()[i].number] = counts_[i];
}

} // namespace validate
