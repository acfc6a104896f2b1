#include "model/outlines.h"

#include <algorithm>
#include <span>

#include "geometry/rounded_polygon.h"
#include "geometry/wall_outline.h"
#include "model/composite.h"

namespace halvorn::engine {

namespace {

bool CrossesItself(const Points& ring) {
    const WeightedRing outline = {&ring, 1};
    try {
        return !Arrangement(std::span(&outline, 1)).Crossings().empty();
    } catch (const ArrangementError&) {
        return false;  // told when the faces are arranged
    }
}

}  // namespace

std::vector<WeightedRing> OutlinesOf(const std::vector<Element>& elements) {
    if (IsComposite(elements)) return OutlinesFrom(elements, 0.0);
    std::vector<WeightedRing> outlines;
    outlines.reserve(elements.size());
    for (const Element& element : elements) {
        outlines.push_back({&element.ring, element.isSolid ? 1 : -1});
    }
    return outlines;
}

Box BoxOf(std::span<const Element> elements) {
    Box box(elements.front().ring);
    for (const Element& element : elements) box.Add(Box(element.ring));
    return box;
}

std::vector<Element> ElementsOf(const shapes::Outline& outline) {
    std::vector<Element> elements(outline.hole.empty() ? 1 : 2);
    elements[0].ring = outline.solid;
    if (!outline.hole.empty()) {
        elements[1].ring = outline.hole;
        elements[1].isSolid = false;
    }
    return elements;
}

std::vector<Element> ElementsOf(const Polyline& polyline, const shapes::ArcDivision& division) {
    std::vector<Element> elements(1);
    const auto isRound = [](double radius) { return radius > 0.0; };
    if (polyline.kind != PolylineKind::Solid) {
        const shapes::Outline outline =
            DrawWall({polyline.points, polyline.radii, polyline.thickness,
                      polyline.kind == PolylineKind::ClosedWall},
                     division);
        // Where a line crosses itself its faces do not run round each other.
        if (polyline.kind == PolylineKind::ClosedWall && CrossesItself(polyline.points)) {
            elements[0].ring = WallKeyhole(outline);
        } else {
            elements = ElementsOf(outline);
        }
        for (Element& element : elements) element.isWall = true;
    } else if (std::any_of(polyline.radii.begin(), polyline.radii.end(), isRound)) {
        std::vector<shapes::Corner> corners;
        for (std::size_t i = 0; i < polyline.points.size(); ++i) {
            const double radius = i < polyline.radii.size() ? polyline.radii[i] : 0.0;
            corners.push_back({polyline.points[i].x, polyline.points[i].y, radius});
        }
        elements[0].ring = RoundedPolygon(corners, division);
    } else {
        elements[0].ring = polyline.points;
    }
    elements[0].label = "/polyline";
    if (elements.size() > 1) elements[1].label = "/polyline, inside";
    return elements;
}

}  // namespace halvorn::engine
