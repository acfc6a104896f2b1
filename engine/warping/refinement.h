/// @file refinement.h
/// Makes the triangles of a mesh good enough for elements.
#ifndef HALVORN_ENGINE_WARPING_REFINEMENT_H
#define HALVORN_ENGINE_WARPING_REFINEMENT_H

#include "warping/triangle_mesh.h"

namespace halvorn::engine {

/// Adds vertices to a mesh until its triangles are as the options say. Cost: the vertices that are
/// added, each times a logarithm.
/// @param mesh  a constrained Delaunay triangulation of the corners of its rings
void Refine(const MeshOptions& options, TriangleMesh* mesh);

}  // namespace halvorn::engine

#endif
