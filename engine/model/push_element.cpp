#include "model/push_element.h"

#include <utility>

namespace halvorn::engine {

std::vector<double> CoordinatesOf(const Points& points) {
    std::vector<double> coordinates;
    coordinates.reserve(2 * points.size());
    for (const auto& [x, y] : points) coordinates.insert(coordinates.end(), {x, y});
    return coordinates;
}

void PushElement(CSectionTools& tools, const Element& element) {
    std::vector<double> coordinates = CoordinatesOf(element.ring);
    const int count = static_cast<int>(element.ring.size());
    const unsigned char flag = element.isSolid ? 1 : 0;
    if (!element.given) {
        tools.PushContour(count, coordinates.data(), flag);
        return;
    }
    const GivenValues& given = *element.given;
    tools.PushContourStandard(count, coordinates.data(), given.angle, given.centroidX,
                              given.centroidY, given.area, given.shearArea2.value_or(0.0),
                              given.shearArea1.value_or(0.0), given.torsionConstant.value_or(0.0),
                              given.inertia2, given.inertia1, given.reserved,
                              given.torsionModulus.value_or(0.0), given.plasticModulusX,
                              given.plasticModulusY, given.extra, flag);
}

std::array<double, 10> PolylineOutputs(const Polyline& polyline) {
    std::vector<std::pair<double, double>> points;
    points.reserve(polyline.points.size());
    for (const auto& [x, y] : polyline.points) points.emplace_back(x, y);
    std::array<double, 10> out{};
    std::pair<double, double> centroid;
    CSectionTools().CalculContourQuelconqueTOOL(polyline.kind == PolylineKind::Solid ? 0 : 1,
                                                polyline.kind == PolylineKind::OpenWall ? 1 : 0,
                                                polyline.torsion == TorsionFormulas::Tube ? 0 : 1,
                                                static_cast<int>(points.size()), polyline.thickness,
                                                points, polyline.radii, out[0], centroid, out[3],
                                                out[4], out[5], out[6], out[7], out[8], out[9]);
    out[1] = centroid.first;
    out[2] = centroid.second;
    return out;
}

}  // namespace halvorn::engine
