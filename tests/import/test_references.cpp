#include "blocks.h"
#include "convert/binary_dxf.h"
#include "services/session.h"

#include <gtest/gtest.h>

namespace {

ImportOptions beside(const std::map<std::string, std::string>& files) {
    ImportOptions options = unshifted();
    options.files = files;
    return options;
}
DxfText referring(const std::string& path) {
    return drawing()
        .block("X", {}, DxfGroups{{70, "4"}, {1, path}} + at(10, {0, 0, 0}))
        .entity("INSERT", insertOf("X", 10, 0))
        .entity("LINE", at(10, {7, 7}) + at(11, {8, 8}));
}

const std::string REST = "move 7 7\ndraw 8 8\n";

/// A drawing of one line on this layer.
DxfText lineOn(const std::string& layer, double length = 1) {
    return drawing().raw(line(0, 0, length, 0, {{8, layer}}));
}

TEST(ExternalReference, ItsFileIsFoundBesideTheDrawing) {
    const std::string other =
        drawing().block("Y", line(0, 0, 1, 0)).entity("INSERT", insertOf("Y", 1, 0)).text();
    for (const char* path : {"other.dxf", "C:\\plans\\other.dxf", "../elsewhere/other.dxf"}) {
        const auto result = importText(referring(path).text(), beside({{"other.dxf", other}}));
        EXPECT_EQ(result.stat, 0);
        EXPECT_EQ(elementsOf(result.dump), "move 11 0\ndraw 12 0\n" + REST) << path;
    }
}

TEST(ExternalReference, MissingOrNoDrawingCostsNoMoreThanItself) {
    for (const char* content : {"", "no DXF\nat all\n"}) {
        const auto result = importText(referring("other.dxf").text(),
                                       *content ? beside({{"other.dxf", content}}) : unshifted());
        EXPECT_EQ(result.stat, 0);
        EXPECT_EQ(elementsOf(result.dump), REST);
        EXPECT_TRUE(result.hasLine("Block X nicht definiert!")) << result.protocol;
    }
}

TEST(ExternalReference, OneThatIsCutIsTheFileWhereTheReadingEnded) {
    const std::string whole = lineOn("0").text();
    const std::string cut = whole.substr(0, whole.find("11\n") + 3);
    const auto result = importText(referring("other.dxf").text(), beside({{"other.dxf", cut}}));
    EXPECT_EQ(result.stat, 9003);
    const long lines = std::count(cut.begin(), cut.end(), '\n');
    EXPECT_TRUE(
        result.hasMessage("The reading ended in line " + std::to_string(lines) + " of file other.dxf."))
        << result.protocol;
}

TEST(ExternalReference, OfACutBinaryFileTheByteIsTold) {
    const TempDir folder;
    const std::string text = folder.write("whole.dxf", lineOn("0").text());
    std::FILE* const out = std::fopen(folder.file("in.dxf").c_str(), "wb");
    ASSERT_TRUE(host::textDxfToBinary(lineOn("0").text(), out));
    std::fclose(out);
    const std::string binary = folder.read("in.dxf");
    const std::size_t end = binary.find("ENDSEC", binary.find("ENTITIES"));
    folder.write("in.dxf", binary.substr(0, end + 3)); // in the text of a group 0
    const auto result = importFile(folder, "in.dxf");
    EXPECT_EQ(result.stat, 9003);
    EXPECT_TRUE(result.hasMessage("The reading ended at byte " + std::to_string(end - 2) + " of file " +
                                  folder.file("in.dxf")))
        << result.protocol;
}

TEST(ExternalReference, RingsEnd) {
    const auto other = [](const std::string& block, const std::string& path) {
        return drawing()
            .block(block, {}, DxfGroups{{70, "4"}, {1, path}} + at(10, {0, 0, 0}))
            .entity("INSERT", insertOf(block))
            .raw(line(0, 0, 1, 0))
            .text();
    };
    for (const std::string& content :
         {other("X", "other.dxf"), other("Y", "other.dxf"), other("Y", "drawing.dxf")}) {
        const auto result = importText(referring("other.dxf").text(), beside({{"other.dxf", content}}));
        EXPECT_EQ(result.stat, 0);
        EXPECT_EQ(elementsOf(result.dump), "move 10 0\ndraw 11 0\n" + REST);
    }
}

TEST(ExternalReference, ABlockOfTheSameNameInItIsAnotherOne) {
    // Block X of the drawing refers to a file that has a block X of its own.
    const std::string other = drawing().block("X", line(0, 0, 1, 0)).entity("INSERT", insertOf("X")).text();
    const auto result = importText(referring("other.dxf").text(), beside({{"other.dxf", other}}));
    EXPECT_EQ(elementsOf(result.dump), "move 10 0\ndraw 11 0\n" + REST);
    EXPECT_FALSE(result.hasLine("Einfügen (INSERT) ignoriert!"));
}

TEST(ExternalReference, WhoOpenedAFileFirstDoesNotMatter) {
    // Two files that refer to each other: each drawn from the main file shows itself and the other one.
    const auto file = [](const std::string& name, const std::string& path, double y) {
        return drawing()
            .block(name, {}, DxfGroups{{70, "4"}, {1, path}} + at(10, {0, 0, 0}))
            .entity("INSERT", insertOf(name))
            .raw(line(0, y, 1, y))
            .text();
    };
    const auto both = [](const char* first, const char* second) {
        return drawing()
            .block("A", {}, DxfGroups{{70, "4"}, {1, "a.dxf"}} + at(10, {0, 0, 0}))
            .block("B", {}, DxfGroups{{70, "4"}, {1, "b.dxf"}} + at(10, {0, 0, 0}))
            .entity("INSERT", insertOf(first))
            .entity("INSERT", insertOf(second))
            .text();
    };
    const ImportOptions options =
        beside({{"a.dxf", file("B", "b.dxf", 1)}, {"b.dxf", file("A", "a.dxf", 2)}});
    for (const auto& order : {both("A", "B"), both("B", "A")}) {
        const std::string result = elementsOf(importText(order, options).dump);
        EXPECT_EQ(count(result, "draw 1 1"), 2) << result;
        EXPECT_EQ(count(result, "draw 1 2"), 2) << result;
    }
}

TEST(ExternalReference, OneFileIsReadOnceForManyBlocks) {
    DxfText text = drawing();
    for (const char* name : {"A", "B", "C"}) {
        text.block(name, {},
                   DxfGroups{{70, "4"}, {1, *name == 'C' ? "C:\\x\\other.dxf" : "other.dxf"}} +
                       at(10, {1, 0, 0}));
        for (int i = 0; i < 4; ++i) text.entity("INSERT", insertOf(name, 2, 0));
    }
    std::string wanted;
    for (int i = 0; i < 12; ++i) wanted += "move 1 0\ndraw 2 0\n";
    const auto result = importText(text.text(), beside({{"other.dxf", lineOn("0").text()}}));
    EXPECT_EQ(elementsOf(result.dump), wanted) << result.protocol;
}

TEST(ExternalReference, NestsAndFindsBlocksOutwards) {
    const std::string inner =
        drawing().entity("INSERT", insertOf("OFMAIN", 1, 0)).raw(line(0, 0, 2, 0)).text();
    const std::string other = drawing()
                                  .block("N", {}, DxfGroups{{70, "4"}, {1, "inner.dxf"}} + at(10, {0, 0, 0}))
                                  .entity("INSERT", insertOf("N", 0, 5))
                                  .raw(line(0, 0, 3, 0))
                                  .text();
    const auto result = importText(referring("other.dxf").block("OFMAIN", line(0, 0, 1, 1)).text(),
                                   beside({{"other.dxf", other}, {"inner.dxf", inner}}));
    EXPECT_EQ(elementsOf(result.dump),
              "move 11 5\ndraw 12 6\nmove 10 5\ndraw 12 5\nmove 10 0\ndraw 13 0\n" + REST);
}

TEST(ExternalReference, ItsLayersAreItsOwnUnlessTheDrawingKnowsThem) {
    const std::string other = drawing()
                                  .layer("OWN", 3)
                                  .layer("KNOWN", 3)
                                  .layer("OFF", -3)
                                  .raw(line(0, 0, 1, 0, {{8, "OWN"}}) + line(0, 0, 2, 0, {{8, "KNOWN"}}) +
                                       line(0, 0, 3, 0, {{8, "OFF"}}) + line(0, 0, 4, 0, {{8, "0"}}))
                                  .text();
    const DxfText main = drawing().layer("OWN", 1).layer("other|KNOWN", 5).layer("IN", 1);
    const auto import = [&](const DxfText& text, const std::string& config) {
        ImportOptions options = beside({{"other.dxf", other}});
        options.config = flags(config);
        return importText(text.text(), options).dump;
    };
    DxfText text = main;
    text.block("X", {}, DxfGroups{{70, "4"}, {1, "other.dxf"}} + at(10, {0, 0, 0}))
        .entity("INSERT", insertOf("X", 0, 0, {{8, "IN"}}));
    DxfText alike = main;
    alike.layer("GREEN", 3)
        .raw(line(0, 0, 1, 0, {{8, "GREEN"}}) + line(0, 0, 2, 0, {{8, "other|KNOWN"}}) +
             line(0, 0, 4, 0, {{8, "IN"}}));
    EXPECT_EQ(import(text, ""), import(alike, "")) << "layer 0 is that of the INSERT, with its colour";
    const std::string byLayers = import(text, "READ_LAYER=GROUP\n");
    EXPECT_NE(byLayers.find("group \"IN\""), std::string::npos) << byLayers;
    EXPECT_EQ(count(byLayers, "group \"IN\""), 1) << byLayers;
}

TEST(ExternalReference, ItsStringsHaveTheirOwnCodePage) {
    const auto texts = [](const std::string& version, const std::string& page, const std::string& value) {
        return dxf()
            .header(version, {{9, "$DWGCODEPAGE"}, {3, page}})
            .record("STYLE", {{2, "S"}, {70, "0"}, {3, "x.ttf"}, {1001, "ACAD"}, {1000, value}})
            .entity("TEXT", DxfGroups{{1, value}, {40, "2"}, {8, value}, {7, "S"}} + at(10, {0, 0}))
            .text();
    };
    const std::string utf8 = "\xC3\x84\xD0\x96", western = "\xC4", cyrillic = "\xC6";
    const auto shown = [&](const std::string& version, const std::string& page, const std::string& other) {
        DxfText text = dxf().header(version, {{9, "$DWGCODEPAGE"}, {3, page}});
        text.block("X", {}, DxfGroups{{70, "4"}, {1, "other.dxf"}} + at(10, {0, 0, 0}))
            .entity("INSERT", insertOf("X"));
        const std::string dump = importText(text.text(), beside({{"other.dxf", other}})).dump;
        const auto at = dump.rfind(" \"") + 2;
        const std::string value = dump.substr(at, dump.rfind('"') - at);
        EXPECT_NE(dump.find("face \"" + value + '"'), std::string::npos) << dump;
        return value;
    };
    EXPECT_EQ(shown("AC1015", "ANSI_1252", texts("AC1015", "ANSI_1251", cyrillic)), "\xD0\x96");
    EXPECT_EQ(shown("AC1015", "ANSI_1251", texts("AC1015", "ANSI_1252", western)), "\xC3\x84");
    EXPECT_EQ(shown("AC1015", "ANSI_1252", texts("AC1027", "ANSI_1252", utf8)), utf8);
    EXPECT_EQ(shown("AC1027", "ANSI_1252", texts("AC1015", "ANSI_1251", cyrillic)), "\xD0\x96");
}

TEST(ExternalReference, WithoutHeaderOrTablesIsADrawingToo) {
    const std::string entities =
        "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n0\n 11\n1\n  0\nENDSEC\n  0\nEOF\n";
    const std::string tables = "  0\nSECTION\n  2\nTABLES\n  0\nENDSEC\n";
    for (const std::string& content :
         {entities, tables + entities, entities.substr(0, entities.find("  0\nEOF"))}) {
        const auto result = importText(referring("other.dxf").text(), beside({{"other.dxf", content}}));
        EXPECT_EQ(result.stat, 0) << result.protocol;
        EXPECT_EQ(elementsOf(result.dump), "move 10 0\ndraw 11 0\n" + REST);
    }
}

TEST(ExternalReference, OfABinaryFileIsConverted) {
    char* bytes = nullptr;
    std::size_t size = 0;
    FILE* out = open_memstream(&bytes, &size);
    ASSERT_TRUE(host::textDxfToBinary(lineOn("0").text(), out));
    std::fclose(out);
    const std::string binary(bytes, size);
    std::free(bytes);
    for (const std::string& content : {binary, binary.substr(0, 20)}) {
        const auto result = importText(referring("other.dxf").text(), beside({{"other.dxf", content}}));
        EXPECT_EQ(result.stat, 0);
        const bool isWhole = content == binary;
        EXPECT_EQ(elementsOf(result.dump), (isWhole ? "move 10 0\ndraw 11 0\n" : "") + REST);
        EXPECT_NE(result.hasMessage("other.dxf konnte nicht"), isWhole) << result.protocol;
    }
}

TEST(ExternalReference, AStopWithinItEndsTheImport) {
    DxfText other = drawing();
    for (int i = 0; i < 400; ++i) other.raw(line(0, 0, i, 1));
    const TempDir folder;
    folder.write("drawing.dxf", referring("other.dxf").text());
    folder.write("other.dxf", other.text());
    ImportOptions options = unshifted();
    options.keepsSession = true;
    const auto importStoppedAt = [&](int first, int last) {
        host::resetSession();
        int asked = 0;
        host::session().wantsAbort = [&] { return ++asked >= first && asked <= last; };
        const auto result = importFile(folder, "drawing.dxf", options);
        return std::make_pair(result, asked);
    };
    constexpr int never = 1 << 20;
    const auto [whole, asked] = importStoppedAt(never, never);
    ASSERT_EQ(count(whole.dump, "draw "), 401);
    int measured = 0;
    int drawnInPart = 0;
    for (int stop = 1; stop <= asked; ++stop) {
        const auto stopped = importStoppedAt(stop, stop).first; // asked once more, the user says no
        EXPECT_EQ(stopped.stat, 9009) << stop;
        const int lines = count(stopped.dump, "draw ");
        EXPECT_LT(lines, 401);
        ++(lines > 0 ? drawnInPart : measured);
    }
    host::resetSession();
    EXPECT_GT(measured, 2);
    EXPECT_GT(drawnInPart, 2);
}

TEST(ExternalReference, OfADwgIsConvertedAndARecoveredTwinServes) {
    host::resetSession();
    host::session().dwgConverter = "cp --";
    const TempDir folder;
    const std::string main = referring("plan.dwg")
                                 .block("R", {}, DxfGroups{{70, "4"}, {1, "Lost.DXF"}} + at(10, {0, 0, 0}))
                                 .entity("INSERT", insertOf("R"))
                                 .text();
    folder.write("drawing.dxf", main);
    ImportOptions options =
        beside({{"plan.dwg", lineOn("0").text()}, {"lost_recovered.dxf", lineOn("0", 3).text()}});
    options.keepsSession = true;
    const auto result = importFile(folder, "drawing.dxf", options);
    const auto dialogs = host::session().dialogs;
    host::resetSession();
    EXPECT_EQ(elementsOf(result.dump), "move 10 0\ndraw 11 0\n" + REST + "move 0 0\ndraw 3 0\n")
        << result.protocol;
    ASSERT_EQ(dialogs.size(), 1U);
    EXPECT_NE(dialogs[0].find("Lost.DXF"), std::string::npos) << dialogs[0];
}

} // namespace
