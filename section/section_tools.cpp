#include "CSectionTools.h"
#include "contour/contour_record.h"
#include "numeric/process_state.h"
#include "numeric/tolerance.h"

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
// appends what is missing as one chain and erases what is too much.
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
