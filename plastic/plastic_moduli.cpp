#include "plastic/plastic_moduli.h"

#include <cmath>

#include "kernel/vectors.h"
#include "plastic/axis_direction.h"
#include "plastic/equal_area_axis.h"
#include "plastic/format_fixed.h"
#include "plastic/lever_arms.h"
#include "plastic/plastic_pieces.h"

namespace halvorn {

namespace {

// The first point of the section, or the origin when there is none to measure from.
point2D LocalOrigin(const std::list<ContourRecord>& contours) {
    for (const ContourRecord& contour : contours) {
        if (contour.Points.empty()) continue;
        const point2D& first = contour.Points.front();
        if (std::isfinite(first.x) && std::isfinite(first.y)) return first;
        break;
    }
    return {0.0, 0.0};
}

double ModulusAlone(const std::list<ContourRecord>& contours, int iDir, const point2D& origin) {
    const double pos =
        FindEqualAreaAxis(contours, iDir, origin, [](int, double, const SideAreas&) {});
    return SumOfLeverArms(contours, iDir, origin, pos);
}

// The part of the lever arms that belongs to web-like pieces. Only pieces have a longest edge, so
// here the section is cut at the axis.
double WebPart(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
               double pos) {
    std::list<ContourRecord> local = contours;
    for (ContourRecord& contour : local) {
        for (point2D& point : contour.Points) KVectorDiff(&point, &origin, &point);
    }
    double areaHigh = 0.0;
    double areaLow = 0.0;
    std::list<PlasticPiece> high;
    std::list<PlasticPiece> low;
    SplitSectionAtAxis(local, iDir, pos, &areaHigh, &areaLow, high, low);
    const point2D across = iDir == kVerticalAxis ? point2D{1.0, 0.0} : point2D{0.0, 1.0};
    return LeverArmsOfPieces(low, iDir, pos, &across) + LeverArmsOfPieces(high, iDir, pos, &across);
}

void TraceLine(int counter, double pos, const SideAreas& areas, std::string* trace) {
    *trace += "iCouter = " + std::to_string(counter) +
              "\tAxisPos[mm] = " + FormatFixed(pos * 1000.0, 1) +
              "\t Asup|Ainf[mm2]: " + FormatFixed(areas.high * 1e6, 1) + "|" +
              FormatFixed(areas.low * 1e6, 1) + "\n";
}

// The axis as `FindEqualAreaAxis` finds it, with a log of the search when it is wanted.
double FindAxisTraced(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                      std::string* trace) {
    const double originAcross = CutCoordinate(origin, iDir);
    if (trace) *trace += "\niDir = " + std::to_string(iDir) + "\n";
    int lines = 0;
    SideAreas last{};
    const double pos = FindEqualAreaAxis(contours, iDir, origin,
                                         [&](int i, double linePos, const SideAreas& areas) {
                                             if (trace)
                                                 TraceLine(i, linePos + originAcross, areas, trace);
                                             lines = i + 1;
                                             last = areas;
                                         });
    if (trace) {
        *trace += "Finaly\n";
        TraceLine(lines, pos + originAcross, last, trace);
    }
    return pos;
}

void WriteModulus(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                  bool hasWebParts, double* modulus, double* webPart, std::string* trace) {
    const double pos = FindAxisTraced(contours, iDir, origin, trace);
    const double web = hasWebParts ? WebPart(contours, iDir, origin, pos) : 0.0;
    *modulus = SumOfLeverArms(contours, iDir, origin, pos);
    if (webPart) *webPart = web;
}

}  // namespace

void ComputePlasticModuli(const std::list<ContourRecord>& contours, double* wplx, double* wply,
                          double* webPartX, double* webPartY, std::string* trace) {
    if (!wplx || !wply) return;
    const bool hasWebParts = webPartX && webPartY;
    const point2D origin = LocalOrigin(contours);
    WriteModulus(contours, kHorizontalAxis, origin, hasWebParts, wplx, webPartX, trace);
    WriteModulus(contours, kVerticalAxis, origin, hasWebParts, wply, webPartY, trace);
    if (trace) {
        *trace += "Wplx[cm^3] = " + FormatFixed(*wplx * 1e6, 1) + "\n";
        *trace += "Wply[cm^3] = " + FormatFixed(*wply * 1e6, 1) + "\n";
    }
}

void ComputePlasticModuliAlone(const std::list<ContourRecord>& contours, double* wplx,
                               double* wply) {
    const point2D origin = LocalOrigin(contours);
    *wplx = ModulusAlone(contours, kHorizontalAxis, origin);
    *wply = ModulusAlone(contours, kVerticalAxis, origin);
}

}  // namespace halvorn
