#include "dx_expansion.h"

#include "blocks_state.h"
#include "dx_account.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace {

constexpr double UNCOUNTED = -1, BEING_COUNTED = -2;

/// A block whose INSERTs are being counted. The blocks on the way to it have frames below.
struct Frame {
    DX_BLOCK_TYPE* block;
    std::size_t order;    ///< in which blocks were met
    std::size_t earliest; ///< order of the first block that this one is known to lead back to
    std::size_t left;     ///< blocks in Counting::open_ that are none of this one's
    std::size_t next;     ///< of its INSERTs
    double sum;
    bool holdsNothing;
    bool leadsToRing;
};

/// Whether all entities are INSERTs, and of blocks that can be looked into.
bool holdsInsertsOnly(const DX_BLOCK_TYPE& block) {
    constexpr int externalReference = 4;
    double inserts = 0;
    for (const DX_NESTED_INSERTS& nested : block.inserts) inserts += nested.count;
    return inserts == block.entities && !(block.flags & externalReference);
}

/// The INSERTs of a block by its own document's names. Depth is the file's to decide: no recursion. Blocks
/// that lead to each other are settled together, with what all of them hold counted once.
class Counting {
public:
    double run(DX_BLOCK_TYPE& block) {
        enter(block);
        while (!frames_.empty()) step();
        return block.expanded;
    }

private:
    void enter(DX_BLOCK_TYPE& block) {
        const std::size_t order = orders_.size();
        orders_[&block] = order;
        block.expanded = BEING_COUNTED;
        frames_.push_back(
            {&block, order, order, open_.size(), 0, block.entities, holdsInsertsOnly(block), false});
    }

    void step() {
        Frame& frame = frames_.back();
        if (frame.next == frame.block->inserts.size()) return leave();
        const DX_NESTED_INSERTS& inserts = frame.block->inserts[frame.next];
        DX_BLOCK_TYPE* inner = frame.block->document->findBlockOutwards(inserts.block);
        if (inner && inner->expanded == UNCOUNTED) return enter(*inner);
        ++frame.next;
        if (inner && inner->holdsNothing) return;
        frame.holdsNothing = false; // what can't be inserted is told
        if (!inner) return;
        if (inner->expanded == BEING_COUNTED) {
            frame.earliest = std::min(frame.earliest, orders_[inner]);
            frame.leadsToRing = true;
        } else {
            frame.sum += inserts.count * inner->expanded;
            frame.leadsToRing |= inner->leadsToRing;
        }
    }

    /// All INSERTs of the block have been met. One that leads back to a block further out is settled with
    /// that.
    void leave() {
        const Frame frame = frames_.back();
        frames_.pop_back();
        open_.push_back(frame.block);
        if (frame.earliest == frame.order) return settle(frame);
        Frame& around = frames_.back();
        around.earliest = std::min(around.earliest, frame.earliest);
        around.sum += frame.sum;
    }

    void settle(const Frame& frame) {
        for (; open_.size() > frame.left; open_.pop_back()) {
            DX_BLOCK_TYPE& block = *open_.back();
            block.expanded = frame.sum;
            block.holdsNothing = frame.holdsNothing;
            block.leadsToRing = frame.leadsToRing;
        }
    }

    std::vector<Frame> frames_;
    std::vector<DX_BLOCK_TYPE*> open_; ///< left, but of a ring that isn't settled
    std::unordered_map<const DX_BLOCK_TYPE*, std::size_t> orders_;
};

/// The entities of the block in memory, once it has turned out to be drawn often. Null while it is read from
/// the file.
const DxStoredEntities* storedEntities(DX_BLOCK_TYPE& block, const char* end) {
    constexpr int walksFromFile = 2;
    constexpr std::size_t mostBytes = std::size_t{64} << 20;
    if (block.stored || !block.canBeStored || block.walks++ < walksFromFile) return block.stored.get();
    const std::int32_t start = DxReadTell();
    block.stored = DxStoreEntities(end, mostBytes - DxStoredBytes);
    block.canBeStored = block.stored != nullptr;
    if (block.stored)
        DxStoredBytes += block.stored->bytes;
    else
        DxReadSeek(start);
    return block.stored.get();
}

/// What may be read of a block that leads to a ring without a question; one ring never needs more.
long entitiesOfRing(const DX_BLOCK_TYPE& block) {
    constexpr double factor = 4;
    return static_cast<long>(factor * block.expanded);
}

} // namespace

double DxExpandedEntities(DX_BLOCK_TYPE& block) {
    return block.expanded == UNCOUNTED ? Counting().run(block) : block.expanded;
}

long DxMostEntities(DX_BLOCK_TYPE& block) {
    constexpr long ringShare = 100'000;
    const double expanded = DxExpandedEntities(block);
    if (expanded > DX_ENDLESS_BLOCK) return DX_ENDLESS_BLOCK_SHARE;
    if (!block.leadsToRing) return 0;
    return std::max(1L, std::min(ringShare, DxRingEntitiesLeft)) + entitiesOfRing(block);
}

void DxCountRing(const DX_BLOCK_TYPE& block, long read) {
    if (block.leadsToRing) DxRingEntitiesLeft -= std::max(0L, read - entitiesOfRing(block));
}

bool DxHoldsNothing(DX_BLOCK_TYPE& block) {
    return DxExpandedEntities(block) >= 0 && block.holdsNothing;
}

int DxDrawBlockEntities(DX_BLOCK_TYPE& block, const char* end, const Mat44 m) {
    const DxStoredEntities* stored = DxIsUncounted(block) ? nullptr : storedEntities(block, end);
    return stored ? DxDrawStored(*stored, m) : DxDrawCAD(end, m);
}
