#include "warping/warping.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "warping/boundary_stress.h"
#include "warping/circle_stress.h"
#include "warping/warping_fields.h"

namespace halvorn::engine {

namespace {

// What summing over the triangles and solving can lose, relative to an energy. The bounds are moved
// apart by it; bounds that cross by a hundred times as much are a fault of the program.
constexpr double kRounding = 2e-12;
constexpr double kCrossed = 100.0;
// The product of inertia of principal axes, relative to the sum of the inertias.
constexpr double kPrincipal = 1e-6;
constexpr double kLargestPoisson = 0.5;
constexpr double kFinestTolerance = 1e-9;
constexpr double kCoarsestTolerance = 0.1;

// @param rounding  relative
Bracket BracketOf(double lower, double upper, double rounding) {
    if (!(upper - lower >= -kCrossed * rounding * std::fabs(upper))) {
        throw WarpingError("internal fault: bounds that crossed, " + std::to_string(lower) +
                           " and " + std::to_string(upper));
    }
    const double loss = rounding * std::fabs(upper);
    // No energy is negative; a poor lower bound is 0.
    return {std::max(lower - loss, 0.0), upper + loss};
}

// Full width of a bracket, rounding included.
double GapOf(double lower, double upper, double rounding) {
    return std::max(upper - lower, 0.0) + 2.0 * rounding * std::fabs(upper);
}

// Forces along and across a strip at an angle to x and y are told apart by its second moments: of
// the compliances rounding takes as many times more as these differ.
double ShearRounding(const PartMoments& m) {
    const auto [least, most] = std::minmax(m.inverseUU, m.inverseVV);
    return kRounding + std::numeric_limits<double>::epsilon() * most / least;
}

// The values of one part, from its frame to the section's units.
class PartValues {
public:
    PartValues(const PartSolution& part, const Frame& frame, double poissonFactor,
               WarpingValues* values)
        : part_(part),
          e_(part.energies),
          frame_(frame),
          poissonFactor_(poissonFactor),
          unit_(frame.LengthFromFrame(1.0)),
          shearRounding_(ShearRounding(part.moments)),
          values_(*values) {}

    void Add() {
        AddShearCentre();
        AddShearAreas();
        AddWarpingConstant();
        AddMonosymmetry();
    }

private:
    double TorsionGap() const { return GapOf(e_.torsionLower, e_.torsionUpper, kRounding); }
    double ShearGap(std::size_t load) const {
        return GapOf(e_.shearLower[load][load], e_.shearUpper[load][load], shearRounding_);
    }

    // A shear force through the shear centre makes the torque xs Vy - ys Vx about the centre of
    // gravity. Both fields give it; their errors are orthogonal to each other (docs/theory.md).
    void AddShearCentre() {
        centre_.x = 0.5 * (e_.torqueOfFree[1] + e_.torqueOfHeld[1]);
        centre_.y = -0.5 * (e_.torqueOfFree[0] + e_.torqueOfHeld[0]);
        errorX_ = 0.5 * std::sqrt(TorsionGap() * ShearGap(1));
        errorY_ = 0.5 * std::sqrt(TorsionGap() * ShearGap(0));
        const Point place = frame_.FromFrame(part_.moments.centroid + centre_);
        values_.shearCentreX = {place.x, unit_ * errorX_};
        values_.shearCentreY = {place.y, unit_ * errorY_};
    }

    // Poisson's ratio adds k^2 times the energy of a field without torque, k = nu / (1 + nu). With
    // its torque this field has no less energy.
    double MostLateral(std::size_t a, std::size_t b) const {
        return poissonFactor_ * poissonFactor_ * std::sqrt(e_.swayUpper[a][a] * e_.swayUpper[b][b]);
    }

    // Of the energy between its bounds, and of the torque's share, whose error is bounded as that
    // of the shear centre.
    double LateralError(std::size_t load) const {
        const double torsion = e_.torsionLower;
        if (torsion <= 0.0) return HUGE_VAL;
        const double gap =
            GapOf(e_.lateralLower[load][load], e_.swayUpper[load][load], shearRounding_);
        const double torque = std::fabs(e_.torqueOfLateral[load]);
        const double share = torque * std::sqrt(gap * TorsionGap()) / torsion +
                             torque * torque * TorsionGap() / (torsion * torsion) +
                             0.25 * gap * TorsionGap() / torsion;
        return poissonFactor_ * poissonFactor_ * (0.5 * gap + share);
    }

    Estimate LateralCompliance(std::size_t a, std::size_t b) const {
        const double error = std::sqrt(LateralError(a) * LateralError(b));
        const double most = MostLateral(a, b);
        if (!(error < most)) return {0.0, most};  // no more is known
        const double torsion = 0.5 * (e_.torsionLower + e_.torsionUpper);
        const double energy = 0.5 * (e_.swayUpper[a][b] + e_.lateralLower[a][b]) -
                              e_.torqueOfLateral[a] * e_.torqueOfLateral[b] / torsion;
        return {poissonFactor_ * poissonFactor_ * energy, error};
    }

    void AddShearAreas() {
        const auto areaOf = [&](std::size_t load) {
            Bracket c =
                BracketOf(e_.shearLower[load][load], e_.shearUpper[load][load], shearRounding_);
            // No stress of this force has less energy than the even one over the area.
            c.lower = std::max(c.lower, (1.0 - shearRounding_) / part_.moments.area);
            c.upper = std::max(c.upper, c.lower);
            const Estimate lateral = LateralCompliance(load, load);
            const double square = unit_ * unit_;
            return Bracket{square / (c.upper + std::max(lateral.value, 0.0) + lateral.error),
                           square / (c.lower + std::max(lateral.value - lateral.error, 0.0))};
        };
        values_.shearAreaX = areaOf(0);
        values_.shearAreaY = areaOf(1);
        values_.areShearAreasBounds = poissonFactor_ == 0.0;
        const Estimate lateral = LateralCompliance(0, 1);
        const double middle = 0.5 * (e_.shearLower[0][1] + e_.shearUpper[0][1]) + lateral.value;
        const double error = 0.5 * std::sqrt(ShearGap(0) * ShearGap(1)) + lateral.error;
        const double inverse = 1.0 / (unit_ * unit_);
        values_.shearCoupling = {inverse * (middle - error), inverse * (middle + error)};
    }

    void AddWarpingConstant() {
        const PartMoments& m = part_.moments;
        const double square = e_.warpingSquare - e_.warping * e_.warping / m.area +
                              centre_.y * centre_.y * m.xx + centre_.x * centre_.x * m.yy -
                              2.0 * centre_.x * centre_.y * m.xy - 2.0 * centre_.y * e_.warpingX +
                              2.0 * centre_.x * e_.warpingY;
        // With e the error of the warping function, the square errs by 2 (w, e) + (e, e). The
        // second is at most the gap of J over the least eigenvalue of the part; the first, by the
        // field z whose load is w, 2 (grad z - grad z_h, grad e), where z_h is as near to z as the
        // shear's potentials are to theirs. The eigenvalue is estimated by those potentials.
        const double torsionGap = TorsionGap();
        const double inverseEigenvalue =
            std::max(e_.shearUpper[0][0] * m.xx, e_.shearUpper[1][1] * m.yy);
        const double relative =
            std::max(ShearGap(0) / e_.shearUpper[0][0], ShearGap(1) / e_.shearUpper[1][1]) +
            torsionGap / e_.torsionUpper;
        const double error =
            2.0 * std::sqrt(torsionGap * relative * std::max(square, 0.0) * inverseEigenvalue) +
            torsionGap * inverseEigenvalue + kRounding * e_.warpingSquare;
        const double sixth = std::pow(unit_, 6);
        values_.warpingConstant = {sixth * std::max(square, 0.0), sixth * error};
    }

    void AddMonosymmetry() {
        const PartMoments& m = part_.moments;
        values_.arePrincipalAxes = std::fabs(m.xy) <= kPrincipal * (m.xx + m.yy);
        values_.monosymmetryX = {unit_ * ((m.xxy + m.yyy) / m.yy - 2.0 * centre_.y),
                                 unit_ * 2.0 * errorY_};
        values_.monosymmetryY = {unit_ * ((m.xxx + m.xyy) / m.xx - 2.0 * centre_.x),
                                 unit_ * 2.0 * errorX_};
    }

    const PartSolution& part_;
    const Energies& e_;
    const Frame& frame_;
    double poissonFactor_;
    double unit_;
    double shearRounding_;  // relative
    WarpingValues& values_;
    Point centre_;  // of shear, from the centre of gravity, in the frame
    double errorX_ = 0.0, errorY_ = 0.0;
};

double LeftOutRadiusOf(const std::vector<PartSolution>& parts) {
    double area = 0.0;
    double perimeter = 0.0;
    for (const PartSolution& part : parts) {
        area += part.moments.area;
        perimeter += RimLength(part.fields.space);
    }
    return LeftOutRadius(area, perimeter);
}

// All parts are twisted alike: the largest stress for a twist of 1 gives the modulus.
void AddTorsionModulus(const WarpingFields& fields, WarpingValues* values) {
    const FieldFactors twist = FactorsOfTwist(1.0);
    LargestOf largest;
    for (const PartSolution& part : fields.parts) {
        const FieldSpace& space = part.fields.space;
        for (const auto& at : StressesAlongRings(part.fields, twist, fields.leftOutRadius)) {
            largest.Add(std::fabs(at.Middle()), at.error);
        }
        const LeftOutCircles circles(SharpCornersOf(space), fields.leftOutRadius);
        const SoftCorners softCorners(space, SoftRadius(fields.leftOutRadius));
        for (const auto& at : StressesAlongCircles(part.fields, twist, circles, softCorners)) {
            largest.Add(at.shear, at.error);
        }
    }
    const double length = fields.frame.LengthFromFrame(1.0);
    const double modulus = values->torsionConstant.Middle() / (largest.value * length);
    values->torsionModulus = {modulus,
                              modulus * largest.Error() / largest.value +
                                  values->torsionConstant.HalfWidth() / (largest.value * length)};
}

void CheckOptions(const WarpingOptions& options) {
    if (!(options.tolerance >= kFinestTolerance && options.tolerance <= kCoarsestTolerance)) {
        throw std::invalid_argument("the tolerance is not from 1e-9 to 0.1");
    }
    if (!(options.poisson >= 0.0 && options.poisson <= kLargestPoisson)) {
        throw std::invalid_argument("Poisson's ratio is not from 0 to 0.5");
    }
}

}  // namespace

WarpingSolution SolveWarping(const Region& region, const WarpingOptions& options) {
    CheckOptions(options);
    if (region.IsEmpty()) throw WarpingError("the section encloses no area");
    if (!std::isnormal(std::pow(region.frame.LengthFromFrame(1.0), 6))) {
        throw WarpingError("the section's size to the power of 6 is beyond the range of numbers");
    }
    const auto fields = std::make_shared<WarpingFields>();
    fields->frame = region.frame;
    fields->poissonFactor = options.poisson / (1.0 + options.poisson);
    WarpingSolution solution;
    WarpingValues& values = solution.values;
    values.parts = region.parts.size();
    values.pinches = region.pinches.size();
    const double fourth = std::pow(region.frame.LengthFromFrame(1.0), 4);
    for (const Part& part : region.parts) {
        PartSolution solved = SolvePart(part, options);
        const Energies& e = solved.energies;
        // No section is stiffer than if it did not warp.
        const double polar = solved.moments.xx + solved.moments.yy;
        const Bracket torsion =
            BracketOf(e.torsionLower, std::min(e.torsionUpper, polar), kRounding);
        values.torsionConstant.lower += fourth * torsion.lower;
        values.torsionConstant.upper += fourth * torsion.upper;
        values.status = std::max(values.status, solved.status);
        values.unknowns = std::max(values.unknowns, solved.fields.unknowns);
        values.triangles += solved.fields.space.TriangleCount();
        values.voids += solved.fields.space.VoidCount();
        for (const Point& corner : SharpCornersOf(solved.fields.space)) {
            values.sharpCorners.push_back(region.frame.FromFrame(solved.moments.centroid + corner));
        }
        fields->parts.push_back(std::move(solved));
    }
    fields->leftOutRadius = LeftOutRadiusOf(fields->parts);
    values.leftOutRadius = region.frame.LengthFromFrame(fields->leftOutRadius);
    AddTorsionModulus(*fields, &values);
    values.isOnePart = fields->parts.size() == 1;
    if (values.isOnePart) {
        PartValues(fields->parts.front(), region.frame, fields->poissonFactor, &values).Add();
    }
    solution.fields = fields;
    return solution;
}

}  // namespace halvorn::engine
