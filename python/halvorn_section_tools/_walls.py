"""Whether a polyline can be: the room for its corners, and its values."""

from __future__ import annotations

import math
from typing import Sequence

import numpy as np
from numpy.typing import NDArray

from ._core import ContourValues
from ._results import PolylineProperties

# Relative to an edge's length, so that corners may touch.
_FIT_TOLERANCE = 1e-9

_UNIT = 2.0**-53

# The library takes smaller areas for nothing and puts their centre of gravity at (0, 0) [L^2].
_ZERO_AREA = 1e-15


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


def _is_impossible(found: PolylineProperties, low: NDArray[np.float64],
                   high: NDArray[np.float64]) -> bool:
    """Whether no wall has such values: its faces cross, so areas count negatively or twice. The
    centre of gravity lies within the box of the wall."""
    centroid = np.array([found.centroid_x, found.centroid_y])
    squared = found.inertia_xy_origin**2
    return (bool((centroid < low).any() or (centroid > high).any())
            or min(found.area, found.torsion_constant, found.inertia_x_origin,
                   found.inertia_y_origin) < 0.0
            or squared > found.inertia_x_origin * found.inertia_y_origin * (1.0 + _FIT_TOLERANCE))


def checked_properties(values: ContourValues, line: NDArray[np.float64],
                       thickness: float) -> PolylineProperties:
    """The values as properties, with 0 for a centre of gravity and a product of inertia that are no
    more than rounding; raises ValueError for those of no section. A solid has thickness 0.

    The bounds are those of python/core/section_rounding.h, about the origin of the coordinates.
    """
    numbers = [values.area, *values.cdg, values.ixx, values.iyy, values.ixy, values.torsionConstant,
               values.torsionModulus, values.shearAreaX, values.shearAreaY]
    low, high = line.min(axis=0) - thickness, line.max(axis=0) + thickness
    (x, y), (width, height) = np.maximum(-low, high), high - low
    path_x, path_y = np.abs(np.roll(line, -1, axis=0) - line).sum(axis=0) + 4.0 * thickness
    scale = width * path_y + height * path_x
    if (not np.isfinite(numbers).all()
            or abs(values.area) <= max(8.0 * _UNIT * max(x, y) * (path_x + path_y), _ZERO_AREA)):
        raise ValueError("the polyline has no properties: its points lie on a line or in one place, "
                         "or its coordinates are too large or too small")
    for place, bound in ((1, x * scale / values.area), (2, y * scale / values.area), (5, x * y * scale)):
        if abs(numbers[place]) <= 16.0 * _UNIT * bound:
            numbers[place] = 0.0
    found = PolylineProperties(*numbers)
    if thickness > 0.0 and _is_impossible(found, low, high):
        raise ValueError("the polyline has no properties: it crosses itself, so that its formulas give "
                         "impossible values; make the wall thinner or draw its line without crossings")
    return found
