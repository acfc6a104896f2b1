/// @file triangle_tree.h
/// Finds the triangles of a mesh by place.
#ifndef HALVORN_ENGINE_WARPING_TRIANGLE_TREE_H
#define HALVORN_ENGINE_WARPING_TRIANGLE_TREE_H

#include <limits>

#include "kernel/box_tree.h"
#include "warping/field_space.h"

namespace halvorn::engine {

/// A place on a triangle, and how far from there the point is that was asked for.
struct PlaceOnTriangle {
    Index triangle = kNone;
    double xi = 0.0, eta = 0.0;
    double distance = std::numeric_limits<double>::infinity();
};

/// Returns the place on a triangle that is nearest to a point.
PlaceOnTriangle NearestOnTriangle(const FieldSpace& space, Index triangle, const Point& point);

/// The triangles of a space, by their boxes.
class TriangleTree {
public:
    /// @param margin  the boxes are wider by so much on every side
    TriangleTree(const FieldSpace& space, double margin);

    /// Calls visit(triangle) for each whose box meets a box. Cost: log n, and what is visited.
    template <class Visit>
    void VisitNear(const KBox& box, const Visit& visit) const {
        KVisitBoxTree(
            tree_, [&](const KBox& other) { return KBoxesMeet(other, box); },
            [&](int triangle) {
                visit(static_cast<Index>(triangle));
                return false;
            });
    }

private:
    KBoxTree tree_;
};

}  // namespace halvorn::engine

#endif
