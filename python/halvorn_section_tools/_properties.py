"""What is known about a section, by the keys of its JSON, frozen."""

from __future__ import annotations

import functools
import html
from dataclasses import dataclass, field, fields
from typing import TYPE_CHECKING, Any, Callable, Iterator, TypeVar

from ._quantity import Quantity, ValueDetails, quantity_of
from ._report import Finding, findings_of

from ._core import EngineSection

if TYPE_CHECKING:
    from ._core import EngineReport

_HEADINGS = ("Value", "Symbol", "Number", "Unit", "Off by at most", "Method")
_NOT_VALUES = ("details", "findings")

KnownValues = TypeVar("KnownValues", bound="Known")


class Known:
    """What both kinds of results share."""

    details: tuple[ValueDetails, ...]
    findings: tuple[Finding, ...]

    if not TYPE_CHECKING:  # else any name would pass
        def __getattr__(self, name: str) -> object:
            """A field, which is made when it is read for the first time, and kept."""
            report = self.__dict__.get("_engine_report")
            if report is None or name not in _names(type(self)):
                of = [f"; .{kind.__name__.lower()}() has it" for kind in Known.__subclasses__()
                      if name in _names(kind)]
                raise AttributeError(f"{type(self).__name__!r} object has no attribute {name!r}"
                                     + "".join(of))
            return self.__dict__.setdefault(name, _field(type(self), report, name))

    def __dir__(self) -> list[str]:
        return sorted({*super().__dir__(), *_names(type(self))})

    def __getstate__(self) -> dict[str, Any]:
        return {name: getattr(self, name) for name in _names(type(self))}

    def about(self, key: str) -> ValueDetails:
        """Returns what is known about a value, also where there is no number.

        >>> from halvorn_section_tools import Section
        >>> Section.profile("IPE300").properties().about("mass_per_metre").why_missing
        'no density is given'
        """
        for details in self.details:
            if details.key == key:
                return details
        raise KeyError(f"{key!r} is none of {', '.join(details.key for details in self.details)}")

    def to_dict(self) -> dict[str, float | None]:
        """Returns plain floats by their keys, None for what is not known."""
        keys = keys_of(type(self))
        report: EngineReport | None = self.__dict__.get("_engine_report")
        if report is not None:  # then no field has to be made for it
            numbers = report.numbers()
            return {key: numbers.get(key) for key in keys}
        values = ((key, getattr(self, key)) for key in keys)
        return {key: None if value is None else float(value) for key, value in values}

    def to_markdown(self) -> str:
        """Returns a table in Markdown."""
        lines = [f"| {' | '.join(_HEADINGS)} |", "| --- | --- | ---: | --- | ---: | --- |"]
        return "\n".join(lines + [f"| {' | '.join(row)} |" for row in self._rows()]) + "\n"

    def _repr_html_(self) -> str:
        head = "".join(f"<th>{heading}</th>" for heading in _HEADINGS)
        body = "".join("<tr>" + "".join(f"<td>{html.escape(cell)}</td>" for cell in row) + "</tr>"
                       for row in self._rows())
        return f"<table><thead><tr>{head}</tr></thead><tbody>{body}</tbody></table>"

    def __str__(self) -> str:
        width = max(len(details.key) for details in self.details)
        return "\n".join(
            f"{details.key:<{width}}  " + (details.why_missing if value is None
                                            else f"{value:.7g} {details.unit}".rstrip())
            for (_, value), details in zip(self._numbers(), self.details))

    def _numbers(self) -> Iterator[tuple[str, Quantity | None]]:
        for details in self.details:
            yield details.key, getattr(self, details.key)

    def _rows(self) -> Iterator[tuple[str, ...]]:
        for (_, value), details in zip(self._numbers(), self.details):
            if value is None:
                yield details.name, details.symbol, "", details.unit, "", details.why_missing
                continue
            error = "" if value.error is None else f"{value.error:.1g}"
            yield details.name, details.symbol, f"{value:.7g}", details.unit, error, details.method


_names: Callable[[Any], tuple[str, ...]] = functools.lru_cache(None)(
    lambda kind: tuple(item.name for item in fields(kind)))


def keys_of(kind: type[Known]) -> tuple[str, ...]:
    """The names of the values of a kind of results."""
    return tuple(name for name in _names(kind) if name not in _NOT_VALUES)


def _listed(kind: type[KnownValues]) -> type[KnownValues]:
    """The same class, with its values in its docstring as the engine calls them."""
    if kind.__doc__:
        bar = EngineSection.of_points([(0, 0), (1, 0), (0, 1)], [], "mm", "")
        rows = {row[1]: row for row in bar.evaluate({"density": 1.0}).values()}
        width = max(map(len, keys_of(kind))) + 2
        lines = []
        for key in keys_of(kind):
            _, _, name, symbol, unit, *_ = rows[key]
            lines.append(f"    {key:<{width}}{name} ({symbol}) [{unit.replace('mm', 'L') or '-'}]")
        lines += [f"    {'details':<{width}}what is known about each, in this order",
                  f"    {'findings':<{width}}what is doubtful, the worst first"]
        kind.__doc__ = f"{kind.__doc__.rstrip()}\n\n" + "\n".join(lines) + "\n    "
    return kind


def _field(kind: type[Known], report: EngineReport, name: str) -> object:
    """What a field holds of a report, which has those of both kinds."""
    if name == "findings":
        return findings_of(report.findings())
    if name != "details":
        row = report.value(name)
        return None if row is None else quantity_of(row)[0]
    rows = {row[1]: row for row in report.values()}
    return tuple(ValueDetails(*rows[key][1:]) if key in rows else _NO_MASS for key in keys_of(kind))


def known(kind: type[KnownValues], report: EngineReport) -> KnownValues:
    """The results of this kind from a report; each is made when it is read."""
    made = object.__new__(kind)
    made.__dict__["_engine_report"] = report
    return made


# The one value that a report has only when it is known.
_NO_MASS = ValueDetails("mass_per_metre", "Mass per metre", "m", "kg/m", "geometry", "", None, None, None,
                        None, "no density is given")


@_listed
@dataclass(frozen=True)
class Properties(Known):
    """Geometry, bending and plastic values of a section, and its static moments, all net of holes.

    L is the unit of the section. A value that is not known is None; `about` says why. Each is a
    `Quantity`: a float that knows its unit, method, bounds and error. str() gives a table, and
    notebooks show one.
    """

    area: Quantity | None
    """Area [L^2]"""
    width: Quantity | None
    """Overall width [L]"""
    height: Quantity | None
    """Overall height [L]"""
    centroid_x: Quantity | None
    """Centre of gravity, x [L]"""
    centroid_y: Quantity | None
    """Centre of gravity, y [L]"""
    fibre_distance_bottom: Quantity | None
    """Distance to bottom fibre [L]"""
    fibre_distance_top: Quantity | None
    """Distance to top fibre [L]"""
    fibre_distance_left: Quantity | None
    """Distance to left fibre [L]"""
    fibre_distance_right: Quantity | None
    """Distance to right fibre [L]"""
    perimeter: Quantity | None
    """Perimeter, outer outlines [L]"""
    mass_per_metre: Quantity | None
    """Mass per metre [kg/m]"""
    inertia_x: Quantity | None
    """Second moment about x [L^4]"""
    inertia_y: Quantity | None
    """Second moment about y [L^4]"""
    inertia_xy: Quantity | None
    """Product moment [L^4]"""
    principal_inertia_1: Quantity | None
    """Second moment, axis 1 [L^4]"""
    principal_inertia_2: Quantity | None
    """Second moment, axis 2 [L^4]"""
    principal_angle: Quantity | None
    """Angle from x to axis 1 [deg]"""
    radius_of_gyration_x: Quantity | None
    """Radius of gyration, x [L]"""
    radius_of_gyration_y: Quantity | None
    """Radius of gyration, y [L]"""
    radius_of_gyration_1: Quantity | None
    """Radius of gyration, axis 1 [L]"""
    radius_of_gyration_2: Quantity | None
    """Radius of gyration, axis 2 [L]"""
    elastic_modulus_bottom: Quantity | None
    """Elastic modulus, bottom [L^3]"""
    elastic_modulus_top: Quantity | None
    """Elastic modulus, top [L^3]"""
    elastic_modulus_left: Quantity | None
    """Elastic modulus, left [L^3]"""
    elastic_modulus_right: Quantity | None
    """Elastic modulus, right [L^3]"""
    elastic_modulus_1: Quantity | None
    """Elastic modulus, axis 1 [L^3]"""
    elastic_modulus_2: Quantity | None
    """Elastic modulus, axis 2 [L^3]"""
    plastic_modulus_x: Quantity | None
    """Plastic modulus about x [L^3]"""
    plastic_modulus_y: Quantity | None
    """Plastic modulus about y [L^3]"""
    plastic_modulus_1: Quantity | None
    """Plastic modulus, axis 1 [L^3]"""
    plastic_modulus_2: Quantity | None
    """Plastic modulus, axis 2 [L^3]"""
    plastic_axis_y: Quantity | None
    """Horizontal plastic axis [L]"""
    plastic_axis_x: Quantity | None
    """Vertical plastic axis [L]"""
    shape_factor_x: Quantity | None
    """Shape factor about x [-]"""
    shape_factor_y: Quantity | None
    """Shape factor about y [-]"""
    static_moment_x: Quantity | None
    """Static moment about x [L^3]"""
    static_moment_y: Quantity | None
    """Static moment about y [L^3]"""
    details: tuple[ValueDetails, ...] = field(repr=False, compare=False)
    """what is known about each, in their order"""
    findings: tuple[Finding, ...] = field(repr=False, compare=False)
    """what is doubtful about the section, the worst first"""


@_listed
@dataclass(frozen=True)
class Warping(Known):
    """Torsion, warping and shear of a section, solved over all of it, with bounds.

    As `Properties` in everything else.
    """

    torsion_constant: Quantity | None
    """Torsion constant [L^4]"""
    torsion_modulus: Quantity | None
    """Torsion modulus [L^3]"""
    warping_constant: Quantity | None
    """Warping constant [L^6]"""
    shear_centre_x: Quantity | None
    """Shear centre, x [L]"""
    shear_centre_y: Quantity | None
    """Shear centre, y [L]"""
    polar_radius: Quantity | None
    """Polar radius about M [L]"""
    monosymmetry_x: Quantity | None
    """Monosymmetry about x [L]"""
    monosymmetry_y: Quantity | None
    """Monosymmetry about y [L]"""
    shear_stiffness_area_x: Quantity | None
    """Shear stiffness area, x [L^2]"""
    shear_stiffness_area_y: Quantity | None
    """Shear stiffness area, y [L^2]"""
    details: tuple[ValueDetails, ...] = field(repr=False, compare=False)
    """what is known about each, in their order"""
    findings: tuple[Finding, ...] = field(repr=False, compare=False)
    """what is doubtful about the section and about these values, the worst first"""
