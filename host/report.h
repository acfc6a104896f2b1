/// @file report.h
/// Values as text: a table for people, JSON for programs.
#ifndef HALVORN_HOST_REPORT_H
#define HALVORN_HOST_REPORT_H

#include <string>

#include "evaluate.h"
#include "section_file.h"

namespace halvorn::host {

/// Everything that is said about one section.
struct Report {
    std::string source;  // where the section came from
    SectionFile section;
    Shift shift;
    Evaluation evaluation;
};

/// Returns an aligned table, decimal points one above the other, and the notes below it.
std::string TableText(const Report& report);

/// Returns a JSON object (docs/file-format.md, Results): numbers with every digit, null for what
/// was not computed.
std::string JsonText(const Report& report);

}  // namespace halvorn::host

#endif
