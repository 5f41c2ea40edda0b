#pragma once
// The groups of a text DXF: a line with the group code, a line with the value. The reader copies nothing;
// values are views into the text.

#include "findings.h"

#include <cstdint>
#include <string_view>

namespace validate {

enum class ValueType : uint8_t { Undefined, String, Real, I16, I32, I64, Bool, Handle, Hex, Comment };

/// Highest group code there is.
constexpr int kLastCode = 1071;

/// Type of the values of a group code in 0 to kLastCode.
ValueType valueType(int code);

struct Tag {
    std::string_view value{}; ///< without the line end, blanks kept
    int32_t code = 0;
    uint32_t line = 0; ///< of the code, from 1
};

/// Reads tag by tag. A line that is no group code is told as a finding; then the reader looks whether codes
/// and values are out of step by one line and goes on where they fit.
class TagReader {
public:
    TagReader(std::string_view text, Findings& findings) : text_(text), findings_(findings) {}

    /// The next group with a code in 0 to kLastCode; false at the end of the text.
    bool next(Tag& tag);

    /// Whether something other than blanks and line ends is left.
    bool hasMore();

    uint32_t line() const { return line_; }

private:
    std::string_view takeLine();
    void resynchronise();
    int codesFrom(size_t position) const;

    std::string_view text_;
    Findings& findings_;
    size_t position_ = 0;
    size_t nextText_ = 0; ///< known place of something that is not blank
    uint32_t line_ = 1;   ///< of position_
};

} // namespace validate
