/// @file soft_corners.h
/// What lies so near to soft corners of a part that their own stress counts there.
#ifndef HALVORN_ENGINE_WARPING_SOFT_CORNERS_H
#define HALVORN_ENGINE_WARPING_SOFT_CORNERS_H

#include <vector>

#include "kernel/box_tree.h"
#include "warping/field_space.h"

namespace halvorn::engine {

/// Returns the largest radius about a soft corner, from that about a sharp one: beside longer sides
/// it is half the thickness of a wall at the most.
inline double SoftRadius(double leftOutRadius) {
    return 2.0 * leftOutRadius;
}

/// Circles about the corners that turn by `kSharpTurn` or less. At a distance r from one that turns
/// by d into the material the stress goes with r^(-d / pi): it grows without bound where the true
/// outline, an arc, has nothing of it. Between two that turn out of it the stress rises above that
/// of the arc. For both, the mean along the side counts, which the rings have. A circle reaches
/// over three quarters of the shorter side beside its corner, so that those about the joints of
/// chords cover the chords and what lies beside them. Its size is the outline's, not the mesh's.
class SoftCorners {
public:
    /// @param farthest  no circle is larger
    SoftCorners(const FieldSpace& space, double farthest);

    /// Returns whether a point lies within a circle. Cost: log n.
    bool Contain(const Point& p) const;

private:
    struct Circle {
        Point centre;
        double radius;
    };

    void ListRing(const FieldSpace& space, const RimRing& ring, const std::vector<double>& turns,
                  double farthest);
    void BuildTree();

    std::vector<Circle> circles_;
    KBoxTree tree_;
};

}  // namespace halvorn::engine

#endif
