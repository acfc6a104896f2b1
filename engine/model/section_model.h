/// @file section_model.h
/// One section as the engine understands it, whatever it was read from: what is pushed into a
/// `CSectionTools`, in push order, or one polyline.
#ifndef HALVORN_ENGINE_MODEL_SECTION_MODEL_H
#define HALVORN_ENGINE_MODEL_SECTION_MODEL_H

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/units.h"
#include "geometry/point.h"

namespace halvorn::engine {

/// Values that come with an element instead of being computed from its ring, the arguments of
/// `CSectionTools::PushContourStandard`, in the unit of the section. Position and angle are those
/// in the section, after any placement.
struct GivenValues {
    double angle = 0.0;  ///< from the x axis to the first principal axis, counter-clockwise [rad]
    double centroidX = 0.0;
    double centroidY = 0.0;
    double area = 0.0;
    double inertia1 = 0.0;
    double inertia2 = 0.0;
    std::optional<double> shearArea1;       ///< empty: not known, so no sum with it is reported
    std::optional<double> shearArea2;       ///< likewise
    std::optional<double> torsionConstant;  ///< likewise
    std::optional<double> torsionModulus;   ///< likewise
    double plasticModulusX = 0.0;           ///< handed to the library, never reported
    double plasticModulusY = 0.0;
    double extra = 0.0;
    double reserved = 0.0;
    std::string method;         ///< of area and inertias: "given in the file", "published values"
    std::string torsionMethod;  ///< of torsion and shear, the same when empty
};

/// One ring that is pushed.
struct Element {
    std::string label;  ///< how messages and figures call it: "IPE300", "/contours/1", "line 120"
    bool isSolid = true;
    /// The outline, at least three points. With given values a hollow outline is one keyhole ring:
    /// out along a bridge and back along the same one.
    Points ring;
    bool isWall = false;  ///< drawn from its mid-line: where it crosses itself it counts once
    std::optional<GivenValues> given;  ///< absent: all values come from the ring
    /// E of its material over the reference E; the hole of a hollow solid has that of the solid.
    double modularRatio = 1.0;
    /// A hole that takes whatever lies under it, of every material, or what such a hole leaves
    /// within; else the element acts on its own material alone. Says nothing where all is one.
    bool actsOnAll = false;
    std::string row;  ///< name of the row of equal parts that it is of; empty: none
};

enum class PolylineKind { Solid, ClosedWall, OpenWall };
enum class TorsionFormulas { Tube, General };

/// The arguments of `CSectionTools::CalculContourQuelconqueTOOL`.
struct Polyline {
    PolylineKind kind = PolylineKind::Solid;
    TorsionFormulas torsion = TorsionFormulas::General;
    double thickness = 0.0;  ///< 0 for a solid, positive for a wall
    Points points;
    std::vector<double> radii;  ///< one per point
};

/// A published value of a profile.
struct PublishedValue {
    std::string key;  ///< one of `kPublishedValues`
    double number;    ///< in the unit of the section
};

/// What is drawn, and how it reaches the library's class.
struct SectionModel {
    std::string source;  ///< how messages call where it came from
    std::string name;
    std::string description;
    std::string unit;                  ///< of every length here, as in `kLengthUnits`
    bool isUnitAssumed = false;        ///< neither the input nor the caller states it
    std::optional<double> density;     ///< [kg/m^3]
    std::vector<Element> elements;     ///< at least one; of a polyline what it encloses
    std::optional<Polyline> polyline;  ///< then the class computes it by formulas of its own
    /// Of a section that is one profile of the catalogue.
    std::vector<PublishedValue> published;
    bool isDrawn = false;  ///< a drawing or points: outlines that cross themselves are refused
    std::vector<std::string> remarks;  ///< what the reader left out or took for granted, a sentence
                                       ///< each without a full stop
};

}  // namespace halvorn::engine

#endif
