"""Whether the corners of a polyline have room on its edges."""

from __future__ import annotations

import math
from typing import Sequence

# Relative to an edge's length, so that corners may touch.
_FIT_TOLERANCE = 1e-9


def _turns(points: Sequence[tuple[float, float]], closed: bool) -> list[float]:
    """The turn at every point, counter-clockwise positive [rad]; 0 at the ends of an open line."""
    turns = []
    for i, (x, y) in enumerate(points):
        if not closed and i in (0, len(points) - 1):
            turns.append(0.0)
            continue
        before, after = points[i - 1], points[(i + 1) % len(points)]
        in_x, in_y, out_x, out_y = x - before[0], y - before[1], after[0] - x, after[1] - y
        turns.append(math.atan2(in_x * out_y - in_y * out_x, in_x * out_x + in_y * out_y))
    return turns


def require_room(
    points: Sequence[tuple[float, float]], radii: Sequence[float], thickness: float, closed: bool
) -> None:
    """Raises ValueError for the first edge that is too short for its corners on one of the faces,
    or without length.

    A corner that turns by a takes tan(a / 2) times a length from either edge: its radius, of a wall
    with half a thickness more for the mid-line and half a thickness more or less for the face; a
    sharp one half the thickness on the inner side of the turn. A solid has thickness 0.
    """
    turns = _turns(points, closed)

    def needed(i: int, offset: float) -> float:
        inwards = math.copysign(1.0, turns[i]) * offset
        bend = radii[i] + 0.5 * thickness if radii[i] > 0 else 0.0
        return (bend + inwards) * math.tan(0.5 * abs(turns[i]))

    for i in range(len(points) if closed else len(points) - 1):
        end = (i + 1) % len(points)
        available = math.dist(points[i], points[end])
        if available == 0.0:
            raise ValueError(f"points[{max(i, end)}]: repeats points[{min(i, end)}], so no wall or "
                             "arc has a direction there; leave it out")
        for offset in (0.5 * thickness, -0.5 * thickness):
            both = needed(i, offset) + needed(end, offset)
            if both > available * (1.0 + _FIT_TOLERANCE):
                raise ValueError(
                    f"points[{i}] to points[{end}]: the corners need {both:.6g} of this edge, which "
                    f"is {available:.6g} long; make the radii or the thickness smaller"
                )
