// Bands of stresses, their scale, and how both come onto a page.
#include <gtest/gtest.h>
#if defined(HALVORN_HAS_CAIRO)
#include <cairo.h>
#endif

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <sstream>

#include "figure/font_widths.h"
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

// A plate of 80 x 80 under stresses that a hand can write down.
StressPicture PictureOf(StressKind kind, double (*value)(const Point&), const PeakStress& peak) {
    const Mesh mesh = Grid(8, 80, 0.2, 3, NoHole);
    StressPicture picture;
    picture.kind = kind;
    picture.peak = peak;
    picture.field.points = mesh.points;
    picture.field.triangles = mesh.triangles;
    std::vector<double> other(mesh.points.size(), std::nan(""));  // never asked for
    picture.field.normal = picture.field.shear = picture.field.vonMises = other;
    std::vector<double>& values = kind == StressKind::Normal  ? picture.field.normal
                                  : kind == StressKind::Shear ? picture.field.shear
                                                              : picture.field.vonMises;
    values = ValuesAt(mesh.points, value);
    return picture;
}

std::vector<std::string> ColumnTexts(const Page& page) {
    std::map<std::pair<double, double>, std::string> texts;
    for (const Label& label : page.labels) {
        const auto [x, y] = label.at;
        if (x > page.drawing.right && y > page.drawing.top) texts[{y, x}] = PlainText(label.runs);
    }
    std::vector<std::string> column;
    for (const auto& [place, text] : texts) column.push_back(text);
    return column;
}

// On the page everything is upside down and 80 is the section's width.
TEST(StressFigure, ShowsBandsForcesAndScale) {
    StressPicture picture =
        PictureOf(StressKind::Normal, [](const Point& p) { return 0.75 * (p.y - 20.0); },
                  {{45, 0}, {80, 60}});
    picture.forces.n = 2400;
    picture.forces.mx = -1234567;
    picture.neutral = NeutralLine{{40, 20}, {1, 0}};
    const Page page = LayOut(ReportOf(Rectangle(0, 0, 80, 80)), Characters, {}, &picture);
    ExpectOrderly(page);
    const std::vector<std::string> expected = {"N",
                                               "2400",
                                               "F",
                                               "Mx",
                                               "\u22121.23457\u00B710^6",
                                               "F mm",
                                               "largest \u03C3",
                                               "45",
                                               "F/mm^2",
                                               "at",
                                               "(80; 60)",
                                               "mm",
                                               "\u03C3 in F/mm^2",
                                               "45",
                                               "40",
                                               "35",
                                               "30",
                                               "25",
                                               "20",
                                               "15",
                                               "10",
                                               "5",
                                               "0",
                                               "\u22125",
                                               "\u221210",
                                               "\u221215",
                                               "neutral axis, without normal stress",
                                               "largest normal stress"};
    EXPECT_EQ(ColumnTexts(page), expected);
    EXPECT_EQ(page.labels.back().runs.front().text, "Normal stress under N and Mx");
    ASSERT_EQ(page.bands.size(), 24U) << "12 in the section, 12 in the scale";
    double width = 0.0;
    for (std::size_t i = 0; i < 12; ++i) {
        std::vector<Points> rings;
        for (const auto& ring : page.bands[i].rings) {
            Points& points = rings.emplace_back();
            for (const Spot& spot : ring) points.emplace_back(spot.x, -spot.y);
        }
        const double area = Area(rings);
        if (i == 0) width = std::sqrt(area);
        EXPECT_NEAR(area, width * width * (1.0 - static_cast<double>(i) / 12.0), 1e-9 * area);
        EXPECT_EQ(Lightness(page.bands[i].colour), Lightness(page.bands[i + 12].colour));
    }
    const auto number = std::find_if(page.labels.begin(), page.labels.end(),
                                     [](const Label& label) { return label.runs[0].text == "45"; });
    ASSERT_NE(number, page.labels.end());
    EXPECT_GT(BoxOf(*number, Characters).left, page.peaks.at(0).x) << "it would hide colours";
    std::size_t ends = 0;
    for (const Line& line : page.lines) {
        if (line.kind != LineKind::Elastic || line.spots[0].x > page.drawing.right) continue;
        ++ends;
        for (const Spot& spot : line.spots) {
            EXPECT_NEAR(spot.y, page.bands[0].rings[0][0].y - 0.25 * width, 1e-9);
        }
        EXPECT_LT(std::fabs(line.spots[1].x - line.spots[0].x), 0.25 * width);
    }
    EXPECT_EQ(ends, 2U) << "to the left and to the right of the colours";
    EXPECT_EQ(page.peaks.size(), 2U) << "in the section and in the legend";
    EXPECT_TRUE(page.areas.empty());
}

// What stands from the heading of the scale on.
TEST(StressFigure, NumbersScalesOfAnySize) {
    const auto rising = [](const Point& p) { return p.x / 80; };
    const auto tiny = [](const Point& p) { return 3.1e-7 * p.x / 80; };
    const auto negative = [](const Point& p) { return -9e7 - 3e7 * p.x / 80; };
    const auto nothing = [](const Point&) { return 0.0; };
    const auto even = [](const Point&) { return 123.456; };
    const std::string unit = " in F/mm^2", minus = "\u2212";
    const struct {
        StressKind kind;
        double (*value)(const Point&);
        double largest;
        std::vector<std::string> texts;
        bool leavesOut = true;
    } cases[] = {
        {StressKind::Shear,
         rising,
         0.523,
         {"\u03C4" + unit, "0.523", "and above", "0.45", "0.4", "0.35", "0.3", "0.25", "0.2",
          "0.15", "0.1", "0.05", "0"}},
        {StressKind::Shear,  // but at the joints of chords
         rising,
         0.24,
         {"\u03C4" + unit, "0.24", "0.22", "0.2", "0.18", "0.16", "0.14", "0.12", "0.1", "0.08",
          "0.06", "0.04", "0.02", "0"},
         false},
        {StressKind::Shear,
         tiny,
         3.1e-7,
         {"\u03C4 in 10^\u22129 F/mm^2", "310", "275", "250", "225", "200", "175", "150", "125",
          "100", "75", "50", "25", "0"}},
        {StressKind::Normal,
         negative,
         -1.2e8,
         {"\u03C3 in 10^6 F/mm^2", minus + "90", minus + "92.5", minus + "95", minus + "97.5",
          minus + "100", minus + "102.5", minus + "105", minus + "107.5", minus + "110",
          minus + "112.5", minus + "115", minus + "117.5", minus + "120"}},
        {StressKind::VonMises, nothing, 0, {"\u03C3v" + unit, "0"}},
        {StressKind::VonMises, even, 123.456, {"\u03C3v" + unit, "123.5"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.largest);
        StressPicture picture = PictureOf(c.kind, c.value, {{c.largest, 0}, {40, 40}});
        picture.leavesOut = c.leavesOut;
        const Page page = LayOut(ReportOf(Rectangle(0, 0, 80, 80)), Characters, {}, &picture);
        ExpectOrderly(page);
        const std::vector<std::string> texts = ColumnTexts(page);
        const auto from = std::find(texts.begin(), texts.end(), c.texts.front());
        const auto to = std::find_if(from, texts.end(), [](const std::string& text) {
            return text.starts_with("largest ");
        });
        EXPECT_EQ(std::vector<std::string>(from, to), c.texts);
    }
}

// One path a band, in SVG and in PNG of the colour that the band has; no file of many triangles.
TEST(StressFigure, PaintsEachBandInItsColour) {
    StressPicture picture =
        PictureOf(StressKind::Shear, [](const Point& p) { return p.x; }, {{80, 0}, {80, 40}});
    const Mesh fine = Grid(120, 80, 0.2, 3, NoHole);
    picture.field.points = fine.points;
    picture.field.triangles = fine.triangles;
    picture.field.shear = ValuesAt(fine.points, [](const Point& p) { return p.x; });
    const Report report = ReportOf(Rectangle(0, 0, 80, 80));
    const std::string svg = PaintSvg(LayOut(report, TextWidth, {}, &picture));
    std::size_t paths = 0;
    for (std::size_t at = 0; (at = svg.find("<path fill=\"#", at)) != std::string::npos; ++at)
        ++paths;
    EXPECT_EQ(paths, 16U) << "8 in the section, 8 in the scale";
    EXPECT_LT(svg.size(), 20000U);
    EXPECT_NE(svg.find("<path fill=\"#472c7a\""), std::string::npos);
#if defined(HALVORN_HAS_CAIRO)
    const Page page = LayOut(report, FontMeasure(Format::Png), {}, &picture);
    std::string png = Paint(page, Format::Png);
    const auto read = [](void* bytes, unsigned char* data, unsigned int length) {
        auto& rest = *static_cast<std::string*>(bytes);
        rest.copy(reinterpret_cast<char*>(data), length);
        rest.erase(0, length);
        return CAIRO_STATUS_SUCCESS;
    };
    cairo_surface_t* const image = cairo_image_surface_create_from_png_stream(read, &png);
    ASSERT_EQ(cairo_surface_status(image), CAIRO_STATUS_SUCCESS);
    const double dots = cairo_image_surface_get_width(image) / page.width;
    std::vector<double> left;
    for (std::size_t i = 0; i < 8; ++i) {
        left.push_back(page.width);
        for (const Spot& spot : page.bands[i].rings.at(0)) left[i] = std::min(left[i], spot.x);
    }
    for (std::size_t i = 0; i < 8; ++i) {
        const double x = i + 1 < 8 ? 0.5 * (left[i] + left[i + 1]) : left[i] + 2.0;
        const double y = page.bands[0].rings[0][0].y - 20.0;
        const unsigned char* const pixel =
            cairo_image_surface_get_data(image) +
            static_cast<int>(y * dots) * cairo_image_surface_get_stride(image) +
            4 * static_cast<int>(x * dots);
        const Colour& colour = page.bands[i].colour;
        EXPECT_TRUE(pixel[0] == colour.blue && pixel[1] == colour.green && pixel[2] == colour.red)
            << i;
    }
    cairo_surface_destroy(image);
#endif
}

// A plate of 80 x 40 with a hole of 20 x 20 in its middle: A = 2800, Ix = (80 40^3 - 20^4) / 12.
TEST(StressFigure, IsOfTheReportsForces) {
    Report report = ReportOf(Rectangle(0, 0, 80, 40), Rectangle(30, 10, 50, 30));
    EvaluateOptions options;
    EXPECT_THROW(StressPictureOf(report, StressKind::Normal), InputError);
    options.forces = SectionForces{};
    options.forces->n = 2800;
    options.forces->mx = -413333.0 - 1.0 / 3.0;
    options.forces->vy = 1000;
    AddWarping(options, &report);
    const StressPicture normal = StressPictureOf(report, StressKind::Normal);
    EXPECT_NEAR(normal.peak.stress.value, 21.0, 1e-9);
    EXPECT_EQ(normal.peak.place.y, 0.0);
    const StressBands bands(normal.field.points, normal.field.triangles, normal.field.normal);
    EXPECT_EQ(bands.Rim().size(), 2U);
    EXPECT_NEAR(Area(bands.Rim()), 2800.0, 1e-6);
    EXPECT_NEAR(Area(bands.AtLeast(11.0)), 800.0, 1e-6) << "below the hole";
    EXPECT_NEAR(bands.Lowest(), -19.0, 1e-9);
    const double shear = report.stresses[1].value.number;
    EXPECT_EQ(StressPictureOf(report, StressKind::Shear).peak.stress.value, shear);
    EXPECT_EQ(LayOut(report, Characters, {}, &normal).bands.size(), 2U * 8U);
    ASSERT_TRUE(normal.neutral);
    EXPECT_NEAR(normal.neutral->at.x, 40.0, 1e-9);
    EXPECT_NEAR(normal.neutral->at.y, 21.0, 1e-9);
    EXPECT_NEAR(std::fabs(normal.neutral->direction.x), 1.0, 1e-12);

    SectionModel apart = report.section;
    apart.elements.push_back(apart.elements.front());
    for (Point& point : apart.elements.back().ring) point.x += 200.0;
    report = Evaluate(apart, {});
    AddWarping(options, &report);
    EXPECT_THROW(StressPictureOf(report, StressKind::Shear), InputError);
}

}  // namespace
