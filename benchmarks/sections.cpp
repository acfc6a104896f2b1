#include "sections.h"

#include <cmath>

#include "model/push_element.h"
#include "shapes/profiles.h"

namespace halvorn::benchmarks {

namespace {

namespace shapes = engine::shapes;
using shapes::ArcDivision;

std::vector<double> Placed(std::vector<double> ring, double scale, double dx, double dy) {
    for (std::size_t i = 0; i < ring.size(); i += 2) {
        ring[i] = ring[i] * scale + dx;
        ring[i + 1] = ring[i + 1] * scale + dy;
    }
    return ring;
}

// A plate girder: two flanges of unequal width on a web, root fillets between.
std::vector<double> MonosymmetricI() {
    const ArcDivision division = ArcDivision::StepsPerQuarter(6);
    std::vector<double> ring =
        engine::CoordinatesOf(shapes::DrawISection({600, 220, 12, 19, 24}, division).solid);
    for (std::size_t i = 0; i < ring.size(); i += 2) {
        // The upper flange is wider: its tips move out, its fillets stay.
        if (ring[i + 1] > 580 && ring[i] < 1) ring[i] -= 60;
        if (ring[i + 1] > 580 && ring[i] > 219) ring[i] += 60;
    }
    return ring;
}

std::vector<double> Channel() {
    return engine::CoordinatesOf(
        shapes::DrawChannel({200, 80, 6, 11, 13}, ArcDivision::StepsPerQuarter(6)).solid);
}

// Four angles, twelve plates and four tubes' outlines around a box, none overlapping.
Section BuiltUp() {
    Section section{"built-up section of 20", {}};
    const ArcDivision division = ArcDivision::StepsPerQuarter(4);
    const std::vector<double> angle =
        engine::CoordinatesOf(shapes::DrawAngle({100, 100, 10, 12, 6}, division).solid);
    const std::vector<double> bar =
        engine::CoordinatesOf(shapes::DrawCircularHollow({60, 5}, division).solid);
    for (int i = 0; i < 4; ++i) {
        section.contours.push_back(Placed(angle, 1, 150 * i, 0));
        section.contours.push_back(Placed(bar, 1, 150 * i, 310 + 17 * i));
    }
    for (int i = 0; i < 12; ++i) {
        const double x = 50 * i, y = 120 + 15 * (i % 3), h = 100 + 10 * (i % 5);
        section.contours.push_back({x, y, x + 20, y, x + 20, y + h, x, y + h});
    }
    return section;
}

}  // namespace

std::size_t Section::Size() const {
    std::size_t size = 0;
    for (const std::vector<double>& contour : contours) size += contour.size() / 2;
    return size;
}

std::vector<double> WavyRing(std::size_t n) {
    std::vector<double> ring;
    ring.reserve(2 * n);
    for (std::size_t i = 0; i < n; ++i) {
        const double angle = 6.283185307179586 * static_cast<double>(i) / static_cast<double>(n);
        const double radius = 0.2 + 0.05 * std::sin(24.0 * angle);
        ring.push_back(3.0 + radius * std::cos(angle));
        ring.push_back(1.0 + radius * std::sin(angle));
    }
    return ring;
}

std::vector<double> Comb(std::size_t teeth, bool turned) {
    std::vector<double> ring;
    const auto tooth = [&ring](double x, double base, double tip, double width) {
        ring.insert(ring.end(), {x, base, x, tip, x + width, tip, x + width, base});
    };
    const double length = 10.0 * static_cast<double>(teeth);
    for (std::size_t i = 0; i < teeth; ++i) {
        tooth(10.0 * static_cast<double>(i) + 1, 0, -150 - static_cast<double>(7 * i % 40), 5);
    }
    ring.insert(ring.end(), {length, 0, length, 20});
    for (std::size_t i = teeth; i-- > 0;) {
        tooth(10.0 * static_cast<double>(i) + 8, 20, 400 + static_cast<double>(11 * i % 30), -5);
    }
    ring.insert(ring.end(), {0, 20, 0, 0});
    for (std::size_t i = 0; turned && i < ring.size(); i += 2) {
        const double x = ring[i];
        ring[i] = -ring[i + 1];
        ring[i + 1] = x;
    }
    return ring;
}

std::vector<Section> PlasticSections() {
    std::vector<Section> all;
    all.push_back({"rectangle", {{0, 0, 200, 0, 200, 400, 0, 400}}});
    all.push_back({"monosymmetric I, mm", {MonosymmetricI()}});
    all.push_back({"monosymmetric I, m", {Placed(MonosymmetricI(), 1e-3, 0, 0)}});
    all.push_back({"channel, mm", {Channel()}});
    all.push_back({"channel, m", {Placed(Channel(), 1e-3, 0, 0)}});
    all.push_back(BuiltUp());
    for (const std::size_t teeth : {8U, 64U, 1000U}) {
        all.push_back({"comb, " + std::to_string(teeth) + " teeth", {Comb(teeth / 2)}});
    }
    for (const std::size_t n : {1000U, 10000U, 100000U}) {
        all.push_back({"wavy ring, " + std::to_string(n), {WavyRing(n)}});
    }
    return all;
}

}  // namespace halvorn::benchmarks
