#include "read/dxf/entity_curve.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <utility>

#include "read/dxf/fields.h"
#include "read/dxf/spline.h"

namespace halvorn::engine::dxf {

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

// Angles in files are rounded to ten digits or more; a sweep this near a full turn is one [rad].
constexpr double kSameAngle = 1e-9;

// Far beyond a section in any unit; keeps the squares of coordinates within the digits of a double.
constexpr double kFarthest = 1e12;

constexpr const char* kAslant = "not parallel to the x-y plane";
constexpr const char* kNoLength = "without length";

struct PolylineVertex {
    Point at;
    double bulge = 0.0;
};

class CurveReader {
public:
    CurveReader(const Entity& entity, std::span<const Entity> vertices, const PlaneMap& placement,
                double tolerance, const std::string& source)
        : entity_(entity),
          vertices_(vertices),
          placement_(placement),
          tolerance_(tolerance),
          source_(source) {
        curve_.line = entity.line;
    }

    CurveReading Read() {
        if (entity_.kind == "LINE") ReadLine();
        if (entity_.kind == "CIRCLE") ReadCircle();
        if (entity_.kind == "ARC") ReadArc();
        if (entity_.kind == "ELLIPSE") ReadEllipse();
        if (entity_.kind == "SPLINE") ReadSpline();
        if (entity_.kind == "LWPOLYLINE") ReadLightPolyline();
        if (entity_.kind == "POLYLINE") ReadPolyline();
        if (reading_.problem.empty() && IsPoint()) reading_.problem = kNoLength;
        curve_.isAslant = reading_.problem == kAslant;
        const bool isCurve = reading_.problem.empty() || (curve_.isAslant && !IsPoint());
        if (isCurve) reading_.curve = std::move(curve_);
        return std::move(reading_);
    }

private:
    bool IsPoint() const {
        return std::all_of(curve_.points.begin(), curve_.points.end(),
                           [&](const Point& p) { return p == curve_.points.front(); });
    }

    void SeeHeight(double z) {
        reading_.lowest = std::min(reading_.lowest, z);
        reading_.highest = std::max(reading_.highest, z);
        if (reading_.highest - reading_.lowest > tolerance_) reading_.problem = kAslant;
    }

    // For the kinds whose coordinates are those of the entity itself.
    void TurnToDrawing(const Fields& fields) {
        const Facing facing = fields.Direction();
        if (facing == Facing::Up) return;
        if (facing == Facing::Aslant) reading_.problem = kAslant;
        const PlaneMap toDrawing = fields.ToDrawing(reading_.lowest);
        for (Point& point : curve_.points) point = toDrawing(point);
        if (facing == Facing::Down)
            reading_.lowest = -std::exchange(reading_.highest, -reading_.lowest);
    }

    // Of arcs in the coordinates that `map` brings into the drawing, whose extent they keep.
    shapes::ArcDivision DivisionUnder(const PlaneMap& map) const {
        return shapes::ArcDivision::ChordError(tolerance_)
            .AlsoExtremeAlong({map.xx, map.xy}, {map.yx, map.yy});
    }

    // For the kinds that `TurnToDrawing` turns.
    shapes::ArcDivision Division(const Fields& fields) const {
        return DivisionUnder(placement_.After(fields.ToDrawing(0.0)));
    }

    void ReadLine() {
        const Fields fields(entity_, source_);
        curve_.points = {{fields.Real(10), fields.Real(20)}, {fields.Real(11), fields.Real(21)}};
        SeeHeight(fields.RealOr(30, 0.0));
        SeeHeight(fields.RealOr(31, 0.0));
    }

    void AppendRound(const Fields& fields, double start, double sweep) {
        const double radius = fields.Real(40);
        if (radius < 0.0) fields.Fail("its radius is negative", kExportAnew);
        SeeHeight(fields.RealOr(30, 0.0));
        const Point centre{fields.Real(10), fields.Real(20)};
        AppendTurn(centre, {radius, 0.0}, {0.0, radius}, start, sweep, Division(fields));
        TurnToDrawing(fields);
    }

    void AppendTurn(Point centre, Point major, Point minor, double start, double sweep,
                    const shapes::ArcDivision& division) {
        if (std::hypot(major.x, major.y) == 0.0 || sweep <= 0.0) return;
        curve_.isClosed = sweep == kFullTurn;
        AppendEllipse(curve_.points, centre, major, minor, start, sweep, division);
    }

    void ReadCircle() { AppendRound(Fields(entity_, source_), 0.0, kFullTurn); }

    // Counter-clockwise, and at most a full turn.
    static double Sweep(double start, double end) {
        if (std::abs(std::abs(end - start) - kFullTurn) < kSameAngle) return kFullTurn;
        const double turns = (end - start) / kFullTurn;
        return std::min((turns - std::floor(turns)) * kFullTurn, kFullTurn);
    }

    void ReadArc() {
        const Fields fields(entity_, source_);
        const double start = fields.Real(50) * kDegree;
        AppendRound(fields, start, Sweep(start, fields.Real(51) * kDegree));
    }

    // Unlike the other round kinds, an ellipse has the drawing's own coordinates; seen from below,
    // its parameter runs clockwise.
    void ReadEllipse() {
        const Fields fields(entity_, source_);
        const Point centre{fields.Real(10), fields.Real(20)};
        const Point major{fields.Real(11), fields.Real(21)};
        const Facing facing = fields.Direction();
        const double ratio = fields.Real(40) * (facing == Facing::Down ? -1.0 : 1.0);
        if (ratio == 0.0) fields.Fail("the ratio of its axes is 0", kExportAnew);
        if (facing == Facing::Aslant || std::abs(fields.RealOr(31, 0.0)) > tolerance_) {
            reading_.problem = kAslant;
        }
        SeeHeight(fields.RealOr(30, 0.0));
        if (!reading_.problem.empty()) return;
        const double start = fields.RealOr(41, 0.0);
        AppendTurn(centre, major, {-major.y * ratio, major.x * ratio}, start,
                   Sweep(start, fields.RealOr(42, kFullTurn)), DivisionUnder(placement_));
    }

    void ReadSpline() {
        const Fields fields(entity_, source_, {10, 20, 30, 11, 21, 31, 40, 41});
        Spline spline;
        spline.degree = fields.WholeOr(71, 3);
        spline.isClosed = fields.WholeOr(70, 0) % 2 != 0;
        std::size_t ordinates = 0, fitOrdinates = 0;
        for (const Group& group : fields.Lists()) {
            const double value = RealValue(group, source_);
            switch (group.code) {
                case 10:
                    spline.control.push_back({value, 0.0});
                    break;
                case 11:
                    spline.fit.push_back({value, 0.0});
                    break;
                case 20:
                    SetOrdinate(fields, spline.control, ++ordinates, value);
                    break;
                case 21:
                    SetOrdinate(fields, spline.fit, ++fitOrdinates, value);
                    break;
                case 40:
                    spline.knots.push_back(value);
                    break;
                case 41:
                    spline.weights.push_back(value);
                    break;
                default:
                    SeeHeight(value);
            }
        }
        CheckOrdinates(fields, spline.control, ordinates);
        CheckOrdinates(fields, spline.fit, fitOrdinates);
        fields.CheckCount(72, spline.knots.size(), "knots");
        fields.CheckCount(73, spline.control.size(), "control points");
        fields.CheckCount(74, spline.fit.size(), "fit points");
        if (fields.Has(12)) spline.startTangent = Point{fields.Real(12), fields.Real(22)};
        if (fields.Has(13)) spline.endTangent = Point{fields.Real(13), fields.Real(23)};
        Flatten(fields, spline);
    }

    void Flatten(const Fields& fields, const Spline& spline) {
        if (spline.control.empty() && !spline.fit.empty()) {
            reading_.remark =
                "SPLINE of fit points alone, drawn as the cubic spline through them "
                "over the lengths of their chords";
        }
        try {
            curve_.points = FlattenSpline(spline, tolerance_);
        } catch (const std::domain_error& error) {
            fields.Fail(error.what(), kExportAnew);
        }
    }

    static void SetOrdinate(const Fields& fields, Points& points, std::size_t count, double value) {
        if (points.size() != count) fields.Fail("a point lacks its x or y", kExportAnew);
        points.back().y = value;
    }

    static void CheckOrdinates(const Fields& fields, const Points& points, std::size_t count) {
        if (points.size() != count) fields.Fail("a point lacks its x or y", kExportAnew);
    }

    void SeeElevation(const Fields& fields) {
        constexpr int elevation = 38;
        const bool isSeen = reading_.lowest <= reading_.highest;
        if (!fields.Has(elevation) && isSeen) return;
        const double z = fields.RealOr(elevation, 0.0), seen = isSeen ? reading_.lowest : z;
        if (reading_.problem.empty() && std::abs(z - seen) > tolerance_) {
            fields.Fail("its points lie at z = " + Shown(seen) +
                            " (group 30) and at z = " + Shown(z) + " (group 38)",
                        kExportAnew);
        }
        SeeHeight(z);
    }

    // What belongs to the whole is also found at every vertex, as some programs write it: the
    // height as a z coordinate, the width, and flags and directions that say the same again.
    void ReadLightPolyline() {
        const Fields fields(entity_, source_, {10, 20, 30, 40, 41, 42, 43, 91},
                            {38, 70, 90, 210, 220, 230});
        std::vector<PolylineVertex> line;
        std::size_t ordinates = 0;
        bool hasWidth = false;
        for (const Group& group : fields.Lists()) {
            if (group.code == 91) continue;
            const double value = RealValue(group, source_);
            if (group.code == 10) {
                if (line.size() != ordinates) fields.Fail("a point lacks its y", kExportAnew);
                line.push_back({{value, 0.0}});
            } else if (group.code == 30) {
                SeeHeight(value);
            } else if (group.code == 40 || group.code == 41 || group.code == 43) {
                hasWidth = hasWidth || value != 0.0;
            } else if (line.empty()) {
                fields.Fail("a group stands before the first point", kExportAnew);
            } else if (group.code == 42) {
                line.back().bulge = value;
            } else {
                if (line.size() != ++ordinates) fields.Fail("a point lacks its x", kExportAnew);
                line.back().at.y = value;
            }
        }
        if (line.size() != ordinates) fields.Fail("a point lacks its y", kExportAnew);
        fields.CheckCount(90, line.size(), "points");
        SeeElevation(fields);
        Connect(line, fields.WholeOr(70, 0) % 2 != 0, hasWidth, Division(fields));
        TurnToDrawing(fields);
    }

    void ReadPolyline() {
        constexpr int spatial = 8, meshes = 16 | 64, splineFrame = 16;
        const Fields fields(entity_, source_);
        const int flags = fields.WholeOr(70, 0);
        if ((flags & meshes) != 0) {
            reading_.problem = "that is a mesh";
            return;
        }
        std::vector<PolylineVertex> line;
        bool hasWidth = fields.RealOr(40, 0.0) != 0.0 || fields.RealOr(41, 0.0) != 0.0;
        for (const Entity& entity : vertices_) {
            const Fields vertex(entity, source_);
            if ((vertex.WholeOr(70, 0) & splineFrame) != 0) continue;
            line.push_back({{vertex.Real(10), vertex.Real(20)}, vertex.RealOr(42, 0.0)});
            hasWidth = hasWidth || vertex.RealOr(40, 0.0) != 0.0 || vertex.RealOr(41, 0.0) != 0.0;
            if ((flags & spatial) != 0) SeeHeight(vertex.RealOr(30, 0.0));
        }
        Connect(line, flags % 2 != 0, hasWidth,
                (flags & spatial) != 0 ? DivisionUnder(placement_) : Division(fields));
        if ((flags & spatial) != 0) return;
        SeeHeight(fields.RealOr(30, 0.0));
        TurnToDrawing(fields);
    }

    void Connect(const std::vector<PolylineVertex>& line, bool isClosed, bool hasWidth,
                 const shapes::ArcDivision& division) {
        if (hasWidth) {
            reading_.remark = "polylines with a width, of which only the middle line is read";
        }
        if (line.empty()) return;
        Points& points = curve_.points;
        points.push_back(line.front().at);
        const std::size_t pieces = isClosed ? line.size() : line.size() - 1;
        for (std::size_t i = 0; i < pieces; ++i) {
            const Point end = line[(i + 1) % line.size()].at;
            AppendBulge(points, end, line[i].bulge, division);
            if (points.size() > kMostPoints) {
                throw std::invalid_argument("it takes more than a million points");
            }
        }
        if (isClosed && points.size() > 1 && points.back() == points.front()) points.pop_back();
        curve_.isClosed = isClosed;
    }

    const Entity& entity_;
    std::span<const Entity> vertices_;
    const PlaneMap& placement_;
    double tolerance_;
    const std::string& source_;
    Curve curve_;
    CurveReading reading_;
};

void Place(Curve& curve, const PlaneMap& placement, const Entity& entity,
           const std::string& source) {
    for (Point& point : curve.points) {
        point = placement(point);
        if (!(std::abs(point.x) <= kFarthest && std::abs(point.y) <= kFarthest)) {
            Refuse(source, entity.line, std::string(entity.kind) + ": it reaches beyond 1e12",
                   "draw the section near the origin");
        }
    }
}

}  // namespace

bool IsCurve(std::string_view kind) {
    constexpr std::string_view kinds[] = {"LINE",   "CIRCLE",     "ARC",     "ELLIPSE",
                                          "SPLINE", "LWPOLYLINE", "POLYLINE"};
    return std::find(std::begin(kinds), std::end(kinds), kind) != std::end(kinds);
}

CurveReading ReadCurve(const Entity& entity, std::span<const Entity> vertices,
                       const PlaneMap& placement, double tolerance, const std::string& source) {
    const double local = std::min(tolerance / placement.LargestScale(), kFarthest);
    try {
        CurveReading reading = CurveReader(entity, vertices, placement, local, source).Read();
        if (reading.curve) Place(*reading.curve, placement, entity, source);
        return reading;
    } catch (const std::invalid_argument& error) {
        Refuse(source, entity.line, std::string(entity.kind) + ": " + error.what(),
               "give a larger chord tolerance or a simpler curve");
    }
}

}  // namespace halvorn::engine::dxf
