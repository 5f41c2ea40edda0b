// BMP files: rows without compression, of 1 to 32 bits a pixel, mostly from the bottom.
#include "pictures/picture.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>

namespace host {

namespace {

using Bytes = std::array<unsigned char, 138>; ///< the file's head and the largest head of a picture

std::uint32_t wordAt(const Bytes& bytes, std::size_t at, int size = 4) {
    std::uint32_t value = 0;
    for (int i = size; i-- > 0;) value = value << 8 | bytes[at + static_cast<std::size_t>(i)];
    return value;
}

/// Where a channel stands in a pixel of 16 or 32 bits.
struct Mask {
    std::uint32_t bits = 0;
    /// From 0 to 255; a channel without bits gives `none`.
    std::uint8_t of(std::uint32_t pixel, std::uint8_t none = 0) const {
        if (bits == 0) return none;
        const int shift = std::countr_zero(bits);
        const std::uint64_t most = bits >> shift;
        return static_cast<std::uint8_t>(((pixel & bits) >> shift) * std::uint64_t{255} / most);
    }
};

class BmpReader final : public PictureReader {
public:
    explicit BmpReader(std::FILE* file) : file_(file) { kind = PictureKind::Bmp; }
    ~BmpReader() override { std::fclose(file_); }
    BmpReader(const BmpReader&) = delete;
    BmpReader& operator=(const BmpReader&) = delete;

    bool start() {
        Bytes head{};
        const std::size_t count = std::fread(head.data(), 1, head.size(), file_);
        const bool isOld = wordAt(head, 14) == oldHead;
        if (count < 26 || (!isOld && (count < 54 || wordAt(head, 14) < 40))) return fails("its head is cut");
        readHead(head, isOld);
        error_ = refusedSize(width, height);
        if (error_.empty() && !holdsItsRows()) error_ = "it ends too early";
        return error_.empty() && readColours(head, isOld);
    }

    bool readRow(std::uint8_t* rgba) override {
        const std::int64_t row = isUpright_ ? height - 1 - y_ : y_;
        ++y_;
        if (std::fseek(file_, static_cast<long>(first_ + row * static_cast<std::int64_t>(row_.size())),
                       SEEK_SET) != 0 ||
            std::fread(row_.data(), 1, row_.size(), file_) != row_.size())
            return fails("it ends too early");
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x, rgba += 4) put(x, rgba);
        return true;
    }

private:
    static constexpr std::uint32_t oldHead = 12;

    bool fails(const char* text) {
        error_ = text;
        return false;
    }

    void readHead(const Bytes& head, bool isOld) {
        first_ = wordAt(head, 10);
        const auto w = static_cast<std::int32_t>(isOld ? wordAt(head, 18, 2) : wordAt(head, 18));
        const auto h = static_cast<std::int32_t>(isOld ? wordAt(head, 20, 2) : wordAt(head, 22));
        isUpright_ = h >= 0; // rows from the bottom
        width = fileWidth = std::max(w, 0);
        height = fileHeight = h == INT32_MIN ? 0 : std::abs(h);
        bits_ = wordAt(head, isOld ? 24 : 28, 2);
        packing_ = isOld ? 0 : wordAt(head, 30);
    }

    /// Whether the file is as long as the picture in it.
    bool holdsItsRows() {
        const std::uint64_t stride = (static_cast<std::uint64_t>(width) * bits_ + 31) / 32 * 4;
        if (std::fseek(file_, 0, SEEK_END) != 0) return false;
        const long length = std::ftell(file_);
        if (length < 0 ||
            first_ + stride * static_cast<std::uint64_t>(height) > static_cast<std::uint64_t>(length))
            return false;
        row_.resize(stride);
        return true;
    }

    bool readColours(const Bytes& head, bool isOld) {
        constexpr std::uint32_t masked = 3, maskedWithOpacity = 6;
        const std::uint32_t place = 14 + wordAt(head, 14);
        const bool hasMasks = packing_ == masked || packing_ == maskedWithOpacity;
        if (packing_ != 0 && !(hasMasks && (bits_ == 16 || bits_ == 32)))
            return fails("its compression is unknown");
        if (bits_ == 1 || bits_ == 4 || bits_ == 8) return readPalette(place, isOld);
        if (bits_ == 16) setMasks(0x7c00, 0x3e0, 0x1f);
        if (bits_ == 32) setMasks(0xff0000, 0xff00, 0xff);
        if (hasMasks) setMasks(wordAt(head, 54), wordAt(head, 58), wordAt(head, 62));
        const bool hasOpacity = hasMasks && (place >= 14 + 56 || packing_ == maskedWithOpacity);
        if (hasOpacity) masks_[3].bits = wordAt(head, 66);
        return bits_ == 16 || bits_ == 24 || bits_ == 32 || fails("its colours are unknown");
    }

    void setMasks(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
        masks_[0].bits = red, masks_[1].bits = green, masks_[2].bits = blue;
    }

    /// Blue, green and red of each colour, and a byte more in newer files. Colours that the file doesn't
    /// have are black.
    bool readPalette(std::uint32_t place, bool isOld) {
        const std::size_t each = isOld ? 3 : 4;
        std::array<unsigned char, 1024> bytes{};
        const std::size_t room = first_ > place ? std::min<std::size_t>(first_ - place, each << bits_) : 0;
        if (std::fseek(file_, static_cast<long>(place), SEEK_SET) != 0 ||
            std::fread(bytes.data(), 1, room, file_) != room)
            return fails("it ends too early");
        for (std::size_t i = 0; i < palette_.size(); ++i)
            for (std::size_t channel = 0; channel < 3 && i * each + 2 < bytes.size(); ++channel)
                palette_[i][channel] = bytes[i * each + 2 - channel];
        return true;
    }

    void put(std::size_t x, std::uint8_t* rgba) const {
        const unsigned char* const row = row_.data();
        rgba[3] = 255;
        if (bits_ <= 8) {
            const std::size_t inByte = 8 / bits_, shift = (inByte - 1 - x % inByte) * bits_;
            const auto& colour = palette_[row[x / inByte] >> shift & ((1u << bits_) - 1)];
            std::copy(colour.begin(), colour.end(), rgba);
        } else if (bits_ == 24) {
            for (std::size_t channel = 0; channel < 3; ++channel) rgba[channel] = row[3 * x + 2 - channel];
        } else {
            std::uint32_t pixel = 0;
            for (std::size_t i = bits_ / 8; i-- > 0;) pixel = pixel << 8 | row[x * (bits_ / 8) + i];
            for (std::size_t channel = 0; channel < 4; ++channel)
                rgba[channel] = masks_[channel].of(pixel, channel == 3 ? 255 : 0);
        }
    }

    std::FILE* file_;
    std::uint32_t first_ = 0, bits_ = 0, packing_ = 0;
    bool isUpright_ = true;
    std::array<std::array<std::uint8_t, 3>, 256> palette_{};
    std::array<Mask, 4> masks_;
    std::vector<unsigned char> row_;
    std::int64_t y_ = 0;
};

} // namespace

std::unique_ptr<PictureReader> openBmp(std::FILE* file, std::string& error) {
    auto reader = std::make_unique<BmpReader>(file);
    if (reader->start()) return reader;
    error = reader->error();
    return nullptr;
}

} // namespace host
