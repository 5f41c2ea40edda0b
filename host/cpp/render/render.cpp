#include "render/render.h"

#include "drawing/extents.h"
#include "render/bitmap.h"
#include "render/ink.h"
#include "render/page.h"
#include "render/painter.h"
#include "render/picture_file.h"
#include "render/space_picture.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>

namespace host {

namespace {

using Stage = void (Painter::*)(const Pattern&);
constexpr Stage stages[] = {&Painter::drawBitmaps, &Painter::drawHatches,  &Painter::drawFaces,
                            &Painter::drawCurves,  &Painter::drawElements, &Painter::drawDimensions,
                            &Painter::drawPoints,  &Painter::drawTexts};
using Stages = std::span<const Stage>;
constexpr std::size_t fillStages = 2; ///< the first ones: what covers areas

/// Draws pages. Fills lie under all lines and texts over them, whatever the order of the patterns.
class PagePainter {
public:
    PagePainter(const Drawing& drawing, bool dark) : drawing_(drawing), dark_(dark) {}

    /// Tells the pictures at which size they will be shown. `finer`: pixels in a device unit.
    void announce(const Page& page, double finer);
    void paint(Ink& ink, const Page& page);

private:
    bool isShown(std::size_t index, const Scene& scene);
    void paintScene(Ink& ink, const Scene& scene);
    void paintStages(Ink& ink, const Scene& scene, Stages run, const std::vector<std::size_t>& shown);

    const Drawing& drawing_;
    bool dark_;
    PictureCache pictures_;
    std::vector<std::optional<Extents>> boxes_; ///< of the patterns, by their places, once they are asked for
};

} // namespace

/// Whether a box of the model lies within what a scene shows of it.
static bool meets(const Extents& box, const Scene& scene) {
    const Frame& frame = scene.frame;
    if (box.empty) return false;
    if (frame.axes[2].x != 0 || frame.axes[2].y != 0) return true; // heights move what is seen
    Extents seen, room;
    for (const double x : {box.minX, box.maxX})
        for (const double y : {box.minY, box.maxY}) {
            const RPT p = frame.map(x, y);
            seen.add(p.x, p.y);
        }
    for (const RPT& p : scene.clip) room.add(p.x, p.y);
    if (scene.clip.empty()) room = {0, 0, frame.width, frame.height, false};
    const double spare = 2 * frame.lineWidth;
    return seen.empty || (seen.maxX >= room.minX - spare && seen.minX <= room.maxX + spare &&
                          seen.maxY >= room.minY - spare && seen.minY <= room.maxY + spare);
}

bool PagePainter::isShown(std::size_t index, const Scene& scene) {
    const Pattern& pattern = drawing_.patterns[index];
    if (!drawing_.isContentOf(pattern, scene.view)) return false;
    // What has no layer belongs to all of them.
    if (scene.layers && !pattern.ids.layer.empty() && !scene.layers->contains(pattern.ids.layer))
        return false;
    if (scene.clip.empty()) return true;
    boxes_.resize(drawing_.patterns.size());
    std::optional<Extents>& box = boxes_[index];
    if (!box) box = placedExtents(drawing_, pattern);
    return meets(*box, scene);
}

void PagePainter::announce(const Page& page, double finer) {
    for (const Scene& scene : page.scenes) {
        for (std::size_t i = 0; i < drawing_.patterns.size(); ++i) {
            const Pattern& pattern = drawing_.patterns[i];
            if (pattern.bitmaps.empty() || !isShown(i, scene)) continue;
            const Frame frame = patternFrame(drawing_, pattern, scene.frame);
            for (const Bitmap& bitmap : pattern.bitmaps) {
                const Parallelogram place = placeBitmap(bitmap, frame);
                if (host::isShown(place, frame))
                    pictures_.wish(bitmap.file, finer * std::hypot(place.u.x, place.u.y),
                                   finer * std::hypot(place.v.x, place.v.y));
            }
        }
    }
}

void PagePainter::paintStages(Ink& ink, const Scene& scene, Stages run,
                              const std::vector<std::size_t>& shown) {
    Painter painter(ink, drawing_, scene.frame, dark_, pictures_);
    for (const Stage stage : run) {
        for (const std::size_t i : shown) {
            const Pattern& pattern = drawing_.patterns[i];
            if (pattern.workId == 0) {
                (painter.*stage)(pattern);
                continue;
            }
            const Frame frame = patternFrame(drawing_, pattern, scene.frame);
            Painter onPlane(ink, drawing_, frame, dark_, pictures_);
            (onPlane.*stage)(pattern);
        }
    }
}

namespace {

struct LayerPatterns {
    std::string layer;
    std::vector<std::size_t> patterns;
};

} // namespace

/// The patterns by their layers, these in the order in which they come first.
static std::vector<LayerPatterns> byLayer(const Drawing& drawing, const std::vector<std::size_t>& shown) {
    std::vector<LayerPatterns> layers;
    std::unordered_map<std::string, std::size_t> places;
    for (const std::size_t i : shown) {
        const std::string& layer = drawing.patterns[i].ids.layer;
        const auto [place, isNew] = places.try_emplace(layer, layers.size());
        if (isNew) layers.push_back({layer, {}});
        layers[place->second].patterns.push_back(i);
    }
    return layers;
}

static bool hidesWithTexts(const Pattern& pattern) {
    return std::any_of(pattern.texts.begin(), pattern.texts.end(),
                       [](const Text& text) { return text.backOn; });
}

void PagePainter::paintScene(Ink& ink, const Scene& scene) {
    std::vector<std::size_t> shown;
    bool textsHide = false;
    for (std::size_t i = 0; i < drawing_.patterns.size(); ++i) {
        if (!isShown(i, scene)) continue;
        shown.push_back(i);
        textsHide = textsHide || hidesWithTexts(drawing_.patterns[i]);
    }
    if (!ink.hasLayers()) return paintStages(ink, scene, stages, shown);
    // A layer's lines may not lie under another's fills, nor over a text that is to hide what is behind it.
    const Stages all(stages), fills = all.first(fillStages), texts = all.last(1);
    const Stages lines = all.subspan(fillStages, all.size() - fillStages - textsHide);
    const std::vector<LayerPatterns> layers = byLayer(drawing_, shown);
    for (const Stages run : {fills, lines, textsHide ? texts : Stages()}) {
        for (const LayerPatterns& layer : layers) {
            if (!layer.layer.empty()) ink.beginLayer(layer.layer);
            paintStages(ink, scene, run, layer.patterns);
            if (!layer.layer.empty()) ink.endLayer();
        }
    }
}

void PagePainter::paint(Ink& ink, const Page& page) {
    cairo_t* cairo = ink.cairo();
    setSource(cairo, dark_ ? Rgb{0, 0, 0} : Rgb{255, 255, 255});
    ink.paint();
    for (const Scene& scene : page.scenes) {
        ink.save();
        for (const RPT& p : scene.clip)
            cairo_line_to(cairo, std::clamp(p.x, -1e5, 1e5), std::clamp(p.y, -1e5, 1e5));
        if (!scene.clip.empty()) ink.clip();
        paintScene(ink, scene);
        ink.restore();
        cairo_new_path(cairo);
    }
}

static std::string unknownView(const Drawing& drawing, const std::string& name) {
    constexpr std::size_t most = 30;
    std::string text = "The drawing has no view named " + name + ". Its views:";
    for (std::size_t i = 0; i < drawing.views.size() && i < most; ++i)
        text += (i == 0 ? " \"" : ", \"") + drawing.views[i].name + "\"";
    if (drawing.views.size() > most) text += " and " + std::to_string(drawing.views.size() - most) + " more";
    return text;
}

std::vector<std::string> pageViews(const Drawing& drawing) {
    std::unordered_set<int> inserted;
    for (const ViewInsert& insert : drawing.viewInserts) inserted.insert(insert.view);
    std::vector<std::string> names;
    for (const View& view : drawing.views)
        if (!inserted.contains(view.number)) names.push_back(view.name);
    return names;
}

static std::string addInSpace(PictureFile& file, const Drawing& drawing, const RenderOptions& options) {
    if (!options.view.empty() || options.allViews) return "A picture in space shows the model, not its views";
    SpacePicture space(drawing, options);
    const Page page = space.page();
    return file.addPage(page.width, page.height, [&](Ink& ink) { space.paint(ink, page.scenes[0].frame); });
}

static Page pageOf(const Drawing& drawing, const View* view, const RenderOptions& options, PictureType type) {
    const bool isOnPaper = !view && options.paper.width > 0 && options.paper.height > 0;
    if (isOnPaper)
        return makePaperPage(drawing, options.paper, options.window, options.size, type != PictureType::Png);
    if (!view && !options.window.empty) return makeWindowPage(drawing, options.window, options.size);
    return makePage(drawing, view, options.size, type == PictureType::Pdf);
}

static std::string addPages(PictureFile& file, const Drawing& drawing, const RenderOptions& options,
                            const std::vector<std::string>& names) {
    std::vector<Page> pages;
    for (const std::string& name : names) {
        const View* view = name.empty() ? nullptr : drawing.findView(name);
        if (!view && !name.empty()) return unknownView(drawing, name);
        pages.push_back(pageOf(drawing, view, options, file.type()));
    }
    if (pages.empty()) return "The drawing has no views";
    // Pages of points hold pictures that can be looked at more closely.
    constexpr double finerThanPoints = 3;
    PagePainter painter(drawing, options.dark);
    for (const Page& page : pages)
        painter.announce(page, file.type() == PictureType::Png ? 1 : finerThanPoints);
    std::string error;
    for (std::size_t i = 0; i < pages.size() && error.empty(); ++i)
        error =
            file.addPage(pages[i].width, pages[i].height, [&](Ink& ink) { painter.paint(ink, pages[i]); });
    return error;
}

PictureBook::PictureBook(const std::string& path, const std::string& type)
    : path_(path),
      file_(std::make_unique<PictureFile>(path, type.empty() ? pictureTypeOf(path) : pictureType(type))) {}
PictureBook::~PictureBook() = default;

std::string PictureBook::add(const Drawing& drawing, const RenderOptions& options) {
    const PictureType type = file_->type();
    if (type == PictureType::None) return "A picture's name ends with .svg, .png or .pdf: " + path_;
    if ((options.allViews || file_->pages() > 0) && type != PictureType::Pdf)
        return "Only a PDF has several pages: " + path_;
    file_->keepTexts(options.textsAsTexts);
    if (options.inSpace) return addInSpace(*file_, drawing, options);
    return addPages(*file_, drawing, options,
                    options.allViews ? pageViews(drawing) : std::vector<std::string>{options.view});
}

std::string PictureBook::finish() {
    return file_->finish();
}

std::string renderDrawing(const Drawing& drawing, const std::string& path, const RenderOptions& options) {
    PictureBook book(path);
    const std::string error = book.add(drawing, options);
    return error.empty() ? book.finish() : error;
}

} // namespace host
