#include "contour/arbitrary_contour.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "contour/area_moments.h"
#include "contour/contour_integrals.h"
#include "contour/fillets.h"
#include "contour/offset_polyline.h"
#include "contour/tube_torsion.h"
#include "numeric/c_array.h"
#include "numeric/constants.h"
#include "numeric/process_wide.h"
#include "numeric/tolerance.h"

namespace halvorn {

namespace {

// The outline of both wall faces: the second (outer) face's points first, then room for the first
// face behind them. Every corner may become six points on either face.
struct WallFaces {
    CArray<KPoint> points;
    int secondCount = 0;
    int firstCount = 0;

    const KPoint* Second() const { return points.get(); }
    KPoint* First() const { return points.get() + secondCount; }
};

WallFaces BuildWallFaces(const ThinWall& wall, bool isOpen) {
    const auto size = static_cast<std::size_t>(wall.n);
    const CArray<KPoint> offsetA = AllocateZeroedOrThrow<KPoint>(size);
    const CArray<KPoint> offsetB = AllocateZeroedOrThrow<KPoint>(size);
    OffsetPolyline(wall.n, isOpen, wall.thickness, wall.points, offsetA.get(), offsetB.get());

    WallFaces faces;
    faces.points = AllocateZeroedOrThrow<KPoint>(size * 2 * kPointsPerFillet);
    RoundContour(wall.n, isOpen, wall.thickness, wall.radii, offsetB.get(), &faces.secondCount,
                 faces.points.get());
    RoundContour(wall.n, isOpen, wall.thickness, wall.radii, offsetA.get(), &faces.firstCount,
                 faces.First());
    return faces;
}

// What both kinds of wall have in common: everything but centroid and torsion.
ContourProperties WallProperties(double wallArea, const AreaMoments& local,
                                 const point2D& frameOrigin) {
    ContourProperties properties{};
    properties.area = wallArea;
    properties.shearAreaY = properties.shearAreaZ = wallArea * 0.5;
    const AreaMoments aboutOrigin = Transferred(local, frameOrigin);
    properties.secondMomentX = aboutOrigin.secondX;
    properties.secondMomentY = aboutOrigin.secondY;
    properties.productMoment = aboutOrigin.productMoment;
    return properties;
}

// The centroid of `region` in the host's axes, or (0, 0) when the wall has no area.
point2D WallCentroid(double wallArea, const AreaMoments& region, const point2D& frameOrigin) {
    if (CompareTol(wallArea, 0.0, kZeroArea) == 0) {
        CalculValid.store(0, std::memory_order_relaxed);
        return {0.0, 0.0};
    }
    return {frameOrigin.x + region.firstX / region.area,
            frameOrigin.y + region.firstY / region.area};
}

}  // namespace

ContourProperties SolidOutlineProperties(int n, bool isOpen, const KPoint* points,
                                         const double* radii, const point2D& frameOrigin) {
    const CArray<KPoint> ring =
        AllocateZeroedOrThrow<KPoint>(kPointsPerFillet * static_cast<std::size_t>(n));
    int m = 0;
    RoundContour(n, isOpen, 0.0, radii, points, &m, ring.get());
    return ComputeContourProperties(m, ring.get(), frameOrigin);
}

ContourProperties ClosedWallProperties(const ThinWall& wall, const point2D& frameOrigin) {
    const WallFaces faces = BuildWallFaces(wall, false);
    const point2D reference{0.0, 0.0};
    const AreaMoments raw1 = SignedAreaMoments(faces.firstCount, faces.First(), reference);
    const AreaMoments raw2 = SignedAreaMoments(faces.secondCount, faces.Second(), reference);
    const double area1 = AbsValue(raw1.area);
    const double area2 = AbsValue(raw2.area);
    const double sign1 = OrientationSign(raw1.area);

    // The larger face minus the smaller one, with the orientation of the first.
    const AreaMoments local = Scaled(Difference(raw2, raw1), area2 < area1 ? -sign1 : sign1);
    const double wallArea = AbsValue(area2 - area1);
    ContourProperties properties = WallProperties(wallArea, local, frameOrigin);
    // The first face's orientation is used for both. In a wall too thick for its cell the inner
    // face turns over, and the centroid comes out mirrored about the origin.
    const double sense = sign1 * OrientationSign(raw2.area);
    const point2D centroid = WallCentroid(wallArea, raw2, frameOrigin);
    properties.centroid = {sense * centroid.x, sense * centroid.y};

    const double t = wall.thickness;
    if (wall.useTubeFormulas) {
        properties.torsionConstant = TubeTorsionConstant(wallArea, t);
        properties.torsionModulus = TubeTorsionModulus(wallArea, t);
    } else {
        const double outerPerimeter = ContourPerimeter(faces.secondCount, faces.Second());
        const double meanArea = (area2 + area1) * 0.5;
        // A perimeter of 0 means that all points coincide: there is no wall.
        properties.torsionConstant =
            outerPerimeter == 0.0 ? 0.0 : 4.0 * Sqr(meanArea) * t / outerPerimeter;
        properties.torsionModulus = (t + t) * (area2 + area1) * 0.5;
    }
    return properties;
}

ContourProperties OpenWallProperties(const ThinWall& wall, const point2D& frameOrigin) {
    const WallFaces faces = BuildWallFaces(wall, true);
    // Down the second face and back along the first: one closed outline.
    std::reverse(faces.First(), faces.First() + faces.firstCount);
    const int count = faces.secondCount + faces.firstCount;
    const AreaMoments raw = SignedAreaMoments(count, faces.Second(), {0.0, 0.0});
    const AreaMoments local = Scaled(raw, OrientationSign(raw.area));

    ContourProperties properties = WallProperties(local.area, local, frameOrigin);
    properties.centroid = WallCentroid(local.area, local, frameOrigin);
    const double t = wall.thickness;
    const double perimeter = ContourPerimeter(count, faces.Second());
    properties.torsionConstant = AbsValue(perimeter * std::pow(t, 3.0) / 3.0);
    properties.torsionModulus =
        wall.useTubeFormulas ? TubeTorsionModulus(local.area, t) : (t + t) * local.area;
    return properties;
}

ContourProperties ArbitraryContourProperties(const ArbitraryContour& contour, int n,
                                             const std::pair<double, double>* points,
                                             const double* radii) {
    const double t = contour.thickness;
    const int fewest = CompareTol(t, 0.0, kZeroCorner) == 0 ? 3 : 2;
    if (n < fewest) return {};

    const auto size = static_cast<std::size_t>(n);
    // Relative to the first vertex, so that offsets and integrals keep their digits anywhere.
    const point2D frameOrigin{points[0].first, points[0].second};
    const CArray<KPoint> local = AllocateZeroedOrThrow<KPoint>(size);
    for (std::size_t i = 0; i < size; ++i) {
        local[i] = {points[i].first - frameOrigin.x, points[i].second - frameOrigin.y};
    }
    if (t == 0.0) {
        return SolidOutlineProperties(n, contour.isOpen, local.get(), radii, frameOrigin);
    }
    const ThinWall wall{n, local.get(), radii, t, contour.useTubeFormulas};
    return contour.isOpen ? OpenWallProperties(wall, frameOrigin)
                          : ClosedWallProperties(wall, frameOrigin);
}

}  // namespace halvorn
