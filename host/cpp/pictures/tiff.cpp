// TIFF files.
#include "pictures/picture.h"

#include <algorithm>
#include <cstring>
#include <tiffio.h>
#include <unistd.h>

namespace host {

namespace {

using Tiff = std::unique_ptr<TIFF, void (*)(TIFF*)>;

/// Rows of a TIFF file. What has 8 bits a channel, or one bit, in strips comes row by row; everything else,
/// such as tiles, inks or 16 bits, by the library's own pixels, a strip or a row of tiles at a time.
class TiffReader final : public PictureReader {
public:
    explicit TiffReader(Tiff tiff) : tiff_(std::move(tiff)) { kind = PictureKind::Tiff; }

    bool start() {
        std::uint32_t w = 0, h = 0;
        TIFFGetField(tiff_.get(), TIFFTAG_IMAGEWIDTH, &w);
        TIFFGetField(tiff_.get(), TIFFTAG_IMAGELENGTH, &h);
        if (!(error_ = refusedSize(w, h)).empty()) return false;
        width = fileWidth = static_cast<int>(w);
        height = fileHeight = static_cast<int>(h);
        return isPlain() ? startPlain() : startBands();
    }

    bool readRow(std::uint8_t* rgba) override {
        const bool done = bandHeight_ == 0 ? readPlain(rgba) : readFromBand(rgba);
        ++y_;
        if (!done && error_.empty()) error_ = "the file is damaged";
        return done;
    }

private:
    template <class T>
    T field(ttag_t tag, T value) const {
        TIFFGetFieldDefaulted(tiff_.get(), tag, &value);
        return value;
    }

    bool isPlain() {
        bits_ = field<std::uint16_t>(TIFFTAG_BITSPERSAMPLE, 1);
        channels_ = field<std::uint16_t>(TIFFTAG_SAMPLESPERPIXEL, 1);
        photometric_ = field<std::uint16_t>(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        const auto planar = field<std::uint16_t>(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        const auto compression = field<std::uint16_t>(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
        const bool isGrey =
            channels_ == 1 && (bits_ == 1 || bits_ == 8) && photometric_ <= PHOTOMETRIC_MINISBLACK;
        const bool isColour =
            (channels_ == 3 || channels_ == 4) && bits_ == 8 && photometric_ == PHOTOMETRIC_RGB;
        return !TIFFIsTiled(tiff_.get()) && planar == PLANARCONFIG_CONTIG &&
               compression != COMPRESSION_JPEG && (isGrey || isColour);
    }

    bool startPlain() {
        const tmsize_t length = TIFFScanlineSize(tiff_.get());
        const std::size_t needed = bits_ == 1 ? (static_cast<std::size_t>(width) + 7) / 8
                                              : static_cast<std::size_t>(width) * channels_;
        if (length <= 0 || static_cast<std::size_t>(length) < needed) return false;
        line_.resize(static_cast<std::size_t>(length));
        return true;
    }

    bool readPlain(std::uint8_t* rgba) {
        if (TIFFReadScanline(tiff_.get(), line_.data(), static_cast<std::uint32_t>(y_), 0) < 0) return false;
        const std::uint8_t* from = line_.data();
        const bool inverted = photometric_ == PHOTOMETRIC_MINISWHITE;
        for (int x = 0; x < width; ++x, rgba += 4) {
            rgba[3] = channels_ == 4 ? from[std::ptrdiff_t{4} * x + 3] : 255;
            for (int i = 0; i < 3; ++i) {
                const int value = bits_ == 1       ? (from[x / 8] >> (7 - x % 8) & 1) * 255
                                  : channels_ == 1 ? from[x]
                                                   : from[std::ptrdiff_t{channels_} * x + i];
                rgba[i] = static_cast<std::uint8_t>(inverted ? 255 - value : value);
            }
        }
        return true;
    }

    bool startBands() {
        char why[1024] = "";
        if (!TIFFRGBAImageOK(tiff_.get(), why)) {
            error_ = why;
            return false;
        }
        if (TIFFIsTiled(tiff_.get())) {
            tileWidth_ = static_cast<int>(field<std::uint32_t>(TIFFTAG_TILEWIDTH, 0));
            bandHeight_ = static_cast<int>(field<std::uint32_t>(TIFFTAG_TILELENGTH, 0));
        } else {
            const auto rows = field<std::uint32_t>(TIFFTAG_ROWSPERSTRIP, 0);
            bandHeight_ = static_cast<int>(std::min<std::uint32_t>(rows, static_cast<std::uint32_t>(height)));
        }
        constexpr double mostBand = 1.2e8;
        const double tile = double(std::max(tileWidth_, 1)) * bandHeight_;
        if (bandHeight_ <= 0 || (TIFFIsTiled(tiff_.get()) && tileWidth_ <= 0) ||
            double(width) * bandHeight_ > mostBand || tile > mostBand) {
            error_ = "its strips or tiles are too large";
            return false;
        }
        band_.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(bandHeight_));
        return true;
    }

    bool readFromBand(std::uint8_t* rgba) {
        const int inBand = y_ % bandHeight_;
        if (inBand == 0 && !readBand()) return false;
        const std::uint32_t* from =
            band_.data() + static_cast<std::size_t>(inBand) * static_cast<std::size_t>(width);
        for (int x = 0; x < width; ++x, rgba += 4) {
            const std::uint32_t pixel = from[x];
            rgba[0] = static_cast<std::uint8_t>(TIFFGetR(pixel));
            rgba[1] = static_cast<std::uint8_t>(TIFFGetG(pixel));
            rgba[2] = static_cast<std::uint8_t>(TIFFGetB(pixel));
            rgba[3] = static_cast<std::uint8_t>(TIFFGetA(pixel));
        }
        return true;
    }

    /// The rows from y_ on. The library gives a strip or a tile with its last row first.
    bool readBand() {
        const auto y = static_cast<std::uint32_t>(y_);
        const std::size_t w = static_cast<std::size_t>(width);
        const int rows = std::min(bandHeight_, height - y_);
        if (tileWidth_ == 0) {
            if (!TIFFReadRGBAStrip(tiff_.get(), y, band_.data())) return false;
            for (int top = 0, bottom = rows - 1; top < bottom; ++top, --bottom)
                std::swap_ranges(band_.begin() + static_cast<std::ptrdiff_t>(w) * top,
                                 band_.begin() + static_cast<std::ptrdiff_t>(w) * (top + 1),
                                 band_.begin() + static_cast<std::ptrdiff_t>(w) * bottom);
            return true;
        }
        std::vector<std::uint32_t> tile(static_cast<std::size_t>(tileWidth_) *
                                        static_cast<std::size_t>(bandHeight_));
        for (int x = 0; x < width; x += tileWidth_) {
            if (!TIFFReadRGBATile(tiff_.get(), static_cast<std::uint32_t>(x), y, tile.data())) return false;
            const int columns = std::min(tileWidth_, width - x);
            for (int row = 0; row < rows; ++row)
                std::copy_n(tile.begin() + std::ptrdiff_t{tileWidth_} * (bandHeight_ - 1 - row), columns,
                            band_.begin() + static_cast<std::ptrdiff_t>(w) * row + x);
        }
        return true;
    }

    Tiff tiff_;
    int bits_ = 0, channels_ = 0, photometric_ = 0;
    int y_ = 0;
    int bandHeight_ = 0, tileWidth_ = 0; ///< 0: row by row; 0: strips
    std::vector<std::uint8_t> line_;
    std::vector<std::uint32_t> band_;
};

Tiff openFile(const std::string& path, const char* mode) {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, tmsize_t{1} << 30);
    const auto quiet = [](TIFF*, void*, const char*, const char*, va_list) { return 1; };
    TIFFOpenOptionsSetErrorHandlerExtR(options, quiet, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, quiet, nullptr);
    TIFF* tiff = TIFFOpenExt(path.c_str(), mode, options);
    TIFFOpenOptionsFree(options);
    return {tiff, TIFFClose};
}

bool writeRows(PictureReader& from, TIFF* tiff, std::string& error) {
    constexpr int channels = 3;
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, from.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, from.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, channels);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
    const auto width = static_cast<std::size_t>(from.width);
    std::vector<std::uint8_t> rgba(width * 4), rgb(width * channels);
    for (int y = 0; y < from.height; ++y) {
        if (!from.readRow(rgba.data())) {
            error = from.error();
            return false;
        }
        for (std::size_t x = 0; x < width; ++x) {
            const int opacity = rgba[4 * x + 3];
            for (std::size_t i = 0; i < channels; ++i)
                rgb[channels * x + i] =
                    static_cast<std::uint8_t>((rgba[4 * x + i] * opacity + 255 * (255 - opacity)) / 255);
        }
        if (TIFFWriteScanline(tiff, rgb.data(), static_cast<std::uint32_t>(y), 0) < 0) {
            error = "it can't be written";
            return false;
        }
    }
    if (TIFFFlush(tiff)) return true;
    error = "it can't be written";
    return false;
}

} // namespace

std::unique_ptr<PictureReader> openTiff(std::FILE* file, const std::string& path, std::string& error) {
    std::fclose(file); // the library has a stream of its own
    Tiff tiff = openFile(path, "rm");
    if (!tiff) {
        error = "the file is damaged";
        return nullptr;
    }
    auto reader = std::make_unique<TiffReader>(std::move(tiff));
    if (reader->start()) return reader;
    error = reader->error().empty() ? "the file is damaged" : reader->error();
    return nullptr;
}

bool writeTiff(PictureReader& from, const std::string& path, std::string& error) {
    const Tiff tiff = openFile(path, "w");
    if (tiff) return writeRows(from, tiff.get(), error);
    error = "it can't be written";
    return false;
}

} // namespace host
