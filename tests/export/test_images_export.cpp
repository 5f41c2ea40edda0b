// Pictures on their way out: entity, definition, file.
#include "exported.h"
#include "picture_file.h"

#include "pictures/picture.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

/// A drawing with a picture of 100 by 50 pixels that is 20 wide and 10 high, from (1, 2).
class ImageExport : public testing::Test {
protected:
    void SetUp() override {
        startDrawing();
        host::Pattern& pattern = addPattern({moveTo(0, 0), drawTo(30, 30)});
        pattern.bitmaps.push_back({folder.write("source.tif", fourColours(100, 50)),
                                   100,
                                   50,
                                   {1, 12, 0},
                                   {20, 0, 0},
                                   {0, -10, 0},
                                   {}});
    }
    static std::string sizeOf(const std::string& path) {
        std::string error;
        const auto reader = host::openPicture(path, error);
        if (!reader) return error;
        const char* kinds[] = {"jpeg", "tiff", "png"};
        return std::string(kinds[static_cast<int>(reader->kind)]) + " " + std::to_string(reader->width) +
               " " + std::to_string(reader->height);
    }
    const Installation installation;
    const TempDir folder;
};

} // namespace

TEST_F(ImageExport, WritesEntityDefinitionAndFile) {
    for (const std::string& version : VERSIONS) {
        SCOPED_TRACE(version);
        const Exported file = exportTo(folder, exportConfig(version, "NO_KOMMA=6\n"));
        ASSERT_EQ(file.stat, 0);
        EXPECT_EQ(file.errors(), "");
        if (version == "ACAD12" || version == "EASY") {
            EXPECT_FALSE(file.has("IMAGE"));
            EXPECT_THAT(file.protocol, HasSubstr("1 bitmap was not written."));
            continue;
        }
        const bool isNew =
            version == "ACAD32" || version == "ACAD27" || version == "ACAD24" || version == "ACAD21";
        const std::string name = isNew ? "out_1_1.tif" : "out_1_1.jpg";
        EXPECT_EQ(sizeOf(folder.file(name)), isNew ? "tiff 100 50" : "jpeg 100 50");
        EXPECT_EQ(file.has("Pixelbilder"), false);
        EXPECT_EQ(file.protocol.find("Pixelbilder") != std::string::npos, !isNew);
        const DxfGroups image = file.first(0, "IMAGE"), definition = file.first(0, "IMAGEDEF");
        EXPECT_THAT(
            shown(image),
            HasSubstr("100=AcDbRasterImage 10=1.000000 20=2.000000 30=0.000000 11=0.200000 21=0.000000"));
        EXPECT_THAT(shown(image), HasSubstr("12=0.000000 22=0.200000"));
        EXPECT_THAT(shown(image), HasSubstr("71=1 91=2 14=-0.500000 24=-0.500000 14=99.500000 24=49.500000"));
        EXPECT_EQ(valueOf(image, 340), valueOf(definition, 5));
        EXPECT_EQ(valueOf(image, 360), valueOf(file.first(0, "IMAGEDEF_REACTOR"), 5));
        EXPECT_THAT(shown(definition),
                    HasSubstr("1=" + name + " 10=100.000000 20=50.000000 11=0.010000 21=0.020000"));
    }
}

TEST_F(ImageExport, ComesBackAsItWas) {
    host::openDrawing().patterns[0].bitmaps[0].outline = {{0, 0}, {1, 0}, {0.5, 1}};
    exportTo(folder, exportConfig("ACAD32", "NO_KOMMA=15\n"));
    ImportOptions options;
    options.numbers["&DxfInsbase"] = 1;
    options.config = "#FLAGS-START\nCLIP_IMAGES=1\n#FLAGS-END\n#EOF\n";
    EXPECT_THAT(
        importFile(folder, "out.dxf", options).dump,
        HasSubstr("bitmap \"out_1_1.tif\" pixels 100 50 at 1 12 along 20 0 down 0 -10 clip 0 0 1 0 0.5 1"));
}

TEST_F(ImageExport, LeavesOutWhatIsForegroundOrNoPicture) {
    host::Pattern& pattern = host::openDrawing().patterns[0];
    pattern.attributes = {{"remark", "foreground"}};
    EXPECT_EQ(exportTo(folder, exportConfig("ACAD32")).count(0, "IMAGE"), 0u);
    pattern.attributes.clear();
    pattern.bitmaps.push_back({folder.file("gone.tif"), 0, 0, {1, 12, 0}, {20, 0, 0}, {0, -10, 0}, {}});
    const Exported file = exportTo(folder, exportConfig("ACAD32"));
    EXPECT_EQ(file.count(0, "IMAGE"), 1u);
    EXPECT_THAT(file.protocol, HasSubstr("1 bitmap was not written."));
}

TEST_F(ImageExport, NeverReadsAPictureThatItHasJustReplaced) {
    // The second picture's file is what the first one's will be called.
    host::Pattern& pattern = host::openDrawing().patterns[0];
    host::Bitmap second = pattern.bitmaps[0];
    second.file = folder.write("out_1_1.tif", fourColours(8, 8));
    second.width = second.height = 8;
    pattern.bitmaps.push_back(second);
    exportTo(folder, exportConfig("ACAD32"));
    EXPECT_EQ(sizeOf(folder.file("out_1_1.tif")), "tiff 100 50");
    EXPECT_EQ(sizeOf(folder.file("out_1_2.tif")), "tiff 8 8");
}
