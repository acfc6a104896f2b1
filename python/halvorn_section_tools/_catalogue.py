"""Profiles by name."""

from __future__ import annotations

import os
from typing import TYPE_CHECKING, Any

from ._core import EngineCatalogue, EngineSection
from ._report import Finding, findings_of
from ._types import Number, Unit

if TYPE_CHECKING:
    from ._core import ProfileRow


def encoded(path: str | os.PathLike[str], argument: str = "path") -> bytes:
    """A path in the file system's encoding."""
    try:
        return os.fsencode(path)
    except TypeError:
        raise TypeError(f"{argument}: expected the path of a file, got {path!r}") from None
    except UnicodeEncodeError:
        raise ValueError(f"{argument}: no file can be called {path!r}") from None


class Catalogue:
    """The built-in profiles, and those of tables of your own, which go before them.

    paths  CSV files of profiles by their dimensions (docs/catalogues.md)

    `findings` says what was left out of them. Raises ValueError for what cannot be read or is no such
    table.

    >>> "IPE300" in Catalogue().names()
    True
    """

    def __init__(self, *paths: str | os.PathLike[str]) -> None:
        self._engine = EngineCatalogue()
        self._paths = paths
        findings: list[Finding] = []
        for path in paths:
            self._engine, rows = self._engine.with_table(encoded(path, "paths"))
            findings.extend(findings_of(rows))
        self.findings = tuple(findings)

    def names(self, family: str | None = None) -> list[str]:
        """Returns the names of all profiles, or of a family's: "HEB", "IPE"."""
        found = self._engine.names(family)
        if not found:
            raise ValueError(f"family: there is no {family!r}; the families are "
                             f"{', '.join(self._engine.families())}")
        return found

    def __repr__(self) -> str:
        return f"Catalogue({', '.join(map(repr, self._paths))})"

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), self._paths


def _row(found: ProfileRow) -> dict[str, Any]:
    *texts, dimensions, published = found
    row: dict[str, Any] = dict(zip(("name", "family", "standard", "type", "unit", "source"), texts))
    return {**row, **dimensions, **{f"published_{key}": number for key, number in published.items()}}


def _require_density(density: Number | None) -> None:
    """Has the engine refuse what is none."""
    EngineSection.of_points([(0, 0), (1, 0), (0, 1)], [], "mm", "").evaluate({"density": density})


def profiles(
    family: str | None = None,
    where: str | None = None,
    *,
    unit: Unit | None = None,
    density: Number | None = None,
    catalogue: Catalogue | None = None,
) -> list[dict[str, Any]]:
    """Returns profiles of a catalogue as rows, which `pandas.DataFrame` takes: name, family,
    dimensions and published values of each.

    family     "HEB", "IPE"; default: all
    where      terms of a query, such as "Wplx>=1e6 h<=300 order=area limit=5" (docs/catalogues.md):
               only those that suit, in that order, with the values that were compared
    unit       of each row, and of numbers in `where` that state none; default: that of the table, which
               the row names
    density    for the mass in `where` [kg/m^3]
    catalogue  with tables of your own

    >>> [(row["name"], row["h"]) for row in profiles("HEB", "Wplx>=1000cm^3 limit=2", unit="m")]
    [('HEB240', 0.24), ('HEB260', 0.26)]
    """
    searched = Catalogue() if catalogue is None else catalogue
    if not isinstance(searched, Catalogue):
        raise TypeError(f"catalogue: expected a Catalogue, got {catalogue!r}")
    searched.names(family)  # refuses what is no family
    options = {"unit": unit, "density": density}
    _require_density(density)
    if where is None:
        return [_row(profile) for profile in searched._engine.rows(family, options)]
    if not isinstance(where, str):
        raise TypeError(f"where: expected a text such as 'Wplx>=1e6 limit=5', got {where!r}")
    query = where if family is None else f"family={family} {where}"
    found, _ = searched._engine.find(query, options)
    return [{**_row(profile), **{value[1]: value[0] for value in values}} for profile, values in found]
