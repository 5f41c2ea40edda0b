// Element chains on their way out: lines, arcs, circles, polylines, layers and colours.
#include "exported.h"
#include "faces.h"

namespace {

using host::ElementType;

TEST_F(Export, ElementsBecomeEntitiesOfTheirOwn) {
    addPattern({moveTo(0, 0), drawTo(10, 0), step(ElementType::Arc, 20, 10, 10, 10),
                step(ElementType::Arc, 30, 0, 20, 0, false), moveTo(55, 50),
                step(ElementType::Circle, 55, 50, 50, 50)});
    const Exported file = exportDrawing(exportConfig("ACAD12", "LAYER_ELEM=ATTR\n"));
    EXPECT_EQ(shown(file.first(0, "LINE")), "0=LINE 8=LAY 6=" + valueOf(file.first(0, "LINE"), 6) +
                                                " 62=7 10=0.000000 20=0.000000 11=10.000000 21=0.000000");
    EXPECT_EQ(valueOf(file.first(0, "ARC"), 50), "270.000000");
    EXPECT_EQ(valueOf(file.first(0, "ARC"), 51), "0.000000");
    const DxfGroups clockwise = file.first(0, "ARC", 1);
    EXPECT_EQ(valueOf(clockwise, 50), "0.000000") << "arcs run counter-clockwise in the file";
    EXPECT_EQ(valueOf(clockwise, 51), "90.000000");
    EXPECT_EQ(valueOf(file.first(0, "CIRCLE"), 40), "5.000000");
    EXPECT_EQ(valueOf(file.first(9, "$EXTMAX"), 10), "55.000000");
    EXPECT_EQ(file.errors(), "");
}

TEST_F(Export, ACircleNeedsNoMoveAheadOfIt) {
    addPattern({moveTo(0, 0), drawTo(10, 0), step(ElementType::Circle, 55, 50, 50, 50), drawTo(60, 50)});
    const Exported file = exportDrawing(exportConfig("ACAD15"));
    EXPECT_EQ(file.count(0, "CIRCLE"), 1u);
    EXPECT_EQ(file.count(0, "ARC"), 0u);
    EXPECT_EQ(valueOf(file.first(0, "LINE", 1), 10), "55.000000");
}

TEST_F(Export, ChainsBecomePolylinesUpToAMoveOrCircle) {
    addPattern({moveTo(0, 0), drawTo(1, 0), step(ElementType::Arc, 1, 2, 1, 1), drawTo(0, 2), moveTo(5, 5),
                drawTo(6, 5), step(ElementType::Circle, 6, 5, 8, 5), drawTo(7, 7), moveTo(9, 9)});
    const Exported file = exportDrawing(exportConfig("ACAD15", "WRITE_POLY=1\n"));
    EXPECT_EQ(file.count(0, "LWPOLYLINE"), 3u);
    EXPECT_EQ(file.count(0, "CIRCLE"), 1u);
    const std::string first = shown(file.first(0, "LWPOLYLINE"));
    EXPECT_NE(first.find("90=4 10=0.000000 20=0.000000 42=0.000000 10=1.000000 20=0.000000 42=1.000000 "
                         "10=1.000000 20=2.000000 42=0.000000 10=0.000000 20=2.000000 42=0.000000"),
              std::string::npos)
        << first;
    EXPECT_EQ(first.find("70="), std::string::npos);
    EXPECT_EQ(valueOf(file.first(0, "LWPOLYLINE", 2), 10), "6.000000");
    EXPECT_EQ(file.errors(), "");
    const Exported old = exportDrawing(exportConfig("ACAD12", "WRITE_POLY=1\n"));
    EXPECT_EQ(old.count(0, "POLYLINE"), 3u);
    EXPECT_EQ(old.count(0, "VERTEX"), 8u);
    EXPECT_EQ(old.errors(), "");
}

TEST_F(Export, AChangeOfColourPartsAPolyline) {
    addPattern({moveTo(0, 0), drawTo(1, 0, 1), drawTo(2, 0, 2), drawTo(3, 0, 2)});
    const Exported file =
        exportDrawing(exportConfig("ACAD15", "WRITE_POLY=1\n", "\n#PEN-CAD-TO-DXF\n2\n1|4\n2|6\n\n"));
    EXPECT_EQ(file.count(0, "LWPOLYLINE"), 0u);
    ASSERT_EQ(file.count(0, "POLYLINE"), 2u);
    EXPECT_EQ(file.count(0, "VERTEX"), 5u) << "the runs share a point";
    EXPECT_EQ(valueOf(file.first(0, "POLYLINE"), 62), "4");
    EXPECT_EQ(valueOf(file.first(0, "POLYLINE", 1), 62), "6");
    EXPECT_EQ(valueOf(file.first(0, "VERTEX", 2), 10), "1.000000");
    EXPECT_EQ(file.errors(), "");
}

TEST_F(Export, FiguresBecomePolylinesOfThemselves) {
    std::vector<host::Element> chain{moveTo(0, 0), drawTo(1, 0), drawTo(1, 1), moveTo(5, 5), drawTo(6, 6)};
    chain[1].info = chain[2].info = 4;
    addPattern(chain);
    const Exported file = exportDrawing(exportConfig("ACAD15", "WRITE_POLY=0\n"));
    EXPECT_EQ(file.count(0, "LWPOLYLINE"), 1u);
    EXPECT_EQ(file.count(0, "LINE"), 1u);
}

TEST_F(Export, ASplineLeavesWithinTheTolerance) {
    host::Pattern& pattern = addPattern({moveTo(0, 0), step(ElementType::Spline, 200, 0)});
    host::Spline spline;
    for (const auto& [x, y] : {std::pair{0., 0.}, {50., 80.}, {120., -40.}, {200., 0.}})
        spline.points.push_back({x, y});
    pattern.splines.push_back(spline);
    const Exported file = exportDrawing(exportConfig("ACAD15", "WRITE_POLY=1\n"));
    const DxfGroups curve = file.first(0, "LWPOLYLINE");
    EXPECT_GT(std::stoi(valueOf(curve, 90)), 4);
    EXPECT_NE(shown(curve).find("10=200.000000 20=0.000000"), std::string::npos);
    EXPECT_EQ(file.errors(), "");
}

TEST_F(Export, PatternsThatAreOffStayOut) {
    addPattern({moveTo(0, 0), drawTo(1, 0)});
    addPattern({moveTo(0, 5), drawTo(1, 5)}).visible = false;
    addPattern({moveTo(3, 3)});
    const Exported file = exportDrawing(exportConfig("ACAD15", "WRITE_BLOCKS=YES\n"));
    EXPECT_EQ(file.count(0, "LINE"), 1u);
    EXPECT_EQ(file.count(0, "INSERT"), 1u) << "a Move alone is no content";
}

TEST_F(Export, TheOrderSettlesTheLayer) {
    addPattern({moveTo(0, 0), drawTo(1, 0)}, "NAM", "ATT");
    for (const auto& [order, layer] : {std::pair<std::string, std::string>{"GROUP", "GRP"},
                                       {"LAYER", "LEV"},
                                       {"CLASS", "CLS"},
                                       {"NAME", "NAM"},
                                       {"ATTR", "ATT"}}) {
        const Exported file = exportDrawing(exportConfig("ACAD15", "LAYER_ELEM=" + order + "\n"));
        EXPECT_EQ(valueOf(file.first(0, "LINE"), 8), layer);
        EXPECT_EQ(file.count(2, layer), 1u) << "in the LAYER table";
    }
}

TEST_F(Export, LayersThatDifferInCaseAreOne) {
    addPattern({moveTo(0, 0), drawTo(1, 0)}, "P", "Wall");
    addPattern({moveTo(0, 1), drawTo(1, 1)}, "P", "WALL");
    const Exported file = exportDrawing(exportConfig("ACAD24", "LAYER_ELEM=ATTR\n"));
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(valueOf(file.first(0, "LINE", 1), 8), "Wall");
    EXPECT_EQ(file.count(2, "WALL"), 0u);
}

TEST_F(Export, WhatHasNoWriterIsCountedOnce) {
    host::Pattern& first = addPattern({moveTo(0, 0), drawTo(1, 0)});
    first.dimensions.resize(3);
    first.bitmaps.resize(1);
    host::Pattern& solid = addPattern({moveTo(0, 0), drawTo(1, 0)});
    solid.solids.resize(1);
    for (int i = 0; i < 3; ++i) solid.faceLists.push_back(faceList({{0, 0, 0}, {1, 0, 0}, {0, 1, 1}}));
    solid.pointClouds.resize(2);
    addPattern({}).dimensions.resize(5);
    for (const std::string& version : VERSIONS) {
        for (const char* lines :
             {"", "WRITE_BLOCKS=YES\n", "DIM_IN_BLOCK=1\n", "WRITE_ASO_DIM=0\nWRITE_HATCH=2\n"}) {
            const Exported file = exportDrawing(exportConfig(version, lines));
            for (const char* words :
                 {"8 dimensions were not written.", "1 bitmap was not written.",
                  "4 3D faces and solids were not written.", "2 point clouds were not written."})
                EXPECT_TRUE(file.protocol.find(words) != std::string::npos &&
                            file.protocol.find(words) == file.protocol.rfind(words))
                    << version << " " << lines << words;
        }
    }
    const TempDir folder;
    setenv("HD_WORK_DIR", folder.path().c_str(), 1);
    host::session().texts["$DxfConfig"] = folder.write("out.dxd", exportConfig("EASY"));
    DxfSelect(0, DX_EXPORT_3D, folder.file("out.dxf").c_str());
    EXPECT_NE(folder.read("dxf.proto").find("4 3D faces and solids were not written."), std::string::npos);
}

TEST_F(Export, TextsMayHaveALayerOfTheirOwn) {
    host::Pattern& pattern = addPattern({moveTo(0, 0), drawTo(1, 0)});
    host::Text text;
    text.lines = {"abc"};
    pattern.texts.push_back(text);
    const std::string fixed = "LAYER_ELEM=ATTR\nLAYERFLAG_TEXT=1\nLAYER_TEXT=WORDS\n";
    const Exported file = exportDrawing(exportConfig("ACAD15", fixed));
    EXPECT_EQ(valueOf(file.first(0, "TEXT"), 8), "WORDS");
    EXPECT_EQ(valueOf(file.first(0, "LINE"), 8), "LAY");
    EXPECT_EQ(file.errors(), "");
    const std::string same = "LAYER_ELEM=ATTR\nLAYERFLAG_TEXT=0\n";
    EXPECT_EQ(valueOf(exportDrawing(exportConfig("ACAD15", same)).first(0, "TEXT"), 8), "LAY");
    const Exported unnamed = exportDrawing(exportConfig("ACAD15", "LAYER_ELEM=ATTR\n"));
    EXPECT_EQ(valueOf(unnamed.first(0, "TEXT"), 8), "0");
    EXPECT_EQ(unnamed.errors(), "");
}

TEST_F(Export, ColourAttributesRuleTexts) {
    host::Pattern& pattern = addPattern({});
    host::Text text;
    text.lines = {"abc"};
    pattern.texts.push_back(text);
    pattern.attributes = {{"col", "3"}, {"textcol", "2"}};
    const std::string config = exportConfig("ACAD15", "", "\n#PEN-CAD-TO-DXF\n3\n1|4\n2|6\n3|5\n\n");
    EXPECT_EQ(valueOf(exportDrawing(config).first(0, "TEXT"), 62), "4");
    host::session().numbers["&DxfColAttr"] = 1;
    EXPECT_EQ(valueOf(exportDrawing(config).first(0, "TEXT"), 62), "6");
}

TEST_F(Export, RulesDivideAWallIntoLayers) {
    host::Text text;
    text.lines = {"abc"};
    const std::vector<host::Element> chain{moveTo(0, 0), drawTo(1, 0, 1, 2), drawTo(2, 0, 2),
                                           drawTo(3, 0, 3)};
    addPattern(chain, "P", "WALL").texts.push_back(text);
    addPattern(chain, "P", "ROOF");
    const std::string config = exportConfig("ACAD15", "LAYER_ELEM=ATTR\nLAYERFLAG_TEXT=0\nUSE_BYLAYER=1\n");
    const auto layers = [&] {
        std::string all;
        const Exported file = exportDrawing(config);
        EXPECT_EQ(file.stat, 0);
        EXPECT_EQ(file.errors(), "");
        for (std::size_t i = 0; i < 6; ++i) all += valueOf(file.first(0, "LINE", i), 8) + " ";
        return all + valueOf(file.first(0, "TEXT"), 8);
    };
    EXPECT_EQ(layers(), "WALL-HIDDEN WALL-CUT WALL-LINES ROOF ROOF ROOF WALL-TEXT");
    const std::string stay = "WALL WALL WALL ROOF ROOF ROOF WALL";
    for (const char* content : {"no spreadsheet", ""}) {
        installation_.without("layerconv.xls");
        if (*content) installation_.with("layerconv.xls", content);
        host::session().dialogs.clear();
        EXPECT_EQ(layers(), stay) << content;
        ASSERT_EQ(host::session().dialogs.size(), 1u) << content;
        EXPECT_NE(host::session().dialogs[0].find("layerconv.xls konnte nicht"), std::string::npos);
    }
}

TEST_F(Export, OnlyLayersOfTheTemplateGiveColours) {
    for (const char* layer : {"KNOWN", "B"})
        addPattern({moveTo(0, 0), drawTo(1, 0, 2, 2), drawTo(2, 0, 3), drawTo(3, 0, 4)}, "P", layer);
    const TempDir folder;
    const std::string path = folder.write("layers.dxf", dxf().layer("KNOWN", 5).text());
    const Exported file = exportDrawing(exportConfig(
        "ACAD15", "LAYER_ELEM=ATTR\nUSE_BYLAYER=1\nUSE_TEMPLATE=1\nTEMPLATE_NAME=" + path + "\n"));
    EXPECT_EQ(file.errors(), "");
    std::string colours;
    for (std::size_t i = 0; i < 6; ++i) colours += valueOf(file.first(0, "LINE", i), 62) + " ";
    EXPECT_EQ(colours, "none none none 1 2 3 ")
        << "a layer that the drawing brings is no layer of the template";
    EXPECT_EQ(valueOf(file.first(2, "KNOWN"), 62), "5");
    EXPECT_EQ(valueOf(file.first(2, "B"), 62), "7");
    EXPECT_NE(file.protocol.find("Layer B ist nicht"), std::string::npos);
    EXPECT_EQ(file.protocol.find("Layer KNOWN ist nicht"), std::string::npos);
}

/// The layers of the lines of a pattern on layer "X", and of its text.
std::string layersOfPart() {
    const Exported file =
        exportDrawing(exportConfig("ACAD15", "LAYER_ELEM=ATTR\nLAYERFLAG_TEXT=0\nUSE_BYLAYER=1\n"));
    EXPECT_EQ(file.errors(), "");
    std::string all;
    for (std::size_t i = 0; i < file.count(0, "LINE"); ++i) all += valueOf(file.first(0, "LINE", i), 8) + " ";
    return all + valueOf(file.first(0, "TEXT"), 8);
}

TEST_F(Export, RulesKnowBuildingParts) {
    struct Case {
        const char *object, *source, *parent, *heightcut, *layers;
    };
    // Line 1 is a centre line, line 2 has pen 3 and line type 2.
    const Case cases[] = {
        {"windowplan", "", "", "", "X-AXIS X X-TEXT"},
        {"doorplan", "", "", "", "X-AXIS X X-TEXT"},
        {"dxf-export", "windowplan", "", "", "X-AXIS X X-TEXT"},
        {"wallplan", "", "wall", "1,3,2", "X X-BEYOND X"},
        {"wallplan", "", "wall", "0,3,2", "X X X"},
        {"wallplan", "", "wall", "1,4,2", "X X X"},
        {"wallplan", "", "roof", "1,3,2", "X X X"},
        {"columnvol", "", "", "", "X X X"},
        {"other", "", "", "", "X X X"},
    };
    for (const Case& c : cases) {
        startDrawing();
        const int wall = addPattern({}).number;
        host::openDrawing().find(wall)->attributes = {{"object", c.parent}, {"heightcut", c.heightcut}};
        host::Pattern& part = addPattern({moveTo(0, 0), drawTo(1, 0), drawTo(2, 0, 3, 2)}, "P", "X");
        part.attributes = {{"object", c.object}, {"obsource", c.source}};
        part.relation.parent = wall;
        part.elementAttributes = {{1, "object", "centerline"}};
        host::Text text;
        text.lines = {"abc"};
        part.texts.push_back(text);
        EXPECT_EQ(layersOfPart(), c.layers) << c.object << " " << c.parent << " " << c.heightcut;
    }
}

} // namespace
