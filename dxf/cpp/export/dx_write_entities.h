// Writers of the plain 2D entities. Points are host coordinates; `mat` carries them into the file's frame
// (the identity unless a pattern is written as a block copy). `lt` -1 says that `pen` is a fill pen. A pen
// whose colour isn't to be written writes nothing. All give 0 or the writer's error.
#pragma once

#include "../session/dx_writer.h"
#include "dx_types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

int DxWriteLine(double x1, double y1, double x2, double y2, int pen, int lt, const Mat32 mat);
/// From point 1 to point 2 about the centre: type 3 clockwise, 4 counter-clockwise. Equal points: a CIRCLE.
int DxWriteArc(int type, double x1, double y1, double x2, double y2, double xc, double yc, int pen, int lt,
               const Mat32 mat);
int DxWritePoint(double x, double y, int pen, int lt, const Mat32 mat);
/// Four corners in output order (the outline runs 1, 2, 4, 3).
int DxWriteSolid(const RPT* corners, int pen, int lt, const Mat32 mat);
/// A ring given by two opposite points of its middle line and its width.
int DxWriteDonut(const RPT& a, const RPT& b, int pen, double width, const Mat32 mat);

/// Angle of (x1, y1) seen from (x0, y0), degrees from -90 to below 270.
void DxGetAngle(double x0, double y0, double x1, double y1, double* angle);

/// Layer, line type and colour of an entity being written.
struct DX_WRITE_STYLE {
    UtCString layer;
    UtCString lineType; ///< empty: group 6 isn't written
    int colour = 0;
    friend bool operator==(const DX_WRITE_STYLE&, const DX_WRITE_STYLE&) = default;
};

/// How the elements of one pen and line type look in the file, for as long as layer and options stay.
struct DX_WRITE_LOOK {
    bool isShown = false; ///< false: nothing of this pen is to be written
    DX_WRITE_STYLE style;
    std::string groups; ///< 8, 6 and 62 as they stand in the file
};

/// A vertex of a polyline under construction.
struct DX_WRITE_VERTEX {
    double x = 0, y = 0;
    double bulge = 0;      ///< of the segment that starts here
    std::size_t style = 0; ///< of the segment that ends here, in the polyline's list
};

/// A polyline under construction.
struct DX_WRITE_POLYLINE {
    DX_WRITE_STYLE style;
    std::uint32_t handle = 0;
    double startWidth = 0, endWidth = 0;
    std::vector<DX_WRITE_VERTEX> vertices;
    std::vector<DX_WRITE_STYLE> styles; ///< of the vertices; neighbours differ
};

/// Begins a polyline. `*open` becomes 0 when its colour isn't to be written, else 1.
int DxWritePolyLineStart(int pen, int lt, double width, int* open, DX_WRITE_POLYLINE& poly);
/// Adds a vertex: type 2 the first point, 1 the end of a line, 3 or 4 the end of an arc about `centre`.
int DxWriteVertex(int type, const RPT& start, const RPT& point, const RPT& centre, int pen, int lt,
                  const Mat32 mat, int* open, DX_WRITE_POLYLINE& poly);
/// Writes the polyline, in one or more entities, and empties it. Always 0: a failed write is the export's
/// error.
int DxWritePolySeqEnd(DX_WRITE_POLYLINE& poly);
/// POLYLINE with VERTEX and SEQEND, from vertex `fromVertex` (-1: the whole).
int DxWritePolyline(const DX_WRITE_POLYLINE& poly, int fromVertex);
int DxWriteLWPolyline(const DX_WRITE_POLYLINE& poly);

/// The look of a pen and line type on the current layer.
DX_WRITE_LOOK DxWriteLookOf(int pen, int lt);
// The writers above, for callers that know the look.
int DxWriteLine(const RPT& from, const RPT& to, const DX_WRITE_LOOK& look, const Mat32 mat);
int DxWriteArc(int type, const RPT& from, const RPT& to, const RPT& centre, double tolerance,
               const DX_WRITE_LOOK& look, const Mat32 mat);
int DxWritePolyLineStart(const DX_WRITE_LOOK& look, double width, int* open, DX_WRITE_POLYLINE& poly);
int DxWriteVertex(int type, const RPT& start, const RPT& point, const RPT& centre, const DX_WRITE_LOOK& look,
                  const Mat32 mat, int* open, DX_WRITE_POLYLINE& poly);

// The head of an entity, in the parts that some write on their own. `handle` 0 takes the next one, `owner` 0
// is DxOwnerHandle. All give the export's error so far.

/// What every entity begins with: 0, 5, owner, "AcDbEntity", layer, line type, colour.
int DxWriteEntityHead(std::string_view name, const DX_WRITE_STYLE& style, std::uint32_t handle = 0,
                      std::uint32_t owner = 0);
/// The same as far as the layer.
int DxWriteEntityStart(std::string_view name, DxOutText layer, std::uint32_t handle = 0,
                       std::uint32_t owner = 0);
/// Group `code`, 30 to 33, of a flat point: 0, where groups at their default go out.
void DxRunFlatZ(DxPairRun& run, int code);
/// Line type and colour.
int DxWriteEntityLook(const DX_WRITE_STYLE& style);
/// Handle, owner and "AcDbEntity", for targets that have them.
int DxWriteEntityIds(std::uint32_t handle = 0, std::uint32_t owner = 0);
