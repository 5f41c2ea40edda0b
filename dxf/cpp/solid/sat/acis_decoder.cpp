// The values of records and sub-records.
#include "acis_decoder.h"

#include <algorithm>

namespace ACIS {

static constexpr int MAX_DEPTH = 64; ///< sub-records within sub-records

// ---- tokens -----------------------------------------------------------------------------------------

const Token& Decoder::peek() {
    if (!hasPeek_) {
        peekAt_ = source_.at();
        source_.next(peeked_);
        hasPeek_ = true;
    }
    return peeked_;
}

bool Decoder::take() {
    peek();
    token_ = peeked_;
    hasPeek_ = false;
    return token_.kind != TokenKind::Bad && token_.kind != TokenKind::Eof;
}

void Decoder::back(const Mark& mark) {
    source_.seek(mark.at);
    hasPeek_ = false;
    file_.values.truncate(mark.values);
    file_.subs.resize(mark.subs);
}

// ---- fields -----------------------------------------------------------------------------------------

/// Whether the next token can be the field's value.
bool Decoder::mayBe(const Field& f) {
    const Token& next = peek();
    switch (f.type) {
    case Type::Pointer: return next.kind == TokenKind::Pointer;
    case Type::Integer: return next.kind == TokenKind::Integer;
    case Type::Real: return next.isNumber();
    case Type::String:
        return next.kind == TokenKind::String ||
               (next.kind == TokenKind::Integer && version_ < TARGET_VERSION);
    default: return next.isNumber() || next.kind == TokenKind::Logical || next.kind == TokenKind::Enum;
    }
}

bool Decoder::isPresent(const Field& f) {
    if (f.legacy && isModern_) return false;
    if (f.withId) return hasIds_;
    if (f.byToken) return mayBe(f);
    if (f.isOptional && (peek().kind == TokenKind::Close || peek().kind == TokenKind::End)) return false;
    return f.holds(version_);
}

bool Decoder::skipBox() {
    if (isAsm(version_) || version_ <= TARGET_VERSION) return true;
    const Token& next = peek();
    const bool isEmpty =
        next.kind == TokenKind::Logical ? !next.integer : next.kind == TokenKind::Word && next.text == "F";
    const bool isFull =
        next.kind == TokenKind::Logical ? next.integer : next.kind == TokenKind::Word && next.text == "T";
    if (!isEmpty && !isFull) return true;
    if (!take()) return false;
    for (int i = 0; isFull && i < 6; ++i) {
        if (peek().kind == TokenKind::Position)
            i += 2;
        else if (!peek().isNumber())
            return false;
        if (!take()) return false;
    }
    return true;
}

bool Decoder::enter(const Field& f, bool& isWalked) {
    if (f.type == Type::Box) return skipBox();
    if (f.type == Type::Extra) {
        const bool isWanted = !f.modern || isModern_;
        const bool isThere =
            isWanted && (!f.withId || hasIds_) && (mayBe(f) || (f.modern && peek().kind == TokenKind::Word));
        return isThere ? take() : true;
    }
    isWalked = f.type == Type::Choice || isPresent(f);
    if (!isWalked) push(Value());
    return true;
}

bool Decoder::integer(std::int64_t& n) {
    if (!take(TokenKind::Integer)) return false;
    n = token_.integer;
    return push(Kind::Integer, n);
}

bool Decoder::longInteger(std::int64_t& n) {
    if (!take(TokenKind::Long) && !take(TokenKind::Integer)) return false;
    n = token_.integer;
    if (source_.isBinary() && token_.kind == TokenKind::Integer && peek().kind == TokenKind::Integer) {
        take();
        n = (token_.integer << 32) | (n & 0xffffffff);
    }
    return push(Kind::Integer, n);
}

bool Decoder::real(double& number) {
    if (!peek().isNumber() || !take()) return false;
    number = token_.reals[0];
    return push(makeReal(number));
}

bool Decoder::tuple(Type type) {
    double number = 0;
    if (peek().kind == TokenKind::Literal && !expandLiteral()) return false;
    if (!pending_.empty()) {
        for (int i = 0; i < 3; ++i, pending_.pop_back()) {
            if (pending_.empty() || !pending_.back().isNumber()) return false;
            push(makeReal(pending_.back().reals[0]));
        }
        return true;
    }
    const bool isTuple = peek().kind == TokenKind::Position || peek().kind == TokenKind::Vector;
    (void)type;
    if (!isTuple) return real(number) && real(number) && real(number);
    take();
    for (const double value : token_.reals) push(makeReal(value));
    return true;
}

bool Decoder::logical(const Words& words, bool& flag) {
    const std::string_view no = *words.begin(), yes = *(words.begin() + 1);
    if (!take()) return false;
    switch (token_.kind) {
    case TokenKind::Logical:
    case TokenKind::Integer:
    case TokenKind::Enum:
        if (token_.integer != 0 && token_.integer != 1) return false;
        flag = token_.integer != 0;
        break;
    case TokenKind::Word:
        flag =
            token_.text == yes || token_.text == "T" || (yes == "reverse_v" && token_.text == "reversed_v");
        if (!flag && token_.text != no && token_.text != "F") return false;
        break;
    default: return false;
    }
    return push(Kind::Logical, flag);
}

bool Decoder::code(const Words& words, std::int64_t& n) {
    if (!take()) return false;
    if (token_.kind == TokenKind::Integer || token_.kind == TokenKind::Enum ||
        token_.kind == TokenKind::Logical) {
        n = token_.integer;
    } else {
        if (token_.kind != TokenKind::Word && token_.kind != TokenKind::String) return false;
        n = std::find(words.begin(), words.end(), token_.text) - words.begin();
    }
    return n >= 0 && n < static_cast<std::int64_t>(words.size()) && push(Kind::Enum, n);
}

/// A logical decides between two parts, an enumeration between more. A version without the word means one.
bool Decoder::choice(const Field& f, std::int64_t& n) {
    bool flag = false;
    if (!f.holds(version_)) {
        n = static_cast<std::int64_t>(f.dflt);
        return push(Kind::Enum, n);
    }
    if (f.words != &words::sides) return code(*f.words, n);
    if (!logical(*f.words, flag)) return false;
    n = flag;
    return true;
}

bool Decoder::string(std::string_view& text) {
    if (take(TokenKind::String)) {
        text = token_.text;
    } else {
        if (source_.isBinary() || !take(TokenKind::Integer)) return false;
        if (!source_.counted(token_.integer, text)) return false;
    }
    return push(makeText(Kind::String, file_.texts.keep(text)));
}

bool Decoder::lawText(std::string_view& text) {
    return peek().kind == TokenKind::Word ? word(text) : string(text);
}

bool Decoder::bound() {
    double number = 0;
    if (!take()) return false;
    bool isFinite = token_.integer != 0;
    if (token_.kind == TokenKind::Word) {
        isFinite = token_.text == "F" || token_.text == "TRUE";
        if (!isFinite && token_.text != "I" && token_.text != "FALSE") return false;
    } else if (token_.kind != TokenKind::Logical && token_.kind != TokenKind::Integer) {
        return false;
    }
    return isFinite ? real(number) : push(Kind::Infinite, 0);
}

bool Decoder::word(std::string_view& text) {
    if (!take(TokenKind::Word) && !take(TokenKind::String)) return false;
    if (!isName(token_.text)) return false;
    text = file_.texts.name(token_.text);
    return push(makeText(Kind::Word, text));
}

bool Decoder::setting() {
    double number = 0;
    std::int64_t n = 0;
    return peek().kind == TokenKind::Integer ? integer(n) : real(number);
}

// ---- sub-records ------------------------------------------------------------------------------------

bool Decoder::sub() {
    if (!take(TokenKind::Open) || !take(TokenKind::Word) || !isName(token_.text)) return false;
    if (token_.text == "ref") {
        if (!take(TokenKind::Integer)) return false;
        const auto number = static_cast<std::uint64_t>(token_.integer);
        if (number >= file_.subs.size() || file_.subs[number].isOpen)
            return fail("a reference to no sub-record");
        return push(Kind::Ref, token_.integer) && take(TokenKind::Close);
    }
    if (depth_ == MAX_DEPTH) return fail("too many sub-records within each other");
    const std::size_t number = file_.subs.size();
    SubRecord record;
    record.name = file_.texts.name(token_.text);
    record.isA = findSubClass(record.name);
    file_.subs.push_back(record);
    push(Kind::Def, static_cast<std::int64_t>(number));
    const std::size_t first = file_.values.size();
    file_.subs[number].first = static_cast<std::uint32_t>(first);
    ++depth_;
    const bool isRead = subBody(number);
    --depth_;
    if (!isRead) return false;
    const auto count = static_cast<std::uint32_t>(file_.values.size() - first);
    file_.values[first - 1].size = file_.subs[number].count = count;
    file_.subs[number].isOpen = false;
    return true;
}

/// By the layout; when that doesn't fit, token by token.
bool Decoder::subBody(std::size_t number) {
    const SubClass* isA = file_.subs[number].isA;
    const Mark start = mark();
    if (isA && !isA->fields.empty() && !isRaw_) {
        const bool wasModern = isModern_;
        isModern_ = file_.subs[number].name == isA->modernName && peek().kind == TokenKind::Integer;
        file_.subs[number].isModern = isModern_;
        if (isModern_) take();
        const bool isRead = Walk<Decoder>(*this).fields(isA->fields) && take(TokenKind::Close);
        isModern_ = wasModern;
        if (isRead || !problem_.empty()) return isRead;
    }
    return subRaw(start, number);
}

bool Decoder::subRaw(const Mark& start, std::size_t number) {
    back(start);
    const bool wasRaw = isRaw_;
    SubRecord& record = file_.subs[number];
    record.isRaw = true;
    record.isModern = record.isA && record.name == record.isA->modernName &&
                      record.name != record.isA->name && peek().kind == TokenKind::Integer;
    isRaw_ = true;
    const bool isRead = rawValues(true) && take(TokenKind::Close);
    isRaw_ = wasRaw;
    return isRead;
}

// ---- token by token ---------------------------------------------------------------------------------

bool Decoder::rawValues(bool inSub) {
    while (true) {
        const TokenKind kind = peek().kind;
        if (kind == (inSub ? TokenKind::Close : TokenKind::End)) return true;
        if (kind == TokenKind::Close || kind == TokenKind::End) return false;
        if (!rawValue()) return false;
    }
}

/// A number of an old text file that counts the letters of the text behind it.
bool Decoder::isOldString() {
    if (source_.isBinary() || version_ >= TARGET_VERSION || token_.integer < 2 || token_.integer > 4096)
        return false;
    const std::size_t at = source_.at();
    std::string_view text;
    const bool isText = source_.counted(token_.integer, text) && (text[0] >= 'A') &&
                        text.find_first_of("{}#\n$") == std::string_view::npos &&
                        (text.find(' ') == std::string_view::npos || text[0] < 'a');
    Token next;
    const std::size_t behind = source_.at();
    bool isWord = isText;
    if (isWord && source_.left()) {
        source_.next(next);
        isWord = source_.at() > behind && next.kind != TokenKind::Bad;
    }
    source_.seek(at);
    return isWord;
}

bool Decoder::rawValue() {
    std::string_view text;
    if (peek().kind == TokenKind::Open) return sub();
    if (!take()) return false;
    switch (token_.kind) {
    case TokenKind::Pointer: return push(Kind::Pointer, token_.integer);
    case TokenKind::Integer:
        if (!isOldString()) return push(Kind::Integer, token_.integer);
        return source_.counted(token_.integer, text) && push(makeText(Kind::String, file_.texts.keep(text)));
    case TokenKind::Long: return push(Kind::Integer, token_.integer);
    case TokenKind::Real: return push(makeReal(token_.reals[0]));
    case TokenKind::Logical: return push(Kind::Logical, token_.integer);
    case TokenKind::Enum: return push(Kind::Enum, token_.integer);
    case TokenKind::Word:
        if (token_.text == "T" || token_.text == "F") return push(Kind::Logical, token_.text == "T");
        return isName(token_.text) && push(makeText(Kind::Word, file_.texts.name(token_.text)));
    case TokenKind::String: return push(makeText(Kind::String, file_.texts.keep(token_.text)));
    case TokenKind::Literal: return push(makeText(Kind::Literal, file_.texts.keep(token_.text)));
    case TokenKind::Position:
    case TokenKind::Vector:
    case TokenKind::Pair: break;
    default: return false;
    }
    Value mark = makeValue(Kind::Triple, token_.kind == TokenKind::Position);
    mark.size = token_.kind == TokenKind::Pair ? 2 : 3;
    push(mark);
    for (std::uint32_t i = 0; i < mark.size; ++i) push(makeReal(token_.reals[i]));
    return true;
}

/// Some writers put a transformation into one string. Its logicals stand as words.
bool Decoder::expandLiteral() {
    if (!take()) return false;
    TextSource text(token_.text);
    Token token;
    for (text.next(token); token.kind != TokenKind::Eof && pending_.size() < 32; text.next(token))
        pending_.push_back(token);
    std::reverse(pending_.begin(), pending_.end());
    return true;
}

} // namespace ACIS
