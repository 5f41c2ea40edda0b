#include "render/render.h"

#include "drawing/extents.h"
#include "render/bitmap.h"
#include "render/page.h"
#include "render/painter.h"
#include "render/space_picture.h"
#include "store/replace.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_set>

namespace host {

namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

enum class Format { None, Svg, Png, Pdf };

} // namespace

static Format formatOf(const std::string& path) {
    const std::size_t point = path.find_last_of('.');
    std::string extension = point == std::string::npos ? "" : path.substr(point + 1);
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (extension == "svg") return Format::Svg;
    if (extension == "png") return Format::Png;
    return extension == "pdf" ? Format::Pdf : Format::None;
}

static cairo_status_t writeToFile(void* file, const unsigned char* data, unsigned length) {
    const bool done = std::fwrite(data, 1, length, static_cast<FILE*>(file)) == length;
    return done ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

static Surface makeSurface(Format format, double width, double height, FILE* file) {
    cairo_surface_t* surface = nullptr;
    switch (format) {
    case Format::Svg: surface = cairo_svg_surface_create_for_stream(writeToFile, file, width, height); break;
    case Format::Pdf: surface = cairo_pdf_surface_create_for_stream(writeToFile, file, width, height); break;
    default:
        surface =
            cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width), static_cast<int>(height));
    }
    return {surface, cairo_surface_destroy};
}

namespace {

/// Draws pages. Fills lie under all lines and texts over them, whatever the order of the patterns.
class PagePainter {
public:
    PagePainter(const Drawing& drawing, bool dark) : drawing_(drawing), dark_(dark) {}

    /// Tells the pictures at which size they will be shown. `finer`: pixels in a device unit.
    void announce(const Page& page, double finer);
    void paint(cairo_t* cairo, const Page& page);

private:
    bool isShown(std::size_t index, const Scene& scene);
    void paintScene(cairo_t* cairo, const Scene& scene);

    const Drawing& drawing_;
    bool dark_;
    PictureCache pictures_;
    std::vector<std::optional<Extents>> boxes_; ///< of the patterns, by their places, once they are asked for
};

using Stage = void (Painter::*)(const Pattern&);
constexpr Stage stages[] = {&Painter::drawBitmaps, &Painter::drawHatches,  &Painter::drawFaces,
                            &Painter::drawCurves,  &Painter::drawElements, &Painter::drawDimensions,
                            &Painter::drawPoints,  &Painter::drawTexts};

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

void PagePainter::paintScene(cairo_t* cairo, const Scene& scene) {
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < drawing_.patterns.size(); ++i)
        if (isShown(i, scene)) shown.push_back(i);
    Painter painter(cairo, drawing_, scene.frame, dark_, pictures_);
    for (const Stage stage : stages) {
        for (const std::size_t i : shown) {
            const Pattern& pattern = drawing_.patterns[i];
            if (pattern.workId == 0) {
                (painter.*stage)(pattern);
                continue;
            }
            const Frame frame = patternFrame(drawing_, pattern, scene.frame);
            Painter onPlane(cairo, drawing_, frame, dark_, pictures_);
            (onPlane.*stage)(pattern);
        }
    }
}

void PagePainter::paint(cairo_t* cairo, const Page& page) {
    setSource(cairo, dark_ ? Rgb{0, 0, 0} : Rgb{255, 255, 255});
    cairo_paint(cairo);
    for (const Scene& scene : page.scenes) {
        cairo_save(cairo);
        for (const RPT& p : scene.clip)
            cairo_line_to(cairo, std::clamp(p.x, -1e5, 1e5), std::clamp(p.y, -1e5, 1e5));
        if (!scene.clip.empty()) cairo_clip(cairo);
        paintScene(cairo, scene);
        cairo_restore(cairo);
        cairo_new_path(cairo);
    }
}

static cairo_status_t writePages(const std::vector<Page>& pages, Format format, FILE* file,
                                 const std::function<void(cairo_t*, const Page&)>& paint) {
    const Surface surface = makeSurface(format, pages[0].width, pages[0].height, file);
    {
        const Context cairo(cairo_create(surface.get()), cairo_destroy);
        for (const Page& page : pages) {
            if (format == Format::Pdf) cairo_pdf_surface_set_size(surface.get(), page.width, page.height);
            paint(cairo.get(), page);
            cairo_show_page(cairo.get());
        }
        if (const cairo_status_t status = cairo_status(cairo.get())) return status;
    }
    cairo_status_t status = CAIRO_STATUS_SUCCESS;
    if (format == Format::Png) status = cairo_surface_write_to_png_stream(surface.get(), writeToFile, file);
    cairo_surface_finish(surface.get());
    return status ? status : cairo_surface_status(surface.get());
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

/// Writes the pages into a file beside `path` that takes its place when it is whole.
static std::string writeFile(const std::string& path, const std::vector<Page>& pages,
                             const std::function<void(cairo_t*, const Page&)>& paint) {
    ReplacementFile target(path);
    FILE* file = std::fopen(target.path().c_str(), "wb");
    if (!file) return "Can't write " + path;
    const cairo_status_t status = writePages(pages, formatOf(path), file, paint);
    const bool closed = std::fclose(file) == 0;
    if (status) return "Can't draw " + path + ": " + cairo_status_to_string(status);
    return closed ? target.commit() : "Can't write " + path;
}

static std::string renderInSpace(const Drawing& drawing, const std::string& path,
                                 const RenderOptions& options) {
    if (!options.view.empty() || options.allViews) return "A picture in space shows the model, not its views";
    SpacePicture space(drawing, options);
    const Page page = space.page();
    return writeFile(path, {page},
                     [&](cairo_t* cairo, const Page&) { space.paint(cairo, page.scenes[0].frame); });
}

std::string renderDrawing(const Drawing& drawing, const std::string& path, const RenderOptions& options) {
    const Format format = formatOf(path);
    if (format == Format::None) return "A picture's name ends with .svg, .png or .pdf: " + path;
    if (options.inSpace) return renderInSpace(drawing, path, options);
    const std::vector<std::string> names =
        options.allViews ? pageViews(drawing) : std::vector<std::string>{options.view};
    if (options.allViews && format != Format::Pdf) return "Only a PDF has several pages: " + path;
    std::vector<Page> pages;
    for (const std::string& name : names) {
        const View* view = name.empty() ? nullptr : drawing.findView(name);
        if (!view && !name.empty()) return unknownView(drawing, name);
        pages.push_back(makePage(drawing, view, options.size, format == Format::Pdf));
    }
    if (pages.empty()) return "The drawing has no views";
    // Pages of points hold pictures that can be looked at more closely.
    constexpr double finerThanPoints = 3;
    PagePainter painter(drawing, options.dark);
    for (const Page& page : pages) painter.announce(page, format == Format::Png ? 1 : finerThanPoints);
    return writeFile(path, pages, [&](cairo_t* cairo, const Page& page) { painter.paint(cairo, page); });
}

} // namespace host
