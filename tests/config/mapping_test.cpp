#include "config_fixture.h"

#include "config/dx_colors.h"
#include "config/dx_layer_patterns.h"
#include "config/dx_layers.h"
#include "config/dx_linetypes.h"
#include "config/dx_names.h"
#include "config/dx_pens.h"
#include "drawing/drawing.h"
#include "host/dx_host.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

DX_ENTITY_BASE_TYPE entity(std::string_view layer, int color, std::string_view lineType = "") {
    DX_ENTITY_BASE_TYPE base{};
    base.layer.assign(layer);
    base.color = color;
    base.lineType.assign(lineType);
    return base;
}
void addLayer(DxTables& tables, std::string_view name, int color, int flags = 0) {
    DX_LAYER_TYPE layer;
    DxInitLayer(&layer);
    layer.name.assign(name);
    layer.lineType.assign("LT-" + std::string(name));
    layer.color = color;
    layer.flags = flags;
    tables.layers.add(layer);
}

} // namespace

class Mapping : public ConfigSession {
protected:
    /// Sections that know the line types of the layers that every test has.
    static constexpr const char* LINETYPES = "#LT-DXF-TO-CAD\n4\nDASHED|2\nLT-A|5\nLT-0|6\nCONTINUOUS|1\n";

    /// A session behind a configuration of these sections.
    void begin(const std::string& sections = "", int isExport = 0) {
        start(isExport);
        ASSERT_EQ(readDxd(sections + "#EOF\n", isExport), 0);
        ASSERT_EQ(DxBuildTables(), 0);
        addLayer(DxDocuments.tables, "0", 7);
        addLayer(DxDocuments.tables, "A", 3);
    }
    static void enterBlock(int color, std::string_view lineType, std::string_view layer) {
        ++DxActLevel.depth;
        DxActLevel.color = color;
        DxActLevel.lineType.assign(lineType);
        DxActLevel.layer.assign(layer);
        DxInsertStack.add(DxActLevel);
    }
    static int penOf(const DX_ENTITY_BASE_TYPE& base) {
        int pen = -7, lineType = -7;
        DxPenLtToCAD(&base, &pen, &lineType);
        return pen;
    }
    static int lineTypeOf(const DX_ENTITY_BASE_TYPE& base) {
        int pen = -7, lineType = -7;
        DxPenLtToCAD(&base, &pen, &lineType);
        return lineType;
    }
    static bool isDrawn(const DX_ENTITY_BASE_TYPE& base) {
        int pen, lineType;
        return DxPenLtToCAD(&base, &pen, &lineType) != 0;
    }
    static int penOfColor(int color) { return penOf(entity("A", color)); }
};

TEST_F(Mapping, ColoursAreResolved) {
    begin(LINETYPES);
    EXPECT_EQ(penOfColor(1), 2);
    EXPECT_EQ(penOfColor(255), 304);
    EXPECT_EQ(penOfColor(256), DxBuiltInPen(3)) << "by layer";
    EXPECT_EQ(penOfColor(-1), DxBuiltInPen(3)) << "none given";
    EXPECT_EQ(penOfColor(0), DxBuiltInPen(7)) << "by block, outside of blocks";
    enterBlock(0, "", "A");
    EXPECT_EQ(penOfColor(0), DxBuiltInPen(7));
    enterBlock(5, "", "A");
    EXPECT_EQ(penOfColor(0), DxBuiltInPen(5));
    enterBlock(0, "", "A");
    EXPECT_EQ(penOfColor(0), DxBuiltInPen(5));
    EXPECT_EQ(penOf(entity("0", 256)), DxBuiltInPen(3))
        << "layer 0 inside a block is the layer of the INSERT";
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(Mapping, UnknownColoursGetTheDefaultAndAreToldOnce) {
    begin(LINETYPES);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(penOfColor(300), 10);
    int fill = -5;
    const DX_ENTITY_BASE_TYPE base = entity("A", 300);
    EXPECT_TRUE(DxFillPenToCAD(&base, &fill));
    EXPECT_EQ(fill, 10);
    EXPECT_THAT(messages(), ElementsAre("DXF-Farbe 300 unbekannt, wird zu Stift 10.",
                                        "DXF-Füllfarbe 300 unbekannt, wird zu Füllfarbe 10."));
    begin("#PEN-DXF-TO-CAD\n4\n7|1\n7|2\n30|40\nDEF|12\n");
    EXPECT_EQ(penOfColor(7), 1) << "the first line wins";
    EXPECT_EQ(penOfColor(1), 12) << "DEF hides what is built in";
    EXPECT_EQ(penOfColor(300), 12);
}

TEST_F(Mapping, LinetypesAreResolved) {
    begin(LINETYPES);
    EXPECT_EQ(lineTypeOf(entity("A", 1, "DASHED")), 2);
    EXPECT_EQ(lineTypeOf(entity("A", 1)), 5);
    EXPECT_EQ(lineTypeOf(entity("A", 1, "bylayer")), 5);
    EXPECT_EQ(lineTypeOf(entity("nowhere", 1)), 1) << "the first line type of the table";
    EXPECT_THAT(messages(), IsEmpty());
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(lineTypeOf(entity("A", 1, "dashed")), 1) << "names are case-sensitive";
    EXPECT_THAT(messages(), ElementsAre("Linientyp dashed nicht definiert!"));
    enterBlock(7, "DASHED", "A");
    enterBlock(7, "BYBLOCK", "A");
    EXPECT_EQ(lineTypeOf(entity("A", 1, "ByBlock")), 2);
    EXPECT_EQ(lineTypeOf(entity("0", 1)), 5);
}

TEST_F(Mapping, WhatIsDrawn) {
    begin(LINETYPES);
    addLayer(DxDocuments.tables, "off", -3);
    addLayer(DxDocuments.tables, "zero", 0);
    EXPECT_TRUE(isDrawn(entity("", 1)));
    EXPECT_EQ(DxActLayer.view(), "0");
    EXPECT_FALSE(isDrawn(entity("off", 1)));
    EXPECT_FALSE(isDrawn(entity("zero", 1)));
    DxAllLayers = 1;
    EXPECT_EQ(penOf(entity("off", 256)), DxBuiltInPen(3));
    EXPECT_FALSE(isDrawn(entity("zero", 1)));
    DX_ENTITY_BASE_TYPE base = entity("A", 1);
    base.invisible = 1;
    EXPECT_FALSE(isDrawn(base));
    base = entity("A", 1);
    base.paperSpace = 1;
    EXPECT_FALSE(isDrawn(base));
    enterBlock(7, "", "A");
    EXPECT_TRUE(isDrawn(base)) << "inside a block the space of the INSERT counts";
    DxCheckPass = 1;
    EXPECT_EQ(penOf(entity("A", 300)), 1) << "a measuring pass maps nothing";
    EXPECT_THAT(messages(), ElementsAre("Linientyp LT-off nicht definiert!"));
}

TEST_F(Mapping, LayersOfExternalReferences) {
    begin();
    addLayer(DxDocuments.tables, "x", 1);
    DxfDocument host(nullptr, nullptr, "main.dxf", "");
    DxfDocument plan(nullptr, &host, "plan.dxf", "");
    plan.prefix = "plan";
    addLayer(host.tables, "0", 6);
    addLayer(host.tables, "plan|A", 5, 16);
    addLayer(plan.tables, "0", 1);
    addLayer(plan.tables, "A", 1);
    addLayer(plan.tables, "B", 2);
    DxDocuments.current_ = &plan;
    EXPECT_EQ(DxFindLayer("A")->color, 5) << "the main file's settings rule";
    EXPECT_EQ(DxFindLayer("B")->color, 2);
    EXPECT_EQ(DxFindLayer("0")->color, 6);
    EXPECT_EQ(DxFindLayer("x"), nullptr);
    EXPECT_EQ(DxFindLayer(""), nullptr);
    isDrawn(entity("A", 1));
    EXPECT_EQ(DxActLayer.view(), "plan|A");
    DxDocuments.current_ = nullptr;
}

TEST_F(Mapping, LayersBecomePatterns) {
    for (const char* order : {"GROUP", "LAYER", "CLASS", "NAME", "ATTR"}) {
        host::openDrawing().clear();
        begin("#FLAGS-START\nREAD_LAYER=" + std::string(order) +
              "\n#FLAGS-END\n#LAYER-DXF-TO-CAD\n1\nA|Wand\n");
        ASSERT_EQ(DxCreatePatterns(0), 0);
        ASSERT_TRUE(isDrawn(entity("A", 1)));
        const host::PatternIds& ids = host::openDrawing().active()->ids;
        EXPECT_EQ(ids.group + ids.level + ids.cls + ids.name + ids.layer, "Wand") << order;
        const int known = DxActPat;
        ASSERT_TRUE(isDrawn(entity("new", 1)));
        EXPECT_NE(DxActPat, known) << "a layer that no table has gets its pattern too";
        EXPECT_THAT(DxPatTable, SizeIs(3));
        isDrawn(entity("A", 1));
        EXPECT_EQ(DxActPat, known);
        DxHatchActive = 1;
        isDrawn(entity("0", 1));
        EXPECT_EQ(DxActPat, known) << "a hatch in work keeps its pattern";
        DxPatTable.clear();
    }
    EXPECT_THAT(host::openDrawing().layers, SizeIs(3));
}

TEST_F(Mapping, ManyLayersAndColoursStayLinear) {
    begin("#FLAGS-START\nREAD_LAYER=NAME\n#FLAGS-END\n");
    constexpr int COUNT = 50'000;
    for (int i = 0; i < COUNT; ++i) {
        const std::string name = "L" + std::to_string(i);
        isDrawn(entity(name, 1000 + i, name));
    }
    EXPECT_EQ(penOfColor(1000 + COUNT - 1), 10);
    EXPECT_THAT(DxDocuments.tables.layers, SizeIs(COUNT + 2));
    EXPECT_GE(messages().size(), 2u * COUNT) << "each unknown colour and line type is told";
}

TEST_F(Mapping, ElementsOfTheHost) {
    begin("#LT-CAD-TO-DXF\n2\n5|SOLID\n2|DASHED\n#PEN-CAD-TO-DXF\n1\n9|-1\n#FILL-CAD-TO-DXF\n1\n8|44\n", 1);
    int color = 0;
    DX_NAME name;
    const auto colorOf = [&](int pen) {
        DxPenLtToDXF(pen, 2, &color, &name, 0);
        return color;
    };
    EXPECT_EQ(colorOf(2), 1);
    EXPECT_EQ(name.view(), "DASHED");
    EXPECT_EQ(colorOf(1024), 7);
    EXPECT_EQ(colorOf(-1), 7);
    EXPECT_EQ(colorOf(-9998), -9998);
    EXPECT_EQ(colorOf(-9999), -9999);
    for (const int lineType : {0, 3, 63, -1}) {
        DxPenLtToDXF(2, lineType, &color, &name, 0);
        EXPECT_EQ(name.view(), "SOLID") << lineType;
    }
    DxAttrPen = 3;
    EXPECT_EQ(colorOf(2), 2) << "the pattern's colour attribute";
    EXPECT_EQ(colorOf(9), -1) << "a pen without a colour keeps none";
    DxByLayerColor = 4;
    DxByLayerLt.assign("X");
    EXPECT_EQ(colorOf(2), -9998);
    EXPECT_TRUE(name.empty());
    EXPECT_EQ(colorOf(-9999), -9999);
    DxByLayerColor = 0;
    const auto fillOf = [&](int fill) {
        DxFillToDXF(fill, &color);
        return color;
    };
    EXPECT_EQ(fillOf(8), 44);
    EXPECT_EQ(fillOf(2), 1);
    EXPECT_EQ(fillOf(5000), 7);
    EXPECT_EQ(fillOf(-9999), -9999);
    DxAttrFill = 8;
    EXPECT_EQ(fillOf(2), 44);
    EXPECT_TRUE(DxShouldWriteColor(0, 0) && DxShouldWriteColor(-9999, 0) && DxShouldWriteColor(-9998, 1));
    EXPECT_FALSE(DxShouldWriteColor(-1, 1) || DxShouldWriteColor(-9998, 0));
}

TEST_F(Mapping, BuiltInLinetypes) {
    begin("#LT-CAD-TO-DXF\n3\n1|STRICHLINIE\n2|PHANTOM\n3|dashed\n", 1);
    const auto& rows = DxDocuments.tables.lineTypes;
    EXPECT_EQ(rows[0].name.view(), "STRICHLINIE");
    EXPECT_EQ(rows[0].totalLength, 0.75);
    EXPECT_EQ(rows[0].dashes[1], -0.25);
    EXPECT_EQ(rows[1].elementCount, 6);
    EXPECT_EQ(rows[2].elementCount, 0);
    EXPECT_EQ(rows[2].description.view(), "Solid line");
    begin();
    EXPECT_EQ(DxDocuments.tables.lineTypes[0].name.view(), "CONTINUOUS") << "a table is never empty";
}

TEST_F(Mapping, LayersOfAnExport) {
    begin("#LAYER-CAD-TO-DXF\n2\nT\xFCr|DOOR\nWand|WALL\n", 1);
    DxPatNames[3] = "Tür";
    DxNewLayer(DX_ORDER_NAME, "");
    EXPECT_EQ(DxActLayer.view(), "DOOR") << "from Windows-1252";
    DxPatNames[3] = "Wand";
    DxNewLayer(DX_ORDER_NAME, "");
    EXPECT_EQ(DxActLayer.view(), "WALL");
    DxNewLayer(DX_ORDER_FIXED, "Wand");
    EXPECT_EQ(DxActLayer.view(), "WAND") << "fixed names aren't translated; old formats are upper-case";
    DxWriteVersion = 1;
    DxNewLayer(DX_ORDER_FIXED, " a/b\tc ");
    EXPECT_EQ(DxActLayer.view(), "a_b c");
    UtCString name = "Tür-1 groß und breit, und noch viel mehr";
    DxWriteVersion = 7;
    DxCheckName(name);
    EXPECT_EQ(name, "TUR-1_GROS_UND_BREIT__UND_NOCH_");
}

TEST_F(Mapping, PensReachTheHostOnceAChange) {
    DxSetPenLt(5, 2);
    EXPECT_EQ(host::session().pen, 5);
    host::session().pen = 99;
    DxSetPenLt(5, -1);
    EXPECT_EQ(host::session().pen, 99) << "nothing has changed";
    DxSetPenLt(-1, 3);
    EXPECT_EQ(host::session().pen, 5);
    EXPECT_EQ(DxElemPen, 5);
    EXPECT_EQ(DxElemLineType, 3);
}
