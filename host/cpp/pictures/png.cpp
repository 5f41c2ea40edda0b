// PNG files.
#include "pictures/picture.h"

#include <csetjmp>
#include <png.h>

namespace host {

namespace {

/// libpng's errors come back by a jump: functions that call it hold nothing that needs an end.
class PngReader final : public PictureReader {
public:
    explicit PngReader(std::FILE* file) : file_(file) { kind = PictureKind::Png; }
    ~PngReader() override {
        png_destroy_read_struct(&png_, &info_, nullptr);
        std::fclose(file_);
    }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    bool start() {
        png_ =
            png_create_read_struct(PNG_LIBPNG_VER_STRING, this, leave, [](png_structp, png_const_charp) {});
        info_ = png_ ? png_create_info_struct(png_) : nullptr;
        if (!info_ || !readHead()) return false;
        error_ = refusedSize(width, height);
        // The rows of an interlaced picture come in passes over the whole.
        constexpr double mostInterlaced = 2.5e8;
        if (error_.empty() && passes_ > 1 && double(width) * height > mostInterlaced)
            error_ = "an interlaced picture of " + std::to_string(width) + " x " + std::to_string(height) +
                     " pixels is too large";
        return error_.empty();
    }

    bool readRow(std::uint8_t* rgba) override {
        if (passes_ == 1) return readLine(rgba);
        const std::size_t length = static_cast<std::size_t>(width) * 4;
        if (whole_.empty()) {
            whole_.resize(length * static_cast<std::size_t>(height));
            if (!readWhole()) return false;
        }
        const std::uint8_t* row = whole_.data() + length * static_cast<std::size_t>(y_++);
        std::copy(row, row + length, rgba);
        return true;
    }

private:
    [[noreturn]] static void leave(png_structp png, png_const_charp text) {
        static_cast<PngReader*>(png_get_error_ptr(png))->error_ = text;
        png_longjmp(png, 1);
    }

    bool readHead() {
        if (setjmp(png_jmpbuf(png_))) return false; // NOLINT: the library's way
        constexpr png_uint_32 longest = 0x7fffffff;
        png_set_user_limits(png_, longest, longest);
        png_init_io(png_, file_);
        png_read_info(png_, info_);
        const png_uint_32 w = png_get_image_width(png_, info_), h = png_get_image_height(png_, info_);
        width = fileWidth = static_cast<int>(w);
        height = fileHeight = static_cast<int>(h);
        png_set_expand(png_);
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        png_set_add_alpha(png_, 255, PNG_FILLER_AFTER);
        passes_ = png_set_interlace_handling(png_);
        return true;
    }

    bool readLine(std::uint8_t* rgba) {
        if (setjmp(png_jmpbuf(png_))) return false; // NOLINT: the library's way
        png_read_row(png_, rgba, nullptr);
        return true;
    }

    bool readWhole() {
        if (setjmp(png_jmpbuf(png_))) return false; // NOLINT: the library's way
        for (int pass = 0; pass < passes_; ++pass)
            for (int y = 0; y < height; ++y)
                png_read_row(
                    png_, whole_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width) * 4,
                    nullptr);
        return true;
    }

    std::FILE* file_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    int passes_ = 1, y_ = 0;
    std::vector<std::uint8_t> whole_; ///< of an interlaced picture
};

} // namespace

std::unique_ptr<PictureReader> openPng(std::FILE* file, std::string& error) {
    auto reader = std::make_unique<PngReader>(file);
    if (reader->start()) return reader;
    error = reader->error().empty() ? "no memory" : reader->error();
    return nullptr;
}

} // namespace host
