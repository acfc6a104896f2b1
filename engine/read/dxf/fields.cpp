#include "read/dxf/fields.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace halvorn::engine::dxf {

namespace {

// Three lists of coordinates, knots and weights of a spline of the most points that are taken.
constexpr std::size_t kMostListed = 4000000;

// Groups of geometry: numbers, flags, counts and the direction of extrusion. Groups that colour,
// name or link an entity may repeat, and so may the length of its extrusion (39) and the scale of
// its line type (48): no outline depends on them.
bool IsGeometry(int code) {
    return (code >= 10 && code < 60 && code != 39 && code != 48) || (code >= 70 && code < 80) ||
           code == 90 || (code >= 210 && code <= 230);
}

bool Contains(std::initializer_list<int> codes, int code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

}  // namespace

Fields::Fields(const Entity& entity, const std::string& source, std::initializer_list<int> lists,
               std::initializer_list<int> repeated)
    : entity_(entity), source_(source) {
    constexpr int startOfEmbeddedObject = 101;
    GroupReader reader(entity.body, source, entity.line + 1);
    for (Group group; reader.Next(group) && group.code != startOfEmbeddedObject;) {
        if (Contains(lists, group.code)) {
            if (lists_.size() >= kMostListed) Fail("it has too many points", "simplify it");
            lists_.push_back(group);
        } else if (group.code == 2 || IsGeometry(group.code)) {
            TakeOnce(group, repeated);
        }
    }
}

void Fields::TakeOnce(const Group& group, std::initializer_list<int> repeated) {
    const auto [first, isNew] = once_.emplace(group.code, group);
    if (isNew) return;
    const bool mayRepeat = Contains(repeated, group.code);
    if (mayRepeat && RealValue(first->second, source_) == RealValue(group, source_)) return;
    Refuse(
        source_, group.line,
        "the group " + std::to_string(group.code) + " comes twice in this " +
            Excerpt(entity_.kind) +
            (mayRepeat ? ", as " + Excerpt(first->second.value) + " and as " + Excerpt(group.value)
                       : ""),
        kExportAnew);
}

void Fields::Fail(const std::string& problem, const std::string& remedy) const {
    Refuse(source_, entity_.line, Excerpt(entity_.kind) + ": " + problem, remedy);
}

double Fields::Real(int code) const {
    const auto found = once_.find(code);
    if (found == once_.end()) {
        Fail("its group " + std::to_string(code) + " is missing", kExportAnew);
    }
    return RealValue(found->second, source_);
}

double Fields::RealOr(int code, double otherwise) const {
    return Has(code) ? RealValue(once_.at(code), source_) : otherwise;
}

int Fields::WholeOr(int code, int otherwise) const {
    return Has(code) ? WholeValue(once_.at(code), source_) : otherwise;
}

Facing Fields::Direction() const {
    // Directions that rounding has turned out of the z axis stay far below this angle [rad].
    constexpr double parallel = 1e-9;
    const double x = RealOr(210, 0.0), y = RealOr(220, 0.0), z = RealOr(230, 1.0);
    if (std::hypot(x, y) > parallel * std::abs(z) || z == 0.0) return Facing::Aslant;
    return z > 0.0 ? Facing::Up : Facing::Down;
}

// The axes that the format gives an entity by its direction n of extrusion alone: x along Y x n
// where n is within 1/64 of the z axis, else along Z x n, and y along n x x.
PlaneMap Fields::ToDrawing(double z) const {
    constexpr double nearZ = 1.0 / 64.0;
    const Facing facing = Direction();
    if (facing != Facing::Aslant) return {facing == Facing::Up ? 1.0 : -1.0, 0, 0, 0, 1.0, 0};
    const double x = RealOr(210, 0.0), y = RealOr(220, 0.0), up = RealOr(230, 1.0);
    const double length = std::hypot(x, y, up);
    if (length == 0.0) return {};
    const double nx = x / length, ny = y / length, nz = up / length;
    const bool isNearZ = std::abs(nx) < nearZ && std::abs(ny) < nearZ;
    const double across = isNearZ ? std::hypot(nz, nx) : std::hypot(nx, ny);
    const double ax = (isNearZ ? nz : -ny) / across, ay = isNearZ ? 0.0 : nx / across;
    const double az = isNearZ ? -nx / across : 0.0;
    return {ax, ny * az - nz * ay, nx * z, ay, nz * ax - nx * az, ny * z};
}

std::string_view Fields::Text(int code) const {
    return Has(code) ? once_.at(code).value : std::string_view();
}

void Fields::CheckCount(int code, std::size_t found, const char* what) const {
    if (!Has(code)) return;
    const int stated = WholeValue(once_.at(code), source_);
    if (stated < 0 || static_cast<std::size_t>(stated) != found) {
        Fail(
            "it states " + std::to_string(stated) + " " + what + ", found " + std::to_string(found),
            kExportAnew);
    }
}

}  // namespace halvorn::engine::dxf
