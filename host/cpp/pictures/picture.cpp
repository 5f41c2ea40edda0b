#include "pictures/picture.h"

#include "services/open_file.h"
#include "store/replace.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

std::string refusedSize(double width, double height) {
    const auto whole = [](double value) { return std::to_string(static_cast<long long>(value)); };
    if (width < 1 || height < 1) return "it has no pixels";
    if (width * height <= mostPicturePixels && width < 2e9 && height < 2e9) return {};
    return whole(width) + " x " + whole(height) + " pixels are too many";
}

/// A stream of a regular file; a device or a pipe could keep us waiting for ever.
static std::FILE* openStream(const std::string& path, std::string& error) {
    const int handle = path.find('\0') == std::string::npos ? openRegular(path) : -1;
    if (handle >= 0) return fdopen(handle, "rb");
    error = errno == EINVAL ? "it isn't a file" : "it can't be opened";
    return nullptr;
}

static bool beginsWith(const std::array<unsigned char, 8>& head, const std::string& mark) {
    return std::memcmp(head.data(), mark.data(), mark.size()) == 0;
}

std::unique_ptr<PictureReader> openPicture(const std::string& path, std::string& error, int reduction) {
    std::FILE* file = openStream(path, error);
    if (!file) return nullptr;
    std::array<unsigned char, 8> head{};
    const std::size_t count = std::fread(head.data(), 1, head.size(), file);
    std::rewind(file);
    const std::string littleEndian("II*\0", 4), bigEndian("MM\0*", 4), littleBig("II+\0", 4),
        bigBig("MM\0+", 4);
    if (count >= 3 && beginsWith(head, "\xFF\xD8\xFF")) return openJpeg(file, error, reduction);
    if (count == head.size() && beginsWith(head, "\x89PNG\r\n\x1A\n")) return openPng(file, error);
    if (count >= 2 && beginsWith(head, "BM")) return openBmp(file, error);
    for (const std::string& mark : {littleEndian, bigEndian, littleBig, bigBig})
        if (count >= 4 && beginsWith(head, mark)) return openTiff(file, path, error);
    std::fclose(file);
    error = "it is no JPEG, TIFF, PNG or BMP picture";
    return nullptr;
}

namespace {

/// Averages whole pixels of a picture to those of a smaller image, row by row.
class Shrinker {
public:
    Shrinker(const PictureReader& from, Image& to)
        : from_(from), to_(to), sums_(static_cast<std::size_t>(to.width)) {}

    void add(int y, const std::uint8_t* rgba) {
        for (int x = 0; x < from_.width; ++x, rgba += 4) {
            Sum& sum = sums_[static_cast<std::size_t>(std::int64_t{x} * to_.width / from_.width)];
            sum.alpha += rgba[3];
            ++sum.count;
            for (std::size_t i = 0; i < 3; ++i) sum.colour[i] += std::uint64_t{rgba[i]} * rgba[3];
        }
        const std::int64_t target = std::int64_t{y} * to_.height / from_.height;
        if ((std::int64_t{y} + 1) * to_.height / from_.height != target || y + 1 == from_.height)
            flush(target);
    }

private:
    struct Sum {
        std::uint64_t colour[3] = {0, 0, 0}; ///< times opacity
        std::uint64_t alpha = 0, count = 0;
    };

    void flush(std::int64_t y) {
        std::uint32_t* pixel = to_.pixels.data() + y * to_.width;
        for (Sum& sum : sums_) {
            std::uint32_t value =
                static_cast<std::uint32_t>(sum.alpha / std::max<std::uint64_t>(sum.count, 1)) << 24;
            for (int i = 0; i < 3; ++i)
                value |=
                    static_cast<std::uint32_t>(sum.colour[i] / (255 * std::max<std::uint64_t>(sum.count, 1)))
                    << (16 - 8 * i);
            *pixel++ = value;
            sum = {};
        }
    }

    const PictureReader& from_;
    Image& to_;
    std::vector<Sum> sums_;
};

} // namespace

/// `length` pixels, or so many as are wanted when that is less.
static int reduced(int length, double wanted) {
    return wanted < length ? std::max(1, static_cast<int>(std::ceil(wanted))) : length;
}

std::string loadImage(const std::string& path, double wantedWidth, double wantedHeight, Image& image) {
    std::string error;
    int reduction = 1;
    {
        const auto head = openPicture(path, error);
        if (!head) return error;
        const double spare =
            std::min(head->width / std::max(wantedWidth, 1.0), head->height / std::max(wantedHeight, 1.0));
        reduction = static_cast<int>(std::clamp(spare, 1.0, 8.0));
    }
    const auto reader = openPicture(path, error, reduction);
    if (!reader) return error;
    constexpr double mostPixels = 6.4e7;
    const double surplus = std::min(wantedWidth, double(reader->width)) *
                           std::min(wantedHeight, double(reader->height)) / mostPixels;
    const double shrink = surplus > 1 ? std::sqrt(surplus) : 1;
    image.width = reduced(reader->width, wantedWidth / shrink);
    image.height = reduced(reader->height, wantedHeight / shrink);
    image.fileWidth = reader->fileWidth;
    image.fileHeight = reader->fileHeight;
    image.pixels.assign(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height), 0);
    std::vector<std::uint8_t> row(static_cast<std::size_t>(reader->width) * 4);
    Shrinker shrinker(*reader, image);
    for (int y = 0; y < reader->height && reader->readRow(row.data()); ++y) shrinker.add(y, row.data());
    return {};
}

static std::string copyFile(const std::string& source, const std::string& target) {
    std::string error;
    std::FILE* from = openStream(source, error);
    if (!from) return error;
    std::FILE* to = std::fopen(target.c_str(), "wb");
    std::vector<char> buffer(1 << 16);
    bool done = to != nullptr;
    while (done) {
        const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), from);
        if (count == 0) break;
        done = std::fwrite(buffer.data(), 1, count, to) == count;
    }
    done = !std::ferror(from) && done;
    std::fclose(from);
    if (to && std::fclose(to) != 0) done = false;
    return done ? std::string() : "it can't be written";
}

std::string keepInMemory(const std::string& path) {
    const int handle = memfd_create("picture", MFD_CLOEXEC);
    if (handle < 0) return path;
    const std::string copy = "/proc/self/fd/" + std::to_string(handle);
    if (copyFile(path, copy).empty()) return copy;
    close(handle);
    return path;
}

/// Writes `source` in another format into a new file.
static std::string transcode(PictureReader& reader, const std::string& target, PictureKind kind) {
    std::string error;
    if (kind == PictureKind::Tiff) {
        writeTiff(reader, target, error);
        return error;
    }
    std::FILE* to = std::fopen(target.c_str(), "wb");
    if (!to) return "it can't be written";
    if (!writeJpeg(reader, to, error) && error.empty()) error = "it can't be written";
    if (std::fclose(to) != 0 && error.empty()) error = "it can't be written";
    return error;
}

std::string convertPicture(const std::string& source, const std::string& target, PictureKind kind) {
    std::string error;
    const auto reader = openPicture(source, error);
    if (!reader) return error;
    struct stat from {
    }, to{};
    const bool isSame = stat(source.c_str(), &from) == 0 && stat(target.c_str(), &to) == 0 &&
                        from.st_dev == to.st_dev && from.st_ino == to.st_ino;
    if (isSame && reader->kind == kind) return {};
    ReplacementFile file(target);
    error = reader->kind == kind ? copyFile(source, file.path()) : transcode(*reader, file.path(), kind);
    return error.empty() ? file.commit() : error;
}

} // namespace host
