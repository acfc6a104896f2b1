#include "model/push_element.h"

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

}  // namespace halvorn::engine
