// Strings between the file's code page and the host.
#pragma once

#include "ut_string.h"

#include <string>
#include <string_view>

/// The code page that records hold their strings in: the host's page for that of the file (DxCodePage) on
/// import, UTF-8 on export.
int DxFileHostCodePage();
/// The host's text for bytes of the file's strings (code page DxCodePage), with "\U+XXXX" escapes resolved.
UtCString DxHostText(std::string_view bytes);

/// Whether `bytes` are well-formed UTF-8.
bool DxIsUtf8(std::string_view bytes);
/// `bytes` without an incomplete UTF-8 character at their end.
std::string_view DxWithoutCutUtf8(std::string_view bytes);
/// UTF-8 in the code page of the file; a character that it lacks becomes "\U+XXXX", beyond U+FFFF one escape
/// for each half of its surrogate pair. `utf8` must be well formed.
std::string DxUtf8ToFile(std::string_view utf8);
