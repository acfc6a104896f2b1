/// @file csv.h
/// Reports as rows of comma-separated values (RFC 4180).
#ifndef HALVORN_ENGINE_WRITE_CSV_H
#define HALVORN_ENGINE_WRITE_CSV_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Returns one line for the columns of `CsvHeader`, with its line feed and every digit of each
/// number; a cell is empty where a value does not exist or was not computed. The last cell holds
/// the findings but for hints, and the reasons of what was not computed, separated by "; ".
std::string CsvRow(const Report& report, const CsvOptions& options = {});

}  // namespace halvorn::engine

#endif
