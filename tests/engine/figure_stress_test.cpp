// Bands of stresses, their scale, and how both come onto a page.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <sstream>

#include "figure/paint.h"
#include "figure/paint_svg.h"
#include "figure/stress_bands.h"
#include "figure/stress_picture.h"
#include "figure_reports.h"

namespace {

using namespace figure_tests;

struct Mesh {
    Points points;
    StressBands::Triangles triangles;
};

// A square of n x n cells of two triangles each, from (0, 0) to (size, size), without the cells
// that `isHole` names. Diagonals run either way, and inner points lie off the grid by `shake`
// cells.
template <typename IsHole>
Mesh Grid(int n, double size, double shake, unsigned seed, IsHole isHole) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> off(-shake, shake);
    Mesh mesh;
    for (int j = 0; j <= n; ++j) {
        for (int i = 0; i <= n; ++i) {
            const bool isInner = i > 0 && j > 0 && i < n && j < n;
            const double dx = isInner ? off(random) : 0.0;
            const double dy = isInner ? off(random) : 0.0;
            mesh.points.emplace_back(size / n * (i + dx), size / n * (j + dy));
        }
    }
    for (Index j = 0; j < n; ++j) {
        for (Index i = 0; i < n; ++i) {
            if (isHole(i, j)) continue;
            const Index a = j * (n + 1) + i, b = a + 1, d = a + n + 1, c = d + 1;
            if (random() % 2 == 0) {
                mesh.triangles.push_back({a, b, c});
                mesh.triangles.push_back({c, d, a});
            } else {
                mesh.triangles.push_back({a, b, d});
                mesh.triangles.push_back({c, d, b});
            }
        }
    }
    return mesh;
}

bool NoHole(Index /*i*/, Index /*j*/) {
    return false;
}

double Area(const std::vector<Points>& rings) {
    double sum = 0.0;
    for (const Points& ring : rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            sum += 0.5 * Cross(ring[i], ring[(i + 1) % ring.size()]);
        }
    }
    return sum;
}

std::vector<double> ValuesAt(const Points& points, double (*value)(const Point&)) {
    std::vector<double> values;
    for (const Point& point : points) values.push_back(value(point));
    return values;
}

// The area of what lies at or above a level, triangle by triangle: corners above cut off a triangle
// similar to the whole at each end.
double AreaAtLeast(const Mesh& mesh, const std::vector<double>& values, double level) {
    double sum = 0.0;
    for (const auto& triangle : mesh.triangles) {
        std::array<std::pair<double, Point>, 3> c;
        for (std::size_t k = 0; k < 3; ++k) {
            c[k] = {values[Slot(triangle[k])], mesh.points[Slot(triangle[k])]};
        }
        const double area = 0.5 * Cross(c[1].second - c[0].second, c[2].second - c[0].second);
        std::sort(c.begin(), c.end());
        const double low = c[0].first, middle = c[1].first, high = c[2].first;
        if (low >= level) {
            sum += area;
        } else if (middle >= level) {
            sum += area * (1.0 - (level - low) / (middle - low) * (level - low) / (high - low));
        } else if (high > level) {
            sum += area * (high - level) / (high - middle) * (high - level) / (high - low);
        }
    }
    return sum;
}

// No ring passes a point twice, and no edge of one runs along an edge of another: neither the sides
// of the triangles within a band nor slits are left.
void ExpectNoSeams(const std::vector<Points>& rings) {
    std::map<std::pair<Point, Point>, int> edges;
    for (const Points& ring : rings) {
        EXPECT_GE(ring.size(), 3U);
        std::set<Point> seen(ring.begin(), ring.end());
        EXPECT_EQ(seen.size(), ring.size());
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Point &a = ring[i], &b = ring[(i + 1) % ring.size()];
            EXPECT_EQ(++edges[std::minmax(a, b)], 1);
        }
    }
}

// Closed forms: x on the square of side 8 leaves 8 (8 - L); x + y the corner (16 - L)^2 / 2, with
// levels at the grid's points and between; with the middle taken out, and a cone around its corner.
TEST(StressBands, EncloseTheAreaOfTheClosedForm) {
    const auto along = [](const Point& p) { return p.x; };
    const auto across = [](const Point& p) { return p.x + p.y; };
    const auto isMiddle = [](Index i, Index j) { return i >= 2 && i < 6 && j >= 2 && j < 6; };
    const struct {
        const char* name;
        Mesh mesh;
        double (*value)(const Point&);
        double level;
        double area;
        std::size_t rings;
    } cases[] = {
        {"all", Grid(8, 8, 0, 1, NoHole), along, 0, 64, 1},
        {"below all", Grid(8, 8, 0, 1, NoHole), along, -1, 64, 1},
        {"above all", Grid(8, 8, 0, 1, NoHole), along, 8.5, 0, 0},
        {"the last points alone", Grid(8, 8, 0, 1, NoHole), along, 8, 0, 0},
        {"along a line of the grid", Grid(8, 8, 0, 1, NoHole), along, 3, 40, 1},
        {"between lines", Grid(8, 8, 0.3, 1, NoHole), along, 3.4, 36.8, 1},
        {"diagonals", Grid(8, 8, 0, 1, NoHole), across, 12, 8, 1},
        {"off them", Grid(8, 8, 0.3, 2, NoHole), across, 11.5, 4.5 * 4.5 / 2, 1},
        {"round a hole", Grid(8, 8, 0, 1, isMiddle), along, -1, 48, 2},
        {"hole to the left", Grid(8, 8, 0, 1, isMiddle), along, 7, 8, 1},
        {"beside the hole", Grid(8, 8, 0, 1, isMiddle), along, 6, 16, 1},
        {"through the hole", Grid(8, 8, 0, 1, isMiddle), along, 5, 20, 1},
        {"through the hole's corner", Grid(8, 8, 0, 1, isMiddle), across, 12, 8, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<double> values = ValuesAt(c.mesh.points, c.value);
        const StressBands bands(c.mesh.points, c.mesh.triangles, values);
        const std::vector<Points> rings = bands.AtLeast(c.level);
        EXPECT_NEAR(Area(rings), c.area, 1e-12 * 64);
        EXPECT_EQ(rings.size(), c.rings);
        ExpectNoSeams(rings);
    }
}

// Whole numbers as values put many points on a level exactly; cells at random are no material, so
// that material also hangs together in points.
TEST(StressBands, AddUpToTheAreaOfRandomFields) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const auto isHole = [&](Index, Index) { return random() % 5 == 0; };
        const Mesh mesh = Grid(12, 3, seed % 2 == 0 ? 0.3 : 0.0, seed, isHole);
        std::vector<double> values;
        for (std::size_t i = 0; i < mesh.points.size(); ++i) {
            values.push_back(seed % 3 == 0 ? std::generate_canonical<double, 53>(random) * 4
                                           : static_cast<double>(random() % 5));
        }
        const StressBands bands(mesh.points, mesh.triangles, values);
        for (const double level : {-1.0, 0.0, 0.5, 1.0, 2.0, 2.5, 3.0, 4.0, 5.0}) {
            const std::vector<Points> rings = bands.AtLeast(level);
            EXPECT_NEAR(Area(rings), AreaAtLeast(mesh, values, level), 1e-12 * 9) << level;
            ExpectNoSeams(rings);
        }
        EXPECT_NEAR(Area(bands.Rim()), AreaAtLeast(mesh, values, -1.0), 1e-12 * 9);
    }
}

TEST(StressBands, RefuseWhatIsNoStress) {
    const Mesh mesh = Grid(1, 1, 0, 1, NoHole);
    for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity(), -1e301}) {
        const std::vector<double> values = {0, 1, bad, 1};
        EXPECT_THROW(StressBands(mesh.points, mesh.triangles, values), std::runtime_error) << bad;
    }
}

double Lightness(const Colour& c) {
    return 0.2126 * c.red + 0.7152 * c.green + 0.0722 * c.blue;
}

// Levels between the ends are multiples of a step that is 1, 2, 2.5 or 5 times a power of ten;
// there are 5 to 12 bands, and the scale covers the values as far as the stated largest.
TEST(StressScale, HasFewRoundLevels) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> part(0.0, 1.0);
    for (int i = 0; i < 3000; ++i) {
        const double largest = std::pow(10.0, 24.0 * part(random) - 12.0);
        const double other = largest * (2.1 * part(random) - 1.2);
        const bool isTwoSided = i % 2 == 0;
        const StressScale scale = isTwoSided
                                      ? TwoSidedScale(std::min(other, largest), largest, largest)
                                      : OneSidedScale(std::fabs(other) / 2, largest, largest);
        SCOPED_TRACE("largest " + std::to_string(largest) + ", other " + std::to_string(other));
        const std::size_t count = scale.colours.size();
        ASSERT_EQ(scale.ends.size(), count + 1);
        EXPECT_GE(count, 5U);
        EXPECT_LE(count, 12U);
        EXPECT_EQ(scale.ends.back(), largest);
        EXPECT_EQ(scale.goesOn, isTwoSided && other < -1.001 * largest);
        const double power = std::pow(10.0, std::floor(std::log10(scale.step) + 1e-9));
        const double factor = scale.step / power;
        const std::set<long> round = {1000, 2000, 2500, 5000};
        EXPECT_EQ(round.count(std::lround(1000.0 * factor)), 1U) << factor;
        for (std::size_t k = 1; k < count; ++k) {
            EXPECT_GT(scale.ends[k], scale.ends[k - 1]);
            EXPECT_NEAR(std::remainder(scale.ends[k] / scale.step, 1.0), 0.0, 1e-6);
        }
        for (std::size_t k = 0; k + 1 < count; ++k) {
            const Colour &lower = scale.colours[k], &upper = scale.colours[k + 1];
            const bool isPositive = scale.ends[k] >= 0.0;
            if (isTwoSided) {
                EXPECT_EQ(lower.red > lower.blue, isPositive) << "red is tension";
            }
            if (scale.ends[k + 1] == 0.0) continue;  // the lightest of both sides meet
            EXPECT_EQ(Lightness(upper) < Lightness(lower) - 3.0, isPositive) << k;
        }
    }
}

TEST(StressScale, HasOneBandForAStressThatIsTheSameAllOver) {
    for (const double value : {0.0, 12.5, 1e-300}) {
        const double noise = 1e-9 * value;
        for (const StressScale& scale : {TwoSidedScale(value - noise, value, value),
                                         OneSidedScale(value - noise, value, value)}) {
            EXPECT_EQ(scale.colours.size(), 1U);
            EXPECT_EQ(scale.ends, (std::vector<double>{value, value}));
            EXPECT_FALSE(scale.goesOn);
        }
    }
}

}  // namespace
