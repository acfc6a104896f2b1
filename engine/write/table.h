/// @file table.h
/// A report for people.
#ifndef HALVORN_ENGINE_WRITE_TABLE_H
#define HALVORN_ENGINE_WRITE_TABLE_H

#include <string>

#include "values/report.h"

namespace halvorn::engine {

/// Returns an aligned table of the values, of what is published of a profile and of the outputs of
/// the class, decimal points one above the other, and below it the reasons of what is missing and
/// what is found, but for hints. Lines have at most 115 columns: a longer method is a number, [1],
/// and stands below.
std::string TableText(const Report& report);

}  // namespace halvorn::engine

#endif
