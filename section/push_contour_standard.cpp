#include "CSectionTools.h"
#include "contour/contour_record.h"
#include "numeric/tolerance.h"
#include "section/contour_input.h"
#include "section/moment_triple.h"

void CSectionTools::PushContourStandard(int count, double* coords, double alpha, double xG,
                                        double yG, double area, double shearArea2,
                                        double shearArea1, double torsion, double inertia2,
                                        double inertia1, double /*reserved*/, double wt,
                                        double wplx, double wply, double extra,
                                        unsigned char flag) {
    using namespace halvorn;
    Contours.push_back(ContourRecord{flag, ReadVertices(count, coords, {XMin, XMax, YMin, YMax})});
    const MomentTriple inertia =
        TransferMoments(RotateMoments({inertia1, 0.0, inertia2}, -alpha), area, {xG, yG});
    const MomentTriple shear = RotateMoments({shearArea1, 0.0, shearArea2}, -alpha);

    const double s = SignOfFlag(flag);
    MomentAX += s * area * xG;
    MomentAY += s * area * yG;
    Area += s * area;
    ShearAreaY += s * shear.first;
    ShearAreaZ += s * shear.second;
    Wplx += s * wplx;
    Wply += s * wply;
    Ixx += s * torsion;
    SecondMomentX0 += s * inertia.first;
    SecondMomentY0 += s * inertia.second;
    ProductMoment0 += s * inertia.product;
    Wt = MaxValue(Wt, s * wt);
    ExtraSum += extra;
    NbContours += 1.0;
}
