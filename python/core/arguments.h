/// @file arguments.h
/// What Python passes in, checked and copied. Every routine needs the interpreter's lock and throws
/// ValueError for a wrong value or shape and TypeError for what is no number, with one line that
/// names the place, such as "points[3]: y is nan; coordinates must be finite".
#ifndef HALVORN_PYTHON_CORE_ARGUMENTS_H
#define HALVORN_PYTHON_CORE_ARGUMENTS_H

#include <pybind11/pybind11.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace halvorn::python {

constexpr std::size_t kFewestRingPoints = 3;
constexpr std::size_t kFewestLinePoints = 2;

/// What a message calls the point of an index.
using NamePoint = std::function<std::string(std::size_t index)>;

/// The unit of what has none, such as the coordinates of `CSectionTools`.
constexpr const char* kAnyUnit = nullptr;

/// Returns x0, y0, x1, y1, ... of an array of shape (n, 2) or of any iterable of pairs, all finite.
/// @param place     what the points are called in messages
/// @param fewest    the least number of points
/// @param namePoint what one of them is called; "place[index]" without
/// @param unit      as of `ReadNumber`
std::vector<double> ReadPoints(pybind11::handle object, const std::string& place,
                               std::size_t fewest, const NamePoint& namePoint = nullptr,
                               const char* unit = kAnyUnit);

/// Returns a finite number; texts are none, even if they spell one, nor is what carries a unit.
/// @param unit  that a value of this package may carry: "mm", "deg"; "" for a plain number alone
double ReadNumber(pybind11::handle object, const std::string& place, const char* unit = kAnyUnit);

/// Returns a one-dimensional array or sequence of finite numbers.
std::vector<double> ReadNumbers(pybind11::handle object, const std::string& place);

/// Returns a whole number from `least` to `most`; True and False are 1 and 0.
int ReadWhole(pybind11::handle object, const std::string& place, int least, int most);

/// Returns the flag of a contour, 0 to 255.
unsigned char ReadFlag(pybind11::handle object, const std::string& place);

/// Returns a one-dimensional array or sequence of whole numbers.
std::vector<std::int64_t> ReadIndices(pybind11::handle object, const std::string& place);

}  // namespace halvorn::python

#endif
