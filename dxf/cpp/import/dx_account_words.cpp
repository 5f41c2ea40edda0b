// The account in words.
#include "../session/dx_messages.h"
#include "../session/session_state.h"
#include "dx_unseen.h"

#include <algorithm>
#include <iterator>

namespace {

struct Word {
    std::string_view key;
    int message;
};

/// In the order of DxReason.
constexpr Word WORDS[] = {
    {"", 0},
    {"layer off", 20011},
    {"layer frozen", 20012},
    {"invisible", 20013},
    {"points not shown", 20014},
    {"fills not shown", 20025},
    {"attribute definition", 20015},
    {"window of the sheet", 20016},
    {"no reader", 20017},
    {"other space", 20018},
    {"block not found", 20019},
    {"recursive block", 20020},
    {"nested too deeply", 20021},
    {"inserted nowhere", 20022},
    {"nothing to draw", 20023},
    {"import ended before", 20024},
};
static_assert(std::size(WORDS) == static_cast<std::size_t>(DxReason::Ended) + 1);

const Word& wordOf(DxReason reason) {
    return WORDS[static_cast<std::size_t>(reason)];
}

/// Entities of another space count as one, whatever their kind.
std::string spaceText(const DxUnseen& row) {
    const int number = static_cast<int>(row.count);
    if (row.kind == "LAYOUT") return DxMsg(20004, number, row.example.name.c_str()).str();
    return DxMsg(DxReadSpace == 1 ? 20006 : 20005, number).str();
}

std::string rowText(const DxUnseen& row) {
    if (row.reason == DxReason::OtherSpace) return spaceText(row);
    return DxMsg(row.inBlocks ? 20007 : 20003, static_cast<int>(row.count), row.kind.c_str(),
                 DxReasonText(row.reason).c_str())
        .str();
}

bool isOfOtherSpace(const DxUnseen& row) {
    return row.reason == DxReason::OtherSpace && row.kind != "LAYOUT";
}

/// The rows to tell, the largest first, with those of the other space as one.
std::vector<DxUnseen> rowsToTell(const std::vector<DxUnseen>& unseen, bool hidden) {
    std::vector<DxUnseen> rows;
    for (const DxUnseen& row : unseen) {
        if (DxIsHidden(row.reason) != hidden) continue;
        const auto known =
            isOfOtherSpace(row) ? std::find_if(rows.begin(), rows.end(), isOfOtherSpace) : rows.end();
        if (known == rows.end())
            rows.push_back(row);
        else
            known->count += row.count;
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const DxUnseen& a, const DxUnseen& b) { return a.count > b.count; });
    return rows;
}

/// What every drawing has and no user misses.
bool isMatterOfCourse(const DxUnseen& row) {
    return row.reason == DxReason::SheetWindow || row.reason == DxReason::Definition;
}

} // namespace

std::string_view DxReasonKey(DxReason reason) {
    return wordOf(reason).key;
}

std::string DxReasonText(DxReason reason) {
    return DxMsgText(wordOf(reason).message).str();
}

std::string DxAccountLine(const std::vector<DxUnseen>& unseen, bool hidden) {
    constexpr std::size_t rowsTold = 8;
    std::vector<DxUnseen> rows = rowsToTell(unseen, hidden);
    std::erase_if(rows, isMatterOfCourse);
    std::string list;
    long more = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i >= rowsTold)
            more += rows[i].count;
        else
            list += (i ? ", " : "") + rowText(rows[i]);
    }
    if (list.empty()) return {};
    if (more) list += ", " + DxMsg(20008, static_cast<int>(more)).str();
    return DxMsg(hidden ? 20002 : 20001, list.c_str()).str();
}
