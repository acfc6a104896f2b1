/// @file near_names.h
/// How near the names of profiles are to one that is not there.
#ifndef HALVORN_ENGINE_CATALOGUE_NEAR_NAMES_H
#define HALVORN_ENGINE_CATALOGUE_NEAR_NAMES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace halvorn::engine {

/// How far a name is from a typed one. Compared in this order: how much the letters differ; whether
/// the typed name, with one number, is the beginning of the other, HEB30 of HEB300; how much the
/// numbers differ, the first before the second. So IPE330 is nearer to IPE301 than UPE300, and
/// W12X30 nearer to W12X27 than W14X27.
struct NameDistance {
    std::size_t letters = 0;  ///< 0: the same; 1: one is off; from 2 on: no name of that form
    bool isOther = true;      ///< the typed name is no beginning of it
    std::vector<double> differences;  ///< of the numbers that were typed, in their order

    friend bool operator<(const NameDistance& a, const NameDistance& b) {
        return std::tie(a.letters, a.isOther, a.differences) <
               std::tie(b.letters, b.isOther, b.differences);
    }
};

/// A name as it was typed, in every way that it may be meant: as it stands, with its sides the
/// other way round, with a multiplication sign for a slash between digits.
class TypedName {
public:
    explicit TypedName(std::string_view name);

    /// Returns how far a canonical name is from the nearest of them; nothing when it is like none.
    std::optional<NameDistance> DistanceTo(const std::string& canonicalName) const;

private:
    // A canonical name taken apart: a text before each number, and one behind the last.
    struct Parts {
        std::vector<std::string> texts;
        std::vector<double> numbers;
    };
    struct Reading {
        std::string canonical;
        Parts parts;
    };

    static Parts PartsOf(const std::string& canonicalName);
    static std::optional<NameDistance> Distance(const Parts& typed, const Parts& known);
    void Add(const std::string& canonicalName);

    std::vector<Reading> readings_;
    bool isOneNumber_ = false;  // none: the name is too long to be like one
};

}  // namespace halvorn::engine

#endif
