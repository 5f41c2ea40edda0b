#pragma once
// What the command, the judge of files and the host say to a user, in the language of the run. The sentences
// stand in English where they are used and are the keys of the German tables (german_*.cpp), so that a
// sentence can't be in one language alone: check_words.py walks sources and tables.

#include <array>
#include <concepts>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace words {

/// "de" is German; everything else English. Holds for the whole process.
void choose(std::string_view language);
bool isGerman();

/// The sentence in the language of the run; a sentence without a translation stays English.
std::string_view tr(std::string_view english);

/// Text with `{}` replaced by the pieces in turn, `{0}`, `{1}` … by the piece of that number.
std::string filled(std::string_view pattern, std::span<const std::string> pieces);

inline std::string piece(std::string_view text) {
    return std::string(text);
}
std::string piece(std::integral auto number) {
    return std::to_string(number);
}

/// The sentence in the language of the run with its gaps filled by texts and integers.
template <class... Pieces>
std::string say(std::string_view english, const Pieces&... pieces) {
    return filled(tr(english), std::array<std::string, sizeof...(Pieces)>{piece(pieces)...});
}

/// A finished sentence of others (the system, the host, the reader of the command line) in the language of
/// the run: found by the patterns of the tables, its gaps taken over as they are.
std::string retold(std::string_view english);

/// What the system says of an error number (errno), in the language of the run.
std::string systemWords(int number);

} // namespace words
