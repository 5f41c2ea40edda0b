// Translated messages.
#pragma once

#include "ut_string.h"

/// The text of message `number` in the catalogue's present language, or `dflt` when it has none.
/// `catalogue` is "cad_msg.txt" in all calls of the module.
UtCString TrtMsgGet(const char* catalogue, int number, const char* dflt);
