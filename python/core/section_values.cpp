#include "section_values.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace halvorn::python {

namespace {

// The first output that is 0 or not written when a fibre distance is 0: the elastic moduli.
constexpr std::size_t kFirstStopped = 10;

// Outputs, and a place in reading order.
constexpr std::size_t kTorsionConstant = 0;
constexpr std::size_t kArea = 3;
constexpr std::size_t kTorsionRow = 12;

constexpr double kNotComputed = std::numeric_limits<double>::quiet_NaN();

// A NaN that no arithmetic produces, so that an output never written can be told from a computed
// NaN.
constexpr std::uint64_t kUnwrittenBits = 0x7FF8'5EC7'1015'0BADULL;

}  // namespace

const std::array<ValueName, kValueCount> kReadingOrder = {{
    {"area", 3},
    {"centroid_x", 1},
    {"centroid_y", 2},
    {"inertia_x", 7},
    {"inertia_y", 6},
    {"inertia_xy", 8},
    {"elastic_modulus_bottom", 10},
    {"elastic_modulus_top", 11},
    {"elastic_modulus_left", 12},
    {"elastic_modulus_right", 13},
    {"plastic_modulus_x", 14},
    {"plastic_modulus_y", 15},
    {"torsion_constant", 0},
    {"torsion_modulus", 9},
    {"shear_area_1", 4},
    {"shear_area_2", 5},
    {"extra_sum", 16},
}};

const char* const kOutputNames =
    "ixx xG yG area shearAreaY shearAreaZ inertiaY inertiaX inertiaXY wt welBottom welTop welLeft "
    "welRight wplx wply extraSum";

bool GetOutputs(CSectionTools& tools, double dx, double dy, Values* outputs) {
    Values& out = *outputs;
    out.fill(std::bit_cast<double>(kUnwrittenBits));
    tools.GetCalculValues(dx, dy, &out[0], &out[1], &out[2], &out[3], &out[4], &out[5], &out[6],
                          &out[7], &out[8], &out[9], &out[10], &out[11], &out[12], &out[13],
                          &out[14], &out[15], &out[16]);
    return std::bit_cast<std::uint64_t>(out.back()) != kUnwrittenBits;
}

double AreaRounding(const double* coordinates, std::size_t count) {
    constexpr double kRounding = 4.0 * std::numeric_limits<double>::epsilon();
    double largest = 0.0;
    double lengths = 0.0;
    const double* before = coordinates + 2 * (count - 1);
    for (const double* point = coordinates; point != coordinates + 2 * count; point += 2) {
        largest = std::max({largest, std::fabs(point[0]), std::fabs(point[1])});
        lengths += std::fabs(point[0] - before[0]) + std::fabs(point[1] - before[1]);
        before = point;
    }
    return kRounding * largest * lengths;
}

Values ReadingOrder(CSectionTools& tools, double dx, double dy, double areaRounding) {
    Values outputs;
    const bool isComplete = GetOutputs(tools, dx, dy, &outputs);
    Values values;
    for (std::size_t i = 0; i < kValueCount; ++i) {
        const std::size_t output = kReadingOrder[i].output;
        const bool isComputed = isComplete || output < kFirstStopped;
        values[i] = isComputed && std::isfinite(outputs[output]) ? outputs[output] : kNotComputed;
    }
    if (areaRounding > 0.0) {
        if (std::fabs(outputs[kArea]) <= areaRounding) values.fill(kNotComputed);
        // Contours below the library's fixed tolerance have no torsion constant.
        if (outputs[kTorsionConstant] == 0.0) values[kTorsionRow] = kNotComputed;
    }
    return values;
}

}  // namespace halvorn::python
