// The host's configuration partner: texts that outlive a session, by section, group and key.
#pragma once

#include "ut_string.h"

int CoConnectPartner(int partner, int flags); ///< 0 or an error.
/// 0 and the stored text, or non-zero when there is none.
int CoGetStringFromPartner(int partner, const char* section, const char* group, const char* key,
                           UtCString* value);
int CoChgStringFromPartner(int partner, const char* section, const char* group, const char* key,
                           const UtCString& value);
