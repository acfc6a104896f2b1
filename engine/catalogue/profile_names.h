/// @file profile_names.h
/// Names of profiles as people write them.
#ifndef HALVORN_ENGINE_CATALOGUE_PROFILE_NAMES_H
#define HALVORN_ENGINE_CATALOGUE_PROFILE_NAMES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace halvorn::engine {

/// Returns the one spelling of a name: capitals without blanks, hyphens or underscores, X between
/// dimensions; HE200B is HEB200, L50X5 is L50X50X5, SHS50X5 and RHS50X50X5 are SHS50X50X5.
///
/// Numbers: no zeros at the end of decimals or before the point; fractions as decimals, 1-1/4 and
/// 1 1/4 as 1.25. Decimals of three digits or more that can be sixty-fourths of an inch are those:
/// tables print 5/16 as .313, .312 and .3125.
std::string CanonicalProfileName(std::string_view name);

/// Returns the number that the whole text is as a fraction: "1/8", "1-1/2", "1 1/2"; nothing for
/// other texts.
std::optional<double> FractionIn(std::string_view text);

/// Returns a name in capitals without blanks, but for one between two digits: what two rows of a
/// table may not share.
std::string PlainProfileName(std::string_view name);

/// Returns the letters that a canonical name begins with: "HEB" of "HE 200 B", "RHS"; may be empty.
std::string SeriesOf(std::string_view name);

/// Returns the letters that a name begins with as it is written, in capitals: "HE" of "HE 200 B";
/// may be empty.
std::string FirstLettersOf(std::string_view name);

/// Returns a canonical name with its first two dimensions the other way round, as of an angle or a
/// hollow section with the short side first; the same name when it has fewer than three.
std::string WithSidesSwapped(const std::string& canonicalName);

/// Returns how many characters must be changed, added or removed to make one text of the other
/// (Levenshtein's distance).
std::size_t EditDistance(std::string_view a, std::string_view b);

}  // namespace halvorn::engine

#endif
