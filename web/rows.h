/// @file rows.h
/// What the engine knows as JSON.
#ifndef HALVORN_WEB_ROWS_H
#define HALVORN_WEB_ROWS_H

#include <HalvornEngine.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace halvorn::web {

/// Returns a value as tables show it and as programs take it.
/// @param unit  of length; empty: that of the value
nlohmann::ordered_json ValueRow(const engine::Value& value, const std::string& unit);

/// Returns values in their order.
nlohmann::ordered_json ValueRows(const std::vector<engine::Value>& values, const std::string& unit);

/// Returns values by their groups, each with its name.
nlohmann::ordered_json GroupRows(const std::vector<engine::Value>& values, const std::string& unit);

/// Returns the largest stresses, each with its place in the unit of the section.
nlohmann::ordered_json StressRows(const std::vector<engine::LargestStress>& stresses,
                                  const std::string& unit);

nlohmann::ordered_json FindingRows(const std::vector<engine::Finding>& findings);

nlohmann::ordered_json ProfileRow(const engine::CatalogueProfile& profile);

nlohmann::ordered_json ShapeRows();

nlohmann::ordered_json MethodRows();

nlohmann::ordered_json PolygonRows(const std::vector<engine::Polygon>& polygons);

nlohmann::ordered_json PointRow(const engine::Point& point);

}  // namespace halvorn::web

#endif
