#include <utility>

#include "HalvornEngine.h"
#include "figure/figure.h"
#include "values/report.h"
#include "write/csv.h"
#include "write/json.h"
#include "write/table.h"

namespace halvorn::engine {

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

const std::vector<Finding>& SectionReport::Findings() const {
    return report_->findings;
}

const Value* SectionReport::Find(std::string_view key) const {
    return FindValue(report_->values, key);
}

std::string SectionReport::Table() const {
    return TableText(*report_);
}

std::string SectionReport::Json() const {
    return JsonText(*report_);
}

std::string SectionReport::JsonLine() const {
    return engine::JsonLine(*report_);
}

std::string SectionReport::CsvRow() const {
    return engine::CsvRow(*report_);
}

void SectionReport::WriteFigure(const std::string& path) const {
    engine::WriteFigure(*report_, path);
}

}  // namespace halvorn::engine
