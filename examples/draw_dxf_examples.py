#!/usr/bin/env python3
"""Draws the example DXF drawings of this folder: python3 draw_dxf_examples.py [FOLDER].

What a DXF drawing may hold is described in docs/file-format.md.
"""
import pathlib
import sys


def groups(*pairs):
    """The lines of pairs of group code and value."""
    return "".join(f"{code:3}\n{value}\n" for code, value in pairs)


def entity(kind, *pairs, layer="0"):
    return groups((0, kind), (8, layer), *pairs)


def line(x1, y1, x2, y2, layer="0"):
    return entity("LINE", (10, x1), (20, y1), (11, x2), (21, y2), layer=layer)


def arc(x, y, radius, start, end):
    """Counter-clockwise from the angle start to end, in degrees."""
    return entity("ARC", (10, x), (20, y), (40, radius), (50, start), (51, end))


def layer(name, is_off):
    return groups((0, "LAYER"), (2, name), (70, 0), (62, -7 if is_off else 7), (6, "CONTINUOUS"))


def drawing(unit, layers, entities):
    """A whole file; the unit is the number of $INSUNITS: 1 in, 4 mm, 5 cm, 6 m."""
    return (groups((0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1009"),
                   (9, "$INSUNITS"), (70, unit), (0, "ENDSEC"))
            + groups((0, "SECTION"), (2, "TABLES"), (0, "TABLE"), (2, "LAYER"), (70, len(layers)))
            + "".join(layers) + groups((0, "ENDTAB"), (0, "ENDSEC"))
            + groups((0, "SECTION"), (2, "ENTITIES")) + "".join(entities)
            + groups((0, "ENDSEC"), (0, "EOF")))


def ipe_300():
    """IPE 300 of lines and arcs in no order, with its axes on a layer that is off."""
    h, b, tw, tf, r = 300, 150, 7.1, 10.7, 15
    x, y = tw / 2 + r, h / 2 - tf - r  # centre of the upper right fillet
    parts = [line(-90, 0, 90, 0, "AXES"), line(0, -165, 0, 165, "AXES")]
    for side in (1, -1):
        parts += [line(-b / 2, side * h / 2, b / 2, side * h / 2),
                  line(side * tw / 2, -y, side * tw / 2, y)]
        for up in (1, -1):
            parts += [line(side * b / 2, up * h / 2, side * b / 2, up * (h / 2 - tf)),
                      line(side * x, up * (h / 2 - tf), side * b / 2, up * (h / 2 - tf))]
            start = {(1, 1): 90, (-1, 1): 0, (-1, -1): 270, (1, -1): 180}[side, up]
            parts.append(arc(side * x, up * y, r, start, start + 90))
    return drawing(4, [layer("0", False), layer("AXES", True)], parts)


def extrusion():
    """A rounded box 8 x 5 cm with an elliptical and a round hole and a pin in the round one."""
    def corner(x, y, bulge):
        return (10, x), (20, y), (42, bulge)
    quarter = 0.41421356237309503  # tangent of a quarter of 90 degrees
    corners = (corner(1, 0, 0) + corner(7, 0, quarter) + corner(8, 1, 0) + corner(8, 4, quarter)
               + corner(7, 5, 0) + corner(1, 5, quarter) + corner(0, 4, 0) + corner(0, 1, quarter))
    return drawing(5, [layer("0", False)], [
        entity("LWPOLYLINE", (90, 8), (70, 1), *corners),
        entity("ELLIPSE", (10, 2.5), (20, 2.5), (11, 0), (21, 2), (40, 0.75), (41, 0),
               (42, 6.283185307179586)),
        entity("CIRCLE", (10, 6), (20, 2.5), (40, 1)),
        entity("CIRCLE", (10, 6), (20, 2.5), (40, 0.5)),
        entity("TEXT", (10, 0), (20, 6), (40, 0.5), (1, "Extrusion 8 x 5"))])


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent)
    for name, text in (("ipe-300-lines", ipe_300()), ("extrusion-cm", extrusion())):
        (folder / f"{name}.dxf").write_text(text, encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
