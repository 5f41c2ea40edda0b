#include "drawing/objects.h"

#include <cstdint>

namespace host {

_ObObject* objectOf(int patNo) {
    return reinterpret_cast<_ObObject*>(static_cast<std::uintptr_t>(patNo));
}

static_assert(sizeof(std::uintptr_t) == 8, "numbers of patterns and of details share a pointer");

int patternOf(const _ObObject* object) {
    return static_cast<int>(reinterpret_cast<std::uintptr_t>(object));
}

_ObObject* objectOfInsert(int number) {
    return reinterpret_cast<_ObObject*>(static_cast<std::uintptr_t>(number) << 32);
}

int insertOf(const _ObObject* object) {
    return static_cast<int>(reinterpret_cast<std::uintptr_t>(object) >> 32);
}

} // namespace host
