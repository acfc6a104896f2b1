"""Many sections of the engine, over threads."""

from __future__ import annotations

import os
import threading
import warnings
from typing import TYPE_CHECKING, Any, Callable, Iterable, Sequence

from ._core import checked_number
from ._properties import Properties, Warping, keys_of
from ._report import Finding, findings_of
from ._results import SectionWarning
from ._section import Section
from ._types import Number

if TYPE_CHECKING:
    from concurrent.futures import Future

# Without solutions a section takes some 20 us, much less than what a thread is told by.
_SECTIONS_OF_A_TASK = 32
_MOST_THREADS = 1024


class _Stopped(BaseException):
    """Of a thread whose work nobody waits for any more."""


def _doubt(findings: Sequence[Finding]) -> str | None:
    """The worst finding if it makes the values doubtful."""
    worst = [finding for finding in findings if finding.severity in ("error", "warning")]
    return str(worst[0]) if worst else None


class _Work:
    """What the threads share."""

    def __init__(self, sections: Sequence[Section], options: dict[str, object], keys: tuple[str, ...]) -> None:
        self.sections = sections
        self.keys = keys
        self._stop = threading.Event()
        self._options: dict[str, object] = {**options, "watch": self._look}

    def _look(self) -> None:
        if self._stop.is_set():
            raise _Stopped

    def stop(self) -> None:
        self._stop.set()

    def rows(self, numbers: range) -> list[dict[str, Any]]:
        return [self._row(self.sections[number]) for number in numbers]

    def _row(self, section: Section) -> dict[str, Any]:
        self._look()
        row: dict[str, Any] = {"name": section.name, "unit": section.unit}
        try:
            report = section._engine.evaluate(self._options)
        except ValueError as error:
            return {**row, **dict.fromkeys(self.keys), "doubt": None, "error": str(error)}
        found = report.numbers()
        row.update((key, found.get(key)) for key in self.keys)
        row["doubt"] = _doubt(findings_of(report.findings()))
        row["error"] = None
        return row


def _checked(sections: Iterable[Section]) -> list[Section]:
    if isinstance(sections, Section) or not isinstance(sections, Iterable):
        raise TypeError(f"sections: expected a list of sections, got {sections!r}")
    found = list(sections)
    for i, section in enumerate(found):
        if not isinstance(section, Section):
            raise TypeError(f"sections[{i}]: expected a Section, got {section!r}")
    return found


def _thread_count(threads: int | None) -> int:
    if threads is None:
        affinity = getattr(os, "sched_getaffinity", None)
        return len(affinity(0)) if affinity else os.cpu_count() or 1
    if isinstance(threads, bool) or not isinstance(threads, int):
        raise TypeError(f"threads: expected a whole number or None, got {threads!r}")
    if not 1 <= threads <= _MOST_THREADS:
        raise ValueError(f"threads: expected 1 to {_MOST_THREADS}, got {threads}")
    return threads


def evaluate_batch(
    sections: Iterable[Section], *, warping: bool = True, threads: int | None = None,
    progress: Callable[[int, int], object] | None = None, density: Number | None = None,
    tolerance: Number = 1e-4, poisson: Number = 0.0,
) -> list[dict[str, Any]]:
    """Returns what is known about many sections, a row for each, in their order; pandas.DataFrame
    takes the list.

    warping    False: without what `Section.warping` has, which takes most of the time
    threads    that work at the same time; default: one per processor
    progress   called as progress(done, all) after each section, of small ones after some, always on
               the thread that called
    density    for the mass per metre [kg/m^3]
    tolerance, poisson  as in `Section.warping`

    A row has `name`, `unit`, the fields of `Properties` and with `warping` those of `Warping` as plain
    floats, None for what is not known; `doubt`, the worst that makes the values doubtful, else None;
    and `error`: why a section has no values at all, else None. One section spoils no other, and one
    `SectionWarning` tells of those with a doubt or an error.

    Ctrl-C stops all threads within a fraction of a second, and so does an exception of `progress`.
    Sections do not keep what is computed here.

    >>> rows = evaluate_batch(Section.profile(name) for name in ("IPE200", "IPE300"))
    >>> [(row["name"], round(row["plastic_modulus_x"]), round(row["torsion_constant"])) for row in rows]
    [('IPE200', 220639, 68462), ('IPE300', 628356, 197530)]
    """
    if not isinstance(warping, bool):
        raise TypeError(f"warping: expected True or False, got {warping!r}")
    if progress is not None and not callable(progress):
        raise TypeError(f"progress: expected a function of two numbers, got {progress!r}")
    options: dict[str, object] = {
        "warping": warping, "tolerance": checked_number(tolerance, "tolerance"),
        "poisson": checked_number(poisson, "poisson"),
        "density": None if density is None else checked_number(density, "density")}
    Section.shape("round", diameter=1)._engine.evaluate({**options, "warping": False})  # refuses them
    keys = keys_of(Properties) + (keys_of(Warping) if warping else ())
    work = _Work(_checked(sections), options, keys)
    rows = _run(work, _thread_count(threads), 1 if warping else _SECTIONS_OF_A_TASK, progress)
    _tell(rows)
    return rows


def _run(
    work: _Work, threads: int, size: int, progress: Callable[[int, int], object] | None
) -> list[dict[str, Any]]:
    from concurrent.futures import ThreadPoolExecutor, as_completed  # a third of the package's import

    count = len(work.sections)
    with ThreadPoolExecutor(threads) as pool:
        try:
            tasks: dict[Future[list[dict[str, Any]]], range] = {}
            for first in range(0, count, size):
                numbers = range(first, min(first + size, count))
                tasks[pool.submit(work.rows, numbers)] = numbers
            done = 0
            for task in as_completed(tasks):
                task.result()
                done += len(tasks[task])
                if progress is not None:
                    progress(done, count)
            return [row for task in tasks for row in task.result()]
        except BaseException:
            work.stop()
            pool.shutdown(wait=False, cancel_futures=True)
            raise


def _tell(rows: Sequence[dict[str, Any]]) -> None:
    told = [(i, row["error"] or row["doubt"]) for i, row in enumerate(rows) if row["error"] or row["doubt"]]
    if told:
        first, why = told[0]
        warnings.warn(f"{len(told)} of {len(rows)} sections are doubtful or have no values, the first of "
                      f"them sections[{first}]: {why}", SectionWarning, stacklevel=3)
