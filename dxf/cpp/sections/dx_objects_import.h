// The OBJECTS section: GEODATA, LAYOUT, IMAGEDEF and MATERIAL; all else is passed over.
#pragma once

/// Reads the section behind 0 / "SECTION", with a warning when it isn't one. A broken object costs that
/// object only. 0 or the reader's error.
int DxReadObjectsSection();

// Each reads the groups behind the object's name and adds a record to the current document (the material to
// DxMaterials). 0, the reader's error, or 2360 when a table can't grow.
int DxGetGEODATA();
int DxGetLayout();
int DxGetImageDef();
int DxGetMaterial();

/// Longest value that these readers take, and the 0 behind it.
inline constexpr int DX_OBJECT_VALUE = 2048;
