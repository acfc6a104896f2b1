#!/usr/bin/env python3
"""Three sections, their properties and their neutral axes.

Written as a notebook: each part between `# %%` lines is a cell. Run as a script it writes
three_sections.png into the current folder, or into the one that it is given.
"""

# %% A channel, in mm: its own points, one contour.
import pathlib
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt

from halvorn_section_tools import ContourSection

channel = ContourSection().add(
    [(0, 0), (80, 0), (80, 12), (8, 12), (8, 188), (80, 188), (80, 200), (0, 200)]
)
print("Channel, mm", channel.properties(), sep="\n")

# %% A box girder of concrete, in m: a solid and a hole.
box = ContourSection()
box.add([(0, 2.0), (1.5, 1.7), (2.0, 0), (5.0, 0), (5.5, 1.7), (7.0, 2.0), (7.0, 2.3), (0, 2.3)])
box.add([(1.9, 1.9), (2.3, 0.25), (4.7, 0.25), (5.1, 1.9)], solid=False)
print("\nBox girder, m", box.properties(), sep="\n")

# %% An angle, in mm: its principal axes are inclined.
angle = ContourSection().add([(0, 0), (100, 0), (100, 12), (12, 12), (12, 150), (0, 150)])
properties = angle.properties()
print("\nAngle, mm", properties, sep="\n")

# %% The figures, each with G, the elastic neutral axes and the inclined principal ones.
figure, axes = plt.subplots(1, 3, figsize=(12, 4.2), constrained_layout=True)
for ax, section, title in zip(
    axes, (channel, box, angle), ("Channel [mm]", "Box girder [m]", "Angle [mm]")
):
    section.plot(ax)
    ax.set_title(title)
folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
figure.savefig(folder / "three_sections.png", dpi=120)
