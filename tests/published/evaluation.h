/// @file evaluation.h
/// From a row of the table to the properties that the library computes for it.
#ifndef HALVORN_TESTS_PUBLISHED_EVALUATION_H
#define HALVORN_TESTS_PUBLISHED_EVALUATION_H

#include <array>

#include "catalogue/csv_table.h"
#include "shapes/profiles.h"

namespace halvorn::published {

/// A property that tables publish: its column and its unit as a power of the length unit.
struct Property {
    const char* column;
    int lengthPower;
};

/// Ix = integral of y^2 dA and Iy = integral of x^2 dA about the centroid; Zx_min and Zy_min the
/// smaller elastic modulus about the horizontal and the vertical axis; Sx and Sy the plastic
/// moduli; cx and cy the centroid from the left and lower side of the bounding box.
inline constexpr std::array<Property, 10> properties = {{{"area", 2},
                                                         {"Ix", 4},
                                                         {"Iy", 4},
                                                         {"Ixy", 4},
                                                         {"Zx_min", 3},
                                                         {"Zy_min", 3},
                                                         {"Sx", 3},
                                                         {"Sy", 3},
                                                         {"cx", 1},
                                                         {"cy", 1}}};

/// One value for each entry of `properties`.
using PropertyValues = std::array<double, properties.size()>;

/// Chords per quarter turn of the outlines, the fewest that the engine draws. Areas are exact,
/// second moments of a full circle hold to 1e-8.
inline constexpr int arcStepsPerQuarter = 48;

/// Returns the library's values for an outline enlarged by `scale`, brought back to the outline's
/// own unit. Area, centroid, inertias and elastic moduli come from the solid and the hole pushed as
/// two contours, plastic moduli from the keyhole ring: a pushed hole has weight 0 in them.
PropertyValues Evaluate(const engine::shapes::Outline& outline, double scale);

}  // namespace halvorn::published

#endif
