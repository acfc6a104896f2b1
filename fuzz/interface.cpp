// The exported class: any sequence of its operations, on a few sections. Whatever the numbers,
// copies read the same as their source; on sound rings orientation and first vertex do not matter.
#include <CSectionTools.h>

#include <array>
#include <limits>
#include <utility>

#include "fuzz/byte_program.h"

namespace {

using namespace fuzz;

// All that can be read of a section; what is not written stays at the mark.
struct Reading {
    static constexpr double kMark = -7.25;
    std::array<double, 22> values;

    explicit Reading(CSectionTools& section, double dx = 0, double dy = 0) {
        values.fill(kMark);
        auto& v = values;
        section.GetCalculValues(dx, dy, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7],
                                &v[8], &v[9], &v[10], &v[11], &v[12], &v[13], &v[14], &v[15],
                                &v[16]);
        section.GetCDG(&v[17], &v[18]);
        section.ComputeWplasticValues(v[19], v[20]);
        v[21] = section.GetIxx();
        Require(SameBits(v[0], v[21]), "both ways to the torsion constant");
        Require(SameBits(v[1], v[17]) && SameBits(v[2], v[18]), "both ways to the centroid");
    }
    bool operator==(const Reading& other) const {
        return std::equal(values.begin(), values.end(), other.values.begin(), SameBits);
    }
};

std::vector<double> Coords(const Ring& ring) {
    std::vector<double> coords;
    for (const auto& [x, y] : ring) coords.insert(coords.end(), {x, y});
    return coords;
}

void Push(CSectionTools* section, const Ring& ring, int flag) {
    std::vector<double> coords = Coords(ring);
    section->PushContour(static_cast<int>(ring.size()), coords.data(),
                         static_cast<unsigned char>(flag));
}

void PushStandard(CSectionTools* section, ByteProgram& program, const Ring& ring) {
    std::vector<double> coords = Coords(ring);
    std::array<double, 13> v{};
    for (double& value : v) value = program.Coordinate();
    section->PushContourStandard(static_cast<int>(ring.size()), coords.data(), v[0], v[1], v[2],
                                 v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11], v[12],
                                 std::numeric_limits<double>::quiet_NaN(),
                                 static_cast<unsigned char>(program.Choose(3)));
}

void RequireHoleCancelsSolid(const Ring& ring) {
    CSectionTools section;
    Push(&section, ring, 1);
    const double solid = Reading(section).values[3];
    Push(&section, ring, 0);
    const Reading both(section);
    if (std::isfinite(solid)) Require(both.values[3] == 0.0, "a hole cancels the same solid");
    if (std::isfinite(solid)) Require(std::isnan(both.values[1]), "no area has no centroid");
}

// Torsion is left out: it goes with the fourth power of the area, so a thin ring's is rounding.
void RequireSameOfAnyOrder(Ring ring, std::ptrdiff_t first) {
    CSectionTools drawn, other;
    Push(&drawn, ring, 1);
    std::rotate(ring.begin(), ring.begin() + first, ring.end());
    std::reverse(ring.begin(), ring.end());
    Push(&other, ring, 1);
    const auto a = Reading(drawn).values, b = Reading(other).values;
    const auto same = [&](std::size_t k, double bound, const char* property) {
        Require(std::abs(a[k] - b[k]) <= bound, property);
    };
    same(3, 4 * Rounding(ring, 2), "area by orientation and first vertex");
    same(1, 4 * Rounding(ring, 3) / a[3], "centroid by orientation and first vertex");
    same(2, 4 * Rounding(ring, 3) / a[3], "centroid by orientation and first vertex");
    // Inertias about the centroid subtract a product of first moments over the area.
    const double second = 4 * Rounding(ring, 4) + std::pow(4 * Rounding(ring, 3), 2) / a[3];
    for (const std::size_t k : {6U, 7U, 8U}) same(k, second, "inertia by orientation");
    // The axis halves the area within 1e-7 [L^2]; no lever arm is longer than the section.
    for (const std::size_t k : {19U, 20U}) {
        same(k, 4 * Rounding(ring, 3) + 4e-7 * Extent(ring), "plastic modulus by orientation");
    }
}

void CalculateContour(CSectionTools* section, ByteProgram& program) {
    const int isThin = program.Choose(2), isOpen = program.Choose(2), mode = program.Choose(2);
    std::vector<std::pair<double, double>> points;
    for (const auto& [x, y] : program.Polygon()) points.emplace_back(x, y);
    std::vector<double> radii(static_cast<std::size_t>(program.Choose(65)));
    for (double& radius : radii) radius = program.IsAtEnd() ? 0 : program.Coordinate();
    const int count =
        program.Choose(4) == 0 ? program.Choose(256) - 64 : static_cast<int>(points.size());
    const double thickness = program.Coordinate();
    const auto run = [&] {
        std::array<double, 10> v{};
        v.fill(Reading::kMark);
        std::pair<double, double> cdg{Reading::kMark, Reading::kMark};
        section->CalculContourQuelconqueTOOL(isThin, isOpen, mode, count, thickness, points, radii,
                                             v[0], cdg, v[1], v[2], v[3], v[4], v[5], v[6], v[7]);
        v[8] = cdg.first;
        v[9] = cdg.second;
        return v;
    };
    const auto once = run(), again = run();
    Require(std::equal(once.begin(), once.end(), again.begin(), SameBits), "the same twice");
    Require(SameBits(once[3], once[4]), "both shear areas are equal");
    for (const double v : once) Require(v != Reading::kMark || count > 1, "all is written");
    if (count < 2) Require(once == std::array<double, 10>{}, "too few points give zeros");
}

// 1e-8 comes back whatever happens to the input's other operations.
struct ToleranceGuard {
    CSectionTools section;
    ~ToleranceGuard() { section.SetTol3D(1e-8); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteProgram program(data, size);
    ToleranceGuard guard;
    std::array<CSectionTools, 3> sections;
    for (int k = 0; k < 24 && !program.IsAtEnd(); ++k) {
        const int operation = program.Choose(10);
        CSectionTools& section = sections[static_cast<std::size_t>(program.Choose(3))];
        CSectionTools& other = sections[static_cast<std::size_t>(program.Choose(3))];
        const Reading before(section);
        if (operation == 0) Push(&section, program.Polygon(), program.Choose(3));
        if (operation == 1) PushStandard(&section, program, program.Polygon());
        if (operation == 2) Require(Reading(other = section) == before, "an assigned copy");
        if (operation == 3) {
            CSectionTools copy(section);
            Push(&section, program.Polygon(), 1);
            Require(Reading(copy) == before, "a copy stays as its source was");
            CSectionTools moved(std::move(copy));
            Require(Reading(moved) == before, "a moved section takes all over");
        }
        if (operation == 4) {
            other = std::move(section);
            Require(Reading(other) == before, "a move takes all over");
            Require(SameBits(section.GetIxx(), before.values[21]), "a source keeps its sums");
        }
        if (operation == 5) section = CSectionTools();
        if (operation == 6) {
            const halvorn::KPoint shift = program.Point();
            Require(Reading(section, shift.x, shift.y) == Reading(section, shift.x, shift.y),
                    "the same twice");
        }
        if (operation == 7) {
            const double tolerance = program.Coordinate();
            section.SetTol3D(tolerance);
            Require(SameBits(other.GetTol3D(), tolerance), "one tolerance for all sections");
        }
        if (operation == 8) {
            CalculateContour(&section, program);
            Require(Reading(section) == before, "a contour's values leave the section alone");
        }
        if (operation == 9) {
            const Ring ring = program.Polygon();
            RequireHoleCancelsSolid(ring);
            if (IsSound(ring)) {
                RequireSameOfAnyOrder(ring, program.Choose(static_cast<unsigned>(ring.size())));
            }
        }
    }
    return 0;
}
