#include "dx_active_pattern.h"

#include "dx_host.h"

DxPatternScope::DxPatternScope(int entry)
    : error_(DxReturnToPat(entry, DxPatTable[static_cast<std::size_t>(entry)].number)) {}

int DxPatternScope::leave() {
    if (isLeft_) return 0;
    isLeft_ = true;
    return DxReturnToPat(entry_, number_);
}
