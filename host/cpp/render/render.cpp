#include "render/render.h"

#include "render/painter.h"
#include "render/space_picture.h"
#include "store/replace.h"
#include "text/layout.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>

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

/// Units of the drawing in a millimetre of the sheet.
static double unitsPerMm(const Drawing& drawing) {
    const double factor = sheetMillimetres(drawing);
    return std::isfinite(factor) && factor > 0 && std::isfinite(1 / factor) ? 1 / factor : 1;
}

static bool isShown(const Drawing& drawing, const Pattern& pattern) {
    return pattern.number > 0 && !pattern.scratch && drawing.isVisible(pattern);
}

/// Settles what the picture shows. Empty, or what is wrong with the wish.
static std::string makeFrame(const Drawing& drawing, const RenderOptions& options, const SpacePicture* space,
                             Frame& frame) {
    const int size = std::clamp(options.size, 16, 16'000);
    if (space && !options.view.empty()) return "A view is seen from above; leave out the direction";
    if (space) {
        frame = fitFrame(space->extents(), size);
        space->tilt(frame);
    } else if (options.view.empty()) {
        frame = fitFrame(drawing.extents(), size);
    } else {
        const auto view = std::find_if(drawing.views.begin(), drawing.views.end(),
                                       [&](const View& v) { return v.name == options.view; });
        if (view == drawing.views.end()) return "The drawing has no view named " + options.view;
        frame = sheetFrame(*view, size);
    }
    frame.width = std::max(1.0, std::round(frame.width));
    frame.height = std::max(1.0, std::round(frame.height));
    frame.unitsPerMm = unitsPerMm(drawing);
    return {};
}

/// Fills lie under all lines and texts over them, whatever the order of the patterns.
static void paintFlat(cairo_t* cairo, const Drawing& drawing, const Frame& frame, bool dark) {
    Painter painter(cairo, drawing, frame, dark);
    using Stage = void (Painter::*)(const Pattern&);
    for (const Stage stage : {&Painter::drawHatches, &Painter::drawFaces, &Painter::drawCurves,
                              &Painter::drawElements, &Painter::drawPoints, &Painter::drawTexts}) {
        for (const Pattern& pattern : drawing.patterns)
            if (isShown(drawing, pattern)) (painter.*stage)(pattern);
    }
}

static cairo_status_t writePicture(const Frame& frame, Format format, FILE* file,
                                   const std::function<void(cairo_t*)>& paint) {
    const Surface surface = makeSurface(format, frame.width, frame.height, file);
    {
        const Context cairo(cairo_create(surface.get()), cairo_destroy);
        paint(cairo.get());
        cairo_show_page(cairo.get());
        if (const cairo_status_t status = cairo_status(cairo.get())) return status;
    }
    cairo_status_t status = CAIRO_STATUS_SUCCESS;
    if (format == Format::Png) status = cairo_surface_write_to_png_stream(surface.get(), writeToFile, file);
    cairo_surface_finish(surface.get());
    return status ? status : cairo_surface_status(surface.get());
}

std::string renderDrawing(const Drawing& drawing, const std::string& path, const RenderOptions& options) {
    const Format format = formatOf(path);
    if (format == Format::None) return "A picture's name ends with .svg, .png or .pdf: " + path;
    std::optional<SpacePicture> space;
    if (options.inSpace) space.emplace(drawing, options);
    Frame frame;
    if (std::string wrong = makeFrame(drawing, options, space ? &*space : nullptr, frame); !wrong.empty())
        return wrong;

    ReplacementFile target(path);
    FILE* file = std::fopen(target.path().c_str(), "wb");
    if (!file) return "Can't write " + path;
    const cairo_status_t status = writePicture(frame, format, file, [&](cairo_t* cairo) {
        setSource(cairo, options.dark ? Rgb{0, 0, 0} : Rgb{255, 255, 255});
        cairo_paint(cairo);
        if (space)
            space->paint(cairo, frame);
        else
            paintFlat(cairo, drawing, frame, options.dark);
    });
    const bool closed = std::fclose(file) == 0;
    if (status) return "Can't draw " + path + ": " + cairo_status_to_string(status);
    return closed ? target.commit() : "Can't write " + path;
}

} // namespace host
