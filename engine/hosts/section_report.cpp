#include <utility>

#include "HalvornEngine.h"
#include "figure/figure.h"
#include "values/evaluate.h"
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
