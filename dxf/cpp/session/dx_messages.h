// The message catalogue: number and German text of each message, and the formatting of them.
#pragma once

#include "ut_string.h"

/// The default text of a message, "" for an unknown number.
const char* DxMsgDefault(int number);
/// The text of message `number` in the host's language with its arguments put in, printf style. Texts given
/// for %s are UTF-8 (see DxHostText for bytes of the file). A translation whose conversions differ from
/// the default's is not used.
UtCString DxMsg(int number, ...);
