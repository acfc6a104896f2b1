#include "published/evaluation.h"

#include <CSectionTools.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace halvorn::published {
namespace {

double Dimension(const CsvRow& row, const char* column) {
    const std::optional<double> value = row.Number(column);
    if (!value) throw std::runtime_error(std::string("the dimension ") + column + " is missing");
    return *value;
}

shapes::FlangedProfile Flanged(const CsvRow& row, const char* rootRadius) {
    return {Dimension(row, "h"), Dimension(row, "b"), Dimension(row, "tw"), Dimension(row, "tf"),
            Dimension(row, rootRadius)};
}

shapes::FlangedProfile Tapered(const CsvRow& row) {
    shapes::FlangedProfile profile = Flanged(row, "r_root");
    profile.taper = {Dimension(row, "slope"), Dimension(row, "tf_at_from_toe"),
                     Dimension(row, "r_toe")};
    return profile;
}

void Push(CSectionTools& section, std::vector<double> ring, double scale, unsigned char flag) {
    for (double& coordinate : ring) coordinate *= scale;
    section.PushContour(static_cast<int>(ring.size() / 2), ring.data(), flag);
}

}  // namespace

shapes::Outline DrawRow(const CsvRow& row) {
    const shapes::ArcDivision division = shapes::ArcDivision::StepsPerQuarter(arcStepsPerQuarter);
    const std::string& type = row.Text("type");
    if (type == "i") return DrawISection(Flanged(row, "r"), division);
    if (type == "channel") return DrawChannel(Flanged(row, "r"), division);
    if (type == "taper_i") return DrawISection(Tapered(row), division);
    if (type == "taper_channel") return DrawChannel(Tapered(row), division);
    if (type == "angle") {
        return DrawAngle({Dimension(row, "h"), Dimension(row, "b"), Dimension(row, "t"),
                          Dimension(row, "r_root"), Dimension(row, "r_toe")},
                         division);
    }
    if (type == "rhs") {
        return DrawRectangularHollow({Dimension(row, "h"), Dimension(row, "b"), Dimension(row, "t"),
                                      Dimension(row, "r_out"), Dimension(row, "r_in")},
                                     division);
    }
    if (type == "chs") {
        return DrawCircularHollow({Dimension(row, "h"), Dimension(row, "t")}, division);
    }
    throw std::runtime_error("unknown profile type '" + type + "'");
}

PropertyValues Evaluate(const shapes::Outline& outline, double scale) {
    CSectionTools section;
    Push(section, outline.solid, scale, 1);
    if (!outline.hole.empty()) Push(section, outline.hole, scale, 0);
    double torsion = 0.0, xG = 0.0, yG = 0.0, area = 0.0, shearY = 0.0, shearZ = 0.0;
    double inertiaY = 0.0, inertiaX = 0.0, inertiaXY = 0.0, wt = 0.0;
    double bottom = 0.0, top = 0.0, left = 0.0, right = 0.0, wplx = 0.0, wply = 0.0, extra = 0.0;
    section.GetCalculValues(0.0, 0.0, &torsion, &xG, &yG, &area, &shearY, &shearZ, &inertiaY,
                            &inertiaX, &inertiaXY, &wt, &bottom, &top, &left, &right, &wplx, &wply,
                            &extra);
    if (!outline.hole.empty()) {
        CSectionTools keyhole;
        Push(keyhole, KeyholeRing(outline), scale, 1);
        keyhole.ComputeWplasticValues(wplx, wply);
    }
    PropertyValues values = {
        area, inertiaX, inertiaY, inertiaXY, std::min(bottom, top), std::min(left, right),
        wplx, wply,     xG,       yG};
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] /= std::pow(scale, properties[i].lengthPower);
    }
    return values;
}

}  // namespace halvorn::published
