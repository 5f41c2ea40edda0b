// What paints the paths of a Cairo context: Cairo itself, or a writer of its own that takes them over.
#pragma once

#include "render/thin_glyphs.h"

#include <cairo.h>

#include <string>
#include <vector>

namespace host {

class FontFile;

/// Cairo's own painting. Paths, colours, dashes, matrices are set at the context; what makes marks of them
/// goes through here.
class Ink {
public:
    /// The context outlives the ink.
    explicit Ink(cairo_t* cairo) : cairo_(cairo) {}
    virtual ~Ink() = default;
    Ink(const Ink&) = delete;
    Ink& operator=(const Ink&) = delete;

    cairo_t* cairo() const { return cairo_; }

    virtual void stroke() { cairo_stroke(cairo_); }
    virtual void fill() { cairo_fill(cairo_); }
    virtual void clip() { cairo_clip(cairo_); }
    virtual void paint() { cairo_paint(cairo_); }
    virtual void save() { cairo_save(cairo_); }
    virtual void restore() { cairo_restore(cairo_); }
    /// Characters as glyphs of the font that the context has, one for each. `weight`, in the context's units:
    /// width of a line around them that makes them bolder; below 0 what is taken off on all sides.
    virtual void glyphs(const FontFile& file, const std::vector<char32_t>& characters,
                        const std::vector<cairo_glyph_t>& glyphs, double weight);

    /// Whether the picture tells layers apart: then each stands between beginLayer() and endLayer().
    virtual bool hasLayers() const { return false; }
    virtual void beginLayer(const std::string& name);
    virtual void endLayer() {}

protected:
    /// What a weight below 0 takes off, in parts of a unit of the em square (ThinGlyphs::kParts).
    int thinner(double weight) const;
    ThinGlyphs thin_;

private:
    cairo_t* cairo_;
};

} // namespace host
