#include "values/values.h"

namespace halvorn::engine {

namespace {

template <typename Outputs, auto Member>
double Get(const Outputs& outputs) {
    return outputs.*Member;
}

template <typename Outputs>
double CentroidX(const Outputs& outputs) {
    return outputs.centroid.x;
}

template <typename Outputs>
double CentroidY(const Outputs& outputs) {
    return outputs.centroid.y;
}

template <auto Member>
constexpr auto kOfClass = &Get<ClassOutputs, Member>;
template <auto Member>
constexpr auto kOfPolyline = &Get<PolylineOutputs, Member>;

constexpr auto kGeometry = ValueGroup::Geometry;
constexpr auto kBending = ValueGroup::Bending;
constexpr auto kPlastic = ValueGroup::Plastic;
constexpr auto kTorsion = ValueGroup::Torsion;
constexpr auto kShear = ValueGroup::Shear;

// A value that tables publish under the same key.
constexpr ValueDescription Published(ValueDescription description) {
    description.published = description.key;
    return description;
}

// A value of a group whose number comes alone.
constexpr ValueDescription Exact(ValueGroup group, const char* key, const char* name,
                                 const char* symbol, int power, const char* unit = nullptr) {
    return {key, name, symbol, power, unit, group};
}

constexpr ValueDescription Modulus(const char* key, const char* name, const char* symbol,
                                   const char* published) {
    return {key, name, symbol, 3, nullptr, kBending, Certainty::Exact, published};
}

constexpr ValueDescription Solved(ValueGroup group, Certainty certainty, const char* key,
                                  const char* name, const char* symbol, int power) {
    return {key, name, symbol, power, nullptr, group, certainty};
}

constexpr ValueDescription kArea = Exact(kGeometry, "area", "Area", "A", 2);
constexpr ValueDescription kCentroidX =
    Exact(kGeometry, "centroid_x", "Centre of gravity, x", "xG", 1);
constexpr ValueDescription kCentroidY =
    Exact(kGeometry, "centroid_y", "Centre of gravity, y", "yG", 1);
constexpr ValueDescription kInertiaX =
    Exact(kBending, "inertia_x", "Second moment about x", "Ix", 4);
constexpr ValueDescription kInertiaY =
    Exact(kBending, "inertia_y", "Second moment about y", "Iy", 4);
constexpr ValueDescription kInertiaXY = Exact(kBending, "inertia_xy", "Product moment", "Ixy", 4);
constexpr const char* kSmallerX = "elastic_modulus_x_min";
constexpr const char* kSmallerY = "elastic_modulus_y_min";
constexpr ValueDescription kBottom =
    Modulus("elastic_modulus_bottom", "Elastic modulus, bottom", "Wel,bottom", kSmallerX);
constexpr ValueDescription kTop =
    Modulus("elastic_modulus_top", "Elastic modulus, top", "Wel,top", kSmallerX);
constexpr ValueDescription kLeft =
    Modulus("elastic_modulus_left", "Elastic modulus, left", "Wel,left", kSmallerY);
constexpr ValueDescription kRight =
    Modulus("elastic_modulus_right", "Elastic modulus, right", "Wel,right", kSmallerY);
constexpr ValueDescription kPlasticX =
    Exact(kPlastic, "plastic_modulus_x", "Plastic modulus about x", "Wpl,x", 3);
constexpr ValueDescription kPlasticY =
    Exact(kPlastic, "plastic_modulus_y", "Plastic modulus about y", "Wpl,y", 3);
constexpr ValueDescription kTorsionConstant =
    Solved(kTorsion, Certainty::Bounds, "torsion_constant", "Torsion constant", "It", 4);
constexpr ValueDescription kTorsionModulus =
    Solved(kTorsion, Certainty::Error, "torsion_modulus", "Torsion modulus", "Wt", 3);
constexpr ValueDescription kWarpingConstant =
    Solved(kTorsion, Certainty::Error, "warping_constant", "Warping constant", "Iw", 6);

}  // namespace

const std::array<ValueDescription, 47> kValues = {{
    Published(kArea),
    Exact(kGeometry, "width", "Overall width", "b", 1),
    Exact(kGeometry, "height", "Overall height", "h", 1),
    Published(kCentroidX),
    Published(kCentroidY),
    Exact(kGeometry, "fibre_distance_bottom", "Distance to bottom fibre", "e,bottom", 1),
    Exact(kGeometry, "fibre_distance_top", "Distance to top fibre", "e,top", 1),
    Exact(kGeometry, "fibre_distance_left", "Distance to left fibre", "e,left", 1),
    Exact(kGeometry, "fibre_distance_right", "Distance to right fibre", "e,right", 1),
    Exact(kGeometry, "perimeter", "Perimeter, outer outlines", "U", 1),
    Exact(kGeometry, "mass_per_metre", "Mass per metre", "m", 0, "kg/m"),
    Published(kInertiaX),
    Published(kInertiaY),
    Published(kInertiaXY),
    Exact(kBending, "principal_inertia_1", "Second moment, axis 1", "I1", 4),
    Exact(kBending, "principal_inertia_2", "Second moment, axis 2", "I2", 4),
    Exact(kBending, "principal_angle", "Angle from x to axis 1", "alpha", 0, "deg"),
    Exact(kBending, "radius_of_gyration_x", "Radius of gyration, x", "ix", 1),
    Exact(kBending, "radius_of_gyration_y", "Radius of gyration, y", "iy", 1),
    Exact(kBending, "radius_of_gyration_1", "Radius of gyration, axis 1", "i1", 1),
    Exact(kBending, "radius_of_gyration_2", "Radius of gyration, axis 2", "i2", 1),
    kBottom,
    kTop,
    kLeft,
    kRight,
    Exact(kBending, "elastic_modulus_1", "Elastic modulus, axis 1", "Wel,1", 3),
    Exact(kBending, "elastic_modulus_2", "Elastic modulus, axis 2", "Wel,2", 3),
    Published(kPlasticX),
    Published(kPlasticY),
    Exact(kPlastic, "plastic_modulus_1", "Plastic modulus, axis 1", "Wpl,1", 3),
    Exact(kPlastic, "plastic_modulus_2", "Plastic modulus, axis 2", "Wpl,2", 3),
    Exact(kPlastic, "plastic_axis_y", "Horizontal plastic axis", "ypl", 1),
    Exact(kPlastic, "plastic_axis_x", "Vertical plastic axis", "xpl", 1),
    Exact(kPlastic, "shape_factor_x", "Shape factor about x", "Wpl/Wel,x", 0),
    Exact(kPlastic, "shape_factor_y", "Shape factor about y", "Wpl/Wel,y", 0),
    Published(kTorsionConstant),
    kTorsionModulus,
    Published(kWarpingConstant),
    Solved(kTorsion, Certainty::Error, "shear_centre_x", "Shear centre, x", "xM", 1),
    Solved(kTorsion, Certainty::Error, "shear_centre_y", "Shear centre, y", "yM", 1),
    Solved(kTorsion, Certainty::Error, "polar_radius", "Polar radius about M", "iM", 1),
    Solved(kTorsion, Certainty::Error, "monosymmetry_x", "Monosymmetry about x", "bx", 1),
    Solved(kTorsion, Certainty::Error, "monosymmetry_y", "Monosymmetry about y", "by", 1),
    Solved(kShear, Certainty::Bounds, "shear_stiffness_area_x", "Shear stiffness area, x", "Asx",
           2),
    Solved(kShear, Certainty::Bounds, "shear_stiffness_area_y", "Shear stiffness area, y", "Asy",
           2),
    Exact(kShear, "static_moment_x", "Static moment about x", "Sx", 3),
    Exact(kShear, "static_moment_y", "Static moment about y", "Sy", 3),
}};

const std::array<ValueDescription, 12> kPublishedValues = {{
    kArea,
    {"centroid_x", "Centre of gravity from the web or leg, x", "cx", 1},
    {"centroid_y", "Centre of gravity from the leg, y", "cy", 1},
    kInertiaX,
    kInertiaY,
    kInertiaXY,
    {kSmallerX, "Smaller elastic modulus about x", "Wel,x", 3},
    {kSmallerY, "Smaller elastic modulus about y", "Wel,y", 3},
    kPlasticX,
    kPlasticY,
    kTorsionConstant,
    kWarpingConstant,
}};

const std::array<OutputDescription<ClassOutputs>, 17> kClassValues = {{
    {kArea, kOfClass<&ClassOutputs::area>},
    {kCentroidX, &CentroidX<ClassOutputs>},
    {kCentroidY, &CentroidY<ClassOutputs>},
    {kInertiaX, kOfClass<&ClassOutputs::inertiaX>},
    {kInertiaY, kOfClass<&ClassOutputs::inertiaY>},
    {kInertiaXY, kOfClass<&ClassOutputs::inertiaXY>},
    {kBottom, kOfClass<&ClassOutputs::elasticBottom>},
    {kTop, kOfClass<&ClassOutputs::elasticTop>},
    {kLeft, kOfClass<&ClassOutputs::elasticLeft>},
    {kRight, kOfClass<&ClassOutputs::elasticRight>},
    {kPlasticX, kOfClass<&ClassOutputs::plasticX>},
    {kPlasticY, kOfClass<&ClassOutputs::plasticY>},
    {kTorsionConstant, kOfClass<&ClassOutputs::torsionConstant>},
    {kTorsionModulus, kOfClass<&ClassOutputs::torsionModulus>},
    {{"shear_area_1", "Shear area, first", "Av1", 2}, kOfClass<&ClassOutputs::shearArea1>},
    {{"shear_area_2", "Shear area, second", "Av2", 2}, kOfClass<&ClassOutputs::shearArea2>},
    {{"extra_sum", "Sum of the profiles' extra values", "extra", 0},
     kOfClass<&ClassOutputs::extraSum>},
}};

const std::array<OutputDescription<PolylineOutputs>, 10> kPolylineValues = {{
    {kArea, kOfPolyline<&PolylineOutputs::area>},
    {kCentroidX, &CentroidX<PolylineOutputs>},
    {kCentroidY, &CentroidY<PolylineOutputs>},
    {{"inertia_x_origin", "Second moment, x axis through the origin", "Ix0", 4},
     kOfPolyline<&PolylineOutputs::inertiaX>},
    {{"inertia_y_origin", "Second moment, y axis through the origin", "Iy0", 4},
     kOfPolyline<&PolylineOutputs::inertiaY>},
    {{"inertia_xy_origin", "Product moment about the origin", "Ixy0", 4},
     kOfPolyline<&PolylineOutputs::inertiaXY>},
    {kTorsionConstant, kOfPolyline<&PolylineOutputs::torsionConstant>},
    {kTorsionModulus, kOfPolyline<&PolylineOutputs::torsionModulus>},
    {{"shear_area_x", "Shear area, x", "Avx", 2}, kOfPolyline<&PolylineOutputs::shearAreaX>},
    {{"shear_area_y", "Shear area, y", "Avy", 2}, kOfPolyline<&PolylineOutputs::shearAreaY>},
}};

const char* GroupName(ValueGroup group) {
    switch (group) {
        case ValueGroup::Bending:
            return "bending";
        case ValueGroup::Plastic:
            return "plastic";
        case ValueGroup::Torsion:
            return "torsion";
        case ValueGroup::Shear:
            return "shear";
        case ValueGroup::Geometry:
            break;
    }
    return "geometry";
}

Value DescribedValue(const ValueDescription& description, const std::string& lengthUnit) {
    Value value;
    value.key = description.key;
    value.name = description.name;
    value.symbol = description.symbol;
    value.power = description.power;
    if (description.unit != nullptr) value.unit = description.unit;
    if (value.power != 0) value.unit = lengthUnit;
    if (value.power > 1) value.unit += "^" + std::to_string(value.power);
    value.group = description.group;
    return value;
}

}  // namespace halvorn::engine
