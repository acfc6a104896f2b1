#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "HalvornEngine.h"
#include "shapes/shape_kinds.h"

namespace halvorn::engine {

namespace {

using shapes::DimensionKey;
using shapes::ShapeKind;

// What a dimension is called, whatever the shape.
struct DimensionWords {
    std::string_view key;
    const char* name;
    const char* symbol;
    const char* description;
    int power = 1;
};

constexpr DimensionWords kWords[] = {
    {"height", "Height", "h", "overall height, from bottom to top"},
    {"width", "Width", "b", "overall width, from left to right"},
    {"web", "Web thickness", "tw", "thickness of the web"},
    {"flange", "Flange thickness", "tf",
     "thickness of the flange, of a tapered one where it is nominal"},
    {"root_radius", "Root radius", "r", "radius of the fillet where the two plates meet"},
    {"toe_radius", "Toe radius", "r2", "radius at the inner edge of the toe"},
    {"flange_slope", "Flange slope", "s",
     "rise of the inner face of a tapered flange per unit of width, 0.14 for 14 %; goes with the "
     "distance from the toe",
     0},
    {"flange_at_from_toe", "Nominal thickness from toe", "u",
     "distance from the toe at which a tapered flange has its nominal thickness; goes with the "
     "slope"},
    {"top_width", "Top flange width", "b,top", "width of the upper flange"},
    {"top_flange", "Top flange thickness", "tf,top", "thickness of the upper flange"},
    {"bottom_width", "Bottom flange width", "b,bottom", "width of the lower flange"},
    {"bottom_flange", "Bottom flange thickness", "tf,bottom", "thickness of the lower flange"},
    {"thickness", "Thickness", "t", "thickness of the wall or of both legs"},
    {"outer_radius", "Outer radius", "ro", "radius of the outer corners; 0: sharp"},
    {"inner_radius", "Inner radius", "ri",
     "radius of the inner corners; without it the outer one less the thickness, not below 0"},
    {"diameter", "Diameter", "d", "outer diameter"},
};

ShapeDimension DescriptionOf(const DimensionKey& dimension) {
    const auto* const words =
        std::find_if(std::begin(kWords), std::end(kWords),
                     [&](const DimensionWords& each) { return each.key == dimension.key; });
    if (words == std::end(kWords)) {
        throw std::logic_error("no words for the dimension " + std::string(dimension.key));
    }
    return {dimension.key, words->name,          words->symbol,       words->description,
            words->power,  dimension.isRequired, dimension.mayBeZero, dimension.example};
}

}  // namespace

const std::vector<ShapeDescription>& ShapeDescriptions() {
    static const std::vector<ShapeDescription> descriptions = [] {
        std::vector<ShapeDescription> all;
        for (const ShapeKind& kind : shapes::ShapeKinds()) {
            ShapeDescription& shape = all.emplace_back();
            shape.kind = kind.name;
            shape.name = kind.title;
            for (const DimensionKey& key : kind.keys)
                shape.dimensions.push_back(DescriptionOf(key));
        }
        return all;
    }();
    return descriptions;
}

}  // namespace halvorn::engine
