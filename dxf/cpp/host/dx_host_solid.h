// Solids on their way to the host and back.
#pragma once

#include "ci_3d.h"
#include "rpt.h"
#include "ut_string.h"

/// How a solid is shown.
struct DX_SOLID_LOOK {
    int pen, lineType;
    MatDbKey material;
    unsigned long number; ///< of the material
};

/// Brings a model's file into the active pattern, or beside it where &Dxf3DSolidsAsSubObjects is off.
/// `matrix` takes it to the active space, ahead of the shift. The host's answer: 0 and 10 for a solid.
int DxCiReadSat(const UtCString& path, const DX_SOLID_LOOK& look, const Mat44 matrix);

/// Solid `index` of a pattern; its matrix takes the model to the drawing's unit. 1005 when there is none.
int DxCiGetSolid(int patNo, int index, CI_SOLID* solid);
/// Makes a material of the host, with the file of its picture or none. 0 or the host's error.
int DxCiCreateVisMaterial(const UtCString& name, const RENDERING_ENGINE::MATERIAL& material,
                          const UtCString& picture, MatDbKey& key, unsigned long& number);
