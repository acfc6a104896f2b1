#include "write/section_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "HalvornEngine.h"

namespace halvorn::engine {

namespace {

using nlohmann::ordered_json;

constexpr int kFormatVersion = 1;

// A name need not be UTF-8: a drawing's is not always.
std::string Written(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

ordered_json ContourOf(const Element& element) {
    ordered_json contour = {{"name", element.label}, {"kind", element.isSolid ? "solid" : "hole"}};
    if (element.isSolid && element.modularRatio != 1.0) {
        contour["modular_ratio"] = element.modularRatio;
    }
    contour["points"] = ordered_json::array();
    for (const Point& point : element.ring) {
        contour["points"].push_back(ordered_json::array({point.x, point.y}));
    }
    return contour;
}

void RequireContours(const SectionModel& section) {
    const std::vector<Element>& all = section.elements;
    const bool isComposite = std::any_of(all.begin(), all.end(), [](const Element& element) {
        return element.isSolid && element.modularRatio != 1.0;
    });
    if (!isComposite) return;
    for (const Element& element : all) {
        if (element.isSolid || element.actsOnAll) continue;
        throw InputError(section.source, element.label,
                         "this hole cuts its own material alone, which a contour cannot say",
                         "keep the section as the file of parts that it was read from");
    }
}

}  // namespace

std::string SectionFileText(const SectionModel& section) {
    RequireContours(section);
    std::string text = "{\n  \"version\": " + std::to_string(kFormatVersion);
    const auto add = [&text](const char* key, const ordered_json& value) {
        text += ",\n  \"" + std::string(key) + "\": " + Written(value);
    };
    if (!section.name.empty()) add("name", section.name);
    if (!section.description.empty()) add("description", section.description);
    add("unit", section.unit);
    if (section.density) add("density", *section.density);
    text += ",\n  \"contours\": [";
    const char* separator = "\n    ";
    for (const Element& element : section.elements) {
        text += separator + Written(ContourOf(element));
        separator = ",\n    ";
    }
    return text + "\n  ]\n}\n";
}

}  // namespace halvorn::engine
