// Pairs, numbers, strings, handles and streams of an export.
#include "exported.h"

#include <set>

namespace {

const std::string OMEGA = "\xCE\xA9", UMLAUT = "\xC3\x84", SMILE = "\xF0\x9F\x98\x80";

TEST_F(Export, PairsHaveTheirColumns) {
    addPattern({moveTo(1.5, 0), drawTo(2, 1e9)});
    const Exported file = exportDrawing(exportConfig("ACAD15"));
    ASSERT_EQ(file.stat, 0);
    EXPECT_EQ(file.text.substr(0, 21), "  0\nSECTION\n  2\nHEADE");
    EXPECT_TRUE(file.has("\n 10\n1.500000\n 20\n0.000000\n 11\n2.000000\n 21\n1000000000.000000\n"));
    EXPECT_TRUE(file.has("\n 70\n     1\n")) << "integers have six columns";
    EXPECT_TRUE(file.text.ends_with("\n  0\nEOF\n"));
    EXPECT_TRUE(exportDrawing(exportConfig("ACAD15", "NO_KOMMA=2\n")).has("\n 10\n1.50\n 20\n0.00\n"));
}

TEST_F(Export, HandlesAreUniqueAndBelowTheSeed) {
    for (int i = 0; i < 20; ++i)
        addPattern({moveTo(0, i), drawTo(5, i), drawTo(6, i, 2)}, "P" + std::to_string(i));
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version, "WRITE_BLOCKS=YES\nWRITE_POLY=1\n"));
        std::set<unsigned long> handles;
        bool inHeader = true;
        for (const DxfGroup& pair : file.pairs) {
            inHeader = inHeader && pair.value != "TABLES";
            if (inHeader || (pair.code != 5 && pair.code != 105) || pair.value.empty()) continue;
            EXPECT_TRUE(handles.insert(std::stoul(pair.value, nullptr, 16)).second)
                << version << " " << pair.value;
        }
        if (version == "ACAD12" || version == "EASY") {
            EXPECT_TRUE(handles.empty()) << version;
            continue;
        }
        ASSERT_FALSE(handles.empty());
        const std::string seed = valueOf(file.first(9, "$HANDSEED"), 5);
        EXPECT_LT(*handles.rbegin(), std::stoul(seed, nullptr, 16)) << version;
    }
}

std::string layerIn(const std::string& version, const std::string& layer) {
    startDrawing();
    addPattern({moveTo(0, 0), drawTo(1, 0)}, "P", layer);
    const Exported file = exportDrawing(exportConfig(version, "LAYER_ELEM=ATTR\n"));
    EXPECT_EQ(file.errors(), "") << version;
    return valueOf(file.first(0, "LINE"), 8);
}

TEST_F(Export, NamesAreEncodedByTheVersion) {
    EXPECT_EQ(layerIn("ACAD32", UMLAUT + OMEGA), UMLAUT + OMEGA);
    EXPECT_EQ(layerIn("ACAD21", UMLAUT), UMLAUT);
    EXPECT_EQ(layerIn("ACAD18", UMLAUT + OMEGA), "\xC4\\U+03A9");
    EXPECT_EQ(layerIn("ACAD15", SMILE), "\\U+D83D\\U+DE00");
    EXPECT_EQ(layerIn("ACAD12", "w\xC3\xA4nd e"), "WAND_E");
    EXPECT_EQ(layerIn("ACAD15", "a:b;c/d"), "a_b_c_d");
    EXPECT_EQ(layerIn("ACAD15", "a\nb"), "a b");
}

TEST_F(Export, EachVersionHasItsGroups) {
    addPattern({moveTo(0, 0), drawTo(1, 0), step(host::ElementType::Arc, 2, 1, 1, 1)});
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version));
        const bool old = version == "ACAD12" || version == "EASY";
        const bool has18 = version < "ACAD18" ? false : !old;
        EXPECT_EQ(file.errors(), "") << version;
        EXPECT_EQ(file.count(2, "OBJECTS"), old ? 0u : 1u) << version;
        EXPECT_EQ(file.count(0, "DIMSTYLE"), version == "EASY" ? 0u : 1u) << version;
        EXPECT_EQ(file.count(0, "VPORT"), version == "EASY" ? 0u : 1u) << version;
        EXPECT_EQ(file.count(100, "AcDbLine"), old ? 0u : 1u) << version;
        EXPECT_EQ(file.count(0, "BLOCK"), old ? 0u : has18 ? 3u : 2u) << version;
        EXPECT_EQ(file.count(2, "ByBlock"), old ? 0u : 1u) << version;
    }
}

TEST_F(Export, AMissingTemplateIsReplaced) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    installation_.without("header_15");
    installation_.without("vport_15");
    installation_.without("objects_15");
    const Exported file = exportDrawing(exportConfig("ACAD15"));
    EXPECT_EQ(file.stat, 0);
    EXPECT_TRUE(file.has("$EXTMAX\n 10\n7.000000            \n 20\n3.000000            \n"));
    EXPECT_EQ(valueOf(file.first(9, "$CELTYPE"), 6), valueOf(file.first(0, "LINE"), 6));
    EXPECT_EQ(file.count(2, "*ACTIVE"), 1u);
    EXPECT_EQ(file.count(2, "OBJECTS"), 0u);
}

/// Pairs that refer to a handle that nothing in the file has.
std::string danglingIn(const Exported& file) {
    std::set<std::string> handles{"0"};
    for (const DxfGroup& pair : file.pairs)
        if (pair.code == 5 || pair.code == 105) handles.insert(pair.value);
    std::string all;
    for (const DxfGroup& pair : file.pairs)
        if (((pair.code >= 320 && pair.code < 370) || pair.code == 390) && !handles.count(pair.value))
            all += std::to_string(pair.code) + "=" + pair.value + " ";
    return all;
}

TEST_F(Export, NothingRefersToAMissingTemplate) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    for (const std::string& version : VERSIONS) {
        if (version == "ACAD12" || version == "EASY") continue;
        for (const std::string& name : {"objects_" + version.substr(4), std::string("vport_15")}) {
            const Installation lacking;
            lacking.without(name);
            const Exported file = exportDrawing(exportConfig(version, "WRITE_BLOCKS=YES\n"));
            EXPECT_EQ(danglingIn(file), "") << version << " without " << name;
        }
    }
}

TEST_F(Export, HandlesOfTemplatesAreThoseOfTheModule) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    const std::string objects =
        "  0\nSECTION\n  2\nOBJECTS\n  0\nDICTIONARY\n  5\nC\n330\n0\n100\nAcDbDictionary\n"
        "  3\nACAD_X\n350\n#REFERENCE#\n  3\nL\n360\n#LTYP_REFERENCE#\n  0\nENDSEC\n";
    installation_.with("objects_15", objects);
    const Exported file = exportDrawing(exportConfig("ACAD15"));
    std::string lineType;
    for (std::size_t i = 0; i + 1 < file.pairs.size(); ++i)
        if (file.pairs[i].code == 0 && file.pairs[i].value == "LTYPE" && file.pairs[i + 1].code == 5 &&
            lineType.empty())
            lineType = file.pairs[i + 1].value;
    EXPECT_EQ(valueOf(file.first(3, "L"), 360), lineType) << "known ahead of the tables";
}

} // namespace
