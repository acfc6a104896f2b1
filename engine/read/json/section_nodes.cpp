#include "read/json/section_nodes.h"

#include "base/numbers.h"

namespace halvorn::engine {

Point ReadPoint(const Node& node) {
    const std::size_t size = node.Size("two numbers, a point [x, y]");
    if (size != 2) {
        node.Fail("a point needs exactly two numbers, found " + std::to_string(size),
                  "write it as [x, y]");
    }
    return {node[0].Number(), node[1].Number()};
}

Points ReadPoints(const Node& node, std::size_t fewest) {
    const std::size_t size = node.Size("points [x, y]");
    if (size < fewest) {
        node.Fail("at least " + std::to_string(fewest) + " points are needed, found " +
                      std::to_string(size),
                  "add the missing points");
    }
    Points points;
    points.reserve(size);
    for (std::size_t i = 0; i < size; ++i) points.push_back(ReadPoint(node[i]));
    return points;
}

std::vector<double> ReadRadii(const Node& line, std::size_t pointCount) {
    std::vector<double> radii(pointCount, 0.0);
    if (!line.Has("radii")) return radii;
    const Node node = line.At("radii");
    const std::size_t size = node.Size("radii");
    if (size != pointCount) {
        node.Fail("one radius per point is needed: " + std::to_string(pointCount) +
                      " points, found " + std::to_string(size) + " radii",
                  size < pointCount ? "write 0 for each sharp corner" : "remove the surplus");
    }
    for (std::size_t i = 0; i < size; ++i) radii[i] = node[i].Number(Sign::NotNegative);
    return radii;
}

std::string ReadOptionalText(const Node& node, const char* key) {
    return node.Has(key) ? node.At(key).Text() : std::string();
}

void ReadModularRatio(const Node& node, bool isHole, std::span<Element> elements) {
    constexpr const char* kKey = "modular_ratio";
    if (isHole && node.Has(kKey)) {
        node.At(kKey).Fail("a hole takes whatever lies under it, of every material",
                           "remove the key");
    }
    const double ratio = node.Has(kKey) ? node.At(kKey).Number(Sign::Positive) : 1.0;
    for (Element& element : elements) {
        element.modularRatio = ratio;
        element.actsOnAll = isHole;
    }
}

void RequireRoom(const Node& node, const shapes::WallLine& line, shapes::FaceArcs arcs) {
    using Kind = shapes::WallFault::Kind;
    const auto fault = shapes::FindWallFault(line, arcs);
    if (!fault) return;
    const std::string room = "the corners of one edge need " + ShortNumber(fault->needed) +
                             " of its " + ShortNumber(fault->available);
    switch (fault->kind) {
        case Kind::Coincident:
            node.At("points")[fault->point].Fail("lies on a neighbouring point",
                                                 "remove one of them");
        case Kind::Radius:
            node.At("radii")[fault->point].Fail("the radius does not fit: " + room,
                                                "make it smaller or the edge longer");
        case Kind::Thickness:
            node.At("thickness")
                .Fail("the faces of the wall cross at point " + std::to_string(fault->point) +
                          ": " + room,
                      "make the wall thinner, the edge longer or the turn less sharp");
    }
}

}  // namespace halvorn::engine
