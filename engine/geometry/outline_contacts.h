/// @file outline_contacts.h
/// Merges the points of outlines, and sets vertices onto outlines that they nearly touch.
#ifndef HALVORN_ENGINE_GEOMETRY_OUTLINE_CONTACTS_H
#define HALVORN_ENGINE_GEOMETRY_OUTLINE_CONTACTS_H

#include <vector>

#include "geometry/point.h"
#include "geometry/triangulation.h"

namespace halvorn::engine {

/// Vertex `vertex` of outline `of` near edge or vertex of outline `to`, in the frame.
struct Contact {
    Index vertex = kNone;
    Index of = kNone;
    Index to = kNone;
    double distance = 0.0;
    Point place;
    Point foot;  ///< on outline `to`, where it is nearest
};

/// Outlines as paths along common vertices. Each path visits the vertices that lie on its edges.
struct OutlinePaths {
    std::vector<Point> points;
    std::vector<std::vector<Index>> paths;  ///< of each outline, closed; no vertex follows itself
    std::vector<Contact> moved;             ///< vertices that were set onto another outline
    std::vector<Contact> nearMisses;        ///< of each pair of outlines apart the nearest place
};

/// @param rings  in one frame
/// @param size   of all; the distances of geometry/arrangement.h are parts of it
OutlinePaths JoinContacts(const std::vector<std::vector<Point>>& rings, double size);

}  // namespace halvorn::engine

#endif
