// The message catalogue: number and German text of each message, and the formatting of them.
#pragma once

#include "ut_string.h"

/// The default text of a message, "" for an unknown number.
const char* DxMsgDefault(int number);
/// The text of a message in the host's language, unformatted.
UtCString DxMsgText(int number);

/// The text of message `number` in the host's language with its arguments put in, printf style: texts for %s,
/// as const char* or UtCString, are UTF-8 (see DxHostText for bytes of the file). A translation whose
/// conversions differ from the default's is not used.
template <class... Args>
UtCString DxMsg(int number, const Args&... args) {
    struct Pass {
        static const char* on(const UtCString& text) { return text.c_str(); }
        static const char* on(const char* text) { return text; }
        static int on(int value) { return value; }
        static double on(double value) { return value; }
    };
    return UtFormatMsg(DxMsgText(number), DxMsgDefault(number), Pass::on(args)...);
}
