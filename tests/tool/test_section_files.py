#!/usr/bin/env python3
"""Runs halvorn-section on good and bad inputs: test_section_files.py TOOL SOURCE_FOLDER."""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

try:
    import jsonschema
except ImportError:
    sys.exit("error: python3-jsonschema is missing: scripts/setup check")

from sections import EXAMPLES, PROFILE, RECTANGLE, REMOVE, ROUNDED, SOURCE, WALL, edited, run

SCHEMA = json.loads((SOURCE / "docs/section.schema.json").read_text(encoding="utf-8"))

PLATE = {"shape": "plate", "width": 200, "height": 10}
I_SHAPE = {"shape": "i", "height": 300, "width": 150, "web": 7.1, "flange": 10.7, "root_radius": 15}
BOX = {"kind": "closed", "thickness": 5, "points": [[0, 0], [95, 0], [95, 95], [0, 95]]}
PARTS = {"version": 1, "unit": "mm", "parts": [
    {**PLATE, "kind": "solid", "at": "centroid", "mirror": "x", "rotate": -45, "move": [1, 2]},
    I_SHAPE, {"wall": {**BOX, "radii": [10] * 4}}, {"points": [[0, 0], [1, 0], [0, 1]]},
    {"profile": "ipe 300", "values": "published", "name": "beam",
     "repeat": {"count": 2, "step": [200, 0]}},
    {"shape": "rhs", "height": 100, "width": 80, "thickness": 5, "outer_radius": 10},
    {"shape": "channel", "height": 100, "width": 50, "web": 5, "flange": 8.5, "root_radius": 8.5,
     "flange_slope": 0.08, "flange_at_from_toe": 25, "toe_radius": 4.5},
    {**PLATE, "on": "beam 2", "side": "top", "touch": "outline", "align": "left", "gap": 0}]}

# Refused by the tool at this place with this word, and by the schema as well.
BAD_SECTIONS = [
    (RECTANGLE, "/version", 2, "/version", "version 1"),
    (RECTANGLE, "/version", "1", "/version", "a number"),
    (RECTANGLE, "/version", REMOVE, "top level", '"version"'),
    (RECTANGLE, "/unit", REMOVE, "top level", '"unit"'),
    (RECTANGLE, "/unit", "ft", "/unit", '"mm", "cm", "m", "in"'),
    (RECTANGLE, "/colour", 1, "top level", '"colour"'),
    (RECTANGLE, "/name", 7, "/name", "text"),
    (RECTANGLE, "/contours", [], "top level", "empty"),
    (RECTANGLE, "/contours", REMOVE, "top level", "empty"),
    (RECTANGLE, "/contours", {}, "/contours", "found an object"),
    (RECTANGLE, "/contours/0", None, "/contours/0", "found null"),
    (RECTANGLE, "/contours/0/kind", "void", "/contours/0/kind", '"solid", "hole"'),
    (RECTANGLE, "/contours/0/pionts", [], "/contours/0", '"points"'),
    (RECTANGLE, "/contours/0/a\nb", [], "/contours/0", 'unknown key "a b"'),
    (RECTANGLE, "/contours/0/points", [[0, 0], [1, 0]], "/contours/0/points", "found 2"),
    (RECTANGLE, "/contours/0/points", [0, 0, 1, 0, 1], "/contours/0/points/0", "[x, y]"),
    (RECTANGLE, "/contours/0/points/2", [1], "/contours/0/points/2", "found 1"),
    (RECTANGLE, "/contours/0/points/3", [1, 2, 3], "/contours/0/points/3", "found 3"),
    (RECTANGLE, "/contours/0/points/1/1", "x", "/contours/0/points/1/1", "found a string"),
    (RECTANGLE, "/polyline", WALL["polyline"], "/polyline", "alone"),
    (PROFILE, "/profiles/0/area", 0, "/profiles/0/area", "greater than 0"),
    (PROFILE, "/profiles/0/area", REMOVE, "/profiles/0", '"area"'),
    (PROFILE, "/profiles/0/inertia_2", -1, "/profiles/0/inertia_2", "negative"),
    (PROFILE, "/profiles/0/centroid", [1], "/profiles/0/centroid", "two numbers"),
    (PROFILE, "/profiles/0/angle", 1, "/profiles/0", '"angle_radians"'),
    (PROFILE, "/profiles/0/outline", [], "/profiles/0/outline", "found 0"),
    (WALL, "/polyline/thickness", 0, "/polyline/thickness", "greater than 0"),
    (WALL, "/polyline/thickness", -2, "/polyline/thickness", "greater than 0"),
    (WALL, "/polyline/thickness", REMOVE, "/polyline", '"thickness"'),
    (WALL, "/polyline/torsion", "exact", "/polyline/torsion", '"tube", "general"'),
    (WALL, "/polyline/points", [[0, 0]], "/polyline/points", "at least 2"),
    (WALL, "/polyline/kind", "closed_wall", "/polyline/points", "at least 3"),
    (ROUNDED, "/polyline/radii/2", -2, "/polyline/radii/2", "negative"),
    (ROUNDED, "/polyline/thickness", 1, "/polyline/thickness", "a solid has no"),
    (PARTS, "/parts", [], "top level", "empty"),
    (PARTS, "/polyline", WALL["polyline"], "/polyline", "alone"),
    (PARTS, "/density", 0, "/density", "greater than 0"),
    (PARTS, "/chord_tolerance", "fine", "/chord_tolerance", "a number"),
    (PARTS, "/parts/0", 7, "/parts/0", "an object"),
    (PARTS, "/parts/0/shape", REMOVE, "/parts/0", '"shape", "profile", "points", "wall"'),
    (PARTS, "/parts/0/shape", "box", "/parts/0/shape", '"i", "i_mono", "channel"'),
    (PARTS, "/parts/0/points", [], "/parts/0", 'both "shape" and "points"'),
    (PARTS, "/parts/0/width", REMOVE, "/parts/0", '"width"'),
    (PARTS, "/parts/0/width", -200, "/parts/0/width", "greater than 0"),
    (PARTS, "/parts/0/thickness", 1, "/parts/0", 'unknown key "thickness"'),
    (PARTS, "/parts/0/kind", "void", "/parts/0/kind", '"solid", "hole"'),
    (PARTS, "/parts/0/at", "middle", "/parts/0/at", '"corner", "centroid"'),
    (PARTS, "/parts/0/mirror", "z", "/parts/0/mirror", '"x", "y"'),
    (PARTS, "/parts/0/rotate", "45", "/parts/0/rotate", "a number"),
    (PARTS, "/parts/0/move", [1], "/parts/0/move", "two numbers"),
    (PARTS, "/parts/2/wall/kind", "open_wall", "/parts/2/wall/kind", '"open", "closed"'),
    (PARTS, "/parts/2/wall/torsion", "tube", "/parts/2/wall", 'unknown key "torsion"'),
    (PARTS, "/parts/2/wall/points", [[0, 0], [1, 1]], "/parts/2/wall/points", "at least 3"),
    (PARTS, "/parts/2/wall/radii/1", -1, "/parts/2/wall/radii/1", "negative"),
    (PARTS, "/parts/3/points", [[0, 0]], "/parts/3/points", "at least 3"),
    (PARTS, "/parts/3/values", "drawn", "/parts/3", 'unknown key "values"'),
    (PARTS, "/parts/4/profile", 300, "/parts/4/profile", "text"),
    (PARTS, "/parts/4/values", "exact", "/parts/4/values", '"drawn", "published"'),
    (PARTS, "/parts/6/flange_at_from_toe", REMOVE, "/parts/6/flange_slope", "both"),
    (PARTS, "/parts/4/repeat/count", 0, "/parts/4/repeat/count", "from 1 to 1000"),
    (PARTS, "/parts/4/repeat/count", 1.5, "/parts/4/repeat/count", "from 1 to 1000"),
    (PARTS, "/parts/4/repeat/step", 200, "/parts/4/repeat/step", "two numbers"),
    (PARTS, "/parts/7/on", REMOVE, "/parts/7/side", 'stands without "on"'),
    (PARTS, "/parts/7/side", REMOVE, "/parts/7", '"side"'),
    (PARTS, "/parts/7/at", "centre", "/parts/7/at", "other part"),
    (PARTS, "/parts/7/kind", "hole", "/parts/7/on", "a hole"),
    (PARTS, "/parts/7/touch", "edge", "/parts/7/touch", '"box", "outline"'),
    (PARTS, "/parts/7/align", "top", "/parts/7/align", '"left", "centre", "right"'),
    (PARTS, "/parts/7/gap", -1, "/parts/7/gap", "negative"),
    (PARTS, "/parts/0/modular_ratio", 0, "/parts/0/modular_ratio", "greater than 0"),
    (PARTS, "/parts/1/modular_ratio", "1/7", "/parts/1/modular_ratio", "a number"),
    (PARTS, "/parts/3", {"kind": "hole", "points": [[0, 0], [1, 0], [0, 1]], "modular_ratio": 1},
     "/parts/3/modular_ratio", "of every material; remove"),
    (RECTANGLE, "/contours/0/modular_ratio", -7, "/contours/0/modular_ratio", "greater than 0"),
    (edited(RECTANGLE, "/contours/0/kind", "hole"), "/contours/0/modular_ratio", 2,
     "/contours/0/modular_ratio", "a hole takes whatever lies under it"),
    (PROFILE, "/profiles/0/modular_ratio", None, "/profiles/0/modular_ratio", "a number"),
    (WALL, "/polyline/modular_ratio", 2, "/polyline", 'unknown key "modular_ratio"'),
]

# Numbers that the schema lets pass and that do not fit each other.
MISFITS = [
    (WALL, "/polyline/points/1", WALL["polyline"]["points"][0], "/polyline/points/1", "repeats point 0"),
    (ROUNDED, "/polyline/points/0", ROUNDED["polyline"]["points"][-1], "/polyline/points/3", "repeats point 0"),
    (PARTS, "/parts/1/web", 160, "/parts/1/web", '"web" smaller or "width" larger'),
    (PARTS, "/parts/1/flange", 150, "/parts/1/flange", '"height" larger'),
    (PARTS, "/parts/1/root_radius", 72, "/parts/1/root_radius", '"root_radius" smaller'),
    (PARTS, "/parts/5/thickness", 40, "/parts/5/thickness", '"width" larger'),
    (PARTS, "/parts/5/outer_radius", 41, "/parts/5/outer_radius", '"outer_radius" smaller'),
    (PARTS, "/parts/6/flange_at_from_toe", 200, "/parts/6/flange", "at the toe (-7.5)"),
    (PARTS, "/parts/6/toe_radius", 9, "/parts/6/toe_radius", "smaller"),
    (PARTS, "/chord_tolerance", 1e-13, "/parts/1", '"chord_tolerance" larger'),
    (PARTS, "/parts/4/profile", "IPE 301", "/parts/4/profile", '"IPE300"'),
    (PARTS, "/parts/2/wall/radii/1", 86, "/parts/2/wall/radii/1", "101 of its 95"),
    (PARTS, "/parts/2/wall/points/2", [95, 0], "/parts/2/wall/points/2", "remove"),
    (PARTS, "/parts/2/wall", {**BOX, "thickness": 96}, "/parts/2/wall/thickness", "thinner"),
    (PARTS, "/parts/3", {"points": [[0, 0], [1, 1], [2, 2]], "at": "centroid"}, "/parts/3/at",
     "no area"),
    (PARTS, "/parts/4/repeat/step", [0, 0], "/parts/4/repeat/step", "one place"),
    (PARTS, "/parts/7/on", "beam 3", "/parts/7/on", '"beam 2"'),
    (ROUNDED, "/polyline/points/2", [1e200, 1e200], "/polyline", "turns straight back"),
    (WALL, "/polyline/points/1", [1e200, 1e200], "/polyline", "coincide"),
    (ROUNDED, "/polyline/radii/3", 9, "/polyline/radii/3", "of its 10"),
    (json.loads((EXAMPLES / "bent-plate.json").read_text()), "/polyline/radii/2", 90,
     "/polyline/radii/2", "does not fit"),
    (WALL, "/polyline/points", [[0, 0], [50, 0], [1, 0]], "/polyline/thickness", "cross at point 1"),
]

# What no schema of the document can say.
BAD_TEXTS = [
    ("", "line 1, column 1", "empty"),
    ("\ufeff", "line 1, column", "empty"),
    ('{"%s": 1, "%s": 2}' % (("\u00e9" * 50,) * 2), "top level", "\u00e9" * 20 + '..." appears'),
    ('{"version": 1, "unit": "x%s"}' % ("\u00e9" * 50), "/unit", "x" + "\u00e9" * 19 + '..."'),
    ('{\n  "version": 1,\n}', "line 3, column 1", "not valid JSON"),
    ('{"version": 1, "unit": "mm", "contours": [[NaN', "line 1, column 44", "NaN"),
    ('{"version": Infinity}', "line 1, column 13", "Infinity"),
    ('{"version": 1, "unit": "mm"', "line 1, column 28", "not valid JSON"),
    (b'{"version": "\xff"}', "line 1, column 14", "UTF-8"),
    ('{"contours": [0, {"points": [[0, -1e999]]}]}', "/contours/1/points/0/1", "-1e999"),
    ('{"contours": [{"kind": "solid", "kind": "hole"}]}', "/contours/0", '"kind" appears twice'),
    ("[" * 100000, "/0/0/0/0", "nested"),
    ("[]", "top level", "expected an object"),
    (json.dumps(RECTANGLE) + "\0", "line 1, column", "zero byte"),
    ('{"name": "A text of more than twenty-four characters", x', "line 1, column 56", ", x'"),
    (json.dumps(edited(ROUNDED, "/polyline/radii", [2, 2])), "/polyline/radii", "4 points"),
]

# Whole messages: of what stands behind sound siblings, which the place must count.
BEAM = edited(RECTANGLE, "/contours", RECTANGLE["contours"] + [
    {"kind": "hole", "points": [[50, 50], [150, 50], [150, 150], [50, 150]]}])
BEHIND_SIBLINGS = [
    (edited(BEAM, "/contours/1/points/2/1", "x"),
     "/contours/1/points/2/1: expected a number, found a string; write a number here"),
    (edited(BEAM, "/contours/1/points/3", [1]),
     "/contours/1/points/3: a point needs exactly two numbers, found 1; write it as [x, y]"),
    (edited(BEAM, "/contours/1/kind", "void"),
     '/contours/1/kind: unknown value "void"; write one of "solid", "hole"'),
    (edited(BEAM, "/contours/1/pionts", []),
     '/contours/1: unknown key "pionts"; remove it or use one of "name", "kind", "points", '
     '"modular_ratio"'),
    (edited(PARTS, "/parts/5/thickness", -5),
     "/parts/5/thickness: must be greater than 0, found -5; write a positive number"),
    (edited(PARTS, "/parts/6/web", REMOVE), '/parts/6: missing key "web"; add it'),
    (edited(PARTS, "/parts/2/wall/radii/3", -1),
     "/parts/2/wall/radii/3: must not be negative, found -1; write 0 or a positive number"),
    (edited(PARTS, "/parts/2/modular_ratio", -0.5),
     "/parts/2/modular_ratio: must be greater than 0, found -0.5; write a positive number"),
    (json.dumps(edited(PARTS, "/parts/1/modular_ratio", 7)).replace('ratio": 7', 'ratio": 1e999'),
     "/parts/1/modular_ratio: line 1, column 281: the number 1e999 is beyond the range of a double; "
     "write a finite number"),
    (json.dumps(BEAM, indent=1).replace("150\n", "1e999\n", 1),
     "/contours/1/points/2/1: line 39, column 10: the number 1e999 is beyond the range of a double; "
     "write a finite number"),
    (json.dumps(BEAM).replace('"kind": "hole"', '"kind": "hole", "points": []'),
     '/contours/1: the key "points" appears twice; keep one of the two'),
    ("150,\n".join(json.dumps(BEAM, indent=1).rsplit("150\n", 1)),
     "line 44, column 5: not valid JSON: syntax error while parsing value - unexpected ']'; expected "
     "'[', '{', or a literal at '150,<U+000A>    ]'; correct it there (JSON has no comments, no trailing "
     "commas, no NaN and no Infinity)"),
]

BAD_COMMAND_LINES = [
    (["--colour", "x"], "--colour"),
    (["--dx", "wide", "x"], "dx"), (["--dx", "nan", "x"], "finite"), (["--dy", "1e999", "x"], "--dy"),
    (["--dx", "", "x"], "--dx"), (["--dx", "0x10", "x"], "--dx"),
    (["--dy", "1", EXAMPLES / "bent-plate.json"], "/polyline"),
    (["no/such/file.json"], "no/such/file.json"), ([EXAMPLES], "directory"), ([""], "empty"),
]


class BadInput(unittest.TestCase):
    def assert_refused(self, done, *words):
        message = done.stderr.decode(errors="replace")
        self.assertEqual((done.returncode, done.stdout), (2, b""), message)
        self.assertEqual(message.count("\n"), 1, message)
        self.assertTrue(message.startswith("halvorn-section: ") and ";" in message, message)
        for word in words:
            self.assertIn(word, message)

    def test_sections(self):
        for section, pointer, value, place, word in BAD_SECTIONS:
            with self.subTest(pointer=pointer, value=value):
                bad = edited(section, pointer, value)
                self.assert_refused(run("-", text=json.dumps(bad)),
                                    f"standard input: {place}: ", word)
                with self.assertRaises(jsonschema.ValidationError):
                    jsonschema.validate(bad, SCHEMA)

    def test_misfits(self):
        for section, pointer, value, place, word in MISFITS:
            with self.subTest(pointer=pointer, value=value):
                bad = edited(section, pointer, value)
                jsonschema.validate(bad, SCHEMA)
                self.assert_refused(run("-", text=json.dumps(bad)),
                                    f"standard input: {place}: ", word)

    def test_texts(self):
        for text, place, word in BAD_TEXTS:
            with self.subTest(text=text[:60]):
                self.assert_refused(run("--json", "-", text=text), place, word)

    def test_the_place_behind_siblings(self):
        for section, message in BEHIND_SIBLINGS:
            with self.subTest(message=message):
                text = section if isinstance(section, str) else json.dumps(section)
                self.assertEqual(run("-", text=text).stderr.decode(),
                                 f"halvorn-section: standard input: {message}\n")

    def test_command_lines(self):
        for arguments, word in BAD_COMMAND_LINES:
            with self.subTest(arguments=arguments):
                self.assert_refused(run(*arguments), word)

    def test_unreadable_file(self):
        if os.geteuid() == 0:
            self.skipTest("the superuser can read every file")
        with tempfile.NamedTemporaryFile(suffix=".json") as file:
            os.chmod(file.name, 0)
            self.assert_refused(run(file.name), file.name, "ermission")

    def test_full_disk(self):
        if not os.path.exists("/dev/full"):
            self.skipTest("no /dev/full here")
        for arguments in (["--help"], ["--version"], ["--json", EXAMPLES / "ipe-300.json"],
                          [EXAMPLES / "ipe-300.json"]):
            with self.subTest(arguments=arguments), open("/dev/full", "wb") as full:
                done = run(*arguments, stdout=full)
                self.assertEqual((done.returncode, done.stderr.count(b"\n")), (1, 1), done)


class Examples(unittest.TestCase):
    def test_are_what_the_script_draws(self):
        committed = {path.name: path.read_text() for path in EXAMPLES.glob("*.json")}
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([sys.executable, EXAMPLES / "draw_examples.py", folder], check=True)
            drawn = {path.name: path.read_text() for path in pathlib.Path(folder).iterdir()}
        self.assertTrue(committed)
        self.assertEqual(committed, drawn)

    def test_follow_the_schema(self):
        jsonschema.validators.validator_for(SCHEMA).check_schema(SCHEMA)
        for section in [RECTANGLE, WALL, ROUNDED, PARTS,
                        *(json.loads(path.read_text()) for path in EXAMPLES.glob("*.json"))]:
            jsonschema.validate(section, SCHEMA)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
