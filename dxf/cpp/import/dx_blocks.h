// The BLOCKS section.
#pragma once

/// Reads the BLOCKS section, entered in front of 2 / "BLOCKS"; stands behind the next 0 / "SECTION" when
/// done. The blocks are passed over: their definitions aren't kept yet. 0 or the reader's error; a missing
/// section is a warning.
int DxReadBlockSection();
