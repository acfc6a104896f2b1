#include <cairo-pdf.h>
#include <cairo.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>

#include "figure/font_widths.h"
#include "figure/paint.h"
#include "figure/paint_svg.h"
#include "figure/pens.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HALVORN_HAS_LEAK_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define HALVORN_HAS_LEAK_SANITIZER
#endif
#if defined(HALVORN_HAS_LEAK_SANITIZER)
// What the font library under Cairo keeps of a font that it has looked up, it never frees.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
#endif

namespace halvorn::engine::figure {

namespace {

struct Release {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, Release>;
using Context = std::unique_ptr<cairo_t, Release>;

constexpr double kDotsPerPoint = 200.0 / 72.0;

void Check(cairo_status_t status) {
    if (status == CAIRO_STATUS_SUCCESS) return;
    throw std::runtime_error(std::string("the figure cannot be drawn: ") +
                             cairo_status_to_string(status));
}

cairo_status_t Append(void* bytes, const unsigned char* data, unsigned int length) {
    try {
        static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    } catch (...) {  // no exception may pass through the C library
        return CAIRO_STATUS_NO_MEMORY;
    }
    return CAIRO_STATUS_SUCCESS;
}

// Unhinted, so that a text is as wide in every format as it was measured.
void UseFont(cairo_t* context, double size, bool isBold) {
    cairo_select_font_face(context, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           isBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context, size);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(context, options);
    cairo_font_options_destroy(options);
}

double Advance(cairo_t* context, const std::string& text) {
    cairo_text_extents_t extents;
    cairo_text_extents(context, text.c_str(), &extents);
    return extents.x_advance;
}

void Trace(cairo_t* context, const std::vector<Spot>& spots, bool isClosed) {
    if (spots.empty()) return;
    cairo_move_to(context, spots.front().x, spots.front().y);
    for (std::size_t i = 1; i < spots.size(); ++i) {
        cairo_line_to(context, spots[i].x, spots[i].y);
    }
    if (isClosed) cairo_close_path(context);
}

void UseColour(cairo_t* context, const Colour& colour) {
    const auto& [red, green, blue] = colour;
    cairo_set_source_rgb(context, red / 255.0, green / 255.0, blue / 255.0);
}

void UseGrey(cairo_t* context, int grey) {
    UseColour(context, {grey, grey, grey});
}

// Holes outside of solids stay white.
void PaintAreas(cairo_t* context, const std::vector<Area>& areas) {
    cairo_save(context);
    cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
    bool hasHole = false;
    for (const Area& area : areas) {
        if (area.isSolid) Trace(context, Wound(area), true);
        hasHole = hasHole || !area.isSolid;
    }
    UseGrey(context, kSolidGrey);
    if (hasHole) {
        cairo_clip(context);
        for (const Area& area : areas) Trace(context, Wound(area), true);
    }
    cairo_fill(context);
    cairo_restore(context);
}

void PaintBlocks(cairo_t* context, const std::vector<Block>& blocks) {
    for (const Block& block : blocks) {
        UseColour(context, block.isFirst ? kFirstTint : kSecondTint);
        Trace(context, block.spots, true);
        cairo_fill(context);
    }
}

void PaintBands(cairo_t* context, const std::vector<Band>& bands) {
    for (const Band& band : bands) {
        UseColour(context, band.colour);
        for (const std::vector<Spot>& ring : band.rings) Trace(context, ring, true);
        cairo_fill(context);
    }
}

void PaintLine(cairo_t* context, const Line& line) {
    const Pen pen = PenOf(line.kind);
    cairo_set_line_width(context, pen.weight);
    cairo_set_dash(context, pen.dashes.data(), pen.dashCount, 0.0);
    cairo_set_line_join(context, pen.isRound ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
    cairo_set_line_cap(context, pen.isRound ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    Trace(context, line.spots, line.isClosed);
    cairo_stroke(context);
}

// A circle with two opposite quarters filled.
void PaintCentroid(cairo_t* context, const Spot& spot) {
    constexpr double kQuarter = std::numbers::pi / 2.0;
    cairo_new_path(context);
    cairo_arc(context, spot.x, spot.y, kCentroidRadius, 0.0, 4.0 * kQuarter);
    cairo_set_source_rgb(context, 1.0, 1.0, 1.0);
    cairo_fill_preserve(context);
    cairo_set_source_rgb(context, 0.0, 0.0, 0.0);
    cairo_set_line_width(context, kCentroidWeight);
    cairo_set_dash(context, nullptr, 0, 0.0);
    cairo_stroke(context);
    for (const double start : {0.0, 2.0 * kQuarter}) {
        cairo_move_to(context, spot.x, spot.y);
        cairo_arc(context, spot.x, spot.y, kCentroidRadius, start, start + kQuarter);
        cairo_close_path(context);
    }
    cairo_fill(context);
}

// A ring on a wider white one, which keeps it apart from every colour.
void PaintPeak(cairo_t* context, const Spot& spot) {
    cairo_new_path(context);
    cairo_arc(context, spot.x, spot.y, kPeakRadius, 0.0, 2.0 * std::numbers::pi);
    cairo_set_dash(context, nullptr, 0, 0.0);
    UseGrey(context, 255);
    cairo_set_line_width(context, kPeakEdge);
    cairo_stroke_preserve(context);
    UseGrey(context, 0);
    cairo_set_line_width(context, kPeakWeight);
    cairo_stroke(context);
}

// Shows the runs of a label from the current point on, or traces their outlines.
template <typename Show>
void ForRuns(cairo_t* context, const Label& label, Show show) {
    double x = 0.0;
    for (const Run& run : label.runs) {
        UseFont(context, run.level == 0 ? label.size : label.size * kScriptSize, label.isBold);
        cairo_move_to(context, x, -run.level * kScriptShift * label.size);
        show(run.text.c_str());
        x += Advance(context, run.text);
    }
}

// Every text has a white edge, which keeps it legible over lines and grey.
void PaintLabel(cairo_t* context, const Label& label, const MeasureText& measure) {
    cairo_save(context);
    cairo_translate(context, label.at.x, label.at.y);
    if (label.isUpright) cairo_rotate(context, -std::numbers::pi / 2.0);
    const double width = WidthOf(label, measure);
    if (label.anchor == Anchor::Centre) cairo_translate(context, -0.5 * width, 0.0);
    if (label.anchor == Anchor::Right) cairo_translate(context, -width, 0.0);
    ForRuns(context, label, [&](const char* text) { cairo_text_path(context, text); });
    cairo_set_source_rgb(context, 1.0, 1.0, 1.0);
    cairo_set_line_width(context, kTextEdge);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    cairo_set_dash(context, nullptr, 0, 0.0);
    cairo_stroke(context);
    UseGrey(context, label.isGrey ? kTextGrey : 0);
    ForRuns(context, label, [&](const char* text) { cairo_show_text(context, text); });
    cairo_restore(context);
}

void PaintPage(cairo_t* context, const Page& page) {
    cairo_set_source_rgb(context, 1.0, 1.0, 1.0);
    cairo_paint(context);
    PaintAreas(context, page.areas);
    PaintBlocks(context, page.blocks);
    PaintBands(context, page.bands);
    cairo_set_source_rgb(context, 0.0, 0.0, 0.0);
    for (const Line& line : page.lines) PaintLine(context, line);
    for (const std::vector<Spot>& head : page.arrowHeads) Trace(context, head, true);
    for (const PageBox& bar : page.bars) {
        cairo_rectangle(context, bar.left, bar.top, bar.Width(), bar.Height());
    }
    cairo_fill(context);
    for (const Spot& spot : page.centroids) PaintCentroid(context, spot);
    for (const Spot& spot : page.peaks) PaintPeak(context, spot);
    const MeasureText measure = FontMeasure(Format::Png);
    for (const Label& label : page.labels) PaintLabel(context, label, measure);
    Check(cairo_status(context));
}

void PaintOn(cairo_surface_t* surface, const Page& page, double dotsPerPoint) {
    Check(cairo_surface_status(surface));
    const Context context(cairo_create(surface));
    cairo_scale(context.get(), dotsPerPoint, dotsPerPoint);
    PaintPage(context.get(), page);
}

std::string PaintPng(const Page& page) {
    std::string bytes;
    const Surface surface(cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(page.width * kDotsPerPoint)),
        static_cast<int>(std::ceil(page.height * kDotsPerPoint))));
    PaintOn(surface.get(), page, kDotsPerPoint);
    Check(cairo_surface_write_to_png_stream(surface.get(), Append, &bytes));
    return bytes;
}

}  // namespace

bool CanPaint(Format /*format*/) {
    return true;
}

MeasureText FontMeasure(Format format) {
    if (format == Format::Svg) return TextWidth;
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const std::shared_ptr<cairo_t> context(cairo_create(surface.get()), Release{});
    return [context](const std::string& text, double size, bool isBold) {
        UseFont(context.get(), size, isBold);
        return Advance(context.get(), text);
    };
}

std::string Paint(const Page& page, Format format) {
    if (format == Format::Svg) return PaintSvg(page);
    if (format == Format::Png) return PaintPng(page);
    std::string bytes;
    const Surface surface(
        cairo_pdf_surface_create_for_stream(Append, &bytes, page.width, page.height));
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, page.title.c_str());
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE,
                                   "2000-01-01T00:00:00Z");
    PaintOn(surface.get(), page, 1.0);
    cairo_surface_finish(surface.get());
    Check(cairo_surface_status(surface.get()));
    return bytes;
}

}  // namespace halvorn::engine::figure
