// Services around the open drawing: macro variables, attributes, abort, text parameters.
// All functions that return int give 0 on success unless they say otherwise.
#pragma once

#include "ut_string.h"

// ---- macro variables: names begin with "&" for numbers, "$" for strings ----------------------------

/// Reads a number. Non-zero, with `*value` untouched, when the variable doesn't exist.
int UoGetMacVarD(const char* name, double* value);
int UoGetMacVarI(const char* name, int* value); ///< The number cut towards 0 and into the range of int.
int UoGetMacVarS(const char* name, UtCString* value);
int UoPutMacVarD(const char* name, double value);
int UoPutMacVarS(const char* name, const UtCString& value);
int SuGetVarReal(const char* name, double* value);      ///< As UoGetMacVarD, through the macro language.
int SuVarGetString(const char* name, UtCString* value); ///< As UoGetMacVarS, through the macro language.

// ---- session ---------------------------------------------------------------------------------------

/// 11: a run begins, forget earlier requests; 16: within a long loop. 1 when the user asked to stop, or when
/// the drawing has grown beyond the host's limit of elements; 2 when the loop has gone on for so long without
/// a new element that it should end, though what follows it may go on; else 0.
int UoCheckAbort(int code);
/// Tells the host the size of one unit of the drawing for its tolerances.
int UoStartInitEpsNew(double factor);
/// 1 saves the current text parameters, 2 restores them.
int UoTextParSave(int code);
/// Expands "$NAME" in a path as UtPathEnvToAbs does, with the host's own defaults for what isn't set: "/u"
/// for HD_U, "1700" for HD_VE.
UtCString UoSubstOVPath(const UtCString& path);

// ---- attributes of a pattern -----------------------------------------------------------------------
// Names "#G", "#E", "#K", "#M" are group, level, class and name; "layer" and "obstat" the two others of
// the six identifying strings; any other name is a free attribute.

int UoSetSingleAttr(int patNo, const UtCString& name, const UtCString& value);
int UoSetSingleAttrInt(int patNo, const UtCString& name, int value);
int UoGetSingleAttr(int patNo, const UtCString& name, UtCString* value); ///< 1005 if it isn't set.
int UoGetSingleAttrInt(int patNo, const UtCString& name, int* value);
/// The `index`-th free attribute of the pattern in the order of their setting; 1005 behind the last.
int UoGetAttr(int patNo, int index, UtCString* name, UtCString* value);
/// The numbers of the patterns that match a filter of attributes, ascending. Type 2 with an empty filter: all
/// patterns of the drawing. The caller frees `*list` with UtFreeMemory, whatever the result.
int UoFiltAttrToPatList(const UtCString& filter, int type, int** list, int* count);
/// Copies the identifying strings and all attributes from one pattern to another.
int UoCopyAllAttrs(int fromPat, int toPat);
