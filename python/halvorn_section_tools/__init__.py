"""Properties of structural cross-sections: areas, inertias, elastic and plastic moduli, torsion.

>>> from halvorn_section_tools import Section
>>> channel = Section().add([(0, 0), (80, 0), (80, 12), (8, 12), (8, 188), (80, 188), (80, 200), (0, 200)])
>>> print(f"{channel.properties().inertia_x:.6g}")
2.06227e+07

Points are arrays of shape (n, 2) or sequences of pairs (x, y), x to the right, y up; contours close
by themselves. Everything is in one unit of length L of your choice, results in its powers.

`Section` is the class to use, `compute_batch` takes many sections at once, and `CSectionTools` is
the C++ class member by member.
"""

from ._batch import BatchProperties, compute_batch
from ._core import CalculValues, ContourValues, CSectionTools, __version__
from ._results import LostDigitsWarning, PolylineProperties, SectionProperties
from ._section import Section

__all__ = [
    "BatchProperties",
    "CSectionTools",
    "CalculValues",
    "ContourValues",
    "LostDigitsWarning",
    "PolylineProperties",
    "Section",
    "SectionProperties",
    "__version__",
    "compute_batch",
]
