#include "arguments.h"

#include <pybind11/numpy.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace py = pybind11;

namespace halvorn::python {

namespace {

// As Python shows it, cut to a length that leaves the message readable, between two characters.
std::string Shown(py::handle object) {
    constexpr py::ssize_t kLongest = 40;
    py::object text = py::repr(object);
    const bool isLong = PyUnicode_GetLength(text.ptr()) > kLongest;
    if (isLong) text = text[py::slice(0, kLongest, 1)];
    const std::string bytes = text.attr("encode")("utf-8", "backslashreplace").cast<py::bytes>();
    return isLong ? bytes + "..." : bytes;
}

bool IsText(py::handle object) {
    return py::isinstance<py::str>(object) || py::isinstance<py::bytes>(object);
}

std::string Item(const std::string& place, std::size_t index) {
    return place + "[" + std::to_string(index) + "]";
}

// Forgets that something is no number; an interrupt, exhausted memory and the like go on.
void ClearConversionError() {
    for (PyObject* const kind : {PyExc_TypeError, PyExc_ValueError, PyExc_OverflowError}) {
        if (PyErr_ExceptionMatches(kind) == 0) continue;
        PyErr_Clear();
        return;
    }
    throw py::error_already_set();
}

// Of the types that most numbers have, which carry no unit.
bool IsOfPlainType(py::handle object) {
    static PyObject* const kFloatType =
        py::object(py::module_::import("numpy").attr("float64")).release().ptr();
    return PyFloat_CheckExact(object.ptr()) != 0 || PyLong_CheckExact(object.ptr()) != 0 ||
           py::type::handle_of(object).ptr() == kFloatType;
}

// Packages of units name it so.
bool HasUnit(py::handle object) {
    return py::hasattr(object, "units") || py::hasattr(object, "unit") ||
           py::hasattr(object, "dimensionality");
}

// Else its number would be taken whatever its unit is. Of this package's own one it is known.
void RefuseUnit(py::handle object, const std::string& place, const char* unit) {
    if (IsOfPlainType(object) || !HasUnit(object)) return;
    if (py::isinstance(object,
                       py::module_::import("halvorn_section_tools._quantity").attr("Quantity"))) {
        const auto own = object.attr("unit").cast<std::string>();
        if (unit == kAnyUnit || own.empty() || own == unit) return;
        const std::string needed =
            *unit == '\0' ? "a plain number" : std::string("a number in ") + unit;
        throw py::type_error(place + ": " + Shown(object) + " is in " + own + ", and " + needed +
                             " is needed; convert it: arithmetic with it gives plain numbers");
    }
    throw py::type_error(place + ": " + Shown(object) +
                         " carries a unit; convert it and pass the number, such as "
                         "x.to('mm').magnitude or x.to_value('mm')");
}

// Of a list of points or of numbers the lists within each other.
constexpr int kPointDepth = 2;

// The whole, the items of a list, and the items of those.
void RefuseUnits(py::handle object, const std::string& place, const char* unit,
                 int depth = kPointDepth) {
    if (PyList_CheckExact(object.ptr()) == 0 && PyTuple_CheckExact(object.ptr()) == 0) {
        return RefuseUnit(object, place, unit);
    }
    for (py::ssize_t i = 0; depth > 0 && i < PySequence_Fast_GET_SIZE(object.ptr()); ++i) {
        const py::handle item = PySequence_Fast_GET_ITEM(object.ptr(), i);
        if (IsOfPlainType(item)) continue;
        const bool isPoint = depth == kPointDepth;  // its coordinates are called as it is
        const std::string here = isPoint ? Item(place, static_cast<std::size_t>(i)) : place;
        RefuseUnits(item, here, unit, depth - 1);
    }
}

// Of a frame or column whose types have room for missing values, which become nan.
py::array FrameArray(py::handle frame, const std::string& place) {
    try {
        return frame.attr("to_numpy")(py::arg("dtype") = "float64", py::arg("na_value") = NAN);
    } catch (py::error_already_set& error) {
        if (!error.matches(PyExc_ValueError) && !error.matches(PyExc_TypeError)) throw;
        const char* const types = py::hasattr(frame, "dtypes") ? "dtypes" : "dtype";
        throw py::type_error(place + ": expected columns of numbers, got " +
                             Shown(py::list(py::iter(py::module_::import("numpy").attr(
                                 "atleast_1d")(frame.attr(types))))));
    }
}

// What an array would be made of `object`; nothing when it would not be one of numbers: a ragged
// list, texts, whole numbers beyond 64 bits, an iterator.
py::array NumericArray(py::handle object, const std::string& place, const char* unit) {
    RefuseUnits(object, place, unit);
    py::array array;
    try {
        array = py::module_::import("numpy").attr("asarray")(object);
    } catch (py::error_already_set& error) {
        if (!error.matches(PyExc_ValueError) && !error.matches(PyExc_TypeError) &&
            !error.matches(PyExc_OverflowError)) {
            throw;
        }
        return py::reinterpret_steal<py::array>(py::handle());
    }
    const bool isSubclass =
        py::isinstance<py::array>(object) && Py_TYPE(object.ptr()) != Py_TYPE(array.ptr());
    if (isSubclass && py::module_::import("numpy.ma").attr("is_masked")(object).cast<bool>()) {
        throw py::value_error(place + ": some values are masked; pass those that count");
    }
    const char kind = array.dtype().kind();
    if (kind == 'c') throw py::type_error(place + ": expected real numbers, got complex ones");
    if (kind == 'f' || kind == 'i' || kind == 'u' || kind == 'b') return array;
    if (kind == 'O' && py::hasattr(object, "to_numpy")) return FrameArray(object, place);
    return py::reinterpret_steal<py::array>(py::handle());
}

using Doubles = py::array_t<double, py::array::c_style | py::array::forcecast>;

[[noreturn]] void FailCoordinate(const std::string& point, bool isY, double value) {
    throw py::value_error(point + ": " + (isY ? "y is " : "x is ") + Shown(py::float_(value)) +
                          "; coordinates must be finite");
}

void RequireShape(const py::array& array, const std::string& place) {
    if (array.ndim() == 2 && array.shape(1) == 2) return;
    std::string remedy;
    if (array.ndim() == 2 && array.shape(0) == 2) {
        remedy = "; pass " + place + ".T if it is a row of x above a row of y";
    } else if (array.ndim() == 1 && array.size() > 0 && array.size() % 2 == 0) {
        remedy = "; x0, y0, x1, y1, ... becomes points by reshape(-1, 2)";
    }
    throw py::value_error(place + ": expected points of shape (n, 2), got shape " +
                          Shown(array.attr("shape")) + remedy);
}

bool IsPlainNumber(PyObject* object) {
    return PyFloat_CheckExact(object) != 0 || PyLong_CheckExact(object) != 0;
}

// Appends the numbers of a list of pairs of plain numbers, all finite. False for all else.
bool ReadPlainPairs(py::handle object, std::vector<double>* coordinates) {
    const auto isSequence = [](PyObject* item) {
        return PyList_CheckExact(item) != 0 || PyTuple_CheckExact(item) != 0;
    };
    if (!isSequence(object.ptr())) return false;
    const py::ssize_t count = PySequence_Fast_GET_SIZE(object.ptr());
    coordinates->reserve(2 * static_cast<std::size_t>(count));
    for (py::ssize_t i = 0; i < count; ++i) {
        PyObject* const pair = PySequence_Fast_GET_ITEM(object.ptr(), i);
        if (!isSequence(pair) || PySequence_Fast_GET_SIZE(pair) != 2) return false;
        for (py::ssize_t k = 0; k < 2; ++k) {
            PyObject* const item = PySequence_Fast_GET_ITEM(pair, k);
            if (!IsPlainNumber(item)) return false;
            const double number = PyFloat_AsDouble(item);
            if (!std::isfinite(number) || (number == -1.0 && PyErr_Occurred() != nullptr)) {
                PyErr_Clear();  // a whole number too large for a float
                return false;
            }
            coordinates->push_back(number);
        }
    }
    return true;
}

// Likewise of an array of doubles of shape (n, 2), row by row in memory.
bool ReadPlainArray(py::handle object, std::vector<double>* coordinates) {
    static PyObject* const kArrayType =
        py::object(py::module_::import("numpy").attr("ndarray")).release().ptr();
    // Of subclasses nobody knows what the numbers are.
    if (py::type::handle_of(object).ptr() != kArrayType) return false;
    if (!py::array_t<double, py::array::c_style>::check_(object)) return false;
    const auto array = py::reinterpret_borrow<py::array_t<double, py::array::c_style>>(object);
    if (array.ndim() != 2 || array.shape(1) != 2) return false;
    const double* const data = array.data();
    if (!std::all_of(data, data + array.size(), [](double x) { return std::isfinite(x); })) {
        return false;
    }
    coordinates->assign(data, data + array.size());
    return true;
}

// One point after the other, for what is no array of numbers, so that the message can name it.
std::vector<double> WalkPoints(py::handle object, const std::string& place,
                               const NamePoint& namePoint, const char* unit) {
    if (IsText(object) || !py::hasattr(object, "__iter__")) {
        throw py::type_error(place + ": expected points (x, y), got " + Shown(object));
    }
    if (PyAnySet_Check(object.ptr()) != 0) {
        throw py::type_error(place + ": a set has no order; pass a list of points");
    }
    std::vector<double> coordinates;
    for (const py::handle point : object) {
        const std::string here = namePoint(coordinates.size() / 2);
        if (IsText(point) || !py::hasattr(point, "__iter__")) {
            throw py::type_error(here + ": expected two numbers (x, y), got " + Shown(point));
        }
        const py::tuple pair = py::reinterpret_steal<py::tuple>(PySequence_Tuple(point.ptr()));
        if (!pair) throw py::error_already_set();
        if (pair.size() != 2) {
            throw py::value_error(here + ": expected two numbers (x, y), got " +
                                  std::to_string(pair.size()));
        }
        for (const py::handle number : pair) {
            if (IsText(number)) {
                throw py::type_error(here + ": expected two numbers (x, y), got " + Shown(point));
            }
            coordinates.push_back(ReadNumber(number, here, unit));
        }
    }
    return coordinates;
}

std::vector<double> CopyPoints(const py::array& array, const std::string& place,
                               const NamePoint& namePoint) {
    if (array.size() == 0) return {};
    RequireShape(array, place);
    const auto doubles = Doubles::ensure(array);
    if (!doubles) throw py::error_already_set();
    const auto size = static_cast<std::size_t>(doubles.size());
    std::vector<double> coordinates(doubles.data(), doubles.data() + size);
    for (std::size_t i = 0; i < size; ++i) {
        if (!std::isfinite(coordinates[i])) {
            FailCoordinate(namePoint(i / 2), i % 2 == 1, coordinates[i]);
        }
    }
    return coordinates;
}

// Of one dimension; an empty list makes an empty array of floats.
py::array Row(py::handle object, const std::string& place, const char* what) {
    py::array array = NumericArray(object, place, kAnyUnit);
    if (!array) throw py::type_error(place + ": expected " + what + ", got " + Shown(object));
    if (array.ndim() != 1) {
        throw py::value_error(place + ": expected " + what + " in one row, got shape " +
                              Shown(array.attr("shape")));
    }
    return array;
}

}  // namespace

std::vector<double> ReadPoints(py::handle object, const std::string& place, std::size_t fewest,
                               const NamePoint& namePoint, const char* unit) {
    std::vector<double> coordinates;
    if (!ReadPlainArray(object, &coordinates) && !ReadPlainPairs(object, &coordinates)) {
        const NamePoint name =
            namePoint ? namePoint : [&](std::size_t i) { return Item(place, i); };
        const py::array array = NumericArray(object, place, unit);
        coordinates = array && array.ndim() > 0 ? CopyPoints(array, place, name)
                                                : WalkPoints(object, place, name, unit);
    }
    const std::size_t count = coordinates.size() / 2;
    if (count < fewest) {
        throw py::value_error(place + ": at least " + std::to_string(fewest) +
                              " points are needed, got " + std::to_string(count));
    }
    return coordinates;
}

double ReadNumber(py::handle object, const std::string& place, const char* unit) {
    RefuseUnit(object, place, unit);
    const double number = PyFloat_AsDouble(object.ptr());
    if (number == -1.0 && PyErr_Occurred() != nullptr) {
        const bool isTooLarge = PyErr_ExceptionMatches(PyExc_OverflowError) != 0;
        ClearConversionError();
        if (isTooLarge) throw py::value_error(place + ": too large for a float");
        throw py::type_error(place + ": expected a number, got " + Shown(object));
    }
    if (!std::isfinite(number)) {
        throw py::value_error(place + ": expected a finite number, got " + Shown(object));
    }
    return number;
}

std::vector<double> ReadNumbers(py::handle object, const std::string& place) {
    const auto doubles = Doubles::ensure(Row(object, place, "numbers"));
    if (!doubles) throw py::error_already_set();
    std::vector<double> numbers(doubles.data(), doubles.data() + doubles.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (!std::isfinite(numbers[i])) ReadNumber(py::float_(numbers[i]), Item(place, i));
    }
    return numbers;
}

int ReadWhole(py::handle object, const std::string& place, int least, int most) {
    int isOverflowing = 0;
    const long long number = PyIndex_Check(object.ptr()) != 0
                                 ? PyLong_AsLongLongAndOverflow(object.ptr(), &isOverflowing)
                                 : -1;
    if (PyIndex_Check(object.ptr()) == 0 || PyErr_Occurred() != nullptr) {
        if (PyErr_Occurred() != nullptr) ClearConversionError();
        throw py::type_error(place + ": expected a whole number, got " + Shown(object));
    }
    if (isOverflowing != 0 || number < least || number > most) {
        throw py::value_error(place + ": expected " + std::to_string(least) + " to " +
                              std::to_string(most) + ", got " + Shown(object));
    }
    return static_cast<int>(number);
}

unsigned char ReadFlag(py::handle object, const std::string& place) {
    return static_cast<unsigned char>(
        ReadWhole(object, place, 0, std::numeric_limits<unsigned char>::max()));
}

std::vector<std::int64_t> ReadIndices(py::handle object, const std::string& place) {
    const py::array array = Row(object, place, "whole numbers");
    if (array.size() == 0) return {};
    if (array.dtype().kind() == 'f') {
        throw py::type_error(place + ": expected whole numbers, got " + Shown(array.dtype()));
    }
    const auto whole =
        py::array_t<std::int64_t, py::array::c_style | py::array::forcecast>::ensure(array);
    if (!whole) throw py::error_already_set();
    return {whole.data(), whole.data() + whole.size()};
}

}  // namespace halvorn::python
