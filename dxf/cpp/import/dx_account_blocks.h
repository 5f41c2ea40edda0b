// Blocks and layouts that an import passed over as a whole.
#pragma once

/// Adds them to the account of an import that read its file to the end.
void DxAccountBlocks();
