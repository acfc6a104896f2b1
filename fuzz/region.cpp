// The arrangement and the region of whatever outlines: they are refused, or all of it is
// consistent.
#include "region/region.h"
#include "geometry/rings.h"

#include "fuzz/drawing.h"
#include "geometry/faces.h"
#include "values/plastic_halves.h"

namespace {

using namespace halvorn::engine;
using namespace fuzz;

// In the frame, whose size is about 1.
constexpr double kRounding = 1e-12;

void RequireConsistentMesh(const Arrangement& arrangement) {
    const Triangulation& mesh = arrangement.Mesh();
    for (Index t = 0; Slot(t) < mesh.Triangles().size(); ++t) {
        const Triangle& triangle = mesh.At(t);
        for (std::size_t i = 0; i < 3; ++i) {
            const Index beyond = triangle.neighbours[i];
            if (beyond == kNone) continue;
            Require(arrangement.SumAt(t) - triangle.edges[i].step == arrangement.SumAt(beyond),
                    "winding sums step at outlines only");
            const auto& back = mesh.At(beyond).neighbours;
            Require(std::find(back.begin(), back.end(), t) != back.end(), "neighbours are mutual");
        }
    }
    for (const Face& face : FacesOf(arrangement))
        Require(face.area >= -kRounding, "a face has an area, but for rounding");
}

void RequireConsistentRegion(const Region& region) {
    double sum = 0.0;
    for (const Part& part : region.parts) {
        double area = 0.5 * TwiceArea(part.outline);
        Require(area > 0.0, "an outline runs counter-clockwise");
        for (const Points& ring : part.voids) area += 0.5 * TwiceArea(ring);
        Require(std::fabs(area - part.area) <= kRounding, "outline and voids enclose the part");
        Require(std::fabs(0.5 * TwiceArea(JoinedRing(part)) - part.area) <= kRounding,
                "bridges change no area");
        sum += part.area;
    }
    Require(std::fabs(sum - region.area) <= kRounding, "the parts add up");
}

// The arrangement's region is the same where another way was shorter.
void RequireSame(const Region& region, const Region& arranged) {
    RequireConsistentRegion(arranged);
    Require(std::fabs(region.area - arranged.area) <= kRounding, "one area by both ways");
    Require(region.parts.size() == arranged.parts.size(), "as many parts");
    Require(region.partsOf == arranged.partsOf, "the outlines border the same parts");
    Require(region.oddPlaces.size() == arranged.oddPlaces.size() &&
                region.crossings.size() == arranged.crossings.size() &&
                region.pinches.size() == arranged.pinches.size() &&
                region.moved.size() == arranged.moved.size() &&
                region.nearMisses.size() == arranged.nearMisses.size(),
            "as much to tell");
}

void RequireHalves(const Region& region) {
    for (const auto direction : {AxisDirection::Horizontal, AxisDirection::Vertical}) {
        const PlasticHalves halves = HalvesOf(region, direction);
        if (!halves.whyMissing.empty()) continue;
        const double area = std::ldexp(region.area, 2 * region.frame.exponent);
        for (const PlasticHalf& half : halves.sides) {
            Require(std::fabs(half.area - 0.5 * area) <= 1e-9 * area, "a half is one");
            Require(half.leverArm >= 0.0, "a lever arm is a distance");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteProgram program(data, size);
    const Drawing drawing(program);
    const std::vector<WeightedRing> outlines = drawing.Outlines();
    if (outlines.empty()) return 0;
    try {
        RequireConsistentMesh(Arrangement(outlines));
        const Region region = RegionOf(outlines);
        RequireConsistentRegion(region);
        RequireSame(region, RegionOfArrangement(outlines));
        if (!region.IsEmpty()) RequireHalves(region);
    } catch (const ArrangementError&) {
    }
    return 0;
}
