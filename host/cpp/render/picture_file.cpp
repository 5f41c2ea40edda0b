#include "render/picture_file.h"

#include "render/svg_ink.h"

#include <cairo-pdf.h>

#include <cctype>

namespace host {

PictureType pictureType(std::string word) {
    for (char& c : word) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (word == "svg") return PictureType::Svg;
    if (word == "png") return PictureType::Png;
    return word == "pdf" ? PictureType::Pdf : PictureType::None;
}

PictureType pictureTypeOf(const std::string& path) {
    const std::size_t point = path.find_last_of('.');
    return point == std::string::npos ? PictureType::None : pictureType(path.substr(point + 1));
}

static cairo_status_t writeToFile(void* file, const unsigned char* data, unsigned length) {
    const bool done = std::fwrite(data, 1, length, static_cast<FILE*>(file)) == length;
    return done ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

static cairo_surface_t* makeSurface(PictureType type, double width, double height, FILE* file) {
    switch (type) {
    case PictureType::Svg: return cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1); // for its context
    case PictureType::Pdf: return cairo_pdf_surface_create_for_stream(writeToFile, file, width, height);
    default:
        return cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width),
                                          static_cast<int>(height));
    }
}

PictureFile::PictureFile(const std::string& path, PictureType type)
    : path_(path), type_(type), target_(path), file_(nullptr, std::fclose),
      surface_(nullptr, cairo_surface_destroy) {}

PictureFile::~PictureFile() {
    surface_.reset(); // it writes into the file to its end
}

std::string PictureFile::failure(cairo_status_t status) const {
    return "Can't draw " + path_ + ": " + cairo_status_to_string(status);
}

std::string PictureFile::open(double width, double height) {
    file_.reset(std::fopen(target_.path().c_str(), "wb"));
    if (!file_) return "Can't write " + path_;
    surface_.reset(makeSurface(type_, width, height, file_.get()));
    return {};
}

std::string PictureFile::addPage(double width, double height, const std::function<void(Ink&)>& paint) {
    if (pages_ == 0) {
        if (std::string error = open(width, height); !error.empty()) return error;
    }
    if (type_ == PictureType::Pdf) cairo_pdf_surface_set_size(surface_.get(), width, height);
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface_.get()),
                                                                   cairo_destroy);
    if (type_ == PictureType::Svg) {
        SvgInk ink(cairo.get(), width, height, textsAsTexts_);
        paint(ink);
        document_ = ink.document();
    } else {
        Ink ink(cairo.get());
        paint(ink);
        cairo_show_page(cairo.get());
    }
    ++pages_;
    const cairo_status_t status = cairo_status(cairo.get());
    return status ? failure(status) : std::string();
}

std::string PictureFile::finish() {
    if (!file_) return "Can't write " + path_;
    cairo_status_t status = CAIRO_STATUS_SUCCESS;
    const bool isWritten =
        std::fwrite(document_.data(), 1, document_.size(), file_.get()) == document_.size();
    if (type_ == PictureType::Png)
        status = cairo_surface_write_to_png_stream(surface_.get(), writeToFile, file_.get());
    cairo_surface_finish(surface_.get());
    if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface_.get());
    const bool closed = std::fclose(file_.release()) == 0;
    if (status) return failure(status);
    return closed && isWritten ? target_.commit() : "Can't write " + path_;
}

} // namespace host
