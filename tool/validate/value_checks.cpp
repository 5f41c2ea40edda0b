#include "value_checks.h"

#include "text.h"

#include <algorithm>

namespace validate {

namespace {

constexpr size_t kHexLimit = 254;

void checkReal(Session& session, const Tag& tag) {
    if (!isPlainReal(tag.value))
        session.out.add(Rule::BadReal, session.at(tag), "group ", tag.code, ": ", inQuotes(tag.value),
                        " is not a finite decimal number");
}

void checkInteger(Session& session, const Tag& tag, int64_t low, int64_t high) {
    const auto number = readInteger(tag.value);
    if (!number)
        session.out.add(Rule::BadInteger, session.at(tag), "group ", tag.code, ": ", inQuotes(tag.value),
                        " is not an integer");
    else if (*number < low || *number > high)
        session.out.add(Rule::IntegerRange, session.at(tag), "group ", tag.code, ": ", trimmed(tag.value),
                        " is outside of ", low, " to ", high);
}

void checkBoolean(Session& session, const Tag& tag) {
    const auto number = readInteger(tag.value);
    if (!number)
        checkInteger(session, tag, 0, 1);
    else if (*number != 0 && *number != 1)
        session.out.add(Rule::BadBoolean, session.at(tag), "group ", tag.code, ": ", trimmed(tag.value),
                        " is neither 0 nor 1");
}

void checkHex(Session& session, const Tag& tag) {
    const std::string_view digits = trimmed(tag.value);
    size_t bad = digits.size() % 2;
    for (size_t i = 0; i < digits.size() && bad == 0; ++i)
        if (!isDigit(digits[i]) && !((digits[i] | 0x20) >= 'a' && (digits[i] | 0x20) <= 'f')) bad = 1;
    if (bad)
        session.out.add(Rule::BadHex, session.at(tag), "group ", tag.code,
                        ": binary data are not pairs of hexadecimal digits");
    else if (digits.size() > kHexLimit)
        session.out.addAs(Level::Warning, Rule::LongLine, session.at(tag), "group ", tag.code, ": ",
                          digits.size(), " hexadecimal digits, more than ", kHexLimit);
}

void checkHandle(Session& session, const Tag& tag) {
    // Up to R14, group 5 of a dimension style is the name of an arrow block.
    if (tag.code == 5 && session.place.kind == "DIMSTYLE") return;
    if (!readHandle(tag.value))
        session.out.add(Rule::BadHandle, session.at(tag), "group ", tag.code, ": ", inQuotes(tag.value),
                        " is not a handle of 1 to 16 hexadecimal digits");
}

/// Bytes that the encoding lacks; the first of a text is told.
void checkEncoding(Session& session, const Tag& tag) {
    if (session.atLeast(Version::R2007)) {
        for (size_t at = 0; at < tag.value.size();) {
            const size_t length = utf8Length(tag.value, at);
            if (length == 0) {
                session.out.add(Rule::BadUtf8, session.at(tag), "group ", tag.code, ": broken UTF-8 in ",
                                inQuotes(tag.value.substr(at)));
                return;
            }
            at += length;
        }
        return;
    }
    if (looksLikeUtf8(tag.value)) {
        session.out.add(Rule::Utf8InCodePage, session.at(tag), "group ", tag.code, ": ", inQuotes(tag.value),
                        " looks like UTF-8, which comes with 2007 only");
        return;
    }
    if (!session.page) return;
    for (size_t at = 0; at < tag.value.size();) {
        const size_t length = characterLength(*session.page, tag.value, at);
        if (length == 0) {
            session.out.add(Rule::BadByte, session.at(tag), "group ", tag.code, ": code page ",
                            session.page->number, " has no character for the start of ",
                            inQuotes(tag.value.substr(at)));
            return;
        }
        at += length;
    }
}

/// Control bytes, cut escapes; true when there are bytes beyond ASCII.
bool checkBytes(Session& session, const Tag& tag) {
    bool beyondAscii = false, control = false;
    const bool paged = session.page && !session.atLeast(Version::R2007);
    for (size_t at = 0; at < tag.value.size(); ++at) {
        const auto byte = static_cast<unsigned char>(tag.value[at]);
        beyondAscii = beyondAscii || byte >= 0x80;
        if (paged && byte >= 0x80 && characterLength(*session.page, tag.value, at) == 2) {
            ++at; // the second byte may look like a backslash
            continue;
        }
        if (byte == 0) {
            session.out.add(Rule::NulByte, session.at(tag), "group ", tag.code, ": NUL byte in ",
                            inQuotes(tag.value));
            return false;
        }
        control = control || (byte < 0x20 && byte != '\t');
        // Group 3 is the earlier part of a longer text, which may be cut anywhere.
        if (byte == '\\' && isCutEscape(tag.value, at) && !(tag.code == 3 && at + 8 > tag.value.size()))
            session.out.add(Rule::CutEscape, session.at(tag), "group ", tag.code, ": ",
                            inQuotes(tag.value.substr(at, 8)), " lacks hexadecimal digits");
    }
    if (control)
        session.out.add(Rule::ControlByte, session.at(tag), "group ", tag.code, ": control byte in ",
                        inQuotes(tag.value));
    return beyondAscii;
}

void checkString(Session& session, const Tag& tag) {
    const size_t limit = session.atLeast(Version::R2000) && tag.code < 1000 ? 2049 : 255;
    if (tag.value.size() > limit)
        session.out.add(Rule::LongLine, session.at(tag), "group ", tag.code, ": ", tag.value.size(),
                        " bytes, more than ", limit);
    if (hasSpecialBytes(tag.value) && checkBytes(session, tag)) checkEncoding(session, tag);
}

void checkValue(Session& session, const Tag& tag) {
    switch (valueType(tag.code)) {
    case ValueType::String: checkString(session, tag); break;
    case ValueType::Real: checkReal(session, tag); break;
    case ValueType::I16: checkInteger(session, tag, INT16_MIN, INT16_MAX); break;
    case ValueType::I32: checkInteger(session, tag, INT32_MIN, INT32_MAX); break;
    case ValueType::I64: checkInteger(session, tag, INT64_MIN, INT64_MAX); break;
    case ValueType::Bool: checkBoolean(session, tag); break;
    case ValueType::Handle: checkHandle(session, tag); break;
    case ValueType::Hex: checkHex(session, tag); break;
    case ValueType::Comment: break;
    case ValueType::Undefined:
        session.out.add(Rule::UndefinedCode, session.at(tag), "group code ", tag.code, " has no meaning");
        break;
    }
}

bool isShortNameCharacter(char c) {
    const bool letter =
        (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
    return letter || isDigit(c) || c == '$' || c == '-' || c == '_' || c == '|';
}

bool isLongNameCharacter(char c) {
    return static_cast<unsigned char>(c) >= 0x20 &&
           std::string_view("<>/\\\":;?*,=`").find(c) == std::string_view::npos;
}

/// Length of the escape (\\U+XXXX, \\M+nXXXX) at `at`, 0 when there is none: it stands for one letter.
size_t escapeLength(std::string_view name, size_t at) {
    if (name.substr(at, 3) == "\\U+") return 7;
    return name.substr(at, 3) == "\\M+" ? 8 : 0;
}

size_t nameLength(std::string_view name, bool isUtf8) {
    size_t length = 0;
    for (size_t i = 0; i < name.size(); ++length) {
        i += std::max<size_t>(1, escapeLength(name, i));
        while (isUtf8 && i < name.size() && (static_cast<unsigned char>(name[i]) & 0xC0U) == 0x80U) ++i;
    }
    return length;
}

/// First character that a name may not have, npos without one.
size_t findBadCharacter(std::string_view name, bool longNames) {
    for (size_t i = 0; i < name.size();) {
        const size_t escape = escapeLength(name, i);
        const bool system = i == 0 && name[i] == '*'; // system and anonymous names
        if (escape == 0 && !system &&
            !(longNames ? isLongNameCharacter(name[i]) : isShortNameCharacter(name[i])))
            return i;
        i += std::max<size_t>(1, escape);
    }
    return std::string_view::npos;
}

} // namespace

void checkValues(Session& session, std::span<const Tag> tags) {
    for (const Tag& tag : tags) checkValue(session, tag);
}

void checkDefinedName(Session& session, const Place& place, Names table, std::string_view name) {
    if (name.empty()) {
        session.out.add(Rule::EmptyName, place, "the name is empty");
        return;
    }
    if (isBlank(name.front()) || isBlank(name.back()))
        session.out.add(Rule::NameBlanks, place, "the name ", inQuotes(name), " begins or ends with a blank");
    // The names of applications follow no rule that files keep.
    if (table == Names::App) return;
    const bool longNames = session.longNames && session.atLeast(Version::R2000);
    const size_t limit = longNames ? 255 : 31;
    const size_t length = nameLength(name, session.atLeast(Version::R2007));
    if (length > limit)
        session.out.add(Rule::LongName, place, "the name ", inQuotes(name), " has ", length,
                        " characters, more than ", limit);
    const size_t bad = findBadCharacter(trimmed(name), longNames);
    if (bad != name.npos)
        session.out.add(Rule::BadName, place, "the name ", inQuotes(name), " has the forbidden character ",
                        inQuotes(trimmed(name).substr(bad, 1)));
}

void useName(Session& session, const Place& place, Names table, std::string_view name) {
    NameTable& names = session.model.table(table);
    NameEntry& entry = names.entries[names.find(name)];
    if (entry.uses++ == 0) entry.used = place;
}

void defineName(Session& session, const Place& place, Names table, std::string_view name) {
    NameTable& names = session.model.table(table);
    NameEntry& entry = names.entries[names.find(name)];
    if (entry.defined.line == 0)
        entry.defined = place;
    else if (table != Names::Viewport) // tiled views share a name
        session.out.add(Rule::RepeatedName, place, "the name ", inQuotes(name), " is defined in line ",
                        entry.defined.line, " already");
}

uint64_t handleValue(const Tag& tag) {
    return readHandle(tag.value).value_or(0);
}

} // namespace validate
