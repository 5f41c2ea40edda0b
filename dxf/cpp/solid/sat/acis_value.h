// Values of a model: what stands in a record, as tagged words of 16 bytes in one store, and the texts they
// point at. A record is a run of values, a sub-record a run within that of its first user.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace ACIS {

enum class Kind : std::uint8_t {
    Absent,   ///< a field that the version of the file doesn't have
    Pointer,  ///< index of a record, -1 for none
    Integer,  ///< also a whole number of an unknown record
    Real,     ///< double
    Logical,  ///< 0 or 1
    Enum,     ///< code of an enumeration
    Word,     ///< bare word, a name
    String,   ///< counted string
    Literal,  ///< counted string of a binary file that stands for other values
    Infinite, ///< bound of an interval that is open
    Triple,   ///< mark of a binary file: the next `size` reals were one value; `integer` 1 for a position
    Def,      ///< a sub-record: its number, and its values, `size` of them, next
    Ref       ///< a sub-record that was defined ahead
};

struct Value {
    Kind kind = Kind::Absent;
    std::uint32_t size = 0; ///< characters of a text, values of a definition
    union {
        std::int64_t integer = 0;
        double real;
        const char* text;
    };

    std::string_view view() const { return {text, size}; }
    bool isNumber() const { return kind == Kind::Integer || kind == Kind::Real; }
    double number() const { return kind == Kind::Real ? real : static_cast<double>(integer); }
};

inline Value makeValue(Kind kind, std::int64_t integer = 0) {
    Value value;
    value.kind = kind;
    value.integer = integer;
    return value;
}

inline Value makeReal(double real) {
    Value value;
    value.kind = Kind::Real;
    value.real = real;
    return value;
}

inline Value makeText(Kind kind, std::string_view text) {
    Value value;
    value.kind = kind;
    value.size = static_cast<std::uint32_t>(text.size());
    value.text = text.data();
    return value;
}

/// Grows in blocks, so that no value is ever copied.
class ValueStore {
public:
    std::size_t size() const { return size_; }
    Value& operator[](std::size_t at) { return blocks_[at / BLOCK][at % BLOCK]; }
    const Value& operator[](std::size_t at) const { return blocks_[at / BLOCK][at % BLOCK]; }
    void push(const Value& value) {
        if (size_ == blocks_.size() * BLOCK) blocks_.push_back(std::make_unique<Value[]>(BLOCK));
        (*this)[size_++] = value;
    }
    void truncate(std::size_t size) { size_ = size; }
    void clear() {
        blocks_.clear();
        size_ = 0;
    }

private:
    static constexpr std::size_t BLOCK = 4096;
    std::vector<std::unique_ptr<Value[]>> blocks_;
    std::size_t size_ = 0;
};

/// Texts at addresses that stay.
class TextStore {
public:
    std::string_view keep(std::string_view text);
    std::string_view name(std::string_view text); ///< The same text gives the same address.
    void clear();

private:
    std::vector<std::unique_ptr<char[]>> blocks_;
    std::unordered_set<std::string_view> names_;
    std::size_t room_ = 0;
    char* free_ = nullptr;
};

/// Letters of ASCII without regard to case.
bool sameText(std::string_view a, std::string_view b);

} // namespace ACIS
