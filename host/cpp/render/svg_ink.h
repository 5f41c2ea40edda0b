// Pictures as SVG: paths with relative whole coordinates, a group for each layer, texts as texts or outlines.
#pragma once

#include "render/ink.h"
#include "render/svg_path.h"

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace host {

class SvgInk : public Ink {
public:
    /// `cairo` keeps colours, dashes and paths and shows nothing. `textsAsTexts`: with the viewer's fonts, to
    /// be searched and edited; else outlines, which look the same everywhere.
    SvgInk(cairo_t* cairo, double width, double height, bool textsAsTexts);
    ~SvgInk() override;

    void stroke() override;
    void fill() override;
    void clip() override;
    void paint() override;
    void save() override;
    void restore() override;
    void glyphs(const FontFile& file, const std::vector<char32_t>& characters,
                const std::vector<cairo_glyph_t>& glyphs, double weight) override;
    bool hasLayers() const override { return true; }
    void beginLayer(const std::string& name) override;
    void endLayer() override;

    /// The whole file.
    std::string document();

private:
    /// Glyphs that stand on one line in one look.
    struct Run {
        std::string look; ///< attributes of its element
        std::string places, text, uses;
    };

    void flush();
    void flushRun();
    std::string source(const char* role);
    std::string gradient(cairo_pattern_t* pattern);
    void drawImage(cairo_surface_t* surface);
    std::string outlineOf(const FontFile& file, unsigned long index, int less);
    void glyph(const FontFile& file, char32_t c, const cairo_glyph_t& at, double weight);
    void addGlyph(char32_t c, const std::string& outline, double x);
    std::string newId(char kind);
    std::string layerId(const std::string& name);

    double width_, height_;
    bool textsAsTexts_;
    std::string defs_, body_;
    SvgPath path_;        ///< strokes of one look that wait for more of it
    std::string strokes_; ///< their look
    Run run_;
    std::vector<int> clips_{0};  ///< groups that clips opened, by the level of save()
    std::string layer_;          ///< the open one
    std::size_t layerStart_ = 0; ///< where in the body it begins
    std::map<std::tuple<const FontFile*, unsigned long, int>, std::string> outlines_; ///< ids, empty: no ink
    std::map<cairo_surface_t*, std::string> images_; ///< a reference held on each
    std::set<std::string> layerIds_;
    int ids_ = 0;
};

} // namespace host
