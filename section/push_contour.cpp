#include <utility>

#include "CSectionTools.h"
#include "contour/contour_properties.h"
#include "contour/contour_record.h"
#include "numeric/tolerance.h"
#include "section/contour_input.h"

void CSectionTools::PushContour(int count, double* coords, unsigned char flag) {
    using namespace halvorn;
    Contours.push_back(ContourRecord{flag, ReadVertices(count, coords, {XMin, XMax, YMin, YMax})});
    const std::vector<point2D>& ring = Contours.back().Points;
    const ContourProperties properties =
        ComputeContourProperties(static_cast<int>(ring.size()), ring.data());

    const double s = SignOfFlag(flag);
    MomentAX += s * properties.area * properties.centroid.x;
    MomentAY += s * properties.area * properties.centroid.y;
    Area += s * properties.area;
    ShearAreaY += s * properties.shearAreaY;
    ShearAreaZ += s * properties.shearAreaZ;
    Ixx += s * properties.torsionConstant;
    SecondMomentX0 += s * properties.secondMomentX;
    SecondMomentY0 += s * properties.secondMomentY;
    ProductMoment0 += s * properties.productMoment;
    Wt = MaxValue(Wt, s * properties.torsionModulus);
    NbContours += 1.0;
}
