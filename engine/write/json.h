/// @file json.h
/// A report for programs (docs/file-format.md, JSON results).
#ifndef HALVORN_ENGINE_WRITE_JSON_H
#define HALVORN_ENGINE_WRITE_JSON_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Returns a JSON object on several lines: numbers with every digit, null for what was not
/// computed. The report has its halves.
std::string JsonText(const Report& report);

/// Returns the same object on one line, for tables of one object a line.
std::string JsonLine(const Report& report);

}  // namespace halvorn::engine

#endif
