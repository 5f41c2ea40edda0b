// The ACDSDATA section on import: the bodies of solids in files from AC1027 on.
#pragma once

/// Reads the ACDSDATA section of the current document and marks it as read (acdsRead). No record is taken
/// from it so far. Entered behind 0 / "SECTION", ends behind 0 / "ENDSEC". A missing section is a warning. 0
/// or the reader's error.
int DxReadAcdsSection();
