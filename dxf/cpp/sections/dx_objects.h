// The OBJECTS section.
#pragma once

/// Reads the OBJECTS section, entered in front of 2 / "OBJECTS"; stands behind its 0 / "ENDSEC" when done.
/// All objects are passed over yet. 0 or the reader's error; a missing section is a warning.
int DxReadObjectsSection();
