"""Sections of the engine against closed forms, catalogue tables and each other."""

import copy
import dataclasses
import json
import os
import pickle
import pydoc
import signal
import threading
import time
import typing

import numpy as np
import pytest

from halvorn_section_tools import (
    Catalogue, InputError, Properties, Quantity, Section, SectionWarning, Warping, _types, evaluate_batch, profiles)

SQUARE = np.array([(0.0, 0.0), (100.0, 0.0), (100.0, 100.0), (0.0, 100.0)])
HOLE = 0.9 * SQUARE + 5
I = dict(height=300, width=150, web=7, flange=11)


def plate(width, height, **rest):
    return Section.shape("plate", width=width, height=height, **rest)


def holds(found, **wanted):
    for name, value in wanted.items():
        assert getattr(found, name) == pytest.approx(value, rel=1e-9, abs=1e-9), name


def test_built_up_girder_has_the_values_of_hand_calculation():
    girder = Section.shape("i", **I).with_on_top(plate(90, 20))
    area = 2 * 150 * 11 + 278 * 7 + 1800
    # The halving line lies in the web: above it the plate, the flange and so much web.
    web = (area / 2 - 1800 - 1650) / 7
    axis = 289 - web
    modulus = (1800 * (310 - axis) + 1650 * (294.5 - axis) + 7 * web**2 / 2
               + 1650 * (axis - 5.5) + 7 * (axis - 11)**2 / 2)
    centroid = (5246 * 150 + 1800 * 310) / area
    inertia = (150 * 300**3 - 143 * 278**3) / 12 + 5246 * (centroid - 150)**2 \
        + 90 * 20**3 / 12 + 1800 * (310 - centroid)**2
    for section in (girder, girder.moved(1e3, -2e3).moved(-1e3, 2e3), girder.mirrored("y").mirrored("y"),
                    girder.turned(270).turned(90), plate(90, 20).with_below(Section.shape("i", **I)).moved(
                        30, 300), pickle.loads(pickle.dumps(girder)), copy.deepcopy(girder)):
        holds(section.properties(), area=area, centroid_y=centroid, inertia_x=inertia, centroid_x=75,
              plastic_axis_y=axis, plastic_modulus_x=modulus, height=320, width=150)
    halves = girder.halves("x")
    assert sum(half.area * half.lever_arm for half in halves.sides) == pytest.approx(modulus)
    assert halves.axis == pytest.approx(axis) and halves["above"].centroid[1] > axis
    upright = girder.halves("y")
    assert upright["left"].centroid[0] < upright.axis < upright["right"].pieces[0][:, 0].max()
    assert girder.corner("top_right") == (150, 320) and girder.turned(90).properties().width == 320


def test_each_way_to_make_a_section_gives_the_same_tube(tmp_path, monkeypatch):
    tube = dict(area=1900, inertia_x=(100**4 - 90**4) / 12, plastic_modulus_x=(100**3 - 90**3) / 4)
    text = {"version": 1, "unit": "mm", "contours": [{"kind": "solid", "points": SQUARE.tolist()},
                                                     {"kind": "hole", "points": HOLE.tolist()}]}
    rows = "\n\n".join("\n".join(f"{x},{y}" for x, y in ring) for ring in (SQUARE, HOLE))
    strips = plate(100, 5).with_on_top(plate(5, 90), align="left").with_on_top(plate(100, 5), align="left")
    for section in (
            Section.polygon(SQUARE, [HOLE[::-1]]), Section.polygon(SQUARE) - Section.polygon(HOLE),
            Section.shape("rhs", height=100, width=100, thickness=5, outer_radius=0, name="tube"),
            Section.wall(0.95 * SQUARE, 5, closed=True, unit="m"), Section.parse(json.dumps(text), "json"),
            Section.parse("x,y\n" + rows, "csv", unit="in"), strips + plate(5, 90).moved(95, 5),
            plate(5, 100).with_right(plate(90, 5), align="top").with_right(plate(5, 100)).with_left(
                plate(1, 1), gap=3) - plate(1, 1).moved(-4, 49.5) + plate(90, 5).moved(5, 0)):
        holds(section.properties(), **tube)
    assert section.unit == "mm" and Section.wall(SQUARE, 5, unit="m").properties().area.unit == "m^2"
    path = tmp_path / "tube.csv"
    path.write_text("# unit: cm\n" + rows)
    monkeypatch.chdir(tmp_path)
    pickled = pickle.dumps(Section.read("tube.csv"))
    monkeypatch.chdir("/")
    holds(pickle.loads(pickled).properties(), **tube)
    row = Section.shape("round", diameter=20).repeated(3, dx=60, dy=1).properties()
    holds(row, width=140, height=22, area=300 * np.pi)


def test_profiles_have_what_their_table_publishes(tmp_path):
    beam = Section.profile("ipe 300", unit="cm")
    assert beam.unit == "cm" and beam.properties().height == 30
    channel = Section.profile("UPE 200")
    for key, published in channel.published.items():
        value = getattr(channel.properties(), key, None)
        if value is not None and key != "centroid_x":
            assert value == pytest.approx(published, rel=2e-3) and value.published == published
    assert Section.profile("UPE200", published=True).class_values().area == 2900
    rows = profiles("HEB", "Wplx>=1e6 order=area limit=3")
    assert [row["name"] for row in rows] == ["HEB240", "HEB260", "HEB280"]
    assert all(row["plastic_modulus_x"] >= 1e6 and row["area"] == Section.profile(row["name"]).properties().area
               for row in rows)
    assert len(profiles("HEB")) == len(Catalogue().names("HEB")) and profiles("HEB")[0]["h"] == 100
    for where, unit in (("h>=500 limit=3", "mm"), ("Wplx>=800cm^3 h>=0.5 order=-Ix limit=3", "m"), (None, "in")):
        for row in profiles("IPE", where, unit=unit):
            beam = Section.profile(row["name"], unit=unit)
            values = {**beam.properties().to_dict(), "h": beam.properties().height, "b": beam.properties().width}
            assert row["unit"] == unit and all(row[key] == pytest.approx(values[key], rel=1e-9)
                                               for key in row.keys() & values.keys())
            published = {f"published_{key}": number for key, number in beam.published.items()}
            assert published == pytest.approx({key: row[key] for key in published}, rel=1e-9)
    [tapered] = profiles("UPN", "h=200mm", unit="m")
    assert tapered["slope"] == 0.08 and tapered["h"] == 0.2
    table = tmp_path / "own.csv"
    table.write_text("name,type,h,b,tw,tf,r\nMINE,i,300,150,7,11,0\nWRONG,i,300,150,7,,0\n")
    own = pickle.loads(pickle.dumps(Catalogue(table)))
    assert [finding.severity for finding in own.findings] == ["error"] and "MINE" in own.names()
    holds(Section.profile("mine", catalogue=own).properties(), area=5246)
    assert profiles(where="h=300 tw=7 limit=1", catalogue=own)[0]["name"] == "MINE"


def test_values_know_their_bounds_and_are_floats():
    square = plate(50, 50)
    torsion, values = square.warping(tolerance=1e-6).torsion_constant, square.properties(density=8000)
    low, high = torsion.bounds
    assert low < 0.140577014955 * 50**4 < high and high - low < 3e-6 * low, "a square's, by its series"
    assert torsion.error == (high - low) / 2 and torsion.method == "bounds" and torsion.unit == "mm^4"
    assert square.warping(tolerance=1e-6).torsion_constant is torsion, "it is kept"
    assert square.warping(tolerance=0.1).torsion_constant.error > 10 * torsion.error
    assert isinstance(values.area, Quantity) and type(values.area / 2) is float and values.area == 2500
    assert values.mass_per_metre == 20 and square.properties().mass_per_metre is None
    assert square.properties(dy=5).elastic_modulus_top == pytest.approx(50**4 / 12 / 20)
    twin = pickle.loads(pickle.dumps(torsion))
    assert twin == torsion and twin.bounds == torsion.bounds
    for results in (values, square.warping()):
        assert pickle.loads(pickle.dumps(results)) == results and results.to_dict()[results.details[0].key]
        names = [item.name for item in dataclasses.fields(results)[:-2]]
        assert names == [details.key for details in results.details] == list(results.to_dict())
        for text in (str(results), results.to_markdown(), results._repr_html_()):
            assert len(text.splitlines()) >= len(names) or text.count("<tr>") == len(names) + 1
        with pytest.raises(dataclasses.FrozenInstanceError):
            results.findings = ()


def test_every_key_of_the_json_is_a_field():
    section = Section.profile("IPE300")
    fields = {item.name for kind in (Properties, Warping) for item in dataclasses.fields(kind)[:-2]}
    keys = section.to_dict()["values"]
    assert fields == {*keys, "mass_per_metre"}
    assert fields < {*dir(section.properties()), *dir(section.warping())}, "editors would not offer them"
    results = {**section.properties().to_dict(), **section.warping().to_dict()}
    assert all(results[key] == entry["value"] for key, entry in keys.items())
    for kind, symbol in ((Properties, "plastic_modulus_x       Plastic modulus about x (Wpl,x) [L^3]"),
                         (Warping, "shear_centre_x          Shear centre, x (xM) [L]")):
        assert symbol in pydoc.plain(pydoc.render_doc(kind))
    assert "rhs      height, width, thickness, outer_radius, [inner_radius]" in pydoc.render_doc(Section.shape)
    assert section.table().startswith("IPE300") and "Torsion constant" in section.to_markdown()


def test_stresses_have_their_largest_where_beams_have_it():
    beam = plate(10, 60)
    stress = beam.stress(N=6000, Mx=6e5, Vy=4000)
    assert stress.max.normal.value == pytest.approx(110) and stress.max.normal.place[1] == 60
    assert stress.max.shear.value == pytest.approx(1.5 * 4000 / 600, rel=0.02)
    assert abs(stress.max.shear.place[1] - 30) < 3 and "110" in repr(stress)
    assert beam.stress(My=1e5).max.normal.value == pytest.approx(6 * 1e5 / 60 / 100, rel=1e-9) or \
        beam.stress(My=1e5).max.normal.value == pytest.approx(-6 * 1e5 / 60 / 100, rel=1e-9)
    assert beam.stress(T=1e5).max.von_mises.value == pytest.approx(
        3**0.5 * beam.stress(T=1e5).max.shear.value, rel=1e-3)


def test_figures_are_the_engines(tmp_path):
    section = Section.profile("IPE300")
    section.save(tmp_path / "plain.svg")
    section.save(tmp_path / "halves.svg", halves="x")
    section.stress(Vy=1e4).save(tmp_path / "stress.svg", "shear")
    texts = [(tmp_path / name).read_text() for name in ("plain.svg", "halves.svg", "stress.svg")]
    assert texts == [section._repr_svg_(), section.svg(halves="x"), section.stress(Vy=1e4).svg("shear")]
    assert len(set(texts)) == 3 and all(text.startswith("<svg") and "IPE300" in text for text in texts)


def test_class_values_are_those_of_the_class():
    holed = Section.polygon(SQUARE, [HOLE])
    assert holed.class_values().plastic_modulus_x == pytest.approx(100**3 / 4), "gross, unlike the net one"
    with pytest.raises(AttributeError):
        holed.class_values().warping_constant
    line = '{"version": 1, "unit": "mm", "polyline": {"kind": "open_wall", "torsion": "general", ' \
           '"thickness": 4, "points": [[0, 0], [80, 0], [80, 60]]}}'
    assert Section.parse(line, "json").class_values().area == pytest.approx(560)


def test_doubts_are_told_once_and_found():
    with pytest.warns(SectionWarning, match="crosses itself") as caught:
        bow = Section.polygon([(0, 0), (10, 10), (10, 0), (0, 10)])
        bow.properties(), bow.properties()
    assert len(caught) == 1 and caught[0].filename == __file__
    assert (bow.findings[0].severity, bow.findings[0].place) == ("error", (5, 5))
    apart = plate(10, 10) + plate(10, 10).moved(20)
    assert [finding.kind for finding in apart.findings] == ["parts_apart"]
    nothing = plate(10, 10) - plate(10, 10)
    with pytest.warns(SectionWarning, match="no area"):
        assert nothing.properties().inertia_x is None
    assert "no area" in nothing.properties().about("inertia_x").why_missing


def test_literals_are_the_engines_words():
    for choices, call in ((_types.ShapeKind, lambda: Section.shape("?")),
                          (_types.Unit, lambda: plate(1, 1, unit="?")),
                          (_types.TextFormat, lambda: Section.parse("", "?")),
                          (_types.StressKind, lambda: plate(1, 1).stress(N=1).svg("?"))):
        with pytest.raises(ValueError) as caught:
            call()
        named = str(caught.value).replace("'", '"').split('"')[1::2]
        assert [name for name in named if name != "?"] == list(typing.get_args(choices))


def grid(count):
    """A plate with triangular holes, of which a solution to 1e-9 takes 5 s and more."""
    holes = [np.array([(20, 50), (40, 50), (30, 80)]) + (50 * (i % 20), 50 * (i // 20)) for i in range(count)]
    return Section.polygon(10 * SQUARE, holes)


def test_a_solution_stops_at_an_interrupt_and_lets_threads_run():
    def stop(*_):
        raise KeyboardInterrupt

    before, section = signal.signal(signal.SIGALRM, stop), grid(40)
    for solve, longest in ((lambda: section.warping(tolerance=1e-9), 3), (lambda: profiles(where="It>=1 order=-It"), 1)):
        try:
            signal.setitimer(signal.ITIMER_REAL, 0.1)
            start = time.process_time()
            with pytest.raises(KeyboardInterrupt):
                solve()
            assert time.process_time() - start < longest
        finally:
            signal.setitimer(signal.ITIMER_REAL, 0)
    signal.signal(signal.SIGALRM, before)
    worker, moments = threading.Thread(target=section.warping), [time.perf_counter()]
    worker.start()
    while worker.is_alive():
        moments.append(time.perf_counter())
    assert max(np.diff(moments)) < (moments[-1] - moments[0]) / 2, "the other thread stood still meanwhile"


def test_a_long_history_can_be_pickled():
    bar, many = plate(10, 10), plate(10, 10)
    for i in range(1, 600):
        many += bar.moved(10 * i)
    for section, found in ((many, dict(area=60_000, width=6000)), (moved_often(20_000), dict(area=100, width=10))):
        twin = pickle.loads(pickle.dumps(section))
        holds(twin.properties(), **found)
        assert twin.properties() == section.properties() and twin.name == section.name
    assert len(pickle.dumps(moved_often(100_000))) < 10_000_000


def moved_often(times):
    section = plate(10, 10)
    for _ in range(times):
        section = section.moved(0.001)
    return section.named("far")


def test_texts_that_are_not_utf_8_are_shown(tmp_path):
    bent = json.dumps({"version": 1, "unit": "mm", "name": "bent ?", "contours": [
        {"name": "ring ?", "kind": "solid", "points": [[0, 0], [9, 9], [9, 0], [0, 9]]}]}).encode()
    table = tmp_path / "own.csv"
    table.write_bytes(b"name,type,family,h,b,tw,tf,r\nM\xe9,i,F\xe9,300,150,7,11,0\nW\xe9,i,G,300,150,7,,0\n")
    texts = []
    for text, form in ((b"x,y\n0,0\n\xe9,1\n", "csv"), (bent.replace(b"?", b"\xe9"), "json"),
                       (b"0\nSECTION\n2\nENTITIES\n0\nARC\xe9\n8\nL\xe9\n0\nENDSEC\n0\nEOF\n", "dxf")):
        path = os.fsencode(tmp_path) + b"/s\xe9." + form.encode()
        with open(path, "wb") as file:
            file.write(text)
        for make in (lambda: Section.parse(text, form), lambda: Section.read(path)):
            with pytest.raises(InputError) as caught:
                make()
            texts.append(str(caught.value))
            assert caught.value.source in ("text", os.fsdecode(path))
    with open(path, "wb") as file:  # with a layer that is read
        file.write(b"".join(b"0\nLINE\n8\nL\xe9\n10\n%d\n20\n%d\n11\n%d\n21\n%d\n" % line for line in (
            (0, 0, 9, 0), (9, 0, 9, 9), (9, 9, 0, 0))).join((b"0\nSECTION\n2\nENTITIES\n", b"0\nENDSEC\n0\nEOF\n")))
    drawn = Section.read(path, unit="mm", layers=[b"L\xe9"])
    texts += [drawn.to_json(), drawn.table(), drawn.svg(), str(drawn.findings + (drawn + drawn).findings)]
    with pytest.warns(SectionWarning):
        rows = evaluate_batch([drawn + drawn, plate(3, 2)], warping=False)
    assert rows[0]["doubt"] and rows[1]["area"] == 6 and drawn.properties().area == 40.5
    try:
        own = Catalogue(table)
        texts += [*own.names(), str(own.findings), str(profiles(catalogue=own)), str(profiles(where="h=300", catalogue=own))]
    except InputError as error:
        texts.append(str(error))
    for text in texts:
        assert text.encode("utf-8", "surrogateescape"), "it can be shown"
    assert any("\\xe9" in text for text in texts)


def test_a_name_is_another_section_and_results_are_short():
    girder = CHANNEL.named("girder")
    assert (girder.name, CHANNEL.name) == ("girder", "UPE200") and girder.properties() == CHANNEL.properties()
    assert girder.published == CHANNEL.published and "girder" in girder.svg()
    assert pickle.loads(pickle.dumps(girder)).name == "girder"
    peaks, halves = plate(10, 60).stress(N=6000).max, plate(10, 60).halves("x")
    assert repr(peaks.normal).startswith("<Peak: 10 at (") and "shear 0, von_mises" in repr(peaks)
    assert repr(halves) == "<Halves: axis 30, above 300 with lever arm 15, below 300 with lever arm 15>"
    assert max(map(len, (repr(peaks), repr(halves["above"])))) < 160
    own = plate(METRES.width, METRES.height, unit="m").moved(METRES.width).turned(METRES.principal_angle)
    assert own.properties().area == 3


CHANNEL = Section.profile("UPE200")


class Carrying:
    """As packages of units have it."""

    units = "mm"

    def __float__(self):
        return 3.0


class CarryingFloat(float):
    dimensionality = "[length]"


METRES = Section.shape("plate", width=3, height=1, unit="m").properties()
TURN = np.linspace(0, 2 * np.pi, 600_000, endpoint=False)
DISC = Section.polygon(100 * np.column_stack([np.cos(TURN), np.sin(TURN)]))


def drawing(*lines):
    """Of lines from point to point."""
    pairs = [pair for line in lines for pair in zip(line, line[1:])]
    entities = "".join(f"0\nLINE\n8\n0\n10\n{a}\n20\n{b}\n11\n{c}\n21\n{d}\n" for (a, b), (c, d) in pairs)
    return Section.parse(f"0\nSECTION\n2\nENTITIES\n{entities}0\nENDSEC\n0\nEOF\n", "dxf", unit="mm")


@pytest.mark.parametrize("call, kind, message", [
    (lambda: drawing([*SQUARE, SQUARE[0]], [*HOLE, HOLE[0] + (0, 0.5)]), InputError,
     "text: line 90: an open chain lies within the outline at line 6, with a gap of 0.5 from (5, 5.5) to (5, 5) at "
     "line 54; close it in the drawing or give join_tolerance 0.51; "),
    (lambda: Section(), TypeError, "a section is made by Section.profile"),
    (lambda: Section.profile("UPE20"), InputError, "UPE20: no profile of the catalogue; similar profiles: UPE200, UPE80"),
    (lambda: Section.profile("beam.json"), InputError, "beam.json: no profile of the catalogue; profiles()"),
    (lambda: Section.profile(""), InputError, "an empty name: no profile"),
    (lambda: Section.profile(300), TypeError, "name: expected a text, got 300"),
    (lambda: Section.profile("UPE200", unit="ft"), InputError, "the unit is ft; give mm, cm, m or in"),
    (lambda: Section.profile("UPE200", catalogue="own.csv"), TypeError, "catalogue: expected a Catalogue"),
    (lambda: Section.shape("plat", width=3), ValueError, "kind: no shape is called 'plat'; write one of 'i', 'i_mono'"),
    (lambda: Section.shape(3), TypeError, "kind: expected the name of a shape, got 3"),
    (lambda: plate(3, -1), ValueError, "height: must be greater than 0, found -1"),
    (lambda: plate(3, "1"), TypeError, "height: expected a number, got '1'"),
    (lambda: plate(3, float("nan")), ValueError, "height: expected a finite number, got nan"),
    (lambda: plate(Carrying(), 1), TypeError, "width: <test_engine.Carrying object at 0x... carries a unit; "),
    (lambda: plate(3, 1, unit="ft"), ValueError, 'unit: unknown value "ft"; write one of "mm", "cm"'),
    (lambda: plate(3, 1, unit=None), TypeError, "unit: expected a text, got None"),
    (lambda: plate(3, 1, name=7), TypeError, "name: expected a text, got 7"),
    (lambda: Section.shape("plate", width=3), TypeError, "height: missing; 'plate' takes width, height"),
    (lambda: plate(3, 1, rotate=90), TypeError, "rotate: no dimension of this shape; 'plate' takes width, height"),
    (lambda: Section.shape("i", **I, root_radius=500), ValueError, "root_radius: "),
    (lambda: Section.polygon(SQUARE[:2]), ValueError, "points: at least 3 points are needed, got 2"),
    (lambda: Section.polygon([(0, 0), (1, "2"), (0, 1)]), TypeError, "points[1]: expected two numbers"),
    (lambda: Section.polygon([(Carrying(), 0), (1, 2), (0, 1)]), TypeError, "points[0]: <test_engine.Carrying"),
    (lambda: Section.polygon(SQUARE, HOLE), ValueError, "holes: expected a list of rings of points, got one ring"),
    (lambda: Section.polygon(SQUARE, [HOLE[:2]]), ValueError, "holes[0]: at least 3 points are needed"),
    (lambda: Section.polygon(SQUARE, 5), TypeError, "holes: expected a list of rings of points, got 5"),
    (lambda: Section.wall(SQUARE[:1], 4), ValueError, "points: at least 2 points"),
    (lambda: Section.wall(SQUARE, 0), ValueError, "thickness: must be greater than 0"),
    (lambda: Section.wall(SQUARE[[0, 1, 1]], 4), ValueError, "points[2]: lies on a neighbouring point"),
    (lambda: Section.wall(SQUARE, 4, closed="yes"), TypeError, "closed: expected True or False, got 'yes'"),
    (lambda: Section.wall(SQUARE, 4, radii=[1]), ValueError, "radii: one radius per point is needed: 4 points"),
    (lambda: Section.wall(SQUARE, 4, radii=[0, None, 0, 0]), TypeError, "radii[1]: expected a number"),
    (lambda: Section.wall(SQUARE, 4, radii=9), TypeError, "radii: expected one number per point, got 9"),
    (lambda: Section.read("no.json"), FileNotFoundError, "path: there is no file 'no.json'"),
    (lambda: Section.read("."), InputError, ".: is a directory"),
    (lambda: Section.parse("{", "json"), InputError, "text: line 1, column 2: not valid JSON"),
    (lambda: Section.parse("0,0\n1,0\n", "csv"), InputError, "text: "),
    (lambda: Section.parse("", "xml"), ValueError, "format: expected one of 'json', 'csv', 'dxf', got 'xml'"),
    (lambda: Section.parse(5, "csv"), TypeError, "text: expected a text, got 5"),
    (lambda: Section.parse("", "csv", layers="a"), TypeError, "layers: expected a list of names"),
    (lambda: Section.parse("", "csv", layers=["a"]), InputError, "layers is for DXF drawings"),
    (lambda: Section.parse("", "csv", chord_tolerance=0), InputError, "the chord tolerance is not positive"),
    (lambda: CHANNEL + 1, TypeError, "unsupported operand"),
    (lambda: CHANNEL - None, TypeError, "unsupported operand"),
    (lambda: CHANNEL + plate(1, 1, unit="m"), InputError, "the sections are in mm and m; make both with the same unit=..."),
    (lambda: CHANNEL.with_on_top("plate"), TypeError, "other: expected a Section, got 'plate'"),
    (lambda: CHANNEL.with_on_top(CHANNEL, align="top"), ValueError, "align: expected one of 'left', 'centre'"),
    (lambda: CHANNEL.with_left(CHANNEL, align="left"), ValueError, "align: expected one of 'bottom', 'centre'"),
    (lambda: CHANNEL.with_below(CHANNEL, touch="x"), ValueError, "touch: expected one of 'box', 'outline'"),
    (lambda: CHANNEL.with_right(CHANNEL, gap="1"), TypeError, "gap: expected a number, got '1'"),
    (lambda: CHANNEL.with_on_top(CHANNEL, touch="outline", dx=999), InputError, "nothing of the one section is"),
    (lambda: CHANNEL.moved(None), TypeError, "dx: expected a number, got None"),
    (lambda: CHANNEL.turned(float("inf")), ValueError, "degrees: expected a finite number"),
    (lambda: CHANNEL.mirrored("z"), ValueError, "axis: expected one of 'x', 'y', got 'z'"),
    (lambda: CHANNEL.repeated(0), ValueError, "count: expected 1 to 1000, got 0"),
    (lambda: CHANNEL.repeated(2.5), TypeError, "count: expected a whole number, got 2.5"),
    (lambda: CHANNEL.repeated(2000, 1), ValueError, "count: expected 1 to 1000, got 2000"),
    (lambda: CHANNEL.corner("top"), ValueError, "place: expected one of 'bottom_left'"),
    (lambda: CHANNEL.properties(dx=[]), TypeError, "dx: expected a number, got []"),
    (lambda: CHANNEL.properties(density=0), InputError, "the density is not positive and finite; give kg/m^3"),
    (lambda: CHANNEL.warping(tolerance=1), InputError, "the tolerance is not from 1e-9 to 0.1"),
    (lambda: CHANNEL.warping(poisson="steel"), TypeError, "poisson: expected a number, got 'steel'"),
    (lambda: CHANNEL.properties().about("Ix"), KeyError, "'Ix' is none of area, width"),
    (lambda: CHANNEL.halves(1), TypeError, "axis: expected one of 'x', 'y', got 1"),
    (lambda: CHANNEL.halves("x")["left"], KeyError, "'left' is none of above, below"),
    (lambda: CHANNEL.stress(Vy=float("nan")), ValueError, "Vy: expected a finite number, got nan"),
    (lambda: CHANNEL.save("channel.txt"), InputError, "channel.txt: a figure is an .svg, .png or .pdf file"),
    (lambda: CHANNEL.save("no/channel.svg"), InputError, "no/channel.svg: there is no folder no; make it first"),
    (lambda: CHANNEL.svg(halves="z"), ValueError, "halves: expected one of 'x', 'y', got 'z'"),
    (lambda: setattr(CHANNEL, "unit", "m"), AttributeError, "unit: a section does not change"),
    (lambda: setattr(CHANNEL.properties().area, "unit", "m"), AttributeError, "unit: a quantity does not change"),
    (lambda: CHANNEL.properties().torsion_constant, AttributeError,
     "'Properties' object has no attribute 'torsion_constant'; .warping() has it"),
    (lambda: profiles("QX"), ValueError, "family: there is no 'QX'; the families are "),
    (lambda: profiles("HEB", "depth>3"), InputError, 'where: "depth>3": '),
    (lambda: profiles("HEB", unit="ft"), InputError, "the unit is ft; give mm, cm, m or in"),
    (lambda: profiles("HEB", density="x"), TypeError, "density: expected a number, got 'x'"),
    (lambda: profiles("HEB", "h>1", density=-1), InputError, "the density is not positive and finite"),
    (lambda: plate(METRES.width, 1), TypeError, "width: 3.0 is in m, and a number in mm is needed; convert it: "),
    (lambda: plate(METRES.area, 1, unit="m"), TypeError, "width: 3.0 is in m^2, and a number in m is needed"),
    (lambda: Section.polygon([(0, 0), (3, 0), (3, METRES.height)]), TypeError, "points[2]: 1.0 is in m, and a "),
    (lambda: Section.wall([(0, 0), (3, METRES.height)], 1), TypeError, "points[1]: 1.0 is in m, and a "),
    (lambda: CHANNEL.moved(METRES.width), TypeError, "dx: 3.0 is in m"),
    (lambda: (CHANNEL.properties(dy=3.0), CHANNEL.properties(dy=METRES.width)), TypeError, "dy: 3.0 is in m"),
    (lambda: CHANNEL.with_left(CHANNEL, gap=METRES.width), TypeError, "gap: 3.0 is in m"),
    (lambda: CHANNEL.stress(Vx=1, T=METRES.width), TypeError, "T: 3.0 is in m, and a number in F mm is needed"),
    (lambda: CHANNEL.warping(poisson=METRES.width), TypeError, "poisson: 3.0 is in m, and a plain number is "),
    (lambda: plate(CarryingFloat(3), 1), TypeError, "width: 3.0 carries a unit; "),
    (lambda: plate(1, 1, name="a\udc80"), ValueError, "name: half a character, a lone surrogate, is in 'a\\udc80'"),
    (lambda: plate(1, 1, unit="\udc80"), ValueError, "unit: half a character"),
    (lambda: plate(1, 1, **{"\udc80": 1}), ValueError, "the name of a dimension: half a character"),
    (lambda: Section.polygon(SQUARE, name="\udc80"), ValueError, "name: half a character"),
    (lambda: Section.profile("\udc80"), ValueError, "name: half a character"),
    (lambda: CHANNEL.named("\udc80"), ValueError, "name: half a character"),
    (lambda: CHANNEL.named(None), TypeError, "name: expected a text, got None"),
    (lambda: profiles("HEB", "h>\udc80"), ValueError, "where: half a character"),
    (lambda: profiles("\udc80"), ValueError, "family: half a character"),
    (lambda: plate("é" * 99, 1), TypeError, "width: expected a number, got 'é"),
    (lambda: Section.profile("UPE200", published="no"), TypeError, "published: expected True or False, got 'no'"),
    (lambda: CHANNEL.stress(N=1).svg("sigma"), ValueError, "kind: expected one of 'normal', 'shear', 'von_mises'"),
    (lambda: Section.read(None), TypeError, "path: expected the path of a file, got None"),
    (lambda: CHANNEL.save(None), TypeError, "path: expected the path of a file, got None"),
    (lambda: Catalogue(None), TypeError, "paths: expected the path of a file, got None"),
    (lambda: DISC + DISC.moved(300), InputError, "the sections have 1200000 points together; keep to 1000000"),
    (lambda: CHANNEL.repeated(1000).repeated(1000), InputError, "a row of 1000 is not possible; give 1 to 1000"),
    (lambda: profiles("HEB", 7), TypeError, "where: expected a text"),
    (lambda: profiles(catalogue="own.csv"), TypeError, "catalogue: expected a Catalogue, got 'own.csv'"),
    (lambda: Catalogue("no.csv"), InputError, "no.csv: cannot be opened"),
])
def test_mistakes_name_argument_and_mend(call, kind, message):
    with pytest.raises(kind) as caught:
        call()
    shown = caught.value.args[0]
    start, _, end = message.partition("0x...")
    assert shown.startswith(start) and end in shown and "--" not in shown and "\n" not in shown
    assert CHANNEL.properties().height == 200, "nothing has changed"
