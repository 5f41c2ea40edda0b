// The OBJECTS section on import.
#pragma once

/// Reads the OBJECTS section of the current document and marks it as read (objectsRead). No object kind is
/// taken from it so far. Entered behind 0 / "SECTION", ends behind 0 / "ENDSEC". A missing section is a
/// warning. 0 or the reader's error.
int DxReadObjectsSection();
