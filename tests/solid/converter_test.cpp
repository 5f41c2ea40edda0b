// The converter: versions, forms, files in place, surfaces that are made anew, bad input.
#include "models.h"
#include "sat_model.h"
#include "temp_dir.h"

#include "dx_od.h"
#include "solid/sat/acis_decimal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>

namespace {

/// The records; not the unit, which the eldest versions don't say.
std::string comparable(const ACIS::File& file) {
    const std::string dump = ACIS::dumpModel(file, 700);
    return dump.substr(dump.find('\n'));
}

TEST(Sat, VersionsOfOneModelBecomeTheSame) {
    const auto newest = loaded(boxModel(700));
    for (const int version : {105, 106, 200, 400, 500, 600, 700}) {
        SCOPED_TRACE(version);
        const auto file = loaded(boxModel(version));
        EXPECT_EQ(file->header.version, version);
        EXPECT_EQ(file->counts().edges, 12u);
        expectEdgesMeetVertices(*file);
        for (const std::uint32_t form : {SAT_700, SAB_700}) {
            const auto made = converted(*file, form);
            EXPECT_EQ(made->header.isBinary, form == SAB_700);
            EXPECT_EQ(comparable(*made), comparable(*newest));
            expectSameVertices(*file, *made);
            expectSameShapes(*file, *made);
        }
    }
}

TEST(Sat, VersionsAreAcceptedByTheirNumber) {
    const std::string box = boxModel(700);
    for (const auto& [version, isAccepted] : std::vector<std::pair<const char*, bool>>{{"104", false},
                                                                                       {"1100", true},
                                                                                       {"1101", false},
                                                                                       {"1200", false},
                                                                                       {"20799", false},
                                                                                       {"20800", true},
                                                                                       {"21300", false},
                                                                                       {"22300", true},
                                                                                       {"22301", false},
                                                                                       {"-700", false},
                                                                                       {"x", false}}) {
        ACIS::File file;
        EXPECT_EQ(file.load(replaced(box, "700 0 1 0", std::string(version) + " 0 1 0")), isAccepted)
            << version;
        EXPECT_EQ(file.problem().empty(), isAccepted) << version;
    }
}

TEST(Sat, HeadAndRecordsAreWrittenAsTheFormatHasThem) {
    const std::string text = loaded(sphereModel(400))->save(SAT_700);
    const std::string head = "700 5 1 0 \n@20 Briveir ACIS Builder @12 ACIS 7.00 NT @24 ";
    EXPECT_EQ(text.substr(0, head.size()), head);
    const std::string records = text.substr(text.find("body"));
    EXPECT_EQ(records,
              "body $-1 -1 $-1 $1 $-1 $-1 #\nlump $-1 -1 $-1 $-1 $2 $0 #\n"
              "shell $-1 -1 $-1 $-1 $-1 $3 $-1 $1 #\nface $-1 -1 $-1 $-1 $-1 $2 $-1 $4 forward single #\n"
              "sphere-surface $-1 -1 $-1 1 2 3 10 1 0 0 0 0 1 forward_v I I I I #\nEnd-of-ACIS-data\n");
    const std::string numbered = loaded(sphereModel(400))->save(SAT_700 | ACIS::VERSION_NUMBERED);
    EXPECT_NE(numbered.find("-3 face "), std::string::npos);
    EXPECT_EQ(ACIS::dumpModel(*loaded(numbered)), ACIS::dumpModel(*loaded(text)));
    const std::string binary = loaded(sphereModel(400))->save(SAB_700);
    const std::int32_t counts[4] = {700, 5, 1, 0};
    EXPECT_EQ(binary.substr(0, 15), "ACIS BinaryFile");
    EXPECT_EQ(std::memcmp(binary.data() + 15, counts, sizeof counts), 0);
}

TEST(Sat, HeadersOfNewerFilesTakeNoPlace) {
    std::string text = replaced(sphereModel(700), "700 0 1 0", "21500 0 1 0");
    for (int i = 4; i >= 0; --i) { // all pointers move by one
        const std::string from = "$" + std::to_string(i) + " ", to = "$" + std::to_string(i + 1) + " ";
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
            text.replace(at, from.size(), to);
    }
    text = replaced(text, "body ", "asmheader $-1 -1 @12 215.0.0.1234 #\nbody ");
    const auto file = loaded(text);
    ASSERT_EQ(file->records.size(), 6u);
    const auto made = converted(*file);
    EXPECT_EQ(ACIS::dumpModel(*made), ACIS::dumpModel(*loaded(sphereModel(700))));
}

TEST(Sat, UnknownRecordsAndPartsAreKept) {
    const std::string odd = "own_thing-odd-attrib $-1 -1 $-1 $-1 $0 7 0.5 @5 a # b T { own_sub 3 $2 } #\n"
                            "mystery $-1 $3 forward 12 #\nEnd-of";
    const auto file = loaded(replaced(sphereModel(700), "End-of", odd));
    const auto made = converted(*file), binary = converted(*file, SAB_700);
    EXPECT_EQ(ACIS::dumpModel(*made), ACIS::dumpModel(*file));
    EXPECT_EQ(ACIS::dumpModel(*binary), ACIS::dumpModel(*file));
    EXPECT_NE(file->save(SAT_700).find(
                  "own_thing-odd-attrib $-1 -1 $-1 $-1 $0 7 0.5 @5 a # b T { own_sub 3 $2 } #"),
              std::string::npos);
}

TEST(Sat, OddNamesAreReadAgain) {
    for (const char* name :
         {"a--b-attrib", "x-3y-attrib", "-q", "3d-4d-", "@z-$5-attrib", "a-End-of-ACIS-data"}) {
        const auto file =
            loaded(replaced(sphereModel(700), "End-of", std::string(name) + " { 5th 2 3a } #\nEnd-of"));
        ASSERT_EQ(file->records.size(), 6u) << name;
        EXPECT_EQ(ACIS::dumpModel(*converted(*file, SAB_700)), ACIS::dumpModel(*file));
        EXPECT_EQ(ACIS::dumpModel(*converted(*converted(*file, SAB_700))), ACIS::dumpModel(*file));
    }
    ACIS::File file;
    EXPECT_FALSE(file.load(replaced(sphereModel(700), "End-of", std::string(300, 'n') + " #\nEnd-of")));
    EXPECT_EQ(file.problem(), "record 5: no name of a record");
}

TEST(Sat, NumbersHaveSeventeenDigits) {
    std::mt19937_64 random(17);
    for (int i = 0; i < 200000; ++i) {
        const double size = std::pow(10, static_cast<double>(random() % 16) - 6);
        const double steps = i % 3 ? 0x1p53 : 1024; // some lie halfway between two texts
        const double number = size * static_cast<double>(static_cast<std::int64_t>(random()) >> 11) / steps;
        char wanted[40];
        std::snprintf(wanted, sizeof wanted, "%.17lg", number);
        std::string text;
        ACIS::appendReal(text, number);
        ASSERT_EQ(text, wanted);
    }
}

TEST(Sat, SplineSurfacesKeepTheirPoints) {
    for (const bool isRational : {false, true}) {
        for (const int version : {400, 500, 700}) {
            SCOPED_TRACE(version);
            const std::string level = version >= 500 ? "full " : "",
                              breaks = version >= 500 ? " 0 0 0 0 0 0" : "";
            const std::string ranges = version >= 500 ? "" : "";
            const auto file = loaded(splineFaceModel(version, "exactsur " + level + splineNet(isRational) +
                                                                  " 0" + breaks + ranges));
            const auto made = converted(*file);
            expectSameShapes(*file, *made);
            const auto shape = surfaceShape(*made, *all(*made, Id::Spline)[0]);
            ASSERT_TRUE(shape);
            EXPECT_EQ(shape->range[1], 2);
            // The corners of the net are on the surface.
            EXPECT_LE(distance(shape->at(0, 0), {0, 0, 0}), 1e-12);
            EXPECT_LE(distance(shape->at(2, 1), {3, 3, 2}), 1e-12);
        }
    }
}

TEST(Sat, SharedSubRecordsAreWrittenOnce) {
    std::string text = splineFaceModel(700, "exactsur full " + splineNet(false) + " 0 0 0 0 0 0 0");
    text = replaced(text, "End-of", "spline-surface $-1 -1 $-1 forward { ref 0 } I I I I #\nEnd-of");
    const auto file = loaded(text);
    const std::string written = file->save(SAT_700);
    EXPECT_EQ(written.find("exactsur"), written.rfind("exactsur"));
    EXPECT_NE(written.find("{ ref 0 }"), std::string::npos);
    const auto made = loaded(written);
    const auto a = surfaceShape(*made, *all(*made, Id::Spline)[0]),
               b = surfaceShape(*made, *all(*made, Id::Spline)[1]);
    ASSERT_TRUE(a && b);
    EXPECT_EQ(distance(a->at(1.3, 0.4), b->at(1.3, 0.4)), 0);
}

TEST(Sat, PlacedModelsStandWhereTheMatrixTakesThem) {
    // A quarter turn about z, twice the size, moved.
    const Mat44 turn = {{0, 2, 0, 0}, {-2, 0, 0, 0}, {0, 0, 2, 0}, {10, 20, 30, 1}};
    const Mat44 mirror = {{-1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    std::string once, twice, mirrored;
    ASSERT_EQ(DxOdSatPlace(boxModel(400), turn, false, once), 0);
    ASSERT_EQ(DxOdSatPlace(once, turn, true, twice), 0);
    ASSERT_EQ(DxOdSatPlace(boxModel(700), mirror, false, mirrored), 0);
    const auto numbers = [](const ACIS::File& file) {
        const ACIS::ENTITY& transform = *all(file, Id::Transform).at(0);
        std::vector<double> all;
        for (std::size_t i = 0; i < 16; ++i) all.push_back(file.values[transform.first + 2 + i].number());
        all[13] = static_cast<double>(file.values[transform.first + 15].integer);
        return all;
    };
    const auto expectNear = [](const std::vector<double>& found, const std::vector<double>& wanted) {
        for (std::size_t i = 0; i < wanted.size(); ++i) EXPECT_NEAR(found[i], wanted[i], 1e-12) << i;
    };
    expectNear(numbers(*loaded(once)), {0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 20, 30, 2});
    expectNear(numbers(*loaded(twice)), {-1, 0, 0, 0, -1, 0, 0, 0, 1, -30, 40, 90, 4});
    EXPECT_NE(mirrored.find(" rotate reflect no_shear #"), std::string::npos);
    std::string same;
    const Mat44 none = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    ASSERT_EQ(DxOdSatPlace(boxModel(700), none, false, same), 0);
    EXPECT_EQ(same.find("transform"), std::string::npos);
}

TEST(Sat, FilesAreConvertedInPlace) {
    const TempDir folder;
    const UtCString path = folder.write("model.sat", boxModel(400));
    ASSERT_EQ(DxOdSatConv(path, path), 0);
    EXPECT_EQ(folder.read("model.sat").substr(0, 4), "700 ");
    const UtCString binary = folder.file("model.sab");
    ASSERT_EQ(DxOdSatConv(path, binary), 0) << "a second conversion with the same converter";
    EXPECT_EQ(folder.read("model.sab").substr(0, 15), "ACIS BinaryFile");
    DxOdInit(0);
    ASSERT_EQ(DxOdSatConv(binary, path), 0) << "started anew";
    EXPECT_EQ(comparable(*loaded(folder.read("model.sat"))), comparable(*loaded(boxModel(700))));
    const UtCString tiny = folder.write("tiny.sat", "700 1 1 0");
    ASSERT_EQ(DxOdSatConv(tiny, tiny), 0) << "fewer than 16 bytes are an empty model";
    EXPECT_EQ(folder.read("tiny.sat").substr(0, 8), "700 0 0 ");
    EXPECT_EQ(DxOdSatConv(folder.file("none.sat"), path), 2360);
    EXPECT_EQ(DxOdSatConv(folder.write("bad.sat", "1200 0 1 0 and more of it"), path), 4002);
    EXPECT_FALSE(DxOdProblem().empty());
    DxOdInit(0);
}

// ---- bad input -------------------------------------------------------------------------------------

TEST(SatBadInput, IsRefusedWithTheRecord) {
    struct Case {
        const char *part, *by, *record;
    };
    const Case cases[] = {
        {"face $-1 -1 $-1 $4 $9", "face $-1 -1 $-1 $4000 $9", "record 3"}, // a pointer out of range
        {"face $-1 -1 $-1 $5 $10", "face $-1 -1 $-1 $3 $10", "record 3"},  // a ring of faces
        {"coedge $-1 -1 $-1 $22 ", "coedge $-1 -1 $-1 $23 ", ""},          // skips one: still comes back
        {"coedge $-1 -1 $-1 $23 ", "coedge $-1 -1 $-1 $22 ", "record 21"}, // never comes back
        {"forward_v I I", "sideways I I", "record 15"},                    // no such word
        {"point $-1 -1 $-1 0", "point $-1 -1 $-1 1e999", "record 77"},     // an exponent out of range
        {"point $-1 -1 $-1 0", "point $-1 -1 $-1 1e-999", ""},             // one that vanishes
        {"lump $-1", "-1000000000000 lump $-1", "record 1"},               // a number out of range
        {"lump $-1", "-0 lump $-1", "record 0"},                           // one that another has
        {"edge $-1 -1 $-1 $57", "edge $-1 -1 $-1 x", "record 45"},
    };
    for (const Case& c : cases) {
        const std::string text = boxModel(700), bad = replaced(text, c.part, c.by);
        ASSERT_NE(bad, text) << c.part;
        ACIS::File file;
        EXPECT_EQ(file.load(bad), std::string(c.record).empty()) << c.by << ": " << file.problem();
        EXPECT_NE(file.problem().find(c.record), std::string::npos) << c.by << ": " << file.problem();
    }
}

TEST(SatBadInput, CountsAndDepthsHaveBounds) {
    const std::string model = splineFaceModel(700, "exactsur full " + splineNet(false) + " 0 0 0 0 0 0 0");
    std::string deep;
    for (int i = 0; i < 5000; ++i) deep += "{ own ";
    for (const auto& [part, by] : std::vector<std::pair<std::string, std::string>>{
             {"none none 3 2", "none none 2000000000 2"},
             {"0 2 1 1", "0 2000000000 1 1"},
             {"nubs 2 1", "nubs 2000000000 1"},
             {"nubs 2 1", "nubs -2 1"},
             {"{ exactsur", deep + "{ exactsur"},
             {"{ exactsur", "{ ref 7 } { exactsur"},
         }) {
        const std::string bad = replaced(model, part, by);
        ASSERT_NE(bad, model) << part;
        ACIS::File file;
        // A layout that doesn't fit is kept token by token, if its braces are whole.
        if (file.load(bad))
            EXPECT_FALSE(surfaceShape(file, *all(file, Id::Spline)[0])) << by.substr(0, 40);
        else
            EXPECT_NE(file.problem().find("record 4"), std::string::npos) << file.problem();
    }
}

TEST(SatBadInput, CutFilesAreRefused) {
    const std::string text = boxModel(700), binary = loaded(text)->save(SAB_700);
    for (const std::string* whole : {&text, &binary}) {
        const std::size_t end = whole->size() - 22; // a file may lack the marker of its end
        for (std::size_t size = 16; size < end; size += 7) {
            ACIS::File file;
            ASSERT_FALSE(file.load(whole->substr(0, size))) << size;
            ASSERT_FALSE(file.problem().empty());
        }
    }
}

TEST(SatBadInput, AnyByteMayBeWrong) {
    const std::string text = boxModel(700), binary = loaded(text)->save(SAB_700);
    for (const std::string* whole : {&text, &binary}) {
        for (std::size_t at = 0; at < whole->size(); at += 3) {
            std::string bad = *whole;
            bad[at] = static_cast<char>(bad[at] ^ (1 << at % 8));
            ACIS::File file, again;
            if (!file.load(bad)) continue;
            const std::string written = file.save(SAT_700);
            EXPECT_TRUE(written.empty() || again.load(written)) << at << ": " << again.problem();
        }
    }
}

TEST(SatBadInput, FarAwayParametersEnd) {
    const auto file =
        loaded(oneFaceModel(700, "torus", "0 0 0 0 0 1 10 2 1 0 0 forward_v F 1e300 F 2e300 I I"));
    const auto shape = surfaceShape(*file, *all(*file, Id::Torus)[0]);
    ASSERT_TRUE(shape);
    double u = 0, v = 0;
    shape->parametersOf({12, 0, 0}, u, v);
    EXPECT_TRUE(std::isfinite(u) && std::isfinite(v));
}

} // namespace
