"""The class ContourSection."""

from __future__ import annotations

import copy
import threading
import warnings
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._core import (
    CSectionTools,
    checked_number,
    checked_numbers,
    checked_points,
    misplaced_hole,
    section_values,
)
from ._results import LostDigitsWarning, PolylineProperties, SectionProperties, digits_left
from ._types import Number, Points
from ._walls import checked_properties, require_room

if TYPE_CHECKING:
    from matplotlib.axes import Axes

_POLYLINE_KINDS = ("solid", "closed_wall", "open_wall")
_TORSION_FORMULAS = ("tube", "general")


@dataclass(frozen=True, eq=False)
class Element:
    """What was added: its outline and, of a profile, the values given with it."""

    points: NDArray[np.float64]
    solid: bool
    given: tuple[float, ...] | None = None

    def push(self, tools: CSectionTools) -> None:
        if self.given is None:
            tools.PushContour(self.points, bool(self.solid))
        else:
            arguments: tuple[Any, ...] = (self.points, *self.given, bool(self.solid))
            tools.PushContourStandard(*arguments)


def _positive(name: str, value: Number) -> float:
    number = checked_number(value, name)
    if number <= 0.0:
        raise ValueError(f"{name}: expected a number greater than 0, got {value!r}")
    return number


def _not_negative(name: str, value: Number) -> float:
    number = checked_number(value, name)
    if number < 0.0:
        raise ValueError(f"{name}: expected 0 or more, got {value!r}")
    return number


def _require_choice(name: str, value: object, choices: Sequence[object]) -> None:
    if value not in choices:
        raise ValueError(f"{name}: expected one of {', '.join(map(repr, choices))}, got {value!r}")


class ContourSection:
    """Contours, holes and profiles with given values, which are added one after the other, and the
    seventeen values of the class for them. `Section` knows more, and its plastic moduli are net.

    Lengths are in any unit L; x points right, y up. Methods that add return the section itself.
    Sections can be copied and pickled, and shared by threads: their calls follow each other.

    >>> tube = ContourSection().add([(0, 0), (100, 0), (100, 100), (0, 100)])
    >>> tube.add([(5, 5), (95, 5), (95, 95), (5, 95)], solid=False)
    <ContourSection: 2 contours, 0 profiles, 8 points>
    >>> tube.properties().area
    1900.0
    """

    def __init__(self) -> None:
        self._lock = threading.RLock()  # a signal handler may come back in
        self._tools = CSectionTools()
        self._elements: list[Element] = []

    def _add(self, element: Element) -> ContourSection:
        if not isinstance(element.solid, (bool, np.bool_)):
            raise TypeError(f"solid: expected True or False, got {element.solid!r}")
        with self._lock:
            element.push(self._tools)
            self._elements.append(element)
        return self

    def add(self, points: Points, solid: bool = True) -> ContourSection:
        """Adds a closed polygon, whose properties are computed.

        points  shape (n, 2), n at least 3 [L]: an array or pairs (x, y); either way round, the last
                point joins the first
        solid   False: a hole, its properties are subtracted

        Raises ValueError for fewer points, other shapes and nan or infinite coordinates, TypeError
        for what is no number. The section is then as before.

        >>> ContourSection().add([(0, 0), (1, float("nan")), (1, 1)])
        Traceback (most recent call last):
            ...
        ValueError: points[1]: y is nan; coordinates must be finite
        """
        return self._add(Element(checked_points(points, "points", 3), solid))

    def add_profile(
        self,
        outline: Points,
        *,
        centroid: ArrayLike,
        area: Number,
        inertia_1: Number,
        inertia_2: Number,
        shear_area_1: Number,
        shear_area_2: Number,
        torsion_constant: Number,
        torsion_modulus: Number,
        angle_radians: Number = 0.0,
        extra: Number = 0.0,
        solid: bool = True,
    ) -> ContourSection:
        """Adds a profile whose properties are known, for example from a catalogue.

        outline           shape (n, 2), n at least 3, where the profile lies in the section [L];
                          for the bounding box and the plastic moduli; its box must hold the centroid,
                          else it is not checked against the rest
        centroid          (x, y), likewise [L]
        area              greater than 0 [L^2]
        inertia_1, _2     second moments about the first and second principal axis [L^4]
        shear_area_1, _2  along the first and second principal axis [L^2]
        torsion_constant  [L^4]
        torsion_modulus   [L^3]
        angle_radians     from the x axis to the first principal axis, counter-clockwise
        extra             any number, such as the mass per metre; `extra_sum` sums it, of holes too
        solid             False: a hole, its properties are subtracted

        Of an upright I the first principal axis is the horizontal, strong one. Raises as `add`, and
        ValueError for an area that is not positive, for other values below 0 and for a centroid
        outside the outline's box, which would make elastic moduli negative.
        """
        place = checked_numbers(centroid, "centroid")
        if len(place) != 2:
            raise ValueError(f"centroid: expected two numbers (x, y), got {len(place)}")
        x, y = place
        # As PushContourStandard orders them, with the names of here.
        named = {
            "angle_radians": angle_radians, "x": x, "y": y, "area": _positive("area", area),
            "shear_area_2": _not_negative("shear_area_2", shear_area_2),
            "shear_area_1": _not_negative("shear_area_1", shear_area_1),
            "torsion_constant": _not_negative("torsion_constant", torsion_constant),
            "inertia_2": _not_negative("inertia_2", inertia_2),
            "inertia_1": _not_negative("inertia_1", inertia_1), "reserved": 0.0,
            "torsion_modulus": _not_negative("torsion_modulus", torsion_modulus),
            "plastic_modulus_x": 0.0, "plastic_modulus_y": 0.0, "extra": extra,
        }
        given = tuple(checked_number(value, name) for name, value in named.items())
        points = checked_points(outline, "outline", 3)
        low, high = points.min(axis=0), points.max(axis=0)
        if (place < low).any() or (place > high).any():
            raise ValueError(f"centroid: ({x:.6g}, {y:.6g}) lies outside the box of the outline, "
                             f"({low[0]:.6g}, {low[1]:.6g}) to ({high[0]:.6g}, {high[1]:.6g}); "
                             "give both in the section's coordinates")
        return self._add(Element(points, solid, given))

    def properties(self, dx: Number = 0.0, dy: Number = 0.0) -> SectionProperties:
        """Returns the seventeen values.

        dx, dy  shift of the point from which the fibre distances of the elastic moduli are measured,
                from the centre of gravity [L]

        Raises ValueError for an empty section, for one that cannot be (without area, or with a hole
        that is not within its solids), for one so far from the origin that rounding leaves no digit
        of its inertias, and when the coordinates are so large that a result overflows. Where fewer
        than seven digits of the inertias are left, a `LostDigitsWarning` says how many. A centre of
        gravity and an `inertia_xy` that are no more than rounding are 0.
        """
        if not self._elements:
            raise ValueError("the section is empty: add a contour or a profile first")
        self._require_holes_in_place()
        values, loss, by_distance = section_values(self._tools, dx, dy)
        if loss > 0.0:
            why, cure = (("the section lies so far from the origin", "move the origin to the section")
                         if by_distance else
                         ("the outline is so thin for its size", "turn it, or draw its straight pieces "
                          "as contours of their own, parallel to the axes"))
            warnings.warn(f"{why} {digits_left(loss)}; {cure}", LostDigitsWarning, stacklevel=2)
        return SectionProperties(*values)  # type: ignore[arg-type]

    def _require_holes_in_place(self) -> None:
        """Raises ValueError for a hole that is not within the solids."""
        elements = list(self._elements)
        if all(element.solid for element in elements):
            return
        found = misplaced_hole([(element.points, bool(element.solid)) for element in elements])
        if found:
            index, x, y = found
            raise ValueError("the section has no properties: the hole that was added as number "
                             f"{index + 1} reaches to ({x:.6g}, {y:.6g}), outside the solids or within "
                             "another hole, where there is nothing to subtract")

    @staticmethod
    def polyline(
        points: Points,
        kind: str = "solid",
        *,
        thickness: Number | None = None,
        radii: Sequence[float] | NDArray[np.float64] | None = None,
        torsion: str = "general",
    ) -> PolylineProperties:
        """Returns the properties of one polyline by formulas of its own: a solid or a thin wall.

        points     shape (n, 2) [L], n at least 3, for an open wall 2: the outline of a solid, the
                   mid-line of a wall; closed ones close by themselves
        kind       "solid", "closed_wall" or "open_wall"
        thickness  of a wall, greater than 0 [L]
        radii      shape (n,): corner radii, of a wall those of the inner face, 0 for sharp [L];
                   default all 0
        torsion    of a wall: "general", or "tube" for the formulas of a circular tube

        Raises as `add`, and ValueError for other choices, for corners that have no room on their
        edges, for a wall or radii on points that repeat, for a polyline that encloses no area and
        for a wall that crosses itself so that its values are impossible.

        >>> ContourSection.polyline([(0, 0), (80, 0), (80, 60)], "open_wall", thickness=4).area
        560.0
        """
        _require_choice("kind", kind, _POLYLINE_KINDS)
        _require_choice("torsion", torsion, _TORSION_FORMULAS)
        wall, is_open = kind != "solid", kind == "open_wall"
        if wall != (thickness is not None):
            raise ValueError("thickness: a wall needs it" if wall else "thickness: a solid has none")
        width = 0.0 if thickness is None else _positive("thickness", thickness)
        line = checked_points(points, "points", 2 if is_open else 3)
        bends = np.zeros(len(line)) if radii is None else checked_numbers(radii, "radii")
        if len(bends) != len(line):
            raise ValueError(f"radii: one per point is needed: {len(line)} points, "
                             f"found {len(bends)} radii")
        if not (bends >= 0.0).all():
            raise ValueError(f"radii[{np.argmin(bends >= 0.0)}]: expected 0 or more")
        if wall or bends.any():
            require_room(line.tolist(), bends.tolist(), width, not is_open)
        values = CSectionTools.CalculContourQuelconqueTOOL(
            wall, is_open, torsion != "tube", width, line, bends)
        return checked_properties(values, line, width)

    def plot(self, ax: Axes | None = None) -> Axes:
        """Draws the section to scale with its centre of gravity G, its elastic neutral axes (ENA)
        and, where they are inclined, its principal axes 1 and 2.

        ax  Matplotlib axes to draw on; default: those of a new figure

        Returns the axes; a figure of pyplot is shown by plt.show(). Raises ImportError without
        Matplotlib, and as `properties`.
        """
        from ._plot import draw

        return draw(self._elements, self.properties(), ax)

    def __repr__(self) -> str:
        profiles = sum(element.given is not None for element in self._elements)
        points = sum(len(element.points) for element in self._elements)
        contours = len(self._elements) - profiles
        return f"<{type(self).__name__}: {contours} contours, {profiles} profiles, {points} points>"

    def _rest(self) -> dict[str, Any]:
        """What subclasses and users have added to the object."""
        return {name: value for name, value in self.__dict__.items()
                if name not in ("_lock", "_tools", "_elements")}

    def __copy__(self) -> ContourSection:
        twin = type(self).__new__(type(self))
        ContourSection.__init__(twin)
        with self._lock:
            twin._tools = copy.copy(self._tools)
            twin._elements = list(self._elements)
        twin.__dict__.update(self._rest())
        return twin

    def __deepcopy__(self, memo: dict[int, Any]) -> ContourSection:
        twin = memo[id(self)] = self.__copy__()
        twin.__dict__.update(copy.deepcopy(self._rest(), memo))
        return twin

    def __getstate__(self) -> dict[str, Any]:
        with self._lock:
            return {"elements": list(self._elements), "rest": self._rest()}

    def __setstate__(self, state: dict[str, Any]) -> None:
        ContourSection.__init__(self)
        for element in state["elements"]:
            self._add(element)
        self.__dict__.update(state["rest"])
