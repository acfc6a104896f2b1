/// @file engine_rows.h
/// What the engine knows, as tuples of which the package makes its dataclasses.
#ifndef HALVORN_PYTHON_CORE_ENGINE_ROWS_H
#define HALVORN_PYTHON_CORE_ENGINE_ROWS_H

#include <HalvornEngine.h>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <vector>

namespace halvorn::python {

/// Returns (x, y).
pybind11::tuple PairOf(const engine::Point& point);

/// Returns for each value its number, None where there is none, and then key, name, symbol, unit,
/// group, method, lower, upper, error, published, why it is missing.
pybind11::list ValueRows(const std::vector<engine::Value>& values);

/// Returns for each finding severity, kind, element, problem, mend, place.
pybind11::list FindingRows(const std::vector<engine::Finding>& findings);

/// Returns why there are none, the axis, and for each side area, centroid, lever arm and pieces.
pybind11::tuple HalvesRow(const engine::PlasticHalves& halves);

/// Returns for each polygon its outline and a tuple of its holes.
pybind11::tuple PolygonRows(const std::vector<engine::Polygon>& polygons);

/// Returns an array of shape (4, n): normal, shear x, shear y, von Mises.
pybind11::array StressArray(const std::vector<engine::PointStress>& stresses);

/// Returns nodes (n, 2), triangles (m, 3) and the stresses at the nodes.
pybind11::tuple MeshRow(const engine::StressMesh& mesh);

/// Returns name, family, standard, type, unit, source, dimensions and published values.
pybind11::tuple ProfileRow(const engine::CatalogueProfile& profile);

}  // namespace halvorn::python

#endif
