"""What drawings share, and that of a ContourSection."""

from __future__ import annotations

import math
from typing import TYPE_CHECKING, Sequence

import numpy as np
from numpy.typing import NDArray

from ._results import SectionProperties

if TYPE_CHECKING:
    from matplotlib.axes import Axes

    from ._contour_section import Element

_OVERHANG = 0.2  # of axes beyond the section, of its larger side
_ALIGNED = 1e-6  # relative; inertias nearer than this to being principal are


def _extent(element: Element) -> tuple[float, bool]:
    x, y = (element.points - element.points[0]).T
    return abs(float(np.dot(x, np.roll(y, -1)) - np.dot(y, np.roll(x, -1)))), element.solid


def _edges(points: NDArray[np.float64]) -> NDArray[np.float64]:
    """Edges of shape (m, 2, 2), without those that run there and back: the bridge of a keyhole."""
    edges = np.stack([points, np.roll(points, -1, axis=0)], axis=1)
    known = {edge.tobytes() for edge in edges}
    return np.array([edge for edge in edges if edge[::-1].tobytes() not in known]).reshape(-1, 2, 2)


def _principal_angle(properties: SectionProperties) -> float:
    """The angle from x to axis 1, of the larger second moment, within pi/2 [rad]; 0 when x and y
    are principal axes."""
    product = properties.inertia_xy
    if abs(product) < _ALIGNED * (abs(properties.inertia_x) + abs(properties.inertia_y)):
        return 0.0
    return 0.5 * math.atan2(-2.0 * product, properties.inertia_x - properties.inertia_y)


def axes_of(ax: Axes | None, call: str) -> Axes:
    """The axes to draw on, those of a new figure where none are given."""
    try:
        import matplotlib.patches  # noqa: F401
    except ImportError as error:
        raise ImportError(f"{call}() needs Matplotlib: apt-get install python3-matplotlib, "
                          "or pip install matplotlib") from error
    if ax is None:
        from matplotlib import pyplot

        ax = pyplot.figure(constrained_layout=True).add_subplot()
    if not hasattr(ax, "add_patch"):
        raise TypeError(f"ax: expected Matplotlib axes, got {ax!r}")
    return ax


def axis_line(ax: Axes, start: tuple[float, float], end: tuple[float, float], label: str,
              style: str) -> None:
    """A line with its label beside its end: above a level line, to the right of another."""
    ax.plot(*zip(start, end), style, color="black", linewidth=0.9)
    level = start[1] == end[1]
    ax.annotate(label, end, xytext=(0, 3) if level else (4, 0), textcoords="offset points",
                fontsize=8, horizontalalignment="right" if level else "left",
                verticalalignment="bottom" if level else "center")


def axes_through(ax: Axes, corners: NDArray[np.float64], centre: tuple[float, float], angle: float,
                 labels: tuple[str, str], overhang: float) -> None:
    """The centre of gravity G with its level and upright axes and, where inclined, the principal ones.

    corners   points of which the farthest are the ends of the section [L]
    angle     from x to axis 1, 0 where x and y are principal axes [rad]
    labels    of the level and the upright axis
    overhang  of axes beyond the section, of its larger side
    """
    (left, bottom), (right, top) = corners.min(axis=0), corners.max(axis=0)
    side = max(right - left, top - bottom)
    beyond = overhang * side
    x, y = centre
    axis_line(ax, (left - beyond, y), (right + beyond, y), labels[0], "-.")
    axis_line(ax, (x, bottom - beyond), (x, top + beyond), labels[1], "-.")
    reach = 0.5 * side + 0.5 * beyond
    for number, turned in (("1", angle), ("2", angle + 0.5 * math.pi)) if angle != 0.0 else ():
        along = reach * math.cos(turned), reach * math.sin(turned)
        if along[0] < 0.0:
            along = -along[0], -along[1]
        axis_line(ax, (x - along[0], y - along[1]), (x + along[0], y + along[1]), number, "--")
    ax.plot([x], [y], "o", color="black", markersize=4)
    ax.annotate("G", (x, y), xytext=(-5, -4), textcoords="offset points", fontweight="bold",
                horizontalalignment="right", verticalalignment="top")


def equal_scale(ax: Axes, unit: str = "") -> Axes:
    """Both directions to one scale, with their names."""
    ax.set_aspect("equal", adjustable="datalim")
    ax.margins(0.08)
    for name, label in (("x", ax.set_xlabel), ("y", ax.set_ylabel)):
        label(f"{name} [{unit}]" if unit else name)
    return ax


def draw(elements: Sequence[Element], properties: SectionProperties, ax: Axes | None) -> Axes:
    """Draws as `ContourSection.plot` says."""
    ax = axes_of(ax, "plot")
    from matplotlib.collections import LineCollection
    from matplotlib.patches import Polygon

    # Whatever lies within another is smaller than it.
    for element in sorted(elements, key=_extent, reverse=True):
        fill = "0.85" if element.solid else "white"
        ax.add_patch(Polygon(element.points, facecolor=fill, edgecolor="none"))
        ax.add_collection(LineCollection(list(_edges(element.points)), color="black", linewidth=1.2))

    axes_through(ax, np.concatenate([element.points for element in elements]),
                 (properties.centroid_x, properties.centroid_y), _principal_angle(properties),
                 ("ENA x", "ENA y"), _OVERHANG)
    return equal_scale(ax)
