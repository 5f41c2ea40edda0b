// What a run tells the user: status line, message area, protocol file.
#pragma once

#include "ut_string.h"

int DxProtoOpen(int isExport); ///< Opens "dxf.proto" for appending. Always 0.
int DxProtoName(int isExport); ///< Writes file, date and time. Always 0.
/// Reports a text once a run: into the file and, with `beep`, in the message area. Always 0.
int DxProtoMsg(const UtCString& text, int beep);
int DxProtoClose(int isExport, int outcome); ///< Writes the outcome, closes. Always 0.
void DxDisplay(const UtCString& text);       ///< The status line; no protocol.
void DxBeep(const UtCString& text);          ///< The message area.
