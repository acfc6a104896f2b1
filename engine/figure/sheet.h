/// @file sheet.h
/// A page in the making: its frame, its scale, and what is put on it piece by piece.
#ifndef HALVORN_ENGINE_FIGURE_SHEET_H
#define HALVORN_ENGINE_FIGURE_SHEET_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "figure/page.h"
#include "geometry/box.h"
#include "values/report.h"

namespace halvorn::engine::figure {

// Lengths on the page [pt].
constexpr double kMargin = 20.0;
constexpr double kOverhang = 12.0;    // of an axis beyond the section
constexpr double kTextSize = 10.0;    // of labels
constexpr double kSmallSize = 9.0;    // of the column and the footer
constexpr double kOriginArm = 30.0;   // length of the coordinate arrows
constexpr double kOriginRoom = 34.0;  // with what stands at their tips

/// What one line of the legend explains.
struct LegendEntry {
    LineKind kind;  ///< Arrow: the mark of the centre of gravity
    std::string text;
    bool isFalling = false;      ///< of a hatching
    std::optional<bool> tint{};  ///< a patch instead of a line: whether of the first tint
    bool isPeak = false;         ///< the mark of the largest stress
};

struct StressPicture;

struct Sheet {
    const Report& report;
    const MeasureText& measure;
    const StressPicture* stress = nullptr;  ///< of a figure of stresses
    Box bounds{Point{}, Point{}};           ///< of the section, in its unit
    bool hasOrigin = false;                 ///< near enough to be drawn in place
    double scale = 1.0;                     ///< points per unit
    Spot corner{};                          ///< where their lower left corner is on the page
    PageBox section{};                      ///< of the section on the page
    PageBox content{};                      ///< with the coordinate arrows
    std::vector<LegendEntry> legend{};
    Page page{};

    double Width() const { return bounds.Width(); }
    double Height() const { return bounds.Height(); }
    Spot ToPage(double x, double y) const {
        return {corner.x + (x - bounds.left) * scale, corner.y - (y - bounds.bottom) * scale};
    }
    void Add(LineKind kind, std::vector<Spot> spots, bool isClosed = false) {
        page.lines.push_back({kind, std::move(spots), isClosed});
    }
    Label& Write(Runs runs, Spot at, double size = kTextSize) {
        page.labels.push_back({std::move(runs), at, size});
        return page.labels.back();
    }
    /// A filled arrow head with its tip at `tip`, coming from the direction of `tail`.
    void AddArrowHead(const Spot& tip, const Spot& tail);
};

/// Returns a length or coordinate of the section, good to about 1e-5 of the section's size; the
/// rounding of one that is 0 against that size shows as 0.
Runs Coordinate(const Sheet& sheet, double value);

/// Returns where the centre of gravity is, when it is known and lies in the drawing.
std::optional<Spot> CentroidOnPage(const Sheet& sheet);

/// Puts areas, outlines and hatching on the page.
void AddSection(Sheet& sheet);

/// Puts what each part of a composite section keeps on the page, in a tint where its modular ratio
/// is not 1.
void AddMaterials(Sheet& sheet);

/// Tints both sides of a plastic axis, and draws their centroids and lever arms.
/// @param axis  0: the horizontal one, 1: the vertical one
void AddBlocks(Sheet& sheet, std::size_t axis);

/// Writes the lever arms of both sides beside their centroids, after all lines.
void LabelBlocks(Sheet& sheet, std::size_t axis);

/// Returns the corners of a ring on the page, without those that no eye tells apart.
std::vector<Spot> OnPage(const Sheet& sheet, const Points& points);

/// Puts the overall width and height on the page.
void AddDimensions(Sheet& sheet);

/// Puts the coordinate arrows on the page, at the origin or else at `elsewhere`.
void AddOrigin(Sheet& sheet, const Spot& elsewhere);

/// Returns the width of the widest label that an axis may have, before anything has a place.
double AxisLabelRoom(const Report& report, const MeasureText& measure);

/// Puts neutral and principal axes with their labels on the page and into the legend; beside
/// stresses the line of no normal stress alone, outside of the colours.
void AddAxes(Sheet& sheet);

/// Marks the centre of gravity, as far as it lies in the drawing, and labels it.
void AddCentroid(Sheet& sheet);

/// Puts a label near one of the places, where the least is in the way; with a leader from the place
/// when it stands apart from it. After all lines that it must not hide.
void AddFreeLabel(Sheet& sheet, const Runs& runs, const std::vector<Spot>& places);

/// One line of the column of values.
struct ValueRow {
    Runs symbol;
    Runs number;
    Runs unit;
};

/// Returns the values that a figure shows, as far as the report has them.
std::vector<ValueRow> ValueRows(const Report& report);

/// Puts values on the page, from an upper left corner on, and returns the box that they take up.
PageBox AddRows(Sheet& sheet, const std::vector<ValueRow>& rows, const Spot& corner);

/// Puts the legend on the page, likewise.
PageBox AddLegend(Sheet& sheet, const Spot& corner);

constexpr double kRowHeight = 13.0;  // of the column [pt]

}  // namespace halvorn::engine::figure

#endif
