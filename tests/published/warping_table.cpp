// Torsion and warping constants of I sections beside those of a public table.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"
#include "catalogue/csv_table.h"
#include "region/moments.h"
#include "region/region.h"
#include "shapes/profiles.h"
#include "warping/warping.h"

namespace {

using namespace halvorn::engine;

constexpr const char* usage =
    R"(usage: halvorn-warping-table TABLE.csv

Draws the I sections of a table, whose columns are section, h, b, tw, tf, r [mm], IT_cm4 and Iw_cm6,
and prints torsion and warping constant, how far off they can be, and by how many per cent those of
the table differ; likewise the formula Iz (h - tf)^2 / 4 of the warping constant.

exit status: 0 all agree, 1 some do not, 2 nothing could be compared
)";

// Digits of the table's numbers, where it does not write fewer decimals.
constexpr int kTorsionDigits = 4;
constexpr int kWarpingDigits = 5;
// What the chords of the drawn fillets change, relative.
constexpr double kArcAllowance = 2e-5;

// Half a step of a number's last digit, relative to the number. Whole numbers are written with
// ".0".
double HalfStep(std::string text, int digits) {
    const double number = std::stod(text);
    if (text.ends_with(".0")) text.resize(text.size() - 2);
    const std::size_t point = text.find('.');
    const int decimals = point == std::string::npos ? 0 : static_cast<int>(text.size() - point) - 1;
    const int last =
        std::max(static_cast<int>(std::floor(std::log10(number))) + 1 - digits, -decimals);
    return 0.5 * std::pow(10.0, last) / number;
}

struct Row {
    std::string name;
    double torsion, torsionError, warping, warpingError;  // [cm^4], [cm^6]
    double offTorsion, offWarping, offFormula;            // of the table and the formula, relative
    bool agrees;                                          // but for the digits of the table
};

Row Compare(const CsvRecord& record) {
    const auto number = [&](const char* column) { return record.Number(column).value(); };
    const double height = number("h"), flange = number("tf");
    const auto ring = shapes::DrawISection({height, number("b"), number("tw"), flange, number("r")},
                                           shapes::ArcDivision::ChordError(0.001))
                          .solid;
    const std::vector<WeightedRing> outlines = {{&ring, 1}};
    const Region region = RegionOf(outlines);
    const WarpingValues values = SolveWarping(region).values;
    const Bracket& j = values.torsionConstant;
    const Estimate& cw = values.warpingConstant;
    const double arm = height - flange;
    const double formula = MomentsOf(region).inertiaY * arm * arm / 4.0;
    Row row{record.Text("section"),
            j.Middle() / 1e4,
            j.HalfWidth() / 1e4,
            cw.value / 1e6,
            cw.error / 1e6,
            1e4 * number("IT_cm4") / j.Middle() - 1.0,
            1e6 * number("Iw_cm6") / cw.value - 1.0,
            formula / cw.value - 1.0,
            false};
    row.agrees = std::fabs(row.offTorsion) <= HalfStep(record.Text("IT_cm4"), kTorsionDigits) +
                                                  kArcAllowance + j.HalfWidth() / j.Middle() &&
                 std::fabs(row.offWarping) <= HalfStep(record.Text("Iw_cm6"), kWarpingDigits) +
                                                  kArcAllowance + cw.error / cw.value;
    return row;
}

void Print(const Row& row) {
    std::printf("%-8s %9.4g %7.1g %8.3f %11.5g %7.1g %8.3f %8.2f%s\n", row.name.c_str(),
                row.torsion, row.torsionError, 100 * row.offTorsion, row.warping, row.warpingError,
                100 * row.offWarping, 100 * row.offFormula, row.agrees ? "" : "  disagrees");
}

void PrintSpread(const char* what, const std::vector<Row>& rows, double Row::*off) {
    std::vector<double> values;
    for (const Row& row : rows) values.push_back(100.0 * row.*off);
    std::sort(values.begin(), values.end());
    std::printf("%s: from %+.3f to %+.3f %%, median %+.3f %%\n", what, values.front(),
                values.back(), values[values.size() / 2]);
}

bool Run(const std::string& path) {
    std::vector<Row> rows;
    int off = 0;
    std::printf("%-8s %9s %7s %8s %11s %7s %8s %8s\n", "section", "J, cm^4", "+-", "IT, %",
                "Cw, cm^6", "+-", "Iw, %", "flanges");
    for (const CsvRecord& record : ParseCsv(ReadInput(path))) {
        rows.push_back(Compare(record));
        Print(rows.back());
        off += rows.back().agrees ? 0 : 1;
    }
    if (rows.empty()) throw std::runtime_error(path + " holds no sections");
    PrintSpread("IT of the table over J", rows, &Row::offTorsion);
    PrintSpread("Iw of the table over Cw", rows, &Row::offWarping);
    PrintSpread("Iz (h - tf)^2 / 4 over Cw", rows, &Row::offFormula);
    std::printf("%d of %zu sections disagree\n", off, rows.size());
    return off == 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || argv[1][0] == '-') {
        std::fputs(usage, argc == 2 && std::string(argv[1]) == "--help" ? stdout : stderr);
        return argc == 2 && std::string(argv[1]) == "--help" ? 0 : 2;
    }
    try {
        return Run(argv[1]) ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "error: %s\n", e.what());
        return 2;
    }
}
