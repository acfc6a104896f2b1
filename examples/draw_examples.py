#!/usr/bin/env python3
"""Draws the example sections of this folder: python3 draw_examples.py [FOLDER].

Every outline is counter-clockwise, in the unit of its file. The format is described in
docs/file-format.md.
"""
import json
import math
import pathlib
import sys

CHORDS = 48  # per quarter circle


def arc(cx, cy, radius, start, sweep):
    """Points of an arc of a quarter circle, both ends included; angles in degrees.

    The ends lie on the circle, the points between them as far outside as makes the area exact:
    twice the area of the chords is sin d (2 k + (n - 2) k^2) r^2 = n d r^2.
    """
    step = math.radians(90 / CHORDS)
    target = CHORDS * step / math.sin(step)
    outside = target / (1 + math.sqrt(1 + (CHORDS - 2) * target))
    def point(i):
        at = radius * (outside if 0 < i < CHORDS else 1)
        angle = math.radians(start + sweep * i / CHORDS)
        return cx + at * math.cos(angle), cy + at * math.sin(angle)
    return [point(i) for i in range(CHORDS + 1)]


def i_section(h, b, tw, tf, r):
    """Doubly symmetric I with root fillets, centred on the origin."""
    def fillet(sx, sy, start):  # round the inner corner of the quadrant (sx, sy), counter-clockwise
        return arc(sx * (tw / 2 + r), sy * (h / 2 - tf - r), r, start, -90)
    return ([(-b / 2, -h / 2), (b / 2, -h / 2), (b / 2, tf - h / 2)] + fillet(1, -1, 270)
            + fillet(1, 1, 180) + [(b / 2, h / 2 - tf), (b / 2, h / 2), (-b / 2, h / 2),
                                   (-b / 2, h / 2 - tf)]
            + fillet(-1, 1, 90) + fillet(-1, -1, 360) + [(-b / 2, tf - h / 2)])


def ring(radius):
    """Points at equal angles, so far outside the circle that their polygon has its length."""
    count = 4 * CHORDS
    at = radius * (math.pi / count) / math.sin(math.pi / count)
    return [(at * math.cos(math.tau * i / count), at * math.sin(math.tau * i / count))
            for i in range(count)]


def box(x0, y0, x1, y1):
    return [(x0, y0), (x1, y0), (x1, y1), (x0, y1)]


def keyhole(outer, inner):
    """Outer outline, bridge to the inner one, which runs the other way round, and the bridge back."""
    return outer + outer[:1] + inner[:1] + inner[:0:-1] + inner[:1]


def solid(points):
    return {"kind": "solid", "points": points}


SHS = (box(0, 0, 100, 100), box(5, 5, 95, 95))

EXAMPLES = {
    "ipe-300": {
        "name": "IPE 300", "unit": "mm",
        "description": "Rolled I section 300 x 150 x 7.1 x 10.7 with root fillets of 15",
        "parts": [{"shape": "i", "height": 300, "width": 150, "web": 7.1, "flange": 10.7,
                   "root_radius": 15, "at": "centroid"}]},
    "upe-200": {
        "name": "UPE 200", "unit": "mm",
        "description": "Channel 200 x 80 x 6 x 11 with root fillets of 13, back of the web on x = 0",
        "parts": [{"shape": "channel", "height": 200, "width": 80, "web": 6, "flange": 11,
                   "root_radius": 13, "move": [0, -100]}]},
    "l-100x100x10": {
        "name": "L 100 x 100 x 10", "unit": "mm",
        "description": "Equal angle with root radius 12 and toe radii 6, heel at the origin",
        "parts": [{"shape": "angle", "height": 100, "width": 100, "thickness": 10,
                   "root_radius": 12, "toe_radius": 6}]},
    "shs-100x5": {
        "name": "SHS 100 x 5, solid and hole", "unit": "mm",
        "description": "Square hollow section with sharp corners as a solid and a hole",
        "contours": [solid(SHS[0]), {"kind": "hole", "points": SHS[1]}]},
    "shs-100x5-keyhole": {
        "name": "SHS 100 x 5, keyhole", "unit": "mm",
        "description": "The same hollow section as one contour, for hosts that want net plastic moduli",
        "contours": [solid(keyhole(*SHS))]},
    "t-beam-metres": {
        "name": "T-beam", "unit": "m",
        "description": "Concrete T-beam in metres: flange 1.20 x 0.15, web 0.30 x 0.45",
        "contours": [solid([(-0.15, 0), (0.15, 0), (0.15, 0.45), (0.6, 0.45), (0.6, 0.6),
                            (-0.6, 0.6), (-0.6, 0.45), (-0.15, 0.45)])]},
    "ipe-300-cover-plate": {
        "name": "IPE 300 with a cover plate", "unit": "mm",
        "description": "Catalogue values of the profile, a plate of 200 x 15 on its upper flange",
        "contours": [solid(box(-100, 150, 100, 165))],
        "profiles": [{
            "name": "IPE 300", "kind": "solid", "outline": i_section(300, 150, 7.1, 10.7, 15),
            "angle_radians": 0, "centroid": [0, 0], "area": 5381,
            "shear_area_1": 3210, "shear_area_2": 2568,
            "torsion_constant": 201200, "inertia_1": 83560000, "inertia_2": 6038000,
            "torsion_modulus": 18800, "plastic_modulus_x": 628400, "plastic_modulus_y": 125200,
            "extra": 42.2}]},
    "bent-plate": {
        "name": "Bent plate", "unit": "mm",
        "description": "Hat of 3 mm sheet, inner bending radii of 4, by its mid-line",
        "polyline": {
            "kind": "open_wall", "thickness": 3, "torsion": "general",
            "points": [(0, 0), (30, 0), (50, 60), (110, 60), (130, 0), (160, 0)],
            "radii": [0, 4, 4, 4, 4, 0]}},
    "welded-girder": {
        "name": "Welded girder", "unit": "mm", "density": 7850,
        "description": "Monosymmetric I of three plates, its lower flange the wider one",
        "parts": [{"shape": "i_mono", "height": 800, "web": 10, "top_width": 250,
                   "top_flange": 15, "bottom_width": 350, "bottom_flange": 20}]},
    "upe-200-pair": {
        "name": "Two UPE 200 back to back with a plate", "unit": "mm", "density": 7850,
        "description": "Catalogue channels 10 apart, one turned over; a plate of 170 x 12 on them",
        "parts": [{"profile": "UPE200", "move": [5, 0]},
                  {"profile": "UPE200", "mirror": "y", "move": [-5, 0]},
                  {"shape": "plate", "width": 170, "height": 12, "move": [-85, 200],
                   "name": "plate"}]},
    "hat-on-plate": {
        "name": "Hat on a plate", "unit": "mm", "density": 7850,
        "description": "Cold-formed hat of 3 mm sheet on a plate of 200 x 6",
        "parts": [{"shape": "plate", "width": 200, "height": 6, "move": [-20, -7.5]},
                  {"name": "hat", "wall": {
                      "kind": "open", "thickness": 3, "radii": [0, 4, 4, 4, 4, 0],
                      "points": [(0, 0), (30, 0), (50, 60), (110, 60), (130, 0), (160, 0)]}}]},
    "crane-girder": {
        "name": "Crane girder", "unit": "mm", "density": 7850,
        "description": "HEB 300, an UPE 400 on its upper flange with the web flat and the flanges "
                       "down",
        "parts": [{"name": "girder", "profile": "HEB300", "at": "bottom_centre"},
                  {"name": "channel", "profile": "UPE400", "rotate": -90,
                   "on": "girder", "side": "top", "touch": "outline"}]},
    "battened-channels": {
        "name": "Two UPE 200 with battens", "unit": "mm", "density": 7850,
        "description": "Toes 100 apart; the battens join the two and are no part of the section",
        "parts": [{"name": "left", "profile": "UPE200"},
                  {"name": "right", "profile": "UPE200", "mirror": "y",
                   "on": "left", "side": "right", "gap": 100}]},
    "stiffened-box": {
        "name": "Box with stiffeners", "unit": "mm", "density": 7850,
        "description": "Flanges 1000 x 20, webs 760 x 12, three stiffeners 100 x 10 within on each "
                       "flange, one on each web",
        "parts": [{"name": "bottom", "shape": "plate", "width": 1000, "height": 20,
                   "at": "bottom_centre"},
                  {"name": "web", "shape": "plate", "width": 12, "height": 760,
                   "on": "bottom", "side": "top", "repeat": {"count": 2, "step": [788, 0]}},
                  {"name": "top", "shape": "plate", "width": 1000, "height": 20,
                   "on": "web", "side": "top"},
                  {"shape": "plate", "width": 10, "height": 100,
                   "on": "bottom", "side": "top", "repeat": {"count": 3, "step": [200, 0]}},
                  {"shape": "plate", "width": 10, "height": 100,
                   "on": "top", "side": "bottom", "repeat": {"count": 3, "step": [200, 0]}},
                  {"shape": "plate", "width": 100, "height": 10, "on": "web 1", "side": "right"},
                  {"shape": "plate", "width": 100, "height": 10, "on": "web 2", "side": "left"}]},
    "composite-beam": {
        "name": "IPE 300 under a concrete slab", "unit": "mm",
        "description": "Slab of 1000 x 100, its E a seventh of that of steel",
        "parts": [{"name": "beam", "profile": "IPE300", "move": [-75, 0]},
                  {"name": "slab", "shape": "plate", "width": 1000, "height": 100,
                   "move": [-500, 300], "modular_ratio": 1 / 7}]},
    "chs-114x5": {
        "name": "CHS 114.3 x 5", "unit": "mm",
        "description": "Circular tube by its mid-line of 192 points, as long as the circle; torsion "
                       "of a circular tube",
        "polyline": {
            "kind": "closed_wall", "thickness": 5, "torsion": "tube",
            "points": ring(54.65)}},
}


def as_json(section):
    """JSON with one point per line and short numbers: 1e-9 is far below any drawing's accuracy."""
    def short(value):
        if isinstance(value, dict):
            return {key: short(item) for key, item in value.items()}
        if isinstance(value, (list, tuple)):
            return [short(item) for item in value]
        if isinstance(value, float):
            rounded = round(value, 9) + 0.0  # no -0.0
            return int(rounded) if rounded.is_integer() else rounded
        return value

    def write(value, indent):
        inner = indent + "  "
        if isinstance(value, dict):
            items = [f"{inner}{json.dumps(key)}: {write(item, inner)}"
                     for key, item in value.items()]
            return "{\n" + ",\n".join(items) + f"\n{indent}}}"
        if isinstance(value, list) and value and isinstance(value[0], (dict, list)):
            return "[\n" + ",\n".join(inner + write(item, inner) for item in value) + f"\n{indent}]"
        return json.dumps(value)
    return write(short({"version": 1, **section}), "") + "\n"


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent)
    for name, section in EXAMPLES.items():
        (folder / f"{name}.json").write_text(as_json(section), encoding="utf-8")


if __name__ == "__main__":
    main()
