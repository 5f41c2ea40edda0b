// Pens that an import has given to looks.
#pragma once

#include "pens.h"

#include <cstdint>
#include <map>

extern std::map<std::uint64_t, int> DxLookPens; ///< pen by look, packed
extern int DxNextLookPen;                       ///< that may be free

void DxResetLooksState();
