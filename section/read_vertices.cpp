#include "section/read_vertices.h"

#include <algorithm>
#include <cstddef>

namespace halvorn {

std::vector<point2D> ReadVertices(int count, const double* coords, const BoundingBoxRef& box) {
    std::vector<point2D> vertices(static_cast<std::size_t>(std::max(count, 0)));
    // Bounds are kept in locals: through the references every vertex would wait for four stores.
    double xMin = box.xMin;
    double xMax = box.xMax;
    double yMin = box.yMin;
    double yMax = box.yMax;
    for (point2D& vertex : vertices) {
        const double x = *coords++;
        const double y = *coords++;
        vertex = {x, y};
        xMax = x > xMax ? x : xMax;
        yMax = y > yMax ? y : yMax;
        xMin = x < xMin ? x : xMin;
        yMin = y < yMin ? y : yMin;
    }
    box.xMin = xMin;
    box.xMax = xMax;
    box.yMin = yMin;
    box.yMax = yMax;
    return vertices;
}

}  // namespace halvorn
