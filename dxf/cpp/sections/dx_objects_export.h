// OBJECTS on its way out.
#pragma once

#include <cstdio>

/// The version's template with its placeholders filled in, into the body stream. Targets older than ACAD14,
/// and a template that can't be opened, have no such section: 0.
int DxWriteObjects();
/// Copies a stream to the current output stream. 0 or 9000.
int DxInsertFile(FILE* file);
