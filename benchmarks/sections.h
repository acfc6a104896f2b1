/// @file sections.h
/// The sections that are measured.
#ifndef HALVORN_BENCHMARKS_SECTIONS_H
#define HALVORN_BENCHMARKS_SECTIONS_H

#include <cstddef>
#include <string>
#include <vector>

namespace halvorn::benchmarks {

/// A section of solid contours, each x0, y0, x1, y1, ...
struct Section {
    std::string name;
    std::vector<std::vector<double>> contours;

    /// Number of vertices of all contours.
    std::size_t Size() const;
};

/// A ring of n vertices about (3, 1), 0.5 across, with a wave of 24 periods.
std::vector<double> WavyRing(std::size_t n);

/// A comb: teeth up and down from a back, all of different lengths; `turned` by a quarter, so that
/// the teeth lie along x.
std::vector<double> Comb(std::size_t teeth, bool turned = false);

/// Every shape that the plastic search is measured on, from a rectangle to 100 000 vertices.
std::vector<Section> PlasticSections();

}  // namespace halvorn::benchmarks

#endif
