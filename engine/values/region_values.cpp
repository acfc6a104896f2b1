#include "values/region_values.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "model/principal_inertias.h"
#include "region/moments.h"
#include "values/digits.h"
#include "values/net_plastic.h"
#include "values/values.h"
#include "values/warping_values.h"

namespace halvorn::engine {

namespace {

constexpr const char* kOnTheEdge =
    "its fibre distance is 0: the reference point lies on the edge of the section (change --dx or "
    "--dy)";

constexpr const char* kIntegrals = "exact integrals";

class RegionValues {
public:
    explicit RegionValues(Report& report)
        : report_(report),
          moments_(report.transformed ? *report.transformed : MomentsOf(report.region)),
          whyNoDigits_(WhyNoDigits(Lies())) {}

    void Add() {
        AddGeometry();
        AddPrincipalAxes();
        AddRadiiOfGyration();
        AddElasticModuli();
        AddPlasticValues();
        for (const ValueDescription& description : kValues) {
            if (IsOfWarping(description.key)) {
                report_.values.push_back(MissingValue(description, report_.whyNoWarping));
            }
        }
        AddMass();
        WarnOfLostDigits();
    }

private:
    Value MissingValue(const ValueDescription& description, const std::string& why) const {
        Value value = DescribedValue(description, report_.section.unit);
        value.whyMissing = why;
        return value;
    }

    // @param error  what the rounding of the coordinates can change the number by
    void Add(std::string_view key, const char* method, double number, double error) {
        const auto* const description =
            std::find_if(kValues.begin(), kValues.end(),
                         [&](const ValueDescription& entry) { return entry.key == key; });
        Value value = DescribedValue(*description, report_.section.unit);
        value.number = number + 0.0;  // no value is -0
        value.method = method;
        if (!std::isfinite(number)) value.whyMissing = kBeyondDoubles;
        KeepDigits(error, whyNoDigits_, &value);
        report_.values.push_back(value);
    }

    void Miss(const std::string& why) {
        if (!why.empty()) report_.values.back().whyMissing = why;
    }

    static double RelativeError(double error, double value) {
        return error == 0.0 ? 0.0 : error / std::fabs(value);
    }

    LostBy Lies() const {
        const double size =
            std::max(moments_.toLeft + moments_.toRight, moments_.toBottom + moments_.toTop);
        return LostByOf(size,
                        std::max(std::fabs(moments_.centroid.x), std::fabs(moments_.centroid.y)));
    }

    void AddGeometry() {
        const Moments& m = moments_;
        Add("area", kIntegrals, m.area, m.areaError);
        Add("centroid_x", kIntegrals, m.centroid.x, m.firstXError / m.area);
        Add("centroid_y", kIntegrals, m.centroid.y, m.firstYError / m.area);
        Add("inertia_x", kIntegrals, m.inertiaX, m.inertiaXError);
        Add("inertia_y", kIntegrals, m.inertiaY, m.inertiaYError);
        Add("inertia_xy", kIntegrals, m.inertiaXY, m.inertiaXYError);
        const double ofMoments = std::max(RelativeError(m.inertiaXError, m.inertiaX),
                                          RelativeError(m.inertiaYError, m.inertiaY));
        if (LeavesNoDigit(ofMoments)) Miss(whyNoDigits_);  // a 0 is no better than these
    }

    void AddPrincipalAxes() {
        const Moments& m = moments_;
        const double rounding =
            std::max(1e-12 * (m.inertiaX + m.inertiaY), m.inertiaXError + m.inertiaYError);
        const bool areEqual = std::fabs(m.inertiaX - m.inertiaY) <= rounding;
        const double product = std::fabs(m.inertiaXY) <= rounding ? 0.0 : m.inertiaXY;
        first_ = PrincipalInertiasOf(m.inertiaX, m.inertiaY, m.inertiaXY).first;
        const PrincipalInertias axes =
            PrincipalInertiasOf(m.inertiaX, areEqual ? m.inertiaX : m.inertiaY, product);
        const char* const method = "Mohr's circle";
        Add("principal_inertia_1", method, first_, m.inertiaXError + m.inertiaYError);
        Add("principal_inertia_2", method, m.second, m.secondError);
        const double radius = std::hypot(0.5 * (m.inertiaX - m.inertiaY), m.inertiaXY);
        const double off = m.inertiaXError + m.inertiaYError + m.inertiaXYError;
        const double degrees = 180.0 / std::numbers::pi;
        Add("principal_angle", method, axes.angle * degrees,
            radius > 0.0 ? std::min(90.0, off / (2.0 * radius) * degrees) : 0.0);
    }

    void AddRadiiOfGyration() {
        const auto add = [&](const char* key, const char* method, double inertia, double error) {
            const double radius = std::sqrt(std::max(0.0, inertia) / moments_.area);
            const double relative =
                RelativeError(error, inertia) + RelativeError(moments_.areaError, moments_.area);
            Add(key, method, radius, 0.5 * relative * radius);
        };
        const Moments& m = moments_;
        add("radius_of_gyration_x", "sqrt(Ix / A)", m.inertiaX, m.inertiaXError);
        add("radius_of_gyration_y", "sqrt(Iy / A)", m.inertiaY, m.inertiaYError);
        add("radius_of_gyration_1", "sqrt(I1 / A)", first_, m.inertiaXError + m.inertiaYError);
        add("radius_of_gyration_2", "sqrt(I2 / A)", m.second, m.secondError);
    }

    void AddElasticModuli() {
        const Moments& m = moments_;
        const Shift& shift = report_.shift;
        const auto add = [&](const char* key, const char* method, double inertia, double error,
                             double distance, double size, double first) {
            constexpr double kOnEdge = 1e-12;  // of the section's extent
            const double modulus = inertia / distance;
            const double relative =
                RelativeError(error, inertia) + RelativeError(first / m.area, distance);
            Add(key, method, modulus, relative * std::fabs(modulus));
            if (std::fabs(distance) <= kOnEdge * size) Miss(kOnTheEdge);
        };
        const double height = m.toBottom + m.toTop;
        const double width = m.toLeft + m.toRight;
        const char *const ofX = "Ix / fibre distance", *const ofY = "Iy / fibre distance";
        add("elastic_modulus_bottom", ofX, m.inertiaX, m.inertiaXError, m.toBottom + shift.dy,
            height, m.firstYError);
        add("elastic_modulus_top", ofX, m.inertiaX, m.inertiaXError, m.toTop - shift.dy, height,
            m.firstYError);
        add("elastic_modulus_left", ofY, m.inertiaY, m.inertiaYError, m.toLeft + shift.dx, width,
            m.firstXError);
        add("elastic_modulus_right", ofY, m.inertiaY, m.inertiaYError, m.toRight - shift.dx, width,
            m.firstXError);
    }

    void AddPlasticValues() {
        const Moments& m = moments_;
        const Region& region = report_.region;
        const auto axisY = PlasticAxis(region, AxisDirection::Horizontal);
        const auto axisX = PlasticAxis(region, AxisDirection::Vertical);
        const std::string why = axisX && axisY ? "" : "no line halves the area";
        const Point axes = region.frame.FromFrame({axisX.value_or(0.0), axisY.value_or(0.0)});
        const PlasticModuli moduli = why.empty() ? NetPlasticModuli(region) : PlasticModuli{};
        const auto add = [&](const char* key, const char* method, double number, double error) {
            Add(key, method, number, error);
            Miss(why);
        };
        const char* const sides = "both sides of the axis";
        add("plastic_modulus_x", sides, moduli.x, m.firstYError);
        add("plastic_modulus_y", sides, moduli.y, m.firstXError);
        add("plastic_axis_y", "halves the area", axes.y, 0.0);
        add("plastic_axis_x", "halves the area", axes.x, 0.0);
        const auto addFactor = [&](const char* key, double modulus, double fibre, double inertia,
                                   double error, double first) {
            const double factor = modulus * fibre / inertia;
            const double relative = RelativeError(error, inertia) + RelativeError(first, modulus) +
                                    RelativeError(first / m.area, fibre);
            add(key, "Wpl / smaller Wel", factor, relative * factor);
        };
        addFactor("shape_factor_x", moduli.x, std::max(m.toBottom, m.toTop), m.inertiaX,
                  m.inertiaXError, m.firstYError);
        addFactor("shape_factor_y", moduli.y, std::max(m.toLeft, m.toRight), m.inertiaY,
                  m.inertiaYError, m.firstXError);
    }

    void AddMass() {
        if (!report_.section.density) return;
        const double metres = MetresPer(report_.section.unit);
        const double perArea = *report_.section.density * metres * metres;
        Add("mass_per_metre", "density x A", perArea * moments_.area, perArea * moments_.areaError);
    }

    void WarnOfLostDigits() {
        const Moments& m = moments_;
        const double relative = std::max(
            {RelativeError(m.areaError, m.area), RelativeError(m.inertiaXError, m.inertiaX),
             RelativeError(m.inertiaYError, m.inertiaY), RelativeError(m.secondError, m.second)});
        if (!(relative > kTooFewDigits)) return;
        report_.findings.push_back(
            LostDigits(report_.section.source, "the values", relative, Lies()));
    }

    Report& report_;
    Moments moments_;
    std::string whyNoDigits_;
    double first_ = 0.0;  // the larger principal second moment
};

}  // namespace

void AddRegionValues(Report* report) {
    if (report->whyNoRegion.empty()) {
        RegionValues(*report).Add();
        return;
    }
    for (const ValueDescription& description : kValues) {
        const std::string_view key = description.key;
        if (key == "mass_per_metre" && !report->section.density) continue;
        Value value = DescribedValue(description, report->section.unit);
        // Of what encloses nothing the area is known.
        const bool isKnown = key == "area" && report->region.size > 0.0;
        if (isKnown) {
            value.method = kIntegrals;
        } else {
            value.whyMissing = report->whyNoRegion;
        }
        report->values.push_back(value);
    }
}

}  // namespace halvorn::engine
