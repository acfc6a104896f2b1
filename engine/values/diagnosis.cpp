#include "values/diagnosis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "base/text.h"
#include "geometry/arrangement.h"
#include "geometry/crossings.h"
#include "values/evaluate.h"
#include "values/overlaps.h"
#include "values/rounding.h"

namespace halvorn::engine {

namespace {

// A few places of each kind are enough to begin with.
constexpr std::size_t kMostPlaces = 5;

std::string Digits(double number) {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.6g", number);
    return buffer.data();
}

std::string Count(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

// A ring, or a line, under examination.
struct Line {
    std::string label;
    Points points;
    bool isOpen = false;
    std::string unit;
};

struct Findings {
    std::vector<Finding> list;
    void Add(Severity severity, const std::string& label, const std::string& problem,
             const std::string& remedy) {
        list.push_back({severity, label, problem, remedy});
    }
};

// Drops repeated points, so that what follows need not think of them.
void LookForRepeatedPoints(Line* line, Findings* findings) {
    Points kept;
    std::vector<std::size_t> repeated;
    for (std::size_t i = 0; i < line->points.size(); ++i) {
        const bool isFirstAgain = i > 0 && i + 1 == line->points.size() && !line->isOpen &&
                                  line->points[i] == line->points[0];
        if (isFirstAgain || (!kept.empty() && kept.back() == line->points[i])) {
            repeated.push_back(i);
        } else {
            kept.push_back(line->points[i]);
        }
    }
    if (!repeated.empty()) {
        findings->Add(Severity::Remark, line->label,
                      Count(repeated.size(), "point repeats", "points repeat") +
                          " the one before, first point " + std::to_string(repeated[0]) + " at " +
                          PlaceText(line->points[repeated[0]]),
                      "harmless for the values; leave it out, also a last point that repeats the "
                      "first");
    }
    line->points = kept;
}

void LookForStraightVertices(const Line& line, Findings* findings) {
    const Points& p = line.points;
    std::vector<std::size_t> straight;
    for (std::size_t i = line.isOpen ? 1 : 0; i + (line.isOpen ? 1 : 0) < p.size(); ++i) {
        const auto& [ax, ay] = p[(i + p.size() - 1) % p.size()];
        const auto& [bx, by] = p[i];
        const auto& [cx, cy] = p[(i + 1) % p.size()];
        const double cross = (bx - ax) * (cy - by) - (by - ay) * (cx - bx);
        const double dot = (bx - ax) * (cx - bx) + (by - ay) * (cy - by);
        if (dot > 0.0 && std::fabs(cross) <= 1e-12 * dot) straight.push_back(i);
    }
    if (straight.empty()) return;
    findings->Add(Severity::Remark, line.label,
                  Count(straight.size(), "vertex lies", "vertices lie") +
                      " straight between its neighbours, first point " +
                      std::to_string(straight[0]) + " at " + PlaceText(p[straight[0]]),
                  "harmless for the values; leave it out to save time");
}

// Whether edges that follow each other run back over each other.
bool IsSpike(const Crossing& crossing, const Line& line) {
    const bool closes = crossing.firstEdge == 0 && crossing.secondEdge + 1 == line.points.size();
    return !crossing.isProper && (crossing.secondEdge == crossing.firstEdge + 1 || closes);
}

void DescribeCrossings(const Line& line, const std::vector<Crossing>& crossings,
                       Findings* findings) {
    for (const Crossing& crossing : crossings) {
        const std::string where = "edges " + std::to_string(crossing.firstEdge) + " and " +
                                  std::to_string(crossing.secondEdge) +
                                  (crossing.isProper ? " cross at " : " touch or overlap at ") +
                                  PlaceText(crossing.place);
        if (crossing.isProper) {
            findings->Add(Severity::Error, line.label, where,
                          "areas of opposite sense cancel: bring the points into order, or split "
                          "the contour there");
        } else if (IsSpike(crossing, line)) {
            findings->Add(Severity::Warning, line.label,
                          "a spike without area ends at " + PlaceText(crossing.place),
                          "leave its point out: the distance of the outermost fibre reaches to it, "
                          "and the elastic moduli with it");
        } else {
            findings->Add(Severity::Warning, line.label, where,
                          "right for a bridge to a hole; else move or drop the point");
        }
    }
}

struct Extent {
    double size = 0.0;      // larger side of the bounding box
    double farthest = 0.0;  // largest coordinate
};

Extent ExtentOf(const Points& points) {
    auto [left, bottom] = points[0];
    auto [right, top] = points[0];
    double farthest = 0.0;
    for (const auto& [x, y] : points) {
        left = std::min(left, x);
        right = std::max(right, x);
        bottom = std::min(bottom, y);
        top = std::max(top, y);
        farthest = std::max({farthest, std::fabs(x), std::fabs(y)});
    }
    return {std::max(right - left, top - bottom), farthest};
}

double Area(const Points& ring) {
    return 0.5 * std::fabs(TwiceArea(ring));
}

// Inertias about a distant origin are no help: what moves them to the centroid takes their digits.
void LookForLostDigits(const Line& line, Findings* findings) {
    constexpr double kEpsilon = 2.2e-16;
    constexpr double kTooCoarse = 1e-9;
    const Extent extent = ExtentOf(line.points);
    if (extent.size == 0.0) return;
    const double ratio = extent.farthest / extent.size;
    const double lost = kEpsilon * ratio * ratio;
    if (lost < kTooCoarse) return;
    findings->Add(Severity::Warning, line.label,
                  "it lies " + Digits(ratio) +
                      " times its size from the origin; of its inertias, moved to the centre of "
                      "gravity, about " +
                      std::to_string(std::max(0, static_cast<int>(-std::log10(lost)))) +
                      " of 16 digits are left",
                  "move the section nearer to the origin");
}

// What the values themselves tell, where no line has told what is wrong.
void LookAtValues(SectionModel section, Findings* findings) {
    section.isDrawn = false;  // what crosses itself is found already
    const Report report = Evaluate(section, {});
    for (const std::string& doubt : report.doubts) {
        findings->Add(Severity::Warning, section.source, doubt, "");
    }
    const auto isError = [](const Finding& finding) { return finding.severity == Severity::Error; };
    if (!report.doubts.empty() ||
        std::any_of(findings->list.begin(), findings->list.end(), isError)) {
        return;
    }
    for (const std::string_view key : {"area", "centroid_x", "centroid_y", "inertia_x", "inertia_y",
                                       "inertia_x_origin", "inertia_y_origin"}) {
        for (const Value& value : report.values) {
            if (value.key != key || value.IsComputed()) continue;
            findings->Add(Severity::Error, section.source, value.whyMissing,
                          report.values.front().number == 0.0
                              ? "look for missing points, and for holes that are too large"
                              : "");
            return;
        }
    }
}

bool HasNoArea(const Line& line) {
    const double rounding = AreaRounding(line.points);
    return !line.isOpen && std::isfinite(rounding) && Area(line.points) <= rounding;
}

// The library's tolerances are fixed numbers of the unit (docs/conventions.md).
void LookForSmallness(const Line& line, Findings* findings) {
    constexpr double kSmallestArea = 1e-10;   // below it no equivalent ellipse
    constexpr double kSmallestPolar = 1e-10;  // likewise, of the polar moment
    constexpr double kAxisAgreement = 1e-7;   // where the search of the plastic axis stops
    constexpr double kAxisPart = 1e-4;        // of the area that this may be
    if (line.isOpen) return;
    const double area = Area(line.points);
    const Extent extent = ExtentOf(line.points);
    const double polar = area * extent.size * extent.size / 12.0;
    if (area < kSmallestArea || polar < kSmallestPolar) {
        findings->Add(Severity::Warning, line.label,
                      "its area of " + Digits(area) + " " + line.unit +
                          "^2 is so small that the library gives no torsion constant",
                      "use a smaller unit, such as mm");
    } else if (area * kAxisPart < kAxisAgreement) {
        findings->Add(Severity::Warning, line.label,
                      "the search of the plastic axis stops when both sides agree within 1e-7 " +
                          line.unit + "^2, " + Digits(100.0 * kAxisAgreement / area) +
                          " % of its area",
                      "use a smaller unit, such as mm, where plastic moduli matter");
    }
}

void LookAtGivenValues(const Element& element, Findings* findings) {
    constexpr double kAgreement = 0.1;
    if (!element.given) return;
    const double drawn = Area(element.ring);
    if (std::fabs(drawn - element.given->area) <= kAgreement * element.given->area) return;
    findings->Add(Severity::Warning, element.label,
                  "its outline encloses " + Digits(drawn) + ", the area given is " +
                      Digits(element.given->area),
                  "the plastic moduli come from the outline, the rest from the given values: check "
                  "both, and their unit");
}

// Returns why overlaps could not be looked for; empty when they were.
std::string LookForOverlaps(const SectionModel& section, Findings* findings) {
    if (section.elements.empty()) return "";
    const std::vector<Element>& elements = section.elements;
    const auto amount = [&](double area) { return Digits(area) + " " + section.unit + "^2"; };
    Overlaps overlaps;
    try {
        overlaps = FindOverlaps(elements);
    } catch (const ArrangementError& error) {
        return error.what();
    }
    for (const Overlap& overlap : overlaps.solids) {
        findings->Add(Severity::Warning, elements[overlap.first].label,
                      "it overlaps \"" + elements[overlap.second].label +
                          "\": " + amount(overlap.area) + " are counted twice",
                      "move one of them or join both to one contour");
    }
    for (const Overlap& overlap : overlaps.holes) {
        findings->Add(Severity::Warning, elements[overlap.first].label,
                      "it overlaps the hole \"" + elements[overlap.second].label +
                          "\": " + amount(overlap.area) + " are subtracted twice",
                      "move one of them or join both to one hole");
    }
    for (const Overlap& overlap : overlaps.turns) {
        findings->Add(Severity::Warning, elements[overlap.first].label,
                      "it runs round a part of its area more than once: " + amount(overlap.area) +
                          " more are counted than it covers",
                      "run round a hole in the other sense, and round each part once");
    }
    for (const Overlap& overlap : overlaps.outsideHoles) {
        findings->Add(Severity::Warning, elements[overlap.first].label,
                      amount(overlap.area) +
                          " of this hole lie outside every solid and are "
                          "subtracted all the same",
                      "move it inside, or give the solid around it");
    }
    return "";
}

void LookAtLine(Line line, Findings* findings) {
    LookForRepeatedPoints(&line, findings);
    if (line.points.size() < (line.isOpen ? 2U : 3U)) {
        findings->Add(Severity::Error, line.label, "it has too few different points",
                      "add the missing points");
        return;
    }
    const std::vector<Crossing> crossings = FindCrossings(line.points, line.isOpen, kMostPlaces);
    const auto isProper = [](const Crossing& crossing) { return crossing.isProper; };
    const bool crosses = std::any_of(crossings.begin(), crossings.end(), isProper);
    if (HasNoArea(line) && !crosses) {
        findings->Add(Severity::Error, line.label, "it encloses no area",
                      "look for missing points, or for points in a wrong order");
        return;
    }
    DescribeCrossings(line, crossings, findings);
    if (!HasNoArea(line)) LookForSmallness(line, findings);
    LookForStraightVertices(line, findings);
}

}  // namespace

std::vector<Finding> Diagnose(const SectionModel& section) {
    Findings findings;
    for (const Element& element : section.elements) {
        LookAtLine({element.label, element.ring, false, section.unit}, &findings);
        LookAtGivenValues(element, &findings);
    }
    if (section.polyline) {
        const Line line = {"/polyline", section.polyline->points,
                           section.polyline->kind == PolylineKind::OpenWall, section.unit};
        LookForLostDigits(line, &findings);
        LookAtLine(line, &findings);
    }
    const std::string whyNoOverlaps = LookForOverlaps(section, &findings);
    LookAtValues(section, &findings);
    const auto isError = [](const Finding& finding) { return finding.severity == Severity::Error; };
    if (!whyNoOverlaps.empty() &&
        std::none_of(findings.list.begin(), findings.list.end(), isError)) {
        findings.Add(Severity::Error, section.source, whyNoOverlaps,
                     "correct the coordinates, or bring the outlines into order");
    }
    for (const std::string& remark : section.remarks) {
        findings.Add(Severity::Remark, section.source, remark, "");
    }
    std::stable_sort(findings.list.begin(), findings.list.end(),
                     [](const Finding& a, const Finding& b) { return a.severity > b.severity; });
    return findings.list;
}

std::string FindingsText(const std::vector<Finding>& findings) {
    if (findings.empty()) return "nothing found\n";
    std::string text;
    for (const Finding& finding : findings) {
        const char* const kind = finding.severity == Severity::Error     ? "error"
                                 : finding.severity == Severity::Warning ? "warning"
                                                                         : "remark";
        const std::string remedy = finding.remedy.empty() ? "" : "; " + finding.remedy;
        text += SingleLine(std::string(kind) + ": " + finding.element + ": " + finding.problem +
                           remedy) +
                '\n';
    }
    return text;
}

}  // namespace halvorn::engine
