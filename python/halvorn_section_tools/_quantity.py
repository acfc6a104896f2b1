"""A number that knows what it is."""

from __future__ import annotations

from typing import TYPE_CHECKING, NamedTuple

if TYPE_CHECKING:
    from ._core import ValueRow



class ValueDetails(NamedTuple):
    """What is known about a value beside its number."""

    key: str
    """as the fields of results, JSON and CSV have it: "inertia_x" """
    name: str
    """in full words"""
    symbol: str
    """as engineers write it"""
    unit: str
    """"mm^4", "kg/m", "deg"; empty: none"""
    group: str
    """"geometry", "bending", "plastic", "torsion" or "shear" """
    method: str
    """how it was found, a word"""
    lower: float | None
    """the number lies above it; None: there are no bounds"""
    upper: float | None
    """and below it"""
    error: float | None
    """of a value without bounds: how far off it can be; None: exact, or not known"""
    published: float | None
    """what the catalogue publishes of a profile"""
    why_missing: str
    """why there is no number; empty: there is one"""


class Quantity(float):
    """A value of a section: a float, with what is known about it as attributes.

    Arithmetic gives plain floats.

    >>> from halvorn_section_tools import Section
    >>> area = Section.profile("IPE300").properties().area
    >>> area.unit, area.symbol, area.method
    ('mm^2', 'A', 'exact')
    >>> round(2 * area, 3)
    10762.403
    """

    __slots__ = ("details",)
    details: ValueDetails

    def __new__(cls, number: float, details: ValueDetails) -> Quantity:
        quantity = super().__new__(cls, number)
        _set_details(quantity, details)
        return quantity

    def __setattr__(self, name: str, value: object) -> None:
        raise AttributeError(f"{name}: a quantity does not change")

    def __getnewargs__(self) -> tuple[float, ValueDetails]:  # type: ignore[override]
        return float(self), self.details

    def __getstate__(self) -> None:
        return None

    @property
    def unit(self) -> str:
        """"mm^4", "kg/m", "deg"; empty: none."""
        return self.details.unit

    @property
    def symbol(self) -> str:
        """As engineers write it."""
        return self.details.symbol

    @property
    def method(self) -> str:
        """How it was found, a word."""
        return self.details.method

    @property
    def bounds(self) -> tuple[float, float] | None:
        """The value of what is drawn lies between these two; None where there are none."""
        lower, upper = self.details.lower, self.details.upper
        return None if lower is None or upper is None else (lower, upper)

    @property
    def error(self) -> float | None:
        """How far off it can be: half the width of its bounds, or the error where there are none."""
        between = self.bounds
        return self.details.error if between is None else 0.5 * (between[1] - between[0])

    @property
    def published(self) -> float | None:
        """What the catalogue publishes of a profile."""
        return self.details.published


_set_details = Quantity.details.__set__  # type: ignore[attr-defined]


def quantity_of(row: ValueRow) -> tuple[Quantity | None, ValueDetails]:
    """The number of a row of the engine, and what is known about it."""
    number, details = row[0], ValueDetails(*row[1:])
    return (None if number is None else Quantity(number, details)), details
