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
    radii.resize(std::max(radii.size(), points.size()));
    const auto padded = run();
    Require(std::equal(once.begin(), once.end(), padded.begin(), SameBits),
            "a missing radius is 0");
    Require(SameBits(once[3], once[4]), "both shear areas are equal");
    for (const double v : once) Require(v != Reading::kMark || count > 1, "all is written");
    if (count < 2) Require(once == std::array<double, 10>{}, "too few points give zeros");
}

// One polyline section's values in the order of the call; the centre of gravity last.
std::array<double, 10> ContourValues(const Ring& ring, double thickness,
                                     const std::vector<double>& radii) {
    std::vector<std::pair<double, double>> points;
    for (const auto& [x, y] : ring) points.emplace_back(x, y);
    std::array<double, 10> v{};
    std::pair<double, double> cdg;
    CSectionTools().CalculContourQuelconqueTOOL(thickness > 0, 0, 1, static_cast<int>(ring.size()),
                                                thickness, points, radii, v[0], cdg, v[1], v[2],
                                                v[3], v[4], v[5], v[6], v[7]);
    v[8] = cdg.first;
    v[9] = cdg.second;
    return v;
}

// Of a sound ring: the solid outline is that of the section, a wall with mitred corners has the
// area of its middle line times its thickness, and neither depends on the orientation.
void RequireContourOfRing(Ring ring, double thickness, double radius) {
    CSectionTools section;
    section.SetTol3D(1e-8);
    Push(&section, ring, 1);
    const auto pushed = Reading(section).values;
    std::vector<double> radii(ring.size(), 0.0);
    const auto solid = ContourValues(ring, 0, radii);
    const double area = solid[0];
    Require(std::abs(area - pushed[3]) <= 4 * Rounding(ring, 2), "a solid outline's area");
    for (const std::size_t k : {0U, 1U}) {
        Require(std::abs(solid[8 + k] - pushed[1 + k]) <= 4 * Rounding(ring, 3) / area,
                "a solid outline's centroid");
        const double moment = pushed[7 - k] + area * pushed[2 - k] * pushed[2 - k];
        const double second = 4 * Rounding(ring, 4) + std::pow(4 * Rounding(ring, 3), 2) / area;
        Require(std::abs(solid[5 + k] - moment) <= second, "a solid outline's inertia");
    }

    // Sharp corners reach far out; a thick wall turns its inner face round.
    double perimeter = 0, sharpest = 1;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const halvorn::KPoint &a = ring[i], &b = ring[(i + 1) % ring.size()],
                              &c = ring[(i + 2) % ring.size()];
        const double ab = std::hypot(b.x - a.x, b.y - a.y), bc = std::hypot(c.x - b.x, c.y - b.y);
        perimeter += ab;
        const double cosine = ((b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y)) / (ab * bc);
        sharpest = std::min(sharpest, ab < 1e-3 ? -1 : cosine);
    }
    if (sharpest < -0.9 || !(perimeter * thickness < 0.5 * area)) return;
    // Radii need not fit: at these corners tangent points lie up to five radii away.
    const auto slack = [&](int degree) {
        return 100 * Rounding(ring, degree, Extent(ring) + 10 * (radius + thickness));
    };
    const auto mitred = ContourValues(ring, thickness, radii);
    Require(std::abs(mitred[0] - perimeter * thickness) <= slack(2), "a wall's area");
    std::fill(radii.begin(), radii.end(), radius);
    const auto rounded = ContourValues(ring, thickness, radii);
    std::reverse(ring.begin(), ring.end());
    const auto reversed = ContourValues(ring, thickness, radii);
    const auto same = [&](std::size_t k, double bound, const char* property) {
        Require(std::abs(rounded[k] - reversed[k]) <= bound, property);
    };
    same(0, slack(2), "a wall's area by orientation");
    for (const std::size_t k : {5U, 6U, 7U}) same(k, slack(4), "a wall's inertia by orientation");
    for (const std::size_t k : {8U, 9U}) same(k, slack(3) / area, "a wall's centre by orientation");
    const double torsionRounding = thickness * area * slack(2) / perimeter;
    same(1, 8 * torsionRounding + 1e-9 * rounded[1], "a wall's torsion constant by orientation");
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
            const double tolerance = other.GetTol3D();
            RequireHoleCancelsSolid(ring);
            if (IsSound(ring)) {
                RequireSameOfAnyOrder(ring, program.Choose(static_cast<unsigned>(ring.size())));
                const double thickness = std::pow(10.0, -program.Choose(5));
                RequireContourOfRing(ring, thickness, 0.01 * program.Choose(64));
                other.SetTol3D(tolerance);
            }
        }
    }
    return 0;
}
