/// @file csv.h
/// Reports as rows of comma-separated values (RFC 4180).
#ifndef HALVORN_HOST_OUTPUT_CSV_H
#define HALVORN_HOST_OUTPUT_CSV_H

#include <string>

#include "results/report.h"

namespace halvorn::host {

/// Returns the line of column names, the same for every section: source, name, unit, every key of a
/// section's and a polyline's values, notes.
std::string CsvHeader();

/// Returns one line with every digit of each number; a cell is empty where a value does not exist
/// or was not computed.
std::string CsvRow(const Report& report);

}  // namespace halvorn::host

#endif
