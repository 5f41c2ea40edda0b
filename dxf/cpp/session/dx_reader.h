// The reader of group-code pairs of text DXF: the only road from a drawing file to the module.
//
// It reads the current document of DxDocuments. The last pair may be handed back once. A pair costs two line
// ends found and one integer parsed; its text stays in the file's mapping.
#pragma once

#include "dx_numbers.h"
#include "ut_string.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

/// One pair. `text` is valid until the next pair is read.
struct DxPair {
    int code = 0;
    std::string_view text; ///< without line end; decoded to the file's code page where DXF says UTF-8
    bool isUtf8 = false;   ///< it was decoded; `wide` has all of its characters
};

/// A remembered place in a file, and the pair that was current there.
struct DX_SAVE {
    char text[161];
    std::int32_t position; ///< behind the current pair
    int code;
    int next; ///< 0: the pair waits to be delivered again
    FILE* stream;
};

extern int DxLineTrim; ///< 0 none, 1 right, 2 left, 4 both; keyword TRIM of the older configuration

int DxReadOpen(const UtCString& name); ///< Opens the main file of a session. 0 or 9001.
int DxReadClose();                     ///< Closes all documents. 0.

/// The next pair without a copy, cut to `maxLength` - 1 bytes. 0, or 9003 at the end with `pair` untouched.
/// `wide`, when given, receives the value as a host string.
int DxReadPair(DxPair& pair, int maxLength = 161, bool showPercent = false, UtCString* wide = nullptr);
/// The next pair into a buffer of `maxLength` bytes. 0 or 9003.
int DxGetLineVar(int* code, char* text, int maxLength, bool showPercent, UtCString* wide);
/// The bytes of a string that the reader gives as they stand, such as one of the extended data, decoded as it
/// decodes those of groups 1 to 9: in the main file's code page, with escapes for what that lacks.
std::string DxReadDecoded(std::string_view bytes);
void DxUnGetLine();       ///< The next read delivers the current pair again.
void DxReadDropPending(); ///< A pair handed back is not delivered again.

void DxSaveActPos(DX_SAVE* save);
int DxRestoreActPos(DX_SAVE* save); ///< 3011 for null; the result of the seek otherwise.
/// Position behind the last pair that was read from the current document, as an offset in the file.
std::int32_t DxReadTell();
/// Number of the line, from 1, in which the last pair that was read from the current document ends; 0 ahead
/// of the first. Counts them anew: meant for messages.
long DxReadLineNumber();
/// Goes to an offset in the current document and forgets a pair handed back. 0 or 9005.
int DxReadSeek(std::int32_t position);
void DxResetPercent();
/// Reads on until a pair with exactly this code and value; comments on the way may set scale and format.
int DxReadUntil(int code, const char* value);
/// The percentage is shown while the main file is read, not in external references.
bool DxShowsPercent();

/// Skips one section that nobody reads. Entered behind 0 / "SECTION"; a section that has a reader is left to
/// it. 0 or the reader's error.
int DxIgnoreSections();

/// Forgets the current pair. The documents call it before the mapping goes that the pair's text may lie in.
void DxReadForget();
