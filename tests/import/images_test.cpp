// IMAGE and what it leads to; OLE frames.
#include "drawn.h"
#include "picture_file.h"

#include "dx_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using testing::HasSubstr;
using testing::Not;

namespace {

DxfGroups image(const DxfGroups& more = {}) {
    return DxfGroups{{8, "A"}} + at(10, {10, 20, 3}) + at(11, {0.5, 0, 0}) + at(12, {0, 0.5, 0}) +
           at(13, {4, 2}) + DxfGroups{{340, "AB"}} + more;
}

DxfText drawing(const std::string& file, const DxfGroups& more = {}) {
    return dxf()
        .header("AC1015")
        .layer("A", 1)
        .entity("IMAGE", image(more))
        .section("OBJECTS",
                 {{0, "IMAGEDEF"}, {5, "AB"}, {1, file}, {0, "IMAGEDEF"}, {5, "AC"}, {1, "other.tif"}}, true);
}

std::string bitmapOf(const DxfText& text, ImportOptions options = unshifted()) {
    options.files["p.tif"] = fourColours();
    options.files["sub/q.tif"] = fourColours();
    return elementsOf(importText(text.text(), options).dump);
}

} // namespace

TEST(Images, LieWhereTheFileSaysWithTheirRowsFromTheTop) {
    EXPECT_EQ(bitmapOf(drawing("p.tif")), "bitmap \"p.tif\" pixels 4 2 at 10 21 along 2 0 down 0 -1\n");
    EXPECT_EQ(bitmapOf(drawing("c:\\elsewhere\\p.tif")), bitmapOf(drawing("p.tif"))) << "beside the drawing";
    EXPECT_EQ(bitmapOf(drawing("sub\\q.tif")), "bitmap \"q.tif\" pixels 4 2 at 10 21 along 2 0 down 0 -1\n");
    const DxfText mirrored =
        drawing("p.tif")
            .block("B", DxfGroups{{0, "IMAGE"}} + image())
            .entity("INSERT", {{8, "A"}, {2, "B"}, {10, "0"}, {20, "0"}, {41, "-1"}, {50, "90"}});
    EXPECT_THAT(bitmapOf(mirrored), HasSubstr("at -21 -10 along 0 -2 down 1 0"));
    ImportOptions in3d = unshifted();
    in3d.in3d = true;
    const std::string dump = [&] {
        in3d.files["p.tif"] = fourColours();
        return importText(drawing("p.tif").text(), in3d).dump;
    }();
    EXPECT_THAT(dump, HasSubstr("work 1 10 21 3 12 21 3 10 20 3\n"));
    EXPECT_THAT(dump, HasSubstr("at 0 0 along 2 0 down 0 1"));
}

TEST(Images, WithoutADefinitionAFileOrASizeAreLeftOut) {
    const auto messages = [](const DxfText& text) {
        ImportOptions options = unshifted();
        options.files["p.tif"] = fourColours();
        options.files["text.tif"] = "no picture";
        const ImportResult result = importText(text.text(), options);
        EXPECT_EQ(result.stat, 0);
        std::string all;
        for (const std::string& line : result.messages)
            if (line.find("Linientyp") == std::string::npos) all += line + "\n";
        return all + elementsOf(result.dump);
    };
    EXPECT_EQ(messages(drawing("")), "");
    EXPECT_EQ(messages(drawing("p.tif", {{340, "77"}})), "");
    EXPECT_EQ(messages(drawing("no.tif")), "Datei no.tif konnte nicht geöffnet werden!\n");
    EXPECT_THAT(DxGetImportReport().images.at(0).file, "no.tif");
    EXPECT_FALSE(DxGetImportReport().images.at(0).found);
    EXPECT_THAT(messages(drawing("p.tif", {{13, "0"}})), HasSubstr("p.tif konnte nicht erzeugt werden!"));
    EXPECT_THAT(messages(drawing("p.tif", at(12, {0, 0, 0}))),
                HasSubstr("p.tif konnte nicht erzeugt werden!"));
    const std::string damaged = messages(drawing("text.tif"));
    EXPECT_THAT(damaged, HasSubstr("won't show: it is no JPEG, TIFF, PNG or BMP picture"));
    EXPECT_THAT(damaged, HasSubstr("bitmap \"text.tif\" pixels 0 0"));
    for (const char* odd : {"/dev/zero", ".", "../", "drawing.dxf"})
        EXPECT_THAT(messages(drawing(odd)), testing::AnyOf(HasSubstr("geöffnet"), HasSubstr("won't show")))
            << odd;
}

TEST(Images, ShowWhatIsWithinTheirBoundaryWhenAskedFor) {
    const DxfGroups boundary =
        DxfGroups{{70, "7"}, {280, "1"}, {71, "1"}, {91, "2"}} + at(14, {0.5, -0.5}) + at(14, {3.5, 0.5});
    EXPECT_THAT(bitmapOf(drawing("p.tif", boundary)), Not(HasSubstr("clip")));
    ImportOptions clips = unshifted();
    clips.config = flags("CLIP_IMAGES=1\n");
    EXPECT_THAT(bitmapOf(drawing("p.tif", boundary), clips), HasSubstr("clip 0.25 0 1 0 1 0.5 0.25 0.5\n"));
    EXPECT_THAT(bitmapOf(drawing("p.tif", boundary + DxfGroups{{280, "0"}}), clips), Not(HasSubstr("clip")));
}

TEST(Images, KeepTheLayerOfTheirPatternAndOthersStayApart) {
    ImportOptions options = unshifted();
    options.config = flags("READ_LAYER=ATTR\n");
    options.files["p.tif"] = fourColours();
    const DxfText text =
        drawing("p.tif").entity("LINE", DxfGroups{{8, "A"}} + at(10, {0, 0}) + at(11, {5, 5}));
    const std::string dump = importText(text.text(), options).dump;
    EXPECT_THAT(dump, HasSubstr("layer \"A\"\n  pen 2 lt 1\n  move 0 0\n  draw 5 5\n"));
    EXPECT_THAT(dump, HasSubstr("layer \"A\"\n  bitmap \"p.tif\""));
}

TEST(OleFrames, LeaveNothingAndNeverOverrun) {
    const auto import = [](const DxfGroups& data) {
        return importText(dxf()
                              .header("AC1015")
                              .entity("OLE2FRAME", data)
                              .entity("LINE", at(10, {0, 0}) + at(11, {5, 5}))
                              .text(),
                          unshifted());
    };
    for (const DxfGroups& data : {DxfGroups{{90, "4"}, {310, "00FF00FF00FF"}},
                                  {{310, "00"}},
                                  {{90, "2000000000"}},
                                  {{90, "-5"}, {310, "01"}}})
        EXPECT_EQ(elementsOf(import(data).dump), "move 0 0\ndraw 5 5\n");
    EXPECT_EQ(import({{90, "4"}, {310, "0G"}}).stat, 4009);
}
