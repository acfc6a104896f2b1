"""Sections that the tests of the tool share, and how they run it: TOOL SOURCE_FOLDER."""
import copy
import json
import pathlib
import subprocess
import sys

TOOL, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
EXAMPLES = SOURCE / "examples"

RECTANGLE = {"version": 1, "unit": "mm", "contours": [
    {"kind": "solid", "points": [[0, 0], [200, 0], [200, 400], [0, 400]]}]}
WALL = {"version": 1, "unit": "cm", "polyline": {
    "kind": "open_wall", "thickness": 2, "torsion": "general", "points": [[0, 0], [50, 0]]}}
ROUNDED = {"version": 1, "unit": "in", "polyline": {
    "kind": "solid", "points": [[0, 0], [10, 0], [10, 10], [0, 10]], "radii": [2, 2, 2, 2]}}
PROFILE = json.loads((EXAMPLES / "ipe-300-cover-plate.json").read_text(encoding="utf-8"))
REMOVE = object()


def edited(section, pointer, value):
    """A copy of the section with the member at a JSON pointer set, added or removed."""
    section = copy.deepcopy(section)
    *path, last = [int(t) if t.isdigit() else t for t in pointer.split("/")[1:]]
    place = section
    for token in path:
        place = place[token]
    if value is REMOVE:
        del place[last]
    else:
        place[last] = value
    return section


def run(*arguments, text=None, **options):
    data = text if isinstance(text, (bytes, type(None))) else text.encode()
    streams = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options}
    return subprocess.run([TOOL, *map(str, arguments)], input=data, timeout=60, check=False,
                          **streams)


def reject_constant(name):
    raise ValueError(f"{name} is not JSON")


def results(section, *options):
    """The parsed JSON results, the class's too, of a section as an object or as the path of a file."""
    is_file = isinstance(section, pathlib.Path)
    done = run("--json", "--class-values", *options, section if is_file else "-",
               text=None if is_file else json.dumps(section))
    assert (done.returncode, done.stderr) == (0, b""), done
    return json.loads(done.stdout, parse_constant=reject_constant)
