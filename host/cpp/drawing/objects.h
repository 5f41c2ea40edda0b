// The host's opaque object pointers.
#pragma once

#include "ds.h"

namespace host {

/// A pattern's number as the pointer that the host hands out for it; no memory stands behind it, so that a
/// pointer to a deleted pattern does no harm.
_ObObject* objectOf(int patNo);
int patternOf(const _ObObject* object); ///< 0 for null and for what isn't a pattern
/// The same for a detail view on a sheet.
_ObObject* objectOfInsert(int number);
int insertOf(const _ObObject* object);

} // namespace host
