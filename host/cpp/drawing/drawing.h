// The open drawing in memory: patterns, their elements and the objects beside them.
//
// Coordinates are doubles in the drawing's unit, so that a length given and read back comes back to the last
// bit; a change of the unit converts them all. Nothing here knows of files or of the module.
#pragma once

#include "drawing/bitmap.h"
#include "drawing/dimension.h"
#include "drawing/element.h"
#include "drawing/made_from.h"
#include "drawing/space_content.h"
#include "drawing/view.h"
#include "pens.h"
#include "rpt.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace host {

/// Interpolating spline through its points; the element before it in the plot ends at points.front().
struct Spline {
    std::vector<RPT> points;
    int degree = 3;
    bool startFixed = false, endFixed = false; ///< whether the tangent angles count
    double startAngle = 0, endAngle = 0;       ///< radians
};

/// A closed contour as a chain of Move, Draw and Arc elements.
using Contour = std::vector<Element>;

/// A row of parallel pattern lines with dashes and offsets of their own, as a pattern's source has them.
struct HatchFamily {
    double angle = 0;    ///< radians
    double distance = 0; ///< between lines, drawing units
    double originX = 0, originY = 0;
    double offset = 0; ///< shift along the line from one line to the next
    int pen = 1, lineType = 1;
    std::vector<double> dashes;
};

/// One of the two line directions of a hatch. A line lies at `base`, measured from the drawing's origin to
/// the right of the direction; the next ones follow at distance d1, c1 times, and at d2, c2 times, and so on
/// round.
struct HatchLines {
    double angle = 0; ///< radians
    double base = 0, d1 = 0, d2 = 0;
    int c1 = 0, c2 = 0;
    int pen = 1, lineType = 1;

    double period() const { return c1 * d1 + c2 * d2; }
};

/// A fill that runs from one colour to another.
struct HatchGradient {
    int form = 0;     ///< 0 from side to side, 1 from the middle to both sides
    double angle = 0; ///< radians
    double shift = 0;
    double size = 50; ///< percent of the area that the change of colours takes
    int secondPen = 1;
    std::string name;
};

/// The pattern that a hatch was made from, as its source tells it; the lines stand in Hatch::families.
struct HatchSource {
    double scale = 1, angle = 0; ///< angle in radians
    int type = 0, crossed = 0;
};

/// A contour that counts for fills only.
struct HatchExclusion {
    int contour = 0; ///< position in Hatch::contours
};

struct Hatch {
    bool solid = true; ///< an area without lines, in one colour or a gradient
    int fillPen = 1;
    int backPen = 0;               ///< fill behind the lines, 0: none
    int transparency = 0;          ///< percent
    std::vector<Contour> contours; ///< even-odd; info 2 on the Move of a contour that a jump leads to
    std::vector<HatchExclusion> exclusions;
    std::vector<HatchLines> lines;       ///< at most two
    std::vector<HatchGradient> gradient; ///< at most one
    std::vector<HatchSource> source;     ///< at most one
    std::vector<HatchFamily> families;   ///< drawn in place of `lines` where there are any
    std::string patternName;
};

/// One text with all its parameters. Heights and widths of characters are millimetres on the sheet.
struct Text {
    std::vector<std::string> lines; ///< UTF-8, not broken to the line length
    double x = 0, y = 0, z = 0;     ///< where the origin lies
    double height = 2.5;            ///< of capital letters
    double width = 1.5;             ///< of a character of width 100
    double angle = 0, slant = 0;    ///< radians
    int font = 1;                   ///< host font number, 0: face
    std::string face;               ///< TrueType face name
    int styleBits = 0; ///< 1 << OV_TEXT_BIT: 1 strike, 2 underline, 4 italic, 8 bold, 16 overline
    int pen = 1;
    int origin = 1;             ///< 1 … 9, which point of the text's block stands at (x, y)
    int justification = 0;      ///< 0 left, 1 centred, 2 right, among lines
    double lineDistance = 1.88; ///< relative to the height
    double spacing = 1.5;       ///< between characters, 1: side by side
    double lineLength = 0;      ///< width to which lines are broken, drawing units, 0: not at all
    int fillPen = 0;            ///< background, 0: as the sheet
    bool backOn = false;
    int backType = 0; ///< frame: 0 none, 1 rectangle, 2 filled, 3 filled and rounded
    int dimType = 0;  ///< 3: belongs to a dimension
};

/// An attribute of one element.
struct ElementAttribute {
    int row = 0;
    std::string name, value;
};

/// Where a pattern's own frame lies in the drawing, row-vector form. Elements stand in the drawing's frame
/// whatever it is: it only says what the pattern was placed by.
struct Placement {
    double xx = 1, xy = 0, yx = 0, yy = 1, tx = 0, ty = 0;
    friend bool operator==(const Placement&, const Placement&) = default;
};

/// What a pattern belongs to.
struct Relation {
    int parent = 0; ///< number of the enclosing pattern, 0: none
    Placement placement;
    friend bool operator==(const Relation&, const Relation&) = default;
};

/// The six identifying strings.
struct PatternIds {
    std::string group, level, cls, name, layer, obstat;
};

/// Elements in the plane, what stands in space, and objects beside them.
struct Pattern : SpaceContent {
    int number = 0;
    bool scratch = false; ///< no part of the drawing's content
    bool visible = true;
    int groupNumber = 0;
    int workId = 0;
    int view = 0;       ///< number of the sheet that it stands on, 0: the model
    int definition = 0; ///< number of the definition that it is part of, 0: content of the drawing
    PatternIds ids;
    std::vector<std::pair<std::string, std::string>> attributes; ///< in order of setting
    /// Where they stand by name, once there are many; of no meaning while its size isn't theirs.
    std::unordered_map<std::string, std::size_t> attributePlaces;
    Relation relation;
    std::vector<Element> elements;
    std::vector<ElementAttribute> elementAttributes;
    std::vector<Spline> splines;
    std::vector<Hatch> hatches;
    std::vector<Text> texts;
    std::vector<Arrow> arrows; ///< those that stand by themselves
    std::vector<Dimension> dimensions;
    std::vector<Bitmap> bitmaps;
    std::vector<Origin> origins; ///< of runs of elements, texts and hatches, in order of adding
    std::vector<Placed> placed;  ///< at most one

    bool isContent() const { return number != 0 && !scratch && definition == 0; }
    /// True when it holds neither elements nor objects; attributes don't count.
    bool empty() const;
    /// Elements and objects.
    std::size_t size() const;
};

/// The settings that a pattern state ("obstat") stands for; -1 where it leaves one alone.
struct StateSettings {
    int pen = -1, lineType = -1;
    int hatchPen = -1, textPen = -1, pen3d = -1;
    int textBackOn = -1, textBits = -1;
    bool swapsTextColours = false; ///< of a text and its background
};

/// What a layer has beyond being visible and locked.
struct LayerLook {
    bool frozen = false;
    bool plotted = true;
    int color = 0;       ///< of the DXF palette, 0: none given
    int trueColor = -1;  ///< 0xRRGGBB, -1: none
    int lineWeight = -3; ///< hundredths of a millimetre; -3: the usual one
    std::string lineType;
    friend bool operator==(const LayerLook&, const LayerLook&) = default;
};

/// A layer as the host's layer manager knows it.
struct Layer {
    std::string name;
    bool visible = true;
    bool locked = false;
    LayerLook look;
};

struct WorkPlane {
    RPT3 a{0, 0, 0}, b{1, 0, 0}, c{0, 1, 0};
};

/// A line type of the drawing: dash lengths in millimetres on the sheet (positive dash, negative gap, 0 dot).
struct LineType {
    std::string name;
    std::vector<double> dashes;
};

/// RGB of a pen, 0 … 255 each.
struct Rgb {
    std::uint8_t r = 0, g = 0, b = 0;
};

struct Extents {
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    bool empty = true;
    void add(double x, double y); ///< A point that isn't finite is left out.
    void add(const Extents& other);
};

class Drawing {
public:
    int unit = 3;                             ///< GeUnit code
    bool unitAssumed = false;                 ///< the drawing came from a file that names no unit
    double scale = 1.0;                       ///< sheet length over model length
    int format = 1;                           ///< A0
    std::vector<View> views{View{"Default"}}; ///< the default view first
    std::vector<ViewInsert> viewInserts;
    int lastViewNumber = 0, lastViewInsert = 0;
    int activeView = 0;      ///< number of the view that is shown: where new patterns stand
    int activeWorkspace = 0; ///< work plane that new detail views are seen on, 0: the model's
    GeoReference geoReference;
    std::map<int, WorkPlane> workPlanes;
    int nextWorkId = 1;
    std::vector<Layer> layers;
    std::vector<Material> materials;             ///< number 1 is the first
    std::map<int, LineType> lineTypes;           ///< by host number, 1 is continuous
    std::map<int, Rgb> pens;                     ///< pens that differ from the palette
    std::map<int, OV_PEN_LOOK> penLooks;         ///< pens with a look of their own
    std::map<std::string, StateSettings> states; ///< by "obstat"
    std::vector<int> lastInterfaceIds;           ///< patterns that the last import made
    std::vector<Definition> definitions;         ///< number 1 is the first
    /// What must be added to the drawing's coordinates for those that the texts of origins speak of.
    RPT originFrame{0, 0};
    int openDefinition = 0; ///< where new patterns belong and walks go, 0: the drawing's content
    std::string fileName;

    /// A new pattern behind all others; numbers ascend from 1 and are not used twice. Not made active.
    Pattern& addPattern(bool scratch);
    /// A new pattern with a given number, which must be above lastNumber (a stored drawing has gaps).
    Pattern& restorePattern(int number);
    Pattern* find(int number); ///< null when there is none
    const Pattern* find(int number) const;
    bool remove(int number);
    /// The pattern of the content, or of the open definition, with the smallest number above `number`; null
    /// at the end.
    Pattern* next(int number);
    Pattern* active() { return find(activeNumber); }

    Layer* findLayer(const std::string& name); ///< null when there is none; O(1)
    const Layer* findLayer(const std::string& name) const;
    /// A new layer, or the one of this name with new settings.
    void putLayer(const Layer& layer);
    bool isVisible(const Pattern& pattern) const; ///< the pattern and its layer are switched on
    /// Whether a pattern is seen on a sheet (0: in the model). Outlines of detail views aren't.
    bool isContentOf(const Pattern& pattern, int view) const;

    View* findView(const std::string& name); ///< null when there is none; O(1) on average
    const View* findView(const std::string& name) const;
    View* findView(int number);
    const View* findView(int number) const;
    /// Appends a view and gives it a number. Its name must be free.
    View& addView(View view);
    void renameView(View& view, const std::string& name); ///< The name must be free.
    void removeView(int number);
    /// Scale at which a view shows its content: the drawing's for the model and for a number of no view.
    double viewScale(int number) const;

    int activeNumber = 0; ///< 0: none
    int lastNumber = 0;   ///< highest number given out
    /// Patterns in ascending order; removed ones may stay behind with number 0. References stay valid.
    std::deque<Pattern> patterns;
    /// Elements and objects of all patterns, as kept by whoever adds or removes them; see recount().
    std::size_t elementCount = 0;
    void recount(); ///< Counts anew, after a change that went round the host's operations.

    /// Changes the unit; all coordinates and lengths stay where they are in the world.
    void changeUnit(int newUnit);
    /// Multiplies all lengths of the model by `ratio` above 0 and divides the scale by it: what was drawn in
    /// a unit `ratio` times the drawing's gets its true size, and texts keep theirs on the sheet.
    void multiplyModel(double ratio);

    Extents extents() const;         ///< of all visible content of the model
    Extents extents(int view) const; ///< of all visible content of a sheet (0: the model) but viewed details
    void clear();                    ///< back to a fresh drawing

private:
    std::size_t slot(int number) const;

    std::vector<int> slotNumbers_; ///< number of each slot of `patterns`, also of a removed one
    mutable std::unordered_map<std::string, std::size_t> layerIndex_;
    mutable std::unordered_map<std::string, std::size_t> viewIndex_;
    mutable std::size_t indexedViews_ = 0;
};

/// The open drawing. One is open at any time.
Drawing& openDrawing();

/// The drawing tolerance: 0.001 mm in model size, in the drawing's unit.
double drawingTolerance(const Drawing& drawing);
/// Millimetres in one unit of the drawing.
double unitInMm(const Drawing& drawing);

/// The built-in palette: RGB of pens 0 … 1023 (others: white).
Rgb paletteColor(int pen);
/// RGB of a DXF colour 1 … 255 (0 and 256: white).
Rgb dxfColor(int color);

} // namespace host
