#include "extended_data.h"

#include "text.h"
#include "value_checks.h"
#include "words.h"

#include <algorithm>

namespace validate {

namespace {

constexpr size_t kSizeLimit = 16383;

/// Bytes that a group takes in a drawing, which is where the limit comes from.
size_t storedSize(const Tag& tag) {
    switch (valueType(tag.code)) {
    case ValueType::Real: return 8;
    case ValueType::I16: return 3;
    case ValueType::I32: return 5;
    case ValueType::Handle: return 9;
    case ValueType::Hex: return tag.value.size() / 2 + 2;
    default: return tag.value.size() + 4;
    }
}

/// Walks the extended data of one record.
class ExtendedWalk {
public:
    ExtendedWalk(Session& session, const Record& record) : session_(session), record_(record) {}

    void run() {
        if (record_.extended < record_.tags.size() && record_.tags[record_.extended].code != 1001)
            report(Rule::ExtendedOrder, record_.tags[record_.extended],
                   "extended data begin without an application name (1001)");
        for (size_t i = record_.extended; i < record_.tags.size(); ++i) step(record_.tags[i], i);
        closeApp();
        if (size_ > kSizeLimit)
            report(Rule::ExtendedSize, record_.tags[record_.extended],
                   std::to_string(size_) + " bytes of extended data, more than " +
                       std::to_string(kSizeLimit));
    }

private:
    void report(Rule rule, const Tag& tag, std::string_view text) {
        session_.out.add(rule, session_.at(tag), words::tr(text));
    }

    void step(const Tag& tag, size_t i) {
        size_ += storedSize(tag);
        switch (tag.code) {
        case 1001: openApp(tag); break;
        case 1002: brace(tag); break;
        case 1003: useName(session_, session_.at(tag), Names::Layer, tag.value); break;
        case 1005: addPointer(session_, record_, tag, Strength::Soft); break;
        case 1010:
        case 1011:
        case 1012:
        case 1013: point(tag, i); break;
        default:
            if (tag.code < 1000)
                session_.out.add(Rule::ExtendedOrder, session_.at(tag), "group ", tag.code,
                                 " behind extended data");
        }
    }

    void openApp(const Tag& tag) {
        closeApp();
        if (std::find(apps_.begin(), apps_.end(), tag.value) != apps_.end())
            session_.out.add(Rule::ExtendedTwice, session_.at(tag), "application ", inQuotes(tag.value),
                             " has extended data twice");
        else if (apps_.size() < 64)
            apps_.push_back(tag.value);
        useName(session_, session_.at(tag), Names::App, tag.value);
        app_ = &tag;
    }

    void closeApp() {
        if (depth_ != 0)
            report(Rule::ExtendedBraces, app_ ? *app_ : record_.tags[record_.extended],
                   "a brace is not closed");
        depth_ = 0;
    }

    void brace(const Tag& tag) {
        const std::string_view text = trimmed(tag.value);
        if (text == "{") {
            ++depth_;
        } else if (text != "}") {
            session_.out.add(Rule::ExtendedBraces, session_.at(tag), inQuotes(tag.value), " is no brace");
        } else if (depth_ == 0) {
            report(Rule::ExtendedBraces, tag, "a brace is closed that was not opened");
        } else {
            --depth_;
        }
    }

    void point(const Tag& tag, size_t i) {
        for (size_t n = 1; n <= 2; ++n)
            if (i + n >= record_.tags.size() ||
                record_.tags[i + n].code != tag.code + static_cast<int>(n) * 10) {
                session_.out.addAs(Level::Warning, Rule::BadPoint, session_.at(tag), "group ", tag.code,
                                   " is not followed by ", tag.code + static_cast<int>(n) * 10);
                return;
            }
    }

    Session& session_;
    const Record& record_;
    const Tag* app_ = nullptr;
    std::vector<std::string_view> apps_;
    size_t depth_ = 0, size_ = 0;
};

} // namespace

void checkExtendedData(Session& session, const Record& record) {
    if (record.extended < record.tags.size()) ExtendedWalk(session, record).run();
}

size_t checkAppGroup(Session& session, const Record& record, size_t at) {
    const Tag& open = record.tags[at];
    if (open.value.empty() || open.value.front() != '{') {
        session.out.add(Rule::AppGroup, session.at(open), "application group ", inQuotes(open.value),
                        " does not begin with a brace");
        return at;
    }
    const bool reactors = open.value == "{ACAD_REACTORS", dictionary = open.value == "{ACAD_XDICTIONARY";
    for (size_t i = at + 1; i < record.extended; ++i) {
        const Tag& tag = record.tags[i];
        if (tag.code == 100) break;
        if (tag.code == 102) {
            if (trimmed(tag.value) == "}") return i;
            break;
        }
        if (dictionary && tag.code == 360)
            addPointer(session, record, tag, Strength::Hard, "DICTIONARY|ACDBDICTIONARYWDFLT");
        else if (valueType(tag.code) == ValueType::Handle && tag.code >= 330)
            addPointer(session, record, tag, reactors ? Strength::Reactor : Strength::Soft);
    }
    session.out.add(Rule::AppGroup, session.at(open), "application group ", inQuotes(open.value),
                    " is not closed");
    return at;
}

Strength strengthOf(int code) {
    return code >= 340 ? Strength::Hard : Strength::Soft;
}

void addPointer(Session& session, const Record& record, const Tag& tag, Strength strength,
                std::string_view wanted) {
    const uint64_t target = handleValue(tag);
    if (target != 0)
        session.model.pointers.push_back(
            {target, wanted, record.object, tag.line, static_cast<int16_t>(tag.code), strength});
}

} // namespace validate
