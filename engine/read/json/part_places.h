/// @file part_places.h
/// Where the parts of a section file go.
#ifndef HALVORN_ENGINE_READ_JSON_PART_PLACES_H
#define HALVORN_ENGINE_READ_JSON_PART_PLACES_H

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/placement.h"
#include "read/json/json_node.h"

namespace halvorn::engine {

/// The keys that say where a part goes.
inline constexpr std::array<std::string_view, 10> kPlaceKeys = {
    "at", "mirror", "rotate", "move", "on", "side", "touch", "align", "gap", "repeat"};

/// A part that has no place yet.
struct UnplacedPart {
    std::vector<Element> elements;   ///< in its own coordinates, as solids; the first has its name
    bool hasOwnCoordinates = false;  ///< else its lower left corner is its origin
    bool isHole = false;             ///< it will subtract
};

/// Returns how a part is mirrored and rotated, and its "move"; the origin is not known yet.
Placement ReadTurn(const Node& part);

/// Places the parts of a file one after the other.
class PartPlaces {
public:
    /// @param parts  all of them; must outlive this
    explicit PartPlaces(const Node& parts) : parts_(&parts) {}

    /// Places the next part, all of its copies when it is repeated.
    /// @throws InputError
    void PlaceNext(const Node& part, UnplacedPart unplaced);

    /// Returns the elements of all parts in their order where they lie in the section.
    std::vector<Element> Take() { return std::move(elements_); }

private:
    // What has a name: some of the elements, one after the other.
    struct Named {
        std::size_t first;
        std::size_t count;
        bool isHole;
    };

    void SetOnNamed(const Node& part, std::vector<Element>& elements) const;
    const Named& NamedBy(const Node& on) const;
    std::string FirstNames(bool arePlaces) const;
    // The part of a name among those without a place, this one included.
    std::optional<std::size_t> LaterPart(const std::string& name) const;
    // The circle in which a later part comes back to this one; empty when it does not, or by many.
    std::string CircleThrough(std::size_t next) const;
    [[noreturn]] void FailToFind(const Node& on, const std::string& name) const;

    const Node* parts_;
    std::size_t placed_ = 0;  ///< how many parts have their place
    std::vector<Element> elements_;
    std::multimap<std::string, Named> named_;
};

}  // namespace halvorn::engine

#endif
