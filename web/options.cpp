#include "options.h"

#include <array>

namespace halvorn::web {

namespace {

template <typename Value>
void Take(const std::optional<Value>& given, Value* value) {
    if (given) *value = *given;
}

engine::InputOptions InputOptionsOf(const Fields& section) {
    engine::InputOptions options;
    options.unit = section.MaybeText("unit");
    options.layers = section.Texts("layers");
    Take(section.MaybeNumber("chord_tolerance"), &options.chordTolerance);
    Take(section.MaybeNumber("join_tolerance"), &options.joinTolerance);
    Take(section.MaybeBool("published"), &options.wantsPublishedValues);
    return options;
}

engine::SectionForces ForcesOf(const Fields& given) {
    engine::SectionForces forces;
    Take(given.MaybeNumber("N"), &forces.n);
    Take(given.MaybeNumber("Mx"), &forces.mx);
    Take(given.MaybeNumber("My"), &forces.my);
    Take(given.MaybeNumber("Vx"), &forces.vx);
    Take(given.MaybeNumber("Vy"), &forces.vy);
    Take(given.MaybeNumber("T"), &forces.t);
    return forces;
}

}  // namespace

Fields SectionFields(const Fields& request) {
    std::optional<Fields> section = request.MaybeObject(
        "section", {"text", "format", "source", "profile", "unit", "layers", "chord_tolerance",
                    "join_tolerance", "published"});
    if (!section) request.Fail("section", "it is missing", "give a text or a profile");
    return *std::move(section);
}

SectionText ReadSectionText(const Fields& section) {
    SectionText read;
    read.text = section.Text("text");
    Take(section.MaybeChoice<engine::TextFormat>("format", {{"json", engine::TextFormat::Json},
                                                            {"dxf", engine::TextFormat::Dxf},
                                                            {"csv", engine::TextFormat::Csv}}),
         &read.format);
    read.source = section.MaybeText("source").value_or("section");
    return read;
}

engine::Section ReadSection(const Fields& section) {
    const engine::InputOptions options = InputOptionsOf(section);
    if (const auto profile = section.MaybeText("profile")) {
        if (section.Has("text")) {
            section.Fail("profile", "it stands beside a text", "give one of them");
        }
        return engine::Section::Profile(*profile, options);
    }
    const SectionText read = ReadSectionText(section);
    return engine::Section::Parse(read.text, read.format, read.source, options);
}

engine::EvaluateOptions ReadEvaluateOptions(const Fields& request) {
    engine::EvaluateOptions options;
    options.wantsWarping = false;
    const auto given =
        request.MaybeObject("options", {"warping", "density", "tolerance", "poisson", "forces",
                                        "shift", "class_values"});
    if (!given) return options;
    options.density = given->MaybeNumber("density");
    Take(given->MaybeNumber("tolerance"), &options.tolerance);
    Take(given->MaybeNumber("poisson"), &options.poisson);
    Take(given->MaybeBool("class_values"), &options.wantsClassValues);
    if (const auto shift = given->MaybeObject("shift", {"dx", "dy"})) {
        Take(shift->MaybeNumber("dx"), &options.shift.dx);
        Take(shift->MaybeNumber("dy"), &options.shift.dy);
    }
    if (const auto forces = given->MaybeObject("forces", {"N", "Mx", "My", "Vx", "Vy", "T"})) {
        options.forces = ForcesOf(*forces);
    }
    options.wantsWarping = given->MaybeBool("warping").value_or(options.forces.has_value());
    return options;
}

engine::FigureOptions ReadFigureOptions(const Fields& request) {
    engine::FigureOptions options;
    const auto figure = request.MaybeObject("figure", {"blocks", "stress"});
    if (!figure) return options;
    options.blocks = figure->MaybeChoice<engine::AxisDirection>(
        "blocks",
        {{"x", engine::AxisDirection::Horizontal}, {"y", engine::AxisDirection::Vertical}});
    options.stress =
        figure->MaybeChoice<engine::StressKind>("stress", {{"normal", engine::StressKind::Normal},
                                                           {"shear", engine::StressKind::Shear},
                                                           {"von_mises", engine::StressKind::VonMises}});
    return options;
}

engine::TableOptions ReadTableOptions(const Fields& request) {
    engine::TableOptions options;
    const auto table = request.MaybeObject("table", {"halves", "methods"});
    if (!table) return options;
    Take(table->MaybeBool("halves"), &options.wantsHalves);
    Take(table->MaybeBool("methods"), &options.wantsMethods);
    return options;
}

}  // namespace halvorn::web
