/// @file outline.h
/// What of a section is drawn: rings, the faces of walls, edges that are no outline.
#ifndef HALVORN_ENGINE_FIGURE_OUTLINE_H
#define HALVORN_ENGINE_FIGURE_OUTLINE_H

#include <vector>

#include "model/section_model.h"

namespace halvorn::engine::figure {

/// A closed ring in the unit of the section.
struct Ring {
    Points points;
    bool isSolid;
};

/// Returns the rings of a section's elements.
std::vector<Ring> RingsOf(const SectionModel& section);

/// One stretch of a ring's outline.
struct Stretch {
    Points points;
    bool isClosed;
};

/// Returns the outline of a ring without its bridges, the edges that it also runs backwards along:
/// the whole ring closed, or the stretches between bridges.
std::vector<Stretch> WithoutBridges(const Points& ring);

}  // namespace halvorn::engine::figure

#endif
