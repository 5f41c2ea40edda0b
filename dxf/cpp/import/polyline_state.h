// The open polyline: its record lives for the whole run, so that VERTEX and SEQEND can be worked on apart
// from it.
#pragma once

#include "dx_polyline.h"

extern DX_POLYLINE_TYPE DxActPolyline;     ///< the polyline being drawn, or the last one
extern DX_VERTEX_TYPE DxActVertex;         ///< the last vertex
extern int DxPolyFirst;                    ///< 1 until the first vertex is through
extern double DxPolyBulge;                 ///< bulge of the previous vertex
extern RPT3 DxPolyPrev;                    ///< previous vertex, object coordinates
extern RPT3 DxPolyStart, DxPolyStartWorld; ///< first vertex, object and world coordinates
extern int DxPolyPat;                      ///< DxActPat at the last vertex
extern int DxFillSavedPat;                 ///< active pattern ahead of the outline pattern; its entry stays
                                           ///< DxActPatIndex meanwhile
extern std::vector<long> DxPolyRows;       ///< varying widths: elements of the centre line behind each vertex
extern long DxPolyElemsBefore;             ///< DxElemsOut ahead of the centre line

/// What all vertices of one style share: whether they are drawn, and with what.
struct DX_POLY_STYLE {
    int style = -2; ///< as DX_VERTEX_TYPE::style, -2: none asked yet
    int isDrawn = 0;
    int pen = 1, lineType = 1;
};
extern DX_POLY_STYLE DxPolyStyle;

void DxResetPolylineState();
