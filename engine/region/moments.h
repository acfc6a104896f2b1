/// @file moments.h
/// Area, centre of gravity and second moments of a region.
#ifndef HALVORN_ENGINE_REGION_MOMENTS_H
#define HALVORN_ENGINE_REGION_MOMENTS_H

#include <span>

#include "geometry/point.h"
#include "region/region.h"

namespace halvorn::engine {

/// Integrals over the material of a region, about its own centre of gravity, each with what the
/// rounding of the coordinates can change it by: they are drawn to within two units in the last
/// place of the largest. The sums themselves round less than that.
struct Moments {
    double area = 0.0;       ///< [L^2]
    Point centroid;          ///< [L]; 0 where no more than rounding is left
    double inertiaX = 0.0;   ///< integral of y^2 [L^4]
    double inertiaY = 0.0;   ///< of x^2 [L^4]
    double inertiaXY = 0.0;  ///< of x y [L^4]; 0 where no more than rounding is left
    double second = 0.0;     ///< the smaller principal second moment [L^4]

    double areaError = 0.0;       ///< [L^2]
    double firstXError = 0.0;     ///< of the first moment of x [L^3]
    double firstYError = 0.0;     ///< of y [L^3]
    double inertiaXError = 0.0;   ///< [L^4]
    double inertiaYError = 0.0;   ///< [L^4]
    double inertiaXYError = 0.0;  ///< [L^4]
    double secondError = 0.0;     ///< [L^4]

    /// Distances of the outermost fibres from the centre of gravity [L].
    double toBottom = 0.0, toTop = 0.0, toLeft = 0.0, toRight = 0.0;
};

/// Returns the moments of a region that is not empty: Green's theorem along its rings, summed about
/// a point within. Where a slender region would lose digits, it is summed again in twice the digits
/// of a double.
Moments MomentsOf(const Region& region);

/// Moments of a region whose area counts `weight` times.
struct WeightedMoments {
    Moments moments;
    double weight = 1.0;  ///< positive [-]
};

/// Returns the sums of moments over regions about their common centre of gravity.
/// @param levels  at least one; the last holds all others, and the outermost fibres are its own
Moments SumOf(std::span<const WeightedMoments> levels);

}  // namespace halvorn::engine

#endif
