#include "values/region_values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "geometry/lengths.h"
#include "model/principal_inertias.h"
#include "region/moments.h"
#include "values/digits.h"
#include "values/method_words.h"
#include "values/net_plastic.h"
#include "values/principal_moduli.h"
#include "values/values.h"
#include "values/warping_values.h"

namespace halvorn::engine {

namespace {

constexpr const char* kOnTheEdge =
    "its fibre distance is 0: the reference point lies on the edge of the section (change --dx or "
    "--dy)";

// By how much the chords of arcs are longer than these: chords of the arcs' area are so by the
// square of each turn over 24. What turns softly, and so lies near to an arc, counts as one.
double LengthOverArcs(const Points& outline, double size) {
    constexpr double kSoftTurn = 25.0 * std::numbers::pi / 180.0;
    constexpr double kNear = 1e-3;  // an arc's distance from its chords, in sizes
    double over = 0.0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Point before = outline[(i + 1) % outline.size()] - outline[i];
        const Point after = outline[(i + 2) % outline.size()] - outline[(i + 1) % outline.size()];
        const double turn = std::fabs(TurnBetween(before, after));
        const double length =
            std::min(std::hypot(before.x, before.y), std::hypot(after.x, after.y));
        if (turn < kSoftTurn && length * turn / 8.0 < kNear * size) {
            over += length * turn * turn / 24.0;
        }
    }
    return over;
}

class RegionValues {
public:
    explicit RegionValues(Report& report)
        : report_(report),
          moments_(report.transformed ? *report.transformed : MomentsOf(report.region)),
          whyNoDigits_(WhyNoDigits(Lies())) {}

    void Add() {
        AddGeometry();
        AddMass();
        AddSecondMoments();
        AddPrincipalAxes();
        AddRadiiOfGyration();
        AddElasticModuli();
        AddPrincipalModuli();
        AddPlasticValues();
        for (const ValueDescription& description : kValues) {
            if (IsOfWarping(description.key)) {
                report_.values.push_back(MissingValue(description, report_.whyNoWarping));
            }
        }
        AddStaticMoments();
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

    // What rounding moves a coordinate by.
    static double RoundingOfPlace(double centre, double size) {
        constexpr double kUnits = 4.0;
        return kUnits * std::numeric_limits<double>::epsilon() * (std::fabs(centre) + size);
    }

    void AddGeometry() {
        const Moments& m = moments_;
        const double width = m.toLeft + m.toRight;
        const double height = m.toBottom + m.toTop;
        const double offX = RoundingOfPlace(m.centroid.x, width);
        const double offY = RoundingOfPlace(m.centroid.y, height);
        const double centreX = m.firstXError / m.area;
        const double centreY = m.firstYError / m.area;
        Add("area", kIntegrals, m.area, m.areaError);
        Add("width", kMeasured, width, 2.0 * offX);
        Add("height", kMeasured, height, 2.0 * offY);
        Add("centroid_x", kIntegrals, m.centroid.x, centreX);
        Add("centroid_y", kIntegrals, m.centroid.y, centreY);
        Add("fibre_distance_bottom", kMeasured, m.toBottom, centreY + offY);
        Add("fibre_distance_top", kMeasured, m.toTop, centreY + offY);
        Add("fibre_distance_left", kMeasured, m.toLeft, centreX + offX);
        Add("fibre_distance_right", kMeasured, m.toRight, centreX + offX);
        const Frame& frame = report_.region.frame;
        double perimeter = 0.0;
        double off = 0.0;
        for (const Part& part : report_.region.parts) {
            perimeter += Perimeter(part.outline);
            off += static_cast<double>(part.outline.size()) * (offX + offY) +
                   frame.LengthFromFrame(LengthOverArcs(part.outline, report_.region.size));
        }
        Add("perimeter", kMeasured, frame.LengthFromFrame(perimeter), off);
    }

    void AddSecondMoments() {
        const Moments& m = moments_;
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
        Add("principal_inertia_1", kMohr, first_, m.inertiaXError + m.inertiaYError);
        Add("principal_inertia_2", kMohr, m.second, m.secondError);
        const double radius = std::hypot(0.5 * (m.inertiaX - m.inertiaY), m.inertiaXY);
        const double off = m.inertiaXError + m.inertiaYError + m.inertiaXYError;
        const double degrees = 180.0 / std::numbers::pi;
        angle_ = axes.angle;
        angleError_ = radius > 0.0 ? std::min(0.5 * std::numbers::pi, off / (2.0 * radius)) : 0.0;
        Add("principal_angle", kMohr, angle_ * degrees, angleError_ * degrees);
        if (areEqual && product == 0.0) angleError_ = 0.0;  // every axis is a principal one
    }

    void AddRadiiOfGyration() {
        const auto add = [&](const char* key, double inertia, double error) {
            const double radius = std::sqrt(std::max(0.0, inertia) / moments_.area);
            const double relative =
                RelativeError(error, inertia) + RelativeError(moments_.areaError, moments_.area);
            Add(key, kQuotient, radius, 0.5 * relative * radius);
        };
        const Moments& m = moments_;
        add("radius_of_gyration_x", m.inertiaX, m.inertiaXError);
        add("radius_of_gyration_y", m.inertiaY, m.inertiaYError);
        add("radius_of_gyration_1", first_, m.inertiaXError + m.inertiaYError);
        add("radius_of_gyration_2", m.second, m.secondError);
    }

    void AddElasticModuli() {
        const Moments& m = moments_;
        const Shift& shift = report_.shift;
        const auto add = [&](const char* key, double inertia, double error, double distance,
                             double size, double first) {
            constexpr double kOnEdge = 1e-12;  // of the section's extent
            const double modulus = inertia / distance;
            const double relative =
                RelativeError(error, inertia) + RelativeError(first / m.area, distance);
            Add(key, kQuotient, modulus, relative * std::fabs(modulus));
            if (std::fabs(distance) <= kOnEdge * size) Miss(kOnTheEdge);
        };
        const double height = m.toBottom + m.toTop;
        const double width = m.toLeft + m.toRight;
        add("elastic_modulus_bottom", m.inertiaX, m.inertiaXError, m.toBottom + shift.dy, height,
            m.firstYError);
        add("elastic_modulus_top", m.inertiaX, m.inertiaXError, m.toTop - shift.dy, height,
            m.firstYError);
        add("elastic_modulus_left", m.inertiaY, m.inertiaYError, m.toLeft + shift.dx, width,
            m.firstXError);
        add("elastic_modulus_right", m.inertiaY, m.inertiaYError, m.toRight - shift.dx, width,
            m.firstXError);
    }

    void AddPrincipalModuli() {
        const Moments& m = moments_;
        principal_ = PrincipalModuliOf(report_.region, m.centroid, angle_);
        const double reach = m.toLeft + m.toRight + m.toBottom + m.toTop;
        const double off = (m.firstXError + m.firstYError) / m.area + angleError_ * reach;
        const auto add = [&](const char* key, double inertia, double error, double fibre) {
            const double modulus = inertia / fibre;
            const double relative = RelativeError(error, inertia) + RelativeError(off, fibre);
            Add(key, kQuotient, modulus, relative * modulus);
        };
        add("elastic_modulus_1", first_, m.inertiaXError + m.inertiaYError, principal_.fibre1);
        add("elastic_modulus_2", m.second, m.secondError, principal_.fibre2);
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
        add("plastic_modulus_x", kHalves, moduli.x, m.firstYError);
        add("plastic_modulus_y", kHalves, moduli.y, m.firstXError);
        const double reach = m.toLeft + m.toRight + m.toBottom + m.toTop;
        const double off = m.firstXError + m.firstYError + angleError_ * reach * m.area;
        add("plastic_modulus_1", kHalves, principal_.plastic1, off);
        add("plastic_modulus_2", kHalves, principal_.plastic2, off);
        add("plastic_axis_y", kHalves, axes.y, 0.0);
        add("plastic_axis_x", kHalves, axes.x, 0.0);
        const auto addFactor = [&](const char* key, double modulus, double fibre, double inertia,
                                   double error, double first) {
            const double factor = modulus * fibre / inertia;
            const double relative = RelativeError(error, inertia) + RelativeError(first, modulus) +
                                    RelativeError(first / m.area, fibre);
            add(key, kQuotient, factor, relative * factor);
        };
        addFactor("shape_factor_x", moduli.x, std::max(m.toBottom, m.toTop), m.inertiaX,
                  m.inertiaXError, m.firstYError);
        addFactor("shape_factor_y", moduli.y, std::max(m.toLeft, m.toRight), m.inertiaY,
                  m.inertiaYError, m.firstXError);
    }

    void AddStaticMoments() {
        const PlasticModuli half = StaticMoments(report_.region, moments_.centroid);
        Add("static_moment_x", kIntegrals, half.x, moments_.firstYError);
        Add("static_moment_y", kIntegrals, half.y, moments_.firstXError);
    }

    void AddMass() {
        if (!report_.section.density) return;
        const double metres = MetresPer(report_.section.unit);
        const double perArea = *report_.section.density * metres * metres;
        Add("mass_per_metre", kQuotient, perArea * moments_.area, perArea * moments_.areaError);
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
    double first_ = 0.0;       // the larger principal second moment
    double angle_ = 0.0;       // of its axis [rad]
    double angleError_ = 0.0;  // [rad]
    PrincipalModuli principal_;
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
