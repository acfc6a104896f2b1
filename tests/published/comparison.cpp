#include "comparison.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>

#include "catalogue/draw_profile.h"
#include "evaluation.h"

namespace halvorn::published {
namespace {

// Finest last digit of each property (index) within each family.
using ColumnPowers = std::map<std::pair<std::string, std::size_t>, int>;

ColumnPowers FinestDigits(const std::vector<engine::CsvRecord>& rows) {
    ColumnPowers finest;
    for (const engine::CsvRecord& row : rows) {
        for (std::size_t i = 0; i < properties.size(); ++i) {
            const int power = LastDigitPower(row.Text(properties[i].column));
            const auto [entry, isNew] = finest.try_emplace({row.Text("family"), i}, power);
            entry->second = std::min(entry->second, power);
        }
    }
    return finest;
}

PropertyValues EvaluateRow(const engine::CsvRecord& row, double scale) {
    try {
        const auto division = engine::shapes::ArcDivision::StepsPerQuarter(arcStepsPerQuarter);
        return Evaluate(engine::DrawProfile(row, division), scale);
    } catch (const std::exception& error) {
        throw std::runtime_error(row.Text("name") + ": " + error.what());
    }
}

// Distances from a published value's magnitude within which the exact one lies, in its rounding
// step; the first one downwards.
std::pair<double, double> StepsAround(Rounding rounding) {
    switch (rounding) {
        case Rounding::TruncatedOrRounded:
            return {0.5, 1.0};
        case Rounding::Truncated:
            return {0.0, 1.0};
        case Rounding::Twice:
            return {0.55, 0.55};
        case Rounding::Nearest:
            break;
    }
    return {0.5, 0.5};
}

Difference Compare(const engine::CsvRecord& row, std::size_t property, double computed,
                   int columnPower, const std::vector<TableNote>& notes) {
    const char* column = properties[property].column;
    const double published = row.Number(column).value();
    const double magnitude = std::abs(published);
    if (magnitude == 0.0) {
        throw std::runtime_error(row.Text("name") + ": a published " + column +
                                 " of 0 has no rounding step");
    }
    const double step = std::pow(10.0, RoundingPower(row.Text(column), published, columnPower));
    const TableNote* note = FindNote(notes, row.Text("family"), column, row.Text("name"));
    const auto [stepsBelow, stepsAbove] = StepsAround(note ? note->rounding : Rounding::Nearest);
    const double accuracy = note ? note->accuracy * magnitude : 0.0;
    double below = std::max(stepsBelow * step, accuracy) + arcAllowance * magnitude;
    double above = std::max(stepsAbove * step, accuracy) + arcAllowance * magnitude;
    if (published < 0.0) std::swap(below, above);
    const bool nearest = std::abs(computed - published) <= 0.5 * step + arcAllowance * magnitude;
    return {row.Text("name"),  row.Text("family"), property, published, computed,
            published - below, published + above,  nearest,  note};
}

}  // namespace

double Difference::Relative() const {
    return std::abs(computed - published) / std::abs(published);
}

int LastDigitPower(const std::string& text) {
    const std::size_t last = text.find_last_of("123456789");
    if (last == std::string::npos) return std::numeric_limits<int>::max();
    const std::size_t point = std::min(text.find('.'), text.size());
    const int distance = static_cast<int>(point) - static_cast<int>(last);
    return distance > 0 ? distance - 1 : distance;
}

int RoundingPower(const std::string& text, double value, int columnPower) {
    const int thirdDigit = static_cast<int>(std::floor(std::log10(std::abs(value)))) - 2;
    return std::max(std::min(LastDigitPower(text), thirdDigit), columnPower);
}

std::vector<Difference> CompareTable(const std::vector<engine::CsvRecord>& rows,
                                     const std::vector<TableNote>& notes, double scale) {
    const ColumnPowers finest = FinestDigits(rows);
    std::vector<Difference> differences;
    for (const engine::CsvRecord& row : rows) {
        const PropertyValues computed = EvaluateRow(row, scale);
        for (std::size_t i = 0; i < properties.size(); ++i) {
            if (row.Text(properties[i].column).empty()) continue;
            differences.push_back(
                Compare(row, i, computed[i], finest.at({row.Text("family"), i}), notes));
        }
    }
    return differences;
}

}  // namespace halvorn::published
