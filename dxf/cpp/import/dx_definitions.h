// Blocks as definitions of the host: what kept INSERTs leave as their block.
#pragma once

/// Draws the blocks that DxWantDefinition was asked for, and those that they insert, each once. Behind a
/// pass. 0 or an error.
int DxDrawDefinitions();
