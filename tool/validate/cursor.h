#pragma once
// Walks the groups of one subclass part in order, for kinds in which the order carries the meaning.

#include "session.h"
#include "text.h"

namespace validate {

class Cursor {
public:
    /// At the first group behind the marker; behind the head when the record has no markers. Ends at the next
    /// marker, at an embedded object or at the extended data.
    Cursor(const Record& record, std::string_view marker)
        : tags_(record.tags), at_(record.body), end_(record.extended) {
        if (!record.flat) {
            while (at_ < end_ && !(tags_[at_].code == 100 && tags_[at_].value == marker)) ++at_;
            if (at_ < end_) ++at_;
        }
        for (size_t i = at_; i < end_; ++i)
            if ((tags_[i].code == 100 && !record.flat) || tags_[i].code == 101) end_ = i;
    }

    bool atEnd() const { return at_ >= end_; }
    int code() const { return atEnd() ? -1 : tags_[at_].code; }
    /// The group at hand; the last group of the record at the end.
    const Tag& tag() const { return tags_[atEnd() ? (end_ ? end_ - 1 : 0) : at_]; }
    int64_t integer() const { return atEnd() ? 0 : readInteger(tag().value).value_or(0); }
    double real() const { return atEnd() ? 0 : readReal(tag().value); }
    void step() { ++at_; }

    /// Steps over a group of this code; false when another one is at hand.
    bool take(int wanted) {
        if (code() != wanted) return false;
        step();
        return true;
    }
    /// Steps over a point with two coordinates.
    bool takePoint(int wanted) { return take(wanted) && take(wanted + 10); }
    /// Goes on to the next group of this code; false, and at the end, without one.
    bool skipTo(int wanted) {
        while (!atEnd() && code() != wanted) step();
        return !atEnd();
    }

private:
    std::span<const Tag> tags_;
    size_t at_, end_;
};

} // namespace validate
