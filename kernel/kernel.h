/// @file kernel.h
/// The polygon kernel: its conventions, the records that its routines exchange, and the names
/// that no product code reaches.
///
/// A ring is a pointer and an `int` count; it is closed implicitly and never repeats its first
/// point. Routines return an `int` status, 0 or more for results and below 0 for failures, set
/// every out-parameter to zero first, free what they allocated when they fail, and let no exception
/// pass. Arrays come from calloc or realloc and are released with free.
///
/// Of the whole library only tests, fuzzers and benchmarks reach these (tests/layers/check_reach):
/// - `ComputePlasticModuli`, `FormatFixed`, `CutCoordinate`: the plastic moduli with their web
///   parts and a log of the search, in which tests see every line that it tries.
/// - `SplitSectionAtAxis`, `LeverArmsOfPieces`, `IsLongestEdgeAcross`, `PlasticPiece`,
///   `kAxisReach`, `kClearlyOneSided`, `kParallelEdge`: the second way to the moduli, by
///   cutting. Tests hold the integrals of the first way against it.
/// - `KPolygonCentroid`, `KPolygonArea`, `KProjectPointOnLine`, `kAreaAgreement`: centroid,
///   area and lever arm of the pieces of that cutting.
/// - `KClassifyPolygon`, `KPolygonClass`, `KTriangulatePolygon`: what this centroid rests on, a
///   ring that is simple and its triangles.
/// - `KPointInPolygon`, `KIntersectSegments`, `KRemoveFromBoxTree`, `KMidpoint`,
///   `KCornerCross`, `IsZeroTol`, `SignTol`: what the routines above are written in.
/// - `KSplitPolygonByPolyline`: the cut by several segments, which may end inside the ring. The
///   cut by a line is its simplest case, and the fuzzer drives all of it.
/// - `KFindDanglingEdge`, `KEdgeList`: the definition of a free end, without cut points.
/// - `ContourSignedArea`, `ContourFirstMoments`, `ContourSecondMoments`: one integral each,
///   held to exact arithmetic. A push needs all of them and takes `SignedAreaMoments`, in one
///   pass.
/// - `EllipseShearCoefficientX`, `EllipseShearCoefficientY`, `EllipseTorsionModulus`: the
///   ellipse's formulas from area and polar moment. A push has the semi-axes already.
/// - `KMakeSegment`, `KMakePoint3`, `KVectorDiff3`, `KPoint3`: complete the operations on
///   records. They are inline, so they cost a program nothing.
#ifndef HALVORN_KERNEL_KERNEL_H
#define HALVORN_KERNEL_KERNEL_H

#include "numeric/point2d.h"

namespace halvorn {

/// The kernel's 2-D point or vector [L]: the section's own point under its kernel name, so that
/// arrays pass between the layers without a cast.
using KPoint = point2D;

/// A 3-D point or vector [L].
struct KPoint3 {
    double x;
    double y;
    double z;
};

/// A directed segment: start, then end.
struct KSegment {
    KPoint start;
    KPoint end;
};

/// Status of a routine that could not get memory.
inline constexpr int kOutOfMemory = -90;

}  // namespace halvorn

#endif
