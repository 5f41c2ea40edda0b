// Hidden-line images of patterns.
#pragma once

/// Replaces patterns by their hidden-line images. This build can't: it says so, and &DxfStat becomes 3011.
void DxHiddPats();
