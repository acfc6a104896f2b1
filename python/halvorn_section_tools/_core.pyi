from typing import Any, NamedTuple, NoReturn, SupportsIndex

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._types import Number, Points

__version__: str
VALUE_NAMES: tuple[str, ...]

class CalculValues(NamedTuple):
    ixx: float
    xG: float
    yG: float
    area: float
    shearAreaY: float
    shearAreaZ: float
    inertiaY: float
    inertiaX: float
    inertiaXY: float
    wt: float
    welBottom: float
    welTop: float
    welLeft: float
    welRight: float
    wplx: float | None
    wply: float | None
    extraSum: float | None

class ContourValues(NamedTuple):
    area: float
    cdg: tuple[float, float]
    torsionConstant: float
    torsionModulus: float
    shearAreaX: float
    shearAreaY: float
    ixx: float
    iyy: float
    ixy: float

class CSectionTools:
    def __init__(self) -> None: ...
    def PushContour(self, points: Points, flag: int) -> None: ...
    def PushContourStandard(
        self,
        points: Points,
        alpha: Number,
        xG: Number,
        yG: Number,
        area: Number,
        shearArea2: Number,
        shearArea1: Number,
        torsion: Number,
        inertia2: Number,
        inertia1: Number,
        reserved: Number,
        wt: Number,
        wplx: Number,
        wply: Number,
        extra: Number,
        flag: int,
    ) -> None: ...
    def GetCDG(self) -> tuple[float, float]: ...
    def GetIxx(self) -> float: ...
    @staticmethod
    def GetTol3D() -> float: ...
    @staticmethod
    def SetTol3D(tol: Number) -> None: ...
    def GetCalculValues(self, dx: Number = 0.0, dy: Number = 0.0) -> CalculValues: ...
    def ComputeWplasticValues(self) -> tuple[float, float]: ...
    @staticmethod
    def CalculContourQuelconqueTOOL(
        isThinWalled: int,
        isOpen: int,
        torsionMode: int,
        thickness: Number,
        points: Points,
        cornerRadii: ArrayLike,
    ) -> ContourValues: ...
    def __copy__(self) -> CSectionTools: ...
    def __deepcopy__(self, memo: Any) -> CSectionTools: ...
    def __reduce_ex__(self, protocol: SupportsIndex) -> NoReturn: ...

def checked_points(points: Points, place: str, fewest: int) -> NDArray[np.float64]: ...
def checked_number(number: Number, place: str) -> float: ...
def checked_numbers(numbers: ArrayLike, place: str) -> NDArray[np.float64]: ...
def section_values(
    section: CSectionTools, dx: Number, dy: Number
) -> tuple[tuple[float | None, ...], float, bool]: ...
def misplaced_hole(
    contours: list[tuple[NDArray[np.float64], bool]],
) -> tuple[int, float, float] | None: ...
def batch_values(
    points: Points,
    contour_offsets: ArrayLike,
    flags: ArrayLike,
    section_offsets: ArrayLike,
    dx: ArrayLike,
    dy: ArrayLike,
    threads: int,
) -> tuple[NDArray[np.float64], NDArray[np.float64]]: ...
