// The drawing file: what is saved comes back, what isn't a whole drawing of ours is refused, and a program
// that dies while it saves leaves the old file or the new one.
#include "faces.h"
#include "store/store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace host {

namespace {

/// Hatch and text with every field off its default.
void addObjects(Pattern& p) {
    Hatch& hatch = p.hatches.emplace_back();
    hatch.solid = false;
    hatch.fillPen = 7;
    hatch.transparency = 40;
    hatch.patternName = "ANSI31";
    hatch.contours = {
        {{0, 0, 0, 0, 1, 1, ElementType::Move, 0, 0}, {5, 0, 2, 1, 1, 1, ElementType::Arc, 0, 1}}, {}};
    hatch.families = {{0.5, 2, 1, 1, 0.25, 3, 2, {1, -0.5, 0}}, {}};
    hatch.backPen = 6;
    hatch.exclusions = {{1}};
    hatch.lines = {{0.25, 1, 2, 3, 4, 5, 6, 7}, {}};
    hatch.gradient = {{1, 0.5, 0.25, 40, 9, "CYLINDER"}};
    hatch.source = {{2, 0.125, 1, 1}};
    Text& text = p.texts.emplace_back();
    text.lines = {"Länge", "", std::string("a\0b\nc", 5)};
    text.x = 1, text.y = 2, text.z = 3, text.height = 5, text.width = 0.8, text.angle = 0.1, text.slant = 0.2;
    text.font = 0, text.face = "DejaVu Sans", text.styleBits = 5, text.pen = 9, text.origin = 5;
    text.justification = 2, text.lineDistance = 1.2, text.spacing = 1.1, text.lineLength = 80;
    text.fillPen = 4, text.backOn = true, text.backType = 2, text.dimType = 3;
    p.arrows.resize(1);
    p.arrows[0].lines = {{0, 0, 0, 0, 1, 1, ElementType::Move, 0, 0},
                         {5, 0, 0, 0, 3, 1, ElementType::Draw, 0, 0}};
    p.arrows[0].endHead = 1, p.arrows[0].headLength = 2.5;
    host::Dimension& dimension = p.dimensions.emplace_back();
    dimension.kind = 21, dimension.place = 6, dimension.textRow = 0, dimension.textPos = {3, 4};
    dimension.points = {{0, 0, 1}, {0, 5, 1}, {1, 5, 3}};
    dimension.refs[1] = {7, 8};
    dimension.arrow.kind[2] = 3, dimension.txt.words[7] = 1, dimension.txt.face = "A", dimension.tol.kind = 2;
    dimension.lines = p.arrows[0].lines;
    p.bitmaps = {{"/folder/picture.tif", 40, 20, {1, 2, 3}, {4, 0, 0}, {0, -2, 0}, {{0, 0}, {1, 0}, {0, 1}}}};
    p.solids = {{"body"}, {""}};
    p.faceLists = {faceList({{0, 0, 0}, {1, 0, 0}, {0, 1, 5}}, 3)};
    addFace(p.faceLists[0], {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {0, 0, 1}}, 300);
    p.faceLists[0].marks[2] = HIDDEN | EDGE | NO_PEN;
    p.facets = {
        {faceList({{0, 0, 0}, {1, 0, 0}, {0, 1, 5}}, 8), {{0, 0, 1}, {1, 0, 0}}, {2, 4}, 8, 1'000'000'007}};
    p.curves = {{{{1, 2, 3}, {4, 5, 6}}, 9}};
    p.pointClouds = {{{{1, 2, 3}, {4, 5, 6}}, {7, 8}}};
}

/// A drawing in which everything that can be stored differs from its default.
Drawing fullDrawing() {
    Drawing d;
    d.unit = 5, d.scale = 0.02, d.format = 4, d.fileName = "plan.dxf", d.nextWorkId = 9;
    d.addPattern(false);
    d.addPattern(true);
    Pattern& p = d.addPattern(false);
    p.visible = false, p.groupNumber = 12, p.workId = 3;
    p.ids = {"G", "E", "K", "M", "Wände", "o"};
    p.attributes = {{"layer", "Wände"}, {"empty", ""}};
    p.relation = {1, {0, 1, -1, 0, 3.5, 4}};
    p.elementAttributes = {{2, "object", "centerline"}, {0, "", ""}};
    p.splines = {{{{0, 0}, {1, 1}, {2, 0}}, 3, true, true, 0.5, -0.5}};
    p.elements = {{0.1, -0.0, 0, 0, 255, 62, ElementType::Move, 2, 0},
                  {1e300, 5e-324, 0, 0, 1, 1, ElementType::Draw, 5, 0},
                  {1, 2, 3, 4, 8, 2, ElementType::Arc, 127, 1},
                  {1, 2, 3, 4, 8, -1, ElementType::Circle, 0, 0},
                  {2, 0, 0, 0, 8, 2, ElementType::Spline, 0, 0},
                  {7, std::nan(""), 0, 0, 8, 2, ElementType::Point, 0, 0}};
    addObjects(p);
    d.activeNumber = 3;
    p.facesJoined = true;
    d.recount();
    d.states["o"] = {1, 2, 3, 4, 5, 0, 6, true};
    d.layers = {{"0", true, false}, {"A|B", false, true}};
    d.addView({"Blatt 2", 3, 5, 0.5}).paperWidth = 210;
    d.views.back().paperHeight = 297;
    View detail{"Kitchen", 1, 3, 0.02};
    detail.kind = ViewKind::Detail, detail.factor = 2, detail.display = 1, detail.outline = 1,
    detail.workId = 3;
    detail.clipped = true, detail.filter = "layer=\"A\"";
    d.addView(detail);
    d.viewInserts = {{5, 1, 2, {1, 2, 0}, 0.02}};
    p.view = 1;
    d.geoReference = {true, {1, 2, 3}, 4, 5, 0.5};
    d.workPlanes[3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, std::numeric_limits<double>::infinity()}};
    d.lineTypes[2] = {"DASHED", {0.5, -0.25}};
    d.pens[17] = {1, 2, 255};
    d.lastInterfaceIds = {1, 3};
    return d;
}

} // namespace

static auto fields(const Element& e) {
    // NaN must come back as such: compare what differs from itself by a mark.
    const auto mark = [](double v) {
        return std::isnan(v) ? std::string("nan") : std::to_string(std::bit_cast<std::uint64_t>(v));
    };
    return std::make_tuple(mark(e.x), mark(e.y), mark(e.cx), mark(e.cy), e.pen, e.lineType, e.type,
                           int(e.info), int(e.ccw));
}
static auto fields(const RPT& p) {
    return std::make_tuple(p.x, p.y);
}
static auto fields(const RPT3& p) {
    return std::make_tuple(p.x, p.y, p.z);
}
template <class T>
static auto fieldsOfAll(const std::vector<T>& list) {
    std::vector<decltype(fields(list[0]))> all;
    for (const T& item : list) all.push_back(fields(item));
    return all;
}
static auto fields(const Contour& c) {
    return fieldsOfAll(c);
}
static auto fields(const FaceList& f) {
    return std::make_tuple(fieldsOfAll(f.points), f.ends, f.marks, f.edgeLooks, f.facePens);
}
static auto fields(const Facets& f) {
    return std::make_tuple(fields(f.list), fieldsOfAll(f.normals), f.normalEnds, f.pen, f.material);
}
static auto fields(const Curve& c) {
    return std::make_tuple(fieldsOfAll(c.points), c.pen);
}
static auto fields(const PointCloud& c) {
    return std::make_tuple(fieldsOfAll(c.points), c.pens);
}
static auto fields(const Spline& s) {
    return std::make_tuple(s.degree, s.startFixed, s.endFixed, s.startAngle, s.endAngle,
                           fieldsOfAll(s.points));
}
static auto fields(const host::Arrow& a) {
    return std::make_tuple(a.startHead, a.endHead, a.headLength, a.headWidth, a.use, fieldsOfAll(a.lines));
}
static auto fields(const host::Dimension& d) {
    return std::make_tuple(d.kind, d.place, d.mode, fieldsOfAll(d.points), fields(d.textPos),
                           fields(d.refs[1]), d.textRow, d.tolRow, d.arrow.kind[2], d.txt.words[7],
                           d.txt.face, d.tol.kind, fieldsOfAll(d.lines));
}
static auto fields(const HatchFamily& f) {
    return std::make_tuple(f.angle, f.distance, f.originX, f.originY, f.offset, f.pen, f.lineType, f.dashes);
}
static auto fields(const HatchExclusion& e) {
    return e.contour;
}
static auto fields(const HatchLines& l) {
    return std::make_tuple(l.angle, l.base, l.d1, l.d2, l.c1, l.c2, l.pen, l.lineType);
}
static auto fields(const HatchGradient& g) {
    return std::make_tuple(g.form, g.angle, g.shift, g.size, g.secondPen, g.name);
}
static auto fields(const HatchSource& s) {
    return std::make_tuple(s.scale, s.angle, s.type, s.crossed);
}
static auto fields(const Hatch& h) {
    return std::make_tuple(h.solid, h.fillPen, h.backPen, h.transparency, h.patternName,
                           fieldsOfAll(h.contours), fieldsOfAll(h.families), fieldsOfAll(h.lines),
                           fieldsOfAll(h.gradient), fieldsOfAll(h.source), fieldsOfAll(h.exclusions));
}
static auto fields(const Text& t) {
    return std::make_tuple(t.lines, t.x, t.y, t.z, t.height, t.width, t.angle, t.slant, t.font, t.face,
                           t.styleBits, t.pen, t.origin, t.justification, t.lineDistance, t.spacing,
                           t.lineLength, t.fillPen, t.backOn, t.backType, t.dimType);
}

static void expectSame(const Pattern& a, const Pattern& b) {
    EXPECT_EQ(a.relation, b.relation);
    ASSERT_EQ(a.elementAttributes.size(), b.elementAttributes.size());
    for (std::size_t i = 0; i < a.elementAttributes.size(); ++i) {
        const ElementAttribute &x = a.elementAttributes[i], &y = b.elementAttributes[i];
        EXPECT_EQ(std::tie(x.row, x.name, x.value), std::tie(y.row, y.name, y.value));
    }
    EXPECT_EQ(std::tie(a.number, a.visible, a.groupNumber, a.workId, a.attributes, a.facesJoined),
              std::tie(b.number, b.visible, b.groupNumber, b.workId, b.attributes, b.facesJoined));
    EXPECT_EQ(std::tie(a.ids.group, a.ids.level, a.ids.cls, a.ids.name, a.ids.layer, a.ids.obstat),
              std::tie(b.ids.group, b.ids.level, b.ids.cls, b.ids.name, b.ids.layer, b.ids.obstat));
    EXPECT_EQ(fieldsOfAll(a.elements), fieldsOfAll(b.elements));
    EXPECT_EQ(fieldsOfAll(a.splines), fieldsOfAll(b.splines));
    EXPECT_EQ(fieldsOfAll(a.hatches), fieldsOfAll(b.hatches));
    EXPECT_EQ(fieldsOfAll(a.texts), fieldsOfAll(b.texts));
    EXPECT_EQ(fieldsOfAll(a.faceLists), fieldsOfAll(b.faceLists));
    EXPECT_EQ(fieldsOfAll(a.facets), fieldsOfAll(b.facets));
    EXPECT_EQ(fieldsOfAll(a.curves), fieldsOfAll(b.curves));
    EXPECT_EQ(fieldsOfAll(a.pointClouds), fieldsOfAll(b.pointClouds));
    ASSERT_EQ(a.solids.size(), b.solids.size());
    EXPECT_EQ(fieldsOfAll(a.arrows), fieldsOfAll(b.arrows));
    EXPECT_EQ(fieldsOfAll(a.dimensions), fieldsOfAll(b.dimensions));
    ASSERT_EQ(a.bitmaps.size(), b.bitmaps.size());
    if (!a.solids.empty()) {
        EXPECT_EQ(a.solids[0].data, b.solids[0].data);
    }
}

namespace {

class DrawingFile : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(folder); }
    void TearDown() override { fs::remove_all(folder); }
    void sql(const std::string& statements) const {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(db, statements.c_str(), nullptr, nullptr, &message), SQLITE_OK) << message;
        sqlite3_close(db);
    }
    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    const fs::path folder = fs::temp_directory_path() / ("torva-store-" + std::to_string(getpid()));
    const std::string path = (folder / "plan.tdw").string();
};

} // namespace

static void expectSameSheets(const Drawing& a, const Drawing& b) {
    const View &v = a.views[2], &w = b.views[2];
    EXPECT_EQ(std::tie(v.number, v.kind, v.factor, v.display, v.outline, v.workId, v.clipped, v.filter),
              std::tie(w.number, w.kind, w.factor, w.display, w.outline, w.workId, w.clipped, w.filter));
    EXPECT_EQ(std::tie(a.views[1].paperWidth, a.views[1].paperHeight),
              std::tie(b.views[1].paperWidth, b.views[1].paperHeight));
    ASSERT_EQ(a.viewInserts.size(), 1U);
    const ViewInsert &i = a.viewInserts[0], &j = b.viewInserts[0];
    EXPECT_EQ(std::tie(i.number, i.sheet, i.view, i.place.y, i.ratio),
              std::tie(j.number, j.sheet, j.view, j.place.y, j.ratio));
    EXPECT_EQ(a.find(3)->view, 1);
    const Bitmap &p = a.find(3)->bitmaps[0], &q = b.find(3)->bitmaps[0];
    EXPECT_EQ(std::tie(p.file, p.width, p.height, p.origin.z, p.u.x, p.v.y),
              std::tie(q.file, q.width, q.height, q.origin.z, q.u.x, q.v.y));
    EXPECT_EQ(p.outline.size(), 3U);
    EXPECT_EQ(std::tie(a.geoReference.set, a.geoReference.point.z, a.geoReference.y, a.geoReference.angle),
              std::tie(b.geoReference.set, b.geoReference.point.z, b.geoReference.y, b.geoReference.angle));
}

TEST_F(DrawingFile, EverythingComesBackToTheBit) {
    const Drawing saved = fullDrawing();
    ASSERT_EQ(saveDrawing(saved, path), "");
    EXPECT_EQ(filesInFolder(), 1U);
    Drawing d;
    ASSERT_EQ(loadDrawing(d, path), "");
    EXPECT_EQ(std::tie(d.unit, d.scale, d.format, d.fileName, d.nextWorkId, d.activeNumber, d.lastNumber,
                       d.lastInterfaceIds),
              std::tie(saved.unit, saved.scale, saved.format, saved.fileName, saved.nextWorkId,
                       saved.activeNumber, saved.lastNumber, saved.lastInterfaceIds));
    ASSERT_EQ(d.elementCount, saved.elementCount);
    EXPECT_EQ(d.find(2), nullptr) << "a scratch pattern is no content";
    for (const int number : {1, 3}) expectSame(*d.find(number), *saved.find(number));
    ASSERT_EQ(d.layers.size(), 2U);
    EXPECT_EQ(std::tie(d.layers[1].name, d.layers[1].visible, d.layers[1].locked),
              std::tie(saved.layers[1].name, saved.layers[1].visible, saved.layers[1].locked));
    ASSERT_EQ(d.views.size(), 3U);
    expectSameSheets(d, saved);
    EXPECT_EQ(
        std::tie(d.views[1].name, d.views[1].format, d.views[1].unit, d.views[1].scale),
        std::tie(saved.views[1].name, saved.views[1].format, saved.views[1].unit, saved.views[1].scale));
    EXPECT_EQ(fields(d.workPlanes.at(3).c), fields(saved.workPlanes.at(3).c));
    EXPECT_EQ(std::tie(d.lineTypes.at(2).name, d.lineTypes.at(2).dashes),
              std::tie(saved.lineTypes.at(2).name, saved.lineTypes.at(2).dashes));
    EXPECT_EQ(d.pens.at(17).b, 255);
    const StateSettings& state = d.states.at("o");
    EXPECT_EQ(
        std::make_tuple(state.pen, state.pen3d, state.textBackOn, state.textBits, state.swapsTextColours),
        std::make_tuple(1, 5, 0, 6, true));
    EXPECT_EQ(d.addPattern(false).number, 4) << "numbers aren't used twice";
}

TEST_F(DrawingFile, FilesOfTheFirstVersionAreRead) {
    const Drawing saved = fullDrawing();
    ASSERT_EQ(saveDrawing(saved, path), "");
    sql("DROP TABLE curves; DROP TABLE text_states; DROP TABLE pattern_relations;"
        "DROP TABLE element_attributes; DROP TABLE arrows; DROP TABLE pictures; DROP TABLE view_details;"
        "DROP TABLE view_inserts; DROP TABLE sheet_patterns; DROP TABLE georeference; DROP TABLE hatch_lines;"
        "DROP TABLE hatch_gradients; DROP TABLE hatch_sources; DROP TABLE hatch_backs; DROP TABLE "
        "hatch_exclusions; PRAGMA user_version = "
        "1");
    Drawing d;
    ASSERT_EQ(loadDrawing(d, path), "");
    for (const int number : {1, 3}) {
        Pattern expected = *saved.find(number);
        expected.curves.clear();
        expected.faceLists.clear();
        expected.facets.clear();
        expected.pointClouds.clear();
        expected.solids.clear();
        expected.arrows.clear();
        expected.dimensions.clear();
        expected.bitmaps.clear();
        expected.relation = {};
        for (Hatch& hatch : expected.hatches) {
            hatch.lines.clear(), hatch.gradient.clear(), hatch.source.clear();
            hatch.exclusions.clear();
            hatch.backPen = 0;
        }
        expected.elementAttributes.clear();
        expectSame(*d.find(number), expected);
    }
}

TEST_F(DrawingFile, WhatIsNoDrawingOfOursIsRefusedAndLeavesTheOpenDrawing) {
    Drawing open;
    open.addPattern(false);
    const auto refuses = [&](const char* words) {
        EXPECT_THAT(loadDrawing(open, path), HasSubstr(words));
        EXPECT_EQ(open.lastNumber, 1);
    };
    refuses("No such file");
    std::ofstream(path) << "";
    refuses("isn't a drawing file");
    std::ofstream(path) << "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n";
    refuses("isn't a drawing file");
    fs::remove(path);
    fs::create_directory(path);
    refuses("isn't a file");
    fs::remove(path);
    sql("CREATE TABLE patterns (number INTEGER); PRAGMA application_id = 77");
    refuses("isn't a drawing file");
}

TEST_F(DrawingFile, DamageIsFound) {
    const char* const damages[] = {
        "PRAGMA user_version = 99",
        "PRAGMA user_version = 0",
        "DROP TABLE layers",
        "ALTER TABLE layers ADD COLUMN more",
        "DROP TABLE pens; CREATE VIEW pens AS SELECT 1 AS number, 1 AS r, 1 AS g, 1 AS b",
        "DELETE FROM drawing",
        "INSERT INTO drawing SELECT * FROM drawing",
        "UPDATE drawing SET unit = 9",
        "UPDATE drawing SET scale = NULL",
        "UPDATE drawing SET scale = -1",
        "UPDATE drawing SET format = 'A4'",
        "UPDATE drawing SET last_pattern = 2147483647",
        "UPDATE drawing SET last_pattern = 2",
        "UPDATE patterns SET number = -1 WHERE number = 1",
        "UPDATE patterns SET visible = 2",
        "UPDATE patterns SET work_id = 4294967296",
        "UPDATE patterns SET types = x'070203040605' WHERE number = 3",
        "UPDATE patterns SET types = substr(types, 2) WHERE number = 3",
        "UPDATE patterns SET targets = substr(targets, 2) WHERE number = 3",
        "UPDATE patterns SET centres = x'00' WHERE number = 3",
        "UPDATE patterns SET pens = 'text' WHERE number = 3",
        "UPDATE face_lists SET marks = substr(marks, 2)",
        "UPDATE face_lists SET ends = x'0500000004000000'",
        "UPDATE face_lists SET edge_looks = substr(edge_looks, 5)",
        "UPDATE face_lists SET face_pens = x''",
        "UPDATE facets SET normal_ends = x'02000000'",
        "UPDATE clouds SET pens = x''",
        "DELETE FROM splines",
        "UPDATE splines SET points = x'0011'",
        "UPDATE attributes SET pattern = 2",
        "UPDATE attributes SET position = 7 WHERE position = 1",
        "UPDATE contours SET hatch = 5",
        "UPDATE hatch_lines SET hatch = 1",
        "UPDATE hatch_exclusions SET contour = 2",
        "UPDATE hatch_gradients SET position = 1",
        "UPDATE hatch_backs SET hatch = 1",
        "UPDATE contours SET types = x'0106' WHERE position = 0",
        "UPDATE texts SET height = 'x'",
        "DELETE FROM texts",
        "UPDATE pens SET r = 256",
        "UPDATE views SET scale = 0",
        "UPDATE view_details SET number = 0",
        "UPDATE view_details SET work_id = 77",
        "UPDATE view_inserts SET view = 9",
        "UPDATE view_inserts SET ratio = 0",
        "UPDATE sheet_patterns SET view = 9",
        "DELETE FROM view_details",
    };
    for (const char* damage : damages) {
        ASSERT_EQ(saveDrawing(fullDrawing(), path), "");
        sql(damage);
        Drawing d;
        EXPECT_THAT(loadDrawing(d, path), HasSubstr("Can't load")) << damage;
        EXPECT_EQ(d.lastNumber, 0) << damage;
    }
}

TEST_F(DrawingFile, TruncatedAndScribbledFilesNeverCrash) {
    ASSERT_EQ(saveDrawing(fullDrawing(), path), "");
    std::ifstream in(path, std::ios::binary);
    const std::string whole((std::istreambuf_iterator<char>(in)), {});
    std::mt19937 random(1);
    int refused = 0;
    for (int round = 0; round < 300; ++round) {
        std::string bytes = whole;
        if (round % 3 == 0)
            bytes.resize(random() % bytes.size());
        else
            for (int n = 0; n < 20; ++n) bytes[random() % bytes.size()] = static_cast<char>(random());
        std::ofstream(path, std::ios::binary) << bytes;
        Drawing d;
        refused += !loadDrawing(d, path).empty();
    }
    EXPECT_GT(refused, 150);
}

TEST_F(DrawingFile, FailedSaveLeavesTheOldFile) {
    ASSERT_EQ(saveDrawing(fullDrawing(), path), "");
    fs::create_directory(folder / "taken.tdw");
    EXPECT_NE(saveDrawing(fullDrawing(), (folder / "taken.tdw").string()), "");
    EXPECT_NE(saveDrawing(fullDrawing(), (folder / "missing" / "x.tdw").string()), "");
    EXPECT_NE(saveDrawing(fullDrawing(), "/dev/full"), "");
    EXPECT_EQ(filesInFolder(), 2U) << "nothing is left beside the target";
    rlimit small{20'000, RLIM_INFINITY}, old{};
    getrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_NE(saveDrawing(fullDrawing(), path), "") << "as on a full disk";
    setrlimit(RLIMIT_FSIZE, &old);
    Drawing d;
    EXPECT_EQ(loadDrawing(d, path), "");
}

TEST_F(DrawingFile, LinkAndPermissionsOfTheTargetStay) {
    ASSERT_EQ(saveDrawing(Drawing{}, path), "");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    const fs::path link = folder / "link.tdw";
    fs::create_symlink(path, link);
    ASSERT_EQ(saveDrawing(fullDrawing(), link.string()), "");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    Drawing d;
    EXPECT_EQ(loadDrawing(d, path), "");
    EXPECT_EQ(d.lastNumber, 3);
}

TEST_F(DrawingFile, KilledWhileSavingLeavesTheOldOrTheNewFile) {
    const auto sized = [](int patterns) {
        Drawing d;
        for (int i = 0; i < patterns; ++i) d.addPattern(false).elements.assign(2000, Element{});
        return d;
    };
    const Drawing small = sized(20), large = sized(60);
    ASSERT_EQ(saveDrawing(small, path), "");
    std::mt19937 random(7);
    int temporaries = 0;
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (;;) {
                saveDrawing(large, path);
                saveDrawing(small, path);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500 + random() % 40'000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        temporaries += filesInFolder() > 1;
        Drawing d;
        ASSERT_EQ(loadDrawing(d, path), "") << "round " << round;
        ASSERT_TRUE(d.lastNumber == 20 || d.lastNumber == 60);
    }
    EXPECT_GT(temporaries, 0) << "no kill fell into a save: the test shows nothing";
    ASSERT_EQ(saveDrawing(small, path), "");
    EXPECT_EQ(filesInFolder(), 1U) << "what killed programs left is cleared away";
}

} // namespace host
