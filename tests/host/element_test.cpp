#include "drawing/extents.h"
#include "drawing/spline_curve.h"
#include "host_fixture.h"

#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;

std::array<double, 4> boxOf(int pattern) {
    int code = 256;
    std::array<double, 4> box{};
    EXPECT_EQ(ovpatrect(&code, &pattern, box.data()), 0);
    return box;
}

void expectBox(int pattern, const std::array<double, 4>& expected) {
    const std::array<double, 4> box = boxOf(pattern);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(box[i], expected[i], 1e-9) << "side " << i;
}

int addSpline(std::vector<double> x, std::vector<double> y, int flag = 0, double start = 0, double end = 0) {
    int count = static_cast<int>(x.size());
    int degree = 3;
    int one = 1;
    int flags[2] = {flag, flag};
    return ovspline(&count, x.data(), y.data(), &degree, &one, flags, &start, &end);
}

} // namespace

TEST_F(HostTest, BulkElementsArriveAsTheyWereGiven) {
    int context = 0;
    CiContext::Add(&context);
    const int number = newPattern();
    const int type[] = {1, 2, 3, 3};
    const short direction[] = {0, 0, 1, -1};
    const RPT3 first[] = {{0, 0, 0}, {0, 0, 0}, {5, 5, 0}, {5, 0, 0}};
    const RPT3 second[] = {{1, 2, 0}, {0.1, 1e-300, 0}, {5, 10, 0}, {5, 10, 0}};
    const int pen[] = {1, 1023, 2, 2};
    const short lineType[] = {1, 1, 62, 62};
    const unsigned char info[] = {0, 127, 4, 4};
    CiPat pat(context);
    const DsCsr cursor = cursorOf(number);
    const auto add = [&](int count) {
        return pat.AddElemsColLtAttrInfo(cursor, 0, count, type, direction, first, second, pen, lineType,
                                         nullptr, nullptr, info);
    };
    ASSERT_EQ(add(4), 0);
    EXPECT_EQ(patterns(), "pattern 1\n  pen 1 lt 1\n  move 1 2\n  pen 1023 lt 1\n  draw 0.1 0 info 127\n"
                          "  pen 2 lt 62\n  arc ccw 5 10 about 5 5 info 4\n  arc cw 5 10 about 5 0 info 4\n");
    EXPECT_EQ(host::openDrawing().find(number)->elements[1].y, 1e-300) << "to the last bit";
    EXPECT_NE(add(-1), 0);
    EXPECT_EQ(add(0), 0);
    const int strange[] = {1, 9};
    EXPECT_NE(pat.AddElemsColLtAttrInfo(cursor, 0, 2, strange, direction, first, second, pen, lineType,
                                        nullptr, nullptr, info),
              0);
    EXPECT_EQ(host::openDrawing().elementCount, 4U) << "a refused call adds nothing";
}

TEST_F(HostTest, ContextsConvertCoordinatesToTheDrawing) {
    int metres = 0;
    CiContext::Add(&metres);
    ASSERT_EQ(CiContext::SetUnit(metres, "m"), 0);
    EXPECT_NE(CiContext::SetUnit(metres, "ell"), 0);
    const DsCsr cursor = cursorOf(newPattern());
    CiElem elem(metres);
    EXPECT_EQ(elem.AddMove(cursor, {0, 0, 0}), 0);
    EXPECT_EQ(elem.AddCircle(cursor, {2, 0, 0}, 0.5), 0);
    expectBox(1, {0, -500, 2500, 500});
    DsCsr walk = cursor;
    int type = 0;
    ASSERT_EQ(elem.Last(walk, &type), 0);
    RPT3 centre{};
    double radius = 0;
    ASSERT_EQ(elem.GetCircle(walk, &centre, &radius), 0);
    EXPECT_EQ(centre.x, 2);
    EXPECT_EQ(radius, 0.5);
    RPT3 low{};
    RPT3 high{};
    ASSERT_EQ(CiPat(metres).GetBox(cursor, &low, &high), 0);
    EXPECT_DOUBLE_EQ(high.x, 2.5);
    int again = 0;
    CiContext::Del(metres);
    CiContext::Add(&again);
    EXPECT_EQ(again, metres) << "ids are given back";
    EXPECT_NE(CiContext::Update(99), 0);
}

TEST_F(HostTest, WalkReportsElementsAndSplinesAsDraws) {
    const int number = newPattern();
    ovdraw(2, 0, 0, 0);
    ASSERT_EQ(addSpline({0, 10, 20}, {0, 10, 0}), 0);
    ovarc(4, 30, 10, 20, 10, 5);
    ovarc(22, 40, 10, 45, 10, 0);
    CiElem elem(0);
    DsCsr cursor = cursorOf(number);
    int type = 0;
    std::string types;
    RPT3 point{};
    for (int error = elem.First(cursor, &type); error == 0; error = elem.Next(cursor, &type)) {
        if (type != 2 || types.back() != '2') types += static_cast<char>('0' + type);
        if (type == 2) {
            EXPECT_EQ(elem.GetDraw(cursor, &point), 0);
        }
    }
    EXPECT_EQ(types, "1234");
    EXPECT_EQ(point.x, 20) << "the chain ends where the spline ends";
    ASSERT_EQ(elem.Last(cursor, &type), 0);
    EXPECT_EQ(cursor.Get().elRow, 3);
    EXPECT_EQ(elem.GetDraw(cursor, &point), 1005) << "it is a circle";
    int info = 0;
    EXPECT_EQ(DsElemGetTypeInfo(number, 2, &info), 0);
    EXPECT_EQ(info & 0xff, 3);
    EXPECT_TRUE(DsElemTypeIsElemGroup(info));
    DsElemGetTypeInfo(number, 0, &info);
    EXPECT_FALSE(DsElemTypeIsElemGroup(info));
    EXPECT_EQ(DsElemGetTypeInfo(number, 4, &info), 1005);
    EXPECT_EQ(DsElemGetTypeInfo(number, -1, &info), 1005);
    EXPECT_EQ(CiPat(0).DelElems(cursor), 0);
    EXPECT_EQ(elem.First(cursor, &type), 1005);
    EXPECT_EQ(host::openDrawing().elementCount, 0U);
}

TEST_F(HostTest, ExtentsFollowTheCurves) {
    const int quarter = newPattern();
    ovdraw(2, 10, 0, 0);
    ovarc(4, 0, 10, 0, 0, 0);
    expectBox(quarter, {0, 0, 10, 10});
    const int rest = newPattern();
    ovdraw(2, 10, 0, 0);
    ovarc(3, 0, 10, 0, 0, 0);
    expectBox(rest, {-10, -10, 10, 10});
    const int full = newPattern();
    ovdraw(2, 10, 0, 0);
    ovarc(3, 10, 0, 5, 0, 0);
    expectBox(full, {0, -5, 10, 5});
    const int arch = newPattern();
    ASSERT_EQ(addSpline({-1, 0, 1}, {0, 1, 0}, 1, 0.75 * pi, -0.75 * pi), 0);
    const std::array<double, 4> box = boxOf(arch);
    EXPECT_NEAR(box[3], 1, 1e-9);
    EXPECT_LT(box[0], -1) << "a tangent that leans outward";
    EXPECT_NEAR(box[0], -box[2], 1e-12);
    const int bad = newPattern();
    ovdraw(2, std::numeric_limits<double>::quiet_NaN(), 0, 0);
    int code = 256;
    double rect[4];
    int number = bad;
    EXPECT_EQ(ovpatrect(&code, &number, rect), 1005) << "nothing that could be drawn";
    const host::Extents all = host::openDrawing().extents();
    EXPECT_EQ(all.minX, -10);
    EXPECT_EQ(all.maxX, 10);
}

TEST_F(HostTest, TextsCountWithTheirBlock) {
    const int number = newPattern();
    host::Text text;
    text.lines = {"MMMM"};
    text.x = 100;
    text.height = text.width = 10;
    host::openDrawing().find(number)->texts.push_back(text);
    const std::array<double, 4> upright = boxOf(number);
    EXPECT_GT(upright[2] - upright[0], upright[3] - upright[1]);
    setScale(0.1);
    EXPECT_NEAR(boxOf(number)[3] - boxOf(number)[1], 10 * (upright[3] - upright[1]), 1e-6)
        << "heights are millimetres on the sheet";
    setScale(1);
    host::openDrawing().find(number)->texts[0].angle = pi / 2;
    EXPECT_NEAR(boxOf(number)[3] - boxOf(number)[1], upright[2] - upright[0], 1e-6);
}

TEST_F(HostTest, SplineOfACircleStaysOnTheCircle) {
    host::Spline spline;
    for (int i = 0; i <= 16; ++i) spline.points.push_back({std::cos(pi * i / 16), std::sin(pi * i / 16)});
    spline.startFixed = spline.endFixed = true;
    spline.startAngle = pi / 2;
    spline.endAngle = -pi / 2;
    const std::vector<RPT> chain = host::flattenSpline(spline, 1e-5);
    for (const RPT& p : chain) EXPECT_NEAR(std::hypot(p.x, p.y), 1, 2e-5);
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const double middle = std::hypot(chain[i].x + chain[i - 1].x, chain[i].y + chain[i - 1].y) / 2;
        EXPECT_NEAR(middle, 1, 5e-5) << "chords stay within the tolerance";
    }
    EXPECT_LT(chain.size(), 400U);
}

TEST_F(HostTest, RefusedSplinesAddNothing) {
    EXPECT_EQ(addSpline({0, 1, 2}, {0, 1, 0}), 1005) << "no active pattern";
    newPattern();
    EXPECT_NE(addSpline({0, 1}, {0, 1}), 0);
    EXPECT_NE(addSpline({0, 1, 1.0000001}, {0, 1, 1}), 0) << "within the drawing tolerance";
    EXPECT_NE(addSpline({0, 1, std::numeric_limits<double>::infinity()}, {0, 1, 0}), 0);
    EXPECT_EQ(host::openDrawing().elementCount, 0U);
    EXPECT_EQ(addSpline({3, 4, 5}, {0, 1, 0}), 0);
    EXPECT_EQ(patterns(), "pattern 1\n  pen 1 lt 1\n  move 3 0\n  spline through 3 0 4 1 5 0\n")
        << "the plot moves to the first point";
    EXPECT_EQ(ovdraw(7, 0, 0, 0), 3011);
    EXPECT_EQ(ovarc(5, 0, 0, 0, 0, 0), 3011);
}

TEST_F(HostTest, HatchTakesClosedContoursWithTheFillOfTheParameters) {
    const int target = newPattern();
    const int contour = newPattern();
    ovdraw(2, 0, 0, 0);
    for (const auto& [x, y] : {std::pair{10.0, 0.0}, {10.0, 10.0}, {0.0, 10.0}}) ovdraw(1, x, y, 0);
    ovdraw(1, 2, 2, 2); // a jump to the hole
    ovdraw(1, 4, 2, 1);
    ovdraw(1, 4, 4, 1);
    ovdraw(1, 2, 2, 1);
    ovdraw(1, 0, 0, 2); // and back
    ovarc(22, 7, 5, 6, 5, 0);
    int mode = 1;
    int number = target;
    ovhatchparams(&mode, &number);
    mode = 2;
    ovhatchparams(&mode, &number);
    ovhatchsetreppar(0, 500 / 16, 500 % 16);
    int code = 0;
    int from = contour;
    ASSERT_EQ(ovhatch(&code, &number, &from), 0);
    control(17, contour);
    EXPECT_EQ(patterns(), "pattern 1\n  hatch solid pen 500\n"
                          "    contour\n      move 0 0\n      draw 10 0\n      draw 10 10\n      draw 0 10\n"
                          "      draw 0 0\n"
                          "    contour\n      move 2 2 info 2\n      draw 4 2 info 1\n      draw 4 4 info 1\n"
                          "      draw 2 2 info 1\n"
                          "    contour\n      circle 7 5 about 6 5\n");
    expectBox(target, {0, 0, 10, 10});
    int empty = newPattern();
    ovdraw(2, 0, 0, 0);
    ovdraw(1, 1, 1, 0);
    EXPECT_NE(ovhatch(&code, &number, &empty), 0) << "nothing is enclosed";
    EXPECT_EQ(host::openDrawing().find(target)->hatches.size(), 1U);
}

TEST_F(HostTest, ScaleUnitAndToleranceOfTheSheet) {
    double result = 0;
    EXPECT_EQ(ovconv(100, 3, 2, &result), 0);
    EXPECT_EQ(result, 2) << "mm at scale 1";
    EXPECT_DOUBLE_EQ(UtConv(50), 0.001);
    setUnit(5);
    ASSERT_EQ(setScale(0.01), 0);
    ovconv(100, 3, 2, &result);
    EXPECT_DOUBLE_EQ(result, 20);
    EXPECT_DOUBLE_EQ(UtConv(50), 1e-6);
    EXPECT_EQ(setScale(1e-9), 2030);
    EXPECT_EQ(setScale(1e9), 2030);
    EXPECT_EQ(setScale(std::numeric_limits<double>::quiet_NaN()), 2030);
    EXPECT_EQ(setScale(1e7), 3012) << "a sheet below the tolerance";
    EXPECT_EQ(host::openDrawing().scale, 0.01) << "a refused scale changes nothing";
    int format = 0;
    double scale = 0;
    int unit = 9;
    EXPECT_NE(ovform(8, &format, &scale, &unit), 0);
}

TEST_F(HostTest, ChangeOfUnitKeepsEverythingInPlace) {
    const int number = newPattern();
    ovdraw(2, 25.4, 0.3, 0);
    ovarc(4, 1234.567, 1, 3, 50.8, 0);
    addSpline({1234.567, 2000, 3000}, {1, 2, 3});
    int id = 0;
    CiWork(0).Add(&id, {1000, 0, 0}, {1, 0, 0}, {0, 1, 0});
    const std::string before = host::dumpDrawing(host::openDrawing(), 17);
    setUnit(7);
    host::Pattern& pattern = *host::openDrawing().find(number);
    EXPECT_DOUBLE_EQ(pattern.elements[0].x, 1);
    EXPECT_DOUBLE_EQ(pattern.splines[0].points[1].x, 2000 / 25.4);
    EXPECT_EQ(pattern.elements[2].cx, 0) << "a spline's index is no coordinate";
    setUnit(3);
    setUnit(5);
    EXPECT_EQ(pattern.elements[0].y, 0.0003);
    setUnit(3);
    EXPECT_EQ(host::dumpDrawing(host::openDrawing(), 17), before);
}

TEST_F(HostTest, ElementLimitIsAnAbortUntilTheNextRun) {
    host::session().maxElements = 3;
    newPattern();
    for (int i = 0; i < 3; ++i) ovdraw(1, i, 0, 0);
    EXPECT_EQ(UoCheckAbort(16), 0);
    ovdraw(1, 9, 9, 0);
    EXPECT_NE(UoCheckAbort(16), 0);
    EXPECT_TRUE(host::session().elementLimitHit);
    EXPECT_EQ(UoCheckAbort(11), 0);
    EXPECT_FALSE(host::session().elementLimitHit);
    CiPat(0).DelElems(cursorOf(1));
    host::session().wantsAbort = [] { return true; };
    EXPECT_NE(UoCheckAbort(16), 0) << "the user's Escape";
    EXPECT_FALSE(host::session().elementLimitHit);
}
