// Memory blocks that know their size, so that growing them can clear what is new.
#include "ut.h"

#include "services/failure.h"

#include <cstdlib>
#include <cstring>

namespace {

/// Stands in front of each block; as large as the strictest alignment, so that the block is aligned too.
struct alignas(std::max_align_t) BlockHeader {
    std::size_t bytes;
};

BlockHeader* headerOf(void* block) {
    return block ? static_cast<BlockHeader*>(block) - 1 : nullptr;
}

} // namespace

int UtAllocMemoryBlock(void** block, std::size_t count, std::size_t size, int /*grow*/, int /*flags*/) {
    constexpr int errorNoMemory = 1001;
    std::size_t bytes = 0;
    std::size_t whole = 0;
    if (host::callFails() || __builtin_mul_overflow(count, size, &bytes) ||
        __builtin_add_overflow(bytes, sizeof(BlockHeader), &whole))
        return errorNoMemory;
    BlockHeader* old = headerOf(*block);
    const std::size_t known = old ? old->bytes : 0;
    if (old && bytes <= known) return 0;
    // Fresh memory of the system is zero already, which calloc knows.
    void* const memory = old ? std::realloc(old, whole) : std::calloc(1, whole); // NOLINT: old is kept
    auto* header = static_cast<BlockHeader*>(memory);
    if (!header) return errorNoMemory;
    header->bytes = bytes;
    *block = header + 1;
    if (old) std::memset(static_cast<char*>(*block) + known, 0, bytes - known);
    return 0;
}

void UtFreeMemory(void** block) {
    std::free(headerOf(*block));
    *block = nullptr;
}

void UtSetMemoryParameter(const char* /*mode*/) {}
