// Growth of the region of a section with the number of vertices.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

#include "drawings.h"
#include "region/region.h"
#include "values/net_plastic.h"

namespace {

using namespace halvorn;
using namespace halvorn::benchmarks;

// The nearly square grid of so many cells, cell by cell.
std::vector<Point> Grid(std::size_t cells, double width) {
    const auto columns = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(cells))));
    std::vector<Point> places;
    for (std::size_t i = 0; i < cells; ++i) {
        const std::size_t row = i / columns;
        places.emplace_back(width * static_cast<double>(i % columns),
                            width * static_cast<double>(row));
    }
    return places;
}

// Plates of 100, each with a round hole, that touch their neighbours along whole edges.
Drawing Plates(std::size_t n) {
    Drawing drawing;
    for (const Point& p : Grid(n / 20 + 1, 100.0)) {
        const double x = p.x, y = p.y;
        drawing.Add({{x, y}, {x + 100, y}, {x + 100, y + 100}, {x, y + 100}}, 1);
        drawing.Add(Polygon(16, {x + 50, y + 50}, 30), -1);
    }
    return drawing;
}

// The same plates apart, each with its hole in one ring: along a bridge and back.
Drawing Keyholes(std::size_t n) {
    Drawing drawing;
    for (const Point& p : Grid(n / 20 + 1, 110.0)) {
        const double x = p.x, y = p.y;
        Points ring = {{x, y}, {x + 100, y}, {x + 100, y + 100}, {x, y + 100}, {x, y}};
        const Points hole = Polygon(14, {x + 50, y + 50}, -30);
        ring.insert(ring.end(), hole.rbegin(), hole.rend());
        ring.push_back(hole.back());
        drawing.Add(std::move(ring), 1);
    }
    return drawing;
}

// Two rings that keep apart, as those of a tube: their region needs no triangulation.
Drawing Tube(std::size_t n) {
    Drawing drawing;
    drawing.Add(Polygon(n / 2, {0, 0}, 100.0), 1);
    drawing.Add(Polygon(n / 2, {0, 0}, 90.0), -1);
    return drawing;
}

}  // namespace

int main(int argc, char** argv) {
    const std::pair<const char*, Drawing (*)(std::size_t)> families[] = {
        {"plates that touch", Plates}, {"keyholes", Keyholes}, {"gear", Gear}, {"tube", Tube}};
    for (const auto& family : families) {
        for (const std::size_t n : {100U, 1000U, 10000U, 100000U}) {
            const auto add = [&, drawing = family.second(n)](const char* what, auto routine) {
                benchmark::RegisterBenchmark(
                    (std::string(what) + "|" + family.first + " " + std::to_string(n) + "|engine")
                        .c_str(),
                    [drawing, routine](benchmark::State& state) {
                        for (auto _ : state) routine(drawing.Outlines());
                    })
                    ->Unit(benchmark::kMicrosecond);
            };
            add("region", [](const std::vector<engine::WeightedRing>& outlines) {
                benchmark::DoNotOptimize(engine::RegionOf(outlines));
            });
            add("arrangement", [](const std::vector<engine::WeightedRing>& outlines) {
                benchmark::DoNotOptimize(engine::RegionOfArrangement(outlines));
            });
            add("region and net moduli", [](const std::vector<engine::WeightedRing>& outlines) {
                const engine::Region region = engine::RegionOf(outlines);
                benchmark::DoNotOptimize(engine::NetPlasticModuli(region));
                for (const auto direction :
                     {engine::AxisDirection::Horizontal, engine::AxisDirection::Vertical}) {
                    benchmark::DoNotOptimize(engine::PlasticAxis(region, direction));
                }
            });
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
