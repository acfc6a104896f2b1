/// @file csv.h
/// Reports as rows of comma-separated values (RFC 4180).
#ifndef HALVORN_ENGINE_WRITE_CSV_H
#define HALVORN_ENGINE_WRITE_CSV_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Returns the line of column names, the same for every section, with its line feed: source, name,
/// unit, every key of the values, "class_" before every key of a section's and a polyline's outputs
/// of the class, notes.
std::string CsvHeader();

/// Returns one line, with its line feed and every digit of each number; a cell is empty where a
/// value does not exist or was not computed. The last cell holds the findings but for
/// hints, and the reasons of what was not computed, separated by "; ".
std::string CsvRow(const Report& report);

}  // namespace halvorn::engine

#endif
