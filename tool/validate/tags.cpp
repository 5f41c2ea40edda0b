#include "tags.h"

#include "text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace validate {

namespace {

struct Range {
    int first, last;
    ValueType type;
};

using enum ValueType;

constexpr Range kRanges[] = {
    {0, 4, String},       {5, 5, Handle},       {6, 9, String},      {10, 59, Real},       {60, 79, I16},
    {90, 99, I32},        {100, 102, String},   {105, 105, Handle},  {110, 149, Real},     {160, 169, I64},
    {170, 179, I16},      {210, 239, Real},     {270, 289, I16},     {290, 299, Bool},     {300, 309, String},
    {310, 319, Hex},      {320, 369, Handle},   {370, 389, I16},     {390, 399, Handle},   {400, 409, I16},
    {410, 419, String},   {420, 429, I32},      {430, 439, String},  {440, 459, I32},      {460, 469, Real},
    {470, 479, String},   {480, 481, Handle},   {999, 999, Comment}, {1000, 1003, String}, {1004, 1004, Hex},
    {1005, 1005, Handle}, {1006, 1009, String}, {1010, 1059, Real},  {1060, 1070, I16},    {1071, 1071, I32},
};

constexpr std::array<ValueType, kLastCode + 1> kTypes = [] {
    std::array<ValueType, kLastCode + 1> types{};
    for (const Range& range : kRanges)
        for (int code = range.first; code <= range.last; ++code)
            types[static_cast<size_t>(code)] = range.type;
    return types;
}();

/// The number on a code line; any number beyond the codes comes back as -1 or kLastCode + 1.
std::optional<int> readCode(std::string_view line) {
    const char* p = line.data();
    const char* const end = p + line.size();
    while (p < end && isBlank(*p)) ++p;
    if (p < end && isDigit(*p)) { // the usual case, without a detour
        int code = 0;
        while (p < end && isDigit(*p) && code <= kLastCode) code = code * 10 + (*p++ - '0');
        if (p == end) return code;
    }
    const auto number = readInteger(line);
    if (!number) return std::nullopt;
    return *number < 0 ? -1 : *number > kLastCode ? kLastCode + 1 : static_cast<int>(*number);
}

std::string_view lineAt(std::string_view text, size_t position, size_t& next) {
    const char* const start = text.data() + position;
    const size_t left = text.size() - position;
    const auto* const end = static_cast<const char*>(left ? std::memchr(start, '\n', left) : nullptr);
    size_t length = end ? static_cast<size_t>(end - start) : left;
    next = position + length + (end ? 1 : 0);
    if (length && start[length - 1] == '\r') --length;
    return {start, length};
}

} // namespace

ValueType valueType(int code) {
    return kTypes[static_cast<size_t>(code)];
}

std::string_view TagReader::takeLine() {
    ++line_;
    return lineAt(text_, position_, position_);
}

bool TagReader::hasMore() {
    if (nextText_ < position_ || position_ == 0)
        nextText_ = std::min(text_.find_first_not_of(" \t\r\n\x1A", position_), text_.size());
    return nextText_ < text_.size();
}

bool TagReader::next(Tag& tag) {
    while (position_ < text_.size()) {
        const uint32_t line = line_;
        const size_t start = position_;
        const std::string_view codeLine = takeLine();
        const auto code = readCode(codeLine);
        if (!code) {
            position_ = start;
            line_ = line;
            if (!hasMore()) break;
            takeLine();
            findings_.add(Rule::BadCode, {line}, "group code expected, not ", inQuotes(codeLine));
            resynchronise();
            continue;
        }
        if (position_ >= text_.size()) {
            findings_.add(Rule::HalfPair, {line}, "group code ", *code, " is the last line and has no value");
            break;
        }
        const size_t behindCode = position_;
        tag = {takeLine(), *code, line};
        if (*code >= 0 && *code <= kLastCode) return true;
        findings_.add(Rule::CodeRange, {line}, "group code ", inQuotes(trimmed(codeLine)),
                      " is outside of 0 to ", kLastCode);
        position_ = behindCode;
        line_ = line + 1;
        resynchronise();
    }
    position_ = text_.size();
    return false;
}

/// Behind a line that is no code: either that code alone is bad, then its value follows; or a line is missing
/// or too many, then the next line is a code.
void TagReader::resynchronise() {
    size_t behindValue = 0;
    lineAt(text_, position_, behindValue);
    if (codesFrom(behindValue) >= codesFrom(position_)) takeLine();
}

/// How many of the next groups from here have a sound code.
int TagReader::codesFrom(size_t position) const {
    int sound = 0;
    for (int i = 0; i < 6 && position < text_.size(); ++i) {
        const auto code = readCode(lineAt(text_, position, position));
        if (code && *code >= 0 && *code <= kLastCode && valueType(*code) != Undefined) ++sound;
        lineAt(text_, position, position);
    }
    return sound;
}

} // namespace validate
