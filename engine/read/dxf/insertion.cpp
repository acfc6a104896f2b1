#include "read/dxf/insertion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/text.h"
#include "read/dxf/fields.h"

namespace halvorn::engine::dxf {

namespace {

// As many outlines as a section may have; bounds what a hostile file of a few lines can ask for.
constexpr double kMostCopies = 10000.0;

// A count that is missing, 0 or negative means one.
void ReadGrid(const Fields& fields, double cosine, double sine, Insertion& insertion) {
    insertion.columns = std::max(fields.WholeOr(70, 1), 1);
    insertion.rows = std::max(fields.WholeOr(71, 1), 1);
    const double along = fields.RealOr(44, 0.0), up = fields.RealOr(45, 0.0);
    insertion.toColumn = {cosine * along, sine * along};
    insertion.toRow = {-sine * up, cosine * up};
    if (static_cast<double>(insertion.columns) * insertion.rows > kMostCopies) {
        fields.Fail("its " + std::to_string(insertion.columns) + " columns and " +
                        std::to_string(insertion.rows) + " rows are more than 10000 copies",
                    "keep only the section in the drawing");
    }
}

}  // namespace

Insertion ReadInsertion(const Entity& entity, const std::string& source) {
    const Fields fields(entity, source);
    const double scaleX = fields.RealOr(41, 1.0), scaleY = fields.RealOr(42, 1.0);
    const double angle = fields.RealOr(50, 0.0) * std::numbers::pi / 180.0;
    const double cosine = std::cos(angle), sine = std::sin(angle);
    Insertion insertion;
    insertion.block = InCapitals(fields.Text(2));
    ReadGrid(fields, cosine, sine, insertion);
    insertion.isAslant = fields.Direction() == Facing::Aslant;
    insertion.hasExtent = scaleX != 0.0 && scaleY != 0.0;
    insertion.toDrawing = fields.ToDrawing(fields.RealOr(30, 0.0));
    insertion.placement = {cosine * scaleX, -sine * scaleY,  fields.Real(10),
                           sine * scaleX,   cosine * scaleY, fields.Real(20)};
    return insertion;
}

PlaneMap Insertion::Copy(int column, int row) const {
    PlaneMap copy = placement;
    copy.dx += column * toColumn.x + row * toRow.x;
    copy.dy += column * toColumn.y + row * toRow.y;
    return toDrawing.After(copy);
}

}  // namespace halvorn::engine::dxf
