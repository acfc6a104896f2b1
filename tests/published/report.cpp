#include "report.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iomanip>
#include <iostream>
#include <string>

#include "evaluation.h"

namespace halvorn::published {
namespace {

using Group = std::vector<const Difference*>;

// Differences by family and property, families in the order of the table.
std::vector<Group> GroupDifferences(const std::vector<Difference>& differences) {
    std::vector<std::string> families;
    for (const Difference& difference : differences) {
        if (std::find(families.begin(), families.end(), difference.family) == families.end()) {
            families.push_back(difference.family);
        }
    }
    std::vector<Group> groups(families.size() * properties.size());
    for (const Difference& difference : differences) {
        const auto family = std::find(families.begin(), families.end(), difference.family);
        const auto rank = static_cast<std::size_t>(family - families.begin());
        groups[rank * properties.size() + difference.property].push_back(&difference);
    }
    std::erase_if(groups, [](const Group& group) { return group.empty(); });
    return groups;
}

std::string Percent(double part) {
    std::string text(32, '\0');
    text.resize(
        static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.4f %%", 100.0 * part)));
    return text;
}

double Median(const Group& sorted) {
    const std::size_t middle = sorted.size() / 2;
    const double upper = sorted[middle]->Relative();
    return sorted.size() % 2 == 1 ? upper : 0.5 * (sorted[middle - 1]->Relative() + upper);
}

template <typename... Cells>
void PrintLine(std::ostream& out, const std::string& family, const std::string& property,
               const std::string& worstProfile, const Cells&... numbers) {
    out << std::left << std::setw(10) << family << std::setw(8) << property << std::right;
    ((out << std::setw(10) << numbers), ...);
    out << "  " << worstProfile << '\n';
}

}  // namespace

void PrintSummary(const std::vector<Difference>& differences, std::ostream& out) {
    PrintLine(out, "family", "value", "worst profile", "count", "rounding", "noted", "off",
              "median", "worst");
    for (Group group : GroupDifferences(differences)) {
        std::sort(group.begin(), group.end(), [](const Difference* a, const Difference* b) {
            return a->Relative() < b->Relative();
        });
        const auto count = [&](bool rounded, bool agrees) {
            return std::count_if(group.begin(), group.end(), [=](const Difference* d) {
                return d->roundedToNearest == rounded && d->Agrees() == agrees;
            });
        };
        const Difference& worst = *group.back();
        PrintLine(out, worst.family, properties[worst.property].column, worst.profile, group.size(),
                  count(true, true), count(false, true), count(true, false) + count(false, false),
                  Percent(Median(group)), Percent(worst.Relative()));
    }
}

int PrintOffenders(const std::vector<Difference>& differences, std::ostream& out) {
    int count = 0;
    for (const Difference& difference : differences) {
        if (difference.Agrees()) continue;
        ++count;
        out << difference.profile << ' ' << properties[difference.property].column
            << std::setprecision(7) << ": published " << difference.published << ", computed "
            << difference.computed << ", expected " << difference.lowest << " to "
            << difference.highest << '\n';
    }
    return count;
}

int PrintNotes(const std::vector<Difference>& differences, const std::vector<TableNote>& notes,
               std::ostream& out) {
    int needless = 0;
    for (const TableNote& note : notes) {
        const auto count = std::count_if(
            differences.begin(), differences.end(),
            [&](const Difference& d) { return d.note == &note && !d.roundedToNearest; });
        out << note.family << ' ' << note.property << (note.property.empty() ? "" : " ")
            << note.profile << (note.profile.empty() ? "" : " ") << '(' << count
            << (count == 1 ? " value): " : " values): ") << note.reason << '\n';
        if (count == 0) {
            ++needless;
            out << "  not needed: rounding to the nearest step explains every value\n";
        }
    }
    return needless;
}

}  // namespace halvorn::published
