#include "engine_section.h"

#include <HalvornEngine.h>
#include <pybind11/stl.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "arguments.h"
#include "engine_arguments.h"
#include "engine_rows.h"
#include "interrupt_watch.h"
#include "section_values.h"

namespace py = pybind11;

namespace halvorn::python {

namespace {

using engine::Along;
using engine::Catalogue;
using engine::Section;
using engine::SectionReport;

// Calls `work`, which must not touch Python objects, while other Python threads run.
template <typename Work>
auto Unlocked(const Work& work) {
    const py::gil_scoped_release released;
    return work();
}

// A length to the right and up in the section's unit.
engine::Point ReadShift(const Section& section, py::handle dx, py::handle dy) {
    const char* const unit = section.LengthUnit().c_str();
    return {ReadNumber(dx, "dx", unit), ReadNumber(dy, "dy", unit)};
}

Section OpenFile(py::handle path, const py::dict& options) {
    const engine::InputOptions read = ReadInputOptions(options);
    return Unlocked([&, name = ReadText(path, "path")] { return Section::Open(name, read); });
}

Section ProfileOf(py::handle name, const py::dict& options) {
    return Section::Profile(ReadText(name, "name"), ReadInputOptions(options));
}

Section ParseText(py::handle text, py::handle format, const std::string& source,
                  const py::dict& options) {
    const auto chosen = ReadChoice<engine::TextFormat>(format, "format",
                                                       {{"json", engine::TextFormat::Json},
                                                        {"csv", engine::TextFormat::Csv},
                                                        {"dxf", engine::TextFormat::Dxf}});
    const engine::InputOptions read = ReadInputOptions(options);
    return Unlocked([&, whole = ReadText(text, "text")] {
        return Section::Parse(whole, chosen, source, read);
    });
}

// A solid and holes, as lists of points.
Section OfPoints(py::handle points, const py::list& holes, py::handle unit, py::handle name) {
    const std::string length = ReadText(unit, "unit");
    const auto contour = [&length](py::handle ring, const std::string& place, bool isSolid) {
        const std::vector<double> coordinates =
            ReadPoints(ring, place, kFewestRingPoints, nullptr, length.c_str());
        engine::Contour read;
        read.isSolid = isSolid;
        read.points.reserve(coordinates.size() / 2);
        for (std::size_t i = 0; i < coordinates.size(); i += 2) {
            read.points.emplace_back(coordinates[i], coordinates[i + 1]);
        }
        return read;
    };
    std::vector<engine::Contour> contours;
    contours.reserve(1 + holes.size());
    contours.push_back(contour(points, "points", true));
    for (const py::handle hole : holes) {
        const std::string place = "holes[" + std::to_string(contours.size() - 1) + "]";
        contours.push_back(contour(hole, place, false));
    }
    const std::string title = ReadText(name, "name");
    return Section::OfContours(contours, length, title, title.empty() ? "polygon" : title);
}

py::list ContourRows(const Section& section) {
    py::list rows;
    for (const engine::Contour& contour : section.Contours()) {
        rows.append(py::make_tuple(PointsArray(contour.points), contour.isSolid));
    }
    return rows;
}

// By their names, for the fields of SectionProperties; None where a report has more to say.
py::object ClassNumbersOf(const Section& section, py::handle dx, py::handle dy) {
    const auto [shiftX, shiftY] = ReadShift(section, dx, dy);
    const auto numbers = section.ClassNumbers({shiftX, shiftY});
    if (!numbers) return py::none();
    // A copy of a dictionary has its room from the start. Both live as long as the process.
    static const auto* const kNames = [] {
        auto names = std::make_unique<std::array<py::str, kValueCount>>();
        for (std::size_t i = 0; i < kValueCount; ++i) {
            PyObject* name = PyUnicode_InternFromString(kReadingOrder[i].name);
            if (name == nullptr) throw py::error_already_set();
            (*names)[i] = py::reinterpret_steal<py::str>(name);
        }
        return names.release();
    }();
    static const auto* const kEmpty = [] {
        auto empty = std::make_unique<py::dict>();
        for (const py::str& name : *kNames) (*empty)[name] = py::none();
        return empty.release();
    }();
    auto values = py::reinterpret_steal<py::dict>(PyDict_Copy(kEmpty->ptr()));
    if (!values) throw py::error_already_set();
    for (std::size_t i = 0; i < kValueCount; ++i) values[(*kNames)[i]] = py::float_((*numbers)[i]);
    return values;
}

SectionReport EvaluateSection(const Section& section, const py::dict& options) {
    engine::EvaluateOptions read = ReadEvaluateOptions(options, section.LengthUnit());
    InterruptWatch watch(options.contains("watch") ? py::object(options["watch"])
                                                   : py::object(py::none()));
    read.isInterrupted = [&] { return watch.IsInterrupted(); };
    SectionReport report = Unlocked([&] { return section.Evaluate(read); });
    watch.Rethrow();
    return report;
}

Section SetOnSide(const Section& section, const Section& other, py::handle side, py::handle touch,
                  py::handle align, py::handle gap, py::handle shiftX, py::handle shiftY) {
    engine::Setting setting;
    setting.side = ReadChoice<engine::Side>(side, "side",
                                            {{"top", engine::Side::Top},
                                             {"bottom", engine::Side::Bottom},
                                             {"left", engine::Side::Left},
                                             {"right", engine::Side::Right}});
    setting.touch = ReadChoice<engine::Touch>(
        touch, "touch", {{"box", engine::Touch::Boxes}, {"outline", engine::Touch::Outlines}});
    const bool isUpright =
        setting.side == engine::Side::Left || setting.side == engine::Side::Right;
    setting.align = ReadChoice<Along>(align, "align",
                                      {{isUpright ? "bottom" : "left", Along::Low},
                                       {"centre", Along::Middle},
                                       {isUpright ? "top" : "right", Along::High}});
    setting.gap = ReadNumber(gap, "gap", section.LengthUnit().c_str());
    setting.shift = ReadShift(section, shiftX, shiftY);
    return section.SetOn(other, setting);
}

Section MirroredAbout(const Section& section, py::handle axis) {
    return section.Mirrored(ReadChoice<engine::Mirror>(
        axis, "axis", {{"x", engine::Mirror::AboutX}, {"y", engine::Mirror::AboutY}}));
}

py::tuple CornerOf(const Section& section, py::handle x, py::handle y) {
    return PairOf(section.PointOfBox(
        ReadChoice<Along>(
            x, "x", {{"left", Along::Low}, {"centre", Along::Middle}, {"right", Along::High}}),
        ReadChoice<Along>(
            y, "y", {{"bottom", Along::Low}, {"centre", Along::Middle}, {"top", Along::High}})));
}

py::tuple HalvesAbout(const SectionReport& report, py::handle axis) {
    const auto direction = ReadChoice<engine::AxisDirection>(
        axis, "axis",
        {{"x", engine::AxisDirection::Horizontal}, {"y", engine::AxisDirection::Vertical}});
    return HalvesRow(Unlocked([&] { return report.Halves(direction); }));
}

py::object RowOf(const SectionReport& report, const std::string& key) {
    for (const engine::Value& value : report.Values()) {
        if (value.key == key) return ValueRow(value);
    }
    return py::none();
}

py::dict NumbersOf(const SectionReport& report) {
    py::dict numbers;
    for (const engine::Value& value : report.Values()) {
        numbers[py::str(value.key)] =
            value.IsComputed() ? py::object(py::float_(value.number)) : py::none();
    }
    return numbers;
}

py::list StressRows(const SectionReport& report) {
    py::list rows;
    for (const engine::LargestStress& stress : report.Stresses()) {
        const py::object place = stress.place ? py::object(PairOf(*stress.place)) : py::none();
        rows.append(py::make_tuple(ValueRows({stress.value})[0], place));
    }
    return rows;
}

py::array StressesAt(const SectionReport& report, py::handle points) {
    const std::vector<double> read =
        ReadPoints(points, "points", 0, nullptr, report.LengthUnit().c_str());
    engine::Points at;
    for (std::size_t i = 0; i < read.size(); i += 2) at.emplace_back(read[i], read[i + 1]);
    return StressArray(Unlocked([&] { return report.StressesAt(at); }));
}

py::list PartRows(const SectionReport& report) {
    py::list rows;
    for (const engine::CompositePart& part : report.Parts()) {
        rows.append(py::make_tuple(Text(part.name), part.modularRatio, ValueRows(part.moduli)));
    }
    return rows;
}

std::vector<std::string> NamesOf(const Catalogue& catalogue, py::handle family) {
    return family.is_none() ? catalogue.Names() : catalogue.Names(ReadText(family, "family"));
}

engine::CatalogueProfile InUnitOf(const engine::CatalogueProfile& profile,
                                  const std::optional<std::string>& unit) {
    return unit ? engine::InLengthUnit(profile, *unit) : profile;
}

// Each profile that suits with its values in the unit of its row, whatever the query states.
py::tuple Find(const Catalogue& catalogue, py::handle query, const py::dict& options) {
    engine::FindOptions find;
    find.values = ReadEvaluateOptions(options, "");
    find.unit = ReadInputOptions(options).unit;
    InterruptWatch watch;
    struct Interrupted {};
    find.values.isInterrupted = [&] { return watch.IsInterrupted(); };
    find.progress = [&](std::size_t, std::size_t) {
        if (watch.IsInterrupted()) throw Interrupted();
    };
    engine::ProfileSearch found;
    try {
        found = Unlocked([&, text = ReadText(query, "where")] {
            return engine::FindProfiles(text, catalogue, find);
        });
    } catch (const Interrupted&) {
        watch.Rethrow();
    }
    py::list rows;
    for (const engine::FoundProfile& profile : found.profiles) {
        const engine::CatalogueProfile row = InUnitOf(*catalogue.Find(profile.name), find.unit);
        std::vector<engine::Value> values;
        for (const engine::Value& value : profile.values) {
            values.push_back(engine::InLengthUnit(value, row.unit));
        }
        rows.append(py::make_tuple(ProfileRow(row), ValueRows(values)));
    }
    return py::make_tuple(rows, found.isLimited);
}

void BindSection(py::module_& module) {
    py::class_<Section>(module, "EngineSection", "A section of the engine; it never changes.")
        .def_static("open", &OpenFile)
        .def_static("profile", &ProfileOf)
        .def_static("parse", &ParseText)
        .def_static("of_points", &OfPoints)
        .def("contours", &ContourRows)
        .def("class_numbers", &ClassNumbersOf)
        .def_property_readonly("name", [](const Section& section) { return Text(section.Name()); })
        .def_property_readonly("unit", &Section::LengthUnit)
        .def_property_readonly("density", &Section::Density)
        .def("moved", [](const Section& section, py::handle dx,
                         py::handle dy) { return section.Moved(ReadShift(section, dx, dy)); })
        .def("turned",
             [](const Section& section, py::handle degrees) {
                 return section.Turned(ReadNumber(degrees, "degrees", "deg"));
             })
        .def("mirrored", &MirroredAbout)
        .def("set_on", &SetOnSide)
        .def("repeated",
             [](const Section& section, py::handle count, py::handle dx, py::handle dy) {
                 constexpr int kMost{engine::kMostCopiesInRow};
                 const int copies = ReadWhole(count, "count", 1, kMost);
                 return section.InRow(static_cast<std::size_t>(copies), ReadShift(section, dx, dy));
             })
        .def("named", [](const Section& section,
                         py::handle name) { return section.Named(ReadText(name, "name")); })
        .def("plus", &Section::With)
        .def("minus", &Section::Without)
        .def("corner", &CornerOf)
        .def("material",
             [](const Section& section) {
                 return PolygonRows(Unlocked([&] { return section.Material(); }));
             })
        .def("findings",
             [](const Section& section) {
                 return FindingRows(Unlocked([&] { return section.Diagnose(); }));
             })
        .def("evaluate", &EvaluateSection);
}

void BindReport(py::module_& module) {
    py::class_<SectionReport>(module, "EngineReport", "What is known about a section.")
        .def("values", [](const SectionReport& report) { return ValueRows(report.Values()); })
        .def("value", &RowOf)
        .def("numbers", &NumbersOf)
        .def("published", [](const SectionReport& report) { return ValueRows(report.Published()); })
        .def("class_values",
             [](const SectionReport& report) { return ValueRows(report.ClassValues()); })
        .def("parts", &PartRows)
        .def("stresses", &StressRows)
        .def("stresses_at", &StressesAt)
        .def("stress_mesh",
             [](const SectionReport& report) {
                 return MeshRow(Unlocked([&] { return report.StressesOverMesh(); }));
             })
        .def("findings", [](const SectionReport& report) { return FindingRows(report.Findings()); })
        .def("halves", &HalvesAbout)
        .def("json",
             [](const SectionReport& report) {
                 return Text(Unlocked([&] { return report.Json(); }));
             })
        .def("table",
             [](const SectionReport& report) {
                 return Text(Unlocked([&] { return report.Table(); }));
             })
        .def("svg",
             [](const SectionReport& report, const py::dict& options) {
                 const engine::FigureOptions read = ReadFigureOptions(options);
                 return Text(Unlocked([&] { return report.Svg(read); }));
             })
        .def("write_figure",
             [](const SectionReport& report, py::handle path, const py::dict& options) {
                 const engine::FigureOptions read = ReadFigureOptions(options);
                 Unlocked([&, name = ReadText(path, "path")] { report.WriteFigure(name, read); });
             });
}

void BindCatalogue(py::module_& module) {
    py::class_<Catalogue>(module, "EngineCatalogue", "Profiles by name.")
        .def(py::init<>())
        .def("with_table",
             [](const Catalogue& catalogue, py::handle path) {
                 const engine::ExtendedCatalogue more = catalogue.With(ReadText(path, "path"));
                 return py::make_tuple(more.catalogue, FindingRows(more.findings));
             })
        .def("names", [](const Catalogue& catalogue,
                         py::handle family) { return Texts(NamesOf(catalogue, family)); })
        .def("families",
             [](const Catalogue& catalogue) {
                 std::vector<std::string> names;
                 for (const auto& family : catalogue.Families()) names.push_back(family.name);
                 return Texts(names);
             })
        .def("rows",
             [](const Catalogue& catalogue, py::handle family, const py::dict& options) {
                 const auto unit = ReadInputOptions(options).unit;
                 py::list rows;
                 for (const std::string& name : NamesOf(catalogue, family)) {
                     rows.append(ProfileRow(InUnitOf(*catalogue.Find(name), unit)));
                 }
                 return rows;
             })
        .def("find", &Find);
}

}  // namespace

void BindEngine(py::module_& module) {
    module.def("shape_dimensions", [] {
        py::dict dimensions;
        for (const engine::ShapeDescription& shape : engine::ShapeDescriptions()) {
            py::dict keys;
            for (const auto& each : shape.dimensions) keys[py::str(each.key)] = each.isRequired;
            dimensions[py::str(shape.kind)] = keys;
        }
        return dimensions;
    });
    module.def("checked_text", [](py::handle text, const char* place) {
        ReadText(text, place);
        return text;
    });
    TranslateInputErrors(module);
    BindCatalogue(module);
    BindSection(module);
    BindReport(module);
}

}  // namespace halvorn::python
