// The ACDSDATA section: models of solids.
#pragma once

/// Reads the ACDSDATA section, entered in front of 2 / "ACDSDATA"; stands behind its 0 / "ENDSEC" when done.
/// Its records are passed over yet. 0 or the reader's error.
int DxReadAcdsSection();
int DxReadAcdsFree(); ///< Frees the records and the queue of solids. 0.
