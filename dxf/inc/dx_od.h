// The converter of SAT and SAB files.
#pragma once

#include "rpt.h"
#include "ut_string.h"

#include <string>
#include <string_view>

/// Stops the converter (0), or starts it anew (anything but 0).
void DxOdInit(int start);
/// Reads the model in `source`, SAT or SAB of any version, and writes it to `target`, which may be the same
/// file, at version 700: binary for the extension "sab", else text. 0; 4002 when it can't be read or written;
/// 2360 on an exception.
int DxOdSatConv(const UtCString& source, const UtCString& target);
/// The records of a model as text, a line each; stable, for comparing. As DxOdSatConv.
int DxOdSatDump(const UtCString& source, std::string& text);
/// What a model is made of: a volume; flat faces or others that are seen from both sides.
enum class DxModelKind { Solid, Region, Sheet };
/// Reads a model from memory and writes it, moved by `matrix` (row vectors), at version 700 as text or
/// binary. As DxOdSatConv.
int DxOdSatPlace(std::string_view model, const Mat44 matrix, bool isBinary, std::string& placed,
                 DxModelKind* kind = nullptr);
/// Why the last conversion failed, with the number of the record; empty when it didn't.
std::string DxOdProblem();
