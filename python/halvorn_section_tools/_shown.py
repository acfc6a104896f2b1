"""What shows a section: its material as polygons, figures, drawings on Matplotlib axes."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy as np
from numpy.typing import NDArray

from ._properties import Properties
from ._report import halves_of
from ._stresses import Stresses
from ._types import Axis, Number, StressKind

if TYPE_CHECKING:
    from matplotlib.axes import Axes
    from shapely.geometry import MultiPolygon as ShapelyMultiPolygon
    from shapely.geometry import Polygon as ShapelyPolygon

    from ._core import EngineSection
    from ._section import _Report

# The options of what is asked for without any.
PLAIN: dict[str, object] = {"dx": 0.0, "dy": 0.0, "density": None}
SOLVED: dict[str, object] = {"warping": True, "tolerance": 1e-4, "poisson": 0.0}


class Polygon(NamedTuple):
    """A piece of material. No ring crosses itself or another; holes may touch it in points."""

    outline: NDArray[np.float64]
    """shape (n, 2), counter-clockwise, the first point not repeated [L]"""
    holes: tuple[NDArray[np.float64], ...]
    """likewise, clockwise"""


class Shown:
    """What `Section` has of this."""

    __slots__ = ()
    _engine: EngineSection

    if TYPE_CHECKING:
        @property
        def name(self) -> str: ...
        @property
        def unit(self) -> str: ...
        def _report(self, **options: object) -> _Report: ...

    @property
    def material(self) -> tuple[Polygon, ...]:
        """Where there is material: polygons with holes, net, one for each piece that hangs together.

        >>> from halvorn_section_tools import Section
        >>> bar = Section.shape("plate", width=30, height=20)
        >>> [(piece.outline.shape, len(piece.holes)) for piece in bar.material]
        [((4, 2), 0)]
        >>> len((bar + bar.moved(30)).material), len((bar + bar.moved(31)).material)
        (1, 2)
        """
        return tuple(Polygon(*rows) for rows in self._engine.material())

    def to_shapely(self) -> ShapelyPolygon | ShapelyMultiPolygon:
        """Returns the material as a Polygon of Shapely, or a MultiPolygon when pieces are apart.

        It is valid; of nothing it is an empty Polygon. Raises ImportError without Shapely.

        >>> from halvorn_section_tools import Section
        >>> tube = Section.shape("rhs", height=100, width=100, thickness=5, outer_radius=0).to_shapely()
        >>> tube.geom_type, tube.area, len(tube.interiors)
        ('Polygon', 1900.0, 1)
        """
        from ._shapely import geometry_of

        return geometry_of(self.material)

    def svg(self, *, halves: Axis | None = None) -> str:
        """Returns a drawing with axes, dimensions and values as the text of an SVG file.

        halves  "x" or "y": tints both sides of that plastic axis
        """
        return self._report(**SOLVED).engine.svg({"halves": halves})

    def save(self, path: str | os.PathLike[str], *, halves: Axis | None = None) -> None:
        """Writes the same drawing to an .svg, .pdf or .png file: all of it, or nothing.

        Where the build has no Cairo, as in a wheel, .pdf and .png are those of `plot` or
        `plot_halves`; then they need Matplotlib.
        """
        from ._drawing import save_figure

        save_figure(self._report(**SOLVED).engine, path, {"halves": halves}, lambda ax: self.plot(ax)
                    if halves is None else self.plot_halves(halves, ax))

    def plot(self, ax: Axes | None = None, *, title: str | None = None, axes: bool = True,
             **style: Any) -> Axes:
        """Draws the section to scale on Matplotlib axes and returns them.

        ax     to draw on; default: those of a new figure
        title  default: the name of the section
        axes   False: without centre of gravity, axes x and y, and inclined principal axes 1 and 2
        style  of the material, as Matplotlib's patches have it: color, alpha, edgecolor, hatch, label, ...

        A figure of pyplot is shown by plt.show(). Raises ImportError without Matplotlib.

        >>> from halvorn_section_tools import Section
        >>> ax = Section.profile("IPE300").plot(color="tab:blue", alpha=0.5)
        >>> ax.get_xlabel(), ax.get_title()
        ('x [mm]', 'IPE300')
        """
        from ._drawing import draw_section

        values = self._report(**PLAIN).results(Properties) if axes else None
        return draw_section(self, values, ax, title, style)

    def plot_halves(self, axis: Axis = "x", ax: Axes | None = None, *, title: str | None = None,
                    **style: Any) -> Axes:
        """Draws both halves about the horizontal plastic axis, "x", or the vertical one, "y", with
        their areas and lever arms, on Matplotlib axes, and returns them.

        style  of both halves, as of `plot`

        >>> from halvorn_section_tools import Section
        >>> ax = Section.shape("plate", width=40, height=100).plot_halves("x")
        >>> [text.get_text() for text in ax.get_legend().get_texts()]
        ['above: A = 2000 mm^2, lever arm 25 mm', 'below: A = 2000 mm^2, lever arm 25 mm']
        """
        from ._drawing import draw_halves

        halves = halves_of(self._report(**PLAIN).engine, axis)
        return draw_halves(self, halves, axis, ax, title, style)

    def plot_stress(
        self, kind: StressKind = "von_mises", ax: Axes | None = None, *, N: Number = 0.0, Mx: Number = 0.0,
        My: Number = 0.0, Vx: Number = 0.0, Vy: Number = 0.0, T: Number = 0.0, tolerance: Number = 1e-4,
        poisson: Number = 0.0, title: str | None = None, colorbar: bool = True, **style: Any,
    ) -> Axes:
        """Draws a stress under forces, those of `Section.stress`, as `Stresses.plot` does.

        >>> from halvorn_section_tools import Section
        >>> ax = Section.profile("IPE300").plot_stress("normal", Mx=50e6)
        >>> ax.figure.axes[1].get_ylabel()
        'normal stress [F/mm^2]'
        """
        report = self._report(forces=(N, Mx, My, Vx, Vy, T), tolerance=tolerance, poisson=poisson)
        return Stresses(report.engine, self).plot(kind, ax, title=title, colorbar=colorbar,
                                                                **style)

    def _repr_svg_(self) -> str:
        return self.svg()
