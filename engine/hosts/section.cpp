#include <cmath>
#include <utility>

#include "HalvornEngine.h"
#include "model/outlines.h"
#include "read/contours.h"
#include "read/open_section.h"
#include "region/polygons.h"
#include "values/class_numbers.h"
#include "values/evaluate.h"
#include "write/section_file.h"

namespace halvorn::engine {

namespace {

// Those of `WarpingOptions`.
constexpr double kLeastTolerance = 1e-9;    // [-]
constexpr double kGreatestTolerance = 0.1;  // [-]
constexpr double kGreatestPoisson = 0.5;    // of what keeps its volume

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

void CheckWarping(const EvaluateOptions& options) {
    const auto check = [](bool holds, const char* problem, const char* mend) {
        if (!holds) throw InputError("options", problem, mend);
    };
    // Written so that NaN is refused.
    check(kLeastTolerance <= options.tolerance && options.tolerance <= kGreatestTolerance,
          "the tolerance is not from 1e-9 to 0.1", "give a relative width, such as 1e-4");
    check(0.0 <= options.poisson && options.poisson <= kGreatestPoisson,
          "Poisson's ratio is not from 0 to 0.5", "give 0.3 for steel, 0.2 for concrete");
    if (!options.forces) return;
    const SectionForces& f = *options.forces;
    for (const double force : {f.n, f.mx, f.my, f.vx, f.vy, f.t}) {
        check(std::isfinite(force), "a force is not finite", "give plain numbers");
    }
    check(options.wantsWarping, "stresses take the solution of torsion and shear",
          "ask for it, or leave out the forces");
}

}  // namespace

Section::Section(std::shared_ptr<const SectionModel> model) : model_(std::move(model)) {}

Section Section::Open(const std::string& argument, const InputOptions& options) {
    return Section(std::make_shared<const SectionModel>(OpenSection(argument, options)));
}

Section Section::Profile(const std::string& name, const InputOptions& options) {
    return Section(std::make_shared<const SectionModel>(ProfileSection(name, options)));
}

Section Section::Parse(const std::string& text, TextFormat format, const std::string& source,
                       const InputOptions& options) {
    return Section(
        std::make_shared<const SectionModel>(ParseSection(text, format, source, options)));
}

Section Section::OfContours(const std::vector<Contour>& contours, const std::string& unit,
                            const std::string& name, const std::string& source) {
    return Section(
        std::make_shared<const SectionModel>(SectionOfContours(contours, unit, name, source)));
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

std::vector<Contour> Section::Contours() const {
    std::vector<Contour> contours;
    for (const Element& element : model_->elements) {
        contours.push_back({element.ring, element.isSolid});
    }
    return contours;
}

std::optional<double> Section::Density() const {
    return model_->density;
}

SectionReport Section::Evaluate(const EvaluateOptions& options) const {
    CheckShift(options.shift, *model_);
    CheckDensity(options.density);
    CheckWarping(options);
    const auto evaluated = [&](const SectionModel& section) {
        const auto report = std::make_shared<Report>(
            engine::Evaluate(section, options.shift, options.wantsClassValues));
        if (options.wantsWarping) AddWarping(options, report.get());
        return SectionReport(report);
    };
    if (!options.density) return evaluated(*model_);
    SectionModel dense = *model_;
    dense.density = options.density;
    return evaluated(dense);
}

std::optional<std::array<double, kClassValueCount>> Section::ClassNumbers(
    const Shift& shift) const {
    CheckShift(shift, *model_);
    return ClassNumbersOf(*model_, shift);
}

Section Section::Named(const std::string& name) const {
    SectionModel named = *model_;
    named.name = name;
    return Section(std::make_shared<const SectionModel>(std::move(named)));
}

std::string Section::FileText() const {
    return SectionFileText(*model_);
}

std::vector<Finding> Section::Diagnose() const {
    return engine::Diagnose(*model_);
}

std::vector<Polygon> Section::Material() const {
    try {
        return PolygonsOf(RegionOf(OutlinesOf(model_->elements)));
    } catch (const ArrangementError& error) {
        throw InputError(model_->source, error.what(),
                         "correct the coordinates, or bring the outlines into order");
    }
}

}  // namespace halvorn::engine
