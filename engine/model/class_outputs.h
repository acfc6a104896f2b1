/// @file class_outputs.h
/// The outputs of the library's class by their names.
#ifndef HALVORN_ENGINE_MODEL_CLASS_OUTPUTS_H
#define HALVORN_ENGINE_MODEL_CLASS_OUTPUTS_H

#include <CSectionTools.h>

#include <vector>

#include "model/section_model.h"

namespace halvorn::engine {

/// The seventeen outputs of `CSectionTools::GetCalculValues`.
struct ClassOutputs {
    double torsionConstant = 0.0;  ///< [L^4]
    Point centroid;                ///< [L]
    double area = 0.0;             ///< [L^2]
    double shearArea1 = 0.0;       ///< [L^2]
    double shearArea2 = 0.0;       ///< [L^2]
    double inertiaY = 0.0;         ///< integral of x^2 about the centre of gravity [L^4]
    double inertiaX = 0.0;         ///< of y^2 [L^4]
    double inertiaXY = 0.0;        ///< of x y [L^4]
    double torsionModulus = 0.0;   ///< [L^3]
    double elasticBottom = 0.0;    ///< elastic moduli of the outermost fibres [L^3]
    double elasticTop = 0.0;
    double elasticLeft = 0.0;
    double elasticRight = 0.0;
    double plasticX = 0.0;  ///< about the horizontal axis [L^3]
    double plasticY = 0.0;  ///< about the vertical axis [L^3]
    double extraSum = 0.0;
    /// A fibre distance is 0: the elastic moduli are 0, and what follows them was not written.
    bool isStopped = false;
};

/// Returns the outputs of elements pushed in their order, the moduli about (xG + dx, yG + dy) [L].
ClassOutputs ClassOutputsOf(const std::vector<Element>& elements, double dx = 0.0, double dy = 0.0);

/// The ten outputs of `CSectionTools::CalculContourQuelconqueTOOL`.
struct PolylineOutputs {
    double area = 0.0;             ///< [L^2]
    Point centroid;                ///< of a closed wall that of all within its outer face [L]
    double torsionConstant = 0.0;  ///< [L^4]
    double torsionModulus = 0.0;   ///< [L^3]
    double shearAreaX = 0.0;       ///< [L^2]
    double shearAreaY = 0.0;       ///< [L^2]
    double inertiaX = 0.0;         ///< integral of y^2 about the origin [L^4]
    double inertiaY = 0.0;         ///< of x^2 [L^4]
    double inertiaXY = 0.0;        ///< of x y [L^4]
};

PolylineOutputs PolylineOutputsOf(const Polyline& polyline);

}  // namespace halvorn::engine

#endif
