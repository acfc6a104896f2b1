// Torsion and shear against closed forms and the limits of thin walls.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "base/text.h"
#include "catalogue/csv_table.h"
#include "region/moments.h"
#include "warping_checks.h"

namespace {

using namespace halvorn::engine;
using namespace test_support;
using std::numbers::pi;

// Of curved shapes, a multiple of four; their polygons have the true area.
constexpr int kChords = 384;
const double kAreaTrue =
    std::sqrt((2.0 * pi / kChords) / std::sin(2.0 * pi / kChords));  // over the radius
// What a value of such a polygon differs by from that of its curve, relative: the square of half
// the angle of a chord, 7e-5, bounds the difference of the outlines themselves.
constexpr double kPolygonError = (3.2 / kChords) * (3.2 / kChords);

struct Shape {
    std::string name;
    Rings rings;
    bool isCurved = false;
};

// A curved shape of n chords, its solid with the one and its hole with the other factor on the
// radius.
Shape Curved(const std::string& name, int n, double solid, double hole) {
    if (name == "semicircle") return {name, {{true, RegularPolygon(n, solid, n / 2)}}, true};
    Rings rings = {{true, RegularPolygon(n, solid)}};
    if (name == "ellipse 2:1") {
        for (Point& p : rings[0].second) p.x *= 2.0;
    }
    if (name == "tube .8") rings.emplace_back(false, RegularPolygon(n, 0.8 * hole));
    return {name, rings, true};
}

Shape ShapeOf(const std::string& name) {
    if (name.starts_with("rect "))
        return {name, {{true, Rectangle(0, 0, std::stod(name.substr(5)), 1)}}};
    if (name == "equilateral") return {name, {{true, {{0, 0}, {1, 0}, {0.5, std::sqrt(0.75)}}}}};
    if (name == "right isosceles") return {name, {{true, {{0, 0}, {1, 0}, {0, 1}}}}};
    return Curved(name, kChords, kAreaTrue, kAreaTrue);
}

double AreaOfMaterial(const Rings& rings) {
    const Region region = RegionOf(Weighted(rings));
    return std::ldexp(region.area, 2 * region.frame.exponent);
}

// Half a step of a number's last digit as it is written.
double HalfStep(const std::string& text) {
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == std::string::npos ? 0 : text.size() - point - 1;
    return 0.5 * std::pow(10.0, -static_cast<double>(decimals));
}

TEST(WarpingTruth, ClosedFormsLieWithinTheirBounds) {
    ClaimedErrors claimed, curved;
    int rows = 0;
    double torsionConstant = 0.0;  // of the shape whose rows are read
    for (const CsvRecord& row : ParseCsv(ReadInput("tests/data/warping/closed_forms.csv"))) {
        const std::string &name = row.Text("case"), quantity = row.Text("quantity");
        const double truth = row.Number("truth").value();
        const std::size_t nu = name.find(" nu=");
        const Shape shape = ShapeOf(name.substr(0, nu));
        for (const double tolerance : {1e-2, 1e-4, 1e-6}) {
            const WarpingValues values = Solve(
                shape.rings,
                Within(tolerance, nu == std::string::npos ? 0.0 : std::stod(name.substr(nu + 4))));
            EXPECT_EQ(values.status, WarpingStatus::Reached) << name;
            EXPECT_LE(values.torsionConstant.HalfWidth(),
                      tolerance * values.torsionConstant.Middle());
            ClaimedErrors& errors = shape.isCurved ? curved : claimed;
            const double slack =
                HalfStep(row.Text("truth")) + (shape.isCurved ? kPolygonError * truth : 0.0);
            ++rows;
            if (quantity == "J") {
                torsionConstant = truth;
                errors.Check("J", name, values.torsionConstant, truth, slack);
            } else if (quantity == "kappa") {
                const double area = AreaOfMaterial(shape.rings);
                errors.Check("Asx", name, values.shearAreaX, area * truth, area * slack);
                errors.Check("Asy", name, values.shearAreaY, area * truth, area * slack);
                errors.Check("1/Asxy", name, values.shearCoupling, 0.0, slack / area);
            } else if (quantity == "ysc") {
                errors.Check("ys", name, values.shearCentreY, truth, slack);
            } else if (quantity == "taumax") {
                errors.Check("Wt", name, values.torsionModulus, torsionConstant / truth,
                             slack * torsionConstant);
            } else if (quantity.starts_with("Wt")) {
                errors.Check("Wt", name, values.torsionModulus, truth, slack);
            } else {
                ADD_FAILURE() << "what is " << quantity << "?";
            }
        }
    }
    EXPECT_EQ(rows, 3 * 25);
}

// J grows with the material, so polygons on both sides bracket that of a curve.
TEST(WarpingTruth, PolygonsWithinAndAroundACurveBracketItsTorsionConstant) {
    for (const CsvRecord& row : ParseCsv(ReadInput("tests/data/warping/closed_forms.csv"))) {
        const std::string& name = row.Text("case");
        if (row.Text("quantity") != "J" || !ShapeOf(name).isCurved) continue;
        const double truth = row.Number("truth").value();
        for (const int n : {24, 96}) {
            const double out = 1.0 / std::cos(pi / n);
            const auto inside = Solve(Curved(name, n, 1.0, out).rings).torsionConstant;
            const auto outside = Solve(Curved(name, n, out, 1.0).rings).torsionConstant;
            EXPECT_LT(inside.lower, truth) << name;
            EXPECT_GT(outside.upper, truth) << name;
            EXPECT_LT(outside.upper - inside.lower, 50.0 / (n * n) * truth + 3e-4 * truth) << name;
        }
    }
}

// A rectangle of sides a and b along x and y: its warping function is
//   x y - 8 a^2 / pi^3 sum of (-1)^n / m^3 sin(k x) sinh(k y) / cosh(k b / 2), m = 2 n + 1, k = m
//   pi / a
// (S. P. Timoshenko and J. N. Goodier, Theory of Elasticity, 1970, section 109), integrated here
// term by term.
double WarpingConstantOfRectangle(double a, double b) {
    double sum = a * a * a * b * b * b / 144.0;
    const double factor = 8.0 * a * a / (pi * pi * pi);
    for (int m = 1; m < 400; m += 2) {
        const double k = m * pi / a, c = factor / (m * m * m), t = std::tanh(0.5 * k * b);
        const double sech = 1.0 / std::cosh(0.5 * k * b);
        sum -= 2.0 * c * (2.0 / (k * k)) * (b / k - 2.0 * t / (k * k));
        sum += c * c * 0.5 * a * (t / k - 0.5 * b * sech * sech);
    }
    return sum;
}

// The rest of its compliance under a force along y, over k^2: b x has a double sine series.
double PoissonComplianceOfRectangle(double width, double height) {
    // The terms fall as 1 / m^2 until half-waves are as long both ways, as 1 / m^4 only from there
    // on.
    const int across = static_cast<int>(600.0 * std::max(1.0, width / height));
    const int up = static_cast<int>(600.0 * std::max(1.0, height / width));
    double sum = 0.0;
    for (int m = 2; m < across; m += 2) {
        for (int n = 1; n < up; n += 2) {
            const double f = (2.0 * width / (m * pi)) * (4.0 / (n * pi));
            const double km = m * pi / width, kn = n * pi / height;
            sum += f * f / (km * km + kn * kn);
        }
    }
    const double inertia = width * height * height * height / 12.0;
    return 0.25 * width * height * sum / (inertia * inertia);
}

TEST(WarpingTruth, RectanglesWarpAndShearAsTheirSeriesSay) {
    ClaimedErrors claimed;
    for (const double b : {1.0, 0.8, 0.5, 0.1, 0.01}) {
        for (const double poisson : {0.0, 0.3, 0.5}) {
            SCOPED_TRACE(poisson);
            const std::string name = "1 x " + std::to_string(b);
            const auto values = Solve({{true, Rectangle(-3, 7, 1, b)}}, Within(1e-4, poisson));
            EXPECT_EQ(values.areShearAreasBounds, poisson == 0.0);
            claimed.Check("Cw", name, values.warpingConstant, WarpingConstantOfRectangle(1, b),
                          1e-9 * values.warpingConstant.value);
            const double k = poisson / (1.0 + poisson);
            const double alongX = 1.2 / b + k * k * PoissonComplianceOfRectangle(b, 1);
            const double alongY = 1.2 / b + k * k * PoissonComplianceOfRectangle(1, b);
            claimed.Check("Asx", name, values.shearAreaX, 1.0 / alongX, 1e-6 / alongX * k);
            claimed.Check("Asy", name, values.shearAreaY, 1.0 / alongY, 1e-6 / alongY * k);
            claimed.Check("xs", name, values.shearCentreX, -2.5);
            claimed.Check("ys", name, values.shearCentreY, 7 + 0.5 * b);
        }
    }
}

// Of a thin strip nearly all digits of what cancels between x and y would be lost.
TEST(WarpingTruth, ThinStripsAreTheSameInEveryDirection) {
    ClaimedErrors claimed;
    const double ends = 192.0 / std::pow(pi, 5) * (31.0 / 32.0) * 1.0369277551433699;  // zeta(5)
    for (const double length : {200.0, 1000.0, 5000.0}) {
        for (const int degrees : {9, 33, 70}) {
            const std::string name =
                "1 : " + std::to_string(length) + " at " + std::to_string(degrees);
            const double angle = degrees * pi / 180.0;
            Points ring = Rectangle(0, 0, length, 1);
            for (Point& p : ring) {
                p = {p.x * std::cos(angle) - p.y * std::sin(angle),
                     p.x * std::sin(angle) + p.y * std::cos(angle)};
            }
            const WarpingValues values = Solve({{true, ring}});
            claimed.Check("J", name, values.torsionConstant, (length - ends) / 3.0);
            claimed.Check("Asx", name, values.shearAreaX, length / 1.2);
            claimed.Check("Asy", name, values.shearAreaY, length / 1.2);
            EXPECT_LT(values.shearAreaX.HalfWidth(), 1e-4 * length) << name;
            claimed.Check("1/Asxy", name, values.shearCoupling, 0.0);
        }
    }
}

// The integral of y (x^2 + y^2) about the centre of gravity c follows from those about the
// diameter: y r^2 2/5, y^2 pi/8, y 2/3, r^2 pi/4.
TEST(WarpingTruth, MonosymmetryOfASemicircle) {
    ClaimedErrors claimed;
    const double c = 4.0 / (3.0 * pi), ys = 8.0 / (5.0 * pi);
    const double third =
        0.4 - 2.0 * c * pi / 8.0 - c * pi / 4.0 + 3.0 * c * c * (2.0 / 3.0) - c * c * c * pi / 2.0;
    const double beta = third / (pi / 8.0 - c * c * pi / 2.0) - 2.0 * (ys - c);
    for (const double sign : {1.0, -1.0}) {
        Rings rings = ShapeOf("semicircle").rings;
        for (Point& p : rings[0].second) p = sign * p;
        const WarpingValues values = Solve(rings, Within(1e-5));
        ASSERT_TRUE(values.arePrincipalAxes);
        claimed.Check("beta x", "semicircle", values.monosymmetryX, sign * beta, kPolygonError);
        claimed.Check("beta y", "semicircle", values.monosymmetryY, 0.0);
        for (Point& p : rings[0].second) p = Point(p.y, p.x);
        claimed.Check("beta y", "semicircle on its side", Solve(rings, Within(1e-5)).monosymmetryY,
                      sign * beta, kPolygonError);
    }
}

// Open walls along mid-lines of length about 1, wall t. Values over their limits as t goes to 0.
struct ThinWall {
    const char* name;
    std::function<Rings(double t)> draw;
    std::function<double(const WarpingValues&, double t)> overLimit;
    double order;  // the ratio differs from 1 by at most this many times t
};

constexpr double kHeight = 1.0, kWidth = 0.6;  // of mid-lines

Points ChannelRing(double t) {
    const double h = 0.5 * (kHeight + t), i = 0.5 * (kHeight - t), w = 0.5 * t;
    return {{-w, -h}, {kWidth, -h}, {kWidth, -i}, {w, -i},
            {w, i},   {kWidth, i},  {kWidth, h},  {-w, h}};
}

Rings Angle(double t) {
    const double w = 0.5 * t;
    return {{true, {{-w, -w}, {kWidth, -w}, {kWidth, w}, {w, w}, {w, kHeight}, {-w, kHeight}}}};
}

Rings TwoCells(double t) {
    Rings rings = {{true, Rectangle(0, 0, 2 * kWidth + t, kHeight + t)}};
    for (const double x : {t, kWidth + t}) {
        rings.emplace_back(false, Rectangle(x, t, kWidth - t, kHeight - t));
    }
    return rings;
}

Rings DoubleFlanged(double t) {
    Rings rings = {{true, Rectangle(-0.5 * t, -0.5 * kHeight, t, kHeight)}};
    for (const double y : {-0.5, 0.5}) {
        rings.emplace_back(true, Rectangle(-0.5 * kWidth, y * kHeight - 0.5 * t, kWidth, t));
    }
    return rings;
}

TEST(WarpingTruth, ThinWallsApproachTheTheoryOfThinWalls) {
    const double b = kWidth, h = kHeight;
    const auto channel = [](double t) { return Rings{{true, ChannelRing(t)}}; };
    const std::vector<ThinWall> walls = {
        // Shear centre and warping constant: V. Z. Vlasov, Thin-walled Elastic Beams, 1961; closed
        // cells: R. Bredt, Zeitschrift des Vereines deutscher Ingenieure 40, 1896.
        {"channel, shear centre", channel,
         [=](const WarpingValues& v, double) {
             return -v.shearCentreX.value / (3 * b * b / (h + 6 * b));
         },
         2.0},
        {"channel, warping constant", channel,
         [=](const WarpingValues& v, double t) {
             return v.warpingConstant.value /
                    (t * b * b * b * h * h / 12 * (3 * b + 2 * h) / (6 * b + h));
         },
         2.0},
        {"I, warping constant", DoubleFlanged,
         [=](const WarpingValues& v, double t) {
             return v.warpingConstant.value / (t * b * b * b * h * h / 24);
         },
         2.0},
        {"I, torsion constant", DoubleFlanged,
         [=](const WarpingValues& v, double t) {
             return v.torsionConstant.Middle() / ((2 * b + h) * t * t * t / 3);
         },
         2.0},
        {"angle, warping constant", Angle,
         [=](const WarpingValues& v, double t) {
             return v.warpingConstant.value / (t * t * t * (b * b * b + h * h * h) / 36);
         },
         6.0},
        {"angle, shear centre", Angle,
         [=](const WarpingValues& v, double) {
             return 1.0 + std::hypot(v.shearCentreX.value, v.shearCentreY.value);
         },
         1.0},
        {"box, torsion constant", [](double t) { return Hollow(kWidth + t, kHeight + t, t); },
         [=](const WarpingValues& v, double t) {
             return v.torsionConstant.Middle() / (2 * t * b * b * h * h / (b + h));
         },
         2.0},
        // The wall between two cells alike has no shear flow.
        {"two cells, torsion constant", TwoCells,
         [=](const WarpingValues& v, double t) {
             return v.torsionConstant.Middle() / (8 * t * b * b * h * h / (2 * b + h));
         },
         2.0},
    };
    for (const ThinWall& wall : walls) {
        double last = 1.0;
        for (const double t : {1.0 / 25, 1.0 / 100, 1.0 / 400}) {
            const auto values = Solve(wall.draw(t));
            const double off = std::fabs(wall.overLimit(values, t) - 1.0);
            EXPECT_LT(off, wall.order * t + 1e-4) << wall.name << ", t = " << t;
            EXPECT_LT(off, 0.5 * last + 1e-4) << wall.name << ", t = " << t;
            last = off;
        }
    }
}

// What Poisson's ratio adds to the compliance under a force along y, over k^2.
double PoissonCompliance(const Rings& rings) {
    const double without = Solve(rings, Within(1e-6)).shearAreaY.Middle();
    const double with = Solve(rings, Within(1e-6, 0.5)).shearAreaY.Middle();
    return 9.0 * (1.0 / with - 1.0 / without);
}

TEST(WarpingTruth, PoissonsRatioActsOnTubesAndCells) {
    // The stress function of a tube of radii 1 and m is x / I (r^2 + m^2 / r^2 - 1 - m^2) / -8.
    for (const double m : {0.3, 0.8}) {
        const double inertia = pi * (1 - std::pow(m, 4)) / 4;
        const double sum = (1 + m * m) * (1 - std::pow(m, 4)) / 32 - m * m * (1 - m * m) / 16 -
                           (1 - std::pow(m, 6)) / 48;
        const Rings tube = {{true, RegularPolygon(kChords, kAreaTrue)},
                            {false, RegularPolygon(kChords, m * kAreaTrue)}};
        const double exact = pi * sum / (inertia * inertia);
        EXPECT_NEAR(PoissonCompliance(tube) / exact, 1.0, 2e-3) << m;
    }
    // Shear flows q in both cells of thin walls, against each other, and 2 q in the wall between:
    // round a cell q / t sums to the integral of x / I over it, and no torque is left.
    for (const double t : {0.02, 0.005}) {
        const Rings cells = TwoCells(t);
        const double inertia = MomentsOf(RegionOf(Weighted(cells))).inertiaX;
        const double round = 0.5 * kWidth * kWidth * kHeight / inertia;
        const double exact = 2.0 * t * round * round / (2 * kWidth + 3 * kHeight);
        EXPECT_NEAR(PoissonCompliance(cells) / exact, 1.0, 5.0 * t) << t;
    }
}

}  // namespace
