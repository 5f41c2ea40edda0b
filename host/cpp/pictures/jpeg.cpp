// JPEG files.
#include "pictures/picture.h"

#include <csetjmp>
#include <cstdio> // ahead of jpeglib.h, which needs it
#include <cstring>

#include <jpeglib.h>

namespace host {

namespace {

/// libjpeg's errors come back by a jump: functions that call it hold nothing that needs an end.
struct JpegErrors {
    jpeg_error_mgr base;
    std::jmp_buf back;
    char text[JMSG_LENGTH_MAX];
};

void leave(j_common_ptr jpeg) {
    auto* errors = reinterpret_cast<JpegErrors*>(jpeg->err);
    jpeg->err->format_message(jpeg, errors->text);
    std::longjmp(errors->back, 1);
}

void keepQuiet(j_common_ptr /*jpeg*/) {}

jpeg_error_mgr* prepare(JpegErrors& errors) {
    jpeg_error_mgr* base = jpeg_std_error(&errors.base);
    base->error_exit = leave;
    base->output_message = keepQuiet;
    errors.text[0] = 0;
    return base;
}

class JpegReader final : public PictureReader {
public:
    explicit JpegReader(std::FILE* file) : file_(file) {
        kind = PictureKind::Jpeg;
        jpeg_.err = prepare(errors_);
    }
    ~JpegReader() override {
        jpeg_destroy_decompress(&jpeg_);
        std::fclose(file_);
    }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    bool start(int reduction) {
        if (!readHead(reduction)) return fail();
        error_ = refusedSize(fileWidth, fileHeight);
        if (!error_.empty()) return false;
        row_.resize(std::size_t{jpeg_.output_width} * static_cast<std::size_t>(jpeg_.output_components));
        return true;
    }

    bool readRow(std::uint8_t* rgba) override {
        if (!readLine()) return fail();
        const std::uint8_t* from = row_.data();
        const int channels = jpeg_.output_components;
        for (int x = 0; x < width; ++x, from += channels, rgba += 4) putPixel(from, channels, rgba);
        return true;
    }

private:
    bool fail() {
        error_ = errors_.text[0] ? errors_.text : "the file is damaged";
        return false;
    }

    /// Four channels are inks, written inverted by the programs that write them.
    static void putPixel(const std::uint8_t* from, int channels, std::uint8_t* rgba) {
        const bool isGrey = channels < 3;
        for (int i = 0; i < 3; ++i) rgba[i] = from[isGrey ? 0 : i];
        if (channels == 4)
            for (int i = 0; i < 3; ++i) rgba[i] = static_cast<std::uint8_t>(from[i] * from[3] / 255);
        rgba[3] = 255;
    }

    bool readHead(int reduction) {
        if (setjmp(errors_.back)) return false; // NOLINT: the library's way
        jpeg_create_decompress(&jpeg_);
        jpeg_.mem->max_memory_to_use = 256L << 20;
        jpeg_stdio_src(&jpeg_, file_);
        jpeg_read_header(&jpeg_, TRUE);
        fileWidth = static_cast<int>(jpeg_.image_width);
        fileHeight = static_cast<int>(jpeg_.image_height);
        const bool isInks = jpeg_.jpeg_color_space == JCS_CMYK || jpeg_.jpeg_color_space == JCS_YCCK;
        if (isInks)
            jpeg_.out_color_space = JCS_CMYK;
        else if (jpeg_.jpeg_color_space != JCS_GRAYSCALE)
            jpeg_.out_color_space = JCS_RGB;
        jpeg_.scale_num = 1;
        jpeg_.scale_denom = reduction >= 8 ? 8U : reduction >= 4 ? 4U : reduction >= 2 ? 2U : 1U;
        jpeg_calc_output_dimensions(&jpeg_);
        width = static_cast<int>(jpeg_.output_width);
        height = static_cast<int>(jpeg_.output_height);
        return true;
    }

    bool readLine() {
        if (setjmp(errors_.back)) return false; // NOLINT: the library's way
        if (!started_) jpeg_start_decompress(&jpeg_);
        started_ = true;
        JSAMPROW row = row_.data();
        return jpeg_read_scanlines(&jpeg_, &row, 1) == 1;
    }

    std::FILE* file_;
    jpeg_decompress_struct jpeg_{};
    JpegErrors errors_{};
    bool started_ = false;
    std::vector<std::uint8_t> row_;
};

/// The writing side; rows are handed over one by one.
class JpegWriter {
public:
    JpegWriter() { jpeg_.err = prepare(errors_); }
    ~JpegWriter() { jpeg_destroy_compress(&jpeg_); }
    JpegWriter(const JpegWriter&) = delete;
    JpegWriter& operator=(const JpegWriter&) = delete;

    bool start(std::FILE* to, int width, int height) {
        constexpr int quality = 92;
        if (setjmp(errors_.back)) return false; // NOLINT: the library's way
        jpeg_create_compress(&jpeg_);
        jpeg_stdio_dest(&jpeg_, to);
        jpeg_.image_width = static_cast<JDIMENSION>(width);
        jpeg_.image_height = static_cast<JDIMENSION>(height);
        jpeg_.input_components = 3;
        jpeg_.in_color_space = JCS_RGB;
        jpeg_set_defaults(&jpeg_);
        jpeg_set_quality(&jpeg_, quality, TRUE);
        jpeg_start_compress(&jpeg_, TRUE);
        return true;
    }
    bool write(std::uint8_t* row) {
        if (setjmp(errors_.back)) return false; // NOLINT: the library's way
        return jpeg_write_scanlines(&jpeg_, &row, 1) == 1;
    }
    bool finish() {
        if (setjmp(errors_.back)) return false; // NOLINT: the library's way
        jpeg_finish_compress(&jpeg_);
        return true;
    }
    const char* text() const { return errors_.text; }

private:
    jpeg_compress_struct jpeg_{};
    JpegErrors errors_{};
};

/// Red, green and blue before a white ground, packed in place.
void dropOpacity(std::uint8_t* row, int width) {
    for (int x = 0; x < width; ++x) {
        const std::uint8_t* from = row + std::ptrdiff_t{4} * x;
        const int opacity = from[3];
        for (int i = 0; i < 3; ++i)
            row[std::ptrdiff_t{3} * x + i] =
                static_cast<std::uint8_t>((from[i] * opacity + 255 * (255 - opacity)) / 255);
    }
}

} // namespace

std::unique_ptr<PictureReader> openJpeg(std::FILE* file, std::string& error, int reduction) {
    auto reader = std::make_unique<JpegReader>(file);
    if (reader->start(reduction)) return reader;
    error = reader->error();
    return nullptr;
}

bool writeJpeg(PictureReader& from, std::FILE* to, std::string& error) {
    constexpr int longestSide = 65'500;
    if (from.width > longestSide || from.height > longestSide) {
        error = "a JPEG file can't have " + std::to_string(from.width) + " x " + std::to_string(from.height) +
                " pixels";
        return false;
    }
    JpegWriter writer;
    std::vector<std::uint8_t> row(static_cast<std::size_t>(from.width) * 4);
    bool done = writer.start(to, from.width, from.height);
    for (int y = 0; done && y < from.height; ++y) {
        if (!from.readRow(row.data())) {
            error = from.error();
            return false;
        }
        dropOpacity(row.data(), from.width);
        done = writer.write(row.data());
    }
    if (done && writer.finish()) return true;
    error = writer.text();
    return false;
}

} // namespace host
