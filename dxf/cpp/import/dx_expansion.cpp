#include "dx_expansion.h"

#include "blocks_state.h"
#include "dx_account.h"

#include <vector>

namespace {

constexpr double UNCOUNTED = -1, BEING_COUNTED = -2;

/// A block whose INSERTs are being counted.
struct Frame {
    DX_BLOCK_TYPE* block;
    std::size_t next; ///< of its INSERTs
    double sum;
    bool holdsNothing;
};

/// Whether all entities are INSERTs, and of blocks that can be looked into.
bool holdsInsertsOnly(const DX_BLOCK_TYPE& block) {
    constexpr int externalReference = 4;
    double inserts = 0;
    for (const DX_NESTED_INSERTS& nested : block.inserts) inserts += nested.count;
    return inserts == block.entities && !(block.flags & externalReference);
}

/// The INSERTs of a block by its own document's names. Depth is the file's to decide: no recursion.
class Counting {
public:
    double run(DX_BLOCK_TYPE& block) {
        enter(block);
        while (!frames_.empty()) step();
        return block.expanded;
    }

private:
    void enter(DX_BLOCK_TYPE& block) {
        block.expanded = BEING_COUNTED;
        frames_.push_back({&block, 0, block.entities, holdsInsertsOnly(block)});
    }
    void step() {
        Frame& frame = frames_.back();
        if (frame.next == frame.block->inserts.size()) {
            frame.block->expanded = frame.sum;
            frame.block->holdsNothing = frame.holdsNothing;
            frames_.pop_back();
            return;
        }
        const DX_NESTED_INSERTS& inserts = frame.block->inserts[frame.next];
        DX_BLOCK_TYPE* inner = frame.block->document->findBlockOutwards(inserts.block);
        if (inner && inner->expanded == UNCOUNTED) return enter(*inner);
        ++frame.next;
        if (inner && inner->holdsNothing) return;
        frame.holdsNothing = false; // what can't be inserted is told
        if (inner && inner->expanded > 0) frame.sum += inserts.count * inner->expanded;
    }

    std::vector<Frame> frames_;
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

} // namespace

double DxExpandedEntities(DX_BLOCK_TYPE& block) {
    return block.expanded == UNCOUNTED ? Counting().run(block) : block.expanded;
}

bool DxHoldsNothing(DX_BLOCK_TYPE& block) {
    return DxExpandedEntities(block) >= 0 && block.holdsNothing;
}

int DxDrawBlockEntities(DX_BLOCK_TYPE& block, const char* end, const Mat44 m) {
    const DxStoredEntities* stored = DxIsUncounted(block) ? nullptr : storedEntities(block, end);
    return stored ? DxDrawStored(*stored, m) : DxDrawCAD(end, m);
}
