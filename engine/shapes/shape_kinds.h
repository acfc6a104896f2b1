/// @file shape_kinds.h
/// The table of shapes: what each is called, which dimensions it has, how it is drawn.
#ifndef HALVORN_ENGINE_SHAPES_SHAPE_KINDS_H
#define HALVORN_ENGINE_SHAPES_SHAPE_KINDS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/arc_division.h"
#include "geometry/outline.h"

namespace halvorn::engine::shapes {

/// A dimension as section files call it. What may be left out may be 0.
struct DimensionKey {
    const char* key;
    double example;  ///< a usual size; those of a shape make a section together [mm, a slope 1]
    bool mayBeZero = false;
    bool isRequired = true;
};

/// The dimensions of one shape by their keys [L, a slope 1].
class Dimensions {
public:
    void Set(std::string_view key, double value) { values_[key] = value; }
    bool Has(std::string_view key) const { return values_.contains(key); }
    /// Returns a dimension, 0 where it was left out.
    double operator[](std::string_view key) const;
    /// Returns the key of the radius of this value; empty when there is none.
    std::string KeyOfRadius(double value) const;

private:
    std::map<std::string_view, double> values_;
};

struct ShapeKind {
    std::string_view name;
    const char* title;  ///< in full words
    std::vector<DimensionKey> keys;
    /// @throws DimensionError for dimensions that do not fit, as the functions of profiles.h
    Outline (*draw)(const Dimensions&, const ArcDivision&);
};

/// Returns every shape.
const std::vector<ShapeKind>& ShapeKinds();

/// Returns the shape of a name.
/// @throws std::out_of_range for any other name
const ShapeKind& ShapeKindOf(std::string_view name);

}  // namespace halvorn::engine::shapes

#endif
