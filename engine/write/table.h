/// @file table.h
/// A report for people.
#ifndef HALVORN_ENGINE_WRITE_TABLE_H
#define HALVORN_ENGINE_WRITE_TABLE_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Returns a table of the values, group by group, with what is published of a profile beside each,
/// and below it what is found but for hints. A value that is missing says why in its line. Lines
/// have at most 100 columns where names and numbers let them.
std::string TableText(const Report& report, const TableOptions& options = {});

/// Returns all methods with what they are, a line each or more, for people.
std::string MethodsText();

}  // namespace halvorn::engine

#endif
