#include "../import/drawn.h"
#include "dx_report.h"
#include "session/session_state.h"

#include <gtest/gtest.h>

namespace {

const DxfGroups aLine = at(10, {1, 2}) + at(11, {3, 2});

ImportResult importHeader(const DxfGroups& variables, const ImportOptions& options = unshifted()) {
    return importText(dxf().section("HEADER", variables).entity("LINE", aLine).text(), options);
}

TEST(Header, NamesTheRelease) {
    EXPECT_TRUE(
        importHeader({{9, "$ACADVER"}, {1, "AC1015"}}).hasLine("Version: AutoCAD Release 2000 / 2002"));
    EXPECT_TRUE(importHeader({{9, "$ACADVER"}, {1, "AC1099"}}).hasLine("Version: AC1099"));
    EXPECT_EQ(DxFileVersion, 1099);
    EXPECT_EQ(importHeader({{9, "$ATTMODE"}, {70, "2"}}).protocol.find("Version"), std::string::npos);
    EXPECT_EQ(DxFileVersion, 1009);
}

TEST(Header, NamesTheCodePage) {
    const auto codePage = [](const std::string& text) {
        EXPECT_TRUE(importHeader({{9, "$DWGCODEPAGE"}, {3, text}}).hasLine("CODEPAGE: " + text)) << text;
        return DxCodePage;
    };
    EXPECT_EQ(codePage("ANSI_1250"), 1250);
    EXPECT_EQ(codePage("iso8859-2"), 28592);
    EXPECT_EQ(codePage("dos850"), 1252);
    EXPECT_LE(codePage("ANSI_99999999999"), 65535);
    EXPECT_TRUE(importHeader({{9, "$DWGCODEPAGE"}, {3, "none"}}).hasLine("CODEPAGE: none"));
}

TEST(Header, APlanePointDoesNotSwallowTheNextVariable) {
    importHeader({{9, "$PINSBASE"}, {10, "1"}, {20, "2"}, {9, "$INSUNITS"}, {70, "4"}});
    EXPECT_EQ(DxGetImportReport().insUnits, 4);
    EXPECT_EQ(elementsOf(importHeader({{9, "$INSBASE"}, {10, "1"}, {20, "2"}, {9, "$X"}}).dump),
              "move 0 0\ndraw 2 0\n");
}

TEST(Header, FillAndPointModesOfTheFileYieldToTheConfiguration) {
    const auto elements = [](const std::string& config, const DxfGroups& header) {
        ImportOptions options = unshifted();
        options.config = flags(config);
        return drawn(dxf()
                         .section("HEADER", header)
                         .entity("POINT", at(10, {1, 1}))
                         .entity("SOLID", at(10, {0, 0}) + at(11, {1, 0}) + at(12, {0, 1})),
                     options);
    };
    const DxfGroups noFill = {{9, "$FILLMODE"}, {70, "0"}}, noPoints = {{9, "$PDMODE"}, {70, "1"}};
    EXPECT_EQ(elements("", noFill).find("hatch"), std::string::npos);
    EXPECT_NE(elements("FILLMODE=1\n", noFill).find("hatch"), std::string::npos);
    EXPECT_NE(elements("", {}).find("draw 1 1"), std::string::npos);
    EXPECT_EQ(elements("", noPoints).find("draw 1 1"), std::string::npos);
}

TEST(Header, AUserCoordinateSystemMovesTheDrawingIfAsked) {
    const DxfGroups ucs = DxfGroups{{9, "$UCSORG"}} + at(10, {1, 2, 0}) + DxfGroups{{9, "$UCSXDIR"}} +
                          at(10, {0, 1, 0}) + DxfGroups{{9, "$UCSYDIR"}} + at(10, {-1, 0, 0});
    EXPECT_EQ(elementsOf(importHeader(ucs).dump), "move 1 2\ndraw 3 2\n");
    ImportOptions options = unshifted();
    options.config = flags("USE_UCS=1\n");
    EXPECT_EQ(elementsOf(importHeader(ucs, options).dump), "move 0 0\ndraw 0 -2\n");
}

TEST(Header, ItsEndMayBeMissing) {
    EXPECT_EQ(importText(dxfLines({{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}})).stat, 9003);
    ImportOptions keeping = unshifted();
    keeping.numbers["&DxfHeader"] = 1;
    EXPECT_EQ(elementsOf(importHeader({{9, "$ACADVER"}, {1, "AC1015"}}, keeping).dump),
              "move 1 2\ndraw 3 2\n");
}

} // namespace
