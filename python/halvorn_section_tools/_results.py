"""Results by their names, frozen."""

from __future__ import annotations

import math
from dataclasses import dataclass, fields
from typing import Any


class SectionWarning(UserWarning):
    """The values of a section may not be what is meant: an outline crosses itself, solids overlap."""


class LostDigitsWarning(UserWarning):
    """Rounding leaves fewer than seven digits of inertias."""


def digits_left(relative: float) -> str:
    """What is left of the 16 digits of inertias and of what follows, by their relative error."""
    return ("that of 16 digits of the inertias, and of what follows, about "
            f"{max(0, int(-math.log10(relative)))} are left")


def _table(record: Any) -> str:
    rows = [(item.name, getattr(record, item.name)) for item in fields(record)]
    width = max(len(name) for name, _ in rows)
    shown = [(name, "not computed" if value is None else f"{value:.7g}") for name, value in rows]
    return "\n".join(f"{name:<{width}}  {value}" for name, value in shown)


@dataclass(frozen=True)
class SectionProperties:
    """The properties of a section. L is the unit of its points; str() gives a table.

    Elastic moduli, plastic moduli and `extra_sum` are None when the reference point of the fibre
    distances lies on the edge of the bounding box, so that a modulus would be infinite.
    """

    area: float
    """Area, holes subtracted [L^2]"""
    centroid_x: float
    """Centre of gravity, x [L]"""
    centroid_y: float
    """Centre of gravity, y [L]"""
    inertia_x: float
    """Integral of y^2 dA about the horizontal axis through the centre of gravity [L^4]"""
    inertia_y: float
    """Integral of x^2 dA about the vertical axis through the centre of gravity [L^4]"""
    inertia_xy: float
    """Integral of x y dA about the centre of gravity [L^4]"""
    elastic_modulus_bottom: float | None
    """Horizontal axis, lowest fibre [L^3]"""
    elastic_modulus_top: float | None
    """Horizontal axis, highest fibre [L^3]"""
    elastic_modulus_left: float | None
    """Vertical axis, leftmost fibre [L^3]"""
    elastic_modulus_right: float | None
    """Vertical axis, rightmost fibre [L^3]"""
    plastic_modulus_x: float | None
    """Horizontal axis; with holes a gross value [L^3]"""
    plastic_modulus_y: float | None
    """Vertical axis; with holes a gross value [L^3]"""
    torsion_constant: float | None
    """Of free contours that of the ellipse of equal area and polar moment [L^4]; None when the
    library's tolerance, a fixed 1e-10 of the unit squared, takes them for nothing: use a smaller
    unit, such as mm"""
    torsion_modulus: float
    """Likewise [L^3]"""
    shear_area_1: float
    """Likewise; of profiles along the first principal axis [L^2]"""
    shear_area_2: float
    """Likewise; of profiles along the second principal axis [L^2]"""
    extra_sum: float | None
    """Sum of the profiles' extra values, in their unit"""

    def __str__(self) -> str:
        return _table(self)


_set_values = object.__setattr__


def properties_of(values: dict[str, float]) -> SectionProperties:
    """The properties with these values, each there, without the calls of a frozen constructor."""
    made = object.__new__(SectionProperties)
    _set_values(made, "__dict__", values)
    return made


@dataclass(frozen=True)
class PolylineProperties:
    """The properties of one polyline section. L is the unit of its points; str() gives a table."""

    area: float
    """Area [L^2]"""
    centroid_x: float
    """Centre of gravity, x; of a closed wall: of all that its outer face encloses [L]"""
    centroid_y: float
    """Likewise, y [L]"""
    inertia_x_origin: float
    """Integral of y^2 dA about the origin of the coordinates [L^4]"""
    inertia_y_origin: float
    """Integral of x^2 dA about the origin of the coordinates [L^4]"""
    inertia_xy_origin: float
    """Integral of x y dA about the origin of the coordinates [L^4]"""
    torsion_constant: float
    """[L^4]; see docs/file-format.md, "Results of a polyline" """
    torsion_modulus: float
    """[L^3]"""
    shear_area_x: float
    """[L^2]"""
    shear_area_y: float
    """Always equal to `shear_area_x` [L^2]"""

    def __str__(self) -> str:
        return _table(self)
