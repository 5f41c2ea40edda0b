// Chief header of the session: its start, its end and the drivers.
#pragma once

#include "dx_documents.h"
#include "dx_messages.h"
#include "dx_protocol.h"
#include "dx_reader.h"
#include "dx_scale.h"
#include "session_state.h"

void DxInitialize(); ///< Makes the insert stack, once in the library's life.
/// Opens a session: resets all state, reads the configuration, builds the tables. 0 or the first error.
int DxfInit(const UtCString& configName, int isExport);
int DxfInit2(int phase); ///< 1: settles unit and scale ahead of the work; 0: gives the host its unit back.
void DxClose();          ///< Frees the session's lists.
int DxInoutSaveParams(int code); ///< 18 saves, anything else restores pen, line type and text parameters.

void DxReadDXF(const UtCString& configName, const UtCString& fileName);  ///< One import.
void DxWriteDXF(const UtCString& configName, const UtCString& fileName); ///< One export.

int DxWriteEntitySection(); ///< ENTITIES, OBJECTS and the end of the file, into the body stream.
int DxConcatHeader();       ///< HEADER in front of TABLES. 1008 when a temporary file fails.
int DxConcatFiles();        ///< The body behind the tables.
