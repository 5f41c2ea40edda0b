// Picture files of each format, sound and damaged.
#include "ci_bitmap.h"
#include "host_fixture.h"
#include "picture_file.h"
#include "pictures/picture.h"

namespace {

using host::PictureKind;

class PictureFiles : public FolderTest {
protected:
    /// Colours of the corners, in hexadecimal, rounded to a digit a channel.
    static std::string corners(const std::string& file, double size = 1000) {
        host::Image image;
        const std::string error = host::loadImage(file, size, size, image);
        if (!error.empty()) return error;
        std::string text = std::to_string(image.width) + "x" + std::to_string(image.height);
        for (const int y : {0, image.height - 1})
            for (const int x : {0, image.width - 1}) {
                const std::uint32_t pixel = image.pixels[static_cast<std::size_t>(y * image.width + x)];
                text += " ";
                for (const int shift : {16, 8, 0}) text += "0123456789abcdef"[(pixel >> shift & 255) >> 4];
            }
        return text;
    }
};

/// The head of a PNG, which announces a size.
std::string pngHead(std::uint32_t width, std::uint32_t height) {
    std::string bytes = "\x89PNG\r\n\x1A\n";
    const auto put = [&bytes](std::uint32_t value) {
        for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(value >> shift & 255);
    };
    std::string head = "IHDR";
    const auto part = [&head](std::uint32_t value) {
        for (const int shift : {24, 16, 8, 0}) head += static_cast<char>(value >> shift & 255);
    };
    part(width), part(height);
    head += std::string("\x08\x02\0\0\0", 5);
    std::uint32_t crc = 0xffffffff;
    for (const char c : head) {
        crc ^= static_cast<unsigned char>(c);
        for (int i = 0; i < 8; ++i) crc = crc >> 1 ^ (crc & 1 ? 0xedb88320u : 0);
    }
    put(13);
    bytes += head;
    put(~crc);
    return bytes + std::string("\0\0\1\0IDAT", 8);
}

} // namespace

TEST_F(PictureFiles, GoFromAnyFormatToTiffAndJpeg) {
    const std::string source = write("a.dat", fourColours(64, 32));
    EXPECT_EQ(corners(source), "64x32 f00 00f 0f0 fff");
    ASSERT_EQ(host::convertPicture(source, path("b.jpg"), PictureKind::Jpeg), "");
    EXPECT_EQ(corners(path("b.jpg")), "64x32 f00 00f 0f0 fff");
    ASSERT_EQ(host::convertPicture(path("b.jpg"), path("c.tif"), PictureKind::Tiff), "");
    EXPECT_EQ(corners(path("c.tif")), "64x32 f00 00f 0f0 fff");
    ASSERT_EQ(host::convertPicture(source, path("d.tif"), PictureKind::Tiff), "");
    EXPECT_EQ(contentOf(path("d.tif")), contentOf(source)) << "the same format is the same file";
    EXPECT_EQ(corners(source, 4), "4x4 f00 00f 0f0 fff") << "read as small as it is needed";
    EXPECT_EQ(corners(path("b.jpg"), 8).substr(0, 3), "8x8");
    EXPECT_EQ(host::convertPicture(source, path("no/such.tif"), PictureKind::Jpeg), "it can't be written");
}

/// A BMP of 2 by 2 pixels, red and blue above green and white, in rows from the bottom.
static std::string bmp(int bits, const std::string& between, const std::string& rows,
                       std::uint32_t width = 2) {
    std::string bytes = "BM";
    const auto put = [&bytes](std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 255);
    };
    put(0, 4), put(0, 4), put(static_cast<std::uint32_t>(54 + between.size()), 4);
    put(40, 4), put(width, 4), put(2, 4), put(1, 2), put(static_cast<std::uint32_t>(bits), 2);
    for (int i = 0; i < 6; ++i) put(0, 4);
    return bytes + between + rows;
}

TEST_F(PictureFiles, MayBeBitmapsOfAnyDepth) {
    const std::string wanted = "2x2 f00 00f 0f0 fff";
    const std::string red("\0\0\xff\0", 4), green("\0\xff\0\0", 4), blue("\xff\0\0\0", 4),
        white("\xff\xff\xff\0", 4);
    const std::string palette = red + blue + green + white;
    EXPECT_EQ(corners(write("4.bmp", bmp(4, palette, std::string("\x23\0\0\0\x01\0\0\0", 8)))), wanted);
    EXPECT_EQ(corners(write("8.bmp", bmp(8, palette, std::string("\2\3\0\0\0\1\0\0", 8)))), wanted);
    EXPECT_EQ(corners(write("16.bmp", bmp(16, "", std::string("\xe0\x03\xff\x7f\0\x7c\x1f\0", 8)))), wanted);
    const std::string fill(2, '\0');
    EXPECT_EQ(corners(write("24.bmp", bmp(24, "",
                                          green.substr(0, 3) + white.substr(0, 3) + fill + red.substr(0, 3) +
                                              blue.substr(0, 3) + fill))),
              wanted);
    EXPECT_EQ(corners(write("32.bmp", bmp(32, "", green + white + red + blue))), wanted);
    EXPECT_EQ(corners(write("cut.bmp", bmp(32, "", green + white + red))), "it ends too early");
    EXPECT_EQ(corners(write("bomb.bmp", bmp(32, "", "", 1u << 30))), "1073741824 x 2 pixels are too many");
    EXPECT_EQ(corners(write("odd.bmp", bmp(7, "", std::string(64, 'x')))), "its colours are unknown");
    EXPECT_EQ(corners(write("head.bmp", "BM")), "its head is cut");
    ASSERT_EQ(host::convertPicture(path("4.bmp"), path("4.tif"), PictureKind::Tiff), "");
    EXPECT_EQ(corners(path("4.tif")), wanted);
}

TEST_F(PictureFiles, ThatAreNoPicturesOrTooLargeAreRefused) {
    EXPECT_EQ(corners(write("bomb.png", pngHead(100'000, 100'000))), "100000 x 100000 pixels are too many");
    EXPECT_EQ(corners("/dev/zero"), "it isn't a file");
    EXPECT_EQ(corners(folder_), "it isn't a file");
    EXPECT_EQ(corners(path("none")), "it can't be opened");
    EXPECT_EQ(corners(write("t.tif", "a text")), "it is no JPEG, TIFF, PNG or BMP picture");
    const std::string whole = fourColours(64, 32);
    ASSERT_EQ(host::convertPicture(write("w.tif", whole), path("w.jpg"), PictureKind::Jpeg), "");
    for (const std::string& content : {whole, contentOf(path("w.jpg"))}) {
        for (std::size_t length = 0; length < content.size(); length += 37) {
            const std::string cut = write("cut", content.substr(0, length));
            corners(cut);
            host::convertPicture(cut, path("cut.jpg"), PictureKind::Jpeg);
            std::string damaged = content;
            damaged[length] = static_cast<char>(damaged[length] ^ 0x5a);
            corners(write("damaged", damaged));
        }
    }
}

TEST_F(PictureFiles, StandInPatternsByCursor) {
    DsCsr cursor = cursorOf(newPattern());
    CiBitmap bitmaps(0);
    const RPT3 u{2, 0, 0}, v{0, -1, 0}, none{0, 0, 0};
    const std::string file = write("p.tif", fourColours());
    EXPECT_NE(bitmaps.Add(&cursor, path("none.tif"), {0, 0, 0}, &u, &v), 0);
    EXPECT_NE(bitmaps.Add(&cursor, file, {0, 0, 0}, &u, &none), 0);
    ASSERT_EQ(bitmaps.Add(&cursor, file, {5, 6, 0}, &u, &v), 0);
    ASSERT_EQ(bitmaps.First(cursor), 0);
    RPT3 corner{}, along{}, down{};
    int width = 0, height = 0;
    ASSERT_EQ(bitmaps.Get(cursor, &corner, &along, &down, &width, &height), 0);
    EXPECT_EQ(std::make_tuple(corner.x, corner.y, along.x, down.y, width, height),
              std::make_tuple(5.0, 6.0, 2.0, -1.0, 4, 2));
    EXPECT_EQ(bitmaps.Export(cursor, path("q.jpg"), 2, 2), 0);
    EXPECT_EQ(bitmaps.Export(cursor, path("no/q.jpg"), 2, 2), 9000);
    EXPECT_NE(bitmaps.Next(cursor), 0);
}
