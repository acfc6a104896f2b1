#include "catalogue/near_names.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "catalogue/profile_names.h"

namespace halvorn::engine {

namespace {

constexpr std::string_view kNumberCharacters = "0123456789.";

// Places of the slashes between two digits, "L100/100/10".
std::vector<std::size_t> SlashesIn(std::string_view name) {
    const auto isDigit = [&](std::size_t i) {
        return i < name.size() && name[i] >= '0' && name[i] <= '9';
    };
    std::vector<std::size_t> slashes;
    for (std::size_t i = 1; i < name.size(); ++i) {
        if (name[i] == '/' && isDigit(i - 1) && isDigit(i + 1)) slashes.push_back(i);
    }
    return slashes;
}

}  // namespace

TypedName::TypedName(std::string_view name) {
    constexpr std::size_t kLongest = 40;     // no name with a slip or two is longer
    constexpr std::size_t kMostSlashes = 4;  // nor has more sides
    const std::string canonical = CanonicalProfileName(name);
    if (canonical.size() > kLongest) return;
    Add(canonical);
    // The slash of a fraction is no part of the beginning of a name.
    isOneNumber_ =
        readings_.front().parts.numbers.size() == 1 && name.find('/') == std::string_view::npos;
    const std::vector<std::size_t> slashes = SlashesIn(name);
    if (slashes.empty() || slashes.size() > kMostSlashes) return;
    std::string withoutAny(name);
    for (const std::size_t slash : slashes) {
        withoutAny[slash] = 'X';
        std::string withoutOne(name);  // the others may be those of fractions: "L4/4x1/2"
        withoutOne[slash] = 'X';
        Add(CanonicalProfileName(withoutOne));
    }
    Add(CanonicalProfileName(withoutAny));
}

void TypedName::Add(const std::string& canonicalName) {
    readings_.push_back({canonicalName, PartsOf(canonicalName)});
    const std::string swapped = WithSidesSwapped(canonicalName);
    if (swapped != canonicalName) readings_.push_back({swapped, PartsOf(swapped)});
}

TypedName::Parts TypedName::PartsOf(const std::string& canonicalName) {
    Parts parts;
    for (std::size_t i = 0;;) {
        const std::size_t start =
            std::min(canonicalName.find_first_of(kNumberCharacters, i), canonicalName.size());
        parts.texts.push_back(canonicalName.substr(i, start - i));
        if (start == canonicalName.size()) return parts;
        i = std::min(canonicalName.find_first_not_of(kNumberCharacters, start),
                     canonicalName.size());
        // The zero stands for what ".25" leaves out; a lone point counts as 0.
        const std::string number = "0" + canonicalName.substr(start, i - start);
        parts.numbers.push_back(NumberIn(number).value_or(0.0));
    }
}

// Of names of one form, of which the typed one may be the beginning: "W12" of "W12X26".
std::optional<NameDistance> TypedName::Distance(const Parts& typed, const Parts& known) {
    const std::size_t count = typed.numbers.size();
    if (count > known.numbers.size()) return std::nullopt;
    NameDistance distance;
    const std::string &letters = typed.texts.front(), &knownLetters = known.texts.front();
    if (letters != knownLetters) {
        // Of a single letter nothing is left when it is off.
        if (std::max(letters.size(), knownLetters.size()) < 2) return std::nullopt;
        if (EditDistance(letters, knownLetters) > 1) return std::nullopt;
        distance.letters = 1;
    }
    for (std::size_t i = 1; i <= count; ++i) {
        const bool isLike = i < count ? typed.texts[i] == known.texts[i]
                                      : known.texts[i].starts_with(typed.texts[i]);
        if (!isLike) return std::nullopt;
    }
    for (std::size_t i = 0; i < count; ++i) {
        distance.differences.push_back(std::fabs(typed.numbers[i] - known.numbers[i]));
    }
    return distance;
}

std::optional<NameDistance> TypedName::DistanceTo(const std::string& canonicalName) const {
    const Parts known = PartsOf(canonicalName);
    std::optional<NameDistance> nearest;
    for (const Reading& reading : readings_) {
        std::optional<NameDistance> distance = Distance(reading.parts, known);
        if (distance && isOneNumber_) {
            distance->isOther = !canonicalName.starts_with(reading.canonical);
        }
        if (distance && (!nearest || *distance < *nearest)) nearest = std::move(distance);
    }
    if (nearest) return nearest;
    // Slips elsewhere, as in "IPE 30O": the fewer the nearer.
    for (const Reading& reading : readings_) {
        const std::size_t farthest = std::max<std::size_t>(2, reading.canonical.size() / 3);
        const std::size_t longer = std::max(reading.canonical.size(), canonicalName.size());
        const std::size_t shorter = std::min(reading.canonical.size(), canonicalName.size());
        if (longer - shorter > farthest) continue;
        const std::size_t slips = EditDistance(reading.canonical, canonicalName);
        if (slips > farthest || (nearest && nearest->letters <= 1 + slips)) continue;
        nearest = NameDistance{1 + slips, true, {}};
    }
    return nearest;
}

}  // namespace halvorn::engine
