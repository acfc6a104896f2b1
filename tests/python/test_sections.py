"""Sections, polylines, batches and threads against closed forms and against each other."""

import copy
import dataclasses
import doctest
import importlib
import math
import pathlib
import pickle
import pkgutil
import subprocess
import sys
import threading
import time
import warnings
from fractions import Fraction

import numpy as np
import pytest

import halvorn_section_tools
from halvorn_section_tools import (
    CSectionTools, ContourSection, LostDigitsWarning, SectionProperties, _core, compute_batch)

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CHANNEL = [(0, 0), (80, 0), (80, 12), (8, 12), (8, 188), (80, 188), (80, 200), (0, 200)]
SQUARE = [(0, 0), (100, 0), (100, 100), (0, 100)]
HOLE = [(5, 5), (5, 95), (95, 95), (95, 5)]


def ring(count, radius=1000.0):
    turn = np.linspace(0.0, 2.0 * np.pi, count, endpoint=False)
    return radius * np.column_stack([np.cos(turn), np.sin(turn)])


def holds(found, **wanted):
    for name, value in wanted.items():
        assert getattr(found, name) == pytest.approx(value, rel=1e-12, abs=1e-8), name


def test_channel_has_the_values_of_hand_calculation():
    h, b, web, flange = 200, 80, 8, 12
    inner = h - 2 * flange
    area = 2 * b * flange + inner * web
    x = (2 * b * flange * b / 2 + inner * web * web / 2) / area
    inertia_x = b * h**3 / 12 - (b - web) * inner**3 / 12
    inertia_y = (2 * flange * b**3 + inner * web**3) / 3 - area * x**2
    axis = b - area / 2 / (2 * flange)  # halves the area, just right of the web
    plastic_y = flange * (b - axis)**2 + flange * axis**2 + inner * web * (axis - web / 2)
    for points in (CHANNEL, CHANNEL[::-1]):
        holds(ContourSection().add(points).properties(), area=area, centroid_x=x, centroid_y=h / 2,
              inertia_x=inertia_x, inertia_y=inertia_y, inertia_xy=0,
              elastic_modulus_bottom=inertia_x / (h / 2), elastic_modulus_top=inertia_x / (h / 2),
              elastic_modulus_left=inertia_y / x, elastic_modulus_right=inertia_y / (b - x),
              plastic_modulus_x=b * flange * (h - flange) + web * inner**2 / 4,
              plastic_modulus_y=plastic_y, extra_sum=0)


def test_holes_and_profiles_add_up():
    tube = ContourSection().add(SQUARE).add(HOLE, solid=False)
    holds(tube.properties(), area=1900, centroid_x=50, inertia_x=(100**4 - 90**4) / 12,
          plastic_modulus_x=100**3 / 4)
    given = dict(centroid=(50, 50), area=7, inertia_1=11, inertia_2=13, shear_area_1=17,
                 shear_area_2=19, torsion_constant=23, torsion_modulus=29, extra=31)
    for angle, inertias in ((0, (11, 13)), (math.pi / 2, (13, 11)), (math.pi / 4, (12, 12))):
        holds(ContourSection().add_profile(SQUARE, **given, angle_radians=angle).properties(),
              area=7, centroid_x=50, inertia_x=inertias[0], inertia_y=inertias[1],
              torsion_constant=23, torsion_modulus=29, extra_sum=31)
    holds(ContourSection().add_profile(SQUARE, **given).properties(), shear_area_1=17, shear_area_2=19)
    both = ContourSection().add(SQUARE).add_profile(HOLE, **given, solid=False).properties()
    holds(both, area=10000 - 7, centroid_x=50, extra_sum=31)


def test_polylines_follow_their_formulas():
    wall = ContourSection.polyline([(0, 0), (100, 0), (100, 60), (0, 60)], "closed_wall", thickness=4)
    middle = (104 * 64 + 96 * 56) / 2
    holds(wall, area=104 * 64 - 96 * 56, centroid_x=50, centroid_y=30, shear_area_x=640,
          torsion_constant=4 * middle**2 * 4 / (2 * (104 + 64)), torsion_modulus=2 * 4 * middle)
    tube = ContourSection.polyline(ring(64), "closed_wall", thickness=4, torsion="tube")
    assert tube.torsion_constant == pytest.approx(2 * math.pi * 1000**3 * 4, rel=0.02)
    solid, contour = ContourSection.polyline(CHANNEL), ContourSection().add(CHANNEL).properties()
    holds(solid, area=contour.area, centroid_x=contour.centroid_x,
          inertia_x_origin=contour.inertia_x + contour.area * 100**2,
          torsion_constant=contour.torsion_constant)
    bent = ContourSection.polyline([(0, 0), (80, 0), (80, 60)], "open_wall", thickness=4, radii=[0, 6, 0])
    holds(bent, area=560)


@pytest.mark.parametrize("convert", [
    tuple, list, lambda points: [list(point) for point in points], np.array,
    lambda points: np.array(points, np.float32), lambda points: np.array(points, np.uint8),
    lambda points: np.asfortranarray(points), lambda points: np.array(points[::-1])[::-1],
    lambda points: np.repeat(points, 2, axis=1)[:, ::2], iter, lambda points: np.array(points, object),
    lambda points: np.array(points, ">f8"), lambda points: [iter(point) for point in points]])
def test_points_may_come_in_any_form(convert):
    assert ContourSection().add(convert(CHANNEL)).properties() == ContourSection().add(CHANNEL).properties()


def test_what_is_not_computed_is_none_and_results_are_frozen():
    section = ContourSection().add(CHANNEL)
    stopped, whole = section.properties(dy=-100), section.properties()
    missing = {name for name, value in dataclasses.asdict(stopped).items() if value is None}
    assert missing == {name for name in _core.VALUE_NAMES if "elastic" in name or "plastic" in name
                       or name == "extra_sum"}
    assert str(stopped).count("not computed") == 7 and "area " in str(stopped)
    assert stopped.area == whole.area and len(dataclasses.fields(whole)) == 17
    assert tuple(field.name for field in dataclasses.fields(SectionProperties)) == _core.VALUE_NAMES
    holds(section.properties(dx=1, dy=3),
          elastic_modulus_bottom=whole.inertia_x / 103, elastic_modulus_top=whole.inertia_x / 97,
          elastic_modulus_left=whole.inertia_y / (whole.centroid_x + 1))
    with pytest.raises(dataclasses.FrozenInstanceError):
        whole.area = 1.0


def test_the_class_gives_what_the_library_writes():
    tools, area = CSectionTools(), ContourSection().add(CHANNEL).properties()
    tools.PushContour(CHANNEL, 1)
    values = tools.GetCalculValues()
    assert (values.xG, values.yG) == tools.GetCDG() and values.ixx == tools.GetIxx()
    assert (values.wplx, values.wply) == tools.ComputeWplasticValues()
    assert (values.inertiaX, values.welBottom, values.welRight) == (
        area.inertia_x, area.elastic_modulus_bottom, area.elastic_modulus_right)
    stopped = tools.GetCalculValues(dy=-100)
    assert stopped[10:] == (0.0, 0.0, 0.0, 0.0, None, None, None)
    twin = copy.copy(tools)
    twin.PushContour(HOLE, 0)
    assert tools.GetCalculValues() == values and twin.GetCalculValues().area == values.area - 8100
    assert CSectionTools.GetTol3D() == 1e-8
    CSectionTools.SetTol3D(1e-7)
    assert tools.GetTol3D() == 1e-7
    CSectionTools.SetTol3D(1e-8)
    ell = CSectionTools.CalculContourQuelconqueTOOL(1, 1, 1, 4, CHANNEL[:3], [0, 0, 0])
    assert ell.area == pytest.approx(92 * 4) and ell.cdg[0] > 40
    standard = CSectionTools()
    standard.PushContourStandard(SQUARE, 0.0, *range(2, 14), 0.5, 1)
    values = standard.GetCalculValues()
    assert (*values[:8], values.wt, values.extraSum) == (7, 2, 3, 4, 6, 5, 8, 9, 11, 0.5)


def exact_values(points):
    """Inertias about x, y and their product about the centre of gravity, in rational numbers."""
    sums = np.zeros(6, object)
    points = [(Fraction(x), Fraction(y)) for x, y in points]
    for (x, y), (u, v) in zip(points, points[1:] + points[:1]):
        terms = (1, (x + u) / 3, (y + v) / 3, (y * y + y * v + v * v) / 6, (x * x + x * u + u * u) / 6,
                 (x * v + 2 * x * y + 2 * u * v + u * y) / 12)
        sums = sums + (x * v - u * y) / 2 * np.array(terms, object)
    area, x, y, inertia_x, inertia_y, product = sums
    return [inertia_x - y * y / area, inertia_y - x * x / area, product - x * y / area]


def test_a_digit_is_left_of_every_inertia_and_only_rounding_is_zero_and_lost_ones_are_told():
    random, raised = np.random.default_rng(3), 0
    for case in range(400):
        star = ring(random.integers(3, 20), 1.0) * random.uniform(0.3, 1.0, (1, 2))
        if case % 2:
            star *= (1.0, 10.0 ** random.uniform(-6, 0))
        points = star + random.choice([0.0, 1.0, -1.0], 2) * 10.0 ** random.uniform(0, 8, 2)
        exact = [float(value) for value in exact_values(points)]
        size = np.ptp(points, axis=0)
        arms = np.abs(points).max(axis=0) + size
        # docs/theory.md, with the distance in each direction.
        bound_x, bound_y, bound_xy = (
            16 * 2.0**-53 * np.prod(size) * arms2 for arms2 in (arms[1]**2, arms[0]**2, np.prod(arms)))
        try:
            with warnings.catch_warnings(record=True) as caught:
                warnings.simplefilter("always")
                found = ContourSection().add(points).properties()
        except ValueError as error:
            assert "rounding leaves no digit" in str(error)
            raised += 1
            assert exact[0] < bound_x or exact[1] < bound_y, "a digit was left"
            continue
        assert abs(found.inertia_x - exact[0]) < 0.5 * exact[0], "no digit is left"
        assert abs(found.inertia_y - exact[1]) < 0.5 * exact[1], "no digit is left"
        assert abs(found.inertia_xy - exact[2]) <= bound_xy
        lost = max(abs(found.inertia_x / exact[0] - 1), abs(found.inertia_y / exact[1] - 1))
        assert len(caught) == 1 if lost > 1e-7 else len(caught) <= 1, "digits go without a word"
        assert not caught or max(bound_x / exact[0], bound_y / exact[1]) > 1e-7, "nothing is lost"
    assert 40 < raised < 300


def test_rounding_is_zero_in_every_output():
    given = dict(centroid=(0, 0), area=7, inertia_1=1e9, inertia_2=0, shear_area_1=1, shear_area_2=1,
                 torsion_constant=1, torsion_modulus=1, angle_radians=math.pi / 2)
    tube = ring(24)
    channel = ContourSection().add(CHANNEL)
    batch = compute_batch(CHANNEL, [0, 8], [1], [0, 1])
    assert (channel.properties().inertia_xy, batch["inertia_xy"][0]) == (0.0, 0.0)
    assert "inertia_xy              0\n" in str(channel.properties())
    round_bar = ContourSection().add(tube).properties()
    profile = ContourSection().add_profile(np.subtract(HOLE, 50), **given).properties()
    assert (round_bar.centroid_x, round_bar.centroid_y, round_bar.inertia_xy) == (0.0, 0.0, 0.0)
    assert (profile.inertia_x, profile.inertia_y, profile.inertia_xy) == (0.0, 1e9, 0.0)
    assert profile.elastic_modulus_top == 0.0
    bar = np.array([(-70, -50), (70, 50), (70, 50.0001), (-70, -49.9999)])
    cross = ContourSection().add(bar).add(np.roll(bar * (-1, 1), 1, axis=0)).properties()
    assert (cross.centroid_x, cross.inertia_xy) == (0.0, 0.0)
    far = compute_batch(np.add(CHANNEL, (0, 1e10)), [0, 8], [1], [0, 1])
    lost = {"inertia_x", "inertia_xy", "elastic_modulus_bottom", "elastic_modulus_top"}
    assert {name for name in far.names if np.isnan(far[name][0])} == lost
    for line in (ContourSection.polyline(tube), ContourSection.polyline(tube, "closed_wall", thickness=9)):
        assert (line.centroid_x, line.centroid_y, line.inertia_xy_origin) == (0.0, 0.0, 0.0)
    # What is small and not rounding stays: a corner moved by 1e-9 and a wall by 1e-9.
    moved = ContourSection().add([*SQUARE[:2], (100, 100 + 1e-9), SQUARE[3]]).properties()
    assert moved.inertia_xy == pytest.approx(1e-9 * 100**3 / 24, rel=1e-3)
    wall = ContourSection.polyline([(-50, 1e-9), (50, 1e-9)], "open_wall", thickness=2)
    assert wall.centroid_y == pytest.approx(1e-9, rel=1e-3)


class Named(ContourSection):
    """At the top of the module, so that it can be pickled."""


def test_sections_are_copied_and_pickled_and_the_class_refuses():
    section = Named().add(SQUARE).add(HOLE, solid=np.bool_(False))
    section.name = ["girder"]
    before = section.properties()
    for twin in (copy.copy(section), copy.deepcopy(section), pickle.loads(pickle.dumps(section))):
        assert twin.properties() == before and repr(twin) == repr(section) and twin.name == ["girder"]
        twin.add(CHANNEL)
    assert section.properties() == before
    with pytest.raises(TypeError, match="cannot be pickled.*pickle a ContourSection"):
        pickle.dumps(CSectionTools())


def random_batch(sections, seed=7):
    """Stars of 3 to 40 points and holes, with a section of no area among them."""
    random = np.random.default_rng(seed)
    contours = [[ring(random.integers(3, 41), 50) * random.uniform(0.5, 1.0, (1, 2))
                 + random.uniform(-9, 9, 2) for _ in range(random.integers(1, 5))]
                for _ in range(sections)]
    contours[sections // 2] = [np.array([(0, 0), (1, 1), (2, 2)])]
    flat = [contour for section in contours for contour in section]
    offsets = [np.cumsum([0, *map(len, items)]) for items in (flat, contours)]
    return contours, (np.concatenate(flat), offsets[0], random.integers(0, 2, len(flat)), offsets[1])


def test_a_batch_has_the_bits_of_a_loop_with_any_number_of_threads():
    contours, (points, offsets, flags, sections) = random_batch(200)
    dx = np.linspace(-5, 5, 200)
    loop = []
    for i, items in enumerate(contours):
        section = ContourSection()
        for contour, flag in zip(items, flags[sections[i]:]):
            section.add(contour, bool(flag))
        try:
            loop.append(dataclasses.astuple(section.properties(dx[i], 1.5)))
        except ValueError:
            loop.append([None] * 17)
    loop = np.array(loop, float)
    assert np.isnan(loop[100]).all() and 40 < np.isfinite(loop[:, 0]).sum() < 160
    for threads in (0, 1, 2, 7, 500):
        batch = compute_batch(points, offsets, flags, sections, dx, np.float32(1.5), threads)
        assert np.array_equal(batch.values, loop, equal_nan=True)
        assert len(batch) == 200 and np.shares_memory(batch["area"], batch.values)
    assert np.array_equal(batch["inertia_xy"], loop[:, 5], equal_nan=True)


def long_calls():
    """Calls of some milliseconds, with all that NumPy does for them done before."""
    large, holder, tools = ring(500_000), ContourSection().add(ring(500_000)), CSectionTools()
    small, parts, flags = np.tile(ring(100), (1000, 1)), np.arange(0, 100_001, 100), np.ones(1000, int)
    line, radii, sections = ring(30_000), np.ones(30_000), np.arange(1001)
    return {"batch": lambda: _core.batch_values(small, parts, flags, sections, 0, 0, 1),
            "push": lambda: CSectionTools().PushContour(large, 1),
            "properties": holder.properties, "copy": lambda: copy.copy(holder),
            "moduli": lambda whole=holder._tools: whole.ComputeWplasticValues(),
            "polyline": lambda: tools.CalculContourQuelconqueTOOL(1, 0, 1, 1, line, radii)}


@pytest.mark.parametrize("name", long_calls())
def test_long_calls_let_other_threads_run(name):
    """No thread is made to give way here: the other one runs only while the call lets it."""
    call, passes, stop, interval = long_calls()[name], [], threading.Event(), sys.getswitchinterval()

    def work():
        while not stop.is_set():
            passes.append(None)
            time.sleep(1e-4)

    other = threading.Thread(target=work)
    sys.setswitchinterval(60)
    try:
        other.start()
        progress, deadline = 0, time.monotonic() + 30
        while progress == 0 and time.monotonic() < deadline:
            before = len(passes)
            call()
            progress = len(passes) - before
    finally:
        sys.setswitchinterval(interval)
        stop.set()
        other.join()
    assert progress > 0


def test_threads_share_a_section():
    section, tools, small, large = ContourSection(), CSectionTools(), np.array(SQUARE), ring(1500, 100.0) // 1
    area = ContourSection().add(large).properties().area

    def work():
        for _ in range(25):
            section.add(small).add(large).properties()
            copy.copy(section)
            for _ in range(5):
                tools.PushContour(large, 1)
            tools.GetCalculValues()

    threads = [threading.Thread(target=work, daemon=True) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join(200)
        assert not thread.is_alive(), "waits for ever"
    assert section.properties().area == 100 * (10000 + area)
    assert tools.GetCalculValues().area == 500 * area


def test_calls_on_one_section_follow_each_other():
    tools, started = CSectionTools(), threading.Event()
    tools.PushContour(ring(2_000_000), 1)

    def work():
        started.set()
        tools.ComputeWplasticValues()

    for _ in range(10):
        started.clear()
        other, begin = threading.Thread(target=work), time.perf_counter()
        other.start()
        started.wait()
        time.sleep(2e-3)
        ready = time.perf_counter()
        tools.GetIxx()
        waited = time.perf_counter() - ready
        other.join()
        if waited > 0.5 * (time.perf_counter() - begin):
            return
    pytest.fail("GetIxx never waited for the moduli")


def test_exhausted_memory_is_a_memory_error_and_leaves_the_section_usable():
    code = """if True:
        import resource, numpy as np
        from halvorn_section_tools import ContourSection
        section, points = ContourSection().add([(0, 0), (3, 0), (3, 2), (0, 2)]), np.ones((8_000_000, 2))
        used = int(open("/proc/self/statm").read().split()[0]) * resource.getpagesize()
        resource.setrlimit(resource.RLIMIT_AS, (used + 2**26, used + 2**26))
        try:
            section.add(points)
        except MemoryError:
            print(section.add([(0, 0), (1, 0), (0, 2)]).properties().area)"""
    assert subprocess.check_output([sys.executable, "-c", code], text=True) == "7.0\n"


def test_plot_draws_on_axes(monkeypatch):
    matplotlib = pytest.importorskip("matplotlib", reason="Matplotlib is not installed")
    matplotlib.use("Agg")
    hollow = ContourSection().add(HOLE, solid=False).add(SQUARE).plot()
    assert [patch.get_facecolor()[0] for patch in hollow.patches] == [0.85, 1.0], "the hole is above"
    with pytest.raises(TypeError, match="expected Matplotlib axes, got 'x'"):
        ContourSection().add(SQUARE).plot("x")
    keyhole = ContourSection().add([*SQUARE, (0, 0), *HOLE, (5, 5)])
    axes = keyhole.plot()
    assert isinstance(axes, matplotlib.axes.Axes) and keyhole.plot(axes) is axes
    assert len(axes.collections[0].get_segments()) == 8  # without the bridge
    assert [line.get_ydata()[0] for line in axes.lines[:1]] == [pytest.approx(50)]
    angle = ContourSection().add([(0, 0), (60, 0), (60, 10), (10, 10), (10, 60), (0, 60)]).plot()
    (x0, x1), (y0, y1) = angle.lines[2].get_data()
    assert (y1 - y0) / (x1 - x0) == pytest.approx(1), "axis 1 of equal legs is at 45 degrees"
    angle.figure.canvas.draw()
    monkeypatch.setitem(sys.modules, "matplotlib.patches", None)
    with pytest.raises(ImportError, match="plot.. needs Matplotlib"):
        keyhole.plot()


MODULES = sorted(each.name for each in pkgutil.iter_modules(halvorn_section_tools.__path__))


@pytest.mark.parametrize("name", ["", *MODULES])
def test_docstrings_are_true(name):
    """Of every module: each line that begins an example in its source is one that runs."""
    if name in ("_section", "_shown"):
        pytest.importorskip("shapely", reason="Shapely is not installed")
    if name in ("_shown", "_stresses"):
        pytest.importorskip("matplotlib", reason="Matplotlib is not installed")
    module = importlib.import_module(f"halvorn_section_tools.{name}".rstrip("."))
    failed, attempted = doctest.testmod(module)
    written = pathlib.Path(module.__file__).read_text(errors="replace").count("\n    >>> ") if name != "_core" else 0
    assert failed == 0 and attempted >= written and len(MODULES) > 10


@pytest.mark.parametrize("document", ["README.md", "docs/python.md"])
def test_documents_are_true(document, monkeypatch):
    """Blocks of >>> lines; a fence ends them as an empty line does."""
    for name in ("matplotlib", "shapely"):
        pytest.importorskip(name, reason=f"{name} is not installed")
    monkeypatch.chdir(SOURCE)
    text = (SOURCE / document).read_text().replace("```", "\n")
    test = doctest.DocTestParser().get_doctest(text, {}, document, document, 0)
    result = doctest.DocTestRunner(optionflags=doctest.ELLIPSIS).run(test)
    assert result.attempted > 0 and result.failed == 0
