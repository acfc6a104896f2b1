#include "rows.h"

#include <string_view>

namespace halvorn::web {

using nlohmann::ordered_json;

namespace {

constexpr std::string_view kPlusMinus = "\xC2\xB1 ";  // in UTF-8

// Of "19.753 ± 0.002" the bound; empty where none is shown.
std::string BoundIn(const std::string& text) {
    const std::size_t at = text.find(kPlusMinus);
    return at == std::string::npos ? "" : text.substr(at + kPlusMinus.size());
}

ordered_json MaybeNumber(const std::optional<double>& number) {
    return number ? ordered_json(*number) : ordered_json(nullptr);
}

// In full words.
const char* GroupWords(engine::ValueGroup group) {
    switch (group) {
        case engine::ValueGroup::Bending:
            return "Bending";
        case engine::ValueGroup::Plastic:
            return "Plastic";
        case engine::ValueGroup::Torsion:
            return "Torsion and warping";
        case engine::ValueGroup::Shear:
            return "Shear";
        case engine::ValueGroup::Geometry:
            break;
    }
    return "Geometry";
}

ordered_json NumbersByKey(const std::vector<engine::ProfileNumber>& numbers) {
    ordered_json object = ordered_json::object();
    for (const engine::ProfileNumber& each : numbers) object[each.key] = each.number;
    return object;
}

}  // namespace

ordered_json PointRow(const engine::Point& point) {
    return ordered_json::array({point.x, point.y});
}

ordered_json ValueRow(const engine::Value& value, const std::string& unit) {
    const engine::Value shown = unit.empty() ? value : engine::InLengthUnit(value, unit);
    const std::string text = engine::ValueText(shown);
    return {{"key", shown.key},
            {"name", shown.name},
            {"symbol", shown.symbol},
            {"unit", shown.unit},
            {"number", shown.IsComputed() ? ordered_json(shown.number) : ordered_json(nullptr)},
            {"text", text},
            {"plus_minus", BoundIn(text)},
            {"method", shown.method},
            {"lower", MaybeNumber(shown.lower)},
            {"upper", MaybeNumber(shown.upper)},
            {"error", MaybeNumber(shown.error)},
            {"published", MaybeNumber(shown.published)},
            {"published_text", engine::PublishedText(shown)},
            {"difference_text", engine::DifferenceText(shown)},
            {"why_missing", shown.whyMissing}};
}

ordered_json ValueRows(const std::vector<engine::Value>& values, const std::string& unit) {
    ordered_json rows = ordered_json::array();
    for (const engine::Value& value : values) rows.push_back(ValueRow(value, unit));
    return rows;
}

ordered_json GroupRows(const std::vector<engine::Value>& values, const std::string& unit) {
    ordered_json groups = ordered_json::array();
    for (const engine::Value& value : values) {
        const char* const name = engine::GroupName(value.group);
        if (groups.empty() || groups.back()["group"] != name) {
            groups.push_back({{"group", name},
                              {"name", GroupWords(value.group)},
                              {"values", ordered_json::array()}});
        }
        groups.back()["values"].push_back(ValueRow(value, unit));
    }
    return groups;
}

ordered_json StressRows(const std::vector<engine::LargestStress>& stresses,
                        const std::string& unit) {
    ordered_json rows = ordered_json::array();
    for (const engine::LargestStress& stress : stresses) {
        ordered_json row = ValueRow(stress.value, unit);
        row["place"] = nullptr;
        if (stress.place) row["place"] = PointRow(*stress.place);
        rows.push_back(std::move(row));
    }
    return rows;
}

ordered_json FindingRows(const std::vector<engine::Finding>& findings) {
    ordered_json rows = ordered_json::array();
    for (const engine::Finding& finding : findings) {
        rows.push_back({{"severity", engine::SeverityName(finding.severity)},
                        {"kind", engine::KindName(finding.kind)},
                        {"element", finding.element},
                        {"problem", finding.problem},
                        {"mend", finding.mend},
                        {"place", finding.place ? PointRow(*finding.place) : ordered_json(nullptr)},
                        {"text", engine::FindingText(finding)}});
    }
    return rows;
}

ordered_json PolygonRows(const std::vector<engine::Polygon>& polygons) {
    const auto ring = [](const engine::Points& points) {
        ordered_json rows = ordered_json::array();
        for (const engine::Point& point : points) rows.push_back(PointRow(point));
        return rows;
    };
    ordered_json rows = ordered_json::array();
    for (const engine::Polygon& polygon : polygons) {
        ordered_json holes = ordered_json::array();
        for (const engine::Points& hole : polygon.holes) holes.push_back(ring(hole));
        rows.push_back({{"outline", ring(polygon.outline)}, {"holes", std::move(holes)}});
    }
    return rows;
}

ordered_json ProfileRow(const engine::CatalogueProfile& profile) {
    return {{"name", profile.name},
            {"family", profile.family},
            {"standard", profile.standard},
            {"type", profile.type},
            {"unit", profile.unit},
            {"dimensions", NumbersByKey(profile.dimensions)},
            {"published", NumbersByKey(profile.published)}};
}

ordered_json ShapeRows() {
    ordered_json rows = ordered_json::array();
    for (const engine::ShapeDescription& shape : engine::ShapeDescriptions()) {
        ordered_json dimensions = ordered_json::array();
        for (const engine::ShapeDimension& each : shape.dimensions) {
            dimensions.push_back({{"key", each.key},
                                  {"name", each.name},
                                  {"symbol", each.symbol},
                                  {"required", each.isRequired},
                                  {"zero", each.mayBeZero},
                                  {"power", each.power},
                                  {"description", each.description},
                                  {"example", each.example}});
        }
        rows.push_back({{"kind", shape.kind}, {"name", shape.name}, {"dimensions", dimensions}});
    }
    return rows;
}

ordered_json MethodRows() {
    ordered_json rows = ordered_json::array();
    for (const engine::MethodDescription& method : engine::MethodDescriptions()) {
        rows.push_back({{"word", method.word}, {"sentence", method.sentence}});
    }
    return rows;
}

}  // namespace halvorn::web
