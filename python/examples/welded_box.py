"""The lightest welded box for a wanted plastic modulus: python3 welded_box.py [cm3]

Two flanges and two webs, whose plates are no thinner than can be welded and no more slender than the
whole section stays plastic. SciPy (python3-scipy) finds the dimensions; each try is a Section, whose
modulus is net of the void. The box is checked against its closed form in the end.
"""
import sys
import time
from typing import NamedTuple, Sequence

from halvorn_section_tools import Section

STEEL = 7850.0  # [kg/m^3]
THINNEST = 6.0  # plate that is welded [mm]
FLANGE_SLENDERNESS = 33.0  # clear width over thickness in compression [-]
WEB_SLENDERNESS = 72.0  # clear height over thickness in bending [-]
HIGHEST = 2.0  # height over width, so that it does not tilt [-]
LARGEST = 800.0  # width and height [mm]


class Box(NamedTuple):
    """All in mm."""

    width: float
    height: float
    flange: float
    web: float

    def section(self) -> Section:
        """The box about the origin, less its void."""
        def ring(width: float, height: float) -> list[tuple[float, float]]:
            return [(x * width / 2, y * height / 2) for x, y in ((-1, -1), (1, -1), (1, 1), (-1, 1))]
        return Section.polygon(ring(self.width, self.height), [ring(*self.clear)])

    @property
    def clear(self) -> tuple[float, float]:
        """Width and height of the void."""
        return self.width - 2 * self.web, self.height - 2 * self.flange


def objective(box: Box) -> tuple[float, float]:
    """Weight [kg/m] and net plastic modulus [mm^3] of a box."""
    values = box.section().properties(density=STEEL)
    assert values.mass_per_metre is not None and values.plastic_modulus_x is not None
    return float(values.mass_per_metre), float(values.plastic_modulus_x)


def closed_form(box: Box) -> tuple[float, float]:
    """The same by hand: the full rectangle less the void."""
    width, height = box.clear
    area = box.width * box.height - width * height
    return STEEL * area * 1e-6, (box.width * box.height**2 - width * height**2) / 4


def slack(box: Box, modulus: float) -> list[float]:
    """What is left of each limit, relative; below 0 where the box is not allowed."""
    width, height = box.clear
    return [objective(box)[1] / modulus - 1, FLANGE_SLENDERNESS * box.flange / width - 1,
            WEB_SLENDERNESS * box.web / height - 1, HIGHEST * box.width / box.height - 1]


def lightest(modulus: float) -> tuple[Box, int]:
    """The lightest box with this plastic modulus [mm^3], and how often one was evaluated."""
    from scipy.optimize import minimize

    evaluations = 0

    def counted(function: str, unknowns: Sequence[float]) -> object:
        nonlocal evaluations
        evaluations += 1
        box = Box(*unknowns)
        return objective(box)[0] if function == "weight" else slack(box, modulus)

    height = (8 * modulus)**(1 / 3)  # of a box with plates of a usual thickness
    start = Box(height / 2, height, max(THINNEST, height / 40), max(THINNEST, height / 80))
    found = minimize(lambda x: counted("weight", x), start, method="SLSQP",
                     bounds=[(50, LARGEST), (50, LARGEST), (THINNEST, 60), (THINNEST, 60)],
                     constraints={"type": "ineq", "fun": lambda x: counted("slack", x)},
                     options={"ftol": 1e-9, "maxiter": 200})
    if not found.success:
        raise ValueError(f"no box of up to {LARGEST:g} mm has a plastic modulus of {modulus / 1e3:g} cm3: "
                         f"{found.message}; ask for less, or allow more")
    return Box(*map(float, found.x)), evaluations


def main() -> int:
    """Prints the box, its check and the speed."""
    try:
        wanted = 1e3 * float(sys.argv[1]) if len(sys.argv) > 1 else 2e6
    except ValueError:
        print(f"welded_box.py: {sys.argv[1]}: no number; give the plastic modulus in cm3", file=sys.stderr)
        return 2
    start = time.perf_counter()
    try:
        box, evaluations = lightest(wanted)
    except ImportError:
        print("welded_box.py: SciPy is missing: apt-get install python3-scipy, or pip install scipy",
              file=sys.stderr)
        return 1
    except ValueError as error:
        print(f"welded_box.py: {error}", file=sys.stderr)
        return 1
    seconds = time.perf_counter() - start
    (weight, modulus), (_, by_hand) = objective(box), closed_form(box)
    print(f"box {box.width:.1f} x {box.height:.1f} mm, flanges {box.flange:.2f} mm, webs {box.web:.2f} mm")
    print(f"weight {weight:.2f} kg/m, net plastic modulus {modulus / 1e3:.1f} cm3 "
          f"({by_hand / 1e3:.1f} cm3 by hand)")
    print(f"{evaluations} evaluations, {evaluations / seconds:.0f} a second")
    return 0


if __name__ == "__main__":
    sys.exit(main())
