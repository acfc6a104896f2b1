/// @file methods.h
/// How the outputs of the library's class come about.
#ifndef HALVORN_ENGINE_VALUES_METHODS_H
#define HALVORN_ENGINE_VALUES_METHODS_H

#include <string>
#include <vector>

#include "values/report.h"

namespace halvorn::engine {

/// Fills in the method of each value of a section of elements, and the reason of those to which an
/// element adds a given value that is not known, or to which given and drawn elements add torsion
/// and shear values of different kinds.
void DescribeElementMethods(const std::vector<Element>& elements, std::vector<Value>* values);

/// Fills in the method of each value of a polyline.
void DescribePolylineMethods(const Polyline& polyline, std::vector<Value>* values);

}  // namespace halvorn::engine

#endif
