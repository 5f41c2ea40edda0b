#include "acis_writer.h"

#include "acis_shape.h"
#include "acis_sink.h"
#include "acis_walk.h"

#include <cmath>
#include <limits>

namespace ACIS {
namespace {

constexpr int MAX_DEPTH = 128;
constexpr std::string_view LONG_ATTRIBUTE = "int64_attrib-name_attrib-gen-attrib";
constexpr std::string_view INTEGER_ATTRIBUTE = "integer_attrib-name_attrib-gen-attrib";

class Encoder {
public:
    /// `isAsRead`: all fields that the model has, none added.
    Encoder(const File& file, int version, const Substitutes& substitutes, Sink& sink, bool isAsRead)
        : file_(file), version_(version), substitutes_(substitutes), sink_(sink), isAsRead_(isAsRead) {}

    bool model();
    std::int64_t failedAt() const { return record_; }

    // ---- what the walk asks for ----
    bool enter(const Field& f, bool& isWalked);
    void leave(const Field& f);
    bool pointer(const Field& f);
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
    bool setting() { return rawValue(); }
    bool sub();
    bool fits(std::int64_t count) const { return count >= 0 && static_cast<std::uint64_t>(count) <= end_; }

private:
    void number();
    bool record(std::size_t number, const ENTITY& entity);
    const ENTITY& entityAt(std::size_t number) const;
    std::int64_t target(std::int64_t number, bool isLink, bool isBack) const;
    bool isWanted(const Field& f) const { return isAsRead_ || (f.holds(version_) && !f.modern); }
    bool subBody(const SubRecord& record);
    bool rawValues();
    bool rawValue();
    bool rawTriple(const Value& mark);
    void dflt(const Field& f);
    void dfltChoice(const Field& f);
    double filled(const Field& f);

    const Value* take(Kind kind) {
        if (at_ >= end_ || file_.values[at_].kind != kind) return nullptr;
        return &file_.values[at_++];
    }
    bool mutes() const { return mute_ > 0; }

    const File& file_;
    int version_;
    const Substitutes& substitutes_;
    Sink& sink_;
    bool isAsRead_;
    std::size_t at_ = 0, end_ = 0;
    int mute_ = 0, depth_ = 0;
    std::int64_t record_ = 0;
    double lastLength_ = 1;                ///< of the last vector
    std::vector<std::int64_t> numbers_;    ///< the number that a record gets; -1: it isn't written
    std::vector<std::int64_t> subNumbers_; ///< the number that a sub-record got; -1: not written yet
    std::int64_t nextSub_ = 0;
};

// ---- fields -----------------------------------------------------------------------------------------

bool Encoder::enter(const Field& f, bool& isWalked) {
    if (f.type == Type::Box || f.type == Type::Extra) return true;
    const bool isAbsent = f.type != Type::Choice && take(Kind::Absent);
    if (isAbsent) {
        if (!isAsRead_ && !mutes() && isWanted(f)) dflt(f);
        return true;
    }
    isWalked = true;
    const bool isChoice = f.type == Type::Choice;
    if (mute_ || (!isChoice && !isWanted(f))) ++mute_;
    if (!mutes()) sink_.field(f);
    return true;
}

void Encoder::leave(const Field&) {
    if (mute_) --mute_;
}

bool Encoder::pointer(const Field& f) {
    const Value* value = take(Kind::Pointer);
    if (value && !mutes())
        sink_.pointer(target(value->integer, f.links, f.name == std::string_view("previous")));
    return value;
}

bool Encoder::integer(std::int64_t& n) {
    const Value* value = take(Kind::Integer);
    if (!value) return false;
    n = value->integer;
    if (!mutes()) sink_.integer(n);
    return true;
}

bool Encoder::longInteger(std::int64_t& n) {
    const Value* value = take(Kind::Integer);
    if (!value) return false;
    n = value->integer;
    if (mutes()) return true;
    if (version_ > TARGET_VERSION)
        sink_.longInteger(n);
    else
        sink_.integer(n);
    return true;
}

bool Encoder::real(double& number) {
    const Value* value = take(Kind::Real);
    if (!value) return false;
    number = value->real;
    if (!mutes()) sink_.real(number);
    return true;
}

bool Encoder::tuple(Type type) {
    double numbers[3] = {0, 0, 0};
    for (double& number : numbers) {
        const Value* value = take(Kind::Real);
        if (!value) return false;
        number = value->real;
    }
    if (type == Type::Vector) lastLength_ = std::hypot(numbers[0], numbers[1], numbers[2]);
    if (!mutes()) sink_.tuple(type, numbers, 3);
    return true;
}

bool Encoder::logical(const Words& words, bool& flag) {
    const Value* value = take(Kind::Logical);
    if (!value) return false;
    flag = value->integer != 0;
    if (!mutes()) sink_.logical(words, flag);
    return true;
}

bool Encoder::code(const Words& words, std::int64_t& n) {
    const Value* value = take(Kind::Enum);
    if (!value) return false;
    n = value->integer;
    if (!mutes()) sink_.code(&words, n);
    return true;
}

bool Encoder::choice(const Field& f, std::int64_t& n) {
    bool flag = false;
    const int mute = mute_;
    if (!isAsRead_ && !f.holds(version_)) ++mute_;
    bool isRead = true;
    if (f.words == &words::sides) {
        isRead = logical(*f.words, flag);
        n = flag;
    } else {
        isRead = code(*f.words, n);
    }
    mute_ = mute;
    return isRead;
}

bool Encoder::string(std::string_view& text) {
    const Value* value = take(Kind::String);
    if (!value) return false;
    text = value->view();
    if (!mutes()) sink_.string(text);
    return true;
}

bool Encoder::lawText(std::string_view& text) {
    return at_ < end_ && file_.values[at_].kind == Kind::Word ? word(text) : string(text);
}

bool Encoder::bound() {
    if (take(Kind::Infinite)) {
        static constexpr Words words = {"I", "F"};
        if (!mutes()) sink_.logical(words, false);
        return true;
    }
    const Value* value = take(Kind::Real);
    if (!value) return false;
    static constexpr Words words = {"I", "F"};
    if (mutes()) return true;
    sink_.logical(words, true);
    sink_.real(value->real);
    return true;
}

bool Encoder::word(std::string_view& text) {
    const Value* value = take(Kind::Word);
    if (!value) return false;
    text = value->view();
    if (!mutes()) sink_.word(text);
    return true;
}

// ---- values that a version wants and the model's doesn't have ---------------------------------------

double Encoder::filled(const Field& f) {
    double start = 0, end = 0;
    switch (f.fill) {
    case Fill::MajorLength: return lastLength_;
    case Fill::StartParameter:
    case Fill::EndParameter:
        edgeRange(file_, record_, start, end);
        return f.fill == Fill::StartParameter ? start : end;
    default: return f.dflt;
    }
}

void Encoder::dfltChoice(const Field& f) {
    const auto n = static_cast<std::size_t>(f.dflt);
    if (f.holds(version_)) {
        if (f.words == &words::sides)
            sink_.logical(*f.words, n != 0);
        else
            sink_.code(f.words, static_cast<std::int64_t>(n));
    }
    for (const Field& part : f.parts[n]) dflt(part);
}

void Encoder::dflt(const Field& f) {
    if (!isWanted(f) || f.type == Type::Box || f.type == Type::Extra) return;
    sink_.field(f);
    static constexpr Words open = {"I", "F"};
    constexpr double zero[3] = {0, 0, 0};
    switch (f.type) {
    case Type::Pointer: return sink_.pointer(-1);
    case Type::Integer: return sink_.integer(static_cast<std::int64_t>(f.dflt));
    case Type::Real: return sink_.real(filled(f));
    case Type::Position:
    case Type::Vector: return sink_.tuple(f.type, zero, 3);
    case Type::Logical: return sink_.logical(*f.words, f.dflt != 0);
    case Type::Enum: return sink_.code(f.words, static_cast<std::int64_t>(f.dflt));
    case Type::String: return sink_.string(f.text);
    case Type::Interval: sink_.logical(open, false); return sink_.logical(open, false);
    case Type::Reals:
    case Type::Repeat: return sink_.integer(0);
    case Type::Spline2:
    case Type::Spline3:
    case Type::SplineSurface: return sink_.word("nullbs");
    case Type::Surface: return sink_.word("null_surface");
    case Type::Curve: return sink_.word("null_curve");
    case Type::Law: return sink_.string("null_law");
    case Type::Group:
        for (const Field& part : f.part) dflt(part);
        return;
    case Type::Choice: return dfltChoice(f);
    default: return;
    }
}

// ---- sub-records ------------------------------------------------------------------------------------

/// In full for its first user, by its number for the others.
bool Encoder::sub() {
    const Value* value = take(Kind::Def);
    if (value)
        at_ += value->size;
    else
        value = take(Kind::Ref);
    if (!value || depth_ == MAX_DEPTH) return false;
    if (mutes()) return true;
    const auto number = static_cast<std::size_t>(value->integer);
    if (subNumbers_[number] >= 0) {
        sink_.open("ref");
        sink_.integer(subNumbers_[number]);
        sink_.close();
        return true;
    }
    subNumbers_[number] = nextSub_++;
    const auto substitute = substitutes_.subs.find(number);
    ++depth_;
    const bool isWritten =
        subBody(substitute == substitutes_.subs.end() ? file_.subs[number] : substitute->second);
    --depth_;
    return isWritten;
}

bool Encoder::subBody(const SubRecord& record) {
    const std::size_t at = at_, end = end_;
    at_ = record.first;
    end_ = at_ + record.count;
    sink_.open(record.isA && (!record.isRaw || !record.isModern) ? record.isA->name : record.name);
    const bool isWritten =
        record.isRaw || !record.isA ? rawValues() : Walk<Encoder>(*this).fields(record.isA->fields);
    sink_.close();
    const bool isDone = isWritten && at_ == end_;
    at_ = at;
    end_ = end;
    return isDone;
}

bool Encoder::rawValues() {
    while (at_ < end_)
        if (!rawValue()) return false;
    return true;
}

bool Encoder::rawTriple(const Value& mark) {
    double numbers[3] = {0, 0, 0};
    if (at_ + mark.size > end_) return false;
    for (std::uint32_t i = 0; i < mark.size && i < 3; ++i) numbers[i] = file_.values[at_++].real;
    if (!mutes())
        sink_.tuple(mark.integer ? Type::Position : Type::Vector, numbers, static_cast<int>(mark.size));
    return true;
}

bool Encoder::rawValue() {
    if (at_ >= end_) return false;
    const Value& value = file_.values[at_];
    if (value.kind == Kind::Def || value.kind == Kind::Ref) return sub();
    ++at_;
    if (value.kind == Kind::Triple) return rawTriple(value);
    if (mutes()) return true;
    switch (value.kind) {
    case Kind::Pointer: sink_.pointer(target(value.integer, false, false)); return true;
    case Kind::Integer: sink_.integer(value.integer); return true;
    case Kind::Real: sink_.real(value.real); return true;
    case Kind::Logical: sink_.logical(words::plain, value.integer != 0); return true;
    case Kind::Enum: sink_.code(nullptr, value.integer); return true;
    case Kind::Word: sink_.word(value.view()); return true;
    case Kind::String: sink_.string(value.view()); return true;
    case Kind::Literal: sink_.literal(value.view()); return true;
    case Kind::Infinite:
    case Kind::Absent: return true;
    default: return false;
    }
}

// ---- records ----------------------------------------------------------------------------------------

const ENTITY& Encoder::entityAt(std::size_t number) const {
    if (number >= file_.records.size()) return substitutes_.added[number - file_.records.size()];
    const auto found = substitutes_.records.find(number);
    return found == substitutes_.records.end() ? file_.records[number] : found->second;
}

/// The new number of a record; in a list of attributes, of the next one that stays.
std::int64_t Encoder::target(std::int64_t number, bool isLink, bool isBack) const {
    constexpr std::size_t NEXT = 2, PREVIOUS = 3;
    for (std::size_t steps = 0; steps <= numbers_.size(); ++steps) {
        if (number < 0 || number >= static_cast<std::int64_t>(numbers_.size())) return -1;
        if (numbers_[static_cast<std::size_t>(number)] >= 0)
            return numbers_[static_cast<std::size_t>(number)];
        const ENTITY& entity = entityAt(static_cast<std::size_t>(number));
        if (!isLink || !entity.kind || entity.kind->isA->prefix != Prefix::Attribute) return -1;
        const Value& next = file_.values[entity.first + (isBack ? PREVIOUS : NEXT)];
        number = next.kind == Kind::Pointer ? next.integer : -1;
    }
    return -1;
}

/// Every record gets its number before any is written.
void Encoder::number() {
    const std::size_t count = file_.records.size() + substitutes_.added.size();
    std::int64_t next = 0;
    numbers_.assign(count, -1);
    for (std::size_t i = 0; i < count; ++i)
        if (hasPlace(file_, entityAt(i), version_)) numbers_[i] = next++;
    subNumbers_.assign(file_.subs.size(), -1);
}

bool Encoder::record(std::size_t number, const ENTITY& entity) {
    record_ = static_cast<std::int64_t>(number);
    const Class& isA = *entity.kind->isA;
    std::string_view name = entity.kind->name;
    if (version_ <= TARGET_VERSION && sameText(name, LONG_ATTRIBUTE)) name = INTEGER_ATTRIBUTE;
    sink_.begin(numbers_[number], name);
    at_ = entity.first;
    end_ = at_ + entity.count;
    Walk<Encoder> walk(*this);
    if (!walk.fields(prefixOf(isA.prefix)) || !walk.fields(isA.fields) || !rawValues()) return false;
    sink_.end();
    return true;
}

bool Encoder::model() {
    number();
    std::int64_t records = 0, bodies = 0;
    for (std::size_t i = 0; i < numbers_.size(); ++i) {
        records += numbers_[i] >= 0;
        bodies += numbers_[i] >= 0 && entityAt(i).isA(Id::Body);
    }
    sink_.head(file_.header, records, bodies);
    for (std::size_t i = 0; i < numbers_.size(); ++i)
        if (numbers_[i] >= 0 && !record(i, entityAt(i))) return false;
    sink_.finish();
    return true;
}

} // namespace

bool hasPlace(const File& file, const ENTITY& entity, int version) {
    if (!entity.kind) return false;
    const Class& isA = *entity.kind->isA;
    if (isA.id == Id::Attrib_Unknown_AsmHeader) return isAsm(version);
    if (version > TARGET_VERSION) return true;
    if (isA.leaves700) return file.header.version <= TARGET_VERSION;
    if (!sameText(entity.kind->name, LONG_ATTRIBUTE) || entity.count == 0) return true;
    const Value& last = file.values[entity.first + entity.count - 1];
    return last.kind == Kind::Integer && last.integer == static_cast<std::int32_t>(last.integer);
}

bool writeModel(const File& file, std::uint32_t version, const Substitutes& substitutes, OdStreamBuf& out,
                std::string& problem) {
    const int number = static_cast<int>(version & 0xffffff);
    TextSink text(out, number, (version & VERSION_NUMBERED) != 0);
    BinarySink binary(out, number);
    Encoder encoder(file, number, substitutes, version & VERSION_BINARY ? static_cast<Sink&>(binary) : text,
                    false);
    if (encoder.model()) return true;
    problem = "record " + std::to_string(encoder.failedAt()) + ": can't be written";
    return false;
}

std::string dumpModel(const File& file, int version) {
    OdMemoryBuf out;
    DumpSink sink(out, version ? version : file.header.version);
    const Substitutes none;
    Encoder encoder(file, version ? version : 30000, none, sink, version == 0);
    if (!encoder.model())
        out.content += "(record " + std::to_string(encoder.failedAt()) + " can't be shown)\n";
    return out.content;
}

} // namespace ACIS
