/// @file layers.h
/// The layers of a drawing, and which of them are read.
#ifndef HALVORN_ENGINE_READ_DXF_LAYERS_H
#define HALVORN_ENGINE_READ_DXF_LAYERS_H

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "HalvornEngine.h"
#include "read/dxf/drawing.h"

namespace halvorn::engine::dxf {

/// Returns whether a layer is off or frozen.
bool IsHiddenLayer(const Drawing& drawing, std::string_view layer);

/// The layers that are read: all, or those that are named, in letters of either case.
class LayerChoice {
public:
    /// @throws InputError for a name that no layer of the drawing has
    LayerChoice(const Drawing& drawing, const std::vector<std::string>& names,
                const std::string& source);

    bool Has(std::string_view layer) const;

private:
    std::set<std::string> chosen_;  ///< as `Capitals`; empty: all
};

/// Returns the layers with their entities counted by kind. Those of a block count where it is
/// placed, on the layer of the INSERT when they are drawn on the layer 0.
std::vector<DrawingLayer> LayersOf(const Drawing& drawing, const std::string& source);

}  // namespace halvorn::engine::dxf

#endif
