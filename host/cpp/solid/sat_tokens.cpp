#include "solid/sat_tokens.h"

#include <array>
#include <charconv>
#include <cstring>

namespace host {
namespace {

bool isBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == 127;
}

std::string_view lastPart(std::string_view name) {
    return name.substr(name.rfind('-') + 1);
}

/// Collects tokens into records.
class Collector {
public:
    explicit Collector(SatModel& model) : model_(model) {}

    void add(const SatToken& token) {
        if (token.kind == SatKind::Open)
            brace_ = true;
        else if (brace_ && token.kind == SatKind::Word && token.text != "ref")
            startSubRecord();
        if (token.kind != SatKind::Open) brace_ = false;
        model_.tokens.push_back(token);
    }
    /// Ends a record. False for a number that no record of this file can have.
    bool end(std::string_view leaf, std::string_view kind, std::int64_t number, std::size_t limit) {
        if (number >= 0) next_ = static_cast<std::size_t>(number);
        if (next_ > limit) return false;
        if (next_ >= model_.records.size()) model_.records.resize(next_ + 1);
        model_.records[next_++] = {kind, leaf, first_, model_.tokens.size() - first_};
        first_ = model_.tokens.size();
        return true;
    }

private:
    void startSubRecord() { model_.subRecords.push_back(model_.tokens.size() - 1); }

    SatModel& model_;
    std::size_t first_ = 0, next_ = 0;
    bool brace_ = false; ///< behind an opening brace
};

// ---- text ------------------------------------------------------------------------------------------

class TextSplitter {
public:
    TextSplitter(std::string_view data, SatModel& model) : data_(data), collector_(model) {}

    void run() {
        if (!head()) return;
        while (record()) {
        }
    }

private:
    std::string_view word() {
        while (at_ < data_.size() && isBlank(data_[at_])) ++at_;
        const std::size_t from = at_;
        constexpr std::string_view marks = "{}#";
        if (at_ < data_.size() && marks.find(data_[at_]) != marks.npos) return data_.substr(at_++, 1);
        while (at_ < data_.size() && !isBlank(data_[at_]) && marks.find(data_[at_]) == marks.npos) ++at_;
        return data_.substr(from, at_ - from);
    }
    static bool isNumber(std::string_view text, double& number) {
        if (!text.empty() && text[0] == '+') text.remove_prefix(1);
        const auto end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, number);
        return !text.empty() && result.ptr == end && result.ec == std::errc();
    }
    /// Skips a counted string: "@5 hello", or "5 hello" in older files.
    bool skipString(std::string_view count) {
        double size = 0;
        if (!count.empty() && count[0] == '@') count.remove_prefix(1);
        if (!isNumber(count, size) || size < 0 || size > static_cast<double>(data_.size() - at_))
            return false;
        at_ = std::min(at_ + 1 + static_cast<std::size_t>(size), data_.size());
        return true;
    }
    bool head() {
        constexpr int firstWithProduct = 200;
        double version = 0, ignored = 0;
        if (!isNumber(word(), version)) return false;
        for (int i = 0; i < 3; ++i)
            if (!isNumber(word(), ignored)) return false;
        if (version < firstWithProduct) return true;
        for (int i = 0; i < 3; ++i)
            if (!skipString(word())) return false;
        for (int i = 0; i < 3; ++i)
            if (!isNumber(word(), ignored)) return false;
        return true;
    }
    bool record() {
        std::string_view name = word();
        double number = 0;
        std::int64_t explicitNumber = -1;
        if (isNumber(name, number)) {
            if (!(number <= 0) || number < -1e9) return false;
            explicitNumber = static_cast<std::int64_t>(-number);
            name = word();
        }
        if (name.empty() || name.starts_with("End-of-") || name.starts_with("Begin-of-")) return false;
        for (std::string_view text = word(); text != "#"; text = word())
            if (text.empty() || !token(text)) return false;
        return collector_.end(name.substr(0, name.find('-')), lastPart(name), explicitNumber, data_.size());
    }
    bool token(std::string_view text) {
        SatToken token{SatKind::Word, 0, text};
        if (text[0] == '@' && text.size() > 1) return skipString(text);
        if (text == "{")
            token.kind = SatKind::Open;
        else if (text == "}")
            token.kind = SatKind::Close;
        else if (text[0] == '$' && isNumber(text.substr(1), token.number))
            token.kind = SatKind::Pointer;
        else if (isNumber(text, token.number))
            token.kind = SatKind::Number;
        collector_.add(token);
        return true;
    }

    std::string_view data_;
    std::size_t at_ = 0;
    Collector collector_;
};

// ---- binary ----------------------------------------------------------------------------------------

constexpr std::size_t banner = 15;

class BinarySplitter {
public:
    BinarySplitter(std::string_view data, SatModel& model) : data_(data), at_(banner), collector_(model) {}

    void run() {
        constexpr std::size_t counts = 16;
        at_ += counts;
        for (int i = 0; i < 6; ++i)
            if (!value(true)) return;
        while (record()) {
        }
    }

private:
    template <class Number>
    bool take(Number& number) {
        if (data_.size() - at_ < sizeof number) return false;
        std::memcpy(&number, data_.data() + at_, sizeof number);
        at_ += sizeof number;
        return true;
    }
    template <class Length>
    bool takeText(std::string_view& text) {
        Length length = 0;
        if (!take(length) || length > data_.size() - at_) return false;
        text = data_.substr(at_, length);
        at_ += length;
        return true;
    }
    bool record() {
        constexpr unsigned char lastPartTag = 13, partTag = 14, endTag = 17;
        std::string_view leaf, part;
        unsigned char tag = 0;
        do {
            if (!take(tag) || (tag != partTag && tag != lastPartTag) || !takeText<std::uint8_t>(part))
                return false;
            if (leaf.empty()) leaf = part;
        } while (tag != lastPartTag);
        while (at_ < data_.size() && static_cast<unsigned char>(data_[at_]) != endTag)
            if (!value(false)) return false;
        if (at_ == data_.size()) return false;
        ++at_;
        return collector_.end(leaf, part, -1, data_.size());
    }
    template <class Number>
    bool number(SatKind kind, bool isIgnored, int count = 1) {
        for (int i = 0; i < count; ++i) {
            Number read{};
            if (!take(read)) return false;
            if (!isIgnored) collector_.add({kind, static_cast<double>(read), {}});
        }
        return true;
    }
    bool put(SatKind kind, double number = 0) {
        collector_.add({kind, number, {}});
        return true;
    }
    template <class Length>
    bool word(bool isIgnored) {
        std::string_view text;
        if (!takeText<Length>(text)) return false;
        if (!isIgnored) collector_.add({SatKind::Word, 0, text});
        return true;
    }
    /// One value by its tag. `isIgnored`: of the head.
    bool value(bool isIgnored) {
        unsigned char tag = 0;
        if (at_ >= data_.size() || !take(tag)) return false;
        switch (tag) {
        case 4:
        case 21: return number<std::int32_t>(SatKind::Number, isIgnored);
        case 6: return number<double>(SatKind::Number, isIgnored);
        case 7: return word<std::uint8_t>(isIgnored);
        case 8: return word<std::uint16_t>(isIgnored);
        case 9:
        case 18: return word<std::uint32_t>(isIgnored);
        case 10:
        case 11: return put(SatKind::Logical, tag == 10);
        case 12: return number<std::int32_t>(SatKind::Pointer, isIgnored);
        case 13:
        case 14: return word<std::uint8_t>(isIgnored);
        case 15: return put(SatKind::Open);
        case 16: return put(SatKind::Close);
        case 19:
        case 20: return number<double>(SatKind::Number, isIgnored, 3);
        case 22: return number<double>(SatKind::Number, isIgnored, 2);
        case 23: return number<std::int64_t>(SatKind::Number, isIgnored);
        default: return false;
        }
    }

    std::string_view data_;
    std::size_t at_;
    Collector collector_;
};

} // namespace

const SatRecord* SatModel::at(const SatToken& pointer) const {
    if (pointer.kind != SatKind::Pointer || !(pointer.number >= 0)) return nullptr;
    if (pointer.number >= static_cast<double>(records.size())) return nullptr;
    const SatRecord& record = records[static_cast<std::size_t>(pointer.number)];
    return record.kind.empty() ? nullptr : &record;
}

SatModel splitSat(std::string_view data) {
    constexpr std::size_t smallest = banner + 1;
    SatModel model;
    if (data.size() < smallest) return model;
    const std::string_view start = data.substr(0, banner);
    if (start == "ACIS BinaryFile" || start == "ASM BinaryFile4") {
        constexpr std::size_t head = 31;
        if (data.size() > head) BinarySplitter(data, model).run();
    } else {
        TextSplitter(data, model).run();
    }
    return model;
}

} // namespace host
