#include "CSectionTools.h"

#include <algorithm>
#include <cstddef>

#include "contour/arbitrary_contour.h"
#include "contour/contour_properties.h"
#include "contour/contour_record.h"
#include "numeric/constants.h"
#include "numeric/process_wide.h"
#include "numeric/tolerance.h"
#include "plastic/plastic_moduli.h"
#include "section/moment_triple.h"
#include "section/read_vertices.h"

// Every member, in the order of the public header. A section keeps sums and contours; what is
// computed from coordinates is called from here and lives in contour/ and plastic/.

// The six special members are defined here so that the library exports them and hosts need not know
// what a contour record is.

CSectionTools::CSectionTools()
    : NbContours(0.0),
      Area(0.0),
      Ixx(0.0),
      Wt(0.0),
      ShearAreaY(0.0),
      ShearAreaZ(0.0),
      SecondMomentX0(0.0),
      SecondMomentY0(0.0),
      ProductMoment0(0.0),
      MomentAX(0.0),
      MomentAY(0.0),
      XMin(halvorn::UNDEFINED_VALUE),
      XMax(-halvorn::UNDEFINED_VALUE),
      YMin(halvorn::UNDEFINED_VALUE),
      YMax(-halvorn::UNDEFINED_VALUE),
      Wplx(0.0),
      Wply(0.0),
      ExtraSum(0.0) {}

CSectionTools::CSectionTools(const CSectionTools& source) = default;

// A list's move constructor leaves the source's list empty; the sums are doubles and are copied.
CSectionTools::CSectionTools(CSectionTools&& source) noexcept = default;

CSectionTools::~CSectionTools() = default;

// Sums first, then the list: its assignment reuses the storage of the contours that are there,
// appends the missing ones as one chain and erases the surplus.
CSectionTools& CSectionTools::operator=(const CSectionTools& source) = default;

CSectionTools& CSectionTools::operator=(CSectionTools&& source) noexcept {
    const auto copySums = [&](auto... sum) { ((this->*sum = source.*sum), ...); };
    copySums(&CSectionTools::NbContours, &CSectionTools::Area, &CSectionTools::Ixx,
             &CSectionTools::Wt, &CSectionTools::ShearAreaY, &CSectionTools::ShearAreaZ,
             &CSectionTools::SecondMomentX0, &CSectionTools::SecondMomentY0,
             &CSectionTools::ProductMoment0, &CSectionTools::MomentAX, &CSectionTools::MomentAY,
             &CSectionTools::XMin, &CSectionTools::XMax, &CSectionTools::YMin, &CSectionTools::YMax,
             &CSectionTools::Wplx, &CSectionTools::Wply, &CSectionTools::ExtraSum);
    // Clearing before the self test would lose the contours of an object moved onto itself.
    if (this != &source) {
        Contours.clear();
        Contours.swap(source.Contours);
    }
    return *this;
}

namespace {

// +1.0 for a solid's flag and -1.0 for a hole's.
double SignOfFlag(unsigned char flag) {
    return flag != 0 ? 1.0 : -1.0;
}

}  // namespace

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

void CSectionTools::GetCDG(double* x, double* y) {
    *x = MomentAX / Area;
    *y = MomentAY / Area;
}

double CSectionTools::GetIxx() {
    return Ixx;
}

double CSectionTools::GetTol3D() {
    return halvorn::Tol3D.load(std::memory_order_relaxed);
}

void CSectionTools::SetTol3D(double tol) {
    halvorn::Tol3D.store(tol, std::memory_order_relaxed);
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
    // With the centre as the host receives it, also when two of its pointers are the same.
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
    ComputePlasticModuliAlone(Contours, wplx, wply);
}

void CSectionTools::ComputeWplasticValues(double& wplx, double& wply) {
    halvorn::ComputePlasticModuliAlone(Contours, &wplx, &wply);
}

void CSectionTools::CalculContourQuelconqueTOOL(
    int isThinWalled, int isOpen, int torsionMode, int pointCount, double thickness,
    const std::vector<std::pair<double, double>>& points, std::vector<double> cornerRadii,
    double& area, std::pair<double, double>& cdg, double& torsionConstant, double& torsionModulus,
    double& shearAreaX, double& shearAreaY, double& ixx, double& iyy, double& ixy) {
    using namespace halvorn;
    const auto count = static_cast<int>(std::min(
        points.size(), static_cast<std::size_t>(std::clamp(pointCount, 0, kMostVertices))));
    // Missing radii are 0: sharp corners.
    cornerRadii.resize(std::max(cornerRadii.size(), static_cast<std::size_t>(count)));
    const ContourProperties properties = ArbitraryContourProperties(
        {isThinWalled != 0 ? thickness : 0.0, isOpen != 0, torsionMode == 0}, count, points.data(),
        cornerRadii.data());
    area = properties.area;
    cdg = {properties.centroid.x, properties.centroid.y};
    torsionConstant = properties.torsionConstant;
    torsionModulus = properties.torsionModulus;
    shearAreaX = properties.shearAreaY;
    shearAreaY = properties.shearAreaZ;
    ixx = properties.secondMomentX;
    iyy = properties.secondMomentY;
    ixy = properties.productMoment;
}
