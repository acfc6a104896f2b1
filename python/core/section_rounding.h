/// @file section_rounding.h
/// What rounding can leave of the sums of a section.
#ifndef HALVORN_PYTHON_CORE_SECTION_ROUNDING_H
#define HALVORN_PYTHON_CORE_SECTION_ROUNDING_H

#include <algorithm>
#include <cstddef>
#include <limits>

namespace halvorn::python {

/// How far values of a section may be off: one that is no larger has no digit left.
struct ValueRounding {
    double area = 0.0;       // [L^2]
    double centroidX = 0.0;  // [L]
    double centroidY = 0.0;  // [L]
    double inertiaX = 0.0;   // [L^4]
    double inertiaY = 0.0;   // [L^4]
    double inertiaXY = 0.0;  // [L^4]
};

/// Collects of every part of a section what the rounding of its values grows with.
class SectionRounding {
public:
    /// Adds a free contour of `count` points x0, y0, x1, y1, ... [L].
    void AddContour(const double* coordinates, std::size_t count);

    /// Adds a profile with its given centre of gravity [L], area [L^2] and principal inertias
    /// [L^4].
    void AddProfile(const double* coordinates, std::size_t count, double x, double y, double area,
                    double inertia1, double inertia2);

    /// Returns the bounds for a section of the net area `area`, not 0.
    ///
    /// A contour is integrated about its first point, where its terms are as large as P = box width
    /// times the path of its edges in y + box height times that in x. The sums are moved to the
    /// origin, at most X and Y away, and the inertias back from there. With the gross area G and
    /// the box W x H of the section the errors stay below
    ///   16 u (G Y^2 + H^2 P) for the inertia about the horizontal axis, u = 2^-53, and alike for
    /// the others. P is no more than the area but for slender contours at an angle.
    ValueRounding Bounds(double area) const;

    /// Whether there is a free contour.
    bool HasContour() const { return hasContour_; }

    /// The principal inertias given with profiles, summed [L^4].
    double GivenInertia() const { return givenInertia_; }

    /// The area of contours that the library takes for nothing, 1e-15 [L^2] and less: it puts their
    /// centre of gravity at (0, 0).
    double NeglectedArea() const { return neglectedArea_; }

private:
    // Of coordinates [L].
    struct Range {
        double low = std::numeric_limits<double>::infinity();
        double high = -std::numeric_limits<double>::infinity();

        void Add(double value) {
            low = std::min(low, value);
            high = std::max(high, value);
        }
        double Size() const { return std::max(0.0, high - low); }
        double Farthest() const { return std::max(-low, high); }
    };

    Range x_;
    Range y_;
    double grossArea_ = 0.0;     // G
    double contourScale_ = 0.0;  // P, summed
    double areaRounding_ = 0.0;
    double neglectedArea_ = 0.0;
    double givenInertia_ = 0.0;
    bool hasContour_ = false;
};

}  // namespace halvorn::python

#endif
