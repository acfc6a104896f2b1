#include "model/class_outputs.h"

#include <bit>
#include <cstdint>
#include <utility>

#include "model/push_element.h"

namespace halvorn::engine {

ClassOutputs ClassOutputsOf(const std::vector<Element>& elements, double dx, double dy) {
    // A NaN that no arithmetic produces tells an output never written from a computed NaN.
    constexpr std::uint64_t kUnwrittenBits = 0x7FF8'5EC7'1015'0BADULL;
    CSectionTools tools;
    for (const Element& element : elements) PushElement(tools, element);
    ClassOutputs out;
    out.extraSum = std::bit_cast<double>(kUnwrittenBits);
    tools.GetCalculValues(dx, dy, &out.torsionConstant, &out.centroid.x, &out.centroid.y, &out.area,
                          &out.shearArea1, &out.shearArea2, &out.inertiaY, &out.inertiaX,
                          &out.inertiaXY, &out.torsionModulus, &out.elasticBottom, &out.elasticTop,
                          &out.elasticLeft, &out.elasticRight, &out.plasticX, &out.plasticY,
                          &out.extraSum);
    out.isStopped = std::bit_cast<std::uint64_t>(out.extraSum) == kUnwrittenBits;
    return out;
}

PolylineOutputs PolylineOutputsOf(const Polyline& polyline) {
    std::vector<std::pair<double, double>> points;
    points.reserve(polyline.points.size());
    for (const auto& [x, y] : polyline.points) points.emplace_back(x, y);
    PolylineOutputs out;
    std::pair<double, double> centroid;
    CSectionTools().CalculContourQuelconqueTOOL(
        polyline.kind == PolylineKind::Solid ? 0 : 1,
        polyline.kind == PolylineKind::OpenWall ? 1 : 0,
        polyline.torsion == TorsionFormulas::Tube ? 0 : 1, static_cast<int>(points.size()),
        polyline.thickness, points, polyline.radii, out.area, centroid, out.torsionConstant,
        out.torsionModulus, out.shearAreaX, out.shearAreaY, out.inertiaX, out.inertiaY,
        out.inertiaXY);
    out.centroid = {centroid.first, centroid.second};
    return out;
}

}  // namespace halvorn::engine
