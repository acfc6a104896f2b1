#include "model/placement.h"

#include <CSectionTools.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "geometry/sine.h"
#include "model/outlines.h"
#include "model/push_element.h"

namespace halvorn::engine {

namespace {

// A linear map: column vectors (xx, yx) and (xy, yy).
struct Map {
    double xx;
    double xy;
    double yx;
    double yy;
};

Map RotationOf(double degrees) {
    // The remainder is exact, so a multiple of 90 stays one.
    const double turn = std::fmod(degrees, 360.0);
    if (std::fmod(turn, 90.0) == 0.0) {
        constexpr double kSines[] = {0.0, 1.0, 0.0, -1.0};
        const auto quarters = static_cast<std::size_t>(turn / 90.0 + 4.0) % 4;
        const double sine = kSines[quarters];
        const double cosine = kSines[(quarters + 1) % 4];
        return {cosine, -sine, sine, cosine};
    }
    const double angle = turn * (std::numbers::pi / 180.0);
    const auto [sine, cosine] = SineAndCosineOf(angle);
    return {cosine, -sine, sine, cosine};
}

Map MapOf(const Placement& placement) {
    Map map = RotationOf(placement.rotation);
    if (placement.mirror == Mirror::AboutX) map = {map.xx, -map.xy, map.yx, -map.yy};
    if (placement.mirror == Mirror::AboutY) map = {-map.xx, map.xy, -map.yx, map.yy};
    return map;
}

double Coordinate(double low, double high, Along along) {
    if (along == Along::Low) return low;
    return along == Along::High ? high : 0.5 * (low + high);
}

// The angle of an axis after mirror and rotation. Turned over about y it is pi less, and the axis
// is the same without that half turn.
double PlacedAngle(double angle, const Placement& placement) {
    const double mirrored = placement.mirror == Mirror::None ? angle : -angle;
    return mirrored + std::fmod(placement.rotation, 360.0) * (std::numbers::pi / 180.0);
}

}  // namespace

void Place(const Placement& placement, std::vector<Element>& elements) {
    const Map map = MapOf(placement);
    const auto place = [&](double& x, double& y) {
        const double fromX = x - placement.origin.x;
        const double fromY = y - placement.origin.y;
        x = map.xx * fromX + map.xy * fromY + placement.move.x;
        y = map.yx * fromX + map.yy * fromY + placement.move.y;
    };
    for (Element& element : elements) {
        for (auto& [x, y] : element.ring) place(x, y);
        if (!element.given) continue;
        place(element.given->centroidX, element.given->centroidY);
        element.given->angle = PlacedAngle(element.given->angle, placement);
    }
}

std::array<Point, 2> AxesOfSection(const Placement& placement) {
    // The rows of an orthogonal map are the columns of its inverse.
    const Map map = MapOf(placement);
    return {{{map.xx, map.xy}, {map.yx, map.yy}}};
}

Point PointOfBox(const Box& box, Along x, Along y) {
    return {Coordinate(box.left, box.right, x), Coordinate(box.bottom, box.top, y)};
}

void MovePoint(const Point& from, const Point& to, std::vector<Element>& elements) {
    Placement placement;
    placement.origin = from;
    placement.move = to;
    Place(placement, elements);
}

void MakeHoles(std::vector<Element>& elements) {
    for (Element& element : elements) element.isSolid = !element.isSolid;
}

std::size_t PointCount(const std::vector<Element>& elements) {
    std::size_t count = 0;
    for (const Element& element : elements) count += element.ring.size();
    return count;
}

std::vector<Element> CopiesInRow(const std::vector<Element>& elements, std::size_t count,
                                 const Point& step) {
    std::vector<Element> row;
    row.reserve(count * elements.size());
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<Element> copy = elements;
        // A multiple of the step has one rounding, however long the row.
        if (i > 0) MovePoint({0.0, 0.0}, static_cast<double>(i) * step, copy);
        std::move(copy.begin(), copy.end(), std::back_inserter(row));
    }
    return row;
}

Point LowerLeftCorner(const std::vector<Element>& elements) {
    Point corner = elements.front().ring.front();
    for (const Element& element : elements) {
        for (const auto& [x, y] : element.ring) {
            corner = {std::min(corner.x, x), std::min(corner.y, y)};
        }
    }
    return corner;
}

Point CentreOfGravity(const std::vector<Element>& elements) {
    CSectionTools tools;
    for (const Element& element : elements) PushElement(tools, element);
    Point centre;
    tools.GetCDG(&centre.x, &centre.y);
    return centre;
}

}  // namespace halvorn::engine
