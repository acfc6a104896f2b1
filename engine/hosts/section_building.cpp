#include <string>
#include <utility>

#include "HalvornEngine.h"
#include "model/outlines.h"
#include "model/placement.h"
#include "model/setting.h"
#include "region/difference.h"

namespace halvorn::engine {

namespace {

// A copy that holds for its outlines alone.
SectionModel OutlinesAlone(const SectionModel& section) {
    SectionModel copy = section;
    copy.polyline.reset();
    copy.published.clear();
    return copy;
}

std::shared_ptr<const SectionModel> Placed(const SectionModel& section,
                                           const Placement& placement) {
    SectionModel placed = OutlinesAlone(section);
    Place(placement, placed.elements);
    return std::make_shared<const SectionModel>(std::move(placed));
}

void RequireOneUnit(const SectionModel& a, const SectionModel& b) {
    if (a.unit == b.unit) return;
    throw InputError("options", "the sections are in " + a.unit + " and " + b.unit,
                     "make both with the same unit");
}

// A copy with other elements, which are partly of another section.
std::shared_ptr<const SectionModel> Combined(const SectionModel& a, const SectionModel& b,
                                             std::vector<Element> elements) {
    SectionModel joined = OutlinesAlone(a);
    joined.elements = std::move(elements);
    joined.remarks.insert(joined.remarks.end(), b.remarks.begin(), b.remarks.end());
    joined.isUnitAssumed = a.isUnitAssumed || b.isUnitAssumed;
    joined.isDrawn = a.isDrawn || b.isDrawn;
    return std::make_shared<const SectionModel>(std::move(joined));
}

std::vector<Element> Joined(std::vector<Element> a, const std::vector<Element>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

void RequireFewPoints(const SectionModel& a, const SectionModel& b) {
    const std::size_t count = PointCount(a.elements) + PointCount(b.elements);
    if (count <= kMostPointsOfRow) return;
    throw InputError("options", "the sections have " + std::to_string(count) + " points together",
                     "keep to " + std::to_string(kMostPointsOfRow) +
                         ": make the chord tolerance larger, or leave points out");
}

}  // namespace

Point Section::PointOfBox(Along x, Along y) const {
    return engine::PointOfBox(BoxOf(model_->elements), x, y);
}

Section Section::Moved(const Point& by) const {
    Placement placement;
    placement.move = by;
    return Section(Placed(*model_, placement));
}

Section Section::Turned(double degrees) const {
    Placement placement;
    placement.rotation = degrees;
    return Section(Placed(*model_, placement));
}

Section Section::Mirrored(Mirror axis) const {
    Placement placement;
    placement.mirror = axis;
    return Section(Placed(*model_, placement));
}

Section Section::SetOn(const Section& other, const Setting& setting) const {
    RequireOneUnit(*model_, *other.model_);
    SectionModel set = OutlinesAlone(*model_);
    switch (SetOnSide(setting, other.model_->elements, set.elements)) {
        case SettingResult::Set:
            break;
        case SettingResult::Misses:
            throw InputError("options", "nothing of the one section is opposite the other",
                             "change the alignment or the shift, or let the boxes touch");
        case SettingResult::TooMany:
            throw InputError("options",
                             "the outlines have too many points to look where they touch",
                             "make the chord tolerance larger, or let the boxes touch");
    }
    return Section(std::make_shared<const SectionModel>(std::move(set)));
}

Section Section::InRow(std::size_t count, const Point& step) const {
    if (count < 1 || count > kMostCopies ||
        count * PointCount(model_->elements) > kMostPointsOfRow) {
        throw InputError("options", "a row of " + std::to_string(count) + " is not possible",
                         "give 1 to " + std::to_string(kMostCopies) + ", with at most " +
                             std::to_string(kMostPointsOfRow) + " points together");
    }
    SectionModel row = OutlinesAlone(*model_);
    row.elements = CopiesInRow(row.elements, count, step);
    return Section(std::make_shared<const SectionModel>(std::move(row)));
}

Section Section::With(const Section& other) const {
    RequireOneUnit(*model_, *other.model_);
    RequireFewPoints(*model_, *other.model_);
    return Section(
        Combined(*model_, *other.model_, Joined(model_->elements, other.model_->elements)));
}

Section Section::Without(const Section& other) const {
    RequireOneUnit(*model_, *other.model_);
    RequireFewPoints(*model_, *other.model_);
    try {
        Difference left = DifferenceOf(model_->elements, other.model_->elements);
        if (left.isWhole) {
            SectionModel whole = OutlinesAlone(*model_);
            whole.remarks.push_back("what is taken away of it lies beside its material");
            return Section(std::make_shared<const SectionModel>(std::move(whole)));
        }
        if (!left.elements.empty()) {
            return Section(Combined(*model_, *other.model_, std::move(left.elements)));
        }
    } catch (const ArrangementError& error) {
        throw InputError(model_->source, error.what(),
                         "correct the coordinates, or bring the outlines into order");
    }
    // Nothing is left, which the report says: the section less itself takes nothing of others.
    std::vector<Element> itself = model_->elements;
    MakeHoles(itself);
    return Section(Combined(*model_, *other.model_, Joined(model_->elements, itself)));
}

}  // namespace halvorn::engine
