// Dialogs of the host.
#pragma once

#include "ut_string.h"

int GoPartnerOpenEx(int partner, const char* name);
int GoRsrcSetProgramEx(int partner, const char* program, const char* a, const char* b, const char* c,
                       const char* d, const char* e, const char* f, const char* g, const char* h);
int GoDoGetMdiClientPosEx(int partner, int* x, int* y);
/// Finds or makes the dialog mask `name`. 0, or an error when the host has no such mask.
int GoMaskGetIdOrCreateEx(int partner, const char* parent, const char* name, int* id);
int GoMaskSetPixelEx(int partner, int id, int x, int y, int width, int height); ///< -32768: leave the size.
int GoMaskShowEx(int partner, int id);
/// One dialog with a title, a heading and a text, to be confirmed.
int GoDoShowInformationEx(int partner, const UtCString& title, const UtCString& heading,
                          const UtCString& text);
/// One dialog with an error's text.
int GoDoShowErrorEx(int partner, const UtCString& text);
