// Picture files: JPEG, TIFF, PNG and BMP, read (and the first two written) row by row, so that a large
// picture takes no more memory than its rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace host {

enum class PictureKind { Jpeg, Tiff, Png, Bmp };

/// Larger pictures are refused: small files can announce any size.
inline constexpr double mostPicturePixels = 1e9;

/// Rows of a picture from the top, 8 bits a channel.
class PictureReader {
public:
    virtual ~PictureReader() = default;
    /// The next row as red, green, blue and opacity of each pixel. False, with `error()`, for a damaged file.
    virtual bool readRow(std::uint8_t* rgba) = 0;

    PictureKind kind = PictureKind::Jpeg;
    int width = 0, height = 0;         ///< of the rows that it gives
    int fileWidth = 0, fileHeight = 0; ///< of the picture in the file
    const std::string& error() const { return error_; }

protected:
    std::string error_; ///< empty: all is well
};

/// Opens a picture by its content. Null, with the reason in `error`, for what is no regular file, is of no
/// known kind, damaged at its head or too large. `reduction`: the caller will do with rows of a size divided
/// by so much, if the format gives that cheaply.
std::unique_ptr<PictureReader> openPicture(const std::string& path, std::string& error, int reduction = 1);

/// A picture in memory.
struct Image {
    int width = 0, height = 0;
    int fileWidth = 0, fileHeight = 0;
    std::vector<std::uint32_t> pixels; ///< opacity, red, green, blue from the highest byte; multiplied
};

/// Reads a picture at about `wantedWidth` by `wantedHeight` pixels, never larger than it is. Rows behind a
/// damage stay transparent. Empty, or why there is no picture.
std::string loadImage(const std::string& path, double wantedWidth, double wantedHeight, Image& image);

/// Writes a picture file as TIFF or JPEG: the same bytes where the source is of that kind already. Replaces
/// `target` only by a finished file. Empty, or what went wrong.
std::string convertPicture(const std::string& source, const std::string& target, PictureKind kind);

/// A copy of a file that lives as long as the program: its path, or that of the file when there is no memory.
std::string keepInMemory(const std::string& path);

// ---- one format each -------------------------------------------------------------------------------
// They own the stream from here on. Null with `error` as above.

std::unique_ptr<PictureReader> openJpeg(std::FILE* file, std::string& error, int reduction);
std::unique_ptr<PictureReader> openPng(std::FILE* file, std::string& error);
std::unique_ptr<PictureReader> openBmp(std::FILE* file, std::string& error);
std::unique_ptr<PictureReader> openTiff(std::FILE* file, const std::string& path, std::string& error);
bool writeJpeg(PictureReader& from, std::FILE* to, std::string& error);
bool writeTiff(PictureReader& from, const std::string& path, std::string& error);

/// Empty, or why a picture of this size is refused.
std::string refusedSize(double width, double height);

} // namespace host
