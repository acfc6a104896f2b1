#include "read/dxf/frame.h"

#include <cmath>
#include <optional>
#include <utility>

#include "geometry/box.h"
#include "geometry/lengths.h"
#include "geometry/rings.h"
#include "read/dxf/group_reader.h"

namespace halvorn::engine::dxf {

namespace {

// Sine of the angle by which sides may differ from right angles and straight lines [-]: drawings
// of three decimals stay far below it.
constexpr double kSquare = 1e-3;

// Returns the four square corners of a rectangle whose other points lie on its sides, or nothing.
std::optional<Points> CornersOfRectangle(const Points& ring) {
    Points corners;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const auto& [px, py] = ring[(i + ring.size() - 1) % ring.size()];
        const auto& [x, y] = ring[i];
        const auto& [qx, qy] = ring[(i + 1) % ring.size()];
        const double inX = x - px, inY = y - py, outX = qx - x, outY = qy - y;
        const double lengths = std::hypot(inX, inY) * std::hypot(outX, outY);
        const double along = inX * outX + inY * outY, across = inX * outY - inY * outX;
        if (std::fabs(along) <= kSquare * lengths) {
            corners.push_back(ring[i]);
        } else if (along < 0.0 || std::fabs(across) > kSquare * lengths) {
            return std::nullopt;
        }
    }
    if (corners.size() != 4) return std::nullopt;
    return corners;
}

// Returns the lengths of the sides, first that of the one nearer to the horizontal.
std::string SidesText(const Points& corners) {
    double first = Distance(corners[0], corners[1]), second = Distance(corners[1], corners[2]);
    const double dx = std::fabs(corners[1].x - corners[0].x);
    if (dx < std::fabs(corners[1].y - corners[0].y)) std::swap(first, second);
    return Shown(first) + " x " + Shown(second);
}

// A rectangle, its corners perhaps rounded, in the middle of another one whose walls are thin: a
// section in the middle of its frame leaves more around it.
bool IsTube(const Box& outer, const Element& inner) {
    constexpr double leastFilled =
        0.9;                            // of the box, by corners as round as rolled tubes have them
    constexpr double offCentre = 0.01;  // of the diagonal
    constexpr double thickestWall = 0.2;  // of the side across it
    const Box box(inner.ring);
    const double filled = AreaOf(inner.ring) / (box.Width() * box.Height());
    const double hollow = 1.0 - 2.0 * thickestWall;
    const bool isThin =
        box.Width() >= hollow * outer.Width() && box.Height() >= hollow * outer.Height();
    return isThin && filled >= leastFilled &&
           Distance(box.Middle(), outer.Middle()) <= offCentre * outer.Diagonal();
}

}  // namespace

std::string FrameRemark(const std::vector<Element>& elements, std::size_t holder) {
    const Element& outer = elements[holder];
    const auto corners = CornersOfRectangle(outer.ring);
    if (!corners) return "";
    if (elements.size() == 2 && IsTube(Box(outer.ring), elements[1 - holder])) return "";
    return "the rectangle " + SidesText(*corners) + " at " + outer.label +
           " holds all other outlines, so it is a solid and the next ones within are holes: right "
           "for a plate with openings; if it is the frame of the drawing, hide its layer or name "
           "the section's with --layer";
}

}  // namespace halvorn::engine::dxf
