#pragma once
// Collects findings: keeps the first of each rule in full and counts the rest, so that a thoroughly broken
// file costs neither memory nor the reader's patience.

#include "rules.h"
#include "words.h"

#include <concepts>
#include <vector>

namespace validate {

enum class Section : uint8_t {
    None,
    Header,
    Classes,
    Tables,
    Blocks,
    Entities,
    Objects,
    Thumbnail,
    Data,
    Unknown
};

std::string_view sectionName(Section section);

/// Where a finding is. The kind must outlive the collector: it lies in the file's text or in a constant.
struct Place {
    size_t line = 0;
    uint64_t handle = 0; ///< 0: none
    std::string_view kind{};
    Section section = Section::None;

    Place at(size_t newLine) const {
        Place place = *this;
        place.line = newLine;
        return place;
    }
};

class Findings {
public:
    explicit Findings(const Selection& selection);

    /// Adds a finding of the rule's own level. The text is the concatenation of the pieces: strings and
    /// integers.
    template <typename... Pieces>
    void add(Rule rule, const Place& place, const Pieces&... pieces) {
        addAs(levelOf(rule), rule, place, pieces...);
    }

    /// Adds a finding of a milder level than the rule's.
    template <typename... Pieces>
    void addAs(Level level, Rule rule, const Place& place, const Pieces&... pieces) {
        if (!count(level, rule)) return;
        std::string text;
        (append(text, pieces), ...);
        keep(level, rule, place, std::move(text));
    }

    /// Whether the rule was broken, asked for or not.
    bool has(Rule rule) const { return met_[indexOf(rule)]; }

    /// Hands the findings over, in the order of lines.
    void moveTo(Report& report);

private:
    /// Text of the file, or of a constant that stays as it is.
    static void append(std::string& text, std::string_view piece) { text += piece; }
    /// A piece of a sentence.
    static void append(std::string& text, const char* piece) { text += words::tr(piece); }
    static void append(std::string& text, char piece) { text += piece; }
    static void append(std::string& text, std::integral auto piece) { text += std::to_string(piece); }

    bool count(Level level, Rule rule);
    void keep(Level level, Rule rule, const Place& place, std::string text);

    size_t limit_;
    Level level_;
    std::vector<bool> wanted_, met_; ///< by row of the rule, as counts_
    std::vector<size_t> counts_;     ///< of the findings that are grave enough
    size_t levels_[3] = {};
    bool truncated_ = false;
    std::vector<Finding> kept_;
};

} // namespace validate
