#include "read/dxf/collect_curves.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "read/dxf/placed_entities.h"

namespace halvorn::engine::dxf {

namespace {

class Collector {
public:
    Collector(const Drawing& drawing, const LayerChoice& layers, double tolerance,
              const std::string& source, Notes& notes)
        : drawing_(drawing),
          layers_(layers),
          tolerance_(tolerance),
          source_(source),
          notes_(notes) {}

    std::vector<Curve> Collect() {
        EntityVisitor visitor;
        visitor.wants = [this](const Entity& entity, std::string_view layer) {
            const std::string where = WhereHidden(entity, layer);
            if (!where.empty()) notes_.Count(where, entity.line);
            return where.empty();
        };
        visitor.take = [this](const Entity& entity, std::span<const Entity> vertices,
                              const Placement& placement) { Take(entity, vertices, placement); };
        visitor.leaveOut = [this](const std::string& what, int line) { notes_.Count(what, line); };
        VisitPlaced(drawing_, source_, visitor);
        if (highest_ - lowest_ > tolerance_) {
            notes_.Say("the curves lie at different heights, z from " + Shown(lowest_) + " to " +
                       Shown(highest_) + ", and are all seen along z");
        }
        return std::move(curves_);
    }

private:
    // Empty for what is shown. What an INSERT holds may lie on other layers than itself.
    std::string WhereHidden(const Entity& entity, std::string_view layer) const {
        if (entity.isInPaperSpace) return "entities in paper space left out";
        if (entity.isInvisible) return "invisible entities left out";
        if (entity.kind != "INSERT" && !layers_.Has(layer)) {
            return "entities on layers that --layer does not name left out";
        }
        if (!IsHiddenLayer(drawing_, layer)) return "";
        return "entities on the layer " + Excerpt(layer) + ", which is off or frozen, left out";
    }

    void Take(const Entity& entity, std::span<const Entity> vertices, const Placement& placement) {
        if (!IsCurve(entity.kind)) {
            if (!placement.isAslant) notes_.Count(Excerpt(entity.kind) + " left out", entity.line);
            return;
        }
        CurveReading reading = ReadCurve(entity, vertices, placement.map, tolerance_, source_);
        if (!placement.isAslant) See(entity, reading);
        if (!reading.curve) return;
        reading.curve->isAslant = reading.curve->isAslant || placement.isAslant;
        if (placement.clipped != nullptr) RefuseClipped(*placement.clipped);
        points_ += reading.curve->points.size();
        if (points_ > kMostPoints) {
            Refuse(
                source_, entity.line, "the curves up to here take more than a million points",
                "keep only the section in the drawing, or name its layers with --layer; a larger "
                "chord tolerance helps only where circles take more than 192 points");
        }
        curves_.push_back(std::move(*reading.curve));
    }

    void See(const Entity& entity, const CurveReading& reading) {
        if (!reading.problem.empty()) {
            notes_.Count(std::string(entity.kind) + " " + reading.problem + " left out",
                         entity.line);
            return;
        }
        if (!reading.remark.empty()) notes_.Count(reading.remark, entity.line);
        lowest_ = std::min(lowest_, reading.lowest);
        highest_ = std::max(highest_, reading.highest);
    }

    [[noreturn]] void RefuseClipped(const Entity& insert) const {
        Refuse(source_, insert.line,
               "INSERT: it is clipped (XCLIP), so a part of its block is not shown",
               "explode it and trim its curves, or, if it is no part of the section, leave it out: "
               "hide its layer or name the section's with --layer");
    }

    const Drawing& drawing_;
    const LayerChoice& layers_;
    double tolerance_;
    const std::string& source_;
    Notes& notes_;
    std::vector<Curve> curves_;
    std::size_t points_ = 0;
    double lowest_ = std::numeric_limits<double>::infinity();
    double highest_ = -std::numeric_limits<double>::infinity();
};

}  // namespace

std::vector<Curve> CollectCurves(const Drawing& drawing, const LayerChoice& layers,
                                 double tolerance, const std::string& source, Notes& notes) {
    return Collector(drawing, layers, tolerance, source, notes).Collect();
}

}  // namespace halvorn::engine::dxf
