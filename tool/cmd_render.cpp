// torva-dxf render: pictures of a drawing.
#include "account.h"
#include "environment.h"
#include "file_kind.h"
#include "interrupt.h"
#include "jobs.h"
#include "load.h"
#include "options.h"
#include "paper.h"
#include "streams.h"
#include "tell.h"
#include "words.h"

#include "render/render.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
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
    picture.textsAsTexts = options.text == "text";
    picture.hidden = options.hidden;
    picture.shade = options.shade;
    picture.inSpace = options.hidden || options.shade || !options.direction.empty();
    if (const auto& d = options.direction; !d.empty()) picture.direction = {d[0], d[1], d[2]};
    if (const auto& w = options.window; !w.empty()) {
        picture.window.add(w[0], w[1]);
        picture.window.add(w[2], w[3]);
    }
    return picture;
}

/// The open drawing becomes what the options want to see of it.
static void dress(host::Drawing& drawing, const Options& options) {
    settleLayers(drawing, options.allLayers);
    if (options.mono)
        for (int pen = 0; pen <= 1023; ++pen) drawing.pens[pen] = {0, 0, 0};
    if (options.legible) host::makeLegible(drawing, options.dark);
}

/// Brings an input into the open drawing. False when there is nothing to draw. `status` becomes what it was
/// worth.
static bool bringIn(const std::string& input, const Options& options, int& status) {
    const Loaded loaded = loadInput(input, options, options.inputs.size() == 1);
    const int outcome = tellOutcome(input, loaded, options);
    const bool isEmpty = outcome != STATUS_DONE && host::openDrawing().elementCount == 0;
    if (!loaded.error.empty() || isEmpty || isInterrupted()) {
        status = STATUS_FAILED;
        return false;
    }
    dress(host::openDrawing(), options);
    status = std::max({status, outcome, lossStatus(loaded, options)});
    return true;
}

static int tell(const std::string& error) {
    return error.empty() ? STATUS_DONE : fail(words::retold(error));
}

static std::string stemOf(const std::string& input) {
    return input == "-" ? "stdin" : fs::path(input).stem().string();
}

static std::string targetOf(const std::string& input, const Options& options) {
    return (fs::path(options.directory) / (stemOf(input) + "." + options.pictureType)).string();
}

/// A picture, or one of each view, into the folder.
static int renderInto(const std::string& input, const Options& options) {
    int status = STATUS_DONE;
    if (!bringIn(input, options, status)) return status;
    const host::Drawing& drawing = host::openDrawing();
    const auto draw = [&](const std::string& name, const std::string& view, const std::string& path) {
        host::RenderOptions picture = pictureOptions(options);
        picture.allViews = false;
        picture.view = view;
        const int drawn = tell(host::renderDrawing(drawing, path, picture));
        if (drawn == STATUS_DONE && !options.quiet) std::cerr << name << " -> " << path << '\n';
        status = std::max(status, drawn);
    };
    if (!options.allViews) {
        draw(input, options.view, targetOf(input, options));
        return status;
    }
    std::set<std::string> taken;
    for (const std::string& view : host::pageViews(drawing)) {
        const std::string name =
            freeName(stemOf(input) + " " + fileNameOf(view), taken) + "." + options.pictureType;
        draw(view, view, (fs::path(options.directory) / name).string());
    }
    return status;
}

/// Why the pictures can't stand in the folder: two would have one name, or an input would be overwritten.
static std::string whyNotInFolder(const Options& options) {
    std::error_code error;
    std::set<fs::path> inputs;
    for (const std::string& input : options.inputs) inputs.insert(fs::weakly_canonical(input, error));
    std::map<std::string, std::string> sources;
    for (const std::string& input : options.inputs) {
        const std::string target = targetOf(input, options);
        if (std::string wrong = whyNotTarget(input, target, "picture"); !wrong.empty()) return wrong;
        const auto [source, isNew] = sources.try_emplace(target, input);
        if (!isNew) return words::say("{} and {} would both become {}", source->second, input, target);
        if (inputs.contains(fs::weakly_canonical(target, error)))
            return words::say("input and output are one file: {}", target);
    }
    return {};
}

static int renderIntoFolder(const Options& options) {
    if (const std::string wrong = whyNotInFolder(options); !wrong.empty()) return fail(wrong, STATUS_USAGE);
    if (!makeFolder(options.directory)) return STATUS_FAILED;
    return forEachInput(options.inputs, options.jobs,
                        [&](const std::string& input) { return renderInto(input, options); });
}

/// All inputs into one file, a page each or a page for each view. What can't be read has no page.
static int renderBook(const Options& options) {
    for (const std::string& input : options.inputs)
        if (const std::string wrong = whyNotTarget(input, options.output, "picture"); !wrong.empty())
            return fail(wrong, STATUS_USAGE);
    const TemporaryFolder folder;
    const bool toStream = isStream(options.output);
    const std::string target = toStream ? folder.file("picture") : options.output;
    host::PictureBook book(target, options.pictureType);
    int status = STATUS_DONE, drawn = 0;
    for (const std::string& input : options.inputs) {
        if (!bringIn(input, options, status)) continue;
        const std::string error = book.add(host::openDrawing(), pictureOptions(options));
        drawn += error.empty();
        status = std::max(status, tell(error));
    }
    if (drawn == 0) return status;
    if (const int written = tell(book.finish()); written != STATUS_DONE) return written;
    if (toStream && !copyToStream(target, options.output) && options.output != "-")
        return fail(options.output, words::say("can't be written"));
    return status;
}

int runRender(const Options& options) {
    return options.directory.empty() ? renderBook(options) : renderIntoFolder(options);
}

} // namespace tool
