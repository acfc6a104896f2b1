#include "write/json.h"

#include <array>
#include <nlohmann/json.hpp>

#include "values/class_values.h"
#include "values/plastic_halves.h"
#include "values/stress_values.h"

namespace halvorn::engine {

namespace {

using nlohmann::ordered_json;

// Of the halves of a report.
constexpr std::array kDirections = {AxisDirection::Horizontal, AxisDirection::Vertical};

ordered_json Entry(const Value& value) {
    ordered_json entry = {{"value", nullptr}};
    if (value.IsComputed()) {
        entry["value"] = value.number;
        if (value.lower) entry["lower"] = *value.lower;
        if (value.upper) entry["upper"] = *value.upper;
        if (value.error) entry["error"] = *value.error;
    }
    entry["unit"] = nullptr;
    if (!value.unit.empty()) entry["unit"] = value.unit;
    entry["symbol"] = value.symbol;
    entry["name"] = value.name;
    entry["method"] = value.method;
    if (value.published) entry["published"] = *value.published;
    if (const auto difference = value.Difference()) entry["difference"] = *difference;
    if (!value.IsComputed()) entry["not_computed"] = value.whyMissing;
    return entry;
}

ordered_json Members(const std::vector<Value>& values) {
    ordered_json members = ordered_json::object();
    for (const Value& value : values) members[value.key] = Entry(value);
    return members;
}

// Each with its group.
ordered_json ValueMembers(const std::vector<Value>& values) {
    ordered_json members = Members(values);
    for (const Value& value : values) members[value.key]["group"] = GroupName(value.group);
    return members;
}

ordered_json Stresses(const Report& report) {
    ordered_json members = ordered_json::object();
    if (!report.forces) return members;
    for (const ForceDescription& force : kForces) {
        members["forces"][force.name] = (*report.forces).*force.force + 0.0;  // no -0
    }
    for (const LargestStress& stress : report.stresses) {
        ordered_json entry = Entry(stress.value);
        entry["place"] = nullptr;
        if (stress.place) entry["place"] = {stress.place->x, stress.place->y};
        members[stress.value.key] = entry;
    }
    return members;
}

ordered_json Parts(const std::vector<CompositePart>& parts) {
    ordered_json list = ordered_json::array();
    for (const CompositePart& part : parts) {
        ordered_json entry = {{"name", part.name}, {"modular_ratio", part.modularRatio}};
        entry.update(Members(part.moduli));
        list.push_back(entry);
    }
    return list;
}

ordered_json List(const std::vector<Finding>& findings) {
    ordered_json list = ordered_json::array();
    for (const Finding& finding : findings) {
        ordered_json entry = {{"severity", SeverityName(finding.severity)},
                              {"kind", KindName(finding.kind)},
                              {"element", finding.element},
                              {"problem", finding.problem},
                              {"mend", finding.mend},
                              {"place", nullptr}};
        if (finding.place) entry["place"] = {finding.place->x, finding.place->y};
        list.push_back(entry);
    }
    return list;
}

ordered_json Halves(const std::vector<PlasticHalves>& halves) {
    ordered_json axes = ordered_json::object();
    for (std::size_t i = 0; i < halves.size(); ++i) {
        ordered_json axis = ordered_json::object();
        if (!halves[i].whyMissing.empty()) {
            axis["not_computed"] = halves[i].whyMissing;
        } else {
            axis["axis"] = halves[i].axis;
            for (std::size_t side = 0; side < 2; ++side) {
                const PlasticHalf& half = halves[i].sides[side];
                axis[SidesOf(kDirections[i])[side]] = {{"area", half.area},
                                                       {"centroid_x", half.centroid.x},
                                                       {"centroid_y", half.centroid.y},
                                                       {"lever_arm", half.leverArm}};
            }
        }
        axes[i == 0 ? "x" : "y"] = axis;
    }
    return axes;
}

ordered_json Object(const Report& report) {
    const SectionModel& section = report.section;
    const bool isPolyline = section.polyline.has_value();
    ordered_json object = {{"results_version", kResultsVersion},
                           {"source", section.source},
                           {"name", section.name},
                           {"description", section.description},
                           {"length_unit", section.unit},
                           {"kind", isPolyline ? "polyline" : "section"},
                           {"shift", {{"dx", report.shift.dx}, {"dy", report.shift.dy}}},
                           {"values", ValueMembers(report.values)},
                           {"parts", Parts(report.parts)},
                           {"stresses", Stresses(report)},
                           {"published", Members(report.published)},
                           {"plastic_halves", Halves(report.halves)},
                           {"findings", List(report.findings)}};
    if (!report.classValues.empty()) {
        object["class_values"] = Members(report.classValues);
        object["class_values_are"] = isPolyline ? kPolylineValuesAre : kClassValuesAre;
    }
    return object;
}

// A path need not be UTF-8.
std::string Text(const Report& report, int indent) {
    return Object(report).dump(indent, ' ', false, ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace

std::string JsonText(const Report& report) {
    return Text(report, 2);
}

std::string JsonLine(const Report& report) {
    return Text(report, -1);
}

}  // namespace halvorn::engine
