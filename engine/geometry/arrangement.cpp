#include "geometry/arrangement.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>

#include "geometry/outline_contacts.h"
#include "geometry/ring_area.h"

namespace halvorn::engine {

namespace {

// Beyond these sizes squares of coordinates leave the range of a double.
constexpr double kLargestSize = 1e150;
constexpr double kSmallestSize = 1e-150;

// Coordinates this many sizes from the origin are moved; nearer ones stay, so that no bit of them
// changes.
constexpr double kFarFromOrigin = 16.0;

// Coordinates smaller than this in the frame are 0: their products would leave the range in which
// the predicates are exact.
constexpr double kLeastCoordinate = 1e-30;

Point WithoutTraces(const Point& p) {
    return {std::fabs(p.x) < kLeastCoordinate ? 0.0 : p.x,
            std::fabs(p.y) < kLeastCoordinate ? 0.0 : p.y};
}

// No section has as many crossings; outlines that have are noise.
constexpr std::size_t kMostOutlineCrossings = 100000;

struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void Add(double value) {
        // A NaN makes the box one, too.
        low = value >= low ? low : value;
        high = value <= high ? high : value;
    }
    double Length() const { return high - low; }
    double Middle() const { return low + 0.5 * (high - low); }
};

struct Extents {
    Extent x;
    Extent y;

    void Add(const Points& points) {
        for (const Point& point : points) {
            x.Add(point.x);
            y.Add(point.y);
        }
    }
    double Size() const { return std::max(x.Length(), y.Length()); }
};

Frame FrameOf(std::span<const WeightedRing> rings) {
    Extents box;
    bool isFinite = true;
    for (const WeightedRing& ring : rings) {
        for (const Point& point : *ring.ring) {
            isFinite = isFinite && std::isfinite(point.x) && std::isfinite(point.y);
        }
        box.Add(*ring.ring);
    }
    if (!isFinite) throw ArrangementError("a coordinate is not a finite number");
    const double size = box.Size();
    if (!(size > kSmallestSize)) throw ArrangementError("all points lie in one place");
    if (!(size < kLargestSize)) throw ArrangementError("the coordinates are too large");
    Frame frame;
    const auto origin = [&](const Extent& side) {
        return std::fabs(side.Middle()) > kFarFromOrigin * size ? side.Middle() : 0.0;
    };
    frame.origin = {origin(box.x), origin(box.y)};
    std::frexp(size, &frame.exponent);
    return frame;
}

// Along a Hilbert curve over the square, neighbours in the order are neighbours in the plane.
std::uint64_t HilbertOrder(const Point& point, const Point& low, double size) {
    constexpr std::uint32_t kSteps = 1U << 16U;
    const auto cell = [&](double offset) {
        const double scaled = offset / size * (kSteps - 1);
        return static_cast<std::uint32_t>(std::clamp(scaled, 0.0, kSteps - 1.0));
    };
    std::uint32_t x = cell(point.x - low.x);
    std::uint32_t y = cell(point.y - low.y);
    std::uint64_t order = 0;
    for (std::uint32_t s = kSteps / 2; s > 0; s /= 2) {
        const std::uint32_t right = (x & s) != 0 ? 1 : 0;
        const std::uint32_t top = (y & s) != 0 ? 1 : 0;
        order += static_cast<std::uint64_t>(s) * s * ((3 * right) ^ top);
        if (top == 0) {
            if (right == 1) {
                x = kSteps - 1 - x;
                y = kSteps - 1 - y;
            }
            std::swap(x, y);
        }
    }
    return order;
}

// The order in which points are inserted: rounds that double in number, each along the Hilbert
// curve (N. Amenta, S. Choi, G. Rote 2003), so that walks and flips stay short for any input.
std::vector<Index> InsertionOrder(const std::vector<Point>& points, double size) {
    Point low = points.front();
    for (const Point& point : points) low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    struct Entry {
        int round;
        std::uint64_t place;
        Index vertex;
    };
    std::vector<Entry> entries;
    entries.reserve(points.size());
    std::uint64_t random = 0x9E3779B97F4A7C15ULL;
    for (std::size_t i = 0; i < points.size(); ++i) {
        random = random * 6364136223846793005ULL + 1442695040888963407ULL;
        int round = 0;
        for (std::uint64_t bits = random >> 33U; (bits & 1U) != 0 && round < 30; bits >>= 1U)
            ++round;
        entries.push_back({-round, HilbertOrder(points[i], low, size), static_cast<Index>(i)});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.round, a.place, a.vertex) < std::tie(b.round, b.place, b.vertex);
    });
    std::vector<Index> order;
    order.reserve(entries.size());
    for (const Entry& entry : entries) order.push_back(entry.vertex);
    return order;
}

}  // namespace

Point Frame::ToFrame(const Point& p) const {
    return {std::ldexp(p.x - origin.x, -exponent), std::ldexp(p.y - origin.y, -exponent)};
}

Point Frame::FromFrame(const Point& p) const {
    return {origin.x + std::ldexp(p.x, exponent), origin.y + std::ldexp(p.y, exponent)};
}

double Frame::LengthFromFrame(double length) const {
    return std::ldexp(length, exponent);
}

FramedOutlines FrameOutlines(std::span<const WeightedRing> rings) {
    FramedOutlines framed;
    framed.frame = FrameOf(rings);
    const Frame& frame = framed.frame;
    const double scale = std::ldexp(1.0, -frame.exponent);
    Extents box;
    framed.rings.reserve(rings.size());
    for (const WeightedRing& ring : rings) {
        Points& points = framed.rings.emplace_back();
        points.reserve(ring.ring->size());
        for (const Point& point : *ring.ring) {
            points.push_back(WithoutTraces(scale * (point - frame.origin)));
        }
        box.Add(points);
    }
    framed.size = box.Size();
    return framed;
}

class ArrangementBuilder {
public:
    explicit ArrangementBuilder(Arrangement& result) : result_(result), mesh_(result.mesh_) {}

    void Arrange(std::span<const WeightedRing> rings) {
        const FramedOutlines framed = FrameOutlines(rings);
        result_.frame_ = framed.frame;
        result_.size_ = framed.size;
        const OutlinePaths paths = JoinContacts(framed.rings, framed.size);
        InsertPoints(paths.points);
        for (std::size_t r = 0; r < rings.size(); ++r) {
            const int turn = TwiceArea(framed.rings[r]) < 0.0 ? -1 : 1;
            InsertPath(paths.paths[r],
                       {mesh_.MakeOutline(static_cast<Index>(r), turn), turn * rings[r].weight});
        }
        SumWindings();
        result_.moved_ = Told(paths.moved);
        result_.nearMisses_ = Told(paths.nearMisses);
    }

    void ArrangeAsTheyAre(std::span<const Points* const> rings) {
        std::vector<Point> points;
        Extents box;
        for (const Points* const ring : rings) {
            points.insert(points.end(), ring->begin(), ring->end());
            box.Add(*ring);
        }
        result_.size_ = box.Size();
        InsertPoints(points);
        Index first = 0;
        for (std::size_t r = 0; r < rings.size(); ++r) {
            std::vector<Index> path(rings[r]->size());
            std::iota(path.begin(), path.end(), first);
            first += static_cast<Index>(path.size());
            InsertPath(path, {mesh_.MakeOutline(static_cast<Index>(r), 1), 1});
        }
        SumWindings();
    }

private:
    struct Segment {
        Index from;
        Index to;
        Constraint constraint;
    };

    void InsertPoints(const std::vector<Point>& points) {
        vertices_.resize(points.size());
        for (const Index i : InsertionOrder(points, result_.size_)) {
            const auto at = static_cast<std::size_t>(i);
            vertices_[at] = mesh_.Insert(points[at]);
        }
    }

    void InsertPath(const std::vector<Index>& path, const Constraint& constraint) {
        if (path.size() < 2) return;
        for (std::size_t k = 0; k < path.size(); ++k) {
            const Index from = vertices_[static_cast<std::size_t>(path[k])];
            const Index to =
                vertices_[static_cast<std::size_t>(path[k + 1 == path.size() ? 0 : k + 1])];
            segments_.push_back({from, to, constraint});
            InsertSegments();
        }
    }

    void InsertSegments() {
        while (!segments_.empty()) {
            const Segment segment = segments_.back();
            segments_.pop_back();
            if (segment.from == segment.to) continue;
            const Triangulation::Meeting meeting = mesh_.Advance(segment.from, segment.to);
            if (meeting.vertex == kNone) {
                Cross(segment, meeting.crossed);
                continue;
            }
            mesh_.AddConstraint(*mesh_.FindEdge(segment.from, meeting.vertex), segment.constraint);
            segments_.push_back({meeting.vertex, segment.to, segment.constraint});
        }
    }

    // Leads both outlines through their common point. Winding sums stay consistent whatever
    // rounding does to it, since both stay closed.
    void Cross(const Segment& segment, EdgeRef crossed) {
        const Triangle& triangle = mesh_.At(crossed.triangle);
        const Index c = triangle.vertices[static_cast<std::size_t>((crossed.edge + 1) % 3)];
        const Index d = triangle.vertices[static_cast<std::size_t>((crossed.edge + 2) % 3)];
        const Point place = Intersection(segment, c, d);
        const Constraint taken = mesh_.TakeConstraint(crossed);
        if (++crossings_ > kMostOutlineCrossings) {
            const auto [first, second] = OutlinesAt(segment.constraint.head, taken.head);
            throw ArrangementError("the outlines cross in more than " +
                                       std::to_string(kMostOutlineCrossings) + " places",
                                   first, second);
        }
        const Index own = EndNear(place, {segment.from, segment.to, c, d});
        Index through = own;
        if (own == kNone) {
            through = mesh_.NearVertex(place, kMergeDistance * result_.size_);
            if (through == kNone) through = mesh_.Insert(place);
            Tell(place, segment.constraint.head, taken.head);
        }
        segments_.push_back({c, through, taken});
        segments_.push_back({through, d, taken});
        segments_.push_back({segment.from, through, segment.constraint});
        segments_.push_back({through, segment.to, segment.constraint});
    }

    Point Intersection(const Segment& segment, Index c, Index d) const {
        const Point& a = mesh_.PointAt(segment.from);
        const Point along = mesh_.PointAt(segment.to) - a;
        const Point edge = mesh_.PointAt(d) - mesh_.PointAt(c);
        const double share = engine::Cross(mesh_.PointAt(c) - a, edge) / engine::Cross(along, edge);
        return WithoutTraces(a + std::clamp(share, 0.0, 1.0) * along);
    }

    Index EndNear(const Point& place, std::initializer_list<Index> ends) const {
        Index nearest = kNone;
        double least = kMergeDistance * result_.size_;
        for (const Index end : ends) {
            const Point offset = mesh_.PointAt(end) - place;
            const double distance = std::hypot(offset.x, offset.y);
            if (distance > least) continue;
            least = distance;
            nearest = end;
        }
        return nearest;
    }

    std::pair<Index, Index> OutlinesAt(Index head, Index otherHead) const {
        return std::minmax(
            {mesh_.Outlines()[Slot(head)].outline, mesh_.Outlines()[Slot(otherHead)].outline});
    }

    void Tell(const Point& place, Index head, Index otherHead) {
        const auto [first, second] = OutlinesAt(head, otherHead);
        result_.crossings_.push_back({first, second, result_.frame_.FromFrame(place)});
    }

    void SumWindings() {
        constexpr int kUnknown = std::numeric_limits<int>::min();
        result_.sums_.assign(mesh_.Triangles().size(), kUnknown);
        std::vector<Index> stack = {mesh_.TriangleAt(0)};
        result_.sums_[static_cast<std::size_t>(stack[0])] = 0;
        while (!stack.empty()) {
            const Index from = stack.back();
            stack.pop_back();
            const Triangle& triangle = mesh_.At(from);
            for (std::size_t i = 0; i < 3; ++i) {
                const Index to = triangle.neighbours[i];
                if (to == kNone) continue;
                int& sum = result_.sums_[static_cast<std::size_t>(to)];
                if (sum != kUnknown) continue;
                sum = result_.SumAt(from) - triangle.edges[i].step;
                stack.push_back(to);
            }
        }
    }

    std::vector<OutlineContact> Told(const std::vector<Contact>& contacts) const {
        std::vector<OutlineContact> told;
        told.reserve(contacts.size());
        for (const Contact& contact : contacts) {
            told.push_back({contact.of, contact.to, result_.frame_.FromFrame(contact.place),
                            result_.frame_.LengthFromFrame(contact.distance)});
        }
        return told;
    }

    Arrangement& result_;
    Triangulation& mesh_;
    std::vector<Index> vertices_;  // of the mesh, for each point of the paths
    std::vector<Segment> segments_;
    std::size_t crossings_ = 0;
};

Arrangement::Arrangement(std::span<const WeightedRing> rings) {
    ArrangementBuilder(*this).Arrange(rings);
}

Arrangement Arrangement::OfTouchingRings(std::span<const Points* const> rings) {
    Arrangement arrangement;
    ArrangementBuilder(arrangement).ArrangeAsTheyAre(rings);
    return arrangement;
}

}  // namespace halvorn::engine
