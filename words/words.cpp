#include "words.h"

#include "tables.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace words {

/// One for the process, as its locale is: chosen before the first sentence.
static bool& german() {
    static bool chosen = false;
    return chosen;
}

void choose(std::string_view language) {
    german() = language == "de";
}

bool isGerman() {
    return german();
}

static const Row* find(std::span<const Row> rows, std::string_view english) {
    const auto row = std::ranges::lower_bound(rows, english, {}, &Row::english);
    return row != rows.end() && row->english == english ? &*row : nullptr;
}

std::string_view tr(std::string_view english) {
    if (!isGerman()) return english;
    for (const auto rows : {commandRows(), helpRows(), hostRows(), ruleRows(), findingRows(), mendRows()})
        if (const Row* row = find(rows, english)) return row->german;
    return english;
}

/// The number of a gap that starts behind its "{"; the next one where it has none.
static std::size_t gapNumber(std::string_view inside, std::size_t& next) {
    if (inside.empty()) return next++;
    std::size_t number = 0;
    for (const char c : inside) number = number * 10 + static_cast<std::size_t>(c - '0');
    return number;
}

static bool isGap(std::string_view inside) {
    return inside.size() <= 2 && std::ranges::all_of(inside, [](char c) { return c >= '0' && c <= '9'; });
}

std::string filled(std::string_view pattern, std::span<const std::string> pieces) {
    std::string text;
    std::size_t next = 0;
    while (!pattern.empty()) {
        const std::size_t open = std::min(pattern.find('{'), pattern.size());
        text += pattern.substr(0, open);
        pattern.remove_prefix(open);
        const std::size_t close = pattern.find('}');
        if (close == pattern.npos || !isGap(pattern.substr(1, close - 1))) {
            text += pattern.substr(0, 1);
            pattern.remove_prefix(std::min<std::size_t>(1, pattern.size()));
            continue;
        }
        const std::size_t number = gapNumber(pattern.substr(1, close - 1), next);
        if (number < pieces.size()) text += pieces[number];
        pattern.remove_prefix(close + 1);
    }
    return text;
}

/// The pieces that make a sentence of a pattern whose gaps are all "{}"; false where it is another sentence.
static bool unfill(std::string_view pattern, std::string_view text, std::vector<std::string>& pieces) {
    constexpr std::string_view gap = "{}";
    std::size_t open = pattern.find(gap);
    if (open == pattern.npos || !text.starts_with(pattern.substr(0, open))) return false;
    text.remove_prefix(open);
    while (open != pattern.npos) {
        pattern.remove_prefix(open + gap.size());
        open = pattern.find(gap);
        const std::string_view behind = pattern.substr(0, open);
        const bool isLast = open == pattern.npos;
        if (isLast && !text.ends_with(behind)) return false;
        const std::size_t end = isLast ? text.size() - behind.size() : text.find(behind);
        if (end == text.npos) return false;
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end + behind.size());
    }
    return true;
}

std::string retold(std::string_view english) {
    if (const std::string_view whole = tr(english); !isGerman() || whole != english)
        return std::string(whole);
    const Row* longest = nullptr; // it says most
    std::vector<std::string> pieces, found;
    for (const Row& row : hostRows()) {
        pieces.clear();
        const bool isIt = unfill(row.english, english, pieces);
        if (!isIt || (longest && longest->english.size() >= row.english.size())) continue;
        longest = &row;
        found.swap(pieces);
    }
    if (!longest) return std::string(english);
    for (std::string& piece : found) piece = retold(piece);
    return filled(longest->german, found);
}

std::string systemWords(int number) {
    return std::string(tr(std::strerror(number)));
}

} // namespace words
