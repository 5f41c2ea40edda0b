#include "suggest.h"

#include "words.h"

#include <algorithm>

namespace tool {

/// Changes that turn one word into the other: a letter more, less, other, or two neighbours exchanged.
static std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) cost[i][0] = i;
    for (std::size_t j = 0; j <= b.size(); ++j) cost[0][j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = cost[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
        }
    }
    return cost[a.size()][b.size()];
}

std::string nearestWord(const std::string& word, const std::vector<std::string>& known) {
    constexpr std::size_t longest = 64; // no slip of a finger is longer
    if (word.size() > longest) return {};
    std::string nearest;
    std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1;
    for (const std::string& candidate : known) {
        const std::size_t changes = distance(word, candidate);
        if (changes >= least) continue;
        least = changes;
        nearest = candidate;
    }
    return nearest;
}

std::string didYouMean(const std::string& word, const std::vector<std::string>& known) {
    const std::string nearest = nearestWord(word, known);
    return nearest.empty() ? "" : words::say(", did you mean {}?", nearest);
}

} // namespace tool
