/// @file element_equations.h
/// The equations of one triangle, with what vanishes on its edges eliminated.
#ifndef HALVORN_ENGINE_WARPING_ELEMENT_EQUATIONS_H
#define HALVORN_ENGINE_WARPING_ELEMENT_EQUATIONS_H

#include <Eigen/Dense>
#include <vector>

#include "warping/fields.h"

namespace halvorn::engine {

/// A function of a triangle that does not vanish on all edges.
struct OuterFunction {
    int place = 0;  ///< among the functions of the triangle
    int edge = -1;  ///< -1: it belongs to a corner
    int order = 1;
};

/// Stiffness and loads of a triangle. Outer functions are unknowns of the whole; the inner ones
/// follow from them: inner = `innerLoads` - `innerByOuter` * outer.
struct ElementEquations {
    std::vector<OuterFunction> outer;
    std::vector<int> inner;     ///< places
    Eigen::MatrixXd stiffness;  ///< outer by outer, inner ones eliminated
    Eigen::MatrixXd loads;      ///< outer by field, likewise
    Eigen::MatrixXd innerByOuter;
    Eigen::MatrixXd innerLoads;  ///< inner by field
};

/// Returns the equations of a triangle, without what is given on the rings.
/// @param fields  all, or `kFieldsWithoutPoisson`
ElementEquations EquationsOf(const FieldSpace& space, const LinearLoads& loads, int fields,
                             Index triangle);

}  // namespace halvorn::engine

#endif
