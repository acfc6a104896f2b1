"""Findings and halves of a section, frozen."""

from __future__ import annotations

from dataclasses import dataclass
from typing import TYPE_CHECKING, Iterable

import numpy as np
from numpy.typing import NDArray

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


@dataclass(frozen=True, eq=False, repr=False)
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

    def __str__(self) -> str:
        return f"{self.side} {self.area:.6g} with lever arm {self.lever_arm:.6g}"

    def __repr__(self) -> str:
        return f"<Half: {self}>"


@dataclass(frozen=True, eq=False, repr=False)
class Halves:
    """Both halves of a section about a plastic axis. Their areas times their lever arms add up to
    the plastic modulus."""

    axis: float
    """y of a horizontal one, x of a vertical one [L]"""
    sides: tuple[Half, Half]
    """above and below, or right and left"""

    def __repr__(self) -> str:
        return f"<Halves: axis {self.axis:.6g}, {self.sides[0]}, {self.sides[1]}>"

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
