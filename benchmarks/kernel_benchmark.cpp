// Growth of the kernel's routines with the number of vertices.
#include <benchmark/benchmark.h>

#include <functional>

#include "kernel/classify_polygon.h"
#include "kernel/cut_polygon.h"
#include "kernel/triangulate_polygon.h"
#include "sections.h"

namespace {

using namespace halvorn;
using Points = std::vector<KPoint>;

constexpr double kTol = 1e-10;

// In millimetres: corners of less than 1e-12 L^2 are straight to the triangulation, and in metres
// many of a ring of 100 000 vertices are.
Points PointsOf(const std::vector<double>& ring) {
    Points points;
    for (std::size_t i = 0; i < ring.size(); i += 2) {
        points.push_back({1000.0 * ring[i], 1000.0 * ring[i + 1]});
    }
    return points;
}

void Classify(const Points& ring) {
    benchmark::DoNotOptimize(KClassifyPolygon(ring.data(), static_cast<int>(ring.size()), kTol));
}

void Triangulate(const Points& ring) {
    std::vector<int> triangles(3 * ring.size());
    int count = 0;
    benchmark::DoNotOptimize(KTriangulatePolygon(ring.data(), static_cast<int>(ring.size()),
                                                 triangles.data(), &count, kTol));
    benchmark::DoNotOptimize(triangles.data());
}

// Across the middle of the bounding box: through every tooth of one side of a comb.
void Cut(const Points& ring, bool isVertical) {
    KPoint low = ring[0], high = ring[0];
    for (const KPoint& p : ring) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    const KPoint through{0.51 * low.x + 0.49 * high.x, 0.6 * low.y + 0.4 * high.y};
    KPieces pieces;
    benchmark::DoNotOptimize(
        KCutPolygonByLine(ring.data(), static_cast<int>(ring.size()), through,
                          {through.x + (isVertical ? 0 : 1), through.y + (isVertical ? 1 : 0)},
                          kTol, &pieces.count, &pieces.ranges, &pieces.points));
}

}  // namespace

int main(int argc, char** argv) {
    using namespace halvorn::benchmarks;
    const std::pair<const char*, std::function<void(const Points&)>> routines[] = {
        {"classify", Classify},
        {"triangulate", Triangulate},
        {"cut", [](const Points& ring) { Cut(ring, false); }},
        {"cut upright", [](const Points& ring) { Cut(ring, true); }}};
    for (const auto& [name, routine] : routines) {
        for (const std::size_t n : {1000U, 10000U, 100000U}) {
            const std::pair<const char*, std::vector<double>> rings[] = {
                {"wavy ring", WavyRing(n)},
                {"comb", Comb(n / 8)},
                {"comb turned", Comb(n / 8, true)}};
            for (const auto& [shape, ring] : rings) {
                benchmark::RegisterBenchmark(
                    (std::string(name) + "|" + shape + " " + std::to_string(n) + "|library")
                        .c_str(),
                    [points = PointsOf(ring), routine = routine](benchmark::State& state) {
                        for (auto _ : state) routine(points);
                    })
                    ->Unit(benchmark::kMicrosecond);
            }
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
