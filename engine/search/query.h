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
    double halfDigit = 0.0;  ///< half a unit of the last digit that was typed
    std::string unit;        ///< of length; empty: none is stated

    /// Returns whether a number in the term's unit meets it. What the conversion of units can
    /// change, 1e-9 of the number, does not count.
    /// @param isExact  of a number that is typed as its table has it: the thicknesses 6 and 6.3 are
    ///                 two. Another number equals what it would be rounded to.
    bool Holds(double value, bool isExact) const;
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
