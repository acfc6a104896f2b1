#include "read/json/part_places.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "model/outlines.h"
#include "model/setting.h"
#include "read/json/section_nodes.h"

namespace halvorn::engine {

namespace {

// How many names a message lists.
constexpr std::size_t kMostNames = 5;

// Which point of a part "move" places.
struct Origin {
    enum class Kind {
        OwnCoordinates,
        Corner,    // of the box before mirroring and rotating
        Centroid,  // the same before and after
        BoxPoint   // after them
    };
    Kind kind = Kind::OwnCoordinates;
    Along x = Along::Low;
    Along y = Along::Low;
};

Origin ReadOrigin(const Node& part, bool hasOwnCoordinates) {
    using Kind = Origin::Kind;
    if (!part.Has("at")) return {hasOwnCoordinates ? Kind::OwnCoordinates : Kind::Corner};
    return part.At("at").Choice<Origin>({
        {"corner", {Kind::Corner}},
        {"centroid", {Kind::Centroid}},
        {"bottom_left", {Kind::BoxPoint, Along::Low, Along::Low}},
        {"bottom_centre", {Kind::BoxPoint, Along::Middle, Along::Low}},
        {"bottom_right", {Kind::BoxPoint, Along::High, Along::Low}},
        {"middle_left", {Kind::BoxPoint, Along::Low, Along::Middle}},
        {"centre", {Kind::BoxPoint, Along::Middle, Along::Middle}},
        {"middle_right", {Kind::BoxPoint, Along::High, Along::Middle}},
        {"top_left", {Kind::BoxPoint, Along::Low, Along::High}},
        {"top_centre", {Kind::BoxPoint, Along::Middle, Along::High}},
        {"top_right", {Kind::BoxPoint, Along::High, Along::High}},
    });
}

// The part's point that is its origin before it is mirrored and rotated.
Point OwnOrigin(const Node& part, const Origin& origin, const std::vector<Element>& elements) {
    if (origin.kind == Origin::Kind::OwnCoordinates) return {0.0, 0.0};
    if (origin.kind != Origin::Kind::Centroid) return LowerLeftCorner(elements);
    const Point centre = CentreOfGravity(elements);
    if (!std::isfinite(centre.x) || !std::isfinite(centre.y)) {
        part.At("at").Fail("the part has no area and so no centroid", "write \"corner\"");
    }
    return centre;
}

// Mirrors and rotates about the part's lower left corner.
void PlaceTurned(const Node& part, std::vector<Element>& elements) {
    Placement turn = ReadTurn(part);
    turn.origin = LowerLeftCorner(elements);
    turn.move = {0.0, 0.0};
    Place(turn, elements);
}

void PlaceAt(const Node& part, const Origin& origin, std::vector<Element>& elements) {
    if (origin.kind == Origin::Kind::BoxPoint) {
        PlaceTurned(part, elements);
        const Point move = ReadTurn(part).move;
        MovePoint(PointOfBox(BoxOf(elements), origin.x, origin.y), move, elements);
        return;
    }
    Placement placement = ReadTurn(part);
    placement.origin = OwnOrigin(part, origin, elements);
    Place(placement, elements);
}

struct Row {
    std::size_t count = 1;
    Point step = {0.0, 0.0};
};

std::size_t ReadCount(const Node& node, std::size_t pointCount) {
    const double count = node.Number();
    if (!(count >= 1.0 && count <= static_cast<double>(kMostCopies) &&
          count == std::floor(count))) {
        node.Fail("must be a whole number from 1 to " + std::to_string(kMostCopies) + ", found " +
                      ShortNumber(count),
                  "write how many there are, the first included");
    }
    const auto whole = static_cast<std::size_t>(count);
    if (whole * pointCount > kMostPointsOfRow) {
        node.Fail("the copies have " + std::to_string(whole * pointCount) +
                      " points together, more than " + std::to_string(kMostPointsOfRow),
                  "make \"chord_tolerance\" larger, or the row shorter");
    }
    return whole;
}

Row ReadRow(const Node& node, const std::vector<Element>& elements) {
    node.RequireKeys({"count", "step"});
    const Row row = {ReadCount(node.At("count"), PointCount(elements)), ReadPoint(node.At("step"))};
    if (row.count > 1 && row.step == Point{0.0, 0.0}) {
        node.At("step").Fail("all copies would lie in one place",
                             "write how far each is from the one before, [x, y]");
    }
    return row;
}

// Puts the number of a copy behind the part's name, which begins the label of each of its elements.
void NumberLabels(std::size_t nameLength, std::size_t copySize, std::vector<Element>& row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        std::string& label = row[i].label;
        label.insert(std::min(nameLength, label.size()), " " + std::to_string(i / copySize + 1));
    }
}

Along ReadAlign(const Node& part, Side side) {
    if (!part.Has("align")) return Along::Middle;
    const Node align = part.At("align");
    if (side == Side::Left || side == Side::Right) {
        return align.Choice<Along>(
            {{"bottom", Along::Low}, {"centre", Along::Middle}, {"top", Along::High}});
    }
    return align.Choice<Along>(
        {{"left", Along::Low}, {"centre", Along::Middle}, {"right", Along::High}});
}

Setting ReadSetting(const Node& part) {
    Setting setting;
    setting.side = part.At("side").Choice<Side>({{"top", Side::Top},
                                                 {"bottom", Side::Bottom},
                                                 {"left", Side::Left},
                                                 {"right", Side::Right}});
    if (part.Has("touch")) {
        setting.touch =
            part.At("touch").Choice<Touch>({{"box", Touch::Boxes}, {"outline", Touch::Outlines}});
    }
    setting.align = ReadAlign(part, setting.side);
    if (part.Has("gap")) setting.gap = part.At("gap").Number(Sign::NotNegative);
    if (part.Has("move")) setting.shift = ReadPoint(part.At("move"));
    return setting;
}

void CheckKeysOfSetting(const Node& part, bool isHole) {
    if (!part.Has("on")) {
        for (const char* key : {"side", "touch", "align", "gap"}) {
            if (part.Has(key)) {
                part.At(key).Fail("stands without \"on\"",
                                  "add \"on\" with the name of the part that this one is set on");
            }
        }
        return;
    }
    if (part.Has("at")) {
        part.At("at").Fail("the side of the other part gives this one its place",
                           "remove \"at\" and use \"align\" or \"move\", or remove \"on\"");
    }
    if (isHole) {
        part.At("on").Fail("a hole is in a part, not on it", "place it with \"at\" and \"move\"");
    }
}

// What another part calls this one, as far as its place and its text tell.
std::string NameIn(const Node& part) {
    for (const char* key : {"name", "profile"}) {
        if (!part.Has(key)) continue;
        if (std::string name = part.At(key).Text(); !name.empty()) return name;
    }
    return part.Pointer();
}

}  // namespace

Placement ReadTurn(const Node& part) {
    Placement placement;
    if (part.Has("mirror")) {
        placement.mirror =
            part.At("mirror").Choice<Mirror>({{"x", Mirror::AboutX}, {"y", Mirror::AboutY}});
    }
    if (part.Has("rotate")) placement.rotation = part.At("rotate").Number();
    if (part.Has("move")) placement.move = ReadPoint(part.At("move"));
    return placement;
}

void PartPlaces::PlaceNext(const Node& part, UnplacedPart unplaced) {
    CheckKeysOfSetting(part, unplaced.isHole);
    std::vector<Element> elements = std::move(unplaced.elements);
    const std::string name = elements.front().label;
    const std::size_t size = elements.size();
    const bool isRow = part.Has("repeat");
    const Row row = isRow ? ReadRow(part.At("repeat"), elements) : Row();
    // A row is set on another part as a whole.
    const bool isSet = part.Has("on");
    if (isSet) {
        PlaceTurned(part, elements);
    } else {
        PlaceAt(part, ReadOrigin(part, unplaced.hasOwnCoordinates), elements);
    }
    if (isRow) {
        elements = CopiesInRow(elements, row.count, row.step);
        NumberLabels(name.size(), size, elements);
        for (Element& element : elements) element.row = name;
    }
    if (isSet) SetOnNamed(part, elements);
    if (unplaced.isHole) MakeHoles(elements);

    const std::size_t first = elements_.size();
    named_.insert({name, {first, elements.size(), unplaced.isHole}});
    for (std::size_t i = 0; isRow && i < elements.size(); i += size) {
        named_.insert({elements[i].label, {first + i, size, unplaced.isHole}});
    }
    std::move(elements.begin(), elements.end(), std::back_inserter(elements_));
    ++placed_;
}

void PartPlaces::SetOnNamed(const Node& part, std::vector<Element>& elements) const {
    const Named& named = NamedBy(part.At("on"));
    const Setting setting = ReadSetting(part);
    switch (SetOnSide(setting, std::span(elements_).subspan(named.first, named.count), elements)) {
        case SettingResult::Set:
            return;
        case SettingResult::Misses:
            part.Fail("it slides past \"" + Excerpt(part.At("on").Text()) +
                          "\": nothing of the one is opposite the other",
                      "change \"align\" or \"move\", or leave out \"touch\"");
        case SettingResult::TooMany:
            part.At("touch").Fail("the two outlines have too many points to look where they touch",
                                  "make \"chord_tolerance\" larger, or write \"box\"");
    }
}

const PartPlaces::Named& PartPlaces::NamedBy(const Node& on) const {
    const std::string name = on.Text();
    const auto [first, last] = named_.equal_range(name);
    if (first == last) FailToFind(on, name);
    const auto count = std::distance(first, last);
    if (count > 1) {
        on.Fail(std::to_string(count) + " parts before this one have the name \"" + Excerpt(name) +
                    "\"",
                "give each a \"name\" of its own");
    }
    if (first->second.isHole) {
        on.Fail("\"" + Excerpt(name) + "\" is a hole, which has no sides to set a part on",
                "name a solid part");
    }
    return first->second;
}

std::string PartPlaces::FirstNames(bool arePlaces) const {
    std::string names;
    std::size_t count = 0;
    for (auto at = named_.begin(); at != named_.end() && count < kMostNames;
         at = named_.upper_bound(at->first)) {
        if (at->first.starts_with('/') != arePlaces) continue;
        names += (count == 0 ? "\"" : ", \"") + Excerpt(at->first) + "\"";
        ++count;
    }
    return names;
}

std::optional<std::size_t> PartPlaces::LaterPart(const std::string& name) const {
    for (std::size_t i = placed_; i < parts_->Size("objects"); ++i) {
        if (NameIn((*parts_)[i]) == name) return i;
    }
    return std::nullopt;
}

// From this part by "on" from one to the next: "a" on "b" on "a".
std::string PartPlaces::CircleThrough(std::size_t next) const {
    const auto quoted = [](const std::string& name) { return '"' + Excerpt(name) + '"'; };
    std::string circle = quoted(NameIn((*parts_)[placed_]));
    for (std::size_t count = 0; count < kMostNames; ++count) {
        const Node part = (*parts_)[next];
        circle += " on " + quoted(NameIn(part));
        if (next == placed_) return circle;
        if (!part.Has("on") || named_.contains(part.At("on").Text())) return "";
        const std::optional<std::size_t> after = LaterPart(part.At("on").Text());
        if (!after) return "";
        next = *after;
    }
    return "";
}

void PartPlaces::FailToFind(const Node& on, const std::string& name) const {
    const std::string quoted = "\"" + Excerpt(name) + "\"";
    if (const std::optional<std::size_t> later = LaterPart(name)) {
        if (*later == placed_) on.Fail(quoted + " is this part itself", "name a part before it");
        if (const std::string circle = CircleThrough(*later); !circle.empty()) {
            on.Fail("the parts stand on each other in a circle, " + circle,
                    "place one of them without \"on\"");
        }
        on.Fail(quoted + " comes after this part",
                "put " + (*parts_)[*later].Pointer() + " before it");
    }
    // Places stand in for names where no part has one.
    std::string names = FirstNames(false);
    if (names.empty()) names = FirstNames(true);
    on.Fail("no part before this one has the name " + quoted,
            names.empty() ? "put that part before this one" : "write a name such as " + names);
}

}  // namespace halvorn::engine
