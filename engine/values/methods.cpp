#include "values/methods.h"

#include <algorithm>
#include <string_view>

namespace halvorn::engine {

namespace {

constexpr const char* kMixed =
    "the section has parts with given values and drawn ones, whose torsion and shear values are of "
    "different kinds and have no sum";

bool IsTorsionOrShear(std::string_view key) {
    return key.starts_with("torsion_") || key.starts_with("shear_");
}

bool IsGiven(const Element& element) {
    return element.given.has_value();
}

// Each method once, in their order, with commas between.
std::string JoinMethods(const std::vector<std::string>& methods) {
    std::string joined;
    for (auto method = methods.begin(); method != methods.end(); ++method) {
        if (std::find(methods.begin(), method, *method) != method) continue;
        joined += (joined.empty() ? "" : ", ") + *method;
    }
    return joined;
}

// The methods of all elements; `computed` is that of those without given values, which has a
// shorter name among others.
std::string MethodsOf(const std::vector<Element>& elements, const char* computed,
                      const char* computedAmongOthers, bool ofTorsion) {
    const bool hasGiven = std::any_of(elements.begin(), elements.end(), IsGiven);
    std::vector<std::string> methods;
    for (const Element& element : elements) {
        if (!element.given) {
            methods.emplace_back(hasGiven ? computedAmongOthers : computed);
        } else if (ofTorsion && !element.given->torsionMethod.empty()) {
            methods.push_back(element.given->torsionMethod);
        } else {
            methods.push_back(element.given->method);
        }
    }
    return JoinMethods(methods);
}

// Why an element makes a sum of given values unknown; empty when it does not.
std::string WhyUnknown(const Element& element, std::string_view key) {
    if (!element.given) return "";
    const GivenValues& given = *element.given;
    // Turned by its angle, a profile adds some of either shear area to both sums.
    const bool lacksShear = !given.shearArea1 || !given.shearArea2;
    const bool lacks = (key == "torsion_constant" && !given.torsionConstant) ||
                       // A hole is no part of the largest modulus.
                       (key == "torsion_modulus" && element.isSolid && !given.torsionModulus) ||
                       (key.starts_with("shear_area") && lacksShear);
    if (!lacks) return "";
    const char* const what = key == "torsion_constant"  ? "torsion constant"
                             : key == "torsion_modulus" ? "torsion modulus"
                                                        : "shear areas";
    return "the values of " + element.label + " have no " + what;
}

std::string PolylineMethod(const Polyline& polyline, std::string_view key) {
    if (!IsTorsionOrShear(key)) {
        if (polyline.kind == PolylineKind::ClosedWall && key.starts_with("centroid_")) {
            return "exact integrals over all inside the outer face";
        }
        return polyline.kind == PolylineKind::Solid ? "exact integrals over the outline"
                                                    : "exact integrals over both faces";
    }
    if (polyline.kind == PolylineKind::Solid) return "equivalent ellipse, an estimate";
    if (key.starts_with("shear_")) return "half of the area";
    // The torsion constant of an open wall is the same with both formulas.
    const bool isTube = polyline.torsion == TorsionFormulas::Tube &&
                        (polyline.kind == PolylineKind::ClosedWall || key == "torsion_modulus");
    return isTube ? "tube formulas" : "thin-wall formulas";
}

}  // namespace

void DescribeElementMethods(const std::vector<Element>& elements, std::vector<Value>* values) {
    const bool isMixed = std::any_of(elements.begin(), elements.end(), IsGiven) &&
                         !std::all_of(elements.begin(), elements.end(), IsGiven);
    const bool hasHole = std::any_of(elements.begin(), elements.end(),
                                     [](const Element& element) { return !element.isSolid; });
    for (Value& value : *values) {
        if (value.key.starts_with("elastic_")) {
            value.method = "I / fibre distance";
        } else if (value.key.starts_with("plastic_")) {
            value.method = hasHole ? "gross: holes count as area" : "about the halving axes";
        } else if (IsTorsionOrShear(value.key)) {
            value.method = MethodsOf(elements, "equivalent ellipse of each contour, an estimate",
                                     "equivalent ellipses", true);
        } else if (value.key == "extra_sum") {
            value.method = "sum over the profiles";
        } else {
            value.method = MethodsOf(elements, "exact integrals", "exact integrals", false);
        }
        if (isMixed && value.IsComputed() && IsTorsionOrShear(value.key)) {
            value.whyMissing = kMixed;
        }
        for (const Element& element : elements) {
            if (value.IsComputed()) value.whyMissing = WhyUnknown(element, value.key);
        }
    }
}

void DescribePolylineMethods(const Polyline& polyline, std::vector<Value>* values) {
    for (Value& value : *values) value.method = PolylineMethod(polyline, value.key);
}

}  // namespace halvorn::engine
