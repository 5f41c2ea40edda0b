// Pictures in the drawing.
#pragma once

#include "ds.h"
#include "rpt.h"
#include "ut_string.h"

/// Walks the pictures of a pattern as the classes of ci_objects.h do. Coordinates are in the context's unit.
class CiBitmap {
public:
    explicit CiBitmap(int contextId) : contextId_(contextId) {}
    int First(DsCsr& cursor);
    int Next(DsCsr& cursor);
    static int Count(const DsCsr& pattern, long* count);
    /// A picture in the pattern of the cursor, which is aimed at it: its first row of pixels at `origin`, `u`
    /// along the upper edge over its whole width, `v` down the left edge over its whole height. The file
    /// stays where it is. One that is no readable picture keeps its place, and the message area tells why it
    /// won't show. 3011 when there is no such file or the picture has no area.
    int Add(DsCsr* cursor, const UtCString& path, const RPT3& origin, const RPT3* u, const RPT3* v);
    /// The corner, edge along the top, edge down the left side, and the size in pixels, 0 by 0 for a file
    /// that can't be read.
    int Get(const DsCsr& cursor, RPT3* corner, RPT3* along, RPT3* down, int* width, int* height);
    /// What shows of the picture: a polygon in parts of width and height from the upper left corner; fewer
    /// than three points: all of it.
    int SetClip(const DsCsr& cursor, const RPT* points, int count);
    int GetClip(const DsCsr& cursor, int index, RPT* point); ///< 1005 behind the last point.
    /// Writes the picture to a file: format 1 TIFF, 2 JPEG; `mode` is 2. 9000 when that fails, which the
    /// message area tells.
    int Export(const DsCsr& cursor, const UtCString& path, int format, int mode);

private:
    int contextId_;
};
