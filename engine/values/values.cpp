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

constexpr ValueDescription kArea = {"area", "Area", "A", 2};
constexpr ValueDescription kCentroidX = {"centroid_x", "Centre of gravity, x", "xG", 1};
constexpr ValueDescription kCentroidY = {"centroid_y", "Centre of gravity, y", "yG", 1};
constexpr ValueDescription kInertiaX = {"inertia_x", "Second moment, horizontal axis", "Ix", 4};
constexpr ValueDescription kInertiaY = {"inertia_y", "Second moment, vertical axis", "Iy", 4};
constexpr ValueDescription kInertiaXY = {"inertia_xy", "Product moment", "Ixy", 4};
constexpr ValueDescription kBottom = {"elastic_modulus_bottom", "Elastic modulus, lowest fibre",
                                      "Wel,bottom", 3};
constexpr ValueDescription kTop = {"elastic_modulus_top", "Elastic modulus, highest fibre",
                                   "Wel,top", 3};
constexpr ValueDescription kLeft = {"elastic_modulus_left", "Elastic modulus, leftmost fibre",
                                    "Wel,left", 3};
constexpr ValueDescription kRight = {"elastic_modulus_right", "Elastic modulus, rightmost fibre",
                                     "Wel,right", 3};
constexpr ValueDescription kPlasticX = {"plastic_modulus_x", "Plastic modulus, horizontal axis",
                                        "Wpl,x", 3};
constexpr ValueDescription kPlasticY = {"plastic_modulus_y", "Plastic modulus, vertical axis",
                                        "Wpl,y", 3};
constexpr ValueDescription kTorsionConstant = {"torsion_constant", "Torsion constant", "It", 4};
constexpr ValueDescription kTorsionModulus = {"torsion_modulus", "Torsion modulus", "Wt", 3};

}  // namespace

const std::array<ValueDescription, 33> kValues = {{
    kArea,
    kCentroidX,
    kCentroidY,
    kInertiaX,
    kInertiaY,
    kInertiaXY,
    {"principal_inertia_1", "Principal second moment, larger", "I1", 4},
    {"principal_inertia_2", "Principal second moment, smaller", "I2", 4},
    {"principal_angle", "Angle of principal axis 1 from x", "alpha", 0, "deg"},
    {"radius_of_gyration_x", "Radius of gyration, horizontal axis", "ix", 1},
    {"radius_of_gyration_y", "Radius of gyration, vertical axis", "iy", 1},
    {"radius_of_gyration_1", "Radius of gyration, principal axis 1", "i1", 1},
    {"radius_of_gyration_2", "Radius of gyration, principal axis 2", "i2", 1},
    kBottom,
    kTop,
    kLeft,
    kRight,
    kPlasticX,
    kPlasticY,
    {"plastic_axis_y", "Horizontal plastic axis, y", "ypl", 1},
    {"plastic_axis_x", "Vertical plastic axis, x", "xpl", 1},
    {"shape_factor_x", "Shape factor, horizontal axis", "Wpl,x/Wel,x", 0},
    {"shape_factor_y", "Shape factor, vertical axis", "Wpl,y/Wel,y", 0},
    kTorsionConstant,
    kTorsionModulus,
    {"warping_constant", "Warping constant", "Iw", 6},
    {"shear_centre_x", "Shear centre, x", "xM", 1},
    {"shear_centre_y", "Shear centre, y", "yM", 1},
    {"shear_stiffness_area_x", "Shear stiffness area, force along x", "Asx", 2},
    {"shear_stiffness_area_y", "Shear stiffness area, force along y", "Asy", 2},
    {"monosymmetry_x", "Monosymmetry, horizontal axis", "bx", 1},
    {"monosymmetry_y", "Monosymmetry, vertical axis", "by", 1},
    {"mass_per_metre", "Mass per metre", "m", 0, "kg/m"},
}};

const std::array<ValueDescription, 10> kPublishedValues = {{
    kArea,
    {"centroid_x", "Centre of gravity from the web or leg, x", "cx", 1},
    {"centroid_y", "Centre of gravity from the leg, y", "cy", 1},
    kInertiaX,
    kInertiaY,
    kInertiaXY,
    {"elastic_modulus_x_min", "Smaller elastic modulus, horizontal axis", "Wel,x", 3},
    {"elastic_modulus_y_min", "Smaller elastic modulus, vertical axis", "Wel,y", 3},
    kPlasticX,
    kPlasticY,
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

Value DescribedValue(const ValueDescription& description, const std::string& lengthUnit) {
    Value value;
    value.key = description.key;
    value.name = description.name;
    value.symbol = description.symbol;
    value.power = description.power;
    if (description.unit != nullptr) value.unit = description.unit;
    if (value.power != 0) value.unit = lengthUnit;
    if (value.power > 1) value.unit += "^" + std::to_string(value.power);
    return value;
}

}  // namespace halvorn::engine
