/// @file pens.h
/// How lines, areas and texts look, whatever paints them.
#ifndef HALVORN_ENGINE_FIGURE_PENS_H
#define HALVORN_ENGINE_FIGURE_PENS_H

#include <array>

#include "figure/page.h"

namespace halvorn::engine::figure {

/// Weight and dashes of a line [pt].
struct Pen {
    double weight;
    std::array<double, 4> dashes{};
    int dashCount = 0;
    bool isRound =
        false;  ///< at corners and ends: a mitre would show a sharp toe longer than it is
};

Pen PenOf(LineKind kind);

constexpr double kCentroidRadius = 3.6;  // of the mark of the centre of gravity [pt]
constexpr double kCentroidWeight = 0.7;  // of its circle [pt]

constexpr double kPeakRadius = 2.6;  // of the mark of the largest stress, a ring [pt]
constexpr double kPeakWeight = 1.0;  // [pt]
constexpr double kPeakEdge = 2.6;    // weight of the white ring below it [pt]

constexpr double kTextEdge = 2.4;  // weight of the white edge that keeps texts legible [pt]

// Greys from 0, black, to 255.
constexpr int kSolidGrey = 217;
constexpr int kTextGrey = 76;

// Light enough for black lines, far enough apart in grey.
constexpr Colour kFirstTint = {246, 199, 178};
constexpr Colour kSecondTint = {176, 205, 236};

}  // namespace halvorn::engine::figure

#endif
