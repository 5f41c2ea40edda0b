// Outlines of wide polylines, chaining of loose elements, sampling of splines.
#include "bs.h"
#include "geometry/li_piece.h"
#include "li.h"
#include "ln.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using namespace host;

static void append(LiList& list, const Piece& piece) {
    LI_ELEM* e = LiNew(list);
    setPiece(e, piece);
    LiChain(list, e);
}

// A meander of lines and half circles: nothing crosses.
static LiList meander(int pieces) {
    LiList list;
    RPT at{0, 0};
    for (int i = 0; i < pieces; i += 2) {
        const double length = i % 4 == 0 ? 50 : -50;
        const RPT end{at.x + length, at.y};
        append(list, makeLine(at, end));
        at = {end.x, end.y + 10};
        append(list, makeArc(end, at, {end.x, end.y + 5}, length > 0 ? 1 : -1));
    }
    return list;
}

// A random walk that crosses itself often; every third step an arc.
static LiList walk(int pieces, double step) {
    std::mt19937 random(5);
    std::normal_distribution<double> move(0, step);
    LiList list;
    RPT at{0, 0};
    for (int i = 0; i < pieces; ++i) {
        const RPT to{at.x + move(random), at.y + move(random)};
        const RPT centre = 0.5 * (at + to) + 0.7 * leftOf(to - at);
        append(list, i % 3 ? makeLine(at, to) : makeArc(at, to, centre, 1));
        at = to;
    }
    return list;
}

static void outline(benchmark::State& state, const LiList& list, double width) {
    int count = 0;
    while (state.KeepRunning()) {
        const auto algorithm = LnParallelOffsettingAlgorithm::Create(list, 0, width);
        ILnOutline* result = nullptr;
        if (algorithm->GetOutline(&result) || result->Calculate(0.001)) state.SkipWithError("no outline");
        count = result->Contours().count;
    }
    state.counters["out"] = count;
    state.SetComplexityN(state.range(0));
}

static void BM_OutlineClean(benchmark::State& state) {
    outline(state, meander(static_cast<int>(state.range(0))), 2);
}
BENCHMARK(BM_OutlineClean)
    ->RangeMultiplier(10)
    ->Range(1000, 1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

static void BM_OutlineCrossing(benchmark::State& state) {
    outline(state, walk(static_cast<int>(state.range(0)), 10), 1);
}
BENCHMARK(BM_OutlineCrossing)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

static void BM_OutlineTapered(benchmark::State& state) {
    const LiList list = meander(static_cast<int>(state.range(0)));
    std::vector<double> widths;
    for (int i = 0; i < list.count; ++i) widths.insert(widths.end(), {1, 3});
    while (state.KeepRunning()) {
        const auto algorithm = LnExtendedOffsettingAlgorithm::Create(list, 0, widths, {});
        ILnOutline* result = nullptr;
        if (algorithm->GetOutline(&result) || result->Calculate(0.001)) state.SkipWithError("no outline");
    }
}
BENCHMARK(BM_OutlineTapered)->Arg(10'000)->Unit(benchmark::kMillisecond);

// Everything crosses everything: must end soon, not well.
static void BM_OutlineHopeless(benchmark::State& state) {
    LiList list;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(0, 6.28);
    RPT at = polar({0, 0}, 1000, angle(random));
    for (int i = 0; i < state.range(0); ++i) {
        const RPT to = polar({0, 0}, 1000, angle(random));
        append(list, makeLine(at, to));
        at = to;
    }
    outline(state, list, 1);
}
BENCHMARK(BM_OutlineHopeless)->Arg(300)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

static void BM_SortShuffled(benchmark::State& state) {
    const LiList source = meander(static_cast<int>(state.range(0)));
    std::vector<Piece> pieces;
    for (const LI_ELEM* e = source.first; e; e = e->next) pieces.push_back(pieceOf(*e));
    std::shuffle(pieces.begin(), pieces.end(), std::mt19937(3));
    while (state.KeepRunning()) {
        LiList list;
        for (const Piece& p : pieces) append(list, p);
        LiSortKont(list, 0, 1e-3);
        if (list.last->contour != 0) state.SkipWithError("not one contour");
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_SortShuffled)
    ->RangeMultiplier(10)
    ->Range(1000, 1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

static void BM_SplineSample(benchmark::State& state) {
    const int order = static_cast<int>(state.range(0));
    const int n = 1000;
    std::vector<BS_POINT> controls;
    std::vector<double> knots;
    controls.reserve(n);
    knots.reserve(static_cast<std::size_t>(n + order));
    for (int i = 0; i < n; ++i) controls.push_back({1.0 * i, std::sin(0.3 * i), 0, 1});
    for (int i = 0; i < n + order; ++i) knots.push_back(i);
    BS_CURVE c;
    c.controls = controls.data();
    c.knots = knots.data();
    c.controlCount = n;
    c.knotCount = n + order;
    c.order = static_cast<std::int16_t>(order);
    std::vector<double> us;
    std::vector<int> spans;
    int count = 0;
    while (state.KeepRunning()) {
        BsGetCurveUList(c, 2 * order, &us, &spans, &count);
        BS_POINT p{};
        RPT3 t{};
        for (std::size_t i = 0; i < us.size(); ++i) {
            BsSplinePoint(c, us[i], spans[i], &p);
            BsCurveRichtAbl(c, us[i], spans[i], &t);
            benchmark::DoNotOptimize(p);
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_SplineSample)->Arg(4)->Arg(51)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    std::string quick = "--benchmark_min_time=0.001";
    for (char*& argument : arguments)
        if (std::string_view(argument) == "--smoke") argument = quick.data();
    int count = argc;
    benchmark::Initialize(&count, arguments.data());
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
