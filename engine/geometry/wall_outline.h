/// @file wall_outline.h
/// Walls of constant thickness, drawn from their mid-lines.
#ifndef HALVORN_ENGINE_GEOMETRY_WALL_OUTLINE_H
#define HALVORN_ENGINE_GEOMETRY_WALL_OUTLINE_H

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "geometry/outline.h"
#include "geometry/point.h"
#include "geometry/rounded_polygon.h"

namespace halvorn::engine::shapes {

/// A wall by its mid-line, whose corners are sharp or bent.
struct WallLine {
    Points points;  ///< x to the right, y up [L]
    /// One per point: the radius of the inner face of a bend [L], so that the mid-line's is half a
    /// thickness larger and the outer face's a whole one; 0: a corner sharp on both faces. The ends
    /// of an open line are cut off square, whatever their radius.
    std::vector<double> radii;
    double thickness;  ///< [L]
    bool isClosed;     ///< the last point joins the first, which is not repeated
};

/// Which arcs round the two faces of a bend.
enum class FaceArcs {
    Concentric,  ///< inner radius and inner radius plus thickness, as sheet bends
    Equal        ///< both with the radius of the mid-line, as the polyline formulas of the library
};

/// Why a wall cannot be drawn, and where.
struct WallFault {
    enum class Kind {
        Coincident,  ///< the point lies on a neighbour
        Radius,      ///< its bend does not fit the edge
        Thickness    ///< the faces cross: the wall is too thick for the edge and its turns
    };
    Kind kind;
    std::size_t point;  ///< index of the point
    double needed;      ///< length that both corners of the edge need [L]; Coincident: 0
    double available;   ///< length of the edge of the mid-line [L]
};

/// Returns the first fault of a wall; empty when each edge of either face has room for its corners
/// within 1e-9 of its length. Faces of distant parts of the line may still cross.
///
/// A corner that turns by a takes T = tan(a / 2) times a length from the edge of the mid-line: its
/// mid-line radius with concentric arcs; with equal ones half a thickness more on the inner side of
/// the turn and less on the outer one; when it is sharp, half the thickness on the inner side.
/// A solid outline is a closed line of thickness 0. Edges of length 0 have no room to check.
std::optional<WallFault> FindWallFault(const WallLine& line, FaceArcs arcs);

/// Returns the corners of one face, in the order of the mid-line, with the radii of their bends.
/// @param side  1: left of the line, -1: right of it, 0: the mid-line itself
std::vector<Corner> FaceCorners(const WallLine& line, double side, FaceArcs arcs);

/// Returns both faces of a wall: an open one as one ring, the right face forth and the left one
/// back; a closed one as outer and inner ring. Rings run counter-clockwise. The arcs of a bend are
/// concentric and divided alike, so that they never cross.
/// @pre `FindWallFault` finds nothing and no two successive points coincide
/// @throws std::invalid_argument as `RoundedPolygon`
Outline DrawWall(const WallLine& line, const ArcDivision& division);

/// Returns a closed wall as one ring (see `KeyholeRing`), whose bridge crosses the wall at its
/// first corner: it works for walls of any shape.
Points WallKeyhole(const Outline& outline);

/// Returns the points of the mid-line with its bends.
Points MidLine(const WallLine& line, const ArcDivision& division);

}  // namespace halvorn::engine::shapes

#endif
