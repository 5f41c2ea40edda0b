// Strings between the file's code page and the host.
#pragma once

#include "ut_string.h"

#include <string_view>

/// The host's text for bytes of the file's strings (code page DxCodePage), with "\U+XXXX" escapes resolved.
UtCString DxHostText(std::string_view bytes);
