#include "read/dxf/layers.h"

#include <map>

#include "base/text.h"
#include "read/dxf/placed_entities.h"

namespace halvorn::engine::dxf {

namespace {

// A message names this many layers, and counts the others.
constexpr std::size_t kNamedLayers = 20;

std::string NamesOf(const Drawing& drawing) {
    std::string names;
    std::size_t count = 0;
    for (const auto& [key, layer] : drawing.layers) {
        if (++count > kNamedLayers) continue;
        names += (names.empty() ? "" : ", ") + Excerpt(layer.name);
    }
    if (count > kNamedLayers) names += " and " + std::to_string(count - kNamedLayers) + " others";
    return names;
}

using Counts = std::map<std::string_view, std::size_t>;  // by kind

}  // namespace

bool IsHiddenLayer(const Drawing& drawing, std::string_view layer) {
    const auto found = drawing.layers.find(InCapitals(layer));
    return found != drawing.layers.end() && found->second.isHidden;
}

LayerChoice::LayerChoice(const Drawing& drawing, const std::vector<std::string>& names,
                         const std::string& source) {
    for (const std::string& given : names) {
        const std::string name = Trimmed(given);  // as those of the drawing are
        if (!drawing.layers.contains(InCapitals(name))) {
            throw InputError(source, "it has no layer \"" + Excerpt(name) + "\"",
                             drawing.layers.empty() ? "it has none at all; leave out --layer"
                                                    : "its layers: " + NamesOf(drawing));
        }
        chosen_.insert(InCapitals(name));
    }
}

bool LayerChoice::Has(std::string_view layer) const {
    return chosen_.empty() || chosen_.contains(InCapitals(layer));
}

std::vector<DrawingLayer> LayersOf(const Drawing& drawing, const std::string& source) {
    std::map<std::string, Counts> counts;
    EntityVisitor visitor;
    visitor.wants = [&](const Entity& entity, std::string_view layer) {
        const bool isShown = !entity.isInPaperSpace && !entity.isInvisible;
        if (isShown) ++counts[InCapitals(layer)][entity.kind];
        return isShown;
    };
    visitor.take = [](const Entity&, std::span<const Entity>, const Placement&) {};
    visitor.leaveOut = [](const std::string&, int) {};
    VisitPlaced(drawing, source, visitor);
    std::vector<DrawingLayer> layers;
    for (const auto& [key, layer] : drawing.layers) {
        DrawingLayer& listed = layers.emplace_back();
        listed.name = layer.name;
        listed.isHidden = layer.isHidden;
        for (const auto& [kind, count] : counts[key]) {
            listed.counts.push_back({std::string(kind), count});
        }
    }
    return layers;
}

}  // namespace halvorn::engine::dxf
