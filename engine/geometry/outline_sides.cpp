#include "geometry/outline_sides.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>
#include <numeric>
#include <utility>

#include "geometry/arrangement.h"
#include "geometry/faces.h"
#include "geometry/lengths.h"
#include "geometry/rings.h"
#include "kernel/box_tree.h"

namespace halvorn::engine {

namespace {

// Of the diagonal of the smaller ring's box [-]; see the header.
constexpr double kTouching = 1e-4;

// Of the diagonal of all that is arranged together [-]. To rings smaller than this, the distance
// within which the arrangement moves vertices, 1e-6 of the size, is more than touching.
constexpr double kSmall = 1e-2;

bool WindsRound(const Points& ring, const Point& point) {
    bool winds = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Point& a = ring[i];
        const Point& b = ring[i + 1 == ring.size() ? 0 : i + 1];
        if ((a.y > point.y) == (b.y > point.y)) continue;
        if ((Cross(b - a, point - a) > 0.0) == (b.y > a.y)) winds = !winds;
    }
    return winds;
}

bool IsOdd(int winding) {
    return winding % 2 != 0;
}

}  // namespace

// Rings that are arranged together; outlines go by their places in `members`.
class OutlineSides::Group {
public:
    Group(std::vector<std::size_t> members, const std::vector<WeightedRing>& rings)
        : members_(std::move(members)),
          arrangement_(rings),
          mesh_(arrangement_.Mesh()),
          faces_(FacesOf(arrangement_, &faceOf_)),
          edgeCounts_(rings.size(), 0),
          facesBeside_(rings.size()) {
        GatherEdges();
        BuildTree();
    }

    const std::vector<std::size_t>& Members() const { return members_; }

    // The outline came down to one point, as one far smaller than the others does.
    bool IsLost(std::size_t outline) const { return edgeCounts_[outline] == 0; }

    std::vector<std::size_t> Around(std::size_t outline) const {
        std::vector<std::size_t> around;
        for (const Index face : facesBeside_[outline]) {
            if (face == kNone) continue;
            for (const auto& [ring, winding] : faces_[Slot(face)].windings) {
                if (IsOdd(winding)) around.push_back(members_[Slot(ring)]);
            }
        }
        return around;
    }

    // On neither where faces on both sides of the ring lie beside the outline: they touch or cross.
    Sides ByFaces(std::size_t outline, std::size_t ring) const {
        const std::vector<Index>& beside = facesBeside_[outline];
        const auto within = std::count_if(beside.begin(), beside.end(),
                                          [&](Index face) { return IsWithin(face, ring); });
        return {static_cast<std::size_t>(within) == beside.size(), within == 0};
    }

    // Looks at each edge of the outline that leaves the neighbourhood of the ring.
    // `common` holds what their boxes have in common.
    Sides ByEdges(std::size_t outline, std::size_t ring, const Box& common, double touching) const {
        const double room = std::ldexp(touching, -arrangement_.Coordinates().exponent);
        Sides sides;
        std::size_t count = 0;
        const auto look = [&](const EdgeRef& edge) {
            ++count;
            bool& runs =
                IsWithin(faceOf_[Slot(edge.triangle)], ring) ? sides.inside : sides.outside;
            runs = runs || RunsClear(edge, ring, room);
        };
        const Point low = arrangement_.Coordinates().ToFrame({common.left, common.bottom});
        const Point high = arrangement_.Coordinates().ToFrame({common.right, common.top});
        VisitNear(low, high, room, outline, look);
        // Edges that do not come near the ring's box are outside.
        sides.outside = sides.outside || count < edgeCounts_[outline];
        return sides;
    }

private:
    bool IsWithin(Index face, std::size_t ring) const {
        if (face == kNone) return false;
        const auto& windings = faces_[Slot(face)].windings;
        const std::pair<Index, int> first = {static_cast<Index>(ring),
                                             std::numeric_limits<int>::min()};
        const auto found = std::lower_bound(windings.begin(), windings.end(), first);
        return found != windings.end() && found->first == first.first && IsOdd(found->second);
    }

    std::pair<Point, Point> EndsOf(const EdgeRef& edge) const {
        const auto& vertices = mesh_.At(edge.triangle).vertices;
        return {mesh_.PointAt(vertices[Slot((edge.edge + 1) % 3)]),
                mesh_.PointAt(vertices[Slot((edge.edge + 2) % 3)])};
    }

    // The outlines along an edge, some perhaps several times.
    template <typename Visit>
    void VisitAlong(const EdgeRef& edge, const Visit& visit) const {
        Index link = mesh_.At(edge.triangle).edges[Slot(edge.edge)].head;
        for (; link != kNone; link = mesh_.Outlines()[Slot(link)].next) {
            visit(Slot(mesh_.Outlines()[Slot(link)].outline));
        }
    }

    bool RunsAlong(const EdgeRef& edge, std::size_t ring) const {
        bool runsAlong = false;
        VisitAlong(edge, [&](std::size_t outline) { runsAlong = runsAlong || outline == ring; });
        return runsAlong;
    }

    void GatherEdges() {
        std::vector<std::size_t> last(edgeCounts_.size(), 0);
        for (Index t = 0; Slot(t) < mesh_.Triangles().size(); ++t) {
            for (int i = 0; i < 3; ++i) {
                const Index beyond = mesh_.At(t).neighbours[Slot(i)];
                if (beyond < t || mesh_.At(t).edges[Slot(i)].head == kNone) continue;
                edges_.push_back({t, i});
                VisitAlong(edges_.back(), [&](std::size_t outline) {
                    if (last[outline] != edges_.size()) ++edgeCounts_[outline];
                    last[outline] = edges_.size();
                    std::vector<Index>& faces = facesBeside_[outline];
                    faces.insert(faces.end(), {faceOf_[Slot(t)], faceOf_[Slot(beyond)]});
                });
            }
        }
        for (std::vector<Index>& faces : facesBeside_) {
            std::sort(faces.begin(), faces.end());
            faces.erase(std::unique(faces.begin(), faces.end()), faces.end());
        }
    }

    void BuildTree() {
        CArray<KBox> boxes(static_cast<KBox*>(std::calloc(edges_.size() + 1, sizeof(KBox))));
        if (!boxes) throw std::bad_alloc();
        for (std::size_t i = 0; i < edges_.size(); ++i) {
            const auto [a, b] = EndsOf(edges_[i]);
            boxes[i] = KBoxOfSegment({a.x, a.y}, {b.x, b.y}, 0.0);
        }
        if (KBuildBoxTree(&tree_, std::move(boxes), static_cast<int>(edges_.size())) != 0) {
            throw std::bad_alloc();
        }
    }

    // Calls back with the edges along an outline whose boxes come near the box of two points.
    template <typename Visit>
    void VisitNear(const Point& a, const Point& b, double room, std::size_t outline,
                   const Visit& visit) const {
        const KBox around = KBoxOfSegment({a.x, a.y}, {b.x, b.y}, room);
        KVisitBoxTree(
            tree_, [&](const KBox& box) { return KBoxesMeet(box, around); },
            [&](int item) {
                const EdgeRef& edge = edges_[Slot(item)];
                if (RunsAlong(edge, outline)) visit(edge);
                return false;
            });
    }

    // Whether an edge that does not cross the ring leaves its neighbourhood: whether the middle of
    // a stretch between vertices of the ring that are near the edge lies clear of the ring.
    bool RunsClear(const EdgeRef& edge, std::size_t ring, double room) const {
        const auto [from, to] = EndsOf(edge);
        const Point start = from;
        const Point along = to - from;
        const double square = Dot(along, along);
        std::vector<double> feet = {0.0, 1.0};
        VisitNear(from, to, room, ring, [&](const EdgeRef& other) {
            const auto [a, b] = EndsOf(other);
            for (const Point& end : {a, b}) {
                if (DistanceToSegment(end, start, start + along) > room) continue;
                feet.push_back(std::clamp(Dot(end - start, along) / square, 0.0, 1.0));
            }
        });
        std::sort(feet.begin(), feet.end());
        for (std::size_t k = 0; k + 1 < feet.size(); ++k) {
            const Point middle = start + 0.5 * (feet[k] + feet[k + 1]) * along;
            bool isNear = false;
            VisitNear(middle, middle, room, ring, [&](const EdgeRef& other) {
                const auto [a, b] = EndsOf(other);
                isNear = isNear || DistanceToSegment(middle, a, b) <= room;
            });
            if (!isNear) return true;
        }
        return false;
    }

    std::vector<std::size_t> members_;
    Arrangement arrangement_;
    const Triangulation& mesh_;
    std::vector<Index> faceOf_;  // of each triangle: its face, kNone outside
    std::vector<Face> faces_;
    std::vector<EdgeRef> edges_;                   // all along which an outline runs, once
    std::vector<std::size_t> edgeCounts_;          // of each outline, without repetition
    std::vector<std::vector<Index>> facesBeside_;  // of each outline, on both sides, sorted
    KBoxTree tree_;                                // of `edges_`
};

OutlineSides::OutlineSides(std::vector<const Points*> rings) : rings_(std::move(rings)) {
    shapes_.reserve(rings_.size());
    for (const Points* ring : rings_) {
        shapes_.push_back({Box(*ring), AreaOf(*ring), Perimeter(*ring), {}});
    }
    std::vector<std::size_t> all(rings_.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    Arrange(all);
}

OutlineSides::~OutlineSides() = default;

void OutlineSides::Arrange(const std::vector<std::size_t>& members) {
    for (const auto& column : SplitAtGaps(members, &Box::left, &Box::right)) {
        for (const auto& part : SplitAtGaps(column, &Box::bottom, &Box::top)) ArrangeTogether(part);
    }
}

// Splits rings wherever there is a gap between the extents of their boxes along one axis.
std::vector<std::vector<std::size_t>> OutlineSides::SplitAtGaps(std::vector<std::size_t> members,
                                                                double Box::*low,
                                                                double Box::*high) const {
    std::sort(members.begin(), members.end(), [&](std::size_t a, std::size_t b) {
        return shapes_[a].box.*low < shapes_[b].box.*low;
    });
    std::vector<std::vector<std::size_t>> parts;
    double reach = 0.0;
    for (const std::size_t member : members) {
        const Box& box = shapes_[member].box;
        if (parts.empty() || box.*low > reach) {
            parts.emplace_back();
            reach = box.*high;
        }
        parts.back().push_back(member);
        reach = std::max(reach, box.*high);
    }
    return parts;
}

void OutlineSides::ArrangeTogether(const std::vector<std::size_t>& members) {
    if (members.size() < 2) return;
    std::vector<WeightedRing> rings;
    Box box = shapes_[members[0]].box;
    for (const std::size_t member : members) {
        rings.push_back({rings_[member], 1});
        box.Add(shapes_[member].box);
    }
    try {
        groups_.push_back(std::make_unique<Group>(members, rings));
    } catch (const ArrangementError& error) {
        if (error.First() == kNone) throw;
        throw ArrangementError(error.what(), static_cast<Index>(members[Slot(error.First())]),
                               static_cast<Index>(members[Slot(error.Second())]));
    }
    std::vector<std::size_t> small;
    for (std::size_t i = 0; i < members.size(); ++i) {
        Shape& shape = shapes_[members[i]];
        shape.places.emplace_back(groups_.back().get(), i);
        if (shape.box.Diagonal() < kSmall * box.Diagonal()) small.push_back(members[i]);
    }
    if (small.size() < members.size()) Arrange(small);
}

std::vector<std::size_t> OutlineSides::Around(std::size_t outline) const {
    std::vector<std::size_t> around;
    for (const auto& [group, place] : shapes_[outline].places) {
        const std::vector<std::size_t> found =
            group->IsLost(place) ? group->Members() : group->Around(place);
        around.insert(around.end(), found.begin(), found.end());
    }
    std::sort(around.begin(), around.end());
    around.erase(std::unique(around.begin(), around.end()), around.end());
    std::erase(around, outline);
    return around;
}

Sides OutlineSides::Of(std::size_t outline, std::size_t ring) const {
    const Shape& own = shapes_[outline];
    const Shape& other = shapes_[ring];
    std::size_t level = 0;
    while (level < std::min(own.places.size(), other.places.size()) &&
           own.places[level].first == other.places[level].first) {
        ++level;
    }
    const double touching = kTouching * std::min(own.box.Diagonal(), other.box.Diagonal());
    if (level == 0 || own.box.IsApartFrom(other.box, touching)) return {false, true};
    const auto& [group, place] = own.places[level - 1];
    const std::size_t otherPlace = other.places[level - 1].second;
    if (group->IsLost(place)) {
        const bool isWithin = WindsRound(*rings_[ring], rings_[outline]->front());
        return {isWithin, !isWithin};
    }
    const Sides sides = group->ByFaces(place, otherPlace);
    // One that lies on the other all round without meeting it has nearly its area.
    const bool isLikeOther =
        std::fabs(own.area - other.area) <= 2.0 * touching * (own.perimeter + other.perimeter);
    if (!sides.LieOn() && !isLikeOther) return sides;
    return group->ByEdges(place, otherPlace, own.box.Common(other.box), touching);
}

}  // namespace halvorn::engine
