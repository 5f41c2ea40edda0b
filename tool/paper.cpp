#include "paper.h"

#include <charconv>
#include <cmath>
#include <string_view>
#include <tuple>
#include <utility>

namespace tool {

/// A positive number that is all of the text.
static std::optional<double> positive(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return std::isfinite(value) && value > 0 ? std::optional(value) : std::nullopt;
}

/// Two positive numbers with a sign between them.
static std::optional<std::pair<double, double>> two(std::string_view text, std::string_view signs) {
    const std::size_t at = text.find_first_of(signs);
    if (at == std::string_view::npos) return {};
    const auto first = positive(text.substr(0, at)), second = positive(text.substr(at + 1));
    if (!first || !second) return {};
    return std::pair(*first, *second);
}

std::optional<host::Paper> paperFromWord(const std::string& word) {
    static constexpr std::pair<double, double> formats[] = {{841, 1189}, {594, 841}, {420, 594},
                                                            {297, 420},  {210, 297}, {148, 210}};
    constexpr double largest = 20'000;
    host::Paper paper;
    if (word.size() == 2 && (word[0] == 'A' || word[0] == 'a') && word[1] >= '0' && word[1] <= '5') {
        std::tie(paper.width, paper.height) = formats[word[1] - '0'];
        return paper;
    }
    const auto sides = two(word, "xX");
    if (!sides || sides->first > largest || sides->second > largest) return {};
    std::tie(paper.width, paper.height) = *sides;
    return paper;
}

std::optional<double> scaleFromWord(const std::string& word) {
    if (word == "fit") return 0;
    const auto sides = two(word, ":");
    return sides ? std::optional(sides->first / sides->second) : std::nullopt;
}

host::Paper paperOf(const Options& options) {
    host::Paper paper = paperFromWord(options.paper).value_or(host::Paper{});
    if (options.landscape && paper.width < paper.height) std::swap(paper.width, paper.height);
    paper.scale = scaleFromWord(options.scale).value_or(0);
    paper.margin = options.margin;
    return paper;
}

} // namespace tool
