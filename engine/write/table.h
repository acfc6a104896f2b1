/// @file table.h
/// A report for people.
#ifndef HALVORN_ENGINE_WRITE_TABLE_H
#define HALVORN_ENGINE_WRITE_TABLE_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Returns an aligned table of the values and of what is derived from them, decimal points one
/// above the other, and below it the reasons of what is missing, the notes and the remarks on
/// reading. Lines have at most 115 columns: a longer method is a number, [1], and stands below.
std::string TableText(const Report& report);

}  // namespace halvorn::engine

#endif
