/// @file fields.h
/// The groups of one entity.
#ifndef HALVORN_ENGINE_READ_DXF_FIELDS_H
#define HALVORN_ENGINE_READ_DXF_FIELDS_H

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "read/dxf/drawing.h"
#include "read/dxf/plane_map.h"

namespace halvorn::engine::dxf {

/// Where the direction of extrusion points, the z axis of an entity's own coordinates. Downwards,
/// their x axis runs against that of the drawing.
enum class Facing { Up, Down, Aslant };

/// The groups of an entity that may come once, by code, and those that form lists, in their order.
class Fields {
public:
    /// @param lists    codes of the groups that form lists
    /// @param repeated codes of the groups that may come again as long as they say the same
    /// @throws InputError for any other group that comes twice
    Fields(const Entity& entity, const std::string& source, std::initializer_list<int> lists = {},
           std::initializer_list<int> repeated = {});

    bool Has(int code) const { return once_.contains(code); }

    /// @throws InputError when the group is missing or is no number
    double Real(int code) const;
    double RealOr(int code, double otherwise) const;
    int WholeOr(int code, int otherwise) const;

    Facing Direction() const;

    /// Returns the map from the entity's own coordinates, at the height `z` of them, to the
    /// drawing's, seen along its z axis.
    PlaneMap ToDrawing(double z) const;

    /// Returns a text, empty when the group is missing.
    std::string_view Text(int code) const;

    const std::vector<Group>& Lists() const { return lists_; }

    /// @throws InputError unless the count that group `code` states, if any, is `found`
    void CheckCount(int code, std::size_t found, const char* what) const;

    [[noreturn]] void Fail(const std::string& problem, const std::string& remedy) const;

private:
    void TakeOnce(const Group& group, std::initializer_list<int> repeated);

    const Entity& entity_;
    const std::string& source_;
    std::map<int, Group> once_;
    std::vector<Group> lists_;
};

}  // namespace halvorn::engine::dxf

#endif
