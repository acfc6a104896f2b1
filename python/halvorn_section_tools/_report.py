"""Findings, halves and stresses of a section, frozen."""

from __future__ import annotations

import os
from dataclasses import dataclass
from typing import TYPE_CHECKING, Iterable

import numpy as np
from numpy.typing import NDArray

from ._quantity import Quantity, ValueDetails, quantity_of
from ._types import StressKind

if TYPE_CHECKING:
    from ._core import EngineReport, FindingRow

_SIDES = {"x": ("above", "below"), "y": ("right", "left")}


@dataclass(frozen=True)
class Finding:
    """What is doubtful about a section, or what its reader should know; str() gives a line."""

    severity: str
    """"error", "warning", "remark" or "hint" """
    kind: str
    """for programs: "self_crossing" """
    element: str
    """where in the section, or its source"""
    problem: str
    """what and where, amounts in the section's unit"""
    mend: str
    """what to do about it; may be empty"""
    place: tuple[float, float] | None
    """(x, y) [L]"""

    def __str__(self) -> str:
        where = f"{self.element}: " if self.element else ""
        return f"{self.severity}: {where}{self.problem}" + (f"; {self.mend}" if self.mend else "")


def findings_of(rows: Iterable[FindingRow]) -> tuple[Finding, ...]:
    """The findings of the engine's rows."""
    return tuple(Finding(*row) for row in rows)


@dataclass(frozen=True, eq=False)
class Half:
    """One side of a plastic axis."""

    side: str
    """"above" or "below" of a horizontal axis, "right" or "left" of a vertical one"""
    area: float
    """[L^2]"""
    centroid: tuple[float, float]
    """(x, y) [L]"""
    lever_arm: float
    """distance of the centroid from the axis [L]"""
    pieces: tuple[NDArray[np.float64], ...]
    """the half itself, rings of shape (n, 2), to which holes hang on by bridges [L]"""


@dataclass(frozen=True, eq=False)
class Halves:
    """Both halves of a section about a plastic axis. Their areas times their lever arms add up to
    the plastic modulus."""

    axis: float
    """y of a horizontal one, x of a vertical one [L]"""
    sides: tuple[Half, Half]
    """above and below, or right and left"""

    def __getitem__(self, side: str) -> Half:
        """The half of a side by its name: "above"."""
        for half in self.sides:
            if half.side == side:
                return half
        raise KeyError(f"{side!r} is none of {self.sides[0].side}, {self.sides[1].side}")


def halves_of(report: EngineReport, axis: str) -> Halves:
    """The halves of a report about its horizontal axis, "x", or its vertical one, "y"."""
    why_missing, place, *sides = report.halves(axis)
    if why_missing:
        raise ValueError(f"the section has no halves about {axis}: {why_missing}")
    first, second = (Half(name, *side) for name, side in zip(_SIDES[axis], sides))
    return Halves(place, (first, second))


@dataclass(frozen=True)
class Peak:
    """The largest magnitude of a stress."""

    value: Quantity | None
    """[F / L^2], F the unit of the forces; None where it is not known"""
    place: tuple[float, float] | None
    """(x, y) of where it is [L]"""
    details: ValueDetails
    """what is known about it, also where there is no number"""


@dataclass(frozen=True)
class Peaks:
    """The largest stresses of a section under forces."""

    normal: Peak
    """along the axis, positive in tension"""
    shear: Peak
    """of both shear stresses together"""
    von_mises: Peak
    """sqrt(normal^2 + 3 shear^2)"""


class Stresses:
    """The stresses of a section under forces."""

    def __init__(self, report: EngineReport) -> None:
        peaks = {}
        for row, place in report.stresses():
            value, details = quantity_of(row)
            peaks[details.key] = Peak(value, None if value is None else place, details)
        self._report = report
        self.max = Peaks(**peaks)
        """The largest ones, with their places."""

    def save(self, path: str | os.PathLike[str], kind: StressKind = "von_mises") -> None:
        """Writes a figure of a stress, as `Section.save`."""
        self._report.write_figure(os.fsencode(path), {"stress": kind})

    def svg(self, kind: StressKind = "von_mises") -> str:
        """Returns the same figure as the text of an SVG file."""
        return self._report.svg({"stress": kind})

    def _repr_svg_(self) -> str:
        return self.svg()

    def __repr__(self) -> str:
        shown = ((key, getattr(self.max, key).value) for key in ("normal", "shear", "von_mises"))
        return "<Stresses: largest " + ", ".join(
            f"{key} " + ("not known" if value is None else f"{value:.6g}") for key, value in shown) + ">"
