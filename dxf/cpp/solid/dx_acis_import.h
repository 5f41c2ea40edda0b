// Solid models of a drawing: 3DSOLID, REGION, SURFACE and BODY. The model is enciphered text in the entity,
// or binary in a section behind the entities; so a solid waits for the end of the pass.
#pragma once

#include "ci_3d.h"
#include "dx_3dsolid.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Reads the entity, entered behind its name. 0 or the reader's error.
int DxRead3dSolid(DX_3DSOLID_TYPE* solid);
/// The draw stage: notes the matrix and queues the solid.
int DxDraw3dSolidEntity(const DX_3DSOLID_TYPE* solid, const Mat44 matrix);
/// Queues a solid; its text is shared. Nothing while measuring. 0.
int DxAcisAddSolid(const DX_3DSOLID_TYPE* solid);
/// Deciphers a line of text in place: 159 less the character, but for blanks and tabs; "^ " is an A.
void DxAcisDecodeString(char* text, std::size_t* length);
/// The cipher of a line, as DxAcisDecodeString takes it back.
std::string DxAcisEncodeString(std::string_view text);

/// Makes the solid in the host, from the record if that has data, else from its text; `record` may be null. A
/// solid that can't be made is reported and lost. 0.
int DxDraw3d3dSolid(const DX_3DSOLID_TYPE* solid, const DX_ACDSRECORD_TYPE* record);
/// All solids of the queue, which is empty behind it.
void DxAcisDrawQueue();

/// What the host has for a material of the file; it is made at its first use. The outputs stay as they were
/// when there is none.
void DxCiGetVisMatInfo(unsigned long handle, int& pen, MatDbKey& key, unsigned long& number);
