// Words that a user may have meant.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// The known word nearest to `word`, if it is near enough to be meant by a slip; else empty.
std::string nearestWord(const std::string& word, const std::vector<std::string>& known);

/// ", did you mean info?" for the nearest known word, or nothing.
std::string didYouMean(const std::string& word, const std::vector<std::string>& known);

} // namespace tool
