// The operating system as the host shows it.
#pragma once

#include "ut_string.h"

/// Value of an environment variable, or `dflt` when it isn't set or is empty.
UtCString OsGetEnvDflt(const char* name, const UtCString& dflt);

/// The host's code page for the strings of a file in Windows code page `codePage`: the same page when the
/// host knows it, else 1252.
int OsUserCodePageIdToTorvaCodePage(int codePage);

/// True for a byte that begins a character of two bytes in code page `codePage` (932, 936, 949, 950).
bool OsIsLeadByte(unsigned char byte, int codePage);
