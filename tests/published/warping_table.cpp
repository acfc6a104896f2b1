// Torsion and warping constants of I sections beside those of a public table.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
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

// What the table may be off besides the rounding of its digits, relative: its mesh, and the chords
// of the drawn fillets.
constexpr double kTorsionAllowance = 4e-4;
constexpr double kWarpingAllowance = 1e-3;

struct Row {
    std::string name;
    double torsion, torsionError, warping, warpingError;  // [cm^4], [cm^6]
    double offTorsion, offWarping, offFormula;            // of the table and the formula, relative
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
    return {record.Text("section"),
            j.Middle() / 1e4,
            j.HalfWidth() / 1e4,
            cw.value / 1e6,
            cw.error / 1e6,
            1e4 * number("IT_cm4") / j.Middle() - 1.0,
            1e6 * number("Iw_cm6") / cw.value - 1.0,
            formula / cw.value - 1.0};
}

bool Agrees(const Row& row) {
    return std::fabs(row.offTorsion) <= kTorsionAllowance + row.torsionError / row.torsion &&
           std::fabs(row.offWarping) <= kWarpingAllowance + row.warpingError / row.warping;
}

void Print(const Row& row) {
    std::printf("%-8s %9.4g %7.1g %8.3f %11.5g %7.1g %8.3f %8.2f\n", row.name.c_str(), row.torsion,
                row.torsionError, 100 * row.offTorsion, row.warping, row.warpingError,
                100 * row.offWarping, 100 * row.offFormula);
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
        off += Agrees(rows.back()) ? 0 : 1;
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
