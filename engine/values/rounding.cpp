#include "values/rounding.h"

#include <CSectionTools.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "model/placement.h"
#include "model/principal_inertias.h"
#include "model/push_element.h"

namespace halvorn::engine {

namespace {

constexpr double kUnit = 0.5 * std::numeric_limits<double>::epsilon();

// Of second moments [-]: beyond it the seven digits of a table are not all right.
constexpr double kTooFewDigits = 1e-7;

constexpr const char* kComeHome = "move the origin to the section";
constexpr const char* kTurn =
    "turn it, or draw its straight pieces as contours of their own, parallel to the axes";

// Of one loss to another [-]: a digit.
constexpr double kMuchWorse = 10.0;

// Measured on rings of 4 to 20000 points, turned and far from the origin: at most a half of it. The
// roundings of many points add up like those of a random walk.
double RoundingsOf(std::size_t points) {
    return kUnit * (8.0 + 0.5 * std::sqrt(static_cast<double>(points)));
}

// How far a box reaches from the origin and, from there, across itself.
std::pair<double, double> ReachOf(const Box& box) {
    return {std::max(std::fabs(box.left), std::fabs(box.right)) + (box.right - box.left),
            std::max(std::fabs(box.bottom), std::fabs(box.top)) + (box.top - box.bottom)};
}

// The share of one ring of `count` points. The area of its box bounds its own, and is the scale of
// what cancels in a slender one at an angle.
void AddRing(const Box& box, std::size_t count, SumRounding* sum) {
    const auto [x, y] = ReachOf(box);
    const double area = RoundingsOf(count) * (box.right - box.left) * (box.top - box.bottom);
    sum->firstX += area * x;
    sum->firstY += area * y;
    sum->inertiaX += area * y * y;
    sum->inertiaY += area * x * x;
    sum->inertiaXY += area * x * y;
}

// Given values are as they stand. What places, turns and adds them rounds.
void AddGiven(const GivenValues& given, const Box& box, SumRounding* sum) {
    const double area = RoundingsOf(1) * given.area;
    const auto [reachX, reachY] = ReachOf(box);
    sum->firstX += area * reachX;
    sum->firstY += area * reachY;
    const double x = std::fabs(given.centroidX);
    const double y = std::fabs(given.centroidY);
    sum->inertiaX += area * y * y;
    sum->inertiaY += area * x * x;
    sum->inertiaXY += area * x * y + RoundingsOf(1) * std::fabs(given.inertia1 - given.inertia2);
    const double turned = RoundingsOf(1) * std::fabs(std::sin(given.angle) * std::cos(given.angle));
    sum->turnedInertia += turned * (given.inertia1 + given.inertia2);
    sum->turnedShear += turned * (given.shearArea1.value_or(0.0) + given.shearArea2.value_or(0.0));
}

// A line that may be a wall: its box with the thickness around it.
SumRounding RoundingOf(const Polyline& polyline) {
    Box box(polyline.points);
    box.left -= polyline.thickness;
    box.bottom -= polyline.thickness;
    box.right += polyline.thickness;
    box.top += polyline.thickness;
    constexpr std::size_t kPointsPerVertex = 12;  // a rounded corner on both faces
    SumRounding sum;
    AddRing(box, kPointsPerVertex * polyline.points.size(), &sum);
    return sum;
}

double RelativeError(double error, double value) {
    return error == 0.0 ? 0.0 : std::min(1.0, error / std::fabs(value));
}

DigitLosses LossesOf(const Moments& moments, const SumRounding& rounding) {
    DigitLosses losses;
    losses.axes.relative = std::max(RelativeError(rounding.inertiaX, moments.x),
                                    RelativeError(rounding.inertiaY, moments.y));
    losses.second.relative =
        RelativeError(SecondPrincipalRounding(moments, rounding),
                      PrincipalInertiasOf(moments.x, moments.y, moments.xy).second);
    return losses;
}

// With the origin in the middle of the section.
DigitLosses LossesAtHome(std::vector<Element> elements) {
    const Box box = BoxOf(elements);
    Placement placement;
    placement.origin = {0.5 * (box.left + box.right), 0.5 * (box.bottom + box.top)};
    Place(placement, elements);
    CSectionTools tools;
    for (const Element& element : elements) PushElement(tools, element);
    std::array<double, 17> out{};
    tools.GetCalculValues(0.0, 0.0, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5], &out[6],
                          &out[7], &out[8], &out[9], &out[10], &out[11], &out[12], &out[13],
                          &out[14], &out[15], &out[16]);
    return LossesOf({out[7], out[6], out[8]}, RoundingOf(elements));
}

}  // namespace

Box BoxOf(const std::vector<Element>& elements) {
    Box box(elements.front().ring);
    for (const Element& element : elements) box.Add(Box(element.ring));
    return box;
}

double AreaRounding(const Points& points) {
    constexpr double kRounding = 4.0 * std::numeric_limits<double>::epsilon();
    double largest = 0.0;
    double perimeter = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto& [x, y] = points[i];
        const auto& [nextX, nextY] = points[(i + 1) % points.size()];
        largest = std::max({largest, std::fabs(x), std::fabs(y)});
        perimeter += std::hypot(nextX - x, nextY - y);
    }
    return kRounding * largest * perimeter;
}

SumRounding RoundingOf(const std::vector<Element>& elements) {
    SumRounding sum;
    for (const Element& element : elements) {
        const Box box(element.ring);
        if (element.given) {
            AddGiven(*element.given, box, &sum);
        } else {
            AddRing(box, element.ring.size(), &sum);
        }
    }
    return sum;
}

// With the direction (-s, c) of the second axis, I2 = s^2 Ix' + c^2 Iy' + 2 s c Ixy' of the errors,
// and the products that cancel in it.
double SecondPrincipalRounding(const Moments& moments, const SumRounding& rounding) {
    const PrincipalInertias axes = PrincipalInertiasOf(moments.x, moments.y, moments.xy);
    const double s = std::sin(axes.angle);
    const double c = std::cos(axes.angle);
    const double cancels =
        axes.first > 0.0 ? std::fabs(moments.xy) * (std::fabs(moments.xy) / axes.first) : 0.0;
    return s * s * rounding.inertiaX + c * c * rounding.inertiaY +
           2.0 * std::fabs(s * c) * rounding.inertiaXY + 4.0 * kUnit * cancels;
}

void ClearRounding(Report* report) {
    const SectionModel& section = report->section;
    const SumRounding rounding =
        section.polyline ? RoundingOf(*section.polyline) : RoundingOf(section.elements);
    const Value* const area = report->Find("area");
    if (area == nullptr) return;
    for (Value& value : report->values) {
        const std::string_view key = value.key;
        const double most = key == "centroid_x"   ? rounding.firstX / std::fabs(area->number)
                            : key == "centroid_y" ? rounding.firstY / std::fabs(area->number)
                            : key.starts_with("inertia_xy")            ? rounding.inertiaXY
                            : key == "inertia_x" || key == "inertia_y" ? rounding.turnedInertia
                            : key.starts_with("shear_area_")           ? rounding.turnedShear
                                                                       : 0.0;
        if (std::fabs(value.number) <= most) value.number = 0.0;
    }
}

DigitLosses DigitLossesOf(const std::vector<Element>& elements, const Moments& moments) {
    if (!std::isfinite(moments.x + moments.y + moments.xy)) return {};
    DigitLosses losses = LossesOf(moments, RoundingOf(elements));
    if (!(std::max(losses.axes.relative, losses.second.relative) > kTooFewDigits)) return losses;
    const auto isGiven = [](const Element& element) { return element.given.has_value(); };
    const bool hasGiven = std::any_of(elements.begin(), elements.end(), isGiven);
    const DigitLosses atHome = LossesAtHome(elements);
    const auto tell = [&](DigitLoss& loss, const DigitLoss& home) {
        loss.isByDistance = loss.relative > kMuchWorse * home.relative;
        if (hasGiven && !loss.isByDistance) loss.relative = 0.0;
    };
    tell(losses.axes, atHome.axes);
    tell(losses.second, atHome.second);
    return losses;
}

std::string WhyNoDigits(const DigitLoss& loss) {
    return loss.isByDistance
               ? std::string("no digit is left of it at this distance from the origin; ") +
                     kComeHome
               : std::string("no digit is left of it, the outline is too thin for its size; ") +
                     kTurn;
}

std::string LostDigitsNote(const DigitLosses& losses) {
    const bool isOfSecond = losses.second.relative > kMuchWorse * losses.axes.relative;
    const auto& [relative, isByDistance] = isOfSecond ? losses.second : losses.axes;
    if (!(relative > kTooFewDigits)) return "";
    const int digits = std::max(0, static_cast<int>(-std::log10(relative)));
    return std::string(isByDistance ? "the section lies so far from the origin"
                                    : "the outline is so thin for its size") +
           " that of 16 digits of " +
           (isOfSecond ? "the smaller principal second moment" : "the second moments") +
           ", and of what follows, about " + std::to_string(digits) + " are left; " +
           (isByDistance ? kComeHome : kTurn);
}

}  // namespace halvorn::engine
