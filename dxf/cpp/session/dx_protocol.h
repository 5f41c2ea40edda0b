// What a run tells the user. The list of its messages is what counts; message area and protocol file are two
// places that show them. And the status line, which isn't kept.
#pragma once

#include "dx_report.h"
#include "ut_string.h"

int DxProtoOpen(int isExport); ///< Opens "dxf.proto" for appending. Always 0.
int DxProtoName(int isExport); ///< Writes file, date and time. Always 0.
/// Reports a text once a run: into the file and, with `beep`, in the message area. Always 0.
int DxProtoMsg(const UtCString& text, int beep);
int DxProtoClose(int isExport, int outcome); ///< Writes the outcome, closes. Always 0.
/// The messages of the import (0) or export (1) that ran last, until the next of its kind opens.
const std::vector<DxReportMessage>& DxProtoMessages(int isExport);
void DxDisplay(const UtCString& text); ///< The status line; no protocol.
void DxBeep(const UtCString& text);    ///< The message area.
