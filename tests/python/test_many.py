"""Many sections and fast ones: the quick ways give what the thorough ones give."""

import dataclasses
import pickle
import warnings

import numpy as np
import pytest

from halvorn_section_tools import Section, SectionWarning

RANDOM = np.random.default_rng(20)


def ring(points, reach=100.0, at=(0.0, 0.0), slender=1.0):
    """A star of random points about a place: simple, with straight and with sharp corners."""
    turn = np.sort(RANDOM.uniform(0, 2 * np.pi, points))
    radius = reach * RANDOM.uniform(0.6, 1.0, points)
    return np.column_stack([radius * np.cos(turn), slender * radius * np.sin(turn)]) + at


def outlines():
    """Outlines with holes, plain ones and those about which there is something to say."""
    tee = np.array([(0, 0), (200, 0), (200, 15), (110, 15), (110, 200), (90, 200), (90, 15), (0, 15.0)])
    square = np.array([(0, 0), (1, 0), (1, 1), (0, 1.0)])
    for points in (3, 4, 8, 40, 300):
        for scale in (1e-4, 1.0, 1e3):
            for away in (0.0, 10.0, 1e4, 1e9):
                for slender in (1.0, 1e-3, 1e-7):
                    yield scale * ring(points, at=(100 * away, -away), slender=slender), []
    for scale in (1e-6, 1e-3, 1.0, 1e4):
        yield scale * tee, []
        yield scale * tee[::-1] + scale, []
        yield scale * (tee - (100, 0)), []  # symmetrical about the y axis
        yield scale * tee[[0, 1, 2, 3, 4, 5, 6, 7, 0]], []  # closed by its caller
        yield scale * tee[[0, 1, 1, 2, 3, 4, 5, 6, 7]], []
    for holes in ([0.5 * square + 0.25], [0.2 * square + 0.1, 0.2 * square + 0.6], [square + 0.5],  # outside
                  [0.5 * square + 0.25, 0.2 * square + 0.4], [square], [square + 7],  # in a hole, all of it, beside
                  [0.5 * square + (0.25, 0.5)], [1e-6 * square + 0.5], [0.5 * square + (0.25, 0.49999)]):
        yield 100 * square, [100 * hole for hole in holes]
    yield tee[[0, 2, 1, 3, 4, 5, 6, 7]], []  # crosses itself
    yield np.vstack([square, square]), []  # runs round twice
    yield square[[0, 1, 2, 1]], []  # a spike
    yield square[[0, 2, 0]], []  # no area
    yield 1e200 * square, []


def with_warnings(call):
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        return call(), sorted(str(warning.message) for warning in caught)


def test_class_values_are_quick_or_thorough_but_the_same():
    quick = 0
    for points, holes in outlines():
        for section in (Section.polygon(points, holes), Section.polygon(points.tolist(), holes).turned(30)):
            found, told = with_warnings(section.class_values)
            report = section._engine.evaluate({"class_values": True, "dx": 0.0})
            values = {row[1]: row[0] for row in report.class_values()}
            assert dataclasses.asdict(found) == values, points
            assert [type(value) for value in dataclasses.asdict(found).values()] == list(map(type, values.values()))
            doubts = [row for row in report.findings() if row[0] in ("error", "warning")]
            assert len(told) == len(doubts), (points, told)
            quick += section._engine.class_numbers(0, 0) is not None
    assert 60 < quick < 300, "both ways are gone"
    tee = Section.shape("i_mono", height=200, web=10, top_width=80, top_flange=9, bottom_width=150, bottom_flange=14)
    for section in (tee, Section.profile("UPE200"), tee.turned(17)):
        shifted = section._engine.evaluate({"class_values": True, "dx": 3.0, "dy": -2.0})
        assert dataclasses.asdict(section.class_values(dx=3, dy=-2)) == {
            row[1]: row[0] for row in shifted.class_values()}


def test_a_polygon_is_made_of_the_points_as_they_were():
    points = np.array([(0, 0), (80, 0), (80, 12.5), (0, 12.5)])
    hole = [(10, 2), (20, 2), (20, 8), (10, 8)]
    section = Section.polygon(points, (ring for ring in [hole]), unit="cm", name="plate")
    points[1] = 500, 500
    hole.clear()
    for twin in (section, pickle.loads(pickle.dumps(section))):
        assert twin.properties().area == pytest.approx(940) and (twin.name, twin.unit) == ("plate", "cm")
        assert twin.class_values() == section.class_values()
        assert hash(twin.class_values()) == hash(section.class_values())
    written = [(0, 0), (2**70, 0), (2**70, 2**70)]
    assert Section.polygon(written)._engine.contours()[0][0].tolist() == np.array(written, float).tolist()
    with pytest.raises(dataclasses.FrozenInstanceError):
        section.class_values().area = 0
    with pytest.warns(SectionWarning, match="crosses itself"):
        Section.polygon([(0, 0), (10, 10), (10, 0), (0, 10)]).class_values()
