#include "read/json/part_shapes.h"

#include <stdexcept>
#include <string>

#include "base/dimension_checks.h"
#include "geometry/rounded_polygon.h"
#include "model/outlines.h"
#include "shapes/shape_kinds.h"

namespace halvorn::engine {

namespace {

using shapes::ArcDivision;
using shapes::DimensionKey;
using shapes::ShapeKind;

// The dimensions that a file gives.
shapes::Dimensions DimensionsOf(const Node& part, const std::vector<DimensionKey>& keys) {
    shapes::Dimensions dimensions;
    for (const DimensionKey& each : keys) {
        if (!each.isRequired && !part.Has(each.key)) continue;
        const Sign sign = each.mayBeZero ? Sign::NotNegative : Sign::Positive;
        dimensions.Set(each.key, part.At(each.key).Number(sign));
    }
    return dimensions;
}

const ShapeKind& KindOf(const Node& part) {
    std::vector<std::pair<std::string_view, const ShapeKind*>> choices;
    for (const ShapeKind& kind : shapes::ShapeKinds()) choices.emplace_back(kind.name, &kind);
    return *part.At("shape").Choice(choices);
}

// Fails where the user can mend it: at the key, or at the part when the key is not there.
[[noreturn]] void FailAt(const Node& part, const std::string& key, const std::exception& error,
                         const std::string& remedy) {
    if (!key.empty() && part.Has(key.c_str())) part.At(key.c_str()).Fail(error.what(), remedy);
    part.Fail(error.what(), remedy);
}

shapes::Outline Draw(const Node& part, const ShapeKind& kind, const ArcDivision& division) {
    const shapes::Dimensions dimensions = DimensionsOf(part, kind.keys);
    try {
        return kind.draw(dimensions, division);
    } catch (const shapes::RadiusError& error) {
        const std::string key = dimensions.KeyOfRadius(error.Radius());
        FailAt(part, key, error, key.empty() ? error.Remedy() : "make \"" + key + "\" smaller");
    } catch (const shapes::DimensionError& error) {
        FailAt(part, error.Field(), error, error.Remedy());
    } catch (const std::invalid_argument& error) {
        FailAt(part, "", error, "correct the dimensions");
    }
}

// A slope says nothing without the place where the flange has its nominal thickness.
void CheckTaper(const Node& part) {
    for (const auto& [key, other] : {std::pair{"flange_slope", "flange_at_from_toe"},
                                     std::pair{"flange_at_from_toe", "flange_slope"}}) {
        if (part.Has(key) && !part.Has(other)) {
            part.At(key).Fail("stands without \"" + std::string(other) + "\"",
                              "give both of a tapered flange, none of a parallel one");
        }
    }
}

}  // namespace

std::vector<Element> ReadShapePart(const Node& part, std::vector<std::string_view> commonKeys,
                                   const ArcDivision& division) {
    const ShapeKind& kind = KindOf(part);
    commonKeys.push_back("shape");
    for (const DimensionKey& dimension : kind.keys) commonKeys.push_back(dimension.key);
    part.RequireKeys(commonKeys);
    CheckTaper(part);

    return ElementsOf(Draw(part, kind, division));
}

}  // namespace halvorn::engine
