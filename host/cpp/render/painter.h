// Draws the objects of a drawing into a picture.
#pragma once

#include "dimension/dim_drawing.h"
#include "drawing/space_view.h"
#include "render/device_path.h"
#include "render/picture_cache.h"
#include "render/style.h"
#include "render/text.h"

#include <map>
#include <memory>

namespace host {

struct LineField;

class Painter {
public:
    Painter(cairo_t* cairo, const Drawing& drawing, const Frame& frame, bool dark, PictureCache& pictures);

    void drawBitmaps(const Pattern& pattern);
    void drawHatches(const Pattern& pattern);
    void drawElements(const Pattern& pattern);
    void drawFaces(const Pattern& pattern); ///< their edges, seen from above
    void drawCurves(const Pattern& pattern);
    void drawPoints(const Pattern& pattern); ///< point clouds
    void drawLines(const std::vector<SeenLine>& lines);
    void drawDimensions(const Pattern& pattern); ///< and arrows
    void drawTexts(const Pattern& pattern);

private:
    void usePen(int pen, int lineType);
    void strokePending();
    void takeRaster(bool forManyLines);
    void dot(const RPT& at);
    void drawLines(const DimDrawing& drawing);
    void drawElement(const Pattern& pattern, const Element& element);
    Bezier mapBezier(const Bezier& b) const;
    void drawArc(const Element& element);
    void addEdge(int pen, int lineType, const RPT3& from, const RPT3& to);
    void addContour(FillPath& path, const Contour& contour) const;
    void fillArea(const FillPath& path, const Hatch& hatch);
    void drawBitmap(const Bitmap& bitmap);
    void drawLines(const FillPath& path, const Hatch& hatch);
    void strokeField(const LineField& field, const HatchFamily& family);

    cairo_t* cairo_;
    const Drawing& drawing_;
    const Frame& frame_;
    bool dark_;
    PictureCache& pictures_;
    StrokePath path_;
    std::unique_ptr<StrokeRaster> raster_; ///< once there are very many lines
    bool manyLines_ = false, inRaster_ = false;
    RPT at_{0, 0}; ///< where the plot stands, drawing coordinates
    int pen_ = -1, lineType_ = -1;
    std::vector<RPT> dots_;                             ///< of the present pen, device coordinates
    std::map<int, std::vector<double>> lineTypeDashes_; ///< by line type, device units
};

} // namespace host
