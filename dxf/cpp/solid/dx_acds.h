// The ACDSDATA section: binary models of solids.
#pragma once

#include "dx_3dsolid.h"

/// Reads the ACDSDATA section, entered in front of 2 / "ACDSDATA"; stands behind its 0 / "ENDSEC" when done.
/// Another section is left alone. 0, the reader's error or 4009.
int DxReadAcdsSection();
int DxAcisAddEmptyAcisRecord(); ///< Appends an empty record; nothing while measuring. 0.
/// Reads one record, entered behind its name. 0, the reader's error, or 4009 for a line of hexadecimal digits
/// whose number is odd.
int DxAcisReadRecord(DX_ACDSRECORD_TYPE* record);
/// The record of a solid, by its handle; null for none.
const DX_ACDSRECORD_TYPE* DxAcisGetAcdsRecord(const DX_3DSOLID_TYPE* solid);
int DxReadAcdsFree(); ///< Frees the records and the queue of solids. 0.
/// The section with the records that the entities have left, which are freed; nothing when there are none. 0
/// or the writer's error.
int DxWriteAcdsSection();
