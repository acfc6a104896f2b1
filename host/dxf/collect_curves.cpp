#include "dxf/collect_curves.h"

#include <algorithm>
#include <limits>

#include "dxf/insertion.h"
#include "input/input_text.h"

namespace halvorn::host::dxf {

namespace {

// Blocks in blocks; deeper, a block holds itself.
constexpr int kDeepest = 16;

// Blocks of blocks can multiply without end: entities seen and points made, over all placements.
constexpr std::size_t kMostSeen = 500000;

// What an entity takes over from the placement of the block that holds it.
struct Placement {
    PlaneMap map;
    std::string_view layer = "0";  ///< of what is drawn on the layer 0 of the block
    int depth = 0;
};

class Collector {
public:
    Collector(const Drawing& drawing, double tolerance, const std::string& source, Notes& notes)
        : drawing_(drawing), tolerance_(tolerance), source_(source), notes_(notes) {}

    std::vector<Curve> Collect() {
        Visit(drawing_.entities, Placement{});
        if (highest_ - lowest_ > tolerance_) {
            notes_.Say("the curves lie at different heights, z from " + Shown(lowest_) + " to " +
                       Shown(highest_) + ", and are all seen along z");
        }
        return std::move(curves_);
    }

private:
    void Visit(const std::vector<Entity>& entities, const Placement& placement) {
        for (std::size_t i = 0; i < entities.size(); ++i) {
            const Entity& entity = entities[i];
            if (++seen_ > kMostSeen) {
                Refuse(source_, entity.line, "its blocks hold more than 500000 entities",
                       "keep only the section in the drawing");
            }
            const std::size_t first = i + 1;
            if (entity.kind == "POLYLINE") i = LastOfPolyline(entities, i);
            if (entity.kind == "SEQEND") continue;
            if (IsHidden(entity, placement)) continue;
            const std::size_t vertices = entity.kind == "POLYLINE" ? i - first : 0;
            if (entity.kind == "INSERT") {
                VisitBlock(entity, placement);
            } else if (IsCurve(entity.kind)) {
                Take(entity, {entities.data() + first, vertices}, placement);
            } else {
                notes_.Count(Excerpt(entity.kind) + " left out", entity.line);
            }
        }
    }

    // Returns the index of the SEQEND that closes the polyline at `start`.
    std::size_t LastOfPolyline(const std::vector<Entity>& entities, std::size_t start) {
        std::size_t i = start + 1;
        while (i < entities.size() && entities[i].kind == "VERTEX") ++i;
        if (i == entities.size() || entities[i].kind != "SEQEND") {
            Refuse(source_, entities[start].line, "POLYLINE: its vertices do not end with SEQEND",
                   "export the drawing anew as ASCII DXF");
        }
        seen_ += i - start;
        return i;
    }

    bool IsHidden(const Entity& entity, const Placement& placement) {
        const std::string_view layer = entity.layer == "0" ? placement.layer : entity.layer;
        const auto found = drawing_.isLayerHidden.find(Capitals(layer));
        std::string where;
        if (entity.isInPaperSpace) {
            where = "entities in paper space left out";
        } else if (entity.isInvisible) {
            where = "invisible entities left out";
        } else if (found != drawing_.isLayerHidden.end() && found->second) {
            where =
                "entities on the layer " + Excerpt(layer) + ", which is off or frozen, left out";
        }
        if (!where.empty()) notes_.Count(where, entity.line);
        return !where.empty();
    }

    void VisitBlock(const Entity& entity, const Placement& placement) {
        const Insertion insertion = ReadInsertion(entity, source_);
        const auto found = drawing_.blocks.find(insertion.block);
        const std::string block = "INSERT of the block " + Excerpt(insertion.block);
        if (found == drawing_.blocks.end()) {
            notes_.Count(block + ", which the file does not hold, left out", entity.line);
        } else if (!insertion.isSingle) {
            notes_.Count(block + " in rows and columns left out", entity.line);
        } else if (!insertion.isFlat) {
            notes_.Count(block + " aslant to the x-y plane or with a scale of 0 left out",
                         entity.line);
        } else if (placement.depth == kDeepest) {
            Refuse(source_, entity.line, block + ": blocks lie in each other more than 16 deep",
                   "explode the blocks of the section");
        } else {
            const PlaneMap fromBase{1.0, 0.0, -found->second.baseX, 0.0, 1.0, -found->second.baseY};
            Visit(found->second.entities,
                  {placement.map.After(insertion.placement).After(fromBase),
                   entity.layer == "0" ? placement.layer : entity.layer, placement.depth + 1});
        }
    }

    void Take(const Entity& entity, std::span<const Entity> vertices, const Placement& placement) {
        CurveReading reading = ReadCurve(entity, vertices, placement.map, tolerance_, source_);
        if (!reading.curve) {
            notes_.Count(std::string(entity.kind) + " " + reading.problem + " left out",
                         entity.line);
            return;
        }
        if (!reading.remark.empty()) notes_.Count(reading.remark, entity.line);
        lowest_ = std::min(lowest_, reading.lowest);
        highest_ = std::max(highest_, reading.highest);
        points_ += reading.curve->points.size();
        if (points_ > kMostPoints) {
            Refuse(source_, entity.line, "the curves up to here take more than a million points",
                   "give a larger chord tolerance, or keep only the section in the drawing");
        }
        curves_.push_back(std::move(*reading.curve));
    }

    const Drawing& drawing_;
    double tolerance_;
    const std::string& source_;
    Notes& notes_;
    std::vector<Curve> curves_;
    std::size_t seen_ = 0;
    std::size_t points_ = 0;
    double lowest_ = std::numeric_limits<double>::infinity();
    double highest_ = -std::numeric_limits<double>::infinity();
};

}  // namespace

std::vector<Curve> CollectCurves(const Drawing& drawing, double tolerance,
                                 const std::string& source, Notes& notes) {
    return Collector(drawing, tolerance, source, notes).Collect();
}

}  // namespace halvorn::host::dxf
