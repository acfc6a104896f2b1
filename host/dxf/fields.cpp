#include "dxf/fields.h"

#include <algorithm>
#include <cmath>

#include "input/input_text.h"

namespace halvorn::host::dxf {

namespace {

// Three lists of coordinates, knots and weights of a spline of the most points that are taken.
constexpr std::size_t kMostListed = 4000000;

// Groups of geometry: numbers, flags, counts and the direction of extrusion. What colours, names
// and links an entity may come in any number.
bool IsGeometry(int code) {
    return (code >= 10 && code < 60 && code != 48) || (code >= 70 && code < 80) || code == 90 ||
           (code >= 210 && code <= 230);
}

}  // namespace

Fields::Fields(const Entity& entity, const std::string& source, std::initializer_list<int> lists)
    : entity_(entity), source_(source) {
    constexpr int startOfEmbeddedObject = 101;
    GroupReader reader(entity.body, source, entity.line + 1);
    for (Group group; reader.Next(group) && group.code != startOfEmbeddedObject;) {
        if (std::find(lists.begin(), lists.end(), group.code) != lists.end()) {
            if (lists_.size() >= kMostListed) Fail("it has too many points", "simplify it");
            lists_.push_back(group);
        } else if (group.code == 2 || IsGeometry(group.code)) {
            if (!once_.emplace(group.code, group).second) {
                Refuse(source, group.line,
                       "the group " + std::to_string(group.code) + " comes twice in this " +
                           Excerpt(entity.kind),
                       "export the drawing anew as ASCII DXF");
            }
        }
    }
}

void Fields::Fail(const std::string& problem, const std::string& remedy) const {
    Refuse(source_, entity_.line, Excerpt(entity_.kind) + ": " + problem, remedy);
}

double Fields::Real(int code) const {
    const auto found = once_.find(code);
    if (found == once_.end()) {
        Fail("its group " + std::to_string(code) + " is missing",
             "export the drawing anew as ASCII DXF");
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
    // The programs that write directions out of the z axis by rounding stay far below this [rad].
    constexpr double parallel = 1e-9;
    const double x = RealOr(210, 0.0), y = RealOr(220, 0.0), z = RealOr(230, 1.0);
    if (std::hypot(x, y) > parallel * std::abs(z) || z == 0.0) return Facing::Aslant;
    return z > 0.0 ? Facing::Up : Facing::Down;
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
            "export the drawing anew as ASCII DXF");
    }
}

}  // namespace halvorn::host::dxf
