#pragma once
// What was mended, finding by finding, by the numbers of the rules.

#include "document.h"
#include "text.h"

namespace repair {

using validate::inQuotes;
using validate::Rule;
using validate::Section;
using validate::Version;

class Log {
public:
    explicit Log(size_t limit) : findings_(validate::Selection{.limit = limit}) {}

    /// A mend of one record. The text is the concatenation of the pieces: strings and integers.
    template <typename... Pieces>
    void add(Rule rule, const Record& record, Section section, const Pieces&... pieces) {
        findings_.add(rule, {record.line(), record.handle(), record.kind(), section}, pieces...);
    }
    /// A mend at a line of the file, 0 for the file as a whole.
    template <typename... Pieces>
    void addAt(Rule rule, size_t line, Section section, const Pieces&... pieces) {
        findings_.add(rule, {line, 0, {}, section}, pieces...);
    }
    validate::Findings& findings() { return findings_; }

private:
    validate::Findings findings_;
};

} // namespace repair
