"""Many sections of points in one call."""

from __future__ import annotations

import warnings
from dataclasses import dataclass
from typing import TYPE_CHECKING, Iterable

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._core import VALUE_NAMES, batch_values
from ._results import LostDigitsWarning, digits_left
from ._types import Points

if TYPE_CHECKING:
    from pandas import DataFrame

_AXES = ("plastic_axis_y", "plastic_axis_x")


@dataclass(frozen=True, eq=False)
class BatchProperties:
    """The values of k sections.

    `values` has shape (k, 17), with plastic axes (k, 19); column i is called `names[i]`, as the
    fields of `SectionProperties`.
    What was not computed, or is no finite number, is nan.
    """

    values: NDArray[np.float64]
    """a row per section, in the units of its points"""
    names: tuple[str, ...] = VALUE_NAMES
    """of the columns of `values`"""
    section_names: tuple[str, ...] | None = None
    """one per section, if they were given"""

    def __len__(self) -> int:
        return len(self.values)

    def __contains__(self, name: object) -> bool:
        return name in self.names

    __iter__ = None  # neither names nor sections are what `in` or an index would say

    def __getitem__(self, name: str) -> NDArray[np.float64]:
        """The values of one name for all sections, shape (k,): a view of `values`."""
        if name not in self.names:
            raise KeyError(f"{name!r} is none of {', '.join(self.names)}")
        return self.values[:, self.names.index(name)]

    def to_frame(self) -> DataFrame:
        """Returns a frame of pandas: a row per section, under its name if it has one, and a column
        per value. Raises ImportError without pandas."""
        try:
            from pandas import DataFrame
        except ImportError:
            raise ImportError("to_frame() needs pandas: pip install pandas; "
                              "values and names are there without it") from None
        index = None if self.section_names is None else list(self.section_names)
        return DataFrame(self.values, index=index, columns=list(self.names))


def _section_names(names: Iterable[str] | None, count: int) -> tuple[str, ...] | None:
    if names is None:
        return None
    if isinstance(names, str) or not isinstance(names, Iterable):
        raise TypeError(f"names: expected a list with a name for each section, got {names!r}")
    found = tuple(names)
    for i, name in enumerate(found):
        if not isinstance(name, str):
            raise TypeError(f"names[{i}]: expected a text, got {name!r}")
    if len(found) != count:
        raise ValueError(f"names: one per section is needed: {count} sections, found {len(found)} names")
    return found


def compute_batch(
    points: Points,
    contour_offsets: ArrayLike,
    flags: ArrayLike,
    section_offsets: ArrayLike,
    dx: ArrayLike = 0.0,
    dy: ArrayLike = 0.0,
    threads: int = 0,
    *,
    names: Iterable[str] | None = None,
    plastic_axes: bool = False,
) -> BatchProperties:
    """Computes k sections of m free contours with n points, over several threads.

    points           shape (n, 2): the points of all contours, one contour after the other [L]
    contour_offsets  shape (m + 1,): 0, then where each contour ends in `points`
    flags            shape (m,): 0 for a hole, else solid
    section_offsets  shape (k + 1,): 0, then where each section ends among the contours
    dx, dy           one number or shape (k,): as in `Section.properties` [L]
    threads          0: as many as pay off; the results are the same bits with any number
    names            one per section, for `section_names` and frames
    plastic_axes     True: `plastic_axis_y` and `plastic_axis_x` too, the axes of the plastic moduli,
                     which halve the gross area [L]

    Other Python threads run meanwhile, and Ctrl-C stops it; the arrays are copied first, so they may
    change. Where
    `Section.properties` raises ValueError a section gives nan and no error: all values of one that
    cannot be, the inertias and elastic moduli of one too far from the origin. One `LostDigitsWarning`
    says how many sections have fewer than seven digits of their inertias left.

    Raises ValueError or TypeError for arrays that do not fit, naming section and contour, and
    MemoryError.

    A beam with a hole, and a plate:

    >>> points = [(0, 0), (200, 0), (200, 400), (0, 400),
    ...           (50, 50), (150, 50), (150, 150), (50, 150),
    ...           (0, 0), (200, 0), (200, 15), (0, 15)]
    >>> batch = compute_batch(points, [0, 4, 8, 12], [1, 0, 1], [0, 2, 3])
    >>> batch["area"]
    array([70000.,  3000.])
    """
    values, losses = batch_values(
        points, contour_offsets, flags, section_offsets, dx, dy, threads, plastic_axes)
    named = _section_names(names, len(values))
    few = np.flatnonzero(losses)
    if len(few):
        worst = few[np.argmax(losses[few])]
        warnings.warn(
            f"{len(few)} of {len(losses)} sections lie so far from the origin, or are so thin for their "
            f"size, {digits_left(losses[worst])} in the worst, section {worst}; move the origin to them",
            LostDigitsWarning, stacklevel=2)
    return BatchProperties(values, VALUE_NAMES + _AXES if plastic_axes else VALUE_NAMES, named)
