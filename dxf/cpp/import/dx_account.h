// Keeping the account of an import: each entity that a drawing pass meets ends as drawn, hidden or lost.
#pragma once

#include "../session/dx_documents.h"
#include "dx_account_place.h"
#include "dx_entity_walk.h"

/// Where entities of a kind are counted.
struct DxCounted {
    DxEntityTally* tally; ///< null: they aren't
    std::string_view name;
};
/// Counted are those of the section, and those of a block that is walked for the first time, in passes that
/// draw. `kind` is null for an unknown one.
DxCounted DxCountedAs(const DxEntityKind* kind, std::string_view name);

/// Follows one entity that is counted, from its group 0 on.
class DxEntityAccount {
public:
    /// The reader stands behind the group 0.
    explicit DxEntityAccount(const DxCounted& counted);
    DxEntityAccount(const DxEntityAccount&) = delete;
    DxEntityAccount& operator=(const DxEntityAccount&) = delete;
    /// What became of it, by what its stages noted. `error` is theirs.
    void settle(int error) const;
    /// Nothing reads it.
    void settleUnread() const;

private:
    DxReason reasonOf(int error) const;
    void settlePart(const DxCounted& counted, long count, DxReason reason) const;

    DxCounted counted_;
    int outerDrawn_;
    DxReason outerReason_;
    bool isInBlock_;
    DxPlace place_;
};

/// Holds while a block's entities are walked: the first walk that draws is counted.
class DxBlockAccount {
public:
    DxBlockAccount();
    ~DxBlockAccount();
    DxBlockAccount(const DxBlockAccount&) = delete;
    DxBlockAccount& operator=(const DxBlockAccount&) = delete;

private:
    int outer_;
    const DX_BLOCK_TYPE* block_; ///< that this walk counts, else null
};
/// Whether a walk that draws will count the entities of the block.
bool DxIsUncounted(const DX_BLOCK_TYPE& block);

/// A reader calls this behind the group 0 of an entity that it reads as part of its own, such as a vertex:
/// it is counted too, and shares the fate of the whole.
void DxCountPart(std::string_view name);

/// The end of an import, while its documents are open: what was never met goes to the account.
void DxFinishAccount(int outcome);
