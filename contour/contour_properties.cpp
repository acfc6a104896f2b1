#include "contour/contour_properties.h"

#include "contour/area_moments.h"
#include "contour/equivalent_ellipse.h"
#include "numeric/constants.h"
#include "numeric/process_wide.h"
#include "numeric/tolerance.h"

namespace halvorn {

ContourProperties ComputeContourProperties(int n, const point2D* ring, const point2D& frameOrigin) {
    const point2D firstVertex = n > 0 ? ring[0] : point2D{0.0, 0.0};
    const point2D reference{frameOrigin.x + firstVertex.x, frameOrigin.y + firstVertex.y};
    const AreaMoments raw = SignedAreaMoments(n, ring, firstVertex);
    const AreaMoments local = Scaled(raw, OrientationSign(raw.area));
    const double area = AbsValue(raw.area);

    ContourProperties properties{};
    properties.area = area;
    point2D localCentroid{0.0, 0.0};
    if (CompareTol(area, 0.0, kZeroArea) == 0) {
        CalculValid.store(0, std::memory_order_relaxed);
    } else {
        localCentroid = {local.firstX / area, local.firstY / area};
        properties.centroid = {reference.x + localCentroid.x, reference.y + localCentroid.y};
    }

    const double polarMoment = (local.secondY - area * Sqr(localCentroid.x)) +
                               (local.secondX - area * Sqr(localCentroid.y));
    properties.torsionConstant = EllipseTorsionConstant(area, polarMoment);
    double a = 0.0;
    double b = 0.0;
    EquivalentEllipse(area, polarMoment, &a, &b);
    properties.torsionModulus = EllipseTorsionModulusOfAxes(a, b);
    properties.shearAreaY = properties.shearAreaZ = EllipseShearCoefficient(a, b) * area;

    const AreaMoments aboutOrigin = Transferred(local, reference);
    properties.secondMomentX = aboutOrigin.secondX;
    properties.secondMomentY = aboutOrigin.secondY;
    properties.productMoment = aboutOrigin.productMoment;
    return properties;
}

}  // namespace halvorn
