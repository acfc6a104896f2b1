/// @file query.h
/// What a search asks for.
#ifndef HALVORN_ENGINE_SEARCH_QUERY_H
#define HALVORN_ENGINE_SEARCH_QUERY_H

#include <cstddef>
#include <string>
#include <vector>

#include "search/quantity.h"

namespace halvorn::engine {

/// A comparison: "Wplx>=40in^3".
struct QueryTerm {
    enum class Operator { Less, LessOrEqual, Equal, GreaterOrEqual, Greater };
    std::string text;
    Quantity quantity;
    Operator comparison = Operator::Equal;
    double number = 0.0;
    std::string unit;  ///< of length; empty: none is stated

    /// Returns whether a number in the term's unit meets it. What the conversion of units can
    /// change, 1e-9 of the number, does not count.
    bool Holds(double value) const;
};

struct Query {
    std::vector<std::string> families;  ///< none: all
    std::vector<QueryTerm> terms;
    Quantity order;
    bool isDescending = false;
    std::size_t limit = 10;
};

/// Returns the query in a text of terms between blanks: comparisons of a key or symbol with a
/// number and perhaps its unit, family=, order= and limit=.
/// @throws InputError naming the term that is wrong
Query ReadQuery(const std::string& text);

/// Returns the error of a term.
InputError QueryError(const std::string& term, const std::string& problem, const std::string& mend);

}  // namespace halvorn::engine

#endif
