#include "drawing/objects.h"

#include <cstdint>

namespace host {

_ObObject* objectOf(int patNo) {
    return reinterpret_cast<_ObObject*>(static_cast<std::uintptr_t>(patNo));
}

int patternOf(const _ObObject* object) {
    return static_cast<int>(reinterpret_cast<std::uintptr_t>(object));
}

} // namespace host
