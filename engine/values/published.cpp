#include "values/published.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

const Value* PublishedUnder(const Report& report, std::string_view key) {
    return FindValue(report.published, key);
}

// Of both sides the one with the smaller modulus, or both when they are equal.
bool IsSmaller(const Report& report, std::string_view key, std::string_view published) {
    constexpr double kEqual = 1e-9;
    const Value* const own = report.Find(key);
    if (own == nullptr) return false;
    for (const ValueDescription& other : kValues) {
        if (other.published == nullptr || other.published != published) continue;
        const Value* const value = report.Find(other.key);
        if (value != nullptr && value->number < own->number * (1.0 - kEqual)) return false;
    }
    return true;
}

// Whether a published value is what the drawn one is in centimetres, where millimetres are meant.
bool LooksLikeCentimetres(const Value& value) {
    constexpr double kMost = 0.2;  // of the drawn value: what rounding and other corners do
    constexpr double kMillimetres = 10.0;
    constexpr int kLeastPower = 2;
    if (value.power < kLeastPower) return false;
    const double ratio = value.number / *value.published / std::pow(kMillimetres, value.power);
    return std::fabs(ratio - 1.0) <= kMost;
}

}  // namespace

std::optional<double> Value::Difference() const {
    if (!IsComputed() || !published || *published == 0.0) return std::nullopt;
    return (number - *published) / std::fabs(*published);
}

void AddPublished(Report* report) {
    for (const PublishedValue& published : report->section.published) {
        const auto* const description =
            std::find_if(kPublishedValues.begin(), kPublishedValues.end(),
                         [&](const ValueDescription& entry) { return entry.key == published.key; });
        Value& value =
            report->published.emplace_back(DescribedValue(*description, report->section.unit));
        value.number = published.number;
        value.method = "published";
    }
    const bool isShifted = report->shift.dx != 0.0 || report->shift.dy != 0.0;
    for (const ValueDescription& description : kValues) {
        if (description.published == nullptr) continue;
        const Value* const published = PublishedUnder(*report, description.published);
        if (published == nullptr) continue;
        const std::string_view key = description.key;
        const bool isOfFibre = key != description.published;
        if (isOfFibre && (isShifted || !IsSmaller(*report, key, description.published))) continue;
        const auto value = std::find_if(report->values.begin(), report->values.end(),
                                        [&](const Value& entry) { return entry.key == key; });
        if (value != report->values.end()) value->published = published->number;
    }
}

void CompareWithPublished(Report* report) {
    constexpr double kMost = 0.01;
    constexpr int kDigits = 3;
    std::erase_if(report->findings, [](const Finding& finding) {
        return finding.kind == FindingKind::PublishedDiffers;
    });
    std::string list, centimetres;
    for (const Value& value : report->values) {
        const std::optional<double> difference = value.Difference();
        if (!difference || !(std::fabs(*difference) > kMost)) continue;
        list += (list.empty() ? "" : ", ") + value.symbol + " by " +
                ShortNumber(100.0 * *difference, kDigits) + " %";
        if (!LooksLikeCentimetres(value)) continue;
        centimetres += (centimetres.empty() ? "" : ", ") + value.symbol + " looks like cm^" +
                       std::to_string(value.power);
    }
    if (list.empty()) return;
    const std::string mend =
        centimetres.empty() ? "look whether the table rounds, or its standard has another shape"
                            : "the published " + centimetres +
                                  ": the table needs them in mm like its dimensions, in mm^2, mm^3 "
                                  "and mm^4";
    report->findings.push_back({Severity::Remark,
                                FindingKind::PublishedDiffers,
                                report->section.source,
                                "values of the drawn outline differ from published ones: " + list,
                                mend,
                                {}});
}

}  // namespace halvorn::engine
