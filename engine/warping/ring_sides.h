/// @file ring_sides.h
/// The straight sides of a ring, divided where corners that turn softly change the stress.
///
/// An arc is drawn as chords: several sides in a row that turn softly, all in one direction. Other
/// soft corners stand alone, the ridge of a roof or a vertex beside the line: the sides there are
/// straight, and what lies next to a corner that turns into the material is a stretch of its own.
#ifndef HALVORN_ENGINE_WARPING_RING_SIDES_H
#define HALVORN_ENGINE_WARPING_RING_SIDES_H

#include <cstddef>
#include <numbers>
#include <vector>

#include "warping/field_space.h"

namespace halvorn::engine {

/// A corner turns sharply by more, softly by less: it may be a joint of an arc's chords [radians].
inline constexpr double kSharpTurn = 25.0 * std::numbers::pi / 180.0;
/// A corner that turns by less is none: even at a thousandth of its reach it changes the stress by
/// 0.4 % alone [radians].
inline constexpr double kNoCorner = 2e-3;

/// An end of a stretch.
struct StretchEnd {
    double distance = 0.0;  ///< from the start of its side
    double turn = 0.0;      ///< of the soft corner there, positive if convex; 0 without one
    double leftOut = 0.0;   ///< nearer to it the stress at points counts for nothing
};

/// A part of a straight side: a chord of an arc, what lies beside an arc or beside a soft corner,
/// or the rest.
struct Stretch {
    std::size_t first = 0, count = 0;  ///< edges of the ring that the side has, all round
    StretchEnd from, to;

    double Length() const { return to.distance - from.distance; }
    /// Returns whether a soft corner is at an end of it.
    bool HasSoftCorner() const { return from.turn != 0.0 || to.turn != 0.0; }
};

/// Returns the length of an edge of a ring.
double LengthOf(const FieldSpace& space, const EdgeRef& edge);

/// Returns the stretches of a ring.
/// @param reach  as far as a corner is felt on long sides: a wall's thickness
std::vector<Stretch> StretchesOf(const FieldSpace& space, const RimRing& ring, double reach);

}  // namespace halvorn::engine

#endif
