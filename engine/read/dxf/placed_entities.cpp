#include "read/dxf/placed_entities.h"

#include "base/text.h"
#include "read/dxf/insertion.h"

namespace halvorn::engine::dxf {

namespace {

// Real drawings nest blocks less deeply; a block that holds itself would never end.
constexpr int kDeepest = 16;

// The most entities and copies of blocks over all placements: blocks of blocks can multiply without
// end.
constexpr std::size_t kMostSeen = 500000;

class Walk {
public:
    Walk(const Drawing& drawing, const std::string& source, const EntityVisitor& visitor)
        : drawing_(drawing), source_(source), visitor_(visitor) {}

    void Visit(const std::vector<Entity>& entities, const Placement& placement) {
        for (std::size_t i = 0; i < entities.size(); ++i) {
            const Entity& entity = entities[i];
            CountOne(entity);
            const std::size_t first = i + 1;
            if (entity.kind == "POLYLINE") i = LastOfPolyline(entities, i);
            if (entity.kind == "SEQEND") continue;
            const std::string_view layer = entity.layer == "0" ? placement.layer : entity.layer;
            if (!visitor_.wants(entity, layer)) continue;
            const std::size_t vertices = entity.kind == "POLYLINE" ? i - first : 0;
            if (entity.kind == "INSERT") {
                VisitBlock(entity, layer, placement);
            } else {
                visitor_.take(entity, {entities.data() + first, vertices}, placement);
            }
        }
    }

private:
    void CountOne(const Entity& entity) {
        if (++seen_ <= kMostSeen) return;
        Refuse(source_, entity.line, "its blocks hold more than 500000 entities",
               "keep only the section in the drawing");
    }

    // Returns the index of the SEQEND that closes the polyline at `start`.
    std::size_t LastOfPolyline(const std::vector<Entity>& entities, std::size_t start) {
        std::size_t i = start + 1;
        while (i < entities.size() && entities[i].kind == "VERTEX") ++i;
        if (i == entities.size() || entities[i].kind != "SEQEND") {
            Refuse(source_, entities[start].line, "POLYLINE: its vertices do not end with SEQEND",
                   kExportAnew);
        }
        seen_ += i - start;
        return i;
    }

    void VisitBlock(const Entity& entity, std::string_view layer, const Placement& placement) {
        const Insertion insertion = ReadInsertion(entity, source_);
        const auto found = drawing_.blocks.find(insertion.block);
        const std::string block = "INSERT of the block " + Excerpt(insertion.block);
        if (found == drawing_.blocks.end()) {
            visitor_.leaveOut(block + ", which the file does not hold, left out", entity.line);
            return;
        }
        if (!insertion.hasExtent) {
            visitor_.leaveOut(block + " with a scale of 0 left out", entity.line);
            return;
        }
        if (placement.depth == kDeepest) {
            Refuse(source_, entity.line, block + ": blocks lie in each other more than 16 deep",
                   "explode the blocks of the section");
        }
        if (insertion.isAslant && !placement.isAslant) {
            visitor_.leaveOut(block + " aslant to the x-y plane left out", entity.line);
        }
        VisitCopies(entity, layer, placement, insertion, found->second);
    }

    void VisitCopies(const Entity& entity, std::string_view layer, const Placement& placement,
                     const Insertion& insertion, const Block& block) {
        Placement within = placement;
        within.layer = layer;
        within.isAslant = placement.isAslant || insertion.isAslant;
        if (drawing_.clipping.Clips(entity.dictionary)) within.clipped = &entity;
        ++within.depth;
        const PlaneMap fromBase{1.0, 0.0, -block.baseX, 0.0, 1.0, -block.baseY};
        for (int row = 0; row < insertion.rows; ++row) {
            for (int column = 0; column < insertion.columns; ++column) {
                CountOne(entity);
                within.map = placement.map.After(insertion.Copy(column, row)).After(fromBase);
                Visit(block.entities, within);
            }
        }
    }

    const Drawing& drawing_;
    const std::string& source_;
    const EntityVisitor& visitor_;
    std::size_t seen_ = 0;
};

}  // namespace

void VisitPlaced(const Drawing& drawing, const std::string& source, const EntityVisitor& visitor) {
    Walk(drawing, source, visitor).Visit(drawing.entities, Placement{});
}

}  // namespace halvorn::engine::dxf
