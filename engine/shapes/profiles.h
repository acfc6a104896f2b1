/// @file profiles.h
/// Draws catalogue profiles as point rings.
///
/// Every function takes dimensions in any one length unit L and returns coordinates in it. Axes: x
/// to the right, y up; the lower left corner of the bounding box is the origin. Rings run
/// counter-clockwise, the last point joins the first, which is not repeated. Arcs are tangent to
/// the faces they join and keep area and extent (arc_division.h).
///
/// All functions throw DimensionError with a message for the user when a dimension is not a finite
/// positive number (radii and slope may be 0), when one part does not leave room for another (a web
/// thicker than its flange is wide), and RadiusError when a radius does not fit its faces.
#ifndef HALVORN_ENGINE_SHAPES_PROFILES_H
#define HALVORN_ENGINE_SHAPES_PROFILES_H

#include <vector>

#include "geometry/outline.h"
#include "geometry/rounded_polygon.h"

namespace halvorn::engine::shapes {

/// The inner face of a tapered flange: a plane that rises from toe to web. The defaults are a
/// parallel flange with a sharp toe.
struct FlangeTaper {
    double slope = 0.0;            ///< rise of the inner face per unit of width
    double flangeAtFromToe = 0.0;  ///< distance from the toe at which the flange has its
                                   ///< nominal thickness [L]; unused when the slope is 0
    double toeRadius = 0.0;        ///< between the toe and the inner face, convex [L]
};

/// Dimensions of I sections, channels and tees.
struct FlangedProfile {
    double height;
    double width;       ///< of the flanges
    double web;         ///< web thickness
    double flange;      ///< flange thickness; of tapered flanges at `taper.flangeAtFromToe`
    double rootRadius;  ///< between web and inner face, concave
    FlangeTaper taper = {};
};

/// Draws a doubly symmetric I: web vertical, flanges at bottom and top.
Outline DrawISection(const FlangedProfile& profile, const ArcDivision& division);

/// Dimensions of an I section whose flanges differ; both are centred on the web.
struct MonosymmetricProfile {
    double height;
    double web;  ///< web thickness
    double topWidth;
    double topFlange;  ///< thickness of the top flange
    double bottomWidth;
    double bottomFlange;  ///< thickness of the bottom flange
    double rootRadius;    ///< between web and inner faces, concave
};

/// Draws an I symmetric about its vertical web only.
Outline DrawMonosymmetricISection(const MonosymmetricProfile& profile, const ArcDivision& division);

/// Draws a channel open to the right: the outside of its web is the line x = 0.
Outline DrawChannel(const FlangedProfile& profile, const ArcDivision& division);

/// Draws a tee: the flange at the top, the foot of its web on the line y = 0.
Outline DrawTee(const FlangedProfile& profile, const ArcDivision& division);

/// Dimensions of an angle.
struct AngleProfile {
    double height;  ///< length of the vertical leg
    double width;   ///< length of the horizontal leg
    double thickness;
    double rootRadius;  ///< between the inner faces, concave
    double toeRadius;   ///< between each inner face and its toe, convex
};

/// Draws an angle: legs along the positive x and y axes, its heel at the origin.
Outline DrawAngle(const AngleProfile& profile, const ArcDivision& division);

/// Dimensions of a rectangular hollow section.
struct RectangularHollowProfile {
    double height;
    double width;
    double thickness;
    double outerRadius;
    double innerRadius;
};

/// Draws a rectangular hollow section. Corner radii that would let the hole reach through the
/// outside of the corner are refused.
Outline DrawRectangularHollow(const RectangularHollowProfile& profile, const ArcDivision& division);

/// Dimensions of a circular hollow section.
struct CircularHollowProfile {
    double diameter;  ///< outside
    double thickness;
};

/// Draws a circular hollow section; the points on its axes of symmetry are points of the rings.
Outline DrawCircularHollow(const CircularHollowProfile& profile, const ArcDivision& division);

/// Dimensions of a rectangular plate or bar.
struct Plate {
    double width;
    double height;
};

/// Draws a rectangle; it has no arcs to divide.
Outline DrawPlate(const Plate& plate, const ArcDivision& division);

/// Draws a solid circular bar of the given diameter; the points on its axes are points of the ring.
Outline DrawRound(double diameter, const ArcDivision& division);

}  // namespace halvorn::engine::shapes

#endif
