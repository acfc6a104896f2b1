/// @file ring_sections.h
/// Sections of plain rings for tests.
#ifndef HALVORN_TESTS_ENGINE_RING_SECTIONS_H
#define HALVORN_TESTS_ENGINE_RING_SECTIONS_H

#include <string>
#include <utility>
#include <vector>

#include "geometry/arrangement.h"
#include "model/section_model.h"

namespace test_support {

using Rings = std::vector<std::pair<bool, halvorn::engine::Points>>;  // solid or hole

inline halvorn::engine::Points Rectangle(double left, double bottom, double width, double height) {
    return {{left, bottom},
            {left + width, bottom},
            {left + width, bottom + height},
            {left, bottom + height}};
}

// The rings must outlive them.
inline std::vector<halvorn::engine::WeightedRing> Weighted(const Rings& rings) {
    std::vector<halvorn::engine::WeightedRing> weighted;
    for (const auto& [isSolid, ring] : rings) weighted.push_back({&ring, isSolid ? 1 : -1});
    return weighted;
}

// In mm, labelled "ring 0" and so on.
inline halvorn::engine::SectionModel Section(const Rings& rings) {
    halvorn::engine::SectionModel section;
    section.source = "test";
    section.unit = "mm";
    for (const auto& [isSolid, ring] : rings) {
        halvorn::engine::Element element;
        element.label = "ring " + std::to_string(section.elements.size());
        element.isSolid = isSolid;
        element.ring = ring;
        section.elements.push_back(element);
    }
    return section;
}

}  // namespace test_support

#endif
