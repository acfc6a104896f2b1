#include "geometry/faces.h"

#include <algorithm>

namespace halvorn::engine {

namespace {

using Windings = std::vector<std::pair<Index, int>>;

// Winding numbers beyond an edge, seen from the triangle on its left.
Windings Beyond(const Windings& here, const Constraint& constraint,
                const std::vector<OutlineLink>& outlines) {
    Windings beyond = here;
    for (Index link = constraint.head; link != kNone; link = outlines[Slot(link)].next) {
        const Index outline = outlines[Slot(link)].outline;
        const auto at = std::lower_bound(
            beyond.begin(), beyond.end(), outline,
            [](const auto& winding, Index other) { return winding.first < other; });
        const int turn = outlines[Slot(link)].turn * constraint.turn;
        if (at == beyond.end() || at->first != outline) {
            beyond.insert(at, {outline, -turn});
        } else {
            at->second -= turn;
        }
    }
    std::erase_if(beyond, [](const auto& winding) { return winding.second == 0; });
    return beyond;
}

}  // namespace

std::vector<Face> FacesOf(const Arrangement& arrangement, std::vector<Index>* faceOfTriangle) {
    const Triangulation& mesh = arrangement.Mesh();
    std::vector<Face> faces;
    std::vector<Index> faceOf(mesh.Triangles().size(), kNone);
    // A triangle beyond an edge of a face. Its windings are found when it is reached: deep nesting
    // makes them long.
    struct Start {
        Index triangle;
        Index from;
        Constraint crossed;
    };
    std::vector<Start> starts = {{mesh.TriangleAt(0), kNone, {}}};
    while (!starts.empty()) {
        const Start start = starts.back();
        starts.pop_back();
        if (faceOf[Slot(start.triangle)] != kNone) continue;
        const auto number = static_cast<Index>(faces.size());
        Face face;
        face.sum = arrangement.SumAt(start.triangle);
        double largest = -1.0;
        std::vector<Index> stack = {start.triangle};
        faceOf[Slot(start.triangle)] = number;
        while (!stack.empty()) {
            const Index at = stack.back();
            stack.pop_back();
            const Triangle& triangle = mesh.At(at);
            const Point& a = mesh.PointAt(triangle.vertices[0]);
            const Point& b = mesh.PointAt(triangle.vertices[1]);
            const Point& c = mesh.PointAt(triangle.vertices[2]);
            const double area = 0.5 * Cross(b - a, c - a);
            face.area += area;
            if (area > largest) {
                largest = area;
                face.place = (1.0 / 3.0) * (a + b + c);
            }
            for (std::size_t edge = 0; edge < 3; ++edge) {
                const Index beyond = triangle.neighbours[edge];
                if (beyond == kNone || faceOf[Slot(beyond)] != kNone) continue;
                if (triangle.edges[edge].head != kNone) {
                    starts.push_back({beyond, number, triangle.edges[edge]});
                } else {
                    faceOf[Slot(beyond)] = number;
                    stack.push_back(beyond);
                }
            }
        }
        if (start.from != kNone) {
            face.windings =
                Beyond(faces[Slot(start.from)].windings, start.crossed, mesh.Outlines());
        }
        faces.push_back(std::move(face));
    }
    faces.erase(faces.begin());  // the one outside, where the search began
    if (faceOfTriangle != nullptr) {
        for (Index& face : faceOf) --face;
        *faceOfTriangle = std::move(faceOf);
    }
    return faces;
}

}  // namespace halvorn::engine
