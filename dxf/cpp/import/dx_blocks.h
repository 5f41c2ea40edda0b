// The BLOCKS section on import.
#pragma once

/// Passes over the BLOCKS section; no block is kept so far. Entered behind 0 / "SECTION", leaves the reader
/// behind the next one. A missing section is a warning. 0 or the reader's error.
int DxReadBlockSection();
