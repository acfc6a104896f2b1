#include "plastic/plastic_moduli.h"

#include <charconv>
#include <cmath>
#include <cstddef>

#include "kernel/primitives.h"
#include "numeric/tolerance.h"
#include "plastic/constants.h"
#include "plastic/equal_area_axis.h"

namespace halvorn {

namespace {

void TraceLine(int counter, double pos, const SideAreas& areas, std::string* trace) {
    if (!trace) return;
    *trace += "iCouter = " + std::to_string(counter) +
              "\tAxisPos[mm] = " + FormatFixed(pos * 1000.0, 1) +
              "\t Asup|Ainf[mm2]: " + FormatFixed(areas.high * 1e6, 1) + "|" +
              FormatFixed(areas.low * 1e6, 1) + "\n";
}

// Finds the axis by bisection, and returns its position relative to `origin`.
double FindEqualAreaAxis(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                         std::string* trace) {
    EqualAreaBracket bracket(contours, iDir, origin);
    const double originAcross = CutCoordinate(origin, iDir);
    if (trace) *trace += "\niDir = " + std::to_string(iDir) + "\n";
    for (int i = 0;; ++i) {
        const double pos = bracket.Middle();
        const SideAreas areas = bracket.AreasAt(pos);
        TraceLine(i, pos + originAcross, areas, trace);
        const int balance = CompareTol(areas.high, areas.low, kBalancedAreas);
        if (balance == 0 || i >= kMostBisections) {
            if (trace) *trace += "Finaly\n";
            TraceLine(i + 1, pos + originAcross, areas, trace);
            return pos;
        }
        if (balance < 0) {
            bracket.LowerTop(pos);
        } else {
            bracket.RaiseBottom(pos);
        }
    }
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

struct Modulus {
    double total;
    double webPart;
};

// `webPart` is WebPart or null. A pointer, so that whoever wants no web part does not reach WebPart
// and the kernel behind it, and the linker leaves both out of the shared library.
Modulus PlasticModulus(const std::list<ContourRecord>& contours, int iDir, const point2D& origin,
                       decltype(&WebPart) webPart, std::string* trace) {
    const double pos = FindEqualAreaAxis(contours, iDir, origin, trace);
    return {SumOfLeverArms(contours, iDir, origin, pos),
            webPart ? webPart(contours, iDir, origin, pos) : 0.0};
}

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

}  // namespace

void ComputePlasticModuli(const std::list<ContourRecord>& contours, double* wplx, double* wply,
                          double* webPartX, double* webPartY, std::string* trace) {
    if (!wplx || !wply) return;
    const auto webPart = webPartX && webPartY ? &WebPart : nullptr;
    const point2D origin = LocalOrigin(contours);
    const Modulus x = PlasticModulus(contours, kHorizontalAxis, origin, webPart, trace);
    *wplx = x.total;
    if (webPartX) *webPartX = x.webPart;
    const Modulus y = PlasticModulus(contours, kVerticalAxis, origin, webPart, trace);
    *wply = y.total;
    if (webPartY) *webPartY = y.webPart;
    if (trace) {
        *trace += "Wplx[cm^3] = " + FormatFixed(*wplx * 1e6, 1) + "\n";
        *trace += "Wply[cm^3] = " + FormatFixed(*wply * 1e6, 1) + "\n";
    }
}

void ComputePlasticModuli(const std::list<ContourRecord>& contours, double* wplx, double* wply) {
    const point2D origin = LocalOrigin(contours);
    *wplx = PlasticModulus(contours, kHorizontalAxis, origin, nullptr, nullptr).total;
    *wply = PlasticModulus(contours, kVerticalAxis, origin, nullptr, nullptr).total;
}

std::string FormatFixed(double value, int precision) {
    const int digits = precision > 0 ? precision : 0;
    // The largest double has 309 digits before the point; sign and point make two more.
    std::string text(static_cast<std::size_t>(digits) + 311, '\0');
    const std::to_chars_result end = std::to_chars(text.data(), text.data() + text.size(), value,
                                                   std::chars_format::fixed, digits);
    text.resize(static_cast<std::size_t>(end.ptr - text.data()));
    return text;
}

}  // namespace halvorn
