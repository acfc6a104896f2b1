"""Stresses of a section under forces, frozen."""

from __future__ import annotations

import os
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from ._quantity import Quantity, ValueDetails, quantity_of
from ._types import Points, StressKind

if TYPE_CHECKING:
    from matplotlib.axes import Axes

    from ._core import EngineReport
    from ._shown import Shown


@dataclass(frozen=True, repr=False)
class Peak:
    """The largest magnitude of a stress."""

    value: Quantity | None
    """[F / L^2], F the unit of the forces; None where it is not known"""
    place: tuple[float, float] | None
    """(x, y) of where it is [L]; None where it is 0 or not known"""
    details: ValueDetails
    """what is known about it, also where there is no number"""

    def __str__(self) -> str:
        if self.value is None:
            return "not known"
        if self.place is None:
            return f"{self.value:.6g}"
        return f"{self.value:.6g} at ({self.place[0]:.6g}, {self.place[1]:.6g})"

    def __repr__(self) -> str:
        return f"<Peak: {self}>"


@dataclass(frozen=True, repr=False)
class Peaks:
    """The largest stresses of a section under forces."""

    normal: Peak
    """along the axis, positive in tension"""
    shear: Peak
    """of both shear stresses together"""
    von_mises: Peak
    """sqrt(normal^2 + 3 shear^2)"""

    def __repr__(self) -> str:
        return f"<Peaks: normal {self.normal}, shear {self.shear}, von_mises {self.von_mises}>"


@dataclass(frozen=True, eq=False)
class StressArrays:
    """Stresses at points, one of each for every point [F / L^2]."""

    normal: NDArray[np.float64]
    """along the axis, positive in tension"""
    shear_x: NDArray[np.float64]
    """across the section along x"""
    shear_y: NDArray[np.float64]
    """along y"""
    von_mises: NDArray[np.float64]
    """sqrt(normal^2 + 3 shear^2)"""

    @property
    def shear(self) -> NDArray[np.float64]:
        """Of both shear stresses together: the length of their vector."""
        length: NDArray[np.float64] = np.hypot(self.shear_x, self.shear_y)
        return length


@dataclass(frozen=True, eq=False)
class StressMesh(StressArrays):
    """Stresses at the nodes of a mesh of triangles, linear between them.

    The stresses vary within each triangle of the engine's solution, which is divided into many here.
    A node that several of those share has the mean of theirs.
    """

    nodes: NDArray[np.float64]
    """shape (n, 2), x and y [L]"""
    triangles: NDArray[np.int64]
    """shape (m, 3), the nodes of each, counter-clockwise"""


class Stresses:
    """The stresses of a section under forces.

    >>> from halvorn_section_tools import Section
    >>> stress = Section.shape("plate", width=10, height=60).stress(N=6000, Mx=6e5, Vy=4000)
    >>> round(stress.max.normal.value, 6)
    110.0
    >>> stress.at([(5, 30), (5, 45)]).normal.round(6)
    array([10., 60.])
    """

    def __init__(self, report: EngineReport, section: Shown) -> None:
        peaks = {}
        for row, place in report.stresses():
            value, details = quantity_of(row)
            peaks[details.key] = Peak(value, None if value is None else place, details)
        self._report = report
        self._section = section
        self._mesh: StressMesh | None = None
        self.max = Peaks(**peaks)
        """The largest ones, with their places."""

    def at(self, points: Points) -> StressArrays:
        """Returns the stresses at points, nan at those outside the material.

        points  shape (n, 2), x and y [L]

        A point is within when it is no farther from an outline than 1e-4 of the section's longer
        side. Near a sharp corner that turns into the material the shear
        stress has no bound: there it grows with a smaller `tolerance`, and `max` leaves it out.

        >>> from halvorn_section_tools import Section
        >>> round_bar = Section.shape("round", diameter=40)
        >>> stress = round_bar.stress(T=1e6).at([(20, 20), (20, 30), (20, 50)])
        >>> bool(abs(stress.shear_x[1] / (-1e6 * 10 / (3.141593 * 40**4 / 32)) - 1) < 1e-3)
        True
        >>> stress.normal
        array([ 0.,  0., nan])
        """
        return StressArrays(*self._report.stresses_at(points))

    @property
    def mesh(self) -> StressMesh:
        """The stresses all over the section, as arrays for plots of your own.

        >>> from halvorn_section_tools import Section
        >>> mesh = Section.shape("plate", width=10, height=60).stress(N=6000).mesh
        >>> mesh.nodes.shape == (len(mesh.von_mises), 2), bool(abs(mesh.normal - 10).max() < 1e-9)
        (True, True)
        """
        if self._mesh is None:
            nodes, triangles, (normal, shear_x, shear_y, von_mises) = self._report.stress_mesh()
            self._mesh = StressMesh(normal, shear_x, shear_y, von_mises, nodes, triangles)
        return self._mesh

    def plot(self, kind: StressKind = "von_mises", ax: Axes | None = None, *, title: str | None = None,
             colorbar: bool = True, **style: Any) -> Axes:
        """Draws a stress over the section on Matplotlib axes and returns them.

        kind      "normal", "shear" or "von_mises"
        ax        to draw on; default: those of a new figure
        title     default: the name of the section
        colorbar  False: without one
        style     of `Axes.tripcolor`: cmap, alpha, vmin, vmax, norm, ...

        The colours end at the largest stress, whose place is marked; those of a normal stress are
        as far in both directions. Raises ImportError without Matplotlib.

        >>> from halvorn_section_tools import Section
        >>> axes = Section.profile("IPE300").stress(Mx=5e7, Vy=8e4).plot("shear", cmap="magma")
        >>> axes.get_title()
        'IPE300'
        """
        from ._drawing import draw_stress

        return draw_stress(self, self._section, kind, ax, title, colorbar, style)

    def save(self, path: str | os.PathLike[str], kind: StressKind = "von_mises") -> None:
        """Writes a figure of a stress, as `Section.save`."""
        from ._drawing import save_figure

        save_figure(self._report, path, {"stress": kind}, lambda ax: self.plot(kind, ax))

    def svg(self, kind: StressKind = "von_mises") -> str:
        """Returns the same figure as the text of an SVG file."""
        return self._report.svg({"stress": kind})

    def _repr_svg_(self) -> str:
        return self.svg()

    def __repr__(self) -> str:
        shown = ((key, getattr(self.max, key).value) for key in ("normal", "shear", "von_mises"))
        return "<Stresses: largest " + ", ".join(
            f"{key} " + ("not known" if value is None else f"{value:.6g}") for key, value in shown) + ">"
