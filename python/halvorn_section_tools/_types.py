"""What arguments may be."""

from typing import Iterable, SupportsFloat, SupportsIndex, Union

from numpy.typing import ArrayLike

Number = Union[SupportsFloat, SupportsIndex]
"""Any finite number; texts are none."""

Points = Union[ArrayLike, Iterable[Iterable[Number]]]
"""An array of shape (n, 2), or any iterable of pairs (x, y)."""
