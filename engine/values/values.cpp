#include "values/values.h"

namespace halvorn::engine {

const std::array<ValueDescription, 17> kSectionValues = {{
    {"area", "Area", "A", 2, 3},
    {"centroid_x", "Centre of gravity, x", "xG", 1, 1},
    {"centroid_y", "Centre of gravity, y", "yG", 1, 2},
    {"inertia_x", "Second moment, horizontal axis", "Ix", 4, 7},
    {"inertia_y", "Second moment, vertical axis", "Iy", 4, 6},
    {"inertia_xy", "Product moment", "Ixy", 4, 8},
    {"elastic_modulus_bottom", "Elastic modulus, lowest fibre", "Wel,bottom", 3, 10},
    {"elastic_modulus_top", "Elastic modulus, highest fibre", "Wel,top", 3, 11},
    {"elastic_modulus_left", "Elastic modulus, leftmost fibre", "Wel,left", 3, 12},
    {"elastic_modulus_right", "Elastic modulus, rightmost fibre", "Wel,right", 3, 13},
    {"plastic_modulus_x", "Plastic modulus, horizontal axis", "Wpl,x", 3, 14},
    {"plastic_modulus_y", "Plastic modulus, vertical axis", "Wpl,y", 3, 15},
    {"torsion_constant", "Torsion constant", "It", 4, 0},
    {"torsion_modulus", "Torsion modulus", "Wt", 3, 9},
    {"shear_area_1", "Shear area, first", "Av1", 2, 4},
    {"shear_area_2", "Shear area, second", "Av2", 2, 5},
    {"extra_sum", "Sum of the profiles' extra values", "extra", 0, 16},
}};

const std::array<ValueDescription, 10> kPolylineValues = {{
    {"area", "Area", "A", 2, 0},
    {"centroid_x", "Centre of gravity, x", "xG", 1, 1},
    {"centroid_y", "Centre of gravity, y", "yG", 1, 2},
    {"inertia_x_origin", "Second moment, x axis through the origin", "Ix0", 4, 7},
    {"inertia_y_origin", "Second moment, y axis through the origin", "Iy0", 4, 8},
    {"inertia_xy_origin", "Product moment about the origin", "Ixy0", 4, 9},
    {"torsion_constant", "Torsion constant", "It", 4, 3},
    {"torsion_modulus", "Torsion modulus", "Wt", 3, 4},
    {"shear_area_x", "Shear area, x", "Avx", 2, 5},
    {"shear_area_y", "Shear area, y", "Avy", 2, 6},
}};

const std::array<DerivedDescription, 17> kDerivedValues = {{
    {"principal_inertia_1", "Principal second moment, larger", "I1", 4, ""},
    {"principal_inertia_2", "Principal second moment, smaller", "I2", 4, ""},
    {"principal_angle", "Angle of principal axis 1 from x", "alpha", 0, "deg"},
    {"radius_of_gyration_x", "Radius of gyration, horizontal axis", "ix", 1, ""},
    {"radius_of_gyration_y", "Radius of gyration, vertical axis", "iy", 1, ""},
    {"radius_of_gyration_1", "Radius of gyration, principal axis 1", "i1", 1, ""},
    {"radius_of_gyration_2", "Radius of gyration, principal axis 2", "i2", 1, ""},
    {"plastic_axis_y", "Horizontal plastic axis, y", "ypl", 1, ""},
    {"plastic_axis_x", "Vertical plastic axis, x", "xpl", 1, ""},
    {"plastic_modulus_x_net", "Net plastic modulus, horizontal axis", "Wpl,x,net", 3, ""},
    {"plastic_modulus_y_net", "Net plastic modulus, vertical axis", "Wpl,y,net", 3, ""},
    {"plastic_axis_y_net", "Horizontal plastic axis, net, y", "ypl,net", 1, ""},
    {"plastic_axis_x_net", "Vertical plastic axis, net, x", "xpl,net", 1, ""},
    {"shape_factor_x", "Shape factor, horizontal axis", "Wpl,x/Wel,x", 0, ""},
    {"shape_factor_y", "Shape factor, vertical axis", "Wpl,y/Wel,y", 0, ""},
    {"torsion_constant_thin_wall", "Torsion constant, thin walls", "It,thin", 4, ""},
    {"mass_per_metre", "Mass per metre", "m", 0, "kg/m"},
}};

std::string UnitLabel(const std::string& lengthUnit, int power) {
    if (power == 0) return "";
    return power == 1 ? lengthUnit : lengthUnit + "^" + std::to_string(power);
}

}  // namespace halvorn::engine
