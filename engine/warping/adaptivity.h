/// @file adaptivity.h
/// Where a space is too poor, and how it is made richer.
#ifndef HALVORN_ENGINE_WARPING_ADAPTIVITY_H
#define HALVORN_ENGINE_WARPING_ADAPTIVITY_H

#include <vector>

#include "warping/field_space.h"

namespace halvorn::engine {

/// A mesh with the order of each triangle, and what is known of how its errors fell.
struct Discretisation {
    TriangleMesh mesh;
    std::vector<int> orders;
    /// Share of each triangle in the error before its order was raised the last time; 0: it was
    /// not.
    std::vector<double> sharesBefore;
};

/// Returns a start: next to the finest of the outline triangles have the lowest order, larger ones
/// a higher one, since the solution is the smoother there (geometric meshes: B. Q. Guo and I.
/// Babuska, Computational Mechanics 1, 1986).
Discretisation StartOf(TriangleMesh mesh);

/// Makes the space richer where the shares in the error are largest: next to corners at which the
/// stress has no bound, triangles are halved towards the corner; elsewhere their order is raised,
/// where that helped before.
/// Source of the choice: J. M. Melenk and B. I. Wohlmuth, Advances in Computational Mathematics 15,
/// 2001.
/// @param shares  of each triangle in the error; when the sum is 1 or less nothing needs be done
void Enrich(const FieldSpace& space, const std::vector<double>& shares, Discretisation* to);

}  // namespace halvorn::engine

#endif
