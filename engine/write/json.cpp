#include "write/json.h"

#include <nlohmann/json.hpp>

namespace halvorn::engine {

namespace {

using nlohmann::ordered_json;

ordered_json Members(const std::vector<Value>& values) {
    ordered_json members = ordered_json::object();
    for (const Value& value : values) {
        ordered_json entry = {{"value", nullptr},
                              {"unit", nullptr},
                              {"symbol", value.symbol},
                              {"name", value.name},
                              {"method", value.method}};
        if (value.IsComputed()) {
            entry["value"] = value.number;
        } else {
            entry["not_computed"] = value.whyMissing;
        }
        if (!value.unit.empty()) entry["unit"] = value.unit;
        members[value.key] = entry;
    }
    return members;
}

ordered_json Object(const Report& report) {
    const SectionModel& section = report.section;
    ordered_json root = {
        {"results_version", 1},        {"source", section.source},
        {"name", section.name},        {"description", section.description},
        {"length_unit", section.unit}, {"kind", section.polyline ? "polyline" : "section"}};
    if (!section.polyline) root["shift"] = {{"dx", report.shift.dx}, {"dy", report.shift.dy}};
    root["values"] = Members(report.values);
    root["derived"] = Members(report.derived);
    root["notes"] = report.notes;
    root["remarks"] = section.remarks;
    return root;
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
