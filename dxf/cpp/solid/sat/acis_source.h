// Tokens of a model's file, text or binary, in the order of the file.
#pragma once

#include "acis_value.h"

#include <string_view>

namespace ACIS {

enum class TokenKind : std::uint8_t {
    Pointer,
    Integer,
    Long, ///< 64-bit integer
    Real,
    Logical,
    Enum,
    Word,
    NamePart, ///< a part of a type name that is followed by more
    String,
    Literal,
    Position,
    Vector,
    Pair,
    Open,
    Close,
    End, ///< of a record
    Eof, ///< behind the last byte
    Bad  ///< what no token can be, or one that is cut
};

struct Token {
    TokenKind kind = TokenKind::Eof;
    std::int64_t integer = 0;
    double reals[3] = {0, 0, 0}; ///< the number in [0], or the two or three of a tuple
    std::string_view text;       ///< of the file

    bool isNumber() const { return kind == TokenKind::Integer || kind == TokenKind::Real; }
};

class Source {
public:
    explicit Source(std::string_view data) : data_(data) {}
    virtual ~Source() = default;
    virtual void next(Token& token) = 0;
    /// The four numbers that a file begins with.
    virtual bool counts(std::int64_t numbers[4]) = 0;
    virtual bool isBinary() const = 0;
    /// The `count` bytes behind the one blank that follows the number just read: a string of an old text
    /// file. False when the file is shorter.
    bool counted(std::int64_t count, std::string_view& text);
    std::size_t at() const { return at_; }
    void seek(std::size_t at) { at_ = at; }
    std::size_t left() const { return data_.size() - at_; }

protected:
    std::string_view data_;
    std::size_t at_ = 0;
};

class TextSource : public Source {
public:
    using Source::Source;
    void next(Token& token) override;
    bool counts(std::int64_t numbers[4]) override;
    bool isBinary() const override { return false; }

private:
    void string(Token& token);
};

/// Behind the banner of 15 bytes. Numbers of a file whose version word only makes sense in the other byte
/// order are swapped.
class BinarySource : public Source {
public:
    explicit BinarySource(std::string_view data);
    void next(Token& token) override;
    bool counts(std::int64_t numbers[4]) override;
    bool isBinary() const override { return true; }

private:
    template <class T>
    bool number(T& value);
    void text(Token& token, TokenKind kind, std::uint64_t size);
    void tuple(Token& token, TokenKind kind, int count);
    bool swaps_ = false;
};

constexpr std::size_t BANNER = 15;
/// True for the first bytes of a binary file.
bool isBinaryBanner(std::string_view data);
/// True for what a text file can have as a word without a count.
bool isBareWord(std::string_view text);
/// A bare word that has room in a binary file.
bool isName(std::string_view text);
/// Reads a number as it stands in a text file, with a decimal comma too. False when `text` isn't one as a
/// whole or its exponent is out of range.
bool scanNumber(std::string_view text, Token& token);

} // namespace ACIS
