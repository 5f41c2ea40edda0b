// What goes out is a valid file, whatever the drawing, its template and its configuration hold.
#include "exported.h"

namespace {

/// A template with layers and a line type that no file may have.
std::string strangeTemplate(const TempDir& folder) {
    return folder.write(
        "strange.dxf",
        dxf()
            .record("LTYPE", {{2, "ref|dash"}, {70, "48"}, {3, ""}, {72, "65"}, {73, "0"}, {40, "0"}})
            .layer("big", 65536, "NOWHERE")
            .layer("negative", -300, "")
            .layer("none", 0, "ByLayer")
            .layer("ref|layer", 3, "ref|dash", 48)
            .text());
}

TEST_F(Export, RecordsOfATemplateBecomeValid) {
    const TempDir folder;
    addPattern({moveTo(0, 0), drawTo(1, 0), drawTo(2, 0, 3, 62)}, "P", "big");
    const std::string lines =
        "LAYER_ELEM=ATTR\nUSE_TEMPLATE=1\nTEMPLATE_NAME=" + strangeTemplate(folder) + "\n";
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version, lines));
        EXPECT_EQ(file.errors(), "") << version;
        const bool old = version == "ACAD12" || version == "EASY";
        EXPECT_EQ(valueOf(file.first(2, old ? "BIG" : "big"), 62), "7") << version;
        EXPECT_EQ(valueOf(file.first(2, old ? "NEGATIVE" : "negative"), 62), "-7") << "still off";
        const std::string bound = old ? "REF_LAYER" : "ref_layer";
        EXPECT_EQ(valueOf(file.first(2, bound), 70), "0") << "no layer of a reference any more";
    }
}

TEST_F(Export, ColoursAreThoseOfTheFormat) {
    addPattern({moveTo(0, 0), drawTo(1, 0, 1), drawTo(2, 0, 2), drawTo(3, 0, 3)});
    const std::string pens = "\n#PEN-CAD-TO-DXF\n3\n1|300\n2|256\n3|255\n\n";
    const Exported file = exportDrawing(exportConfig("ACAD15", "", pens));
    EXPECT_EQ(file.errors(), "");
    std::string colours;
    for (std::size_t i = 0; i < 3; ++i) colours += valueOf(file.first(0, "LINE", i), 62) + " ";
    // What is no colour of an element isn't taken from a configuration.
    EXPECT_EQ(colours, "7 1 255 ");
}

TEST_F(Export, SizesAreNeverZero) {
    using host::ElementType;
    host::Pattern& pattern = addPattern({moveTo(1e-9, 0), step(ElementType::Arc, 1e-9, 0, 0, 0), moveTo(5, 5),
                                         step(ElementType::Arc, 5, 5, 5, 5)});
    host::Text text;
    text.lines = {"small"};
    text.height = 1e-8, text.width = 1e-8;
    pattern.texts.push_back(text);
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version));
        EXPECT_EQ(file.errors(), "") << version;
        EXPECT_NEAR(std::atof(valueOf(file.first(0, "CIRCLE"), 40).c_str()), 1e-9, 1e-15) << version;
        EXPECT_EQ(file.count(0, "POINT"), 1u) << "a circle without any size";
        EXPECT_NEAR(std::atof(valueOf(file.first(0, "TEXT"), 40).c_str()), 1e-8, 1e-14) << version;
    }
}

TEST_F(Export, BytesThatAreNoCharactersLeaveAsEscapes) {
    const std::string name = "B\xC2\x81\xC2\x8D\xC3\xBF"; // U+0081 and U+008D, which cp1252 lacks
    addPattern({moveTo(0, 0), drawTo(1, 0)}, "P", name);
    const Exported file = exportDrawing(exportConfig("ACAD15", "LAYER_ELEM=ATTR\n"));
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(valueOf(file.first(0, "LINE"), 8), "B\\U+0081\\U+008D\xFF");
}

TEST_F(Export, OnlyTheKeptHeaderIsNoContent) {
    host::Text text;
    text.lines = {"mine"};
    addPattern({moveTo(0, 0), drawTo(1, 0)}, "DXF-HEADER", "LAY").texts.push_back(text);
    const Exported file = exportDrawing(exportConfig("ACAD15", "LAYER_ELEM=ATTR\nLAYERFLAG_TEXT=0\n"));
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(valueOf(file.first(0, "LINE"), 8), "LAY");
    EXPECT_EQ(valueOf(file.first(0, "TEXT"), 8), "LAY");
}

} // namespace
