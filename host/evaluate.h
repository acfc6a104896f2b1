/// @file evaluate.h
/// From a section to its values, through the public interface of the library.
#ifndef HALVORN_HOST_EVALUATE_H
#define HALVORN_HOST_EVALUATE_H

#include <string>
#include <vector>

#include "section_file.h"
#include "values.h"

namespace halvorn::host {

/// One reported value.
struct Value {
    const ValueDescription* description;
    double number;           // meaningful when `whyMissing` is empty
    std::string whyMissing;  // one sentence
};

struct Evaluation {
    std::vector<Value> values;
    std::vector<std::string> notes;  // what a reader of the values must know, one sentence each
};

/// Shift of the reference point of the elastic moduli from the centre of gravity, in the unit of
/// the file.
struct Shift {
    double dx = 0.0;
    double dy = 0.0;
};

/// Computes all values of a section; `shift` has no meaning for a polyline.
Evaluation Evaluate(const SectionFile& section, const Shift& shift);

}  // namespace halvorn::host

#endif
