/// @file end_clusters.h
/// Points of the plane that lie together.
#ifndef HALVORN_ENGINE_READ_DXF_END_CLUSTERS_H
#define HALVORN_ENGINE_READ_DXF_END_CLUSTERS_H

#include <cstddef>
#include <vector>

#include "model/section_model.h"

namespace halvorn::engine::dxf {

/// Returns a cluster number, from 0 on without gaps, for each of `points`: two points share it when
/// they are no farther apart than `tolerance` [L] or linked by others that are not. Points that
/// agree in twelve digits of the largest coordinate are together whatever the tolerance. The cost
/// grows with the number of points and with the most different points within a tolerance.
std::vector<std::size_t> ClusterPoints(const Points& points, double tolerance);

}  // namespace halvorn::engine::dxf

#endif
