/// @file search.h
/// The plastic search, once, for every method that can tell what lies beyond a line.
#ifndef HALVORN_BENCHMARKS_SEARCH_H
#define HALVORN_BENCHMARKS_SEARCH_H

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "sections.h"

namespace halvorn::benchmarks {

/// Area on one side of an axis and its first moment about the axis, both positive.
struct Part {
    double area = 0.0;
    double moment = 0.0;
};

/// The half plane beyond an axis.
struct HalfPlane {
    bool isVertical;  ///< x = pos, else y = pos
    double pos;
    bool isHigh;  ///< the side of larger coordinates
};

/// A way to clip a section. Made once for a section, in the form that the method works on.
class Clipper {
public:
    virtual ~Clipper() = default;
    /// Returns the area beyond the axis.
    virtual double AreaBeyond(const HalfPlane& side) = 0;
    /// Returns area and first moment beyond the axis.
    virtual Part PartBeyond(const HalfPlane& side) = 0;
};

struct Moduli {
    double x = 0.0;
    double y = 0.0;
};

/// Runs the library's search with its stopping rule (areas within 1e-7, at most 51 lines) on both
/// directions: one clip for each line tried, the other side's area by subtraction, and two parts at
/// the end. In the peers' favour: the library's own definition clips both sides of every line.
Moduli PlasticSearch(const Section& section, Clipper& clipper);

/// One loop over the edges for each line, no pieces: the least that any method does.
std::unique_ptr<Clipper> MakeOnePass(const Section& section);

/// A method with its name and how to prepare it for a section.
struct Method {
    std::string name;
    std::unique_ptr<Clipper> (*make)(const Section&);
};

/// The peers that were found when this program was built.
const std::vector<Method>& Peers();

}  // namespace halvorn::benchmarks

#endif
