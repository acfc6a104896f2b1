// Torsion and shear: the solver's time and true error beside those of uniform quadratic elements,
// and its growth with the number of vertices.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"
#include "drawings.h"
#include "geometry/wall_outline.h"
#include "model/outlines.h"
#include "quadratic_elements.h"
#include "warping/warping.h"

namespace {

using namespace halvorn;
using namespace halvorn::benchmarks;
using engine::Region;
using engine::WarpingValues;

// The peer is given up beyond this time for one solution.
constexpr double kLongestPeerRun = 20.0;  // [s]
// Its next step is about three times as long; it takes about 1 kB an unknown.
constexpr std::size_t kMostPeerUnknowns = 1500000;

Drawing Profile(const std::string& name) {
    Drawing drawing;
    const auto division = engine::shapes::ArcDivision::ChordError(0.001);
    for (const engine::Element& element : engine::CatalogueElements(name, "mm", division, false)) {
        drawing.Add(element.ring, element.isSolid ? 1 : -1);
    }
    return drawing;
}

Points Rectangle(double x, double y, double width, double height) {
    return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

// Webs at unequal distances.
Drawing TwoCells() {
    Drawing drawing;
    drawing.Add(Rectangle(0, 0, 300, 150), 1);
    drawing.Add(Rectangle(8, 8, 100, 134), -1);
    drawing.Add(Rectangle(116, 8, 176, 134), -1);
    return drawing;
}

Drawing LippedChannel() {
    engine::shapes::WallLine line;
    line.points = {{75, 20}, {75, 1}, {1, 1}, {1, 199}, {75, 199}, {75, 180}};
    line.radii = {0, 3, 3, 3, 3, 0};
    line.thickness = 2;
    line.isClosed = false;
    Drawing drawing;
    drawing.Add(DrawWall(line, engine::shapes::ArcDivision::ChordError(0.001)).solid, 1);
    return drawing;
}

Drawing ConcreteT() {
    Drawing drawing;
    drawing.Add(
        {{450, 0}, {750, 0}, {750, 600}, {1200, 600}, {1200, 800}, {0, 800}, {0, 600}, {450, 600}},
        1);
    return drawing;
}

struct Subject {
    std::string name;
    Drawing drawing;
    Region region;
    double vertices = 0;

    Subject(std::string called, Drawing rings)
        : name(std::move(called)), drawing(std::move(rings)) {
        region = engine::RegionOf(drawing.Outlines());
        for (const Points& ring : drawing.rings) vertices += static_cast<double>(ring.size());
    }
};

// J and both shear stiffness areas, in the frame of the region.
struct Values {
    double numbers[3];

    double FarthestFrom(const Values& truth) const {
        double farthest = 0.0;
        for (int i = 0; i < 3; ++i) {
            farthest = std::max(farthest, std::fabs(numbers[i] / truth.numbers[i] - 1.0));
        }
        return farthest;
    }
};

Values Middles(const Subject& subject, const WarpingValues& values) {
    const int exponent = subject.region.frame.exponent;
    return {{std::ldexp(values.torsionConstant.Middle(), -4 * exponent),
             std::ldexp(values.shearAreaX.Middle(), -2 * exponent),
             std::ldexp(values.shearAreaY.Middle(), -2 * exponent)}};
}

WarpingValues Solve(const Subject& subject, double tolerance) {
    engine::WarpingOptions options;
    options.tolerance = tolerance;
    options.mostUnknowns = 2000000;
    return SolveWarping(subject.region, options).values;
}

// A solution that is narrow enough to serve as the truth.
Values Reference(const Subject& subject) {
    return Middles(subject, Solve(subject, 1e-8));
}

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Halves the triangles until the peer's error is no more than `error`. Its time is that of the last
// solution.
void MeasurePeer(benchmark::State& state, const Subject& subject, const Values& truth,
                 double error) {
    for (auto _ : state) {
        double area = subject.region.area / 16.0, seconds = 0.0, off = 0.0;
        QuadraticValues values;
        do {
            area *= 0.5;
            const auto start = std::chrono::steady_clock::now();
            values = SolveQuadratic(subject.region, area);
            seconds = SecondsSince(start);
            off =
                Values{{values.torsionConstant, values.shearAreaX, values.shearAreaY}}.FarthestFrom(
                    truth);
        } while (off > error && seconds < kLongestPeerRun / 3 &&
                 values.unknowns < kMostPeerUnknowns / 2);
        state.SetIterationTime(seconds);
        state.counters["error"] = off;
        state.counters["unknowns"] = static_cast<double>(values.unknowns);
    }
}

void MeasureEngine(benchmark::State& state, const Subject& subject, const Values& truth,
                   double tolerance) {
    WarpingValues values;
    for (auto _ : state) values = Solve(subject, tolerance);
    state.counters["n"] = subject.vertices;
    state.counters["error"] = Middles(subject, values).FarthestFrom(truth);
    state.counters["claimed"] =
        std::max({values.torsionConstant.HalfWidth() / values.torsionConstant.Middle(),
                  values.shearAreaX.HalfWidth() / values.shearAreaX.Middle(),
                  values.shearAreaY.HalfWidth() / values.shearAreaY.Middle()});
    state.counters["unknowns"] = static_cast<double>(values.unknowns);
}

std::shared_ptr<const Subject> Shared(const std::string& name, Drawing drawing) {
    return std::make_shared<const Subject>(name, std::move(drawing));
}

void RegisterComparisons() {
    for (const auto& subject :
         {Shared("IPE 300", Profile("IPE300")), Shared("L 100x100x10", Profile("L100x100x10")),
          Shared("SHS 100x100x5", Profile("SHS 100x100x5")), Shared("two-cell box", TwoCells()),
          Shared("lipped channel", LippedChannel()), Shared("concrete T", ConcreteT()),
          Shared("gear", Gear(1000))}) {
        // The reference is solved once, when the first benchmark needs it.
        const auto truth = std::make_shared<std::map<int, Values>>();
        const auto reference = [subject, truth] {
            if (truth->empty()) truth->emplace(0, Reference(*subject));
            return truth->at(0);
        };
        for (const double tolerance : {1e-4, 1e-6}) {
            char method[32];
            std::snprintf(method, sizeof method, "engine %.0e", tolerance);
            benchmark::RegisterBenchmark(("warping|" + subject->name + "|" + method).c_str(),
                                         [=](benchmark::State& state) {
                                             MeasureEngine(state, *subject, reference(), tolerance);
                                         })
                ->Unit(benchmark::kMillisecond);
        }
        benchmark::RegisterBenchmark(
            ("warping|" + subject->name + "|quadratic").c_str(),
            [=](benchmark::State& state) {
                const Values values = reference();
                MeasurePeer(state, *subject, values,
                            Middles(*subject, Solve(*subject, 1e-4)).FarthestFrom(values));
            })
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Iterations(1);
    }
}

void RegisterGrowth() {
    for (const std::size_t n : {100U, 1000U, 10000U}) {
        const auto subject = Shared("gear " + std::to_string(n), Gear(n));
        benchmark::RegisterBenchmark(("growth|" + subject->name + "|engine").c_str(),
                                     [=](benchmark::State& state) {
                                         for (auto _ : state)
                                             benchmark::DoNotOptimize(Solve(*subject, 1e-4));
                                         state.counters["n"] = subject->vertices;
                                     })
            ->Unit(benchmark::kMillisecond);
    }
}

}  // namespace

int main(int argc, char** argv) {
    RegisterComparisons();
    RegisterGrowth();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
