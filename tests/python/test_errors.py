"""Mistakes are answered with what is wrong and where."""

import numpy as np
import pytest

from halvorn_section_tools import CSectionTools, ContourSection, LostDigitsWarning, compute_batch

NAN = float("nan")
TRIANGLE = [(0, 0), (4, 0), (0, 3)]
SQUARE = np.array([(0.0, 0.0), (100.0, 0.0), (100.0, 100.0), (0.0, 100.0)])
CHANNEL = [(0, 0), (80, 0), (80, 12), (8, 12), (8, 188), (80, 188), (80, 200), (0, 200)]
ANGLE = np.array([(0, 0), (100, 0), (100, 10), (10, 10), (10, 100), (0, 100)])
PENTAGON = [(94 + 30 * np.cos(0.3 + k * 0.4 * np.pi), 30 * np.sin(0.3 + k * 0.4 * np.pi)) for k in range(5)]
GIVEN = dict(centroid=(1, 1), area=1, inertia_1=1, inertia_2=1, shear_area_1=1, shear_area_2=1,
             torsion_constant=1, torsion_modulus=1)


def wall(**changes):
    return ContourSection.polyline(**{"points": [(0, 0), (80, 0), (80, 60)], "kind": "open_wall",
                               "thickness": 4, **changes})


def section(*parts):
    """Of points and whether they are a solid's."""
    whole = ContourSection()
    for points, solid in parts:
        whole.add(points, solid)
    return whole


def holes(scale, *places):
    return [(scale * SQUARE + place, False) for place in places]


def batch(points=(*TRIANGLE, *TRIANGLE), contours=(0, 3, 6), flags=(1, 1), sections=(0, 1, 2), **rest):
    return compute_batch(points, contours, flags, sections, **rest)


@pytest.mark.parametrize("points, kind, message", [
    ([], ValueError, "points: at least 3 points are needed, got 0"),
    ([(0, 0), (1, 1)], ValueError, "points: at least 3 points are needed, got 2"),
    (np.zeros((0, 2)), ValueError, "points: at least 3 points are needed, got 0"),
    ([(0, 0), (1, 1), (2,)], ValueError, "points[2]: expected two numbers (x, y), got 1"),
    ([(0, 0), (1, 1, 1), (2, 2)], ValueError, "points[1]: expected two numbers (x, y), got 3"),
    ([(0, 0), (1, NAN), (2, 2)], ValueError, "points[1]: y is nan; coordinates must be finite"),
    (np.array([(0, 0), (1, 1), (-np.inf, 2)], np.float32), ValueError, "points[2]: x is -inf; "),
    ([(0, 0), (10**400, 1), (2, 2)], ValueError, "points[1]: too large for a float"),
    (np.zeros((5, 3)), ValueError, "points: expected points of shape (n, 2), got shape (5, 3)"),
    (np.zeros((2, 5)), ValueError, "got shape (2, 5); pass points.T if"),
    ([0, 0, 1, 0, 1, 1], ValueError, "got shape (6,); x0, y0, x1, y1, ... becomes points by reshape"),
    (np.zeros((3, 2, 2)), ValueError, "got shape (3, 2, 2)"),
    (None, TypeError, "points: expected points (x, y), got None"),
    (7, TypeError, "points: expected points (x, y), got 7"),
    ("abc", TypeError, "points: expected points (x, y), got 'abc'"),
    (["ab", "cd", "ef"], TypeError, "points[0]: expected two numbers (x, y), got 'ab'"),
    ([(0, 0), (1, "1"), (2, 2)], TypeError, "points[1]: expected two numbers (x, y), got (1, '1')"),
    ([(0, 0), (1, None), (2, 2)], TypeError, "points[1]: expected a number, got None"),
    ([(0, 0), 5, (2, 2)], TypeError, "points[1]: expected two numbers (x, y), got 5"),
    ([b"00", b"20", b"21"], TypeError, "points[0]: expected two numbers (x, y), got b'00'"),
    ({(0, 0), (1, 0), (1, 1)}, TypeError, "points: a set has no order"),
    (np.ma.masked_greater([(0, 0), (2, 0), (9, 1), (2, 1)], 5), ValueError, "some values are masked"),
    (np.zeros((3, 2), complex), TypeError, "points: expected real numbers, got complex ones"),
])
def test_points_that_do_not_fit(points, kind, message):
    section, tools = ContourSection(), CSectionTools()
    for add in (section.add, lambda wrong: tools.PushContour(wrong, 1)):
        with pytest.raises(kind) as caught:
            add(points)
        assert message in str(caught.value)
    assert section.add(TRIANGLE).properties().area == 6, "nothing of it was added"


@pytest.mark.parametrize("call, kind, message", [
    (lambda: ContourSection().properties(), ValueError, "the section is empty"),
    (lambda: ContourSection().add([(0, 0), (1, 1), (2, 2)]).properties(), ValueError, "its area is 0"),
    (lambda: ContourSection().add(TRIANGLE).add(TRIANGLE, False).properties(), ValueError, "its area is 0"),
    # Both areas are rounding: 1e-16, and 1e-12 of two pentagons that begin elsewhere.
    (lambda: ContourSection().add([(.1, .3), (.2, .6), (.7, 2.1)]).properties(), ValueError, "its area is 0"),
    (lambda: ContourSection().add(PENTAGON).add(np.roll(PENTAGON, 2, 0), False).properties(), ValueError,
     "its area is 0"),
    # A hole of a profile's values, larger than the solid; inertias that no section has.
    (lambda: ContourSection().add(TRIANGLE).add_profile(TRIANGLE, **{**GIVEN, "area": 7}, solid=False)
     .properties(), ValueError, "its area is negative"),
    (lambda: ContourSection().add(TRIANGLE).add_profile(TRIANGLE, **{**GIVEN, "inertia_1": 9}, solid=False)
     .properties(), ValueError,
     "its inertias or its centre of gravity are impossible"),
    (lambda: ContourSection().add(TRIANGLE).add_profile(TRIANGLE, **{**GIVEN, "area": 1e-6, "inertia_1": 5,
     "inertia_2": 0, "angle_radians": -np.pi / 4}, solid=False).properties(), ValueError, "impossible"),
    (lambda: ContourSection().add(SQUARE).add_profile(np.add(TRIANGLE, 200), **{**GIVEN, "centroid": (201, 201)},
     solid=False).properties(), ValueError, "number 2 reaches to (200, 200)"),
    # Lobes of 35.7 and 5.7.
    (lambda: ContourSection().add([(0, 0), (10, 10), (10, 0), (0, 4)]).properties(), ValueError,
     "because a contour crosses itself"),
    # The centre of gravity is at (100 * 50 - 90 * 1) / 10 = 491, or at -391.
    *((lambda place=place: ContourSection().add_profile(SQUARE, **{**GIVEN, "centroid": (50, 50), "area": 100,
       "inertia_1": 1e9, "inertia_2": 1e9}).add_profile(SQUARE, **{**GIVEN, "area": 90, "centroid": place},
       solid=False).properties(), ValueError, "its holes take more than its solids give, or a contour")
      for place in ((1, 50), (99, 50), (50, 1), (50, 99))),
    (lambda: ContourSection().add_profile(SQUARE, **{**GIVEN, "centroid": (50, 104)}), ValueError,
     "centroid: (50, 104) lies outside the box of the outline, (0, 0) to (100, 100)"),
    (lambda: ContourSection().add(ANGLE + (3.9e8, 4.29e8)).properties(), ValueError,
     "move the origin to the section"),
    (lambda: ContourSection().add([(0, 0), (1e7, 1e7), (1e7, 1e7 + 2e-7), (0, 2e-7)]).properties(), ValueError,
     "too thin"),
    (lambda: wall(points=SQUARE, kind="closed_wall", thickness=100.1), ValueError,
     "the corners need 100.1 of this edge, which is 100 long"),
    (lambda: ContourSection().add(SQUARE * 1e-10 + 1).properties(), ValueError, "use a smaller unit"),
    (lambda: ContourSection().add(SQUARE + 1e10).properties(), ValueError, "move the origin to the section"),
    (lambda: ContourSection().add_profile(SQUARE + (1e9, 0), **{**GIVEN, "centroid": (1e9, 0)}).properties(),
     ValueError, "move the origin to the section"),
    (lambda: wall(points=[(0, 0), (10, 0), (0, 12), (10, 10)], kind="closed_wall", thickness=2),
     ValueError, "it crosses itself"),
    (lambda: ContourSection.polyline([(.1, .3), (.2, .6), (.7, 2.1)]), ValueError, "lie on a line"),
    (lambda: ContourSection().add([(0, 0), (1e40, 0), (0, 1e40)]).properties(), ValueError, "too large"),
    (lambda: ContourSection.polyline([(0, 0), (1e70, 0), (0, 1e70)]), ValueError, "too large"),
    (lambda: ContourSection().add(np.multiply(TRIANGLE, 1e200)).properties(), ValueError, "too large"),
    (lambda: ContourSection().add(TRIANGLE).properties(dx=NAN), ValueError, "dx: expected a finite number"),
    (lambda: ContourSection().add(TRIANGLE).properties(dy="1"), TypeError, "dy: expected a number, got '1'"),
    (lambda: ContourSection().add(TRIANGLE, solid="hole"), TypeError, "solid: expected True or False"),
    (lambda: CSectionTools().PushContour(TRIANGLE, 256), ValueError, "flag: expected 0 to 255"),
    (lambda: CSectionTools().PushContour(TRIANGLE, 10**30), ValueError, "flag: expected 0 to 255"),
    (lambda: CSectionTools().PushContour(TRIANGLE, 1.0), TypeError, "flag: expected a whole number"),
    (lambda: ContourSection().add_profile(TRIANGLE[:2], **GIVEN), ValueError, "outline: at least 3 points"),
    (lambda: ContourSection().add_profile(TRIANGLE, **{**GIVEN, "area": 0}), ValueError, "area: expected"),
    (lambda: ContourSection().add_profile(TRIANGLE, **{**GIVEN, "centroid": (1, NAN)}), ValueError,
     "centroid[1]: expected a finite number, got nan"),
    (lambda: ContourSection().add_profile(TRIANGLE, **{**GIVEN, "centroid": (1, 2, 3)}), ValueError,
     "centroid: expected two numbers (x, y), got 3"),
    (lambda: ContourSection().add_profile(TRIANGLE, **{**GIVEN, "inertia_1": -5}), ValueError,
     "inertia_1: expected 0 or more, got -5"),
    (lambda: ContourSection().add_profile(TRIANGLE, **{**GIVEN, "inertia_2": None}), TypeError,
     "inertia_2: expected a number, got None"),
    (lambda: wall(kind="open"), ValueError, "kind: expected one of 'solid', 'closed_wall'"),
    (lambda: wall(torsion="thin"), ValueError, "torsion: expected one of 'tube', 'general'"),
    (lambda: wall(kind="solid"), ValueError, "thickness: a solid has none"),
    (lambda: wall(thickness=None), ValueError, "thickness: a wall needs it"),
    (lambda: wall(thickness=0), ValueError, "thickness: expected a number greater than 0, got 0"),
    (lambda: wall(points=[(0, 0)]), ValueError, "points: at least 2 points are needed, got 1"),
    (lambda: wall(points=TRIANGLE[:2], kind="closed_wall"), ValueError, "at least 3 points"),
    (lambda: wall(radii=[0, 5]), ValueError, "one per point is needed: 3 points, found 2 radii"),
    (lambda: wall(radii=[0, -5, 0]), ValueError, "radii[1]: expected 0 or more"),
    (lambda: wall(radii=[0, NAN, 0]), ValueError, "radii[1]: expected a finite number, got nan"),
    (lambda: wall(radii="005"), TypeError, "radii: expected numbers, got '005'"),
    # Inner face: radius 56.1 and half the thickness twice over make 60.1 of the shorter edge's 60.
    (lambda: wall(radii=[0, 56.1, 0]), ValueError, "points[1] to points[2]: the corners need 60.1"),
    (lambda: wall(points=[(0, 0), (80, 0), (80, 0), (80, 60)]), ValueError,
     "points[2]: repeats points[1], so no wall"),
    (lambda: wall(points=[*TRIANGLE, (0, 0)], kind="solid", thickness=None, radii=[1, 0, 0, 1]),
     ValueError, "points[3]: repeats points[0]"),
    (lambda: wall(points=[(0, 0), (4, 3), (8, 6)], kind="solid", thickness=None), ValueError,
     "the polyline has no properties"),
    (lambda: batch(points=[*TRIANGLE, (0, 0), (1, NAN), (1, 1)]), ValueError,
     "points[4] (section 1, contour 1, its point 1): y is nan"),
    (lambda: batch(contours=[0, 4, 6]), ValueError, "contour 1 (section 1) has 2 points, at least 3"),
    (lambda: batch(contours=[0, 6, 3]), ValueError, "contour 1 (section 1) has -3 points"),
    (lambda: batch(contours=[0, 3, 7]), ValueError, "the last is 7, but there are 6 points"),
    (lambda: batch(contours=[3, 6]), ValueError, "contour_offsets: expected 0 and then where each"),
    (lambda: batch(contours=[1, 3, 6]), ValueError, "contour_offsets: expected 0 and then where each"),
    (lambda: batch(sections=[0, 0, 2]), ValueError, "section 0 has 0 contours"),
    (lambda: batch(sections=[]), ValueError, "section_offsets: expected 0 and then where each"),
    (lambda: batch(sections=[0, 1.0, 2]), TypeError, "section_offsets: expected whole numbers"),
    (lambda: batch(sections=[[0, 1, 2]]), ValueError, "section_offsets: expected whole numbers in one"),
    (lambda: batch(flags=[1]), ValueError, "flags: one per contour is needed: 2 contours, found 1"),
    (lambda: batch(flags=[1, 300]), ValueError, "flags[1]: expected 0 to 255, got 300"),
    (lambda: batch(dx=[0, 0, 0]), ValueError, "dx: one number, or one per section: 2 sections, found 3"),
    (lambda: batch(dy=[0, NAN]), ValueError, "dy[1]: expected a finite number, got nan"),
    (lambda: batch(threads=-1), ValueError, "threads: expected 0 to 1024, got -1"),
    (lambda: batch()["areas"], KeyError, "'areas' is none of area, centroid_x"),
])
def test_mistakes_are_named(call, kind, message):
    with pytest.raises(kind) as caught:
        call()
    assert message in str(caught.value)


class Frame:
    """As pandas has columns with room for missing values: an array of objects, unless asked for numbers."""

    dtypes = np.array(["Float64", "string"], object)

    def __init__(self, rows):
        self.rows = rows

    def __array__(self, dtype=None, copy=None):
        return np.array(self.rows, object)

    def to_numpy(self, dtype, na_value):
        return np.array([[na_value if item is None else item for item in row] for row in self.rows], dtype)


def test_columns_with_room_for_missing_values_are_read():
    assert ContourSection().add(Frame(TRIANGLE)).properties().area == 6
    for wrong, kind, message in ((None, ValueError, "points[1]: x is nan"),
                                 ("a", TypeError, "points: expected columns of numbers, got ['Float64', 'string']")):
        with pytest.raises(kind) as caught:
            ContourSection().add(Frame([(0, 0), (wrong, 0), (0, 3)]))
        assert str(caught.value).startswith(message)


def test_a_batch_of_no_section_is_empty():
    assert compute_batch([], [0], [], [0]).values.shape == (0, 17)
    with pytest.raises(ValueError, match="the last is 0, but there are 3 points"):
        compute_batch(TRIANGLE, [0], [], [0])


PLATE = (SQUARE, True)
GRID = [(x, y) for x in (5, 30, 55, 80) for y in (5, 30, 55, 80)]
TURNED = np.array([(5.0, 0.0), (10.0, 5.0), (5.0, 10.0), (0.0, 5.0)])


@pytest.mark.parametrize("parts, place", [
    (holes(1, (0, 0)), "number 1 reaches to (0, 0)"),
    ([PLATE, *holes(1.5, (-25, -25))], "number 2 reaches to (-25, -25)"),
    ([PLATE, *holes(0.5, (200, 0))], "number 2 reaches to (200, 0)"),
    ([*holes(0.5, (75, 20)), PLATE], "number 1 reaches to (125, 20)"),
    # In the notch, with no edge in common and with all but one.
    ([(CHANNEL, True), *holes(0.2, (30, 80))], "number 2 reaches to (30, 80)"),
    ([(CHANNEL, True), (CHANNEL[2:6], False)], "number 2 reaches to (44, 12.0"),
    ([PLATE, *holes(0.1, (10, 10), (10, 10))], "(15, 10.0"),
    ([PLATE, *holes(0.1, (10, 10), (15, 12))], "(15, 12)"),
    ([PLATE, (20 * TURNED, False)], "number 2 reaches to (1"),
    ([PLATE, *holes(0.1, *GRID, (55, 95))], "number 18 reaches to"),
])
def test_a_hole_where_nothing_is_to_subtract_is_named(parts, place):
    for scale in (1.0, 1e-3):
        moved = [(scale * np.array(points), solid) for points, solid in parts]
        flat = [len(points) for points, _ in moved]
        values = compute_batch(np.concatenate([points for points, _ in moved]), np.cumsum([0, *flat]),
                               [solid for _, solid in moved], [0, len(flat)]).values
        assert np.isnan(values).all()
        with pytest.raises(ValueError, match="the hole that was added as number") as caught:
            section(*moved).properties()
        assert scale != 1.0 or place in str(caught.value)


@pytest.mark.parametrize("parts, area", [
    ([*holes(0.5, (0, 0)), PLATE], 7500),
    ([PLATE, ([(0, 40), (20, 50), (0, 60)], False)], 9800),
    ([PLATE, (SQUARE + (100, 0), True), *holes(0.5, (75, 25))], 17500),
    ([PLATE, *holes(0.8, (10, 10)), (0.2 * SQUARE + 40, True), *holes(0.1, (45, 45))], 3900),
    ([PLATE, *holes(0.5, (0.00005, -0.00005))], 7500),  # as rounded coordinates stick out
    ([PLATE, (10 * TURNED, False)], 5000),
    ([PLATE, *holes(0.1, *GRID)], 8400),
    ([PLATE, ([(0, 0), (1e-7, 0), (0, 1e-7)], False)], 10000),
])
def test_holes_in_their_place_are_subtracted(parts, area):
    assert section(*parts).properties().area == pytest.approx(area)


STRIP = np.array([(0, 0), (1000, 0), (1000, 1), (0, 1)])
THIN = [(0, 0), (1e4, 3000), (1e4, 3000 + 1e-5), (0, 1e-5)]


@pytest.mark.parametrize("points, told", [
    # 9.2 u 1e4 (1.1 d)^2 of 1.8e6, and 9 u 1e3 d^2 of 83.3: relative errors of 1e-2, 6e-7 and 1e-2.
    (ANGLE + (3.9e7, 4.29e7), "far from the origin that .* about 1 are left; move the origin"),
    (ANGLE + (3e5, 3.3e5), "about 6 are left"), (STRIP + (0, 1e6), "about 1 are left"),
    (THIN, "thin for its size that .* about 4 are left; turn it")])
def test_few_digits_are_told(points, told):
    with pytest.warns(LostDigitsWarning, match=told) as caught:
        ContourSection().add(points).properties()
    assert [warning.filename for warning in caught] == [__file__], "once, and where the call is"
    near, none = ContourSection().add(ANGLE + 3e4).properties(), ANGLE + 1e9
    with pytest.warns(LostDigitsWarning, match="1 of 3 sections") as caught:
        ends = np.cumsum([0, 6, len(points), 6])
        values = compute_batch([*ANGLE + 3e4, *points, *none], ends, [1] * 3, range(4))
    assert len(caught) == 1 and values["inertia_x"][0] == near.inertia_x
    assert np.isnan(values.values[2, 3:10]).all() and not np.isnan(values.values[:2]).any()


class Raising:
    def __init__(self, error):
        self.error = error

    def __float__(self):
        raise self.error


@pytest.mark.parametrize("error", [KeyboardInterrupt, MemoryError, RuntimeError])
def test_other_errors_go_through(error):
    with pytest.raises(error):
        ContourSection().add([(0, 0), (1, Raising(error)), (1, 1)])


def test_objects_without_init_are_refused():
    with pytest.raises(TypeError, match="__init__ was not called"):
        CSectionTools.__new__(CSectionTools).GetCDG()


def test_corners_may_touch():
    assert wall(radii=[0, 55.99, 0]).area == pytest.approx(560)
    # A hole of 1 x 1 is left, and none.
    for thickness, area in ((99, 199**2 - 1), (100, 200**2)):
        assert wall(points=SQUARE, kind="closed_wall", thickness=thickness).area == pytest.approx(area)
