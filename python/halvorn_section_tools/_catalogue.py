"""Profiles by name."""

from __future__ import annotations

import os
from typing import Any

from ._core import EngineCatalogue
from ._report import Finding, findings_of
from ._types import Number, Unit


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
            self._engine, rows = self._engine.with_table(os.fsencode(path))
            findings.extend(findings_of(rows))
        self.findings = tuple(findings)

    def names(self, family: str | None = None) -> list[str]:
        """Returns the names of all profiles, or of a family's: "HEB", "W"."""
        if family is None:
            return self._engine.names()
        found = self._engine.names_of(family)
        if not found:
            raise ValueError(f"family: there is no {family!r}; the families are "
                             f"{', '.join(self._engine.families())}")
        return found

    def __repr__(self) -> str:
        return f"Catalogue({', '.join(map(repr, self._paths))})"

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), self._paths

    def _row(self, name: str) -> dict[str, Any]:
        found = self._engine.row(name)
        assert found is not None, name
        *texts, dimensions, published = found
        row: dict[str, Any] = dict(zip(("name", "family", "standard", "type", "unit", "source"), texts))
        return {**row, **dimensions, **{f"published_{key}": number for key, number in published.items()}}


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

    family     "HEB", "W"; default: all
    where      terms of a query, such as "Wplx>=1e6 h<=300 order=area limit=5" (docs/catalogues.md):
               only those that suit, in that order, with the values that were compared
    unit       of numbers in `where` that state none, and of the values
    density    for the mass [kg/m^3]
    catalogue  with tables of your own

    >>> [(row["name"], row["h"]) for row in profiles("HEB", "Wplx>=1e6 limit=2")]
    [('HEB240', 240.0), ('HEB260', 260.0)]
    """
    searched = Catalogue() if catalogue is None else catalogue
    if not isinstance(searched, Catalogue):
        raise TypeError(f"catalogue: expected a Catalogue, got {catalogue!r}")
    names = searched.names(family)
    if where is None:
        return [searched._row(name) for name in names]
    if not isinstance(where, str):
        raise TypeError(f"where: expected a text such as 'Wplx>=1e6 limit=5', got {where!r}")
    query = where if family is None else f"family={family} {where}"
    found, _ = searched._engine.find(query, {"unit": unit, "density": density})
    return [{**searched._row(name), **{value[1]: value[0] for value in values}}
            for name, values in found]
