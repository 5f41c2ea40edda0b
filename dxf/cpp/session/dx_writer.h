// The writer of group-code pairs: text format of a pair, number formats, encoding of strings by target
// version, version gates and handles. Pairs go to the current stream of DxDocuments, or to a stream given.
//
// Everything that writes gives the export's error so far, and writes nothing once there is one: callers put
// out what they have and return DxWriteError().
#pragma once

#include "dx_fixed.h"
#include "dx_sink.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

/// A text to be written, UTF-8, whatever holds it. Used as a parameter only.
struct DxOutText {
    DxOutText(const char* text) : view(text) {}            // NOLINT: texts convert freely
    DxOutText(std::string_view text) : view(text) {}       // NOLINT
    DxOutText(const std::string& text) : view(text) {}     // NOLINT
    DxOutText(const UtCString& text) : view(text.str()) {} // NOLINT
    DxOutText(const DX_NAME& name) : view(name.view()) {}  // NOLINT
    std::string_view view;
};

/// True if the target format is `level` or newer: 4 ACAD21, 5 ACAD18, 6 ACAD14, 7 anything but EASY.
bool DxMiscCheckVersion(int level);

int DxWriteInt(int code, int value); ///< the value right-aligned in six columns
int DxWriteFileInt(FILE* stream, int code, int value);
int DxWriteIntVer(int level, int code, int value); ///< only for targets of `level` or newer

int DxWriteDouble(int code, double value); ///< with DxDigits decimals
int DxWriteFileDouble(FILE* stream, int code, double value);
int DxWriteDoubleFix(int code, double value); ///< left-aligned in 20 columns
int DxWriteFileDoubleFix(FILE* stream, int code, double value);
int DxWriteDoubleVer(int level, int code, double value);
/// A size that must not become 0: with more digits than others have where it is too small for those.
int DxWriteSize(int code, double value);

/// A string. Codes 1 to 9 of a target from ACAD21 on are UTF-8. Else the bytes of code page DxCodePage; from
/// ACAD14 on, what it can't hold travels as "\U+XXXX", before as "?".
int DxWriteString(int code, DxOutText value);
/// A string of the extended data. Where the file is UTF-8, what isn't ASCII is written as escapes, since
/// bytes of the code page would break its encoding.
int DxWriteExtendedString(int code, DxOutText value);
int DxWriteFileString(FILE* stream, int code, DxOutText value);

/// A colour of an entity as a file may have it: 0 to 256, what isn't one is 7.
int DxEntityColor(int colour);
/// Group 62. -9999 writes 0 (by block); -9998 and -1 write nothing.
int DxWriteColor(int colour);
std::string DxColorText(int colour); ///< the same as it stands in the file
int DxWriteFileColor(FILE* stream, int colour);
/// Group 6; nothing for an empty name.
int DxWriteLinetype(DxOutText name);
int DxWriteFileLinetype(FILE* stream, DxOutText name);

int DxWriteReference(); ///< the next handle under group 5
int DxWriteFileReference(FILE* stream);
int DxWriteVariableReference(int code); ///< takes the next handle; written from ACAD14 on
int DxWriteVariableReference2(int code, std::uint32_t handle);
std::uint32_t DxGetNextReference();
int DxWriteSubClass(const char* name); ///< group 100, from ACAD14 on

/// A pair as it stands in the file.
std::string DxPairText(int code, DxOutText value);

/// Pairs for the current stream that are put together in place: what entities are made of, for the cost of
/// their formatting. Nothing else may be written between its start and end().
class DxPairRun {
public:
    DxPairRun();
    void pairs(std::string_view bytes);          ///< pairs as they stand in the file
    void real(int code, double value);           ///< as DxWriteDouble
    void size(int code, double value);           ///< as DxWriteSize
    void handle(int code, std::uint32_t handle); ///< as DxWriteVariableReference2
    int end();                                   ///< Hands all of it over. 0 or the export's error.

private:
    void reserve(std::size_t size);
    FILE* stream_;
    char* at_;
    char* limit_; ///< end of the room
};

/// Opens the four streams. 9001, with the words reported, when one can't be opened.
int DxWriteOpen();
/// Closes what is open and removes the temporary files. The finished file takes the target's place with
/// `complete`; else an older target stays as it was.
int DxWriteClose(bool complete);

int DxUnitToDXF(int hostUnit); ///< $INSUNITS of a host unit, 0 for none
int DxUnitToCAD(int dxfUnit);  ///< host unit of an $INSUNITS, 0 for none
