"""What arguments may be."""

from typing import Iterable, Literal, SupportsFloat, SupportsIndex, Union

from numpy.typing import ArrayLike

Number = Union[SupportsFloat, SupportsIndex]
"""Any finite number; texts are none."""

Points = Union[ArrayLike, Iterable[Iterable[Number]]]
"""An array of shape (n, 2), or any iterable of pairs (x, y)."""

Unit = Literal["mm", "cm", "m", "in"]
"""Of every length of a section."""

ShapeKind = Literal["i", "i_mono", "channel", "tee", "angle", "rhs", "chs", "plate", "round"]
"""What `Section.shape` draws by its dimensions."""

TextFormat = Literal["json", "csv", "dxf"]
"""What `Section.parse` reads."""

Axis = Literal["x", "y"]
"""Horizontal or vertical."""

Touch = Literal["box", "outline"]
"""What of two sections touches: the boxes around them, or their outlines."""

AlignX = Literal["left", "centre", "right"]
"""Which ends of two sections above each other are level."""

AlignY = Literal["bottom", "centre", "top"]
"""Which ends of two sections beside each other are level."""

StressKind = Literal["normal", "shear", "von_mises"]
"""What a figure of stresses shows."""
