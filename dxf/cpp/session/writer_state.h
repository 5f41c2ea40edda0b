// Values of one export: its streams, its buffered block and its handles.
#pragma once

#include "pens.h"
#include "ut_string.h"

#include <cstdio>
#include <map>
#include <memory>
#include <string>

/// Lines of a block that is kept back, code and value in turn, each with its line feed.
using DxLineList = std::string;

/// Pairs that wait to be handed over to one stream, and the export's first failure.
struct DX_PENDING {
    FILE* stream = nullptr;
    std::size_t size = 0;
    int error = 0;
    char bytes[1U << 16] = {};
};

extern DX_PENDING DxPending;
extern FILE* DxHeaderStream;                     ///< TABLES first, in the end the finished file
extern FILE* DxBodyStream;                       ///< BLOCKS to the end of the file
extern FILE *DxImageStream1, *DxImageStream2;    ///< image objects; entries of the image dictionary
extern UtCString DxTargetPath;                   ///< the target, behind links
extern UtCString DxHeaderPath;                   ///< the file behind DxHeaderStream, beside the target
extern UtCString DxBodyPath;                     ///< temporary
extern UtCString DxImagePath1, DxImagePath2;     ///< temporary
extern UtCString DxOutDir, DxOutBase;            ///< directory and base name of the target
extern int DxTargetExisted;                      ///< the target was there ahead of this export
extern int DxBlockBuffering;                     ///< pairs go to DxBlockLines in place of the body
extern std::unique_ptr<DxLineList> DxBlockLines; ///< the buffered block, null outside an export

/// A colour of the writer from here on stands for the look of pen `colour` - DX_COLOR_OF_LOOK.
inline constexpr int DX_COLOR_OF_LOOK = 4096;
extern std::map<int, OV_PEN_LOOK> DxWriteLooks; ///< by such a colour
extern int DxWriteInvisible;                    ///< 1: the entities that are written aren't shown

/// Start values of all of the above: an export has an empty list of buffered lines.
void DxResetWriterState(int isExport);
