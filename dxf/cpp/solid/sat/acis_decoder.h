// Reading a model: tokens of the file become values in the order of the layouts, whatever version they are
// of.
#pragma once

#include "acis_file.h"
#include "acis_source.h"
#include "acis_walk.h"

#include <map>
#include <vector>

namespace ACIS {

class Decoder {
public:
    Decoder(File& file, Source& source)
        : file_(file), source_(source), version_(file.header.version), hasIds_(version_ >= TARGET_VERSION) {}

    bool model();
    const std::string& problem() const { return problem_; }

    // ---- what the walk asks for ----
    bool enter(const Field& f, bool& isWalked);
    void leave(const Field&) {}
    bool pointer(const Field&) { return take(TokenKind::Pointer) && push(Kind::Pointer, token_.integer); }
    bool integer(std::int64_t& n);
    bool longInteger(std::int64_t& n);
    bool real(double& number);
    bool tuple(Type type);
    bool logical(const Words& words, bool& flag);
    bool code(const Words& words, std::int64_t& n);
    bool choice(const Field& f, std::int64_t& n);
    bool string(std::string_view& text);
    bool lawText(std::string_view& text);
    bool bound();
    bool word(std::string_view& text);
    bool setting();
    bool sub();
    /// A count of things that each take a byte of the file at least.
    bool fits(std::int64_t count) const {
        return count >= 0 && static_cast<std::uint64_t>(count) <= source_.left();
    }

private:
    /// Where a reading may go back to.
    struct Mark {
        std::size_t at, values, subs;
    };

    bool fail(const char* what);
    bool head();
    bool headString(std::string& text);
    bool records();
    bool record(bool& isEnd);
    bool recordName(std::string& name);
    bool recordNumber();
    bool body(const RecordName& kind, ENTITY& entity);
    const RecordName& nameOf(std::string_view name, const Class& isA);
    bool isMarker(std::string_view name, bool& isEnd);
    bool resolve();

    bool isPresent(const Field& f);
    bool mayBe(const Field& f);
    bool skipBox();
    bool subBody(std::size_t number);
    bool subRaw(const Mark& mark, std::size_t number);
    bool rawValues(bool inSub);
    bool rawValue();
    bool isOldString();
    bool expandLiteral();

    const Token& peek();
    bool take();
    bool take(TokenKind kind) { return peek().kind == kind && take(); }
    bool push(const Value& value) {
        file_.values.push(value);
        return true;
    }
    bool push(Kind kind, std::int64_t n) { return push(makeValue(kind, n)); }
    Mark mark() { return {hasPeek_ ? peekAt_ : source_.at(), file_.values.size(), file_.subs.size()}; }
    void back(const Mark& mark);

    File& file_;
    Source& source_;
    int version_;
    bool hasIds_;
    bool isModern_ = false;
    bool isRaw_ = false;
    int depth_ = 0;
    std::int64_t number_ = 0; ///< of the record being read
    bool inHistory_ = false;
    Token token_, peeked_;
    std::size_t peekAt_ = 0;
    bool hasPeek_ = false;
    std::vector<Token> pending_; ///< of a literal, last first
    std::map<std::pair<std::string_view, const Class*>, const RecordName*> names_;
    std::string problem_;
};

} // namespace ACIS
