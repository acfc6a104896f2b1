#include "values/warping_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "region/moments.h"
#include "values/digits.h"
#include "values/method_words.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

constexpr std::array<std::string_view, 10> kKeys = {
    "torsion_constant",       "torsion_modulus",        "warping_constant", "shear_centre_x",
    "shear_centre_y",         "polar_radius",           "monosymmetry_x",   "monosymmetry_y",
    "shear_stiffness_area_x", "shear_stiffness_area_y",
};

constexpr const char* kNotPrincipal =
    "x and y are no principal axes of the section; turn it back by the angle alpha of principal "
    "axis 1 to have its monosymmetry constants";

constexpr const char* kTooPoor =
    "the solution is too poor to tell the largest stress; a smaller --tolerance may tell it";

// @param relative  of the area and the second moments
double WorstRounding(const Moments& m) {
    constexpr double kPower = 3.0;  // of a thickness in the torsion constant, the largest there is
    if (!(m.inertiaX > 0.0 && m.inertiaY > 0.0)) return std::numeric_limits<double>::infinity();
    return kPower * std::max({m.areaError / m.area, m.inertiaXError / m.inertiaX,
                              m.inertiaYError / m.inertiaY});
}

class Writer {
public:
    explicit Writer(Report& report)
        : report_(report),
          moments_(MomentsOf(report.region)),
          size_(std::max(moments_.toLeft + moments_.toRight, moments_.toBottom + moments_.toTop)),
          rounding_(WorstRounding(moments_)) {}

    void Write(const WarpingValues& w) {
        Set("torsion_constant", w.torsionConstant);
        SetEstimate("torsion_modulus", kEstimate, w.torsionModulus);
        Set("shear_stiffness_area_x", w.shearAreaX, w.areShearAreasBounds);
        Set("shear_stiffness_area_y", w.shearAreaY, w.areShearAreasBounds);
        SetEstimate("warping_constant", kEstimate, w.warpingConstant);
        const Moments& m = moments_;
        SetPlace("shear_centre_x", w.shearCentreX, m.centroid.x, m.firstXError / m.area);
        SetPlace("shear_centre_y", w.shearCentreY, m.centroid.y, m.firstYError / m.area);
        SetPolarRadius(w);
        SetPlace("monosymmetry_x", w.monosymmetryX, 0.0, m.firstYError / m.area);
        SetPlace("monosymmetry_y", w.monosymmetryY, 0.0, m.firstXError / m.area);
        for (const std::string_view key : kKeys) {
            if (!w.isOnePart && !key.starts_with("torsion_")) Miss(key, kPartsApart);
            if (!w.arePrincipalAxes && key.starts_with("monosymmetry_")) Miss(key, kNotPrincipal);
        }
    }

    void Miss(std::string_view key, const std::string& why) {
        Value& value = ValueOf(key);
        if (!value.IsComputed()) return;
        Value missing;
        missing.key = value.key;
        missing.name = value.name;
        missing.symbol = value.symbol;
        missing.unit = value.unit;
        missing.power = value.power;
        missing.group = value.group;
        missing.published = value.published;
        missing.whyMissing = why;
        value = missing;
    }

private:
    Value& ValueOf(std::string_view key) {
        return *std::find_if(report_.values.begin(), report_.values.end(),
                             [&](const Value& value) { return value.key == key; });
    }

    Value& SetNumber(std::string_view key, const char* method, double number) {
        Value& value = ValueOf(key);
        value.number = number + 0.0;  // no value is -0
        value.method = method;
        value.whyMissing.clear();
        return value;
    }

    // Takes a value away of which nothing is left.
    void Check(Value& value, double error) {
        if (LeavesNoDigit(rounding_)) {
            const double far =
                std::max(std::fabs(moments_.centroid.x), std::fabs(moments_.centroid.y));
            Miss(value.key, WhyNoDigits(LostByOf(size_, far)));
        } else if (!std::isfinite(value.number) || !std::isfinite(error)) {
            Miss(value.key, kBeyondDoubles);
        }
    }

    void Set(std::string_view key, const Bracket& bracket, bool isBound = true) {
        if (!isBound) {
            SetEstimate(key, kEstimate, {bracket.Middle(), bracket.HalfWidth()});
            return;
        }
        Value& value = SetNumber(key, kBounds, bracket.Middle());
        const double rounding = rounding_ * std::fabs(bracket.Middle());
        value.lower = bracket.lower - rounding;
        value.upper = bracket.upper + rounding;
        Check(value, *value.upper - *value.lower);
    }

    void SetEstimate(std::string_view key, const char* method, const Estimate& estimate) {
        Value& value = SetNumber(key, method, estimate.value);
        value.error = estimate.error + rounding_ * std::fabs(estimate.value);
        if (key == "torsion_modulus" && !(estimate.error < std::fabs(estimate.value))) {
            Miss(key, kTooPoor);
        }
        Check(value, *value.error);
    }

    // About the shear centre: iM^2 = (Ix + Iy) / A + (xM - xG)^2 + (yM - yG)^2.
    void SetPolarRadius(const WarpingValues& w) {
        const Moments& m = moments_;
        const double x = std::fabs(w.shearCentreX.value - m.centroid.x);
        const double y = std::fabs(w.shearCentreY.value - m.centroid.y);
        const double offX = w.shearCentreX.error;
        const double offY = w.shearCentreY.error;
        const double radius = std::sqrt((m.inertiaX + m.inertiaY) / m.area + x * x + y * y);
        const double square = 2.0 * (x * offX + y * offY) + offX * offX + offY * offY;
        const double rounding = (m.firstXError + m.firstYError) / m.area;
        Value& value = SetNumber("polar_radius", kWithin, radius);
        // The root of a square that is off by this is off by no more than the lower root.
        const double lower = std::sqrt(std::max(radius * radius - square, 0.0));
        value.error = square / (radius + lower) + rounding + rounding_ * radius;
        Check(value, *value.error);
    }

    // @param centroid  a place that the value takes when it is as good as there
    void SetPlace(std::string_view key, const Estimate& estimate, double centroid,
                  double rounding) {
        constexpr double kNothing = 1e-9;  // of the section's size: what solvers leave of a 0
        double number = estimate.value;
        for (const double place : {centroid, 0.0}) {
            if (std::fabs(number - place) <= kNothing * size_) number = place;
        }
        Value& value = SetNumber(key, kWithin, number);
        value.error =
            estimate.error + std::fabs(number - estimate.value) + rounding + rounding_ * size_;
        Check(value, *value.error);
    }

    Report& report_;
    Moments moments_;
    double size_;      // of the section [L]
    double rounding_;  // of the coordinates, what it changes a value by [-]
};

}  // namespace

bool IsOfWarping(std::string_view key) {
    return std::find(kKeys.begin(), kKeys.end(), key) != kKeys.end();
}

void AddWarpingValues(Report* report) {
    if (report->warping == nullptr) {
        for (Value& value : report->values) {
            if (IsOfWarping(value.key)) value.whyMissing = report->whyNoWarping;
        }
        return;
    }
    Writer(*report).Write(report->warping->values);
    AddWarpingFindings(report);
}

}  // namespace halvorn::engine
