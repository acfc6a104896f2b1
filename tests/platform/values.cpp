// Prints the bits of every result for a fixed set of sections, one a line: section, value, bits
// and, where the platforms' C libraries enter, the scale against which the value may differ.
//
// IEEE arithmetic and square roots must give the same bits anywhere. Sine, cosine, atan2, hypot and
// pow are rounded by each C library in its own way; one ulp of a wall's coordinates is many ulps of
// a small difference of its two faces, so the scale is a power of the reach of the coordinates, of
// centroids divided by the area.
#include <CSectionTools.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

namespace {

using Coords = std::vector<double>;

// Uniform on [low, high), from the highest 53 bits of a linear congruence.
struct Random {
    std::uint64_t state;
    double operator()(double low, double high) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return low + (high - low) * (static_cast<double>(state >> 11) * 0x1p-53);
    }
};

// A ring of 4 `quarter` vertices about `centre`, by the rational parametrisation of the circle; the
// radii lie between `inner` and 1, times `size`.
Coords Star(Random& random, int quarter, double size, double inner, double centre) {
    Coords coords;
    for (int i = 0; i < 4 * quarter; ++i) {
        const double t = static_cast<double>(i % quarter) / quarter;
        const double radius = size * random(inner, 1) / (1 + t * t);
        double x = radius * (1 - t * t), y = radius * 2 * t;
        for (int turn = i / quarter; turn > 0; --turn) {
            const double turned = -y;
            y = x;
            x = turned;
        }
        coords.insert(coords.end(), {centre + x, centre + y});
    }
    return coords;
}

struct Value {
    const char* name;
    int power;  // of a length
};

// `scale` is 0 for a value that no function of the C library enters.
void PrintScaled(const std::string& section, const char* name, double number, double scale) {
    const auto bits = [](double v) {
        return static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(v));
    };
    std::printf("%s %s %016llx", section.c_str(), name, bits(number));
    if (scale > 0) std::printf(" %016llx", bits(scale));
    std::puts("");
}

// The scale is the power of `reach` that the value is, and 0 with it.
void Print(const std::string& section, const Value& value, double number, double reach) {
    double scale = 1;
    for (int i = 0; i < value.power; ++i) scale *= reach;
    PrintScaled(section, value.name, number, scale);
}

// The reach of a section with standard profiles, whose turned values come of sine and cosine, else
// 0.
void PrintSection(const std::string& name, CSectionTools section, double shift, double reach) {
    std::array<double, 17> v;
    v.fill(-1);  // what is not written
    section.GetCalculValues(shift, -shift, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7],
                            &v[8], &v[9], &v[10], &v[11], &v[12], &v[13], &v[14], &v[15], &v[16]);
    static constexpr Value kValues[] = {
        {"ixx", 4},        {"xG", 1},       {"yG", 1},       {"area", 2},      {"shearAreaY", 2},
        {"shearAreaZ", 2}, {"inertiaY", 4}, {"inertiaX", 4}, {"inertiaXY", 4}, {"wt", 3},
        {"welBottom", 3},  {"welTop", 3},   {"welLeft", 3},  {"welRight", 3},  {"wplx", 3},
        {"wply", 3},       {"extraSum", 1}};
    for (std::size_t i = 0; i < v.size(); ++i) {
        const bool isTurned = (i >= 4 && i <= 8) || (i >= 10 && i <= 13);
        Print(name, kValues[i], v[i], isTurned ? reach : 0);
    }
}

void PrintPolyline(const std::string& name, const Coords& coords, double thickness, double radius,
                   int isOpen, int torsionMode) {
    std::vector<std::pair<double, double>> points;
    double reach = 0;
    for (std::size_t i = 0; i + 1 < coords.size(); i += 2) {
        points.emplace_back(coords[i], coords[i + 1]);
        reach = std::max({reach, 2 * std::abs(coords[i]), 2 * std::abs(coords[i + 1])});
    }
    if (thickness <= 0 && radius <= 0) reach = 0;
    // A centroid is a first moment over the area, which of a wall is far below reach^2.
    double area = reach * reach;
    if (thickness > 0) {
        area = 0;
        for (std::size_t i = isOpen != 0 ? 1 : 0; i < points.size(); ++i) {
            const auto& [x0, y0] = points[(i + points.size() - 1) % points.size()];
            const auto& [x1, y1] = points[i];
            area += thickness * std::sqrt((x1 - x0) * (x1 - x0) + (y1 - y0) * (y1 - y0));
        }
    }
    const double centroidScale = reach > 0 ? reach * reach * reach / area : 0;
    std::array<double, 8> v{};
    std::pair<double, double> cdg;
    CSectionTools().CalculContourQuelconqueTOOL(
        thickness > 0, isOpen, torsionMode, static_cast<int>(points.size()), thickness, points,
        Coords(points.size(), radius), v[0], cdg, v[1], v[2], v[3], v[4], v[5], v[6], v[7]);
    static constexpr Value kValues[] = {{"area", 2},   {"torsion", 4}, {"torsionModulus", 3},
                                        {"shearX", 2}, {"shearY", 2},  {"ixx", 4},
                                        {"iyy", 4},    {"ixy", 4}};
    for (std::size_t i = 0; i < v.size(); ++i) Print(name, kValues[i], v[i], reach);
    PrintScaled(name, "xG", cdg.first, centroidScale);
    PrintScaled(name, "yG", cdg.second, centroidScale);
}

void Push(CSectionTools& section, Coords coords, unsigned char flag) {
    section.PushContour(static_cast<int>(coords.size() / 2), coords.data(), flag);
}

void PushStandard(CSectionTools& section, Random& random, Coords outline, double size) {
    // One after the other: compilers evaluate the arguments of one call in any order.
    static constexpr int kPowers[] = {0, 1, 1, 2, 2, 2, 4, 4, 4, 0, 3, 3, 3, 1};
    std::array<double, 14> v;
    for (std::size_t i = 0; i < v.size(); ++i) {
        v[i] = random(0.5, 2);
        for (int k = 0; k < kPowers[i]; ++k) v[i] *= size;
    }
    section.PushContourStandard(static_cast<int>(outline.size() / 2), outline.data(), v[0] - 1,
                                v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11],
                                v[12], v[13], 1);
}

// All kinds of sections with one random ring as their outline.
void PrintSections(const std::string& name, Random& random, double size) {
    const int quarter = 1 + static_cast<int>(random(0, 12));
    const double centre = random(0, 1) < 0.5 ? 0 : random(-20, 20) * size;
    const Coords outline = Star(random, quarter, size, 0.5, centre);
    CSectionTools section;
    Push(section, outline, 1);
    PrintSection(name + "solid", section, 0, 0);
    Push(section, Star(random, 3, size * 0.5, 0.2, centre), 0);
    PrintSection(name + "hole", section, 0.1 * size, 0);
    PushStandard(section, random, Star(random, 2, size, 0.3, centre + size), size);
    PrintSection(name + "standard", section, 0, 2 * (std::abs(centre) + 2 * size));
    CSectionTools crossed;
    Coords anywhere;
    for (int i = 0; i < 14; ++i) anywhere.push_back(random(-size, size));
    Push(crossed, anywhere, 1);
    PrintSection(name + "crossed", crossed, 0, 0);

    // Corners far enough apart for the radii.
    const Coords corners = Star(random, 1 + quarter % 3, size, 0.8, centre);
    PrintPolyline(name + "sharp", outline, 0, 0, 0, 0);
    for (const double radius : {0.0, 0.05 * size}) {
        const std::string kind = name + (radius > 0 ? "rounded-" : "sharp-");
        if (radius > 0) PrintPolyline(kind + "solid", corners, 0, radius, 0, 0);
        for (const int mode : {0, 1}) {
            PrintPolyline(kind + "closed" + std::to_string(mode), corners, 0.04 * size, radius, 0,
                          mode);
            PrintPolyline(kind + "open" + std::to_string(mode), corners, 0.04 * size, radius, 1,
                          mode);
        }
    }
}

void PrintDegenerate() {
    PrintSection("empty", CSectionTools(), 0, 0);
    CSectionTools flat, nothing, unknown, zero;
    Push(flat, {0, 0, 2, 0, 5, 0}, 1);
    PrintSection("flat", flat, 0, 0);
    Push(nothing, {0.1, 0.2, 3, 0.3, 1, 4}, 1);
    Push(nothing, {0.1, 0.2, 3, 0.3, 1, 4}, 0);
    PrintSection("nothing", nothing, 0, 0);
    Push(unknown, {0, 0, 1, std::numeric_limits<double>::quiet_NaN(), 1, 1}, 1);
    PrintSection("unknown", unknown, 0, 0);
    Push(zero, {-1, -1, 1, -1, 1, 1, -1, 1}, 0);
    PrintSection("negative", zero, 0, 0);
}

}  // namespace

int main() {
    Random random{20240229};
    for (const double size : {150.0, 0.15, 1e-3, 2.5e4}) {  // millimetres, metres, tiny, huge
        for (int i = 0; i < 8; ++i) {
            char name[32];
            std::snprintf(name, sizeof name, "%g/%d/", size, i);
            PrintSections(name, random, size);
        }
    }
    PrintDegenerate();
}
