// halvorn_section_tools._core: CSectionTools as it is, many sections at once, and the engine.
// Signatures and types are in _core.pyi.
#include <CSectionTools.h>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "arguments.h"
#include "batch.h"
#include "engine_section.h"
#include "guarded_section.h"
#include "hole_places.h"
#include "interrupt_watch.h"
#include "section_values.h"

namespace py = pybind11;

namespace {

using namespace halvorn::python;

constexpr const char* kContourValueNames =
    "area cdg torsionConstant torsionModulus shearAreaX shearAreaY ixx iyy ixy";

// A named tuple of this module by its name.
py::object Record(const char* name) {
    return py::module_::import("halvorn_section_tools._core").attr(name);
}

void AddRecord(py::module_& module, const char* name, const char* fields, const char* doc) {
    py::object record =
        py::module_::import("collections")
            .attr("namedtuple")(name, fields, py::arg("module") = module.attr("__name__"));
    record.attr("__doc__") = doc;
    module.attr(name) = record;
}

void PushContour(GuardedSection& section, py::handle points, py::handle flag) {
    std::vector<double> coordinates = ReadPoints(points, "points", kFewestRingPoints);
    const unsigned char solid = ReadFlag(flag, "flag");
    const std::size_t count = coordinates.size() / 2;
    section.CountVertices(count);
    section.Use(count, [&](CSectionTools& tools) {
        tools.PushContour(static_cast<int>(count), coordinates.data(), solid);
        section.Rounding().AddContour(coordinates.data(), count, solid != 0);
    });
}

void PushContourStandard(GuardedSection& section, py::handle points, py::handle alpha,
                         py::handle xG, py::handle yG, py::handle area, py::handle shearArea2,
                         py::handle shearArea1, py::handle torsion, py::handle inertia2,
                         py::handle inertia1, py::handle reserved, py::handle wt, py::handle wplx,
                         py::handle wply, py::handle extra, py::handle flag) {
    std::vector<double> coordinates = ReadPoints(points, "points", kFewestRingPoints);
    const std::array<double, 14> given = {ReadNumber(alpha, "alpha"),
                                          ReadNumber(xG, "xG"),
                                          ReadNumber(yG, "yG"),
                                          ReadNumber(area, "area"),
                                          ReadNumber(shearArea2, "shearArea2"),
                                          ReadNumber(shearArea1, "shearArea1"),
                                          ReadNumber(torsion, "torsion"),
                                          ReadNumber(inertia2, "inertia2"),
                                          ReadNumber(inertia1, "inertia1"),
                                          ReadNumber(reserved, "reserved"),
                                          ReadNumber(wt, "wt"),
                                          ReadNumber(wplx, "wplx"),
                                          ReadNumber(wply, "wply"),
                                          ReadNumber(extra, "extra")};
    const unsigned char solid = ReadFlag(flag, "flag");
    const std::size_t count = coordinates.size() / 2;
    section.CountVertices(count);
    section.Use(count, [&](CSectionTools& tools) {
        tools.PushContourStandard(static_cast<int>(count), coordinates.data(), given[0], given[1],
                                  given[2], given[3], given[4], given[5], given[6], given[7],
                                  given[8], given[9], given[10], given[11], given[12], given[13],
                                  solid);
        section.Rounding().AddProfile(coordinates.data(), count, solid != 0,
                                      {given[1], given[2], given[3], given[8], given[7]});
    });
}

py::array_t<double> CheckedNumbers(py::handle object, const std::string& place) {
    const std::vector<double> numbers = ReadNumbers(object, place);
    return py::array_t<double>(static_cast<py::ssize_t>(numbers.size()), numbers.data());
}

py::array_t<double> CheckedPoints(py::handle points, const std::string& place, std::size_t fewest,
                                  const char* unit) {
    const std::vector<double> coordinates = ReadPoints(points, place, fewest, nullptr, unit);
    py::array_t<double> array({coordinates.size() / 2, std::size_t{2}});
    std::copy(coordinates.begin(), coordinates.end(), array.mutable_data());
    array.attr("flags").attr("writeable") = false;
    return array;
}

py::object GetCalculValues(GuardedSection& section, py::handle dx, py::handle dy) {
    const double shiftX = ReadNumber(dx, "dx");
    const double shiftY = ReadNumber(dy, "dy");
    Values outputs;
    bool isComplete = false;
    section.Use(section.Vertices(), [&](CSectionTools& tools) {
        isComplete = GetOutputs(tools, shiftX, shiftY, &outputs);
    });
    py::tuple fields(kValueCount);
    for (std::size_t i = 0; i < kValueCount; ++i) {
        const bool isWritten = isComplete || i < kFirstUnwritten;
        fields[i] = isWritten ? py::object(py::float_(outputs[i])) : py::none();
    }
    return Record("CalculValues")(*fields);
}

py::tuple ValuesOf(GuardedSection& section, py::handle dx, py::handle dy) {
    const double shiftX = ReadNumber(dx, "dx");
    const double shiftY = ReadNumber(dy, "dy");
    SectionValues row;
    section.Use(section.Vertices(), [&](CSectionTools& tools) {
        row = ReadingOrder(tools, shiftX, shiftY, section.Rounding());
    });
    if (row.fault != nullptr) throw py::value_error(std::string("the section ") + row.fault);
    py::tuple fields(kValueCount);
    for (std::size_t i = 0; i < kValueCount; ++i) {
        const double value = row.values[i];
        fields[i] = std::isnan(value) ? py::none() : py::object(py::float_(value));
    }
    return py::make_tuple(fields, row.loss.relative, row.loss.isByDistance);
}

// Of pairs of points and whether they are a solid's.
py::object MisplacedHole(const py::list& contours) {
    using Points = py::array_t<double, py::array::c_style | py::array::forcecast>;
    std::vector<Points> owners;
    std::vector<Outline> outlines;
    std::size_t vertices = 0;
    for (const py::handle contour : contours) {
        const auto pair = py::cast<std::pair<Points, bool>>(contour);
        const auto count = static_cast<std::size_t>(pair.first.shape(0));
        owners.push_back(pair.first);
        outlines.push_back({owners.back().data(), count, pair.second});
        vertices += count;
    }
    std::optional<MisplacedPoint> found;
    if (vertices < kLongCall) {
        found = FindMisplacedHole(outlines);
    } else {
        const py::gil_scoped_release released;
        found = FindMisplacedHole(outlines);
    }
    if (!found) return py::none();
    return py::make_tuple(found->outline, found->x, found->y);
}

py::object CalculContour(py::handle isThinWalled, py::handle isOpen, py::handle torsionMode,
                         py::handle thickness, py::handle points, py::handle cornerRadii) {
    const int isWall = ReadWhole(isThinWalled, "isThinWalled", 0, 1);
    const int hasEnds = ReadWhole(isOpen, "isOpen", 0, 1);
    const int mode = ReadWhole(torsionMode, "torsionMode", 0, 1);
    const double wallThickness = ReadNumber(thickness, "thickness");
    const std::vector<double> coordinates =
        ReadPoints(points, "points", isWall != 0 ? kFewestLinePoints : kFewestRingPoints);
    const std::size_t count = coordinates.size() / 2;
    std::vector<double> radii = ReadNumbers(cornerRadii, "cornerRadii");
    if (radii.size() != count) {
        throw py::value_error(
            "cornerRadii: one radius per point is needed: " + std::to_string(count) +
            " points, found " + std::to_string(radii.size()) + " radii");
    }
    std::vector<std::pair<double, double>> pairs(count);
    for (std::size_t i = 0; i < count; ++i) {
        pairs[i] = {coordinates[2 * i], coordinates[2 * i + 1]};
    }
    std::array<double, 8> out{};
    std::pair<double, double> cdg;
    GuardedSection unused;
    unused.Use(count, [&](CSectionTools& tools) {
        tools.CalculContourQuelconqueTOOL(isWall, hasEnds, mode, static_cast<int>(count),
                                          wallThickness, pairs, std::move(radii), out[0], cdg,
                                          out[1], out[2], out[3], out[4], out[5], out[6], out[7]);
    });
    return Record("ContourValues")(out[0], py::make_tuple(cdg.first, cdg.second), out[1], out[2],
                                   out[3], out[4], out[5], out[6], out[7]);
}

// One number for all sections, or one per section.
std::vector<double> ReadShifts(py::handle object, const char* place, std::size_t sections) {
    if (py::module_::import("numpy").attr("ndim")(object).cast<int>() == 0) {
        return std::vector<double>(sections, ReadNumber(object, place));
    }
    std::vector<double> shifts = ReadNumbers(object, place);
    if (shifts.size() != sections) {
        throw py::value_error(std::string(place) +
                              ": one number, or one per section: " + std::to_string(sections) +
                              " sections, found " + std::to_string(shifts.size()));
    }
    return shifts;
}

py::tuple BatchValues(py::handle points, py::handle contourOffsets, py::handle flags,
                      py::handle sectionOffsets, py::handle dx, py::handle dy, py::handle threads,
                      py::handle plasticAxes) {
    constexpr int kMostThreads = 1024;
    Batch batch;
    batch.contourOffsets = ReadIndices(contourOffsets, "contour_offsets");
    batch.sectionOffsets = ReadIndices(sectionOffsets, "section_offsets");
    const bool isEmpty = batch.contourOffsets.size() == 1;
    batch.coordinates = ReadPoints(points, "points", isEmpty ? 0 : kFewestRingPoints,
                                   [&](std::size_t i) { return NameBatchPoint(batch, i); });
    for (const std::int64_t flag : ReadIndices(flags, "flags")) {
        const std::string place = "flags[" + std::to_string(batch.flags.size()) + "]";
        batch.flags.push_back(ReadFlag(py::int_(flag), place));
    }
    if (const std::string fault = FindOffsetFault(batch); !fault.empty()) {
        throw py::value_error(fault);
    }
    const std::size_t sections = batch.SectionCount();
    batch.dx = ReadShifts(dx, "dx", sections);
    batch.dy = ReadShifts(dy, "dy", sections);
    const auto wanted = static_cast<std::size_t>(ReadWhole(threads, "threads", 0, kMostThreads));
    const std::size_t count = std::max<std::size_t>(
        1, wanted == 0 ? ChooseThreadCount(batch) : std::min(wanted, sections));
    batch.wantsPlasticAxes = ReadWhole(plasticAxes, "plastic_axes", 0, 1) != 0;
    py::array_t<double> values({sections, batch.ColumnCount()});
    py::array_t<double> losses(static_cast<py::ssize_t>(sections));
    double* const rows = values.mutable_data();
    double* const errors = losses.mutable_data();
    InterruptWatch watch;
    {
        const py::gil_scoped_release released;
        ComputeBatch(batch, count, rows, errors, [&] { return watch.IsInterrupted(); });
    }
    watch.Rethrow();
    return py::make_tuple(values, losses);
}

void RefusePickling(const GuardedSection&, int) {
    throw py::type_error(
        "a CSectionTools cannot be pickled: nothing reads its contours back; pickle a "
        "ContourSection, "
        "which keeps them");
}

}  // namespace

PYBIND11_MODULE(_core, module) {
    py::options options;
    options.disable_function_signatures();
    module.doc() = "The class CSectionTools, many sections in one call, and the engine's handles.";
    module.attr("__version__") = HALVORN_VERSION;
    module.attr("DRAWS_PDF_AND_PNG") = static_cast<bool>(HALVORN_DRAWS_PDF_AND_PNG);

    AddRecord(module, "CalculValues", kOutputNames,
              "The outputs of GetCalculValues in its order. wplx, wply and extraSum are None when "
              "it does not write them.");
    AddRecord(module, "ContourValues", kContourValueNames,
              "The outputs of CalculContourQuelconqueTOOL in its order; cdg is (x, y).");
    py::tuple names(kValueCount);
    for (std::size_t i = 0; i < kValueCount; ++i) names[i] = py::str(kReadingOrder[i].name);
    module.attr("VALUE_NAMES") = names;

    BindEngine(module);

    using py::arg;
    py::class_<GuardedSection>(module, "CSectionTools", R"(CSectionTools()

One cross-section under construction: the class of the shared library, member by member.

Points are an array of shape (n, 2) or a sequence of pairs (x, y), in any unit of length L; they are
copied before the call, which does not see later changes. x points right, y up; contours close by
themselves.

Raises ValueError for shapes, counts and values that do not fit, with the place, TypeError for what
is no number, MemoryError when memory runs out.

One object may be used by several threads: their calls follow each other. Calls on 1000 and more
vertices let other Python threads run meanwhile.)")
        .def(py::init<>())
        .def("PushContour", &PushContour, arg("points"), arg("flag"),
             R"(PushContour(points, flag)

Adds one closed polygon of at least three points [L]. flag, 0 to 255: 0 is a hole, else solid.)")
        .def("PushContourStandard", &PushContourStandard, arg("points"), arg("alpha"), arg("xG"),
             arg("yG"), arg("area"), arg("shearArea2"), arg("shearArea1"), arg("torsion"),
             arg("inertia2"), arg("inertia1"), arg("reserved"), arg("wt"), arg("wplx"), arg("wply"),
             arg("extra"), arg("flag"),
             R"(PushContourStandard(points, alpha, xG, yG, area, shearArea2, shearArea1, torsion,
                    inertia2, inertia1, reserved, wt, wplx, wply, extra, flag)

Adds one profile whose properties are known. The second shear area comes before the first, and the
second inertia before the first. alpha in radians, from the x axis to the first principal axis; areas
[L^2], inertias and torsion [L^4], wt, wplx and wply [L^3].)")
        .def(
            "GetCDG",
            [](GuardedSection& section) {
                double x = 0.0;
                double y = 0.0;
                section.Use(0, [&](CSectionTools& tools) { tools.GetCDG(&x, &y); });
                return py::make_tuple(x, y);
            },
            "GetCDG()\n\nReturns the centre of gravity (x, y) [L]; nan for a section without area.")
        .def(
            "GetIxx",
            [](GuardedSection& section) {
                double ixx = 0.0;
                section.Use(0, [&](CSectionTools& tools) { ixx = tools.GetIxx(); });
                return ixx;
            },
            "GetIxx()\n\nReturns the summed torsion constant [L^4].")
        .def_static(
            "GetTol3D", [] { return CSectionTools().GetTol3D(); },
            "GetTol3D()\n\nReturns the geometric tolerance of the whole process.")
        .def_static(
            "SetTol3D", [](py::handle tol) { CSectionTools().SetTol3D(ReadNumber(tol, "tol")); },
            arg("tol"),
            "SetTol3D(tol)\n\nSets the geometric tolerance of the whole process, all threads.")
        .def("GetCalculValues", &GetCalculValues, arg("dx") = 0.0, arg("dy") = 0.0,
             R"(GetCalculValues(dx=0.0, dy=0.0)

Returns the seventeen calculation values as CalculValues, as the library writes them. dx and dy [L]
shift the point from which fibre distances are measured. When one of these is 0 within 1e-10, the
elastic moduli are 0.0 and what the library does not write is None.)")
        .def(
            "ComputeWplasticValues",
            [](GuardedSection& section) {
                double wplx = 0.0;
                double wply = 0.0;
                section.Use(section.Vertices(),
                            [&](CSectionTools& tools) { tools.ComputeWplasticValues(wplx, wply); });
                return py::make_tuple(wplx, wply);
            },
            "ComputeWplasticValues()\n\nReturns the plastic moduli (wplx, wply) [L^3]; holes count "
            "as area in the\nsearch for the axis and weigh 0.")
        .def_static("CalculContourQuelconqueTOOL", &CalculContour, arg("isThinWalled"),
                    arg("isOpen"), arg("torsionMode"), arg("thickness"), arg("points"),
                    arg("cornerRadii"),
                    R"(CalculContourQuelconqueTOOL(isThinWalled, isOpen, torsionMode, thickness,
                            points, cornerRadii)

Returns the properties of one polyline as ContourValues: a solid outline of at least three points or
a wall of at least two. One radius per point [L]. Whether radii and wall have room is not checked.)")
        .def("__copy__", &GuardedSection::Copy)
        .def("__deepcopy__", [](GuardedSection& section, py::handle) { return section.Copy(); })
        .def("__reduce_ex__", &RefusePickling);

    module.def(
        "checked_points", &CheckedPoints, arg("points"), arg("place"), arg("fewest"),
        arg("unit") = kAnyUnit,
        "checked_points(points, place, fewest, unit=None)\n\nReturns a copy of shape (n, 2) that "
        "nobody can write to; place is what messages call it.");
    module.def("checked_number", &ReadNumber, arg("number"), arg("place"), arg("unit") = kAnyUnit,
               "checked_number(number, place, unit=None)\n\nReturns a finite float.");
    module.def(
        "checked_numbers", &CheckedNumbers, arg("numbers"), arg("place"),
        "checked_numbers(numbers, place)\n\nReturns finite floats in an array of shape (n,).");
    module.def("section_values", &ValuesOf, arg("section"), arg("dx"), arg("dy"),
               "section_values(section, dx, dy)\n\nReturns the values of a CSectionTools in the "
               "order of VALUE_NAMES, None for what was not\ncomputed; the relative error of its "
               "inertias where rounding leaves fewer than seven digits,\nelse 0; and whether the "
               "distance from the origin takes them. Raises ValueError for a\nsection that cannot "
               "be.");
    module.def("misplaced_hole", &MisplacedHole, arg("contours"),
               "misplaced_hole(contours)\n\nReturns (index, x, y) of a hole and of its point where "
               "there is nothing to subtract; None when\nevery hole is in its place. contours is a "
               "list of points and whether they are a solid's.");
    module.def("batch_values", &BatchValues, arg("points"), arg("contour_offsets"), arg("flags"),
               arg("section_offsets"), arg("dx"), arg("dy"), arg("threads"),
               arg("plastic_axes") = false,
               "batch_values(points, contour_offsets, flags, section_offsets, dx, dy, threads, "
               "plastic_axes)\n\n"
               "Returns an array of shape (k, 17), columns as VALUE_NAMES, with y and x of the "
               "plastic axes\nbehind them if wanted, and of shape (k,) the relative error of "
               "inertias as\nsection_values, for compute_batch.");
}
