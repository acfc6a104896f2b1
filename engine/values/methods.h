/// @file methods.h
/// How the values of the library come about.
#ifndef HALVORN_ENGINE_VALUES_METHODS_H
#define HALVORN_ENGINE_VALUES_METHODS_H

#include <string>
#include <vector>

#include "values/report.h"

namespace halvorn::engine {

/// Fills in the method of each value of a section of elements, and the reason of those to which an
/// element adds a given value that is not known.
void DescribeElementMethods(const SectionModel& section, std::vector<Value>* values);

/// Fills in the method of each value of a polyline.
void DescribePolylineMethods(const Polyline& polyline, std::vector<Value>* values);

/// Returns each method once, in their order, with commas between.
std::string JoinMethods(const std::vector<std::string>& methods);

}  // namespace halvorn::engine

#endif
