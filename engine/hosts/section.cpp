#include <cmath>
#include <utility>

#include "HalvornEngine.h"
#include "read/open_section.h"
#include "values/evaluate.h"

namespace halvorn::engine {

namespace {

void CheckShift(const Shift& shift, const SectionModel& section) {
    if (!std::isfinite(shift.dx) || !std::isfinite(shift.dy)) {
        throw InputError("options", "the shift of the reference point is not finite",
                         "give plain numbers");
    }
    if (section.polyline && (shift.dx != 0.0 || shift.dy != 0.0)) {
        throw InputError(section.source, "/polyline", "a polyline has no reference point to shift",
                         "leave out --dx and --dy");
    }
}

void CheckDensity(const std::optional<double>& density) {
    if (!density || (*density > 0.0 && std::isfinite(*density))) return;
    throw InputError("options", "the density is not positive and finite",
                     "give kg/m^3, for steel 7850");
}

}  // namespace

Section::Section(std::shared_ptr<const SectionModel> model) : model_(std::move(model)) {}

Section Section::Open(const std::string& argument, const InputOptions& options) {
    return Section(std::make_shared<const SectionModel>(OpenSection(argument, options)));
}

Section Section::Parse(const std::string& text, TextFormat format, const std::string& source,
                       const InputOptions& options) {
    return Section(
        std::make_shared<const SectionModel>(ParseSection(text, format, source, options)));
}

const std::string& Section::Source() const {
    return model_->source;
}

const std::string& Section::Name() const {
    return model_->name;
}

const std::string& Section::LengthUnit() const {
    return model_->unit;
}

std::optional<double> Section::Density() const {
    return model_->density;
}

SectionReport Section::Evaluate(const Shift& shift, std::optional<double> density) const {
    CheckShift(shift, *model_);
    CheckDensity(density);
    const auto evaluated = [&](const SectionModel& section) {
        return SectionReport(std::make_shared<const Report>(engine::Evaluate(section, shift)));
    };
    if (!density) return evaluated(*model_);
    SectionModel dense = *model_;
    dense.density = density;
    return evaluated(dense);
}

std::vector<Finding> Section::Diagnose() const {
    return engine::Diagnose(*model_);
}

}  // namespace halvorn::engine
