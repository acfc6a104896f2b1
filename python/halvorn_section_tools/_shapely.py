"""Geometry of Shapely, which is imported where it is needed."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Iterable, Iterator

import numpy as np
from numpy.typing import NDArray

if TYPE_CHECKING:
    from shapely.geometry import MultiPolygon, Polygon

    from ._shown import Polygon as Piece

_KEEP = "keep its polygons alone"


def _shapely(call: str) -> Any:
    try:
        import shapely.geometry
        import shapely.validation
    except ImportError as error:
        raise ImportError(f"{call}() needs Shapely: apt-get install python3-shapely, "
                          "or pip install shapely") from error
    return shapely


def geometry_of(material: Iterable[Piece]) -> Polygon | MultiPolygon:
    """A Polygon of one piece or none, a MultiPolygon of several."""
    shapely = _shapely("to_shapely")
    pieces = [shapely.geometry.Polygon(outline, holes) for outline, holes in material]
    if len(pieces) > 1:
        return shapely.geometry.MultiPolygon(pieces)
    return pieces[0] if pieces else shapely.geometry.Polygon()


def _polygons_in(geometry: Any, place: str) -> Iterator[Any]:
    """The polygons of a geometry; what is none is named."""
    if geometry.geom_type == "Polygon":
        yield geometry
    elif geometry.geom_type in ("MultiPolygon", "GeometryCollection"):
        for i, member in enumerate(geometry.geoms):
            yield from _polygons_in(member, f"{place}.geoms[{i}]")
    elif geometry.geom_type == "LinearRing":
        raise ValueError(f"{place}: a LinearRing encloses nothing by itself; pass shapely.geometry.Polygon(ring)")
    else:
        mend = _KEEP if place != "geometry" else "pass a Polygon, such as line.buffer(half the thickness)"
        raise ValueError(f"{place}: a {geometry.geom_type} has no area; {mend}")


def rings_of(geometry: object) -> list[tuple[bool, NDArray[np.float64]]]:
    """The rings of a geometry, without their repeated last points, and whether they are solid."""
    shapely = _shapely("from_shapely")
    from shapely.geometry.base import BaseGeometry

    if not isinstance(geometry, BaseGeometry):
        raise TypeError(f"geometry: expected a Polygon or MultiPolygon of Shapely, got {geometry!r}")
    if geometry.is_empty:
        raise ValueError("geometry: is empty; pass one that encloses an area")
    polygons = [polygon for polygon in _polygons_in(geometry, "geometry") if not polygon.is_empty]
    if not geometry.is_valid:
        reason = shapely.validation.explain_validity(geometry)
        raise ValueError(f"geometry: the {geometry.geom_type} is not valid: {reason}; "
                         "shapely.validation.make_valid(geometry) or geometry.buffer(0) may mend it")
    rings, heights = [], []
    for polygon in polygons:
        for i, ring in enumerate((polygon.exterior, *polygon.interiors)):
            points = np.asarray(ring.coords)[:-1]
            heights.append(points[:, 2:])
            rings.append((i == 0, points[:, :2]))
    if any(found.size and not (found == heights[0][0]).all() for found in heights):
        raise ValueError("geometry: z is not the same everywhere, a section is plane; "
                         "drop it: shapely.ops.transform(lambda x, y, z: (x, y), geometry)")
    return rings
