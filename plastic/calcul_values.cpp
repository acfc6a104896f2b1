#include "CSectionTools.h"
#include "numeric/tolerance.h"
#include "plastic/constants.h"
#include "plastic/plastic_moduli.h"

void CSectionTools::ComputeWplasticValues(double& wplx, double& wply) {
    halvorn::ComputePlasticModuli(Contours, &wplx, &wply);
}

void CSectionTools::GetCalculValues(double dx, double dy, double* ixx, double* xG, double* yG,
                                    double* area, double* shearAreaY, double* shearAreaZ,
                                    double* inertiaY, double* inertiaX, double* inertiaXY,
                                    double* wt, double* welBottom, double* welTop, double* welLeft,
                                    double* welRight, double* wplx, double* wply,
                                    double* extraSum) {
    using namespace halvorn;
    *ixx = Ixx;
    *xG = MomentAX / Area;
    *yG = MomentAY / Area;
    *area = Area;
    *shearAreaY = ShearAreaY;
    *shearAreaZ = ShearAreaZ;
    // Read back from what the host receives, also when two of its pointers are the same.
    *inertiaX = SecondMomentX0 - Sqr(*yG) * Area;
    *inertiaY = SecondMomentY0 - Sqr(*xG) * Area;
    *inertiaXY = ProductMoment0 - *xG * *yG * Area;
    *wt = Wt;
    *welBottom = *welTop = *welLeft = *welRight = 0.0;

    const double toBottom = (*yG - YMin) + dy;
    const double toTop = (YMax - *yG) - dy;
    const double toLeft = (*xG - XMin) + dx;
    const double toRight = (XMax - *xG) - dx;
    for (const double distance : {toBottom, toTop, toLeft, toRight}) {
        if (CompareTol(distance, 0.0, kZeroFibreDistance) == 0) return;
    }
    *welBottom = *inertiaX / toBottom;
    *welTop = *inertiaX / toTop;
    *welLeft = *inertiaY / toLeft;
    *welRight = *inertiaY / toRight;
    *wplx = Wplx;
    *wply = Wply;
    *extraSum = ExtraSum;
    ComputePlasticModuli(Contours, wplx, wply);
}
