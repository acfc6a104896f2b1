#include "section_values.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace halvorn::python {

namespace {

// The first output that is 0 or not written when a fibre distance is 0: the elastic moduli.
constexpr std::size_t kFirstStopped = 10;

// In reading order.
enum Place : std::size_t {
    kArea,
    kCentroidX,
    kCentroidY,
    kInertiaX,
    kInertiaY,
    kInertiaXY,
    kModulusBottom,
    kModulusTop,
    kModulusLeft,
    kModulusRight,
    kTorsionConstant = 12,
    kTorsionModulus,
    kShearArea,
};

constexpr double kNotComputed = std::numeric_limits<double>::quiet_NaN();

// A NaN that no arithmetic produces, so that an output never written can be told from a computed
// NaN.
constexpr std::uint64_t kUnwrittenBits = 0x7FF8'5EC7'1015'0BADULL;

constexpr const char* kNoArea =
    "has no properties: its area is 0, because its points lie on a line or its holes take all";
constexpr const char* kNegativeArea =
    "has no properties: its area is negative, because its holes take more than its solids give";
constexpr const char* kImpossible =
    "has no properties: its inertias or its centre of gravity are impossible, because a contour "
    "crosses itself, so that parts of it count negatively; bring its points into order, or draw "
    "each part as a contour";
constexpr const char* kImpossibleWithHoles =
    "has no properties: its inertias or its centre of gravity are impossible, because its holes "
    "take more than its solids give, or a contour crosses itself";
constexpr const char* kTooSmall =
    "has no properties: its area is below the library's fixed tolerance; use a smaller unit, such "
    "as mm";
constexpr const char* kOverflow = "has no properties: its coordinates are too large or too small";
constexpr const char* kNoDigits =
    "has no inertias: so far from the origin rounding leaves no digit of them; move the origin to "
    "the section";
constexpr const char* kTooThin =
    "has no inertias: rounding leaves no digit of them, the outline is too thin for its size; turn "
    "it, or draw its straight pieces as contours of their own, parallel to the axes";

// Of inertias [-], as in halvorn-section: beyond it the seven digits of a table are not all right.
constexpr double kTooFewDigits = 1e-7;

// Of the area; the centre of gravity moves as much, relative to its distance from (0, 0).
constexpr double kNegligible = 1e-9;

// Says why values like these are of no section; null when they may be.
const char* FindImpossible(const Values& values, const SectionRounding& rounding,
                           const ValueRounding& bounds) {
    const double area = values[kArea];
    if (std::isnan(area)) return nullptr;
    if (std::fabs(area) <= bounds.area || area == 0.0) return kNoArea;
    if (area < 0.0) return kNegativeArea;
    if (rounding.NeglectedArea() > kNegligible * area) return kTooSmall;
    const double x = values[kInertiaX] + bounds.inertiaX;
    const double y = values[kInertiaY] + bounds.inertiaY;
    const double product = std::fabs(values[kInertiaXY]) - bounds.inertiaXY;
    const bool isProductTooLarge = product > 0.0 && product > std::sqrt(x) * std::sqrt(y);
    if (!(x < 0.0 || y < 0.0 || isProductTooLarge ||
          rounding.IsOutside(values[kCentroidX], values[kCentroidY], bounds))) {
        return nullptr;
    }
    return rounding.HasHole() ? kImpossibleWithHoles : kImpossible;
}

// Says that a value which every section has is not finite; null when all are.
const char* FindOverflow(const Values& values) {
    for (const std::size_t row : {kArea, kCentroidX, kCentroidY, kInertiaX, kInertiaY, kInertiaXY,
                                  kTorsionModulus, kShearArea}) {
        if (std::isnan(values[row])) return kOverflow;
    }
    // Of a small area the torsion constant is below the library's tolerance.
    return std::isnan(values[kTorsionConstant]) && values[kArea] > 1.0 ? kOverflow : nullptr;
}

// The inertia about one axis, with the moduli that follow from it.
struct AxisRows {
    Place inertia;
    Place modulusLow;
    Place modulusHigh;
    double ValueRounding::*bound;
};
constexpr AxisRows kAxes[] = {
    {kInertiaX, kModulusBottom, kModulusTop, &ValueRounding::inertiaX},
    {kInertiaY, kModulusLeft, kModulusRight, &ValueRounding::inertiaY},
};

// Makes inertias that are no more than their rounding NaN, with what follows from them; 0 where
// only what was given with profiles counts, which may be 0. Returns why any is NaN, or null.
const char* MarkLostInertias(const SectionRounding& rounding, const ValueRounding& bounds,
                             Values* values) {
    const char* fault = nullptr;
    for (const AxisRows& axis : kAxes) {
        const double bound = bounds.*axis.bound;
        if (!(std::fabs((*values)[axis.inertia]) <= bound)) continue;
        const double given = rounding.GivenInertia();
        const bool isLost = given > 0.0 ? bound > given : rounding.HasContour();
        for (const Place row : {axis.inertia, axis.modulusLow, axis.modulusHigh}) {
            if (!std::isnan((*values)[row])) (*values)[row] = isLost ? kNotComputed : 0.0;
        }
        if (isLost) fault = rounding.IsByDistance(bounds, axis.bound) ? kNoDigits : kTooThin;
    }
    if (fault != nullptr) (*values)[kInertiaXY] = kNotComputed;
    return fault;
}

// Of the inertias that are there. A small one of profiles is given small, or loses by distance.
DigitLoss FindLoss(const SectionRounding& rounding, const ValueRounding& bounds,
                   const Values& values) {
    DigitLoss loss;
    for (const AxisRows& axis : kAxes) {
        const double inertia = std::fabs(values[axis.inertia]);
        const double relative = inertia > 0.0 ? bounds.*axis.bound / inertia : 0.0;
        if (!(relative > std::max(kTooFewDigits, loss.relative))) continue;
        const bool isByDistance = rounding.IsByDistance(bounds, axis.bound);
        if (rounding.HasProfile() && !isByDistance) continue;
        loss = {std::min(1.0, relative), isByDistance};
    }
    return loss;
}

void ZeroIfRounding(double bound, double* value) {
    if (std::fabs(*value) <= bound) *value = 0.0;
}

}  // namespace

const std::array<ValueName, kValueCount> kReadingOrder = {{
    {"area", 3},
    {"centroid_x", 1},
    {"centroid_y", 2},
    {"inertia_x", 7},
    {"inertia_y", 6},
    {"inertia_xy", 8},
    {"elastic_modulus_bottom", 10},
    {"elastic_modulus_top", 11},
    {"elastic_modulus_left", 12},
    {"elastic_modulus_right", 13},
    {"plastic_modulus_x", 14},
    {"plastic_modulus_y", 15},
    {"torsion_constant", 0},
    {"torsion_modulus", 9},
    {"shear_area_1", 4},
    {"shear_area_2", 5},
    {"extra_sum", 16},
}};

const char* const kOutputNames =
    "ixx xG yG area shearAreaY shearAreaZ inertiaY inertiaX inertiaXY wt welBottom welTop welLeft "
    "welRight wplx wply extraSum";

bool GetOutputs(CSectionTools& tools, double dx, double dy, Values* outputs) {
    Values& out = *outputs;
    out.fill(std::bit_cast<double>(kUnwrittenBits));
    tools.GetCalculValues(dx, dy, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5], &out[6],
                          &out[7], &out[8], &out[9], &out[10], &out[11], &out[12], &out[13],
                          &out[14], &out[15], &out[16]);
    return std::bit_cast<std::uint64_t>(out.back()) != kUnwrittenBits;
}

SectionValues ReadingOrder(CSectionTools& tools, double dx, double dy,
                           const SectionRounding& rounding) {
    Values outputs;
    const bool isComplete = GetOutputs(tools, dx, dy, &outputs);
    SectionValues row;
    for (std::size_t i = 0; i < kValueCount; ++i) {
        const std::size_t output = kReadingOrder[i].output;
        const bool isComputed = isComplete || output < kFirstStopped;
        row.values[i] =
            isComputed && std::isfinite(outputs[output]) ? outputs[output] : kNotComputed;
    }
    const ValueRounding bounds = rounding.Bounds(row.values[kArea]);
    row.fault = FindImpossible(row.values, rounding, bounds);
    if (row.fault != nullptr) {
        row.values.fill(kNotComputed);
        return row;
    }
    // Contours below the library's fixed tolerance have no torsion constant.
    if (rounding.HasContour() && row.values[kTorsionConstant] == 0.0) {
        row.values[kTorsionConstant] = kNotComputed;
    }
    row.fault = FindOverflow(row.values);
    const char* const lost = MarkLostInertias(rounding, bounds, &row.values);
    if (row.fault == nullptr) row.fault = lost;
    if (row.fault == nullptr) row.loss = FindLoss(rounding, bounds, row.values);
    ZeroIfRounding(bounds.centroidX, &row.values[kCentroidX]);
    ZeroIfRounding(bounds.centroidY, &row.values[kCentroidY]);
    ZeroIfRounding(bounds.inertiaXY, &row.values[kInertiaXY]);
    return row;
}

}  // namespace halvorn::python
