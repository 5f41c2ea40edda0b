#include "acis_binary_tags.h"
#include "acis_source.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ACIS {

BinarySource::BinarySource(std::string_view data) : Source(data) {
    at_ = std::min(BANNER, data.size());
    std::uint32_t version = 0;
    if (left() < 4) return;
    std::memcpy(&version, data.data() + at_, 4);
    swaps_ = version > 0xffff;
}

template <class T>
bool BinarySource::number(T& value) {
    if (left() < sizeof(T)) return false;
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, data_.data() + at_, sizeof(T));
    if (swaps_) std::reverse(bytes, bytes + sizeof(T));
    std::memcpy(&value, bytes, sizeof(T));
    at_ += sizeof(T);
    return true;
}

void BinarySource::text(Token& token, TokenKind kind, std::uint64_t size) {
    if (size > left()) return;
    token.text = data_.substr(at_, static_cast<std::size_t>(size));
    at_ += static_cast<std::size_t>(size);
    const bool isName = kind == TokenKind::Word || kind == TokenKind::NamePart;
    if (!isName || isBareWord(token.text)) token.kind = kind;
}

void BinarySource::tuple(Token& token, TokenKind kind, int count) {
    for (int i = 0; i < count; ++i)
        if (!number(token.reals[i]) || !std::isfinite(token.reals[i])) return;
    token.kind = kind;
}

void BinarySource::next(Token& token) {
    token.kind = TokenKind::Eof;
    if (at_ == data_.size()) return;
    const auto tag = static_cast<unsigned char>(data_[at_++]);
    token.kind = TokenKind::Bad;
    const auto whole = [&token](std::int64_t value, TokenKind kind) {
        token.kind = kind;
        token.integer = value;
        token.reals[0] = static_cast<double>(value);
    };
    std::uint8_t byte = 0;
    std::uint16_t half = 0;
    std::uint32_t size = 0;
    std::int16_t small = 0;
    std::int32_t value = 0;
    std::int64_t wide = 0;
    float single = 0;
    switch (tag) {
    case CHAR:
        if (number(byte)) whole(byte, TokenKind::Integer);
        return;
    case SHORT:
        if (number(small)) whole(small, TokenKind::Integer);
        return;
    case INTEGER:
        if (number(value)) whole(value, TokenKind::Integer);
        return;
    case POINTER:
        if (number(value)) whole(value, TokenKind::Pointer);
        return;
    case ENUM:
        if (number(value)) whole(value, TokenKind::Enum);
        return;
    case LONG:
        if (number(wide)) whole(wide, TokenKind::Long);
        return;
    case FLOAT:
        if (!number(single) || !std::isfinite(single)) return;
        token.reals[0] = single;
        token.kind = TokenKind::Real;
        return;
    case DOUBLE: return tuple(token, TokenKind::Real, 1);
    case PAIR: return tuple(token, TokenKind::Pair, 2);
    case POSITION: return tuple(token, TokenKind::Position, 3);
    case VECTOR: return tuple(token, TokenKind::Vector, 3);
    case STRING8: return number(byte) ? text(token, TokenKind::String, byte) : void();
    case STRING16: return number(half) ? text(token, TokenKind::String, half) : void();
    case STRING32: return number(size) ? text(token, TokenKind::String, size) : void();
    case LITERAL: return number(size) ? text(token, TokenKind::Literal, size) : void();
    case NAME: return number(byte) ? text(token, TokenKind::Word, byte) : void();
    case NAME_PART: return number(byte) ? text(token, TokenKind::NamePart, byte) : void();
    case TRUE_TAG:
    case FALSE_TAG: return whole(tag == TRUE_TAG, TokenKind::Logical);
    case OPEN: token.kind = TokenKind::Open; return;
    case CLOSE: token.kind = TokenKind::Close; return;
    case END: token.kind = TokenKind::End; return;
    default: return;
    }
}

bool BinarySource::counts(std::int64_t numbers[4]) {
    for (int i = 0; i < 4; ++i) {
        std::int32_t value = 0;
        if (!number(value)) return false;
        numbers[i] = value;
    }
    return true;
}

} // namespace ACIS
