"""Sections of a part that a call describes, read by the engine as it reads section files."""

from __future__ import annotations

import json
import re
import textwrap
from typing import Any, Iterable, Mapping

import numpy as np

from ._core import EngineSection, InputError, checked_number, checked_points, checked_text, shape_dimensions
from ._types import Number, Points

_FEWEST = {"ring": 3, "wall": 2}

# Of each shape its dimensions, and whether they are required.
_DIMENSIONS = shape_dimensions()

# Those that are no lengths.
_PLAIN = ("modular_ratio", "flange_slope")


def dimensions_listed() -> str:
    """A line for each shape with its dimensions, those in brackets where they may be left out."""
    width = max(map(len, _DIMENSIONS)) + 2
    lines = (f"{kind:<{width}}" + ", ".join(key if needed else f"[{key}]" for key, needed in keys.items())
             for kind, keys in _DIMENSIONS.items())
    return "\n".join(line for each in lines
                     for line in textwrap.wrap(each, 90, subsequent_indent=" " * width))


def _place(pointer: str) -> str:
    """A place in the text as an argument: "/parts/0/wall/points/2" is points[2]."""
    names = re.sub(r"^/(parts/0|contours/\d+)(/wall)?", "", pointer).strip("/").split("/")
    return "".join(f"[{name}]" if name.isdigit() else name for name in names)


def _unit(unit: object, name: object) -> str:
    """The unit, once it and the name are texts."""
    for argument, text in (("name", name), ("unit", unit)):
        if not isinstance(text, str):
            raise TypeError(f"{argument}: expected a text, got {text!r}")
        checked_text(text, argument)
    return str(unit)


def section_of(call: str, content: Mapping[str, Any], unit: object, name: object) -> EngineSection:
    """Has the engine read contours or parts.

    call  what messages and findings call it when it has no name
    Raises ValueError naming the argument.
    """
    text = json.dumps({"version": 1, "unit": unit, "name": name, **content})
    try:
        return EngineSection.parse(text, "json", str(name) or call, {})
    except InputError as error:
        raise _in_arguments(error, call) from None


def _in_arguments(error: InputError, call: str) -> ValueError:
    """What the engine says, of an argument of the call."""
    return ValueError(f"{_place(error.place) or call}: {error.problem}; {error.mend}")


def _rings(holes: object) -> list[Points]:
    try:
        rings: list[Points] = list(holes)  # type: ignore[call-overload]
    except TypeError:
        raise TypeError(f"holes: expected a list of rings of points, got {holes!r}") from None
    if rings and isinstance(rings[0], (tuple, np.ndarray)) and np.shape(rings[0]) == (2,):
        raise ValueError("holes: expected a list of rings of points, got one ring; put it into []")
    return rings


def polygon(points: Points, holes: object, unit: object, name: object) -> EngineSection:
    """A solid with holes."""
    try:
        return EngineSection.of_points(points, _rings(holes), unit, name)
    except InputError as error:
        raise _in_arguments(error, "polygon") from None


def rings(outlines: Iterable[tuple[bool, np.ndarray[Any, Any]]], unit: object, name: object) -> EngineSection:
    """Rings and whether they are solid; others are holes."""
    _unit(unit, name)
    contours = [{"kind": "solid" if solid else "hole", "points": checked_points(points, "geometry", _FEWEST["ring"]).tolist()}
                for solid, points in outlines]
    return section_of("geometry", {"contours": contours}, unit, name)


def shape(kind: object, dimensions: Mapping[str, Number], unit: object, name: object) -> EngineSection:
    """A shape by its dimensions."""
    if not isinstance(kind, str):
        raise TypeError(f"kind: expected the name of a shape, got {kind!r}")
    if kind not in _DIMENSIONS:
        raise ValueError(f"kind: no shape is called {kind!r}; write one of {', '.join(map(repr, _DIMENSIONS))}")
    keys = _DIMENSIONS[kind]
    takes = f"{kind!r} takes {', '.join(key if needed else f'{key} if it has one' for key, needed in keys.items())}"
    for key in dimensions:
        if key not in keys and key != "modular_ratio":
            raise TypeError(f"{checked_text(key, 'the name of a dimension')}: no dimension of this shape; {takes}")
    for key, needed in keys.items():
        if needed and key not in dimensions:
            raise TypeError(f"{key}: missing; {takes}")
    length = _unit(unit, name)
    numbers = {key: checked_number(value, key, "" if key in _PLAIN else length) for key, value in dimensions.items()}
    return section_of("shape", {"parts": [{"shape": kind, **numbers}]}, unit, name)


def wall(points: Points, thickness: Number, closed: bool, radii: object, unit: object,
         name: object) -> EngineSection:
    """A bent plate or a box by its mid-line."""
    if not isinstance(closed, bool):
        raise TypeError(f"closed: expected True or False, got {closed!r}")
    length = _unit(unit, name)
    line = checked_points(points, "points", _FEWEST["ring" if closed else "wall"], length).tolist()
    part: dict[str, Any] = {"kind": "closed" if closed else "open", "points": line,
                            "thickness": checked_number(thickness, "thickness", length)}
    if radii is not None:
        try:
            bends = list(radii)  # type: ignore[call-overload]
        except TypeError:
            raise TypeError(f"radii: expected one number per point, got {radii!r}") from None
        part["radii"] = [checked_number(radius, f"radii[{i}]", length) for i, radius in enumerate(bends)]
    return section_of("wall", {"parts": [{"wall": part}]}, unit, name)
