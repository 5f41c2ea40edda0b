#pragma once
// Checks that need the whole file: handles, owners, pointers, names, blocks, dictionaries.

#include "session.h"

namespace validate {

/// Handles twice or not below the seed, owners, pointers. Model::indexHandles() must have run.
void checkReferences(Session& session);

/// Names that nothing defines, records that each file needs.
void checkNames(Session& session);

/// Blocks against block records and layouts, blocks that insert themselves.
void checkBlocks(Session& session);

/// Root dictionary, layouts, pictures.
void checkDictionaries(Session& session);

/// Kinds of a later version, without their CLASS, or unknown.
void checkKinds(Session& session);

} // namespace validate
