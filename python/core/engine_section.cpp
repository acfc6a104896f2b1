#include "engine_section.h"

#include <HalvornEngine.h>
#include <pybind11/stl.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>

#include "arguments.h"
#include "engine_arguments.h"
#include "engine_rows.h"

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

// Every so often an interrupted solution is looked for: often enough for Ctrl-C, seldom enough for
// other threads.
constexpr std::chrono::milliseconds kBetweenLooks{50};

SectionReport EvaluateSection(const Section& section, const py::dict& options) {
    engine::EvaluateOptions read = ReadEvaluateOptions(options);
    bool isStopped = false;
    auto next = std::chrono::steady_clock::now() + kBetweenLooks;
    read.isInterrupted = [&] {
        if (isStopped || std::chrono::steady_clock::now() < next) return isStopped;
        const py::gil_scoped_acquire held;
        isStopped = PyErr_CheckSignals() != 0;
        next = std::chrono::steady_clock::now() + kBetweenLooks;
        return isStopped;
    };
    SectionReport report = Unlocked([&] { return section.Evaluate(read); });
    if (isStopped) throw py::error_already_set();
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
    setting.gap = ReadNumber(gap, "gap");
    setting.shift = {ReadNumber(shiftX, "dx"), ReadNumber(shiftY, "dy")};
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

py::list StressRows(const SectionReport& report) {
    py::list rows;
    for (const engine::LargestStress& stress : report.Stresses()) {
        rows.append(py::make_tuple(ValueRows({stress.value})[0], PairOf(stress.place)));
    }
    return rows;
}

py::array StressesAt(const SectionReport& report, py::handle points) {
    const std::vector<double> read = ReadPoints(points, "points", 0);
    engine::Points at;
    for (std::size_t i = 0; i < read.size(); i += 2) at.emplace_back(read[i], read[i + 1]);
    return StressArray(Unlocked([&] { return report.StressesAt(at); }));
}

py::list PartRows(const SectionReport& report) {
    py::list rows;
    for (const engine::CompositePart& part : report.Parts()) {
        rows.append(py::make_tuple(part.name, part.modularRatio, ValueRows(part.moduli)));
    }
    return rows;
}

py::tuple Find(const Catalogue& catalogue, py::handle query, const py::dict& options) {
    engine::FindOptions find;
    find.values = ReadEvaluateOptions(options);
    find.unit = ReadInputOptions(options).unit;
    const engine::ProfileSearch found = Unlocked([&, text = ReadText(query, "where")] {
        return engine::FindProfiles(text, catalogue, find);
    });
    py::list rows;
    for (const engine::FoundProfile& profile : found.profiles) {
        rows.append(py::make_tuple(profile.name, ValueRows(profile.values)));
    }
    return py::make_tuple(rows, found.isLimited);
}

void BindSection(py::module_& module) {
    py::class_<Section>(module, "EngineSection", "A section of the engine; it never changes.")
        .def_static("open", &OpenFile)
        .def_static("profile", &ProfileOf)
        .def_static("parse", &ParseText)
        .def_property_readonly("name", &Section::Name)
        .def_property_readonly("unit", &Section::LengthUnit)
        .def_property_readonly("density", &Section::Density)
        .def("moved",
             [](const Section& section, py::handle dx, py::handle dy) {
                 return section.Moved({ReadNumber(dx, "dx"), ReadNumber(dy, "dy")});
             })
        .def("turned",
             [](const Section& section, py::handle degrees) {
                 return section.Turned(ReadNumber(degrees, "degrees"));
             })
        .def("mirrored", &MirroredAbout)
        .def("set_on", &SetOnSide)
        .def("repeated",
             [](const Section& section, py::handle count, py::handle dx, py::handle dy) {
                 constexpr int kMost = 1'000'000;  // the engine refuses far fewer
                 const int copies = ReadWhole(count, "count", 1, kMost);
                 return section.InRow(static_cast<std::size_t>(copies),
                                      {ReadNumber(dx, "dx"), ReadNumber(dy, "dy")});
             })
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
             [](const SectionReport& report) { return Unlocked([&] { return report.Json(); }); })
        .def("table",
             [](const SectionReport& report) { return Unlocked([&] { return report.Table(); }); })
        .def("svg",
             [](const SectionReport& report, const py::dict& options) {
                 const engine::FigureOptions read = ReadFigureOptions(options);
                 return Unlocked([&] { return report.Svg(read); });
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
        .def("names", [](const Catalogue& catalogue) { return catalogue.Names(); })
        .def("names_of",
             [](const Catalogue& catalogue, py::handle family) {
                 return catalogue.Names(ReadText(family, "family"));
             })
        .def("families",
             [](const Catalogue& catalogue) {
                 std::vector<std::string> names;
                 for (const auto& family : catalogue.Families()) names.push_back(family.name);
                 return names;
             })
        .def("row",
             [](const Catalogue& catalogue, py::handle name) -> py::object {
                 const auto profile = catalogue.Find(ReadText(name, "name"));
                 return profile ? py::object(ProfileRow(*profile)) : py::none();
             })
        .def("find", &Find);
}

}  // namespace

void BindEngine(py::module_& module) {
    TranslateInputErrors(module);
    BindCatalogue(module);
    BindSection(module);
    BindReport(module);
}

}  // namespace halvorn::python
