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

TEST_F(PictureFiles, ThatAreNoPicturesOrTooLargeAreRefused) {
    EXPECT_EQ(corners(write("bomb.png", pngHead(100'000, 100'000))), "100000 x 100000 pixels are too many");
    EXPECT_EQ(corners("/dev/zero"), "it isn't a file");
    EXPECT_EQ(corners(folder_), "it isn't a file");
    EXPECT_EQ(corners(path("none")), "it can't be opened");
    EXPECT_EQ(corners(write("t.tif", "a text")), "it is no JPEG, TIFF or PNG picture");
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
