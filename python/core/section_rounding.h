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

/// What is given with a profile.
struct GivenProfile {
    double x;         // centre of gravity [L]
    double y;         // [L]
    double area;      // [L^2]
    double inertia1;  // principal inertias [L^4]
    double inertia2;  // [L^4]
};

/// Collects of every part of a section what the rounding of its values grows with.
class SectionRounding {
public:
    /// Adds a free contour of `count` points x0, y0, x1, y1, ... [L].
    void AddContour(const double* coordinates, std::size_t count, bool isSolid);

    /// Adds a profile with the points of its outline.
    void AddProfile(const double* coordinates, std::size_t count, bool isSolid,
                    const GivenProfile& given);

    /// Returns the bounds for a section of the net area `area`, not 0.
    ///
    /// They are those of `halvorn-section`: a contour of n points adds (8 + sqrt(n) / 2) u a X^i
    /// Y^k to the bound of the integral of x^i y^k, with u = 2^-53, the area a of its box and its
    /// reach from the origin, X = largest |x| + width and Y likewise (docs/theory.md,
    /// Rounding of class values).
    ValueRounding Bounds(double area) const;

    /// Whether an origin in the middle of the section would give a digit or more of an inertia
    /// back; else an outline that is thin for its size takes them.
    bool IsByDistance(const ValueRounding& bounds, double ValueRounding::*inertia) const;

    /// Whether a point lies outside the box around all outlines, by more than the centre of gravity
    /// may be off.
    bool IsOutside(double x, double y, const ValueRounding& bounds) const;

    bool HasContour() const { return hasContour_; }
    bool HasProfile() const { return hasProfile_; }
    bool HasHole() const { return hasHole_; }

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

    void AddShare(const Range& x, const Range& y, double area);
    void AddToBox(const Range& x, const Range& y);

    Range boxX_;  // of all outlines
    Range boxY_;
    double shares_ = 0.0;  // [L^2], and with the powers of the reach:
    double firstX_ = 0.0;  // [L^3]
    double firstY_ = 0.0;
    double inertiaX_ = 0.0;  // [L^4]
    double inertiaY_ = 0.0;
    double inertiaXY_ = 0.0;
    double areaRounding_ = 0.0;
    double neglectedArea_ = 0.0;
    double givenInertia_ = 0.0;
    bool hasContour_ = false;
    bool hasProfile_ = false;
    bool hasHole_ = false;
};

}  // namespace halvorn::python

#endif
