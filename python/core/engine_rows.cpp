#include "engine_rows.h"

#include <cstdint>
#include <optional>
#include <string>

#include "engine_arguments.h"

namespace py = pybind11;

namespace halvorn::python {

namespace {

py::object NumberOrNone(const std::optional<double>& number) {
    return number ? py::object(py::float_(*number)) : py::none();
}

py::dict NumbersByKey(const std::vector<engine::ProfileNumber>& numbers) {
    py::dict dict;
    for (const engine::ProfileNumber& number : numbers) dict[py::str(number.key)] = number.number;
    return dict;
}

py::str PythonText(const std::string& text) {
    return Text(InPythonWords(text));
}

py::array ReadOnly(py::array array) {
    array.attr("flags").attr("writeable") = false;
    return array;
}

}  // namespace

py::array PointsArray(const engine::Points& points) {
    py::array_t<double> array({points.size(), std::size_t{2}});
    double* at = array.mutable_data();
    for (const engine::Point& point : points) {
        *at++ = point.x;
        *at++ = point.y;
    }
    return ReadOnly(array);
}

py::tuple RingsOf(const std::vector<engine::Points>& rings) {
    py::list arrays;
    for (const engine::Points& ring : rings) arrays.append(PointsArray(ring));
    return py::tuple(arrays);
}

py::tuple PairOf(const engine::Point& point) {
    return py::make_tuple(point.x, point.y);
}

py::tuple ValueRow(const engine::Value& value) {
    const py::object number =
        value.IsComputed() ? py::object(py::float_(value.number)) : py::none();
    return py::make_tuple(number, value.key, value.name, value.symbol, value.unit,
                          engine::GroupName(value.group), value.method, NumberOrNone(value.lower),
                          NumberOrNone(value.upper), NumberOrNone(value.error),
                          NumberOrNone(value.published), PythonText(value.whyMissing));
}

py::list ValueRows(const std::vector<engine::Value>& values) {
    py::list rows;
    for (const engine::Value& value : values) rows.append(ValueRow(value));
    return rows;
}

py::list FindingRows(const std::vector<engine::Finding>& findings) {
    py::list rows;
    for (const engine::Finding& finding : findings) {
        const py::object place = finding.place ? py::object(PairOf(*finding.place)) : py::none();
        rows.append(py::make_tuple(engine::SeverityName(finding.severity),
                                   engine::KindName(finding.kind), Text(finding.element),
                                   PythonText(finding.problem), PythonText(finding.mend), place));
    }
    return rows;
}

py::tuple HalvesRow(const engine::PlasticHalves& halves) {
    py::list sides;
    for (const engine::PlasticHalf& half : halves.sides) {
        sides.append(
            py::make_tuple(half.area, PairOf(half.centroid), half.leverArm, RingsOf(half.pieces)));
    }
    return py::make_tuple(Text(halves.whyMissing), halves.axis, sides[0], sides[1]);
}

py::tuple PolygonRows(const std::vector<engine::Polygon>& polygons) {
    py::list rows;
    for (const engine::Polygon& polygon : polygons) {
        rows.append(py::make_tuple(PointsArray(polygon.outline), RingsOf(polygon.holes)));
    }
    return py::tuple(rows);
}

py::array StressArray(const std::vector<engine::PointStress>& stresses) {
    py::array_t<double> array({std::size_t{4}, stresses.size()});
    auto at = array.mutable_unchecked<2>();
    for (py::ssize_t i = 0; i < at.shape(1); ++i) {
        const engine::PointStress& stress = stresses[static_cast<std::size_t>(i)];
        at(0, i) = stress.normal;
        at(1, i) = stress.shearX;
        at(2, i) = stress.shearY;
        at(3, i) = stress.vonMises;
    }
    return ReadOnly(array);
}

py::tuple MeshRow(const engine::StressMesh& mesh) {
    py::array_t<std::int64_t> triangles({mesh.triangles.size(), std::size_t{3}});
    std::int64_t* at = triangles.mutable_data();
    for (const auto& nodes : mesh.triangles) {
        for (const std::size_t node : nodes) *at++ = static_cast<std::int64_t>(node);
    }
    return py::make_tuple(PointsArray(mesh.nodes), ReadOnly(triangles), StressArray(mesh.stresses));
}

py::tuple ProfileRow(const engine::CatalogueProfile& profile) {
    return py::make_tuple(Text(profile.name), Text(profile.family), Text(profile.standard),
                          profile.type, profile.unit, PathText(profile.source),
                          NumbersByKey(profile.dimensions), NumbersByKey(profile.published));
}

}  // namespace halvorn::python
