// torva-dxf render: pictures of a drawing.
#include "account.h"
#include "file_kind.h"
#include "load.h"
#include "options.h"
#include "paper.h"
#include "tell.h"
#include "words.h"

#include "render/render.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>

namespace tool {

namespace fs = std::filesystem;

/// A view's name as part of a file's: what could lead elsewhere or what a system may refuse becomes "_".
static std::string fileNameOf(const std::string& view) {
    constexpr std::size_t longest = 100;
    std::string name;
    for (const char c : view.substr(0, longest)) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = byte >= 0x80 || (byte > 0x20 && std::string_view("/\\:*?\"<>|#").find(c) ==
                                                                 std::string_view::npos);
        name += isPlain || c == ' ' ? c : '_';
    }
    // A character that was cut in the middle goes.
    while (view.size() > longest && !name.empty() && (static_cast<unsigned char>(name.back()) & 0xC0) == 0x80)
        name.pop_back();
    if (view.size() > longest && !name.empty() && static_cast<unsigned char>(name.back()) >= 0xC0)
        name.pop_back();
    return name.empty() ? "_" : name; // the input's name stands in front of it
}

/// The name with a number behind it, if letters of either case have it already.
static std::string freeName(const std::string& wanted, std::set<std::string>& taken) {
    const auto folded = [](std::string text) {
        for (char& c : text)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
        return text;
    };
    std::string name = wanted;
    for (int i = 2; !taken.insert(folded(name)).second; ++i) name = wanted + "_" + std::to_string(i);
    return name;
}

static int tell(const std::string& error) {
    return error.empty() ? STATUS_DONE : fail(words::retold(error));
}

static int renderInto(const host::Drawing& drawing, const Options& options) {
    if (!makeFolder(options.directory)) return STATUS_FAILED;
    const std::string input = options.inputs.front();
    const std::string stem = input == "-" ? "stdin" : fs::path(input).stem().string();
    std::set<std::string> taken;
    int worst = STATUS_DONE;
    for (const std::string& view : host::pageViews(drawing)) {
        const std::string name = freeName(stem + " " + fileNameOf(view), taken) + "." + options.pictureType;
        const std::string path = (fs::path(options.directory) / name).string();
        const int status = tell(
            host::renderDrawing(drawing, path, {.size = options.size, .view = view, .dark = options.dark}));
        if (status == STATUS_DONE && !options.quiet) std::cerr << view << " -> " << path << '\n';
        worst = std::max(worst, status);
    }
    return worst;
}

/// A picture shows what a plot would, or with `all` what is hidden and what isn't plotted too.
static void settleLayers(host::Drawing& drawing, bool all) {
    for (host::Layer& layer : drawing.layers) layer.visible = all || (layer.visible && layer.look.plotted);
    if (!all) return;
    for (host::Pattern& pattern : drawing.patterns)
        if (!pattern.ids.layer.empty()) pattern.visible = true;
}

static host::RenderOptions pictureOptions(const Options& options) {
    host::RenderOptions picture;
    picture.size = options.size;
    picture.view = options.view;
    picture.dark = options.dark;
    picture.allViews = options.allViews;
    picture.paper = paperOf(options);
    picture.hidden = options.hidden;
    picture.shade = options.shade;
    picture.inSpace = options.hidden || options.shade || !options.direction.empty();
    if (const auto& d = options.direction; !d.empty()) picture.direction = {d[0], d[1], d[2]};
    return picture;
}

int runRender(const Options& options) {
    const std::string& input = options.inputs.front();
    if (const std::string wrong = whyNotTarget(input, options.output, "picture"); !wrong.empty())
        return fail(wrong, STATUS_USAGE);
    const Loaded loaded = loadInput(input, options, true);
    const int status = tellOutcome(input, loaded, options);
    settleLayers(host::openDrawing(), options.allLayers);
    if (options.mono)
        for (int pen = 0; pen <= 1023; ++pen) host::openDrawing().pens[pen] = {0, 0, 0};
    const host::Drawing& drawing = host::openDrawing();
    if (!loaded.error.empty() || (status != STATUS_DONE && drawing.elementCount == 0)) return STATUS_FAILED;
    const int drawn = options.directory.empty()
                          ? tell(host::renderDrawing(drawing, options.output, pictureOptions(options)))
                          : renderInto(drawing, options);
    return std::max({status, drawn, lossStatus(loaded, options)});
}

} // namespace tool
