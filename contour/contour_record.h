/// @file contour_record.h
/// One stored contour of a section.
#ifndef HALVORN_CONTOUR_CONTOUR_RECORD_H
#define HALVORN_CONTOUR_CONTOUR_RECORD_H

#include <vector>

#include "numeric/point2d.h"

namespace halvorn {

/// A contour as the host pushed it: its flag, and its vertices in the host's order and orientation.
struct ContourRecord {
    unsigned char bSolid;  ///< non-zero: solid; 0: hole; as a number, the weight in plastic moduli
    std::vector<point2D> Points;  ///< closed implicitly; may be empty
};

}  // namespace halvorn

#endif
