#include <string>

#include "base/numbers.h"
#include "figure/sheet.h"

namespace halvorn::engine::figure {

namespace {

Points FromFrame(const Region& region, Points ring) {
    for (Point& point : ring) point = region.frame.FromFrame(point);
    return ring;
}

void AddOutline(Sheet& sheet, const Region& region, const Points& ring) {
    sheet.Add(LineKind::Outline, OnPage(sheet, FromFrame(region, ring)), true);
}

}  // namespace

void AddMaterials(Sheet& sheet) {
    const Report& report = sheet.report;
    std::string ofStiffer, ofSofter;  // the ratios in the tints of both
    for (std::size_t i = 0; i < report.parts.size(); ++i) {
        const double ratio = report.parts[i].modularRatio;
        const Region& region = report.partRegions[i];
        for (const Part& part : region.parts) {
            const auto spots = OnPage(sheet, FromFrame(region, JoinedRing(part)));
            sheet.page.areas.push_back({spots, true});
            if (ratio != 1.0) sheet.page.blocks.push_back({spots, ratio > 1.0});
            AddOutline(sheet, region, part.outline);
            for (const Points& ring : part.voids) AddOutline(sheet, region, ring);
        }
        std::string& ratios = ratio > 1.0 ? ofStiffer : ofSofter;
        const std::string text = (ratios.empty() ? "modular ratio " : ", ") + ShortNumber(ratio);
        const bool isNew = ratios.find(" " + ShortNumber(ratio)) == std::string::npos;
        if (ratio != 1.0 && isNew && !region.IsEmpty()) ratios += text;
    }
    if (!ofStiffer.empty()) sheet.legend.push_back({LineKind::Rule, ofStiffer, false, true});
    if (!ofSofter.empty()) sheet.legend.push_back({LineKind::Rule, ofSofter, false, false});
}

}  // namespace halvorn::engine::figure
