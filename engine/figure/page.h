/// @file page.h
/// A drawing as lines, areas and texts on a page, whatever paints it.
///
/// Lengths are points [pt, 1/72 inch], x to the right, y downwards, (0, 0) in the upper left
/// corner.
#ifndef HALVORN_ENGINE_FIGURE_PAGE_H
#define HALVORN_ENGINE_FIGURE_PAGE_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace halvorn::engine::figure {

struct Spot {
    double x;
    double y;
};

struct PageBox {
    double left;
    double top;
    double right;
    double bottom;

    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
    bool Meets(const PageBox& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    bool Holds(const Spot& spot) const {
        return left <= spot.x && spot.x <= right && top <= spot.y && spot.y <= bottom;
    }
    PageBox Grown(double by) const { return {left - by, top - by, right + by, bottom + by}; }
};

/// What a line means; the painter gives each kind its weight and dashes.
/// Rim is an outline so thin that the colours of thin walls show beside it.
enum class LineKind {
    Outline,
    Rim,
    Elastic,
    Plastic,
    Principal,
    Dimension,
    Arrow,
    Hatch,
    Leader,
    Rule
};

struct Line {
    LineKind kind;
    std::vector<Spot> spots;
    bool isClosed = false;
};

/// One ring of the section; overlapping rings are painted as the sum of their windings.
struct Area {
    std::vector<Spot> spots;  ///< as given, whichever way round
    bool isSolid;
};

/// A tinted patch over the areas: one side of a plastic axis, or another material.
struct Block {
    std::vector<Spot> spots;
    bool isFirst;  ///< of the two tints
};

/// Red, green and blue from 0 to 255.
struct Colour {
    int red, green, blue;
};

/// An area of one colour. Its outlines run one way round and its holes the other; it covers the
/// bands before it, so that no gap shows between two.
struct Band {
    std::vector<std::vector<Spot>> rings;
    Colour colour;
};

/// A stretch of text on the line (0), raised (1) or lowered (-1).
struct Run {
    std::string text;
    int level = 0;
};
using Runs = std::vector<Run>;

enum class Anchor { Left, Centre, Right };

struct Label {
    Runs runs;
    Spot at;  ///< on the baseline, at the anchor
    double size = 10.0;
    Anchor anchor = Anchor::Left;
    bool isBold = false;
    bool isUpright = false;  ///< reads from bottom to top
    bool isGrey = false;
};

/// Raised and lowered runs are this much smaller, and shifted by this much of the size.
constexpr double kScriptSize = 0.72;
constexpr double kScriptShift = 0.28;

struct Page {
    double width = 0.0;
    double height = 0.0;
    PageBox drawing{};  ///< where the section, its axes and its dimensions are
    std::vector<Area> areas;
    std::vector<Block> blocks;
    std::vector<Band> bands;
    std::vector<Line> lines;
    std::vector<std::vector<Spot>> arrowHeads;  ///< filled
    std::vector<Spot> centroids;                ///< where a mark of the centre of gravity is
    std::vector<Spot> peaks;                    ///< where a mark of the largest stress is
    std::vector<PageBox> bars;                  ///< filled, of the scale bar
    std::vector<Label> labels;
    std::string title;
    std::string summary;  ///< the figure in one line of words
};

/// Returns the width of a text of one size, in points. From the painter, which knows its font.
using MeasureText = std::function<double(const std::string& text, double size, bool isBold)>;

/// Returns the corners of an area, a solid's one way round and a hole's the other, so that their
/// winding numbers add up to what the library counts.
std::vector<Spot> Wound(const Area& area);

/// Returns the width of a text along its baseline.
double WidthOf(const Label& label, const MeasureText& measure);

/// Returns the box that a text takes up on the page.
PageBox BoxOf(const Label& label, const MeasureText& measure);

/// Returns the part of a segment within a box, or nothing.
std::optional<std::pair<Spot, Spot>> Clipped(const Spot& from, const Spot& to, const PageBox& box);

}  // namespace halvorn::engine::figure

#endif
