#include "figure/paint_svg.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "figure/font_widths.h"
#include "figure/pens.h"
#include "geometry/lengths.h"

namespace halvorn::engine::figure {

namespace {

// A length in hundredths of a point, finer than any screen or printer. Rounded before it is
// written, so that halves go away from 0.
std::string Length(double value) {
    return FixedNumber(std::round(value * 100.0) / 100.0, 2);
}

std::string Attribute(std::string_view name, const std::string& value) {
    return ' ' + std::string(name) + "=\"" + value + '"';
}

std::string Code(const Colour& colour) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string code = "#";
    for (const int part : {colour.red, colour.green, colour.blue}) {
        code += kDigits[static_cast<std::size_t>(part / 16)];
        code += kDigits[static_cast<std::size_t>(part % 16)];
    }
    return code;
}

std::string Grey(int grey) {
    return Code({grey, grey, grey});
}

std::string Escaped(std::string_view text) {
    return WithReplaced(text, {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}});
}

// Leaves out the vertices of fine arcs that no eye tells from the line past them. At most so many
// one behind the other, which bounds the cost.
std::vector<Spot> Thinned(const std::vector<Spot>& spots) {
    constexpr double kFinest = 0.01;  // [pt], as fine as the file's numbers
    constexpr std::size_t kMostLeftOut = 50;
    if (spots.size() < 3) return spots;
    const auto at = [&](std::size_t i) { return Point(spots[i].x, spots[i].y); };
    std::vector<Spot> thinned = {spots.front()};
    std::size_t kept = 0;
    for (std::size_t i = 2; i < spots.size(); ++i) {
        bool isLine = i - kept <= kMostLeftOut;
        for (std::size_t k = kept + 1; isLine && k < i; ++k) {
            isLine = DistanceToSegment(at(k), at(kept), at(i)) <= kFinest;
        }
        if (isLine) continue;
        kept = i - 1;
        thinned.push_back(spots[kept]);
    }
    thinned.push_back(spots.back());
    return thinned;
}

std::string Path(const std::vector<Spot>& spots, bool isClosed) {
    std::string path;
    for (const Spot& spot : Thinned(spots)) {
        path += (path.empty() ? "M" : " ") + Length(spot.x) + ' ' + Length(spot.y);
    }
    return path + (isClosed && !path.empty() ? "Z" : "");
}

// A name that two figures in one document share only when it means the same in both (FNV-1a).
std::string NameOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    }
    return "solids-" + std::to_string(hash);
}

// Holes outside of solids stay white.
std::string Areas(const std::vector<Area>& areas) {
    std::string solids;
    std::string all;
    for (const Area& area : areas) {
        const std::string path = Path(Wound(area), true);
        all += path;
        if (area.isSolid) solids += path;
    }
    if (solids.empty()) return "";
    const std::string fill = "<path" + Attribute("fill", Grey(kSolidGrey));
    if (all == solids) return fill + Attribute("d", solids) + "/>\n";
    const std::string name = NameOf(solids);
    return "<clipPath" + Attribute("id", name) + "><path" + Attribute("d", solids) +
           "/></clipPath>\n" + fill + Attribute("clip-path", "url(#" + name + ")") +
           Attribute("d", all) + "/>\n";
}

std::string Blocks(const std::vector<Block>& blocks) {
    std::string text;
    for (const bool isFirst : {true, false}) {
        std::string path;
        for (const Block& block : blocks) {
            if (block.isFirst == isFirst) path += Path(block.spots, true);
        }
        if (path.empty()) continue;
        text += "<path" + Attribute("fill", Code(isFirst ? kFirstTint : kSecondTint)) +
                Attribute("d", path) + "/>\n";
    }
    return text;
}

std::string Bands(const std::vector<Band>& bands) {
    std::string text;
    for (const Band& band : bands) {
        std::string path;
        for (const std::vector<Spot>& ring : band.rings) path += Path(ring, true);
        text += "<path" + Attribute("fill", Code(band.colour)) + Attribute("d", path) + "/>\n";
    }
    return text;
}

std::string Stroke(LineKind kind) {
    const Pen pen = PenOf(kind);
    std::string dashes;
    for (std::size_t i = 0; i < static_cast<std::size_t>(pen.dashCount); ++i) {
        dashes += (i > 0 ? " " : "") + Length(pen.dashes[i]);
    }
    std::string stroke = Attribute("stroke-width", Length(pen.weight));
    if (!dashes.empty()) stroke += Attribute("stroke-dasharray", dashes);
    if (pen.isRound) stroke += R"( stroke-linejoin="round" stroke-linecap="round")";
    return stroke;
}

// Lines of one kind that follow each other are one path.
std::string Lines(const std::vector<Line>& lines) {
    std::string text = "<g fill=\"none\" stroke=\"#000\">\n";
    for (std::size_t i = 0; i < lines.size();) {
        const LineKind kind = lines[i].kind;
        std::string path;
        for (; i < lines.size() && lines[i].kind == kind; ++i) {
            path += Path(lines[i].spots, lines[i].isClosed);
        }
        text += "<path" + Stroke(kind) + Attribute("d", path) + "/>\n";
    }
    return text + "</g>\n";
}

std::string Filled(const Page& page) {
    std::string path;
    for (const std::vector<Spot>& head : page.arrowHeads) path += Path(head, true);
    for (const auto& [left, top, right, bottom] : page.bars) {
        path += Path({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, true);
    }
    return path.empty() ? "" : "<path" + Attribute("d", path) + "/>\n";
}

// A circle with two opposite quarters filled.
std::string Centroid(const Spot& spot) {
    const std::string radius = Length(kCentroidRadius);
    const auto quarter = [&](double arm) {
        return 'M' + Length(spot.x) + ' ' + Length(spot.y) + 'h' + Length(arm) + 'a' + radius +
               ' ' + radius + " 0 0 1 " + Length(-arm) + ' ' + Length(arm) + 'z';
    };
    return "<circle" + Attribute("cx", Length(spot.x)) + Attribute("cy", Length(spot.y)) +
           Attribute("r", radius) + R"( fill="#fff" stroke="#000")" +
           Attribute("stroke-width", Length(kCentroidWeight)) + "/>\n<path" +
           Attribute("d", quarter(kCentroidRadius) + quarter(-kCentroidRadius)) + "/>\n";
}

// A ring on a wider white one, which keeps it apart from every colour.
std::string Peak(const Spot& spot) {
    const std::string circle = "<circle" + Attribute("cx", Length(spot.x)) +
                               Attribute("cy", Length(spot.y)) +
                               Attribute("r", Length(kPeakRadius)) + " fill=\"none\"";
    return circle + " stroke=\"#fff\"" + Attribute("stroke-width", Length(kPeakEdge)) + "/>\n" +
           circle + " stroke=\"#000\"" + Attribute("stroke-width", Length(kPeakWeight)) + "/>\n";
}

// The runs follow one another, so that a text stays in one piece in whatever font a viewer has; its
// whole width is said when the table has all letters, and holds in any font then.
std::string Text(const Label& label, bool isEdge) {
    const std::string x = Length(label.at.x);
    const std::string y = Length(label.at.y);
    std::string text = label.isUpright
                           ? Attribute("transform", "translate(" + x + ' ' + y + ")rotate(-90)")
                           : Attribute("x", x) + Attribute("y", y);
    text += Attribute("font-size", Length(label.size));
    if (label.anchor == Anchor::Centre) text += Attribute("text-anchor", "middle");
    if (label.anchor == Anchor::Right) text += Attribute("text-anchor", "end");
    if (label.isBold) text += Attribute("font-weight", "bold");
    if (label.isGrey && !isEdge) text += Attribute("fill", Grey(kTextGrey));
    const bool isKnown = std::all_of(label.runs.begin(), label.runs.end(),
                                     [](const Run& run) { return HasKnownWidth(run.text); });
    if (isKnown) text += Attribute("textLength", Length(WidthOf(label, TextWidth)));
    text += '>';
    int level = 0;
    for (const Run& run : label.runs) {
        if (run.level == 0 && level == 0) {
            text += Escaped(run.text);
            continue;
        }
        text += "<tspan" + Attribute("dy", Length((level - run.level) * kScriptShift * label.size));
        if (run.level != 0) text += Attribute("font-size", Length(kScriptSize * label.size));
        text += '>' + Escaped(run.text) + "</tspan>";
        level = run.level;
    }
    return "<text" + text + "</text>\n";
}

// A white edge keeps texts in the drawing legible over lines and grey. It is a copy below the text,
// which readers pass over, since not every viewer can paint an edge below its letter.
std::string Texts(const Page& page) {
    std::string edges;
    std::string texts;
    for (const Label& label : page.labels) {
        texts += Text(label, false);
        if (page.drawing.Holds(label.at)) edges += Text(label, true);
    }
    return R"(<g font-family="'Liberation Sans',Arial,Helvetica,sans-serif" xml:space="preserve">)"
           "\n"
           R"(<g aria-hidden="true" style="user-select:none" fill="#fff" stroke="#fff")" +
           Attribute("stroke-width", Length(kTextEdge)) + " stroke-linejoin=\"round\">\n" + edges +
           "</g>\n" + texts + "</g>\n";
}

}  // namespace

std::string PaintSvg(const Page& page) {
    const std::string width = Length(page.width);
    const std::string height = Length(page.height);
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"" +
                      Attribute("width", width + "pt") + Attribute("height", height + "pt") +
                      Attribute("viewBox", "0 0 " + width + ' ' + height) + ">\n<title>" +
                      Escaped(page.title) + "</title>\n<desc>" + Escaped(page.summary) +
                      "</desc>\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
    svg += Areas(page.areas) + Blocks(page.blocks) + Bands(page.bands) + Lines(page.lines) +
           Filled(page);
    for (const Spot& spot : page.centroids) svg += Centroid(spot);
    for (const Spot& spot : page.peaks) svg += Peak(spot);
    return svg + Texts(page) + "</svg>\n";
}

}  // namespace halvorn::engine::figure
