// Prints the peak memory that each computation takes on top of a stored ring of a million vertices,
// in bytes a vertex: the growth of the process's largest resident set, each in a process of its
// own. Likewise the peak of the solver of torsion and shear, in bytes an unknown and vertex.
#include <CSectionTools.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

#include "drawings.h"
#include "kernel/classify_polygon.h"
#include "kernel/cut_polygon.h"
#include "kernel/triangulate_polygon.h"
#include "region/region.h"
#include "sections.h"
#include "warping/warping.h"

namespace {

using namespace halvorn;

constexpr double kTol = 1e-10;
constexpr double kTarget = 300.0;

struct Ring {
    CSectionTools section;
    std::vector<KPoint> points;
    explicit Ring(std::vector<double> coords) {
        for (std::size_t i = 0; i < coords.size(); i += 2) {
            points.push_back({1000.0 * coords[i], 1000.0 * coords[i + 1]});
        }
        section.PushContour(Count(), &points[0].x, 1);
    }
    int Count() const { return static_cast<int>(points.size()); }
};

void Values(Ring& ring) {
    double v[17];
    ring.section.GetCalculValues(0, 0, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7],
                                 &v[8], &v[9], &v[10], &v[11], &v[12], &v[13], &v[14], &v[15],
                                 &v[16]);
}

void Classify(Ring& ring) {
    KClassifyPolygon(ring.points.data(), ring.Count(), kTol);
}

void Triangulate(Ring& ring) {
    std::vector<int> triangles(3 * ring.points.size());
    int count = 0;
    KTriangulatePolygon(ring.points.data(), ring.Count(), triangles.data(), &count, kTol);
}

void Cut(Ring& ring) {
    const double y = ring.points[0].y + 100.0;
    KPieces pieces;
    KCutPolygonByLine(ring.points.data(), ring.Count(), {0, y}, {1, y}, kTol, &pieces.count,
                      &pieces.ranges, &pieces.points);
}

// Field of /proc/self/status in bytes: VmRSS is resident now, VmHWM was at most.
double StatusBytes(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(field + ":", 0) == 0)
            return 1024.0 * std::stod(line.substr(field.size() + 1));
    }
    return 0.0;
}

// Gives unused heap back and makes what is resident now the most that ever was.
double ResetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    return StatusBytes("VmRSS");
}

// Runs in a child: what one computation leaves in the heap must not hide the next one's need.
double InChild(const std::function<double()>& measure) {
    int channel[2];
    if (pipe(channel) != 0) return -1.0;
    if (fork() == 0) {
        const double bytes = measure();
        const ssize_t sent = write(channel[1], &bytes, sizeof bytes);
        _exit(sent == sizeof bytes ? 0 : 1);
    }
    double bytes = -1.0;
    if (read(channel[0], &bytes, sizeof bytes) != sizeof bytes) bytes = -1.0;
    close(channel[0]);
    close(channel[1]);
    wait(nullptr);
    return bytes;
}

double BytesPerVertex(const std::vector<double>& coords,
                      const std::function<void(Ring&)>& compute) {
    return InChild([&] {
        Ring ring(coords);
        const double before = ResetPeak();
        compute(ring);
        return (StatusBytes("VmHWM") - before) / static_cast<double>(ring.Count());
    });
}

double BytesPerUnknown(const engine::Region& region, double tolerance) {
    return InChild([&] {
        engine::WarpingOptions options;
        options.tolerance = tolerance;
        const double before = ResetPeak();
        const engine::WarpingValues values = SolveWarping(region, options).values;
        std::size_t count = values.unknowns;
        for (const engine::Part& part : region.parts) {
            count += part.outline.size();
            for (const engine::Points& ring : part.voids) count += ring.size();
        }
        return (StatusBytes("VmHWM") - before) / static_cast<double>(count);
    });
}

bool PrintWarping() {
    constexpr double kTargetOfWarping = 3000.0;
    // Two solids that hang together by a ligament of a ten-thousandth of their size.
    const engine::Points ligament{{0, 0}, {1, 0}, {1, 1}, {0.50005, 1}, {0.50005, 2}, {1, 2},
                                  {1, 3}, {0, 3}, {0, 2}, {0.49995, 2}, {0.49995, 1}, {0, 1}};
    const benchmarks::Drawing gear = benchmarks::Gear(10000, 12.6 / 10000);
    const std::pair<const char*, engine::Region> regions[] = {
        {"gear 10000", engine::RegionOf(gear.Outlines())},
        {"ligament", engine::RegionOf(std::vector<engine::WeightedRing>{{&ligament, 1}})}};
    std::printf("\n| region | tolerance | bytes an unknown and vertex |\n| --- | ---: | ---: |\n");
    bool met = true;
    for (const auto& [name, region] : regions) {
        for (const double tolerance : {1e-4, 1e-8}) {
            const double bytes = BytesPerUnknown(region, tolerance);
            std::printf("| %s | %.0e | %.0f |\n", name, tolerance, bytes);
            met = met && bytes >= 0.0 && bytes < kTargetOfWarping;
        }
    }
    std::printf("\nTarget: below %.0f. %s\n", kTargetOfWarping, met ? "Met." : "Not met.");
    return met;
}

}  // namespace

int main() {
    constexpr std::size_t kVertices = 1000000;
    const std::pair<const char*, std::vector<double>> rings[] = {
        {"wavy ring", benchmarks::WavyRing(kVertices)}, {"comb", benchmarks::Comb(kVertices / 8)}};
    const std::pair<const char*, std::function<void(Ring&)>> computations[] = {
        {"GetCalculValues", Values},
        {"classify", Classify},
        {"triangulate", Triangulate},
        {"cut", Cut}};
    std::printf("| computation | ring | bytes a vertex |\n| --- | --- | ---: |\n");
    bool met = true;
    for (const auto& [name, compute] : computations) {
        for (const auto& [shape, coords] : rings) {
            const double bytes = BytesPerVertex(coords, compute);
            std::printf("| %s | %s | %.0f |\n", name, shape, bytes);
            met = met && bytes >= 0.0 && bytes < kTarget;
        }
    }
    std::printf("\nTarget: below %.0f. %s\n", kTarget, met ? "Met." : "Not met.");
    const bool isWarpingMet = PrintWarping();
    return met && isWarpingMet ? 0 : 1;
}
