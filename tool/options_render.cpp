#include "options_render.h"

#include "paper.h"
#include "words.h"

#include "render/render.h"

#include <cmath>

namespace tool {

static void addTargets(CLI::App& render, Options& options) {
    render.add_option("FILES", options.inputs, "IN OUT (- is standard output), or IN... with -d or -o")
        ->required();
    const auto output = render.add_option("-o,--output", options.output,
                                          "Picture; its extension says the type. Several inputs: one PDF");
    const auto folder = render.add_option("-d,--directory", options.directory,
                                          "Folder for a picture of each input, or of each view");
    folder->excludes(output);
    render
        .add_option("--type,--as", options.pictureType,
                    "Type of the picture: in a folder png, else by its name")
        ->check(CLI::IsMember({"png", "svg", "pdf"}));
    render.add_option("--jobs", options.jobs, "Files worked on at a time, a process each")
        ->check(CLI::Range(1, 256))
        ->needs(folder);
}

static void addViews(CLI::App& render, Options& options) {
    const auto view =
        render.add_option("--view", options.view, "A sheet or another view of the drawing, by its name");
    const auto allViews = render.add_flag("--all-views", options.allViews,
                                          "The model and each sheet: pages of a PDF, or with -d files");
    allViews->excludes(view);
    render.add_option("--window", options.window, "x1,y1,x2,y2: a part of the model, by two of its corners")
        ->delimiter(',')
        ->expected(4)
        ->allow_extra_args(false)
        ->excludes(view)
        ->excludes(allViews);
    render
        .add_option("--direction", options.direction, "x,y,z: where the viewer of a picture in space stands")
        ->delimiter(',')
        ->expected(3)
        ->allow_extra_args(false);
    render.add_flag("--hidden", options.hidden, "In space: without the lines behind faces");
    render.add_flag("--shade", options.shade, "In space: faces lit");
}

static void addPaper(CLI::App& render, Options& options) {
    const auto paper =
        render.add_option("--paper", options.paper, "Sheet of paper for the model: A0 to A5, or WxH in mm")
            ->check([](const std::string& text) {
                return paperFromWord(text) ? "" : words::say("no paper: {}", text);
            })
            ->excludes("--view")
            ->excludes("--all-views");
    render.add_option("--scale", options.scale, "Of the paper over the drawing: 1:50, or fit")
        ->check([](const std::string& text) {
            return scaleFromWord(text) ? "" : words::say("no scale: {}", text);
        })
        ->needs(paper)
        ->capture_default_str();
    render.add_option("--margin", options.margin, "What a fitted drawing leaves free, mm")
        ->check(CLI::Range(0.0, 500.0))
        ->needs(paper)
        ->capture_default_str();
    render.add_flag("--landscape", options.landscape, "The paper's longer side lies")->needs(paper);
}

void addPictureOptions(CLI::App& render, Options& options) {
    addTargets(render, options);
    render.add_option("--size", options.size, "Longer side in pixels or points")
        ->check(CLI::Range(16, 16000))
        ->capture_default_str();
    render.add_option("--text", options.text, "Texts of an SVG: outlines, or text in the viewer's fonts")
        ->check(CLI::IsMember({"text", "outline"}));
    addViews(render, options);
    addPaper(render, options);
    render.add_flag("--dark", options.dark, "On black");
    const auto mono = render.add_flag("--mono", options.mono, "All lines black");
    render
        .add_flag("--legible", options.legible, "Light colours darker on white, dark ones lighter on black")
        ->excludes(mono);
    render.add_flag("--all-layers", options.allLayers, "Layers that are off, frozen or not plotted too");
}

/// IN OUT becomes an input and an output.
static std::string splitFiles(Options& options) {
    if (!options.output.empty() || !options.directory.empty()) return {};
    if (options.inputs.size() < 2)
        return words::say("render needs the name of a picture, or -d DIR for pictures in a folder");
    if (options.inputs.size() > 2)
        return words::say("several inputs need -d DIR, or -o BOOK.pdf for pages of one PDF");
    options.output = options.inputs.back();
    options.inputs.pop_back();
    return {};
}

/// The type that the options or else the names say; empty where none does.
static std::string settleType(Options& options) {
    if (!options.directory.empty()) {
        if (options.pictureType.empty()) options.pictureType = "png";
        return {};
    }
    const host::PictureType named = host::pictureTypeOf(options.output);
    std::string& type = options.pictureType;
    if (type.empty() && options.output == "-")
        return words::say("a picture on standard output needs --type svg, png or pdf");
    if (!type.empty() && named != host::PictureType::None && named != host::pictureType(type))
        return words::say("the name of {} says another type than --type {}", options.output, type);
    if (type.empty() && named == host::PictureType::Pdf) type = "pdf";
    if (type.empty() && named == host::PictureType::Svg) type = "svg";
    if (type.empty() && named == host::PictureType::Png) type = "png";
    return {};
}

static std::string checkText(const Options& options) {
    if (options.text.empty() || options.pictureType == "svg") return {};
    return words::say("--text says how texts stand in an SVG; this picture is none");
}

static std::string checkSpace(const Options& options) {
    const bool inSpace = options.hidden || options.shade || !options.direction.empty();
    if (!inSpace) return {};
    if (!options.paper.empty() || !options.window.empty())
        return words::say("a picture in space takes neither --paper nor --window");
    return {};
}

std::string settlePicture(Options& options, bool spaceGiven) {
    if (std::string wrong = splitFiles(options); !wrong.empty()) return wrong;
    if (std::string wrong = settleType(options); !wrong.empty()) return wrong;
    if (std::string wrong = checkText(options); !wrong.empty()) return wrong;
    const bool isOneFile = options.directory.empty() && options.pictureType != "pdf";
    if (isOneFile && options.inputs.size() > 1)
        return words::say("several inputs become one picture only as a PDF: {}", options.output);
    if (isOneFile && options.allViews && !options.pictureType.empty())
        return words::say("--all-views needs a PDF, or -d DIR for a picture of each view");
    if (const auto& w = options.window; !w.empty()) {
        const bool isFinite = std::isfinite(w[2] - w[0]) && std::isfinite(w[3] - w[1]);
        if (!isFinite || w[0] == w[2] || w[1] == w[3]) return words::say("the window has no area");
    }
    // Who asks for a sheet of a DXF file wants it read.
    if ((options.allViews || !options.view.empty()) && !spaceGiven) options.read.space = "all";
    return checkSpace(options);
}

} // namespace tool
