// Header variables that a drawing keeps from the file it came from.
#pragma once

/// Keeps the file's header variables in the drawing (macro variable &DxfHeader), with the reader just behind
/// the name of the HEADER section. Nothing is kept so far: it takes the host's multi-line texts. 0.
int DxHeaderMakeDrawingHeader();
