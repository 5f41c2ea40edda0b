// Pictures of a drawing: SVG, PNG, PDF.
#pragma once

#include "drawing/drawing.h"

#include <memory>
#include <string>
#include <vector>

namespace host {

class PictureFile;

enum class PictureType { None, Svg, Png, Pdf };

/// The type of a word (svg, png, pdf, in letters of either case), None for any other.
PictureType pictureType(std::string word);
/// The type that a file's extension says.
PictureType pictureTypeOf(const std::string& path);

/// A sheet of paper that the model is drawn on.
struct Paper {
    double width = 0, height = 0; ///< millimetres; 0: no paper, the picture is as large as `size` says
    double margin = 10;           ///< millimetres, which a drawing that is fitted leaves free
    double scale = 0;             ///< of the paper over the drawing, 0.02 for 1:50; 0: as large as fits
};

struct RenderOptions {
    int size = 1200;           ///< longer side: pixels (PNG), points (SVG, PDF)
    std::string view;          ///< view to show, empty: the model, fitted
    bool dark = false;         ///< white pens on black, as on a screen; else black stays visible on white
    bool allViews = false;     ///< a page for each of pageViews(); for PDF only
    bool inSpace = false;      ///< the model, seen from a direction
    RPT3 direction{0, 0, 1};   ///< in which the viewer stands, far away
    bool hidden = false;       ///< in space: without what is behind faces
    bool shade = false;        ///< in space: faces lit
    Paper paper;               ///< for the model; PDF and SVG have its true size
    bool textsAsTexts = false; ///< in SVG: with the viewer's fonts, to be searched; else as outlines
    Extents window;            ///< what to show of the model, empty: all of it
};

/// Pens that are hard to see on the background get a darker tone of their colour on white, a lighter one on
/// black.
void makeLegible(Drawing& drawing, bool dark);

/// The views that are worth a picture: the model, the sheets, and details that stand on no sheet.
std::vector<std::string> pageViews(const Drawing& drawing);

/// A picture in the making; as a PDF it takes pages of many drawings, one behind the other.
class PictureBook {
public:
    /// `type`: svg, png or pdf; empty: what the path's extension says. Writes nothing yet.
    explicit PictureBook(const std::string& path, const std::string& type = "");
    ~PictureBook();

    /// Draws a page, or with `allViews` all pages of a drawing. A sheet in a PDF has its own size, whatever
    /// `size` says. Empty, or what went wrong.
    std::string add(const Drawing& drawing, const RenderOptions& options);
    /// Brings the file into its place. Empty, or what went wrong.
    std::string finish();

private:
    std::string path_;
    std::unique_ptr<PictureFile> file_;
};

/// Draws a picture into the file; the format follows its extension. Empty, or what went wrong.
std::string renderDrawing(const Drawing& drawing, const std::string& path, const RenderOptions& options);

} // namespace host
