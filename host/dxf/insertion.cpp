#include "dxf/insertion.h"

#include <cmath>
#include <numbers>

#include "dxf/fields.h"

namespace halvorn::host::dxf {

Insertion ReadInsertion(const Entity& entity, const std::string& source) {
    const Fields fields(entity, source);
    const double scaleX = fields.RealOr(41, 1.0), scaleY = fields.RealOr(42, 1.0);
    const double angle = fields.RealOr(50, 0.0) * std::numbers::pi / 180.0;
    const double cosine = std::cos(angle), sine = std::sin(angle);
    const Facing facing = fields.Direction();
    Insertion insertion;
    insertion.block = Capitals(fields.Text(2));
    insertion.isSingle = fields.WholeOr(70, 1) <= 1 && fields.WholeOr(71, 1) <= 1;
    insertion.isFlat = facing != Facing::Aslant && scaleX != 0.0 && scaleY != 0.0;
    insertion.placement = {cosine * scaleX, -sine * scaleY,  fields.Real(10),
                           sine * scaleX,   cosine * scaleY, fields.Real(20)};
    if (facing == Facing::Down) {
        insertion.placement = PlaneMap{-1.0, 0.0, 0.0, 0.0, 1.0, 0.0}.After(insertion.placement);
    }
    return insertion;
}

}  // namespace halvorn::host::dxf
