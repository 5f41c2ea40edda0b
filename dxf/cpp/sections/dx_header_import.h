// The HEADER section on import.
#pragma once

#include "rpt.h"

/// Reads the HEADER section of the main file. Entered behind 0 / "SECTION", leaves the reader behind the next
/// one. `matrix`, the import's matrix, is replaced only with USE_UCS on. A missing section is a warning. 0 or
/// the reader's error.
int DxReadHeaderSection(Mat44 matrix);

/// Reads of the HEADER section of an external reference what its strings need: the document's version and
/// code page. Entered and left as above; a missing section leaves the pair to the next reader. 0 or the
/// reader's error.
int DxReadReferenceHeader();

/// The matrix that carries world coordinates into the user coordinate system of `origin` with the directions
/// `xDir` and `yDir`. Always 0; a system without an area gives a pure translation.
int DxHeaderUcsToMat(const RPT3& origin, const RPT3& xDir, const RPT3& yDir, Mat44 matrix);
