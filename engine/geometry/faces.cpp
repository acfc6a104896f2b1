#include "geometry/faces.h"

#include <map>

namespace halvorn::engine {

namespace {

using Windings = std::vector<std::pair<Index, int>>;

// Winding numbers beyond an edge, seen from the triangle on its left.
Windings Beyond(const Windings& here, const Constraint& constraint,
                const std::vector<OutlineLink>& outlines) {
    std::map<Index, int> beyond(here.begin(), here.end());
    for (Index link = constraint.head; link != kNone; link = outlines[Slot(link)].next) {
        beyond[outlines[Slot(link)].outline] -= outlines[Slot(link)].turn * constraint.turn;
    }
    Windings kept;
    for (const auto& [outline, winding] : beyond) {
        if (winding != 0) kept.emplace_back(outline, winding);
    }
    return kept;
}

}  // namespace

std::vector<Face> FacesOf(const Arrangement& arrangement) {
    const Triangulation& mesh = arrangement.Mesh();
    std::vector<Face> faces;
    std::vector<Index> faceOf(mesh.Triangles().size(), kNone);
    struct Start {
        Index triangle;
        Windings windings;
    };
    std::vector<Start> starts = {{mesh.TriangleAt(0), {}}};
    while (!starts.empty()) {
        Start start = std::move(starts.back());
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
                    starts.push_back(
                        {beyond, Beyond(start.windings, triangle.edges[edge], mesh.Outlines())});
                } else {
                    faceOf[Slot(beyond)] = number;
                    stack.push_back(beyond);
                }
            }
        }
        face.windings = std::move(start.windings);
        faces.push_back(std::move(face));
    }
    faces.erase(faces.begin());  // the one outside, where the search began
    return faces;
}

}  // namespace halvorn::engine
