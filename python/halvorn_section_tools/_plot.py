"""The figure of a section."""

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


def _axis(ax: Axes, start: tuple[float, float], end: tuple[float, float], label: str,
          style: str) -> None:
    """A line with its label beside its end: above a level line, to the right of another."""
    ax.plot(*zip(start, end), style, color="black", linewidth=0.9)
    level = start[1] == end[1]
    ax.annotate(label, end, xytext=(0, 3) if level else (4, 0), textcoords="offset points",
                fontsize=8, horizontalalignment="right" if level else "left",
                verticalalignment="bottom" if level else "center")


def draw(elements: Sequence[Element], properties: SectionProperties, ax: Axes | None) -> Axes:
    """Draws as `Section.plot` says."""
    try:
        from matplotlib.collections import LineCollection
        from matplotlib.patches import Polygon
    except ImportError as error:
        raise ImportError("plot() needs Matplotlib: apt-get install python3-matplotlib") from error
    if ax is None:
        from matplotlib import pyplot

        ax = pyplot.figure().add_subplot()

    if not hasattr(ax, "add_patch"):
        raise TypeError(f"ax: expected Matplotlib axes, got {ax!r}")

    # Whatever lies within another is smaller than it.
    for element in sorted(elements, key=_extent, reverse=True):
        fill = "0.85" if element.solid else "white"
        ax.add_patch(Polygon(element.points, facecolor=fill, edgecolor="none"))
        ax.add_collection(LineCollection(list(_edges(element.points)), color="black", linewidth=1.2))

    points = np.concatenate([element.points for element in elements])
    (left, bottom), (right, top) = points.min(axis=0), points.max(axis=0)
    beyond = _OVERHANG * max(right - left, top - bottom)
    x, y = properties.centroid_x, properties.centroid_y
    _axis(ax, (left - beyond, y), (right + beyond, y), "ENA x", "-.")
    _axis(ax, (x, bottom - beyond), (x, top + beyond), "ENA y", "-.")
    angle = _principal_angle(properties)
    if angle != 0.0:
        reach = 0.5 * max(right - left, top - bottom) + 0.5 * beyond
        for number, turned in (("1", angle), ("2", angle + 0.5 * math.pi)):
            along = reach * math.cos(turned), reach * math.sin(turned)
            if along[0] < 0.0:
                along = -along[0], -along[1]
            _axis(ax, (x - along[0], y - along[1]), (x + along[0], y + along[1]), number, "--")
    ax.plot([x], [y], "o", color="black", markersize=4)
    ax.annotate("G", (x, y), xytext=(-5, -4), textcoords="offset points", fontweight="bold",
                horizontalalignment="right", verticalalignment="top")
    ax.set_aspect("equal", adjustable="datalim")
    ax.margins(0.08)
    ax.set_xlabel("x")
    ax.set_ylabel("y")
    return ax
