// Names of drawings and configurations meet as Unicode, whatever bytes they came from.
#include "dx_report.h"
#include "dx_select.h"
#include "import_text.h"

#include "drawing/drawing.h"
#include "services/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

const DxfGroups LINE = {{10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}};

DxfText lineOn(const std::string& version, const std::string& codePage, const std::string& layer) {
    DxfGroups groups = LINE;
    groups.insert(groups.begin(), {8, layer});
    return dxf().header(version, {{9, "$DWGCODEPAGE"}, {3, codePage}}).layer(layer, 3).entity("LINE", groups);
}

std::string flags(const std::string& lines) {
    return "#FLAGS-START\n" + lines + "#FLAGS-END\n";
}

TEST(Encoding, AConfigurationMeansNamesOfEveryCodePage) {
    const std::string rows[] = {"Wände|Mauern", "W\xE4nde|Mauern", "W\\U+00E4nde|Mauern"};
    const DxfText drawings[] = {
        lineOn("AC1015", "ANSI_1252", "W\xE4nde"), lineOn("AC1015", "dos437", "W\xE4nde"),
        lineOn("AC1015", "ANSI_1251", "W\\U+00E4nde"), lineOn("AC1027", "ANSI_1252", "Wände"),
        lineOn("AC1027", "ANSI_932", "W\xE4nde")};
    for (const std::string& row : rows) {
        ImportOptions options;
        options.config = flags("READ_LAYER=NAME\n") + "#LAYER-DXF-TO-CAD\n1\n" + row + "\n#EOF\n";
        for (std::size_t i = 0; i < std::size(drawings) - 1; ++i)
            EXPECT_THAT(importText(drawings[i].text(), options).dump, HasSubstr("name \"Mauern\""))
                << row << i;
    }
}

TEST(Encoding, LayersOfLongNamesInOtherScriptsStayApart) {
    const std::string common = "Стены первого этажа здания ";
    DxfText drawing = dxf().header("AC1027", {{9, "$DWGCODEPAGE"}, {3, "ANSI_1252"}});
    for (const char* tail : {"север", "юг"}) {
        DxfGroups groups = LINE;
        groups.insert(groups.begin(), {8, common + tail});
        drawing.layer(common + tail, 3).entity("LINE", groups);
    }
    ImportOptions options;
    options.config = flags("READ_LAYER=NAME\n") + "#EOF\n";
    const std::string dump = importText(drawing.text(), options).dump;
    EXPECT_THAT(dump, HasSubstr("\"" + common + "север\""));
    EXPECT_THAT(dump, HasSubstr("\"" + common + "юг\""));
}

TEST(Encoding, LimitsCountCharacters) {
    std::string name;
    for (int i = 0; i < 170; ++i) name += "日";
    ImportOptions options;
    options.config = flags("READ_LAYER=NAME\n") + "#EOF\n";
    const std::string dump = importText(lineOn("AC1027", "ANSI_1252", name).text(), options).dump;
    EXPECT_THAT(dump, HasSubstr("\"" + name.substr(0, 160 * 3) + "\""));
    EXPECT_THAT(dump, Not(HasSubstr(name.substr(0, 161 * 3))));
}

TEST(Encoding, ALayerIsRegisteredUnderTheNameThatItsPatternHas) {
    ImportOptions options;
    options.config = flags("READ_LAYER=ATTR\n") + "#LAYER-DXF-TO-CAD\n1\nWALL|Wand\n#EOF\n";
    const std::string dump = importText(lineOn("AC1015", "ANSI_1252", "WALL").text(), options).dump;
    EXPECT_THAT(dump, HasSubstr("layer \"Wand\""));
    EXPECT_THAT(dump, Not(HasSubstr("WALL")));
}

TEST(Encoding, AttributesOfTheConfigurationToo) {
    ImportOptions options;
    options.config = flags("READ_BLOCK=NAME\n") + "#ATTR-DXF-TO-CAD\n1\nGröße|Maß\n#EOF\n";
    const DxfText drawing = dxf()
                                .header("AC1015")
                                .block("B", {{0, "LINE"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}})
                                .entity("INSERT", {{2, "B"}, {66, "1"}, {10, "0"}, {20, "0"}})
                                .raw({{0, "ATTRIB"},
                                      {8, "0"},
                                      {10, "0"},
                                      {20, "0"},
                                      {40, "1"},
                                      {1, "\xFC\\U+0416"},
                                      {2, "Gr\xF6\xDF"
                                          "e"}})
                                .raw({{0, "SEQEND"}});
    EXPECT_THAT(importText(drawing.text(), options).dump, HasSubstr("attribute \"Maß\" \"üЖ\""));
}

// ---- the report --------------------------------------------------------------------------------------

TEST(Report, CarriesTheMessagesWithTheirLevels) {
    ImportOptions options;
    options.config = flags("ALL_LAYERS=1\n") + "#EOF\n";
    importText(lineOn("AC1015", "ANSI_1252", "W").text(), options);
    std::map<std::string, int> levels;
    for (const DxReportMessage& message : DxGetImportReport().messages) levels[message.text] = message.level;
    EXPECT_EQ(levels.at("CODEPAGE: ANSI_1252"), 0);
    EXPECT_EQ(levels.at("Linientyp CONTINUOUS nicht definiert!"), 1);
}

TEST(Report, NeedsNoProtocolFile) {
    const TempDir folder;
    folder.write("in.dxf", lineOn("AC1015", "ANSI_1252", "W").text());
    folder.write("test.dxd", "#EOF\n");
    setenv("HD_WORK_DIR", (folder.path() + "/none").c_str(), 1);
    host::resetSession();
    host::session().texts["$DxfConfig"] = folder.file("test.dxd");
    DxfSelect(0, DX_IMPORT_2D, folder.file("in.dxf"));
    std::string all;
    for (const DxReportMessage& message : DxGetImportReport().messages) all += message.text + "\n";
    EXPECT_THAT(all,
                HasSubstr("Kann Protokoll-Datei '" + folder.path() + "/none/dxf.proto' nicht anlegen!\n"));
    EXPECT_THAT(all, HasSubstr("CODEPAGE: ANSI_1252\n"));
}

TEST(Report, NamesTheFilesWhoseTwinsWereRead) {
    const TempDir folder;
    folder.write("a_recovered.dxf", lineOn("AC1015", "ANSI_1252", "W").text());
    importFile(folder, "a.dxf");
    EXPECT_THAT(DxGetImportReport().recovered, ElementsAre(folder.file("a.dxf")));
    importText(lineOn("AC1015", "ANSI_1252", "W").text());
    EXPECT_THAT(DxGetImportReport().recovered, ElementsAre());
}

} // namespace
