#include <utility>

#include "HalvornEngine.h"
#include "figure/figure.h"
#include "values/evaluate.h"
#include "values/stress_values.h"
#include "warping/stresses.h"
#include "write/csv.h"
#include "write/json.h"
#include "write/table.h"

namespace halvorn::engine {

namespace {

Report WithHalves(const Report& report) {
    Report copy = report;
    AddHalves(&copy);
    return copy;
}

void RequireStresses(const Report& report) {
    if (!report.forces) {
        throw InputError(report.section.source, "stresses need forces", "give forces");
    }
    const std::string why = engine::WhyNoStresses(report);
    if (why.empty()) return;
    throw InputError(report.section.source, "there are no stresses: " + why,
                     "look at the findings of the section");
}

}  // namespace

SectionReport::SectionReport(std::shared_ptr<const Report> report) : report_(std::move(report)) {}

const std::string& SectionReport::Source() const {
    return report_->section.source;
}

const std::string& SectionReport::Name() const {
    return report_->section.name;
}

const std::string& SectionReport::Description() const {
    return report_->section.description;
}

const std::string& SectionReport::LengthUnit() const {
    return report_->section.unit;
}

const std::vector<Value>& SectionReport::Values() const {
    return report_->values;
}

const std::vector<Value>& SectionReport::Published() const {
    return report_->published;
}

const std::vector<Value>& SectionReport::ClassValues() const {
    return report_->classValues;
}

const std::vector<CompositePart>& SectionReport::Parts() const {
    return report_->parts;
}

const std::vector<LargestStress>& SectionReport::Stresses() const {
    return report_->stresses;
}

std::vector<PointStress> SectionReport::StressesAt(const Points& points) const {
    RequireStresses(*report_);
    return engine::StressesAt(*report_->warping, *report_->forces, points);
}

StressMesh SectionReport::StressesOverMesh() const {
    RequireStresses(*report_);
    StressField field = StressFieldOf(*report_->warping, *report_->forces);
    StressMesh mesh;
    mesh.triangles.reserve(field.triangles.size());
    for (const auto& [a, b, c] : field.triangles) {
        mesh.triangles.push_back({Slot(a), Slot(b), Slot(c)});
    }
    mesh.stresses.reserve(field.points.size());
    for (std::size_t i = 0; i < field.points.size(); ++i) {
        const Point& shear = field.shears[i];
        mesh.stresses.push_back({field.normal[i], shear.x, shear.y, field.vonMises[i]});
    }
    mesh.nodes = std::move(field.points);
    return mesh;
}

const std::vector<Finding>& SectionReport::Findings() const {
    return report_->findings;
}

const Value* SectionReport::Find(std::string_view key) const {
    return FindValue(report_->values, key);
}

PlasticHalves SectionReport::Halves(AxisDirection direction) const {
    const Report report = WithHalves(*report_);
    return direction == AxisDirection::Horizontal ? report.halves.front() : report.halves.back();
}

std::string SectionReport::Table(const TableOptions& options) const {
    return TableText(options.wantsHalves ? WithHalves(*report_) : *report_, options);
}

std::string SectionReport::Json() const {
    return JsonText(WithHalves(*report_));
}

std::string SectionReport::JsonLine() const {
    return engine::JsonLine(WithHalves(*report_));
}

std::string SectionReport::CsvRow(const CsvOptions& options) const {
    return engine::CsvRow(*report_, options);
}

void SectionReport::WriteFigure(const std::string& path, const FigureOptions& options) const {
    engine::WriteFigure(options.blocks ? WithHalves(*report_) : *report_, path, options);
}

std::string SectionReport::Svg(const FigureOptions& options) const {
    return SvgText(options.blocks ? WithHalves(*report_) : *report_, options);
}

}  // namespace halvorn::engine
