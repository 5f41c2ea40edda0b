#include "dx_account.h"

#include "../config/config_state.h"
#include "../session/dx_documents.h"
#include "../session/session_state.h"
#include "dx_account_blocks.h"
#include "dx_account_place.h"
#include "import_state.h"

#include <iterator>
#include <utility>

namespace {

constexpr std::size_t namesKept = 1000;

using Tallies = std::map<std::string, DxEntityTally, std::less<>>;

DxCounted byName(Tallies& tallies, std::string_view name) {
    auto found = tallies.find(name);
    if (found == tallies.end())
        found = tallies.try_emplace(tallies.size() < namesKept ? std::string(name) : "…").first;
    return {&found->second, found->first};
}

/// Entities of paper space are met in the pass of model space too, and settled in their own.
bool readsBothSpaces() {
    return DxReadSpace == 2;
}

void add(const DxCounted& counted, DxReason reason, long count, const DxPlace& place) {
    auto& rows = DxReport.unseen;
    const auto [entry, isNew] = DxAccountRows.try_emplace({counted.tally, reason}, rows.size());
    if (isNew) {
        DxUnseen& row = rows.emplace_back();
        row.kind = counted.name;
        row.reason = reason;
        row.inBlocks = DxBlockLevel > 0;
        row.example = DxExampleAt(place);
        if (reason == DxReason::LayerOff || reason == DxReason::LayerFrozen)
            row.example.name = DxActLayer.view();
    }
    rows[entry->second].count += count;
}

void book(const DxCounted& counted, DxReason reason, long count, const DxPlace& place) {
    DxEntityTally& tally = *counted.tally;
    (reason == DxReason::None ? tally.drawn : DxIsHidden(reason) ? tally.hidden : tally.lost) += count;
    if (reason != DxReason::None) add(counted, reason, count, place);
}

} // namespace

DxEntityAccount::DxEntityAccount(const DxCounted& counted)
    : counted_(counted), outerDrawn_(DxEntityDrawn), outerReason_(DxEntityReason),
      isInBlock_(DxBlockLevel > 0), place_{DxDocuments.current_, DxReadTell()} {
    DxEntityDrawn = DxEntityInSpace = 0;
    DxEntityReason = DxReason::None;
    if (!isInBlock_) DxEntityPartCount = 0;
    if (isInBlock_ || DxCountEntities) ++counted.tally->read;
}

void DxEntityAccount::settleUnread() const {
    if (isInBlock_ || DxCountEntities) book(counted_, DxReason::NoReader, 1, place_);
}

DxReason DxEntityAccount::reasonOf(int error) const {
    if (DxEntityDrawn) return DxReason::None;
    if (DxEntityReason != DxReason::None) return DxEntityReason;
    return error ? DxReason::Ended : DxReason::Nothing;
}

void DxEntityAccount::settlePart(const DxCounted& counted, long count, DxReason reason) const {
    if (!isInBlock_ && readsBothSpaces()) {
        if (DxCountEntities && reason == DxReason::OtherSpace) {
            counted.tally->waiting += count;
            return;
        }
        if (!DxCountEntities) {
            if (!DxEntityInSpace || counted.tally->waiting < count) return;
            counted.tally->waiting -= count;
        }
    }
    book(counted, reason, count, place_);
}

void DxEntityAccount::settle(int error) const {
    const DxReason reason = reasonOf(error);
    settlePart(counted_, 1, reason);
    if (isInBlock_) {
        DxEntityDrawn |= outerDrawn_;
        DxEntityReason = outerReason_;
        return;
    }
    for (int i = 0; i < DxEntityPartCount; ++i)
        settlePart({DxEntityParts[i].tally, DxEntityParts[i].name}, DxEntityParts[i].count, reason);
}

void DxCountPart(std::string_view name) {
    if (DxBlockLevel > 0) return;
    const auto [tally, known] = DxCountedAs(DxFindEntityKind(name), name);
    if (!tally) return;
    int i = 0;
    while (i < DxEntityPartCount && DxEntityParts[i].tally != tally) ++i;
    if (i == static_cast<int>(std::size(DxEntityParts))) return;
    if (DxCountEntities) ++tally->read;
    if (i == DxEntityPartCount) DxEntityParts[DxEntityPartCount++] = {tally, known, 0};
    ++DxEntityParts[i].count;
}

bool DxIsUncounted(const DX_BLOCK_TYPE& block) {
    return !DxCheckPass && !block.isCounted;
}

DxBlockAccount::DxBlockAccount()
    : outer_(DxAccountsBlock), block_(DxBlockLevel > 0 ? DxActLevel.block : nullptr) {
    if (block_ && !DxIsUncounted(*block_)) block_ = nullptr;
    DxAccountsBlock = block_ ? 1 : 0;
}

DxBlockAccount::~DxBlockAccount() {
    if (block_) block_->isCounted = true;
    DxAccountsBlock = outer_;
}

static void finishWaiting(const DxCounted& counted, DxReason reason) {
    const long waiting = std::exchange(counted.tally->waiting, 0);
    if (waiting > 0) book(counted, reason, waiting, {});
}

void DxFinishAccount(int outcome) {
    const DxReason reason = outcome ? DxReason::Ended : DxReason::OtherSpace;
    for (std::size_t i = 0; i < DxKindTally.size(); ++i)
        finishWaiting({&DxKindTally[i], DxKinds[i].name}, reason);
    for (auto& [name, tally] : DxReport.entities) finishWaiting({&tally, name}, reason);
    if (!outcome) DxAccountBlocks();
}

DxCounted DxCountedAs(const DxEntityKind* kind, std::string_view name) {
    if (DxCheckPass || (DxBlockLevel > 0 && !DxAccountsBlock)) return {nullptr, {}};
    if (DxBlockLevel > 0) return byName(DxReport.blockEntities, name);
    if (kind) return {&DxKindTally[static_cast<std::size_t>(kind - DxKinds)], kind->name};
    return byName(DxReport.entities, name);
}
