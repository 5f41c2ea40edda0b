// The frame of a section: its name, and the way past what isn't read of it.
#pragma once

/// Begins a section, with the reader in front of the pair 2 / name. `found` tells whether it is the section
/// of this name: then the document's sectionSeen becomes 1. Otherwise it becomes 0, a warning is reported
/// with `reportedName` and the pair waits to be read again. 0 or the reader's error.
int DxBeginSection(const char* name, const char* reportedName, bool* found);
/// Passes over the rest of a section, to behind 0 / "ENDSEC". 0 or the reader's error.
int DxSkipToEndOfSection();
