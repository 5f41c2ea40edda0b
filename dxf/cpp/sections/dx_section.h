// What all section readers do at their start.
#pragma once

/// Enters section `name`, with the reader behind 0 / "SECTION": clears the document's sectionSeen, and sets
/// it when the next pair is 2 / `name`. If it isn't, the pair is handed back for the next section's reader
/// and the protocol warns that `shownName` is missing (`name` when null). 0 or the reader's error.
int DxEnterSection(const char* name, bool& found, const char* shownName = nullptr);

/// Skips to the end of the section, behind its 0 / "ENDSEC". 0 or the reader's error.
int DxSkipSection();
