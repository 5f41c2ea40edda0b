// A picture's file in the making: it takes its place only when it is whole.
#pragma once

#include "render/ink.h"
#include "render/render.h"
#include "store/replace.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

namespace host {

class PictureFile {
public:
    PictureFile(const std::string& path, PictureType type);
    ~PictureFile();

    PictureType type() const { return type_; }
    int pages() const { return pages_; }
    /// See RenderOptions::textsAsTexts; ahead of the first page.
    void keepTexts(bool asTexts) { textsAsTexts_ = asTexts; }
    /// A page of that size in device units: pixels or points. Only a PDF has more than one.
    /// Result: empty, or what went wrong.
    std::string addPage(double width, double height, const std::function<void(Ink&)>& paint);
    /// Brings the file into its place. Result: empty, or what went wrong.
    std::string finish();

private:
    using File = std::unique_ptr<FILE, int (*)(FILE*)>;
    using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

    std::string open(double width, double height);
    std::string failure(cairo_status_t status) const;

    std::string path_;
    PictureType type_;
    ReplacementFile target_;
    File file_;
    Surface surface_;
    std::string document_; ///< of an SVG
    bool textsAsTexts_ = false;
    int pages_ = 0;
};

} // namespace host
