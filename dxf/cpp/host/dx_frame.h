// Frames: from the module's points and lengths to those of the host, and back.
//
// The module works in the unit of the active space (DxUnit in model space, DxPaperUnit on a sheet), in world
// coordinates ahead of the drawing shift. The host has two roads in:
//
//   ov… calls, contours, 3D   the drawing's unit, behind the shift   DxPointToHost, DxLengthToHost
//   Ci… objects on            the unit of the active space, which    DxPointToContext; lengths as they are
//   DxCiContextId             the context has too, behind the shift
//
// Heights of texts and arrows are millimetres on the sheet: DxLengthToSheet. Only the Dxov… and DxCi… calls
// convert; who calls these hands over the module's points and lengths.
#pragma once

#include "rpt.h"

double DxLengthToHost(double length);
double DxLengthFromHost(double length);
RPT DxPointToHost(double x, double y);
RPT3 DxPointToHost(const RPT3& point); ///< z is a length: it has no shift.
RPT DxPointToContext(double x, double y);
RPT3 DxPointToContext(const RPT3& point);
/// Millimetres on the sheet, at the drawing's scale.
double DxLengthToSheet(double length);
double DxLengthFromSheet(double millimetres);
/// The host's drawing tolerance, as a length of the active space.
double DxDrawingTolerance();
