// The reader of group-code pairs of text DXF: the only road from a drawing file to the module.
//
// It reads the current document of DxDocuments. The last pair may be handed back once. A pair costs two line
// ends found and one integer parsed; its text stays in the file's mapping.
#pragma once

#include "dx_fixed.h"
#include "dx_numbers.h"
#include "ut_string.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

/// One pair. Its texts are valid until the next pair is read.
struct DxPair {
    int code = 0;
    /// Without line end. Strings, which are groups 1 to 9, are UTF-8; names among them (2, 6, 7, 8) have
    /// their escapes resolved. Other groups stand as in the file: DxReadDecoded makes text of them.
    std::string_view text;
    std::string_view bytes; ///< as in the file
};

/// A remembered place in a file, and the pair that was current there.
struct DX_SAVE {
    DX_NAME text;
    std::int32_t position; ///< behind the current pair
    int code;
    int next; ///< 0: the pair waits to be delivered again
    FILE* stream;
};

extern int DxLineTrim; ///< 0 none, 1 right, 2 left, 4 both; keyword TRIM of the older configuration

int DxReadOpen(const UtCString& name); ///< Opens the main file of a session. 0 or 9001.
int DxReadClose();                     ///< Closes all documents. 0.

/// The next pair without a copy, cut to `maxLength` - 1 characters. 0, or 9003 at the end with `pair`
/// untouched.
int DxReadPair(DxPair& pair, int maxLength = 161, bool showPercent = false);
/// The next pair into a buffer of `maxLength` bytes, with a character that doesn't fit left out. `wide`, when
/// given, receives all of the value. 0 or 9003.
int DxGetLineVar(int* code, char* text, int maxLength, bool showPercent, UtCString* wide);
/// UTF-8 for bytes of the current document: of a group that the reader gives as it stands, such as one of the
/// extended data, or of several pieces that only together are whole characters.
std::string DxReadDecoded(std::string_view bytes);
void DxUnGetLine();       ///< The next read delivers the current pair again.
void DxReadDropPending(); ///< A pair handed back is not delivered again.

/// What the current document holds from an offset up to the group 0 that was handed back, or else to the
/// next one.
std::string_view DxReadBytesFrom(std::int32_t start);

void DxSaveActPos(DX_SAVE* save);
int DxRestoreActPos(DX_SAVE* save); ///< 3011 for null; the result of the seek otherwise.
/// Position behind the last pair that was read from the current document, as an offset in the file.
std::int32_t DxReadTell();
class DxfDocument;
/// The document whose end a read met last; null while none did.
extern const DxfDocument* DxReadEnded;
/// Number of the line, from 1, in which the last pair that was read from a document ends; 0 ahead of the
/// first. Counts them anew: meant for messages.
long DxReadLineNumber(const DxfDocument& document);
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
