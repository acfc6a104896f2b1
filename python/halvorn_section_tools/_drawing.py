"""Drawings of sections by Matplotlib, which is imported where it is needed."""

from __future__ import annotations

import io
import os
import tempfile
from typing import TYPE_CHECKING, Any, Callable, Iterable, Mapping, get_args

import numpy as np
from numpy.typing import NDArray

from ._catalogue import encoded
from ._core import DRAWS_PDF_AND_PNG
from ._plot import axes_of, axes_through, axis_line, equal_scale
from ._types import StressKind

if TYPE_CHECKING:
    from matplotlib.axes import Axes

    from ._core import EngineReport
    from ._properties import Properties
    from ._report import Halves
    from ._shown import Shown
    from ._stresses import Stresses

_OVERHANG = 0.1  # of axes beyond the section, of its larger side
_UPRIGHT = 1e-6  # a principal axis nearer than this to x or y is that axis [degrees]
_TINTS = ("tab:blue", "tab:orange")
_NAMES = {"normal": "normal stress", "shear": "shear stress", "von_mises": "von Mises stress"}


def _path(rings: Iterable[NDArray[np.float64]]) -> Any:
    from matplotlib.path import Path

    vertices, codes = [], []
    for ring in rings:
        vertices += [ring, ring[:1]]
        codes += [Path.MOVETO] + [Path.LINETO] * (len(ring) - 1) + [Path.CLOSEPOLY]
    return Path(np.concatenate(vertices), codes)


def _add(ax: Axes, rings: Iterable[NDArray[np.float64]], style: Mapping[str, Any], **default: Any) -> Any:
    """Adds what the rings enclose, outlines less holes, as one patch; `color` is that of its face."""
    from matplotlib.patches import PathPatch

    for name in style:
        if not hasattr(PathPatch, f"set_{name}"):
            raise TypeError(f"{name}: Matplotlib's patches have no such property")
    own = {"facecolor" if name == "color" else name: value for name, value in style.items()}
    return ax.add_patch(PathPatch(_path(rings), **{**default, **own}))


def _rings(section: Shown) -> list[NDArray[np.float64]]:
    rings = [ring for outline, holes in section.material for ring in (outline, *holes)]
    if not rings:
        raise ValueError("the section has no area to draw; look at its findings")
    return rings


def _finish(ax: Axes, section: Shown, title: str | None) -> Axes:
    equal_scale(ax, section.unit)
    if title is None:
        title = section.name
    if title:
        ax.set_title(title)
    return ax


def _draw_axes(ax: Axes, rings: list[NDArray[np.float64]], values: Properties) -> None:
    if values.centroid_x is None or values.centroid_y is None:
        return
    angle = 0.0 if values.principal_angle is None else float(values.principal_angle)
    is_inclined = abs(angle - 90.0 * round(angle / 90.0)) > _UPRIGHT
    axes_through(ax, np.concatenate(rings), (float(values.centroid_x), float(values.centroid_y)),
                 np.radians(angle) if is_inclined else 0.0, ("x", "y"), _OVERHANG)


def draw_section(section: Shown, values: Properties | None, ax: Axes | None, title: str | None,
                 style: Mapping[str, Any]) -> Axes:
    """Draws as `Section.plot` says; without values without axes."""
    ax, rings = axes_of(ax, "plot"), _rings(section)
    _add(ax, rings, style, facecolor="0.85", edgecolor="black", linewidth=1.2)
    if values is not None:
        _draw_axes(ax, rings, values)
    return _finish(ax, section, title)


def draw_halves(section: Shown, halves: Halves, axis: str, ax: Axes | None, title: str | None,
                style: Mapping[str, Any]) -> Axes:
    """Draws as `Section.plot_halves` says."""
    ax, rings = axes_of(ax, "plot_halves"), _rings(section)
    for half, tint in zip(halves.sides, _TINTS):
        label = f"{half.side}\nA = {half.area:.5g} {section.unit}^2\nlever arm {half.lever_arm:.5g} {section.unit}"
        # Pieces hang on to their holes by bridges, which have no edge to draw.
        _add(ax, half.pieces, style, facecolor=tint, alpha=0.6, linewidth=0.0, label=label)
        ax.plot(*half.centroid, "o", color="black", markersize=4)
    _add(ax, rings, {}, facecolor="none", edgecolor="black", linewidth=1.2)
    points = np.concatenate(rings)
    along = points[:, 0 if axis == "x" else 1]
    beyond = _OVERHANG * np.ptp(points, axis=0).max()
    start, end = ((place, halves.axis) if axis == "x" else (halves.axis, place)
                  for place in (along.min() - beyond, along.max() + beyond))
    axis_line(ax, start, end, "plastic axis", "-.")
    ax.legend(fontsize="small")
    return _finish(ax, section, title)


def draw_stress(stress: Stresses, section: Shown, kind: StressKind, ax: Axes | None, title: str | None,
                colorbar: bool, style: Mapping[str, Any]) -> Axes:
    """Draws as `Stresses.plot` says."""
    if kind not in get_args(StressKind):
        raise ValueError(f"kind: expected one of {', '.join(map(repr, get_args(StressKind)))}, got {kind!r}")
    mesh, peak = stress.mesh, getattr(stress.max, kind)
    ax = axes_of(ax, "plot")
    largest = abs(peak.value) or 1.0  # where all is 0, so that it has the colour of 0
    colours: dict[str, Any] = {"shading": "gouraud", "cmap": "coolwarm" if kind == "normal" else "viridis"}
    if "norm" not in style:
        colours.update(vmin=-largest if kind == "normal" else 0.0, vmax=largest)
    x, y = mesh.nodes.T
    values = getattr(mesh, kind)
    try:
        filled = ax.tripcolor(x, y, values, triangles=mesh.triangles, **{**colours, **style})
    except AttributeError as error:
        raise TypeError(str(error)) from None
    _add(ax, _rings(section), {}, facecolor="none", edgecolor="black", linewidth=0.8)
    if peak.value:
        ax.plot(*peak.place, "o", color="black", fillstyle="none", markersize=7)
        ax.annotate(f"{peak.value:.4g}", peak.place, xytext=(7, 5), textcoords="offset points", fontsize=9,
                    bbox={"boxstyle": "round,pad=0.15", "facecolor": "white", "edgecolor": "none", "alpha": 0.8})
    if colorbar:
        low, high = filled.get_clim()
        beyond = {(True, False): "min", (False, True): "max", (True, True): "both"}
        extend = beyond.get((values.min() < low - 1e-3 * largest, values.max() > high + 1e-3 * largest), "neither")
        ax.figure.colorbar(filled, ax=ax, extend=extend, label=f"{_NAMES[kind]} [F/{section.unit}^2]")
    return _finish(ax, section, title)


def save_figure(report: EngineReport, path: str | os.PathLike[str], options: Mapping[str, object],
                draw: Callable[[Any], object]) -> None:
    """Writes the engine's figure, or where it cannot that of `draw`: all of it, or nothing."""
    name = os.fsdecode(encoded(path))
    ending = os.path.splitext(name)[1].lower()
    if DRAWS_PDF_AND_PNG or ending not in (".pdf", ".png"):
        return report.write_figure(encoded(path), options)
    try:
        from matplotlib.figure import Figure
    except ImportError as error:
        raise ImportError(f"{name}: this build writes .svg files only, and there is no Matplotlib to write "
                          "others: apt-get install python3-matplotlib, or pip install matplotlib") from error
    folder = os.path.dirname(name)
    if folder and not os.path.isdir(folder):
        raise ValueError(f"{name}: there is no folder {folder}; make it first")
    if os.path.isdir(name):
        raise ValueError(f"{name}: is a folder; name a file")
    figure, text = Figure(constrained_layout=True), io.BytesIO()
    draw(figure.add_subplot())
    figure.savefig(text, format=ending[1:], dpi=200)
    handle, beside = tempfile.mkstemp(dir=folder or ".", suffix=ending)
    try:
        with open(handle, "wb") as file:
            file.write(text.getvalue())
        os.replace(beside, name)
    except BaseException:
        os.unlink(beside)
        raise
