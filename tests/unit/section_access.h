/// @file section_access.h
/// Reads the private sums of a section: the one friend of the class, defined for tests alone.
#ifndef HALVORN_TESTS_UNIT_SECTION_ACCESS_H
#define HALVORN_TESTS_UNIT_SECTION_ACCESS_H

#include <list>

#include "CSectionTools.h"
#include "contour/contour_record.h"

namespace halvorn {

/// The private state of one section, by reference. Lives no longer than the section.
struct SectionAccess {
    explicit SectionAccess(const CSectionTools& section)
        : NbContours(section.NbContours),
          Area(section.Area),
          Ixx(section.Ixx),
          Wt(section.Wt),
          ShearAreaY(section.ShearAreaY),
          ShearAreaZ(section.ShearAreaZ),
          SecondMomentX0(section.SecondMomentX0),
          SecondMomentY0(section.SecondMomentY0),
          ProductMoment0(section.ProductMoment0),
          MomentAX(section.MomentAX),
          MomentAY(section.MomentAY),
          XMin(section.XMin),
          XMax(section.XMax),
          YMin(section.YMin),
          YMax(section.YMax),
          Wplx(section.Wplx),
          Wply(section.Wply),
          ExtraSum(section.ExtraSum),
          Contours(section.Contours) {}

    const double& NbContours;
    const double& Area;
    const double& Ixx;
    const double& Wt;
    const double& ShearAreaY;
    const double& ShearAreaZ;
    const double& SecondMomentX0;
    const double& SecondMomentY0;
    const double& ProductMoment0;
    const double& MomentAX;
    const double& MomentAY;
    const double& XMin;
    const double& XMax;
    const double& YMin;
    const double& YMax;
    const double& Wplx;
    const double& Wply;
    const double& ExtraSum;
    const std::list<ContourRecord>& Contours;
};

}  // namespace halvorn

#endif
