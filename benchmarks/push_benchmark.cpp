// Push operations beside a plain single pass over the same coordinates.
#include <CSectionTools.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "sections.h"

namespace {

using halvorn::benchmarks::WavyRing;

struct PlainSums {
    double area = 0, mx = 0, my = 0, ixx = 0, iyy = 0, ixy = 0;
    double xMin = std::numeric_limits<double>::infinity(), yMin = xMin, xMax = -xMin, yMax = -xMin;
};

// The least that any implementation does: bounds and the six integrals from cross products, about
// the origin, one loop, no tolerance, no torsion, nothing kept.
PlainSums PlainPass(const double* coords, std::size_t n) {
    PlainSums s;
    double x0 = coords[2 * n - 2], y0 = coords[2 * n - 1];
    for (std::size_t i = 0; i < n; ++i) {
        const double x1 = coords[2 * i], y1 = coords[2 * i + 1];
        const double cross = x0 * y1 - x1 * y0, sx = x0 + x1, sy = y0 + y1;
        s.area += cross;
        s.mx += cross * sx;
        s.my += cross * sy;
        s.ixx += cross * (y0 * sy + y1 * y1);
        s.iyy += cross * (x0 * sx + x1 * x1);
        s.ixy += cross * (x0 * (y0 + sy) + x1 * (y1 + sy));
        s.xMin = x1 < s.xMin ? x1 : s.xMin;
        s.xMax = x1 > s.xMax ? x1 : s.xMax;
        s.yMin = y1 < s.yMin ? y1 : s.yMin;
        s.yMax = y1 > s.yMax ? y1 : s.yMax;
        x0 = x1;
        y0 = y1;
    }
    return s;
}

// The same pass, which also keeps the vertices as a section must.
PlainSums PlainPassThatStores(const double* coords, std::size_t n,
                              std::list<std::vector<double>>* kept) {
    kept->emplace_back(coords, coords + 2 * n);
    return PlainPass(kept->back().data(), n);
}

void SetCounters(benchmark::State& state) {
    state.counters["time_per_vertex"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * static_cast<double>(state.range(0)),
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_PlainPass(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const std::vector<double> coords = WavyRing(n);
    for (auto _ : state) benchmark::DoNotOptimize(PlainPass(coords.data(), n));
    SetCounters(state);
}

void BM_PlainPassThatStores(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const std::vector<double> coords = WavyRing(n);
    for (auto _ : state) {
        std::list<std::vector<double>> kept;
        benchmark::DoNotOptimize(PlainPassThatStores(coords.data(), n, &kept));
    }
    SetCounters(state);
}

void BM_PushContour(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    std::vector<double> coords = WavyRing(n);
    for (auto _ : state) {
        CSectionTools section;
        section.PushContour(static_cast<int>(n), coords.data(), 1);
        benchmark::DoNotOptimize(section);
    }
    SetCounters(state);
}

void BM_PushContourStandard(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    std::vector<double> coords = WavyRing(n);
    for (auto _ : state) {
        CSectionTools section;
        section.PushContourStandard(static_cast<int>(n), coords.data(), 0.3, 3.0, 1.0, 0.1, 0.08,
                                    0.08, 1e-3, 1e-3, 1e-3, 0.0, 1e-3, 1e-3, 1e-3, 0.0, 1);
        benchmark::DoNotOptimize(section);
    }
    SetCounters(state);
}

void Sizes(benchmark::internal::Benchmark* b) {
    for (const int n : {4, 24, 100, 1000, 10000, 100000}) b->Arg(n);
}

BENCHMARK(BM_PlainPass)->Apply(Sizes);
BENCHMARK(BM_PlainPassThatStores)->Apply(Sizes);
BENCHMARK(BM_PushContour)->Apply(Sizes);
BENCHMARK(BM_PushContourStandard)->Apply(Sizes);

}  // namespace

BENCHMARK_MAIN();
