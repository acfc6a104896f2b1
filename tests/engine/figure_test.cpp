// Where things are on the page, without painting; then the painted files themselves.
#include "figure/figure.h"

#include <gtest/gtest.h>
#if defined(HALVORN_HAS_CAIRO)
#include <cairo.h>
#endif
#if __has_include(<sys/resource.h>)
#include <sys/resource.h>

#include <csignal>
#endif

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "HalvornEngine.h"
#include "figure/hatch.h"
#include "figure/outline.h"
#include "figure/paint.h"
#include "figure_reports.h"
#include "model/outlines.h"

namespace {

using namespace figure_tests;
namespace fs = std::filesystem;

Points Keyhole() {
    return {{0, 0}, {100, 0}, {100, 100}, {0, 100}, {0, 0},
            {5, 5}, {5, 95},  {95, 95},   {95, 5},  {5, 5}};
}

double ShoelaceArea(const Points& ring) {
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const auto& [x, y] = ring[i];
        const auto& [u, v] = ring[(i + 1) % ring.size()];
        sum += x * v - u * y;
    }
    return 0.5 * std::fabs(sum);
}

TEST(FigureLayout, KeepsEverythingOnThePageAndLabelsApart) {
    struct Case {
        const char* name;
        Points ring;
    };
    std::vector<Case> cases = {{"square", Rectangle(0, 0, 100, 100)},
                               {"angle", {{0, 0}, {90, 0}, {90, 9}, {9, 9}, {9, 150}, {0, 150}}},
                               {"upright, 1:1000", Rectangle(0, 0, 1, 1000)},
                               {"flat, 1:1000", Rectangle(-500, 3, 500, 4)},
                               {"millimetre in metres", Rectangle(0, 0, 1e-3, 1.5e-3)},
                               {"huge", Rectangle(-1e5, -4e4, 1e5, 7e4)},
                               {"far away", Rectangle(1e6, -2e6, 1e6 + 30, 60 - 2e6)},
                               {"origin beside it", Rectangle(12, 15, 100, 110)}};
    for (const Case& item : cases) {
        const Report plain = ReportOf(item.ring, {}, std::string(300, 'n'));
        for (const double angle : {0.0, 7.0, 33.0, 45.0, 90.0, -60.0}) {
            for (const double share : {0.0, 0.02, 0.3}) {
                SCOPED_TRACE(std::string(item.name) + ", axis 1 at " + std::to_string(angle));
                Report report = WithValue(plain, "principal_angle", angle);
                for (const std::string axis : {"x", "y"}) {
                    const Value* const centre = report.Find("centroid_" + axis);
                    const double extent = item.ring[2].x - item.ring[0].x;
                    report =
                        WithValue(report, "plastic_axis_" + axis, centre->number + share * extent);
                }
                ExpectOrderly(LaidOut(report));
            }
        }
    }
}

TEST(FigureLayout, PutsEveryAxisWhereItIs) {
    Report report = WithValue(ReportOf(Rectangle(10, 20, 110, 70)), "plastic_axis_y", 57.5);
    report = WithValue(WithValue(report, "plastic_axis_x", 60.0), "principal_angle", 30.0);
    const Page page = LaidOut(report);
    const std::vector<Spot>& ring = page.areas.at(0).spots;
    const auto at = [&](double x, double y) {  // shares of the section's box
        return Spot{ring[0].x + x * (ring[2].x - ring[0].x),
                    ring[0].y + y * (ring[2].y - ring[0].y)};
    };
    EXPECT_NEAR(page.centroids.at(0).x, at(0.5, 0.5).x, 1e-9);
    EXPECT_NEAR(page.centroids.at(0).y, at(0.5, 0.5).y, 1e-9);
    int found = 0;
    for (const Line& line : page.lines) {
        const double dx = line.spots.back().x - line.spots.front().x;
        const double dy = line.spots.back().y - line.spots.front().y;
        if (line.kind == LineKind::Principal && dx * dy < 0.0 && line.spots[0].x < 300.0) {
            ++found;  // axis 1 rises to the right at 30 degrees
            EXPECT_NEAR(-dy / dx, std::tan(std::acos(-1.0) / 6.0), 1e-9);
        } else if (line.kind == LineKind::Plastic && line.spots[0].x < 300.0) {
            ++found;
            EXPECT_NEAR(line.spots[0].y, at(0.0, 0.75).y, 1e-9);
        }
    }
    EXPECT_EQ(found, 2);
    const auto isMerged = [](const Label& label) { return PlainText(label.runs) == "ENA = PNA"; };
    EXPECT_EQ(std::count_if(page.labels.begin(), page.labels.end(), isMerged), 1);
    const std::string summary = LaidOut(ReportOf(Rectangle(10, 20, 110, 70))).summary;
    EXPECT_NE(summary.find("\u03B1 = 90 \u00B0;"), std::string::npos) << summary;
}

TEST(FigureLayout, RoundsLengthsDownTo125) {
    for (double most = 1.234e-7; most < 1e9; most *= 1.7) {
        const double length = RoundLength(most);
        const double lead = length / std::pow(10.0, std::floor(std::log10(length * 1.0000001)));
        EXPECT_LE(length, most);
        EXPECT_LT(most, 2.5000001 * length);
        EXPECT_TRUE(std::fabs(lead - 1) < 1e-6 || std::fabs(lead - 2) < 1e-6 ||
                    std::fabs(lead - 5) < 1e-6)
            << length;
    }
}

TEST(FigureOutline, LeavesOutBridges) {
    const std::vector<Stretch> stretches = WithoutBridges(Keyhole());
    ASSERT_EQ(stretches.size(), 2U);
    for (const Stretch& stretch : stretches) {
        EXPECT_TRUE(stretch.isClosed);
        EXPECT_EQ(stretch.points.size(), 4U);
    }
    EXPECT_EQ(WithoutBridges(Rectangle(0, 0, 1, 1)).size(), 1U);
}

// The faces enclose the area that is reported; the class rounds both with one radius.
TEST(FigureOutline, DrawsTheWallThatIsComputed) {
    SectionModel section;
    section.unit = "mm";
    for (const PolylineKind kind :
         {PolylineKind::Solid, PolylineKind::ClosedWall, PolylineKind::OpenWall}) {
        for (const double radius : {0.0, 8.0}) {
            section.polyline = Polyline{kind,
                                        TorsionFormulas::General,
                                        kind == PolylineKind::Solid ? 0.0 : 6.0,
                                        {{0, 0}, {120, 0}, {150, 90}, {-20, 70}},
                                        {0, radius, radius, 0}};
            section.elements = ElementsOf(*section.polyline, shapes::ArcDivision::ChordError(1e-3));
            double area = 0.0;
            for (const Element& element : section.elements) {
                area += (element.isSolid ? 1.0 : -1.0) * ShoelaceArea(element.ring);
            }
            const Report report = Evaluate(section, {});
            EXPECT_NEAR(area / report.Find("area")->number, 1.0, 1e-12);
            const double ofClass = FindValue(report.classValues, "area")->number;
            EXPECT_NEAR(area / ofClass, 1.0, radius > 0.0 ? 0.05 : 1e-12);
        }
    }
    // The arc of radius 1 in the corner of 45 degrees ends where its tangent is upright.
    section.polyline = Polyline{
        PolylineKind::Solid, TorsionFormulas::General, 0.0, {{0, 0}, {10, 0}, {0, 10}}, {0, 1, 0}};
    const auto isLeft = [](const Point& a, const Point& b) { return a.x < b.x; };
    section.elements = ElementsOf(*section.polyline, shapes::ArcDivision::ChordError(1e-3));
    const Points& ring = section.elements.front().ring;
    EXPECT_NEAR(std::max_element(ring.begin(), ring.end(), isLeft)->x, 10 - std::sqrt(2.0), 1e-12);
}

TEST(FigureHatch, CoversWhatCountsTwiceAndHolesInNothing) {
    const auto area = [](double left, double top, double right, double bottom, bool isSolid) {
        return Area{{{left, top}, {right, top}, {right, bottom}, {left, bottom}}, isSolid};
    };
    // Two solids share 40 x 50, of which a hole takes 20 x 20; one touches; a hole is half outside.
    const std::vector<Area> areas = {area(0, 0, 100, 100, true), area(60, 50, 200, 150, true),
                                     area(70, 60, 90, 80, false), area(100, 0, 150, 50, true),
                                     area(190, 100, 230, 140, false)};
    constexpr double kSpacing = 0.5;
    const Hatching hatching = HatchedParts(areas, kSpacing);
    const auto covered = [](const std::vector<std::pair<Spot, Spot>>& lines,
                            const PageBox& within) {
        double sum = 0.0;
        for (const auto& [a, b] : lines) {
            EXPECT_TRUE(within.Grown(1e-9).Holds(a) && within.Grown(1e-9).Holds(b));
            sum += std::hypot(b.x - a.x, b.y - a.y) * kSpacing / std::sqrt(2.0);
        }
        return sum;
    };
    EXPECT_NEAR(covered(hatching.doubled, {60, 50, 100, 100}), 40 * 50 - 20 * 20, 20);
    EXPECT_NEAR(covered(hatching.missing, {200, 100, 230, 140}), 30 * 40, 20);
}

TEST(FigureText, ShowsNumbersAndForeignTextSafely) {
    const std::vector<std::pair<double, const char*>> numbers = {{0.0, "0"},
                                                                 {-12.5, "\u221212.5"},
                                                                 {99999.4, "99999"},
                                                                 {1e5, "100·10^3"},
                                                                 {83561000.0, "83.561·10^6"},
                                                                 {5e-5, "50·10^\u22126"},
                                                                 {300.0 + 6e-14, "300"}};
    for (const auto& [number, text] : numbers) EXPECT_EQ(PlainText(Number(number, 5, 1e5)), text);
    EXPECT_EQ(ValidText("a\xFF\xC3\xA4\xED\xA0\x80\n"), "a\uFFFDä\uFFFD\uFFFD\uFFFD ");
    EXPECT_EQ(Shortened("ääää bcd", 36.0, 10.0, false, Characters), "ääää…");
    EXPECT_EQ(Shortened("ääää b", 36.0, 10.0, false, Characters), "ääää b");
}

class FigureFile : public testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  ("halvorn-figure-" + std::to_string(std::random_device{}()));
        fs::create_directory(folder_);
    }
    void TearDown() override {
        if (!folder_.empty()) fs::remove_all(folder_);
    }
    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::string Written(const Report& report, const std::string& name) const {
        WriteFigure(report, Path(name));
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    fs::path folder_;
};

TEST_F(FigureFile, IsTheSameTwiceAndSaysItsTitleAndDimensions) {
    const Report report = ReportOf(Rectangle(0, 0, 120, 80));
    const std::string svg = Written(report, "a.svg");
    EXPECT_EQ(Written(report, "a.svg"), svg);
    EXPECT_NE(svg.find("<title>a &lt;b&gt; &amp; c</title>"), std::string::npos);
    EXPECT_NE(svg.find("Width 120 mm, height 80 mm"), std::string::npos);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);  // no part is left behind
    for (const std::string name : {"b.PDF", "b.png"}) {
        if (!CanPaint(Format::Png)) {
            EXPECT_THROW(WriteFigure(report, Path(name)), InputError);
            continue;
        }
        const std::string first = Written(report, name);
        EXPECT_EQ(first.substr(1, 3), name == "b.png" ? "PNG" : "PDF");
        EXPECT_EQ(Written(report, name), first) << name;
    }
}

// Points of 1/72 inch, in an image at 200 dots per inch.
TEST_F(FigureFile, IsAsLargeAsItsPage) {
    for (const Report& report : {ReportOf(Rectangle(0, 0, 120, 80)),
                                 ReportOf(Rectangle(0, 0, 10, 400), Rectangle(2, 2, 8, 398))}) {
        const Page drawn = LayOut(report, FontMeasure(Format::Svg));
        const std::string svg = Written(report, "a.svg");
        const auto numberAfter = [](const std::string& text, const std::string& key) {
            const std::size_t at = text.find(key);
            EXPECT_NE(at, std::string::npos) << key;
            return at == std::string::npos ? 0.0 : std::stod(text.substr(at + key.size()));
        };
        EXPECT_NEAR(numberAfter(svg, "width=\""), drawn.width, 0.00501);
        EXPECT_NEAR(numberAfter(svg, "height=\""), drawn.height, 0.00501);
        if (!CanPaint(Format::Png)) continue;
        const Page page = LayOut(report, FontMeasure(Format::Png));
        const std::string png = Written(report, "a.png");
        const auto sizeAt = [&png](std::size_t first) {  // of IHDR, big-endian
            unsigned size = 0;
            for (std::size_t i = first; i < first + 4; ++i) {
                size = 256 * size + static_cast<unsigned char>(png.at(i));
            }
            return size;
        };
        EXPECT_EQ(sizeAt(16), std::ceil(page.width * 200 / 72));
        EXPECT_EQ(sizeAt(20), std::ceil(page.height * 200 / 72));
        const std::string pdf = Written(report, "a.pdf");
        const std::size_t box = pdf.find("/MediaBox [");
        ASSERT_NE(box, std::string::npos);
        double right = 0, top = 0;
        ASSERT_EQ(std::sscanf(pdf.c_str() + box, "/MediaBox [ 0 0 %lf %lf", &right, &top), 2);
        EXPECT_NEAR(right, page.width, 1e-3);
        EXPECT_NEAR(top, page.height, 1e-3);
    }
}

TEST_F(FigureFile, LeavesNothingBehindWhenItFails) {
    const Report report = ReportOf(Rectangle(0, 0, 120, 80));
    fs::create_directory(folder_ / "is.svg");
    for (const std::string name : {"a.bmp", "a", "none/a.svg", "is.svg"}) {
        EXPECT_THROW(CheckFigurePath(Path(name)), InputError) << name;
        EXPECT_THROW(WriteFigure(report, Path(name)), InputError) << name;
    }
    const Report large = ReportOf(Rectangle(-1e308, 0, 1e308, 1));
    EXPECT_THROW(WriteFigure(large, Path("a.svg")), InputError);
#if __has_include(<sys/resource.h>)
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{1000, before.rlim_max};  // as a disk that fills up while the file is written
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_THROW(WriteFigure(report, Path("a.svg")), std::runtime_error);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
#endif
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);
}

#if defined(HALVORN_HAS_CAIRO)
TEST_F(FigureFile, HasInkInTheSolidAndNoneInTheHole) {
    const std::vector<Report> reports = {
        ReportOf(Rectangle(0, 0, 100, 100), Rectangle(5, 5, 95, 95)), ReportOf(Keyhole())};
    for (const Report& report : reports) {
        WriteFigure(report, Path("a.png"));
        const Page page = LayOut(report, FontMeasure(Format::Png));
        cairo_surface_t* const image = cairo_image_surface_create_from_png(Path("a.png").c_str());
        ASSERT_EQ(cairo_surface_status(image), CAIRO_STATUS_SUCCESS);
        const double dots = cairo_image_surface_get_width(image) / page.width;
        const auto& ring = page.areas.at(0).spots;
        const auto brightness = [&](double x, double y) {  // at shares of the section's box
            const auto column = static_cast<int>((ring[0].x + x * (ring[1].x - ring[0].x)) * dots);
            const auto row = static_cast<int>((ring[0].y + y * (ring[2].y - ring[1].y)) * dots);
            return cairo_image_surface_get_data(
                image)[row * cairo_image_surface_get_stride(image) + 4 * column];
        };
        for (const double share : {0.2, 0.3, 0.7, 0.8}) {
            EXPECT_LT(brightness(share, 0.025), 230);
            EXPECT_LT(brightness(0.975, share), 230);
            EXPECT_EQ(brightness(share, 0.2), 255);
            EXPECT_EQ(brightness(0.2, share), 255);
        }
        EXPECT_NEAR(brightness(0.025, 0.025), 217, 10);  // on the bridge, which is no line
        cairo_surface_destroy(image);
    }
}
#endif

}  // namespace
