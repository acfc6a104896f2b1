#include "engine_rows.h"

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

}  // namespace

py::array PointsArray(const engine::Points& points) {
    py::array_t<double> array({points.size(), std::size_t{2}});
    double* at = array.mutable_data();
    for (const engine::Point& point : points) {
        *at++ = point.x;
        *at++ = point.y;
    }
    array.attr("flags").attr("writeable") = false;
    return array;
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
                          NumberOrNone(value.published), InPythonWords(value.whyMissing));
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
        rows.append(py::make_tuple(
            engine::SeverityName(finding.severity), engine::KindName(finding.kind), finding.element,
            InPythonWords(finding.problem), InPythonWords(finding.mend), place));
    }
    return rows;
}

py::tuple HalvesRow(const engine::PlasticHalves& halves) {
    py::list sides;
    for (const engine::PlasticHalf& half : halves.sides) {
        py::list pieces;
        for (const engine::Points& piece : half.pieces) pieces.append(PointsArray(piece));
        sides.append(
            py::make_tuple(half.area, PairOf(half.centroid), half.leverArm, py::tuple(pieces)));
    }
    return py::make_tuple(halves.whyMissing, halves.axis, sides[0], sides[1]);
}

py::tuple ProfileRow(const engine::CatalogueProfile& profile) {
    return py::make_tuple(profile.name, profile.family, profile.standard, profile.type,
                          profile.unit, profile.source, NumbersByKey(profile.dimensions),
                          NumbersByKey(profile.published));
}

}  // namespace halvorn::python
