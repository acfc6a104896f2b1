/// @file quantity.h
/// What a search can compare: a dimension of the table or a value of the report.
#ifndef HALVORN_ENGINE_SEARCH_QUANTITY_H
#define HALVORN_ENGINE_SEARCH_QUANTITY_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HalvornEngine.h"

namespace halvorn::engine {

/// One of them, as a value without number and with the unit of length left out of `unit`.
struct Quantity {
    enum class Kind {
        Dimension,        ///< a column of the table
        Reported,         ///< a value of the report
        SmallerModulusX,  ///< of the lowest and the highest fibre
        SmallerModulusY   ///< of the leftmost and the rightmost fibre
    };
    Kind kind = Kind::Reported;
    Value value;

    /// Whether it takes the solution of torsion, warping and shear.
    bool IsOfWarping() const;
};

/// Returns the quantity of a key or a symbol, with or without its comma: "area", "Wplx", "tw".
/// Letters may be of either case where only one quantity is called so; nothing for other names.
/// The smaller elastic moduli have the names of their columns too, "Zx_min".
std::optional<Quantity> FindQuantity(std::string_view name);

/// What can be written instead of a name that is that of no quantity.
struct QuantityNames {
    bool isAmbiguous = false;        ///< several are called so in letters of either case
    std::vector<std::string> names;  ///< of those, else of similar ones: "Ix (inertia_x)"
};

/// Returns them, three at most of those that are merely similar.
QuantityNames QuantitiesLike(std::string_view name);

/// Returns a quantity with its number; without one where the profile or the report lack it.
/// @param values  of the report, in `unit`; of dimensions not used
Value ValueOf(const Quantity& quantity, const CatalogueProfile& profile,
              const std::vector<Value>& values);

}  // namespace halvorn::engine

#endif
