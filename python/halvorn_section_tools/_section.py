"""The class Section."""

from __future__ import annotations

import json
import os
import textwrap
import warnings
from typing import TYPE_CHECKING, Any, Iterable, NamedTuple, NoReturn

from . import _building
from ._catalogue import Catalogue, encoded
from ._core import EngineReport, EngineSection
from ._quantity import Quantity
from ._properties import Known, KnownValues, Properties, Warping, known
from ._report import Finding, Halves, findings_of, halves_of
from ._results import PolylineProperties, SectionProperties, SectionWarning, properties_of
from ._shapely import rings_of
from ._shown import PLAIN, SOLVED, Shown
from ._stresses import Stresses
from ._types import AlignX, AlignY, Axis, Number, Points, ShapeKind, TextFormat, Touch, Unit

if TYPE_CHECKING:
    from shapely.geometry.base import BaseGeometry

_KEPT_REPORTS = 8


class _Report:
    """A report of the engine, and the results that were made of it."""

    __slots__ = ("engine", "_made")

    def __init__(self, engine: EngineReport) -> None:
        self.engine = engine
        self._made: dict[type[Known], Any] = {}

    def results(self, kind: type[KnownValues]) -> KnownValues:
        if kind not in self._made:
            self._made[kind] = known(kind, self.engine)
        found: KnownValues = self._made[kind]
        return found


class Section(Shown):
    """A cross-section, made by `profile`, `shape`, `polygon`, `wall`, `read`, `parse` or `from_shapely`.

    x points right, y up; every length is in the section's unit, results in its powers. A section is
    a value: what changes it returns another one. Threads may share it, and it can be pickled. What makes
    its values doubtful is a `SectionWarning` when they are computed; `findings` has the rest.

    >>> cover = Section.shape("plate", width=320, height=20)
    >>> girder = Section.profile("HEB300").with_on_top(cover)
    >>> round(girder.properties().plastic_modulus_x)
    2239848
    >>> girder.warping().torsion_constant.bounds is not None
    True
    """

    __slots__ = ("_engine", "_made_by", "_reports")
    _engine: EngineSection
    _made_by: tuple[Any, ...]  # from which a pickle makes it again
    _reports: dict[tuple[Any, ...], _Report]

    def __init__(self) -> None:
        raise TypeError("a section is made by Section.profile, .shape, .polygon, .wall, .read, .parse or "
                        ".from_shapely; ContourSection() is the class to which contours are added")

    def __setattr__(self, name: str, value: object) -> NoReturn:
        raise AttributeError(f"{name}: a section does not change; its methods return another one")

    @classmethod
    def profile(
        cls, name: str, *, unit: Unit | None = None, published: bool = False,
        catalogue: Catalogue | None = None,
    ) -> Section:
        """Returns a profile of the catalogue, its lower left corner at the origin.

        name       in any usual spelling: "IPE300", "ipe 300"; "w12x26" and "L 4x4x1/2" where a table of
                   your own has them (docs/catalogues.md)
        unit       of the section; default: that of its table, mm of those built in
        published  True: its class values are those of the catalogue
        catalogue  with tables of your own

        >>> Section.profile("ipe 300").properties().height
        300.0
        """
        if catalogue is not None and not isinstance(catalogue, Catalogue):
            raise TypeError(f"catalogue: expected a Catalogue, got {catalogue!r}")
        return _made("profile", name, {"unit": unit, "published": published, "catalogue": catalogue})

    @classmethod
    def shape(cls, kind: ShapeKind, *, unit: Unit = "mm", name: str = "", **dimensions: Number) -> Section:
        """Returns a shape by its dimensions, its lower left corner at the origin.

        kind        "i", "i_mono", "channel", "tee", "angle", "rhs", "chs", "plate" or "round"
        dimensions  those of the kind (docs/file-format.md, Shapes) [L]; `modular_ratio` makes the
                    section one of several materials. In brackets: where there are any

        >>> Section.shape("rhs", height=100, width=100, thickness=5, outer_radius=0).properties().area
        1900.0
        """
        return _made("shape", kind, dimensions, unit, name)

    @classmethod
    def polygon(
        cls, points: Points, holes: Iterable[Points] = (), *, unit: Unit = "mm", name: str = ""
    ) -> Section:
        """Returns a closed polygon, less its holes.

        points  shape (n, 2), n at least 3 [L]: an array or pairs (x, y); either way round, the last
                point joins the first
        holes   a list of such rings

        >>> square = [(0, 0), (100, 0), (100, 100), (0, 100)]
        >>> Section.polygon(square, [[(5, 5), (95, 5), (95, 95), (5, 95)]]).properties().plastic_modulus_x
        67750.0
        """
        return _handle_of(_building.polygon(points, holes, unit, name), _POLYGON)

    @classmethod
    def wall(
        cls, points: Points, thickness: Number, *, closed: bool = False,
        radii: Iterable[Number] | None = None, unit: Unit = "mm", name: str = "",
    ) -> Section:
        """Returns a bent plate, or a box, by its mid-line with sharp corners.

        points     shape (n, 2), n at least 2, of a closed wall 3 [L]
        thickness  [L]
        closed     True: the last point joins the first
        radii      one per point, of the inner face of the bend [L]; default all 0: sharp

        >>> Section.wall([(0, 0), (80, 0), (80, 60)], 4, radii=[0, 6, 0]).properties().width
        82.0
        """
        return _made("wall", points, thickness, closed, radii, unit, name)

    @classmethod
    def read(
        cls, path: str | os.PathLike[str], *, unit: Unit | None = None,
        chord_tolerance: Number | None = None, join_tolerance: Number | None = None,
        layers: Iterable[str] = (), catalogue: Catalogue | None = None,
    ) -> Section:
        """Returns the section in a file: .json, .csv or .dxf by its ending (docs/file-format.md).

        unit             of CSV that states none, and of a drawing whatever it states
        chord_tolerance  greatest distance between an arc and its chords [mm]
        join_tolerance   ends of a drawing's lines no farther apart are joined [mm]
        layers           those of a drawing that are read; default all

        Raises FileNotFoundError, and ValueError with file and line for what is no section. A pickle
        of the section reads the file again.
        """
        name = encoded(path)
        if not os.path.exists(name):
            raise FileNotFoundError(f"path: there is no file {os.fspath(path)!r}")
        options = _reading(unit, chord_tolerance, join_tolerance, layers, catalogue)
        section = _made("open", name, options)
        # A pickle may be read in another folder.
        object.__setattr__(section, "_made_by", ("open", os.path.abspath(name), options))
        return section

    @classmethod
    def parse(
        cls, text: str, format: TextFormat, *, unit: Unit | None = None,
        chord_tolerance: Number | None = None, join_tolerance: Number | None = None,
        layers: Iterable[str] = (), catalogue: Catalogue | None = None,
    ) -> Section:
        """Returns the section in a text, "json", "csv" or "dxf", as `read`.

        >>> Section.parse("x,y\\n0,0\\n30,0\\n0,40\\n", "csv", unit="mm").properties().area
        600.0
        """
        return _made("parse", text, format, "text",
                     _reading(unit, chord_tolerance, join_tolerance, layers, catalogue))

    @classmethod
    def from_shapely(cls, geometry: BaseGeometry, *, unit: Unit = "mm", name: str = "") -> Section:
        """Returns the area of a geometry of Shapely.

        geometry  a Polygon or MultiPolygon, or a GeometryCollection of such; z is left out where it
                  is the same everywhere

        Raises ValueError for one that is empty, not valid or has members without area, and
        ImportError without Shapely.

        >>> from shapely.geometry import Point
        >>> ring = Point(0, 0).buffer(50, 64).difference(Point(0, 0).buffer(40, 64))
        >>> round(Section.from_shapely(ring).properties().area / ring.area, 12)
        1.0
        """
        return _made("rings", rings_of(geometry), unit, name)

    @property
    def name(self) -> str:
        """The name of the section; may be empty."""
        return self._engine.name

    @property
    def unit(self) -> str:
        """The unit of every length: "mm", "cm", "m" or "in"."""
        return self._engine.unit

    def named(self, name: str) -> Section:
        """Returns the section under another name, for tables, batches and figures.

        >>> girder = Section.profile("HEB300").moved(0, 20).named("girder 7")
        >>> girder.name, girder.properties().height
        ('girder 7', 300.0)
        """
        return _made("named", self, name)

    def moved(self, dx: Number = 0.0, dy: Number = 0.0) -> Section:
        """Returns the section moved to the right and up [L]."""
        return _made("moved", self, dx, dy)

    def turned(self, degrees: Number) -> Section:
        """Returns the section turned about the origin, counter-clockwise.

        >>> Section.profile("IPE300").turned(90).properties().width
        300.0
        """
        return _made("turned", self, degrees)

    def mirrored(self, axis: Axis) -> Section:
        """Returns the section turned over about an axis through the origin: "x", top becomes bottom,
        or "y", left becomes right."""
        return _made("mirrored", self, axis)

    def repeated(self, count: int, dx: Number = 0.0, dy: Number = 0.0) -> Section:
        """Returns so many copies in one section, each moved from the one before [L].

        >>> Section.shape("round", diameter=20).repeated(4, dx=60).properties().width
        200.0
        """
        return _made("repeated", self, count, dx, dy)

    def corner(self, place: str) -> tuple[float, float]:
        """Returns a point of the box around the section: "bottom_left", "bottom_centre", ...,
        "middle_left", "centre", ..., "top_right" [L].

        >>> Section.shape("plate", width=40, height=10).corner("top_centre")
        (20.0, 10.0)
        """
        corners = {f"{y}_{x}": (x, "centre" if y == "middle" else y)
                   for y in ("bottom", "middle", "top") for x in ("left", "centre", "right")}
        corners["centre"] = corners.pop("middle_centre")
        if place not in corners:
            raise ValueError(f"place: expected one of {', '.join(map(repr, corners))}, got {place!r}")
        return self._engine.corner(*corners[place])

    def with_on_top(
        self, other: Section, *, align: AlignX = "centre", gap: Number = 0.0, touch: Touch = "box",
        dx: Number = 0.0, dy: Number = 0.0,
    ) -> Section:
        """Returns this section with another one set on top of it, wherever that lies.

        align   which of their ends are level: "left", "centre" or "right"
        gap     between them [L]
        touch   what touches: "box", the boxes around them, or "outline", the outlines, wherever they
                meet first
        dx, dy  a shift from there [L]

        >>> beam = Section.profile("IPE300").with_on_top(Section.shape("plate", width=200, height=15))
        >>> beam.properties().height
        315.0
        """
        return self._with(other, "top", touch, align, gap, dx, dy)

    def with_below(
        self, other: Section, *, align: AlignX = "centre", gap: Number = 0.0, touch: Touch = "box",
        dx: Number = 0.0, dy: Number = 0.0,
    ) -> Section:
        """Returns this section with another one set below it, as `with_on_top`."""
        return self._with(other, "bottom", touch, align, gap, dx, dy)

    def with_left(
        self, other: Section, *, align: AlignY = "centre", gap: Number = 0.0, touch: Touch = "box",
        dx: Number = 0.0, dy: Number = 0.0,
    ) -> Section:
        """Returns this section with another one set on its left, as `with_on_top`; align is "bottom",
        "centre" or "top"."""
        return self._with(other, "left", touch, align, gap, dx, dy)

    def with_right(
        self, other: Section, *, align: AlignY = "centre", gap: Number = 0.0, touch: Touch = "box",
        dx: Number = 0.0, dy: Number = 0.0,
    ) -> Section:
        """Returns this section with another one set on its right, as `with_left`."""
        return self._with(other, "right", touch, align, gap, dx, dy)

    def _with(self, other: Section, *setting: object) -> Section:
        if not isinstance(other, Section):
            raise TypeError(f"other: expected a Section, got {other!r}")
        return self + _made("set_on", other, self, *setting)

    def __add__(self, other: Section) -> Section:
        """Both sections in one, each where it is."""
        return _made("plus", self, other) if isinstance(other, Section) else NotImplemented

    def __sub__(self, other: Section) -> Section:
        """This section where the other one is not."""
        return _made("minus", self, other) if isinstance(other, Section) else NotImplemented

    def properties(
        self, *, dx: Number = 0.0, dy: Number = 0.0, density: Number | None = None
    ) -> Properties:
        """Returns geometry, bending and plastic values, net of holes.

        dx, dy   shift of the point from which the fibre distances of the elastic moduli are measured,
                 from the centre of gravity [L]
        density  for the mass per metre [kg/m^3]

        >>> beam = Section.profile("IPE300").properties(density=7850)
        >>> round(beam.inertia_x), round(beam.mass_per_metre, 1)
        (83561091, 42.2)
        """
        return self._report(dx=dx, dy=dy, density=density).results(Properties)

    def warping(self, *, tolerance: Number = 1e-4, poisson: Number = 0.0) -> Warping:
        """Returns torsion, warping and shear, solved over the whole section: most of the time.

        tolerance  greatest half width of the bounds, relative, from 1e-9 to 0.1
        poisson    Poisson's ratio, for the shear stiffness areas

        Ctrl-C stops it, and other Python threads run meanwhile.

        >>> torsion = Section.profile("IPE300").warping().torsion_constant
        >>> torsion.bounds[0] < torsion < torsion.bounds[1]
        True
        """
        return self._report(warping=True, tolerance=tolerance, poisson=poisson).results(Warping)

    def class_values(self, *, dx: Number = 0.0, dy: Number = 0.0) -> SectionProperties | PolylineProperties:
        """Returns the outputs of the class `CSectionTools` for the section, of a polyline those of its
        formulas (docs/file-format.md, Class values).

        >>> Section.profile("IPE300").class_values().extra_sum
        0.0
        """
        numbers = self._engine.class_numbers(dx, dy)
        if numbers is not None:
            return properties_of(numbers)
        rows = self._report(class_values=True, dx=dx, dy=dy).engine.class_values()
        values: dict[str, Any] = {row[1]: row[0] for row in rows}
        if "extra_sum" in values:
            return SectionProperties(**values)
        return PolylineProperties(**values)

    @property
    def findings(self) -> tuple[Finding, ...]:
        """What is doubtful about the section, the worst first.

        >>> bow = Section.polygon([(0, 0), (10, 10), (10, 0), (0, 10)])
        >>> bow.findings[0].kind
        'self_crossing'
        """
        return findings_of(self._engine.findings())

    def halves(self, axis: Axis) -> Halves:
        """Returns the halves about the horizontal plastic axis, "x", or the vertical one, "y".

        >>> halves = Section.profile("IPE300").halves("x")
        >>> round(halves.axis, 6), round(halves["above"].lever_arm, 3)
        (150.0, 116.769)
        """
        return halves_of(self._report(**PLAIN).engine, axis)

    def stress(
        self, *, N: Number = 0.0, Mx: Number = 0.0, My: Number = 0.0, Vx: Number = 0.0,
        Vy: Number = 0.0, T: Number = 0.0, tolerance: Number = 1e-4, poisson: Number = 0.0,
    ) -> Stresses:
        """Returns the stresses under forces, in a unit F of your choice; stresses are in F / L^2.

        N       along the axis, at the centre of gravity, positive in tension [F]
        Mx, My  put what is above, to the right of, the centre of gravity in tension [F L]
        Vx, Vy  shear through the shear centre [F]
        T       torque about the shear centre, counter-clockwise [F L]

        >>> peak = Section.shape("plate", width=10, height=60).stress(N=6000, Mx=6e5).max.normal
        >>> round(peak.value, 6), peak.place[1]
        (110.0, 60.0)
        """
        forces = (N, Mx, My, Vx, Vy, T)
        report = self._report(forces=forces, tolerance=tolerance, poisson=poisson)
        return Stresses(report.engine, self)

    @property
    def published(self) -> dict[str, float]:
        """What the catalogue publishes of a profile, by key; empty for all else.

        >>> Section.profile("UPE200").published["area"]
        2900.0
        """
        return {row[1]: row[0] for row in self._report(**PLAIN).engine.published() if row[0] is not None}

    def to_json(self) -> str:
        """Returns everything that is known, as `halvorn-section --json` prints it."""
        return self._report(**SOLVED).engine.json()

    def to_dict(self) -> dict[str, Any]:
        """Returns the same as a dictionary."""
        found: dict[str, Any] = json.loads(self.to_json())
        return found

    def to_markdown(self) -> str:
        """Returns the values as two tables in Markdown."""
        return f"{self.properties().to_markdown()}\n{self.warping().to_markdown()}"

    def table(self) -> str:
        """Returns the table that `halvorn-section` prints."""
        return self._report(**SOLVED).engine.table()

    def __repr__(self) -> str:
        name = f" {self.name!r}" if self.name else ""
        return f"<Section{name} in {self.unit}>"

    def __reduce__(self) -> tuple[Any, ...]:
        return _made_again, (_steps_of(self),)

    def __copy__(self) -> Section:
        return self

    def __deepcopy__(self, memo: dict[int, Any]) -> Section:
        return self

    def _report(self, **options: object) -> _Report:
        """What is known with these options, which is computed once."""
        key = tuple(sorted(options.items()))
        try:
            found = self._reports.get(key)
        except TypeError:  # no number, which the engine's reader says
            found, key = None, ()
        if found is None or not _is_plain(options.values()):
            found = _Report(self._engine.evaluate(options))
            for row in found.engine.findings():
                if row[0] in ("error", "warning"):
                    warnings.warn(str(Finding(*row)), SectionWarning, stacklevel=3)
            if len(self._reports) >= _KEPT_REPORTS:
                self._reports.clear()
            if key or not options:
                self._reports[key] = found
        return found


if Section.shape.__doc__:  # what the engine draws, for help()
    _before, _example, _after = Section.shape.__doc__.partition("        >>> ")
    vars(Section)["shape"].__func__.__doc__ = (
        _before + textwrap.indent(_building.dimensions_listed(), "        ") + "\n\n" + _example + _after)


def _reading(unit: object, chord_tolerance: object, join_tolerance: object,
             layers: Iterable[str], catalogue: object) -> dict[str, object]:
    if isinstance(layers, str) or not isinstance(layers, Iterable):
        raise TypeError(f"layers: expected a list of names, got {layers!r}")
    if catalogue is not None and not isinstance(catalogue, Catalogue):
        raise TypeError(f"catalogue: expected a Catalogue, got {catalogue!r}")
    return {"unit": unit, "chord_tolerance": chord_tolerance, "join_tolerance": join_tolerance,
            "layers": tuple(layers), "catalogue": catalogue}


def _is_plain(options: Iterable[object]) -> bool:
    """Whether no option carries a unit, which the engine's reader compares with that of the section."""
    return not any(isinstance(each, Quantity) or isinstance(each, tuple) and not _is_plain(each)
                   for each in options)


def _engine_argument(argument: object) -> object:
    if isinstance(argument, (Section, Catalogue)):
        return argument._engine
    if isinstance(argument, dict):
        return {key: _engine_argument(value) for key, value in argument.items()}
    return argument


# Of a section that is made again from its outlines: those of the caller may change.
_POLYGON = ("polygon",)


def _made(step: str, *arguments: object) -> Section:
    """A section by one step, of this package's building or the engine's, and its arguments."""
    makers: Any = _building if step in ("polygon", "rings", "shape", "wall") else EngineSection
    engine = getattr(makers, step)(*map(_engine_argument, arguments))
    return _handle_of(engine, _POLYGON if step == "polygon" else (step, *arguments))


class _Earlier(NamedTuple):
    """In the steps of a pickle: the section that an earlier one makes."""

    step: int


def _steps_of(section: Section) -> list[tuple[Any, ...]]:
    """The steps that make a section, each after those of its arguments: as long as its history is,
    and never nested."""
    steps: list[tuple[Any, ...]] = []
    numbers: dict[int, int] = {}
    waiting = [section]
    while waiting:
        made_by = waiting[-1]._made_by
        before = [each for each in made_by if isinstance(each, Section) and id(each) not in numbers]
        if before:
            waiting += before
            continue
        done = waiting.pop()
        if id(done) in numbers:
            continue
        if made_by is _POLYGON:
            (points, _), *holes = done._engine.contours()
            made_by = ("polygon", points, [hole for hole, _ in holes], done.unit, done.name)
        numbers[id(done)] = len(steps)
        steps.append(tuple(_Earlier(numbers[id(each)]) if isinstance(each, Section) else each
                           for each in made_by))
    return steps


def _made_again(steps: Iterable[tuple[Any, ...]]) -> Section:
    """The section of the last step."""
    made: list[Section] = []
    for step in steps:
        made.append(_made(*(made[each.step] if isinstance(each, _Earlier) else each for each in step)))
    return made[-1]


_new = object.__new__
_set_engine, _set_made_by, _set_reports = (
    vars(Section)[name].__set__ for name in ("_engine", "_made_by", "_reports"))


def _handle_of(engine: EngineSection, made_by: tuple[Any, ...]) -> Section:
    made = _new(Section)
    _set_engine(made, engine)
    _set_made_by(made, made_by)
    _set_reports(made, {})
    return made
