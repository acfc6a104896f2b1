"""Properties of structural cross-sections: areas, inertias, elastic and plastic moduli, torsion.

>>> from halvorn_section_tools import Section
>>> girder = Section.profile("HEB300").with_on_top(Section.shape("plate", width=320, height=20))
>>> print(f"{girder.properties().inertia_x:.6g}")
3.66499e+08

Points are arrays of shape (n, 2) or sequences of pairs (x, y), x to the right, y up; contours close
by themselves. Every length is in the unit of the section, results in its powers.

`Section` is the class to use, `profiles` lists the catalogue. `compute_batch` takes many sections at
once; it, `ContourSection` and `CSectionTools`, the C++ class member by member, give the values of
that class alone.
"""

from ._batch import BatchProperties, compute_batch
from ._catalogue import Catalogue, profiles
from ._contour_section import ContourSection
from ._core import CalculValues, ContourValues, CSectionTools, InputError, __version__
from ._properties import Properties, Warping
from ._quantity import Quantity, ValueDetails
from ._report import Finding, Half, Halves
from ._results import LostDigitsWarning, PolylineProperties, SectionProperties, SectionWarning
from ._section import Section
from ._shown import Polygon
from ._stresses import Peak, Peaks, StressArrays, Stresses, StressMesh

__all__ = [
    "BatchProperties",
    "CSectionTools",
    "CalculValues",
    "Catalogue",
    "ContourSection",
    "ContourValues",
    "Finding",
    "Half",
    "Halves",
    "InputError",
    "LostDigitsWarning",
    "Peak",
    "Peaks",
    "Polygon",
    "PolylineProperties",
    "Properties",
    "Quantity",
    "Section",
    "SectionProperties",
    "SectionWarning",
    "StressArrays",
    "StressMesh",
    "Stresses",
    "ValueDetails",
    "Warping",
    "__version__",
    "compute_batch",
    "profiles",
]
