#include "evaluation.h"

#include <CSectionTools.h>

#include <algorithm>
#include <cmath>

namespace halvorn::published {
namespace {

void Push(CSectionTools& section, const engine::Points& ring, double scale, unsigned char flag) {
    std::vector<double> coordinates;
    for (const auto& [x, y] : ring) coordinates.insert(coordinates.end(), {scale * x, scale * y});
    section.PushContour(static_cast<int>(ring.size()), coordinates.data(), flag);
}

}  // namespace

PropertyValues Evaluate(const engine::shapes::Outline& outline, double scale) {
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
