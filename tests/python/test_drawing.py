"""Polygons, Shapely, stresses at points and drawings, against closed forms and Shapely's own geometry."""

import doctest
import os
import sys

import numpy as np
import pytest

from halvorn_section_tools import InputError, Section, _drawing, _shown, _stresses

geometry = pytest.importorskip("shapely.geometry", reason="Shapely is not installed")
matplotlib = pytest.importorskip("matplotlib", reason="Matplotlib is not installed")
matplotlib.use("Agg")
from matplotlib import pyplot  # noqa: E402
from shapely import affinity  # noqa: E402
from shapely.ops import unary_union  # noqa: E402

box, Polygon, MultiPolygon = geometry.box, geometry.Polygon, geometry.MultiPolygon


@pytest.fixture(autouse=True)
def closed_figures():
    yield
    pyplot.close("all")


def plate(width, height):
    return Section.shape("plate", width=width, height=height)


TUBE = Section.shape("rhs", height=100, width=60, thickness=5, outer_radius=0)
RING = box(0, 0, 100, 100) - box(20, 20, 80, 80)
SHAPES = {
    "hole": RING,
    "island": MultiPolygon([RING, box(40, 40, 60, 60)]),
    "apart": MultiPolygon([box(0, 0, 10, 10), box(11, 0, 20, 5)]),
    "corner": MultiPolygon([box(0, 0, 10, 10), box(10, 10, 20, 15)]),
    "hole at the outline": Polygon(box(0, 0, 30, 30).exterior, [[(15, 0), (20, 10), (10, 10)]]),
    "holes at each other": box(0, 0, 30, 30) - box(5, 5, 15, 15) - box(15, 15, 25, 25),
    "collection": geometry.GeometryCollection([box(0, 0, 3, 4), MultiPolygon([box(5, 0, 6, 1)])]),
    "disc": geometry.Point(3, 4).buffer(50),
}


@pytest.mark.filterwarnings("ignore:.*hangs together in one point only")
@pytest.mark.parametrize("name", SHAPES)
def test_shapely_comes_and_goes(name):
    shape = SHAPES[name]
    area = sum(polygon.area for polygon in getattr(shape, "geoms", [shape]))
    turn = 90 if name == "hole at the outline" else 30  # rounding would take its point off the edge
    for drawn, unit in ((shape, "mm"), (affinity.scale(shape, 1e-3, -1e-3, origin=(0, 0)), "m"),
                        (affinity.translate(shape, -4e6, 3e6), "mm"), (affinity.rotate(shape, turn), "in")):
        section = Section.from_shapely(drawn, unit=unit)
        back = section.to_shapely()
        values, again = section.properties(), Section.from_shapely(back, unit=unit).properties()
        assert back.is_valid and section.unit == unit
        assert back.symmetric_difference(drawn.buffer(0)).area <= 1e-9 * back.area
        assert values.area == pytest.approx(area * (1e-6 if unit == "m" else 1), rel=1e-9)
        assert (values.centroid_x, values.centroid_y) == pytest.approx(back.centroid.coords[0], rel=1e-9)
        for key in ("inertia_x", "inertia_y", "plastic_modulus_x", "perimeter"):
            assert getattr(again, key) == pytest.approx(getattr(values, key), rel=1e-9), key
    flat = geometry.polygon.orient(RING)
    lifted = Polygon([(*p, 7) for p in flat.exterior.coords], [[(*p, 7) for p in flat.interiors[0].coords]])
    assert Section.from_shapely(lifted, name="lifted").to_shapely().equals(flat)


def test_material_is_what_shapely_makes_of_the_same_boxes():
    random = np.random.default_rng(7)
    for _ in range(40):
        section, union = plate(1, 1), box(0, 0, 1, 1)
        for x, y, width, height, isCut in random.integers((0, 0, 1, 1, 0), (8, 8, 6, 6, 2), (7, 5)).tolist():
            piece, other = plate(width, height).moved(x, y), box(x, y, x + width, y + height)
            if isCut and union.intersection(other).area == other.area:  # else it takes what is not there
                section, union = section - piece, union - other
            elif union.intersection(other).area == 0:
                section, union = section + piece, unary_union([union, other])
        made = section.to_shapely()
        assert made.is_valid and made.equals(union), (made.wkt, union.wkt)
        assert len(section.material) == len(getattr(union, "geoms", [union]))
        assert sum(len(piece.holes) for piece in section.material) == sum(
            len(polygon.interiors) for polygon in getattr(union, "geoms", [union]))
    assert (plate(2, 2) - plate(2, 2)).to_shapely().is_empty


BAR = plate(20, 60).moved(3, -5)
LINE = geometry.LineString([(0, 0), (9, 9)])


@pytest.mark.parametrize("call, kind, message", [
    (lambda: Section.from_shapely(LINE), ValueError, "geometry: a LineString has no area; pass a Polygon, such as"),
    (lambda: Section.from_shapely(RING.exterior), ValueError, "geometry: a LinearRing encloses nothing by itself; "),
    (lambda: Section.from_shapely(geometry.GeometryCollection([RING, LINE])), ValueError,
     "geometry.geoms[1]: a LineString has no area; keep its polygons alone"),
    (lambda: Section.from_shapely(Polygon()), ValueError, "geometry: is empty; pass one"),
    (lambda: Section.from_shapely(Polygon([(0, 0), (9, 9), (9, 0), (0, 9)])), ValueError,
     "geometry: the Polygon is not valid: Self-intersection[4.5 4.5]; shapely.validation.make_valid"),
    (lambda: Section.from_shapely(MultiPolygon([RING, box(0, 0, 9, 9)])), ValueError, "the MultiPolygon is not valid"),
    (lambda: Section.from_shapely(Polygon([(0, 0, 0), (9, 0, 0), (0, 9, 1)])), ValueError,
     "geometry: z is not the same everywhere, a section is plane; drop it"),
    (lambda: Section.from_shapely([(0, 0), (9, 0), (0, 9)]), TypeError, "geometry: expected a Polygon or MultiPolygon"),
    (lambda: Section.from_shapely(RING, unit="ft"), ValueError, 'unit: unknown value "ft"'),
    (lambda: BAR.stress(N=1).at((1, 2)), ValueError, "points: expected points of shape (n, 2), got shape (2,)"),
    (lambda: BAR.stress(N=1).at([(1, float("nan"))]), ValueError, "points[0]: y is nan"),
    (lambda: BAR.stress(N=1).plot("sigma"), ValueError, "kind: expected one of 'normal', 'shear', 'von_mises', got"),
    (lambda: BAR.stress(N=1).plot("normal", "ax"), TypeError, "ax: expected Matplotlib axes, got 'ax'"),
    (lambda: BAR.plot_halves("z"), ValueError, "axis: expected one of 'x', 'y', got 'z'"),
    (lambda: BAR.plot_stress(Vx="1"), TypeError, "Vx: expected a number, got '1'"),
    (lambda: (BAR + BAR.moved(99)).stress(N=1).mesh, InputError, "there are no stresses: "),
])
def test_mistakes_name_argument_and_mend(call, kind, message):
    with pytest.raises(kind) as caught:
        call()
    assert message in str(caught.value) and "\n" not in str(caught.value)


def test_stresses_at_points_are_those_of_beams_and_sum_to_the_forces():
    forces = dict(N=9e3, Mx=8e5, My=-3e5, Vx=2e3, Vy=-5e3)
    stress = BAR.stress(**forces)
    at = np.array([(13, 25), (3, -5), (23, 55), (15, 40), (8.5, 0), (23.01, 25), (13, -5.1)])
    x, y = (at - (13, 25)).T
    found, inside = stress.at(at), np.arange(7) < 5
    normal = 9e3 / 1200 + 8e5 * y / (20 * 60**3 / 12) - 3e5 * x / (60 * 20**3 / 12)
    assert found.normal[inside] == pytest.approx(normal[inside], rel=1e-9)
    assert found.shear_y[inside] == pytest.approx(-1.5 * 5e3 / 1200 * (1 - (y[inside] / 30)**2), abs=0.02)
    assert found.shear_x[inside] == pytest.approx(1.5 * 2e3 / 1200 * (1 - (x[inside] / 10)**2), abs=0.02)
    assert found.von_mises == pytest.approx(np.sqrt(found.normal**2 + 3 * found.shear**2), nan_ok=True)
    for array in (found.normal, found.shear_x, found.shear_y, found.shear, found.von_mises):
        assert np.isnan(array).tolist() == [False] * 5 + [True] * 2
    assert stress.at(np.zeros((0, 2))).normal.shape == (0,)
    mesh = stress.mesh
    assert stress.mesh is mesh and not mesh.nodes.flags.writeable
    again = stress.at(mesh.nodes)
    for key in ("normal", "shear_x", "shear_y", "von_mises"):
        assert getattr(again, key) == pytest.approx(getattr(mesh, key), rel=1e-6, abs=1e-9), key
    corners = mesh.nodes[mesh.triangles]
    area = 0.5 * np.cross(corners[:, 1] - corners[:, 0], corners[:, 2] - corners[:, 0])
    assert area.min() > 0 and area.sum() == pytest.approx(1200)
    for key, force in (("normal", 9e3), ("shear_x", 2e3), ("shear_y", -5e3)):
        assert area @ getattr(mesh, key)[mesh.triangles].mean(axis=1) == pytest.approx(force, rel=5e-3), key
    disc = Section.shape("round", diameter=80).stress(T=-7e5).at([(40, 40), (60, 40), (40, 10), (25, 40)])
    turning = -7e5 / (np.pi * 40**4 / 2)
    assert disc.shear_x == pytest.approx(turning * np.array([0, 0, 30, 0]), abs=0.01)
    assert disc.shear_y == pytest.approx(turning * np.array([0, 20, 0, -15]), abs=0.01)


def colour(ax, x, y):
    """What is drawn at a place, red, green and blue."""
    ax.figure.canvas.draw()
    pixels = np.asarray(ax.figure.canvas.buffer_rgba())
    column, row = ax.transData.transform((x, y))
    return tuple(pixels[len(pixels) - 1 - round(row), round(column), :3])


def test_drawings_show_material_axes_and_halves():
    _, axes = pyplot.subplots(1, 3)
    ax = TUBE.plot(axes[0], title="a tube", color="red", alpha=0.5, lw=3)
    assert ax is axes[0] and ax.get_title() == "a tube" and ax.get_aspect() == 1 and ax.get_ylabel() == "y [mm]"
    assert ax.patches[0].get_linewidth() == 3 and ax.patches[0].get_edgecolor()[:3] == (0, 0, 0)
    assert colour(ax, 2.5, 70) == (255, 127, 127)
    assert colour(ax, 40, 70) == (255, 255, 255), "the hole is not filled"
    (level, upright, mark), beyond = ax.lines, 10
    assert level.get_ydata() == pytest.approx([50, 50]) and upright.get_xdata() == pytest.approx([30, 30])
    assert level.get_xdata() == pytest.approx([-beyond, 60 + beyond]) and mark.get_xydata()[0] == pytest.approx([30, 50])
    angle = Section.profile("L100x100x10").plot()
    (x0, x1), (y0, y1) = angle.lines[2].get_data()
    assert angle.get_title() == "L100x100x10" and (y1 - y0) / (x1 - x0) == pytest.approx(1), "of equal legs"
    assert not Section.profile("L100x100x10").plot(axes=False).lines
    for name, across, (first, second) in (("x", 1, ((2.5, 90), (2.5, 10))), ("y", 0, ((57, 50), (2.5, 50)))):
        ax = TUBE.plot_halves(name, axes[1 + across], alpha=1)
        tints = [colour(ax, *place) for place in (first, second, (20, 40))]
        assert tints == [(31, 119, 180), (255, 127, 14), (255, 255, 255)]
        halves = TUBE.halves(name)
        assert [line.get_xydata()[0] for line in ax.lines[:2]] == [
            pytest.approx(half.centroid) for half in halves.sides]
        assert ax.lines[2].get_xydata()[:, across] == pytest.approx([halves.axis] * 2)


@pytest.mark.parametrize("kind", ["normal", "shear", "von_mises"])
def test_stress_drawings_end_at_the_largest_stress(kind):
    forces = dict(Mx=5e5, Vy=1e4, T=2e5)
    stress = TUBE.stress(**forces)
    ax = TUBE.plot_stress(kind, cmap="viridis", **forces)
    bar, peak = ax.figure.axes[1], getattr(stress.max, kind)
    filled = ax.collections[0]
    low, high = filled.get_clim()
    assert high == abs(peak.value) and low == (-high if kind == "normal" else 0)
    assert bar.get_ylabel().endswith("stress [F/mm^2]") and ax.texts[0].get_text() == f"{peak.value:.4g}"
    assert ax.lines[0].get_xydata()[0] == pytest.approx(peak.place)
    place = (2.5, 80)
    wanted = 255 * np.array(filled.to_rgba(getattr(stress.at([place]), kind)[0])[:3])
    assert colour(ax, *place) == pytest.approx(wanted, abs=6) and colour(ax, 30, 50) == (255, 255, 255)
    own = stress.plot(kind, pyplot.figure().add_subplot(), title="mine", colorbar=False, vmin=-1, vmax=3)
    assert own.collections[0].get_clim() == (-1, 3) and own.get_title() == "mine" and len(own.figure.axes) == 1
    assert BAR.plot_stress(kind).collections[0].get_clim()[1] == 1, "without forces"


@pytest.mark.parametrize("cairo", [True, False])
def test_figures_are_saved_whole_or_not_at_all(cairo, tmp_path, monkeypatch):
    if cairo and not _drawing.DRAWS_PDF_AND_PNG:
        pytest.skip("this build has no Cairo")
    monkeypatch.setattr(_drawing, "DRAWS_PDF_AND_PNG", cairo)
    for ending, start in (("png", b"\x89PNG"), ("PDF", b"%PDF"), ("svg", b"<svg")):
        for i, save in enumerate((TUBE.save, lambda path: TUBE.save(path, halves="y"), TUBE.stress(Vy=1).save)):
            path = tmp_path / f"{i}.{ending}"
            save(path)
            assert path.read_bytes().startswith(start)
        assert len({(tmp_path / f"{i}.{ending}").read_bytes() for i in range(3)}) == 3
    before = {path: path.read_bytes() for path in tmp_path.iterdir()}
    with pytest.raises(ValueError, match="no/tube.pdf: there is no folder .*no; make it first"):
        TUBE.save(tmp_path / "no" / "tube.pdf")
    with pytest.raises(ValueError, match="tube.jpg: a figure is an .svg, .png or .pdf file"):
        TUBE.save(tmp_path / "tube.jpg")
    (tmp_path / "folder.png").mkdir()
    with pytest.raises(ValueError, match="folder.png: is a folder; name a file"):
        TUBE.save(tmp_path / "folder.png")
    if not cairo:
        monkeypatch.setattr(os, "replace", lambda *_: 1 / 0)
        with pytest.raises(ZeroDivisionError):
            TUBE.save(tmp_path / "0.png")
        monkeypatch.setitem(sys.modules, "matplotlib.figure", None)
        with pytest.raises(ImportError, match="0.png: this build writes .svg files only, and there is no Matplotlib"):
            TUBE.save(tmp_path / "0.png")
    (tmp_path / "folder.png").rmdir()
    assert {path: path.read_bytes() for path in tmp_path.iterdir()} == before, "nothing half-written"


def test_what_is_not_installed_is_named(monkeypatch):
    monkeypatch.setitem(sys.modules, "matplotlib.patches", None)
    monkeypatch.setitem(sys.modules, "shapely.geometry", None)
    for call, package in ((TUBE.plot, "plot.. needs Matplotlib"), (TUBE.plot_halves, "plot_halves.. needs Matplotlib"),
                          (TUBE.plot_stress, "plot.. needs Matplotlib"), (TUBE.to_shapely, "to_shapely.. needs Shapely"),
                          (lambda: Section.from_shapely(RING), "from_shapely.. needs Shapely")):
        with pytest.raises(ImportError, match=f"{package}: apt-get install python3-.*, or pip install "):
            call()


@pytest.mark.parametrize("module", [_shown, _stresses])
def test_docstrings_are_true(module):
    failed, attempted = doctest.testmod(module)
    assert attempted > 0 and failed == 0
