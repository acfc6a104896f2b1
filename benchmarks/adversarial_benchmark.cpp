// Every exported call and every kernel routine on rings that are chosen to make them slow. The
// counter `limit` is the most that the time may grow by for ten times the vertices.
#include <CSectionTools.h>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>

#include "adversarial_rings.h"
#include "kernel/classify_polygon.h"
#include "kernel/cut_polygon.h"
#include "kernel/edge_list.h"
#include "kernel/point_tests.h"
#include "kernel/polygon_centroid.h"
#include "kernel/triangulate_polygon.h"

namespace {

using namespace halvorn;
using benchmarks::RingFamily;
using Pairs = std::vector<std::pair<double, double>>;

constexpr double kTol = 1e-10;

// Growth for ten times the vertices that a cost of 1, n, n log n (from 10^3 to 10^4) and n^2 allow,
// each with 30 % for what is not the routine's, and the first with more.
enum Cost : int { kConstant = 3, kLinear = 13, kSorting = 17, kQuadratic = 130 };

// A ring in the forms that the calls take.
struct Input {
    const RingFamily* family;
    std::vector<point2D> ring;
    Pairs pairs;
    CSectionTools section;

    Input(const RingFamily& of, std::size_t n, unsigned int seed)
        : family(&of), ring(of.make(n, seed)) {
        for (const point2D& p : ring) pairs.emplace_back(p.x, p.y);
        Push(section);
    }
    int Count() const { return static_cast<int>(ring.size()); }

    void Push(CSectionTools& into) {
        const int step = family->isOneContour ? Count() : 3;
        for (int i = 0; i + step <= Count(); i += step) into.PushContour(step, &ring[At(i)].x, 1);
    }
    void PushStandard(CSectionTools& into) {
        const int step = family->isOneContour ? Count() : 3;
        for (int i = 0; i + step <= Count(); i += step) {
            into.PushContourStandard(step, &ring[At(i)].x, 0.3, 3.0, 1.0, 0.1, 0.08, 0.08, 1e-3,
                                     1e-3, 1e-3, 0.0, 1e-3, 1e-3, 1e-3, 0.0, 1);
        }
    }
    static std::size_t At(int i) { return static_cast<std::size_t>(i); }
};

void GetValues(Input& in) {
    double v[17];
    in.section.GetCalculValues(0, 0, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8],
                               &v[9], &v[10], &v[11], &v[12], &v[13], &v[14], &v[15], &v[16]);
    benchmark::DoNotOptimize(v);
}

// The polyline call; radii are those of every vertex.
void Polyline(Input& in, bool isWall, bool isOpen, double thickness, double radius) {
    double v[8];
    std::pair<double, double> centre;
    in.section.CalculContourQuelconqueTOOL(isWall, isOpen, 1, in.Count(), thickness, in.pairs,
                                           std::vector<double>(in.ring.size(), radius), v[0],
                                           centre, v[1], v[2], v[3], v[4], v[5], v[6], v[7]);
    benchmark::DoNotOptimize(v);
}

void Cut(Input& in, KPoint direction) {
    KPieces pieces;
    benchmark::DoNotOptimize(KCutPolygonByLine(in.ring.data(), in.Count(), {0.0, 0.0}, direction,
                                               kTol, &pieces.count, &pieces.ranges,
                                               &pieces.points));
}

void Split(Input& in, const std::vector<KPoint>& cut) {
    KPieces pieces;
    benchmark::DoNotOptimize(KSplitPolygonByPolyline(
        in.ring.data(), in.Count(), cut.data(), static_cast<int>(cut.size()), kTol, &pieces.count,
        &pieces.ranges, &pieces.points));
}

// A chain of n / 100 segments from far left to far right, which bends at the ring's middle height.
void SplitAlongChain(Input& in) {
    const int segments = in.Count() / 100;
    std::vector<KPoint> cut{{-1e4, 0.0}};
    for (int i = 1; i < segments; ++i) {
        const KPoint bend{1000.0 * (2.0 * i / segments - 1.0), i % 2 == 0 ? 10.0 : -10.0};
        cut.insert(cut.end(), {bend, bend});
    }
    cut.push_back({1e4, 0.0});
    Split(in, cut);
}

void Triangulate(Input& in) {
    std::vector<int> triangles(3 * in.ring.size());
    int count = 0;
    benchmark::DoNotOptimize(
        KTriangulatePolygon(in.ring.data(), in.Count(), triangles.data(), &count, kTol));
}

void FindDangling(Input& in) {
    std::vector<KPoint> edges;
    for (std::size_t i = 0; i < in.ring.size(); ++i) {
        edges.insert(edges.end(), {in.ring[i], in.ring[(i + 1) % in.ring.size()]});
    }
    benchmark::DoNotOptimize(
        KFindDanglingEdge({edges.data(), static_cast<int>(edges.size())}, kTol));
}

struct Call {
    const char* name;
    Cost cost;
    std::function<void(Input&)> run;
    std::string onlyOn = "";  // name of the one family that the cost holds for, else all
};

std::vector<Call> ExportedCalls() {
    const auto polyline = [](bool isWall, bool isOpen, double thickness, double radius) {
        return [=](Input& in) { Polyline(in, isWall, isOpen, thickness, radius); };
    };
    return {
        {"PushContour", kLinear,
         [](Input& in) {
             CSectionTools section;
             in.Push(section);
         }},
        {"PushContourStandard", kLinear,
         [](Input& in) {
             CSectionTools section;
             in.PushStandard(section);
         }},
        {"GetCalculValues", kLinear, GetValues},
        {"ComputeWplasticValues", kLinear,
         [](Input& in) {
             double x = 0.0, y = 0.0;
             in.section.ComputeWplasticValues(x, y);
             benchmark::DoNotOptimize(x + y);
         }},
        {"CalculContourQuelconqueTOOL, solid", kLinear, polyline(false, false, 0.0, 0.0)},
        {"CalculContourQuelconqueTOOL, solid, radii", kLinear, polyline(false, false, 0.0, 0.3)},
        {"CalculContourQuelconqueTOOL, closed wall", kLinear, polyline(true, false, 2.0, 0.0)},
        {"CalculContourQuelconqueTOOL, closed wall, radii", kLinear,
         polyline(true, false, 2.0, 0.3)},
        {"CalculContourQuelconqueTOOL, closed wall thicker than its cell", kLinear,
         polyline(true, false, 1e5, 0.3)},
        {"CalculContourQuelconqueTOOL, open wall", kLinear, polyline(true, true, 2.0, 0.0)},
        {"CalculContourQuelconqueTOOL, open wall, radii", kLinear, polyline(true, true, 2.0, 0.3)},
        {"copy", kLinear, [](Input& in) { CSectionTools copy(in.section); }},
        {"assign", kLinear,
         [](Input& in) {
             CSectionTools copy;
             double triangle[] = {0, 0, 1, 0, 0, 1};
             copy.PushContour(3, triangle, 1);
             copy = in.section;
         }},
        {"move", kConstant,
         [](Input& in) {
             CSectionTools moved(std::move(in.section));
             in.section = std::move(moved);
         }},
        {"GetCDG", kConstant,
         [](Input& in) {
             double x = 0.0, y = 0.0;
             in.section.GetCDG(&x, &y);
             benchmark::DoNotOptimize(x + y);
         }},
    };
}

std::vector<Call> KernelCalls() {
    return {
        {"KCutPolygonByLine", kSorting,
         [](Input& in) {
             Cut(in, {1.0, 0.0});
         }},
        {"KCutPolygonByLine, upright", kSorting,
         [](Input& in) {
             Cut(in, {0.0, 1.0});
         }},
        {"KSplitPolygonByPolyline", kSorting,
         [](Input& in) {
             Split(in, {{-1e9, 0.0}, {1e9, 0.0}});
         }},
        {"KSplitPolygonByPolyline, ends inside", kSorting,
         [](Input& in) {
             Split(in, {{-1e9, 0.0}, {3.0, 0.0}});
         }},
        {"KSplitPolygonByPolyline, n / 100 segments", kQuadratic, SplitAlongChain, "scallops"},
        {"KClassifyPolygon", kQuadratic,
         [](Input& in) {
             benchmark::DoNotOptimize(KClassifyPolygon(in.ring.data(), in.Count(), kTol));
         }},
        {"KTriangulatePolygon", kQuadratic, Triangulate},
        {"KPolygonCentroid", kQuadratic,
         [](Input& in) {
             KPoint centroid;
             KPolygonCentroid(&centroid, in.ring.data(), in.Count(), kTol);
             benchmark::DoNotOptimize(centroid);
         }},
        {"KPointInPolygon", kLinear,
         [](Input& in) {
             benchmark::DoNotOptimize(
                 KPointInPolygon({0.5, 0.3}, in.ring.data(), in.Count(), kTol));
         }},
        {"KFindDanglingEdge", kQuadratic, FindDangling},
    };
}

// Rings of n vertices, `total` vertices together, to be used in turn: so much data for every n that
// small rings gain nothing from caches and from branches that the processor remembers.
class Inputs {
public:
    std::vector<Input>& Of(const RingFamily& family, std::size_t n, std::size_t total) {
        if (family_ == &family && n_ == n) return inputs_;
        family_ = &family;
        n_ = n;
        inputs_.clear();
        for (unsigned int seed = 0; seed < total / n; ++seed) inputs_.emplace_back(family, n, seed);
        return inputs_;
    }

private:
    const RingFamily* family_ = nullptr;
    std::size_t n_ = 0;
    std::vector<Input> inputs_;
};

void Register(const Call& call, const RingFamily& family, std::size_t n, std::size_t total,
              Inputs* inputs) {
    const bool meetsInOnePoint = call.cost == kSorting && family.meetsInOnePoint;
    benchmark::RegisterBenchmark(
        (std::string(call.name) + "|" + family.name + " " + std::to_string(n) + "|library").c_str(),
        [=, &family](benchmark::State& state) {
            std::vector<Input>& all = inputs->Of(family, n, total);
            std::size_t next = 0;
            for (auto _ : state) {
                call.run(all[next]);
                if (++next == all.size()) next = 0;
            }
            state.counters["n"] = static_cast<double>(all[0].Count());
            state.counters["limit"] = meetsInOnePoint ? kQuadratic : call.cost;
        })
        ->Unit(benchmark::kMicrosecond);
}

}  // namespace

int main(int argc, char** argv) {
    // Freed memory stays with the process: what growth measures is not how the system hands out
    // pages.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    Inputs inputs;
    for (const RingFamily& family : benchmarks::AdversarialRings()) {
        for (const std::size_t n : {10000U, 100000U}) {
            for (const Call& call : ExportedCalls()) Register(call, family, n, 100000, &inputs);
        }
        for (const std::size_t n : {1000U, 10000U}) {
            if (!family.isOneContour) continue;
            for (const Call& call : KernelCalls()) {
                if (!call.onlyOn.empty() && call.onlyOn != family.name) continue;
                Register(call, family, n, 10000, &inputs);
            }
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
