#include "figure/hatch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace halvorn::engine::figure {

namespace {

// Where an edge of a ring crosses a hatch line.
struct Crossing {
    double at;  // along the line
    std::size_t area;
    int winding;  // what the ring's winding number changes by
};

// The hatch lines are a + b = k * spacing in coordinates whose other axis is b - a: (x, y) for
// rising lines (y points down), (x, -y) for falling ones.
class Hatcher {
public:
    Hatcher(const std::vector<Area>& areas, double spacing, bool isRising)
        : areas_(areas), spacing_(spacing), flip_(isRising ? 1.0 : -1.0) {
        FindRange();
        for (std::size_t i = 0; i < areas.size(); ++i) {
            const std::vector<Spot>& spots = areas[i].spots;
            for (std::size_t k = 0; k < spots.size(); ++k) {
                AddEdge(i, spots[k], spots[(k + 1) % spots.size()]);
            }
        }
    }

    // The stretches of all lines where the weight passes the test.
    template <typename Test>
    std::vector<std::pair<Spot, Spot>> Stretches(Test isWanted) {
        std::vector<std::pair<Spot, Spot>> stretches;
        for (std::size_t k = 0; k < lines_.size(); ++k) {
            std::vector<Crossing>& line = lines_[k];
            std::sort(line.begin(), line.end(),
                      [](const Crossing& a, const Crossing& b) { return a.at < b.at; });
            std::vector<int> windings(areas_.size(), 0);
            int weight = 0;
            for (std::size_t i = 0; i + 1 < line.size(); ++i) {
                int& winding = windings[line[i].area];
                const int sign = areas_[line[i].area].isSolid ? 1 : -1;
                if (winding != 0) weight -= sign;
                winding += line[i].winding;
                if (winding != 0) weight += sign;
                // Shorter stretches are the rounding of touching edges.
                constexpr double kShortest = 0.3;
                if (isWanted(weight) && line[i + 1].at - line[i].at > kShortest) {
                    stretches.emplace_back(SpotOn(k, line[i].at), SpotOn(k, line[i + 1].at));
                }
            }
        }
        return stretches;
    }

private:
    double Across(const Spot& spot) const { return spot.x + flip_ * spot.y; }
    double Along(const Spot& spot) const { return flip_ * spot.y - spot.x; }

    void FindRange() {
        double low = 0.0;
        double high = 0.0;
        for (const Area& area : areas_) {
            for (const Spot& spot : area.spots) {
                low = std::min(low, Across(spot));
                high = std::max(high, Across(spot));
            }
        }
        first_ = std::ceil(low / spacing_);
        lines_.resize(static_cast<std::size_t>(std::floor(high / spacing_) - first_ + 1.0));
    }

    void AddEdge(std::size_t area, const Spot& from, const Spot& to) {
        const double start = Across(from);
        const double end = Across(to);
        // Half open, so that a corner on a line counts once.
        const double low = std::ceil(std::min(start, end) / spacing_);
        const double high = std::ceil(std::max(start, end) / spacing_);
        for (double k = low; k < high; k += 1.0) {
            const double t = (k * spacing_ - start) / (end - start);
            const double at = Along(from) + t * (Along(to) - Along(from));
            const double index = k - first_;
            if (index < 0.0 || index >= static_cast<double>(lines_.size())) continue;
            lines_[static_cast<std::size_t>(index)].push_back({at, area, end > start ? 1 : -1});
        }
    }

    Spot SpotOn(std::size_t line, double at) const {
        const double across = (first_ + static_cast<double>(line)) * spacing_;
        return {0.5 * (across - at), 0.5 * flip_ * (across + at)};
    }

    const std::vector<Area>& areas_;
    double spacing_;
    double flip_;
    double first_ = 0.0;
    std::vector<std::vector<Crossing>> lines_;
};

}  // namespace

Hatching HatchedParts(const std::vector<Area>& areas, double spacing) {
    const auto isDoubled = [](int weight) { return weight > 1; };
    const auto isMissing = [](int weight) { return weight < 0; };
    return {Hatcher(areas, spacing, true).Stretches(isDoubled),
            Hatcher(areas, spacing, false).Stretches(isMissing)};
}

}  // namespace halvorn::engine::figure
