#include "acis_sink.h"
#include "acis_binary_tags.h"

#include "acis_decimal.h"
#include "acis_file.h"
#include "acis_source.h"

#include <cstdio>
#include <cstring>
#include <ctime>

namespace ACIS {
std::string writtenProduct() {
    return "Briveir ACIS Builder";
}

std::string writtenKernel(int version) {
    char text[40];
    std::snprintf(text, sizeof text, "ACIS %d.%02d NT", version / 100, version % 100);
    return text;
}

std::string writtenDate() {
    const std::time_t now = std::time(nullptr);
    char text[40] = "";
    if (const std::tm* local = std::localtime(&now))
        std::strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y", local);
    return text;
}

int writtenFlags(int version) {
    switch (version) {
    case 21500: return 24;
    case 21600: return 8;
    case 21700: return 4;
    case 21800: return 12;
    case 22300: return 4;
    default: return version < 21200 ? 0 : 26;
    }
}

std::string_view endMarker(int version) {
    return version < 21800 ? "End-of-ACIS-data" : "End-of-ASM-data";
}

void Sink::flush() {
    out_.putBytes(buffer_.data(), buffer_.size());
    buffer_.clear();
}

// ---- text -------------------------------------------------------------------------------------------

void TextSink::head(const Header& header, std::int64_t records, std::int64_t bodies) {
    for (const std::int64_t n :
         {static_cast<std::int64_t>(version_), records, bodies, std::int64_t{writtenFlags(version_)}})
        integer(n);
    buffer_.push_back('\n');
    if (version_ < 200) return;
    string(writtenProduct());
    string(writtenKernel(version_));
    string(writtenDate());
    buffer_.push_back('\n');
    for (const double number : {header.unit, header.resabs, header.resnor}) real(number);
    buffer_.push_back('\n');
}

void TextSink::begin(std::int64_t number, std::string_view name) {
    if (isNumbered_) {
        buffer_.push_back('-');
        integer(number);
    }
    put(name);
}

void TextSink::end() {
    buffer_.append("#\n");
    spill();
}

void TextSink::finish() {
    buffer_.append(endMarker(version_)).push_back('\n');
    flush();
}

void TextSink::pointer(std::int64_t number) {
    buffer_.push_back('$');
    integer(number);
}

void TextSink::integer(std::int64_t n) {
    appendWhole(buffer_, n);
    buffer_.push_back(' ');
}

void TextSink::real(double number) {
    appendReal(buffer_, number);
    buffer_.push_back(' ');
    spill();
}

void TextSink::tuple(Type, const double* numbers, int count) {
    for (int i = 0; i < count; ++i) real(numbers[i]);
}

/// Below 200 a logical is a number; some are at all versions.
void TextSink::logical(const Words& words, bool flag) {
    if (version_ < 200) return integer(flag);
    put(*(words.begin() + flag));
}

void TextSink::code(const Words* words, std::int64_t n) {
    if (!words || version_ < 200) return integer(n);
    put(*(words->begin() + n));
}

void TextSink::string(std::string_view text) {
    if (version_ >= TARGET_VERSION) buffer_.push_back('@');
    integer(static_cast<std::int64_t>(text.size()));
    put(text);
    spill();
}

void TextSink::literal(std::string_view text) {
    string(text);
}

void TextSink::word(std::string_view text) {
    put(text);
}

void TextSink::open(std::string_view name) {
    buffer_.append("{ ");
    put(name);
}

void TextSink::close() {
    buffer_.append("} ");
}

// ---- lines to look at -------------------------------------------------------------------------------

void DumpSink::head(const Header& header, std::int64_t records, std::int64_t bodies) {
    buffer_.append("records=");
    integer(records);
    buffer_.append("bodies=");
    integer(bodies);
    buffer_.append("unit=");
    real(header.unit);
    buffer_.append("\n");
}

void DumpSink::begin(std::int64_t number, std::string_view name) {
    buffer_.push_back('#');
    integer(number);
    put(name);
}

void DumpSink::end() {
    if (!buffer_.empty() && buffer_.back() == ' ') buffer_.pop_back(); // what was written out keeps it
    buffer_.push_back('\n');
    spill();
}

void DumpSink::field(const Field& field) {
    if (field.type != Type::Group && field.type != Type::Choice) buffer_.append(field.name).push_back('=');
}

void DumpSink::pointer(std::int64_t number) {
    if (number < 0) return put("-");
    buffer_.push_back('#');
    integer(number);
}

void DumpSink::real(double number) {
    appendReal(buffer_, number, 15);
    buffer_.push_back(' ');
    spill();
}

void DumpSink::string(std::string_view text) {
    buffer_.push_back('"');
    for (const char c : text) {
        if (c == '"' || c == '\\') buffer_.push_back('\\');
        buffer_.push_back(static_cast<unsigned char>(c) < 32 ? '?' : c);
    }
    buffer_.append("\" ");
}

// ---- binary -----------------------------------------------------------------------------------------

/// The lowest byte first, whatever the machine.
template <class T>
void BinarySink::bytes(T value) {
    std::uint64_t bits = 0;
    if constexpr (std::is_same_v<T, double>)
        std::memcpy(&bits, &value, sizeof value);
    else
        bits = static_cast<std::uint64_t>(value);
    for (std::size_t i = 0; i < sizeof value; ++i) buffer_.push_back(static_cast<char>(bits >> 8 * i & 0xff));
}

void BinarySink::head(const Header& header, std::int64_t records, std::int64_t bodies) {
    buffer_.append(version_ < 22300 ? "ACIS BinaryFile" : "ASM BinaryFile4");
    for (const std::int64_t n :
         {static_cast<std::int64_t>(version_), records, bodies, std::int64_t{writtenFlags(version_)}})
        bytes(static_cast<std::int32_t>(n));
    if (version_ < 200) return;
    string(writtenProduct());
    string(writtenKernel(version_));
    string(writtenDate());
    for (const double number : {header.unit, header.resabs, header.resnor}) real(number);
}

/// Where a name is split, each part has to be a name by itself.
void BinarySink::name(std::string_view name) {
    for (std::size_t dash = name.find('-'); dash != std::string_view::npos; dash = name.find('-', dash)) {
        const std::string_view part = name.substr(0, dash++);
        if (!isName(part) || !isBareWord(name.substr(dash))) continue;
        shortText(NAME_PART, part);
        name.remove_prefix(dash);
        dash = 0;
    }
    shortText(NAME, name);
}

void BinarySink::shortText(unsigned char tag, std::string_view text) {
    this->tag(tag);
    bytes(static_cast<std::uint8_t>(text.size()));
    buffer_.append(text);
}

void BinarySink::begin(std::int64_t, std::string_view name) {
    this->name(name);
}

void BinarySink::end() {
    tag(END);
    spill();
}

void BinarySink::finish() {
    name(endMarker(version_));
    flush();
}

void BinarySink::pointer(std::int64_t number) {
    tag(POINTER);
    bytes(static_cast<std::int32_t>(number));
}

void BinarySink::integer(std::int64_t n) {
    if (n != static_cast<std::int32_t>(n)) return longInteger(n);
    tag(INTEGER);
    bytes(static_cast<std::int32_t>(n));
}

/// As two integers, the low one first, in versions that don't have the tag.
void BinarySink::longInteger(std::int64_t n) {
    if (version_ >= 21500) {
        tag(LONG);
        return bytes(n);
    }
    for (const std::int64_t half : {n, n >> 32}) {
        tag(INTEGER);
        bytes(static_cast<std::int32_t>(half));
    }
}

void BinarySink::real(double number) {
    tag(DOUBLE);
    bytes(number);
    spill();
}

void BinarySink::tuple(Type type, const double* numbers, int count) {
    tag(count == 2 ? PAIR : type == Type::Position ? POSITION : VECTOR);
    for (int i = 0; i < count; ++i) bytes(numbers[i]);
}

void BinarySink::logical(const Words&, bool flag) {
    tag(flag ? TRUE_TAG : FALSE_TAG);
}

void BinarySink::code(const Words*, std::int64_t n) {
    tag(version_ >= 200 ? ENUM : INTEGER);
    bytes(static_cast<std::int32_t>(n));
}

void BinarySink::string(std::string_view text) {
    if (text.size() < 256) return shortText(STRING8, text);
    if (text.size() < 65536) {
        tag(STRING16);
        bytes(static_cast<std::uint16_t>(text.size()));
    } else {
        tag(STRING32);
        bytes(static_cast<std::uint32_t>(text.size()));
    }
    buffer_.append(text);
    spill();
}

void BinarySink::literal(std::string_view text) {
    tag(LITERAL);
    bytes(static_cast<std::uint32_t>(text.size()));
    buffer_.append(text);
}

void BinarySink::word(std::string_view text) {
    shortText(NAME, text);
}

void BinarySink::open(std::string_view name) {
    tag(OPEN);
    shortText(NAME, name);
}

void BinarySink::close() {
    tag(CLOSE);
}

} // namespace ACIS
