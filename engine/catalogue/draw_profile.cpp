#include "catalogue/draw_profile.h"

#include <stdexcept>

#include "shapes/thin_wall_torsion.h"

namespace halvorn::engine {

namespace {

double Dimension(const CsvRecord& row, const char* column) {
    const std::optional<double> value = row.Number(column);
    if (!value) throw std::runtime_error(std::string("the dimension ") + column + " is missing");
    return *value;
}

shapes::FlangedProfile Flanged(const CsvRecord& row, const char* rootRadius) {
    return {Dimension(row, "h"), Dimension(row, "b"), Dimension(row, "tw"), Dimension(row, "tf"),
            Dimension(row, rootRadius)};
}

shapes::FlangedProfile Tapered(const CsvRecord& row) {
    shapes::FlangedProfile profile = Flanged(row, "r_root");
    profile.taper = {Dimension(row, "slope"), Dimension(row, "tf_at_from_toe"),
                     Dimension(row, "r_toe")};
    return profile;
}

// Calls `visit` with the dimensions of the row's profile, whose type tells what it is; a flanged
// one comes with whether it is a channel.
template <typename Visit>
auto VisitProfile(const CsvRecord& row, const Visit& visit) {
    const std::string& type = row.Text("type");
    if (type == "i") return visit(Flanged(row, "r"), false);
    if (type == "channel") return visit(Flanged(row, "r"), true);
    if (type == "taper_i") return visit(Tapered(row), false);
    if (type == "taper_channel") return visit(Tapered(row), true);
    if (type == "angle") {
        return visit(
            shapes::AngleProfile{Dimension(row, "h"), Dimension(row, "b"), Dimension(row, "t"),
                                 Dimension(row, "r_root"), Dimension(row, "r_toe")},
            false);
    }
    if (type == "rhs") {
        return visit(shapes::RectangularHollowProfile{Dimension(row, "h"), Dimension(row, "b"),
                                                      Dimension(row, "t"), Dimension(row, "r_out"),
                                                      Dimension(row, "r_in")},
                     false);
    }
    if (type == "chs") {
        return visit(shapes::CircularHollowProfile{Dimension(row, "h"), Dimension(row, "t")},
                     false);
    }
    throw std::runtime_error("unknown profile type '" + type + "'");
}

struct Drawing {
    const shapes::ArcDivision& division;

    shapes::Outline operator()(const shapes::FlangedProfile& profile, bool isChannel) const {
        return isChannel ? DrawChannel(profile, division) : DrawISection(profile, division);
    }
    shapes::Outline operator()(const shapes::AngleProfile& profile, bool) const {
        return DrawAngle(profile, division);
    }
    shapes::Outline operator()(const shapes::RectangularHollowProfile& profile, bool) const {
        return DrawRectangularHollow(profile, division);
    }
    shapes::Outline operator()(const shapes::CircularHollowProfile& profile, bool) const {
        return DrawCircularHollow(profile, division);
    }
};

struct Torsion {
    double operator()(const shapes::FlangedProfile& profile, bool isChannel) const {
        return isChannel ? ChannelTorsion(profile) : ISectionTorsion(profile);
    }
    double operator()(const shapes::AngleProfile& profile, bool) const {
        return AngleTorsion(profile);
    }
    double operator()(const shapes::RectangularHollowProfile& profile, bool) const {
        return RectangularHollowTorsion(profile);
    }
    double operator()(const shapes::CircularHollowProfile& profile, bool) const {
        return CircularHollowTorsion(profile);
    }
};

}  // namespace

shapes::Outline DrawProfile(const CsvRecord& row, const shapes::ArcDivision& division) {
    return VisitProfile(row, Drawing{division});
}

double ThinWallTorsionOf(const CsvRecord& row) {
    return VisitProfile(row, Torsion{});
}

}  // namespace halvorn::engine
