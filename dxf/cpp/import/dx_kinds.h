// The table of entity kinds.
#pragma once

#include "dx_entity_walk.h"

/// All kinds of entities that the import knows, sorted by name.
std::span<const DxEntityKind> DxEntityKinds();
/// Hands them to the walk.
void DxRegisterKinds();
