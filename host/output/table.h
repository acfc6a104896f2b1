/// @file table.h
/// A report for people.
#ifndef HALVORN_HOST_OUTPUT_TABLE_H
#define HALVORN_HOST_OUTPUT_TABLE_H

#include <string>

#include "results/report.h"

namespace halvorn::host {

/// Returns an aligned table, decimal points one above the other, and the notes below it.
std::string TableText(const Report& report);

}  // namespace halvorn::host

#endif
