#include "record.h"

#include "text.h"

namespace repair {

int handleCode(std::string_view kind) {
    return kind == "DIMSTYLE" ? 105 : 5;
}

void Record::erase(size_t from, size_t count) {
    const auto at = pairs.begin() + static_cast<std::ptrdiff_t>(from);
    pairs.erase(at, at + static_cast<std::ptrdiff_t>(count));
}

Pair* Record::find(int code) {
    for (size_t i = 1; i < pairs.size() && pairs[i].code < 1000; ++i)
        if (pairs[i].code == code) return &pairs[i];
    return nullptr;
}

std::string_view Record::text(int code) const {
    const Pair* pair = find(code);
    return pair ? validate::trimmed(pair->value) : std::string_view{};
}

int64_t Record::integer(int code, int64_t otherwise) const {
    const Pair* pair = find(code);
    return pair ? validate::readInteger(pair->value).value_or(otherwise) : otherwise;
}

size_t Record::extendedStart() const {
    size_t end = pairs.size();
    if (kind() == "XRECORD") return end; // may hold such groups as data
    while (end > 1 && pairs[end - 1].code >= 1000) --end;
    return end;
}

size_t Record::bodyStart() const {
    const size_t end = extendedStart();
    bool hasHandle = false, hasOwner = false;
    size_t i = 1;
    for (; i < end; ++i) {
        const int code = pairs[i].code;
        if (code == handleCode(kind()) && !hasHandle) {
            hasHandle = true;
        } else if (code == 330 && !hasOwner) {
            hasOwner = true;
        } else if (code == 102) {
            size_t close = i + 1;
            while (close < end && pairs[close].code != 102 && pairs[close].code != 100) ++close;
            if (close == end || pairs[close].code == 100) return i;
            i = close;
        } else if (code != 999) {
            return i;
        }
    }
    return i;
}

Pair* Record::handlePair() {
    const size_t end = extendedStart();
    for (size_t i = 1; i < end && pairs[i].code != 100; ++i)
        if (pairs[i].code == handleCode(kind())) return &pairs[i];
    return nullptr;
}

uint64_t Record::handle() const {
    const Pair* pair = const_cast<Record*>(this)->handlePair();
    return pair ? validate::readHandle(pair->value).value_or(0) : 0;
}

Pair* Record::ownerPair() {
    const size_t body = bodyStart();
    bool inGroup = false;
    for (size_t i = 1; i < body; ++i) {
        if (pairs[i].code == 102)
            inGroup = !inGroup;
        else if (pairs[i].code == 330 && !inGroup)
            return &pairs[i];
    }
    return nullptr;
}

uint64_t Record::owner() const {
    const Pair* pair = const_cast<Record*>(this)->ownerPair();
    return pair ? validate::readHandle(pair->value).value_or(0) : 0;
}

} // namespace repair
