// Hidden-line images of patterns.
#pragma once

/// Draws the hidden-line image of each pattern of the drawing into that pattern. A failure doesn't stop the
/// walk; the first one is the result, else 0.
int DxHiddPats();
