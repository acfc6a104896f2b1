// Torsion and shear of whatever outlines: they are refused, or their bounds are bounds, whatever
// stops the solution.
#include "warping/warping.h"

#include <cmath>

#include "fuzz/drawing.h"
#include "region/moments.h"

namespace {

using namespace halvorn::engine;
using namespace fuzz;

// Of a value that is the sum of many others.
constexpr double kRounding = 1e-9;

void RequireBracket(const Bracket& bracket, double most) {
    Require(std::isfinite(bracket.lower) && std::isfinite(bracket.upper), "bounds are finite");
    Require(bracket.lower <= bracket.upper, "the upper bound is no less than the lower one");
    Require(bracket.upper <= most * (1.0 + kRounding),
            "no bound is worse than the simplest field's");
}

void RequireEstimate(const Estimate& estimate) {
    Require(std::isfinite(estimate.value), "an estimate is finite");
    Require(std::isfinite(estimate.error) && estimate.error >= 0.0, "so is its error");
}

void RequireValues(const WarpingValues& values, const Region& region,
                   const WarpingOptions& options) {
    Require(values.parts == region.parts.size(), "every part is solved");
    Require(values.isOnePart == (values.parts == 1), "one part is one");
    const Moments moments = MomentsOf(region);
    // Parts turn about their own centres of gravity, which takes less than turning about one.
    RequireBracket(values.torsionConstant, moments.inertiaX + moments.inertiaY);
    Require(values.torsionConstant.lower >= 0.0, "the torsion constant is positive");
    RequireEstimate(values.torsionModulus);
    if (values.status == WarpingStatus::Reached) {
        Require(values.torsionConstant.HalfWidth() <=
                    options.tolerance * values.torsionConstant.Middle() * (1.0 + kRounding),
                "what was asked is reached");
    }
    if (!values.isOnePart) return;
    for (const Bracket& area : {values.shearAreaX, values.shearAreaY}) {
        RequireBracket(area, options.poisson > 0.0 ? HUGE_VAL : moments.area);
        Require(area.lower >= 0.0, "stiffness is positive");
    }
    RequireBracket(values.shearCoupling, HUGE_VAL);
    RequireEstimate(values.shearCentreX);
    RequireEstimate(values.shearCentreY);
    RequireEstimate(values.warpingConstant);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteProgram program(data, size);
    WarpingOptions options;
    options.tolerance = std::pow(10.0, -1 - program.Choose(6));
    options.poisson = 0.25 * program.Choose(3);
    options.mostUnknowns = std::size_t{50} << program.Choose(6);
    int left = program.Choose(8) == 0 ? program.Choose(32) : -1;  // below 0 never interrupted
    options.isInterrupted = [&left] { return left == 0 || (left > 0 && --left == 0); };
    const Drawing drawing(program);
    const std::vector<WeightedRing> outlines = drawing.Outlines();
    if (outlines.empty()) return 0;
    try {
        const Region region = RegionOf(outlines);
        RequireValues(SolveWarping(region, options).values, region, options);
    } catch (const ArrangementError&) {
    } catch (const WarpingError&) {
    }
    return 0;
}
