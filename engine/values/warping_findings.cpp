#include <algorithm>
#include <string>

#include "base/numbers.h"
#include "geometry/place_text.h"
#include "values/warping_values.h"

namespace halvorn::engine {

namespace {

std::string Percent(double relative) {
    return ShortNumber(100.0 * relative, 2) + " %";
}

std::string HalfWidthOf(const Bracket& bracket) {
    return Percent(bracket.HalfWidth() / bracket.Middle());
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const bool isLast = i + 1 == texts.size();
        joined += (i == 0 ? "" : isLast ? " and " : ", ") + texts[i];
    }
    return joined;
}

Finding WideBounds(const Report& report, const WarpingValues& w) {
    const bool wasStopped = w.status == WarpingStatus::Interrupted;
    std::string reached = "the torsion constant is known within " + HalfWidthOf(w.torsionConstant);
    if (w.isOnePart && w.areShearAreasBounds) {
        reached += ", the shear stiffness areas within " + HalfWidthOf(w.shearAreaX) + " and " +
                   HalfWidthOf(w.shearAreaY);
    }
    return {Severity::Warning,
            FindingKind::WideBounds,
            report.section.source,
            "the solution " + std::string(wasStopped ? "was stopped" : "takes too many unknowns") +
                ": " + reached + "; " + Percent(report.tolerance) + " was asked for",
            wasStopped ? "the bounds hold; let it come to its end for narrower ones"
                       : "the bounds hold; for narrower ones look for needles and thin bridges in "
                         "the outline",
            {}};
}

Finding SharpCorners(const Report& report, const WarpingValues& w) {
    constexpr std::size_t kMostNamed = 4;
    std::vector<std::string> named;
    for (const Point& corner : w.sharpCorners) {
        if (named.size() < kMostNamed) named.push_back(PlaceText(corner));
    }
    const std::size_t others = w.sharpCorners.size() - named.size();
    if (others > 0) named.push_back(std::to_string(others) + " more");
    const bool isOne = w.sharpCorners.size() == 1;
    return {Severity::Remark,
            FindingKind::SharpCorners,
            report.section.source,
            "the outline turns sharply into the material at " + Joined(named) +
                ", where the stress has no bound: the torsion modulus" +
                (report.forces ? " and the largest stresses leave" : " leaves") +
                " out what lies within " + ShortNumber(w.leftOutRadius, 3) + ' ' +
                report.section.unit + (isOne ? " of it" : " of them"),
            isOne ? "draw its fillet for a value that includes it"
                  : "draw their fillets for a value that includes them",
            w.sharpCorners.front()};
}

}  // namespace

void AddWarpingFindings(Report* report) {
    const WarpingValues& w = report->warping->values;
    if (w.status != WarpingStatus::Reached) report->findings.push_back(WideBounds(*report, w));
    if (!w.sharpCorners.empty()) report->findings.push_back(SharpCorners(*report, w));
}

}  // namespace halvorn::engine
