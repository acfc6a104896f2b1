#include "read/csv/points_csv.h"

#include <algorithm>

#include "HalvornEngine.h"
#include "base/text.h"
#include "read/csv/points_table.h"
#include "read/input_options.h"
#include "read/nesting.h"

namespace halvorn::engine {

namespace {

constexpr std::size_t kFewestPoints = 3;

// One ring while it is read.
struct Contour {
    std::string name;    // in the column, else its number
    std::string kind;    // "solid", "hole", or empty: nesting decides
    std::size_t line{};  // of its first point
    Points points;
};

class Reader {
public:
    Reader(PointsTable table, const std::string& source)
        : table_(std::move(table)), source_(source) {}

    SectionModel Read(const InputOptions& options) {
        for (const PointRow& row : table_.rows) AddPoint(row);
        return Section(options);
    }

private:
    [[noreturn]] void Fail(std::size_t line, const std::string& problem,
                           const std::string& remedy) const {
        throw InputError(source_, line, problem, remedy);
    }

    void AddPoint(const PointRow& row) {
        Contour& contour = ContourOf(row);
        if (!row.kind.empty() && row.kind != "solid" && row.kind != "hole") {
            Fail(row.line, "unknown kind \"" + Excerpt(row.kind) + "\"", "write solid or hole");
        }
        if (contour.points.empty()) contour.kind = row.kind;
        if (contour.kind != row.kind) {
            const auto called = [](const std::string& k) {
                return k.empty() ? "nothing" : "a " + k;
            };
            Fail(row.line,
                 "the contour is " + called(contour.kind) + " above and " + called(row.kind) +
                     " here",
                 "give all its points the same kind");
        }
        contour.points.emplace_back(row.x, row.y);
    }

    // The contour of a point: that of its name, or without names the one since the last gap.
    Contour& ContourOf(const PointRow& row) {
        const std::string& name = row.contour;
        const bool startsOne =
            contours_.empty() || (name.empty() ? row.isAfterGap : contours_.back().name != name);
        if (!startsOne) return contours_.back();
        for (const Contour& other : contours_) {
            if (!name.empty() && other.name == name) {
                Fail(row.line, "contour " + Excerpt(name) + " is continued after another one",
                     "keep the points of a contour together");
            }
        }
        contours_.push_back({name, "", row.line, {}});
        return contours_.back();
    }

    SectionModel Section(const InputOptions& options) {
        if (contours_.empty())
            throw InputError(source_, "there are no points", "write one x,y per line");
        SectionModel section;
        section.source = source_;
        section.unit = !table_.unit.empty() ? table_.unit : options.unit.value_or("mm");
        if (table_.unit.empty() && !options.unit) {
            section.isUnitAssumed = true;
            section.remarks.emplace_back(
                "the unit is taken for mm: write '# unit: mm' into the file or give --unit");
        }
        if (!table_.unit.empty() && options.unit && *options.unit != table_.unit) {
            throw InputError(source_,
                             "the file is in " + table_.unit + ", --unit says " + *options.unit,
                             "leave out --unit");
        }
        for (Contour& contour : contours_) section.elements.push_back(ElementOf(contour));
        section.isDrawn = true;
        SetKinds(&section.elements);
        return section;
    }

    Element ElementOf(Contour& contour) const {
        Points& points = contour.points;
        if (points.size() > 1 && points.front() == points.back()) points.pop_back();
        if (points.size() < kFewestPoints) {
            Fail(contour.line,
                 "a contour needs at least 3 points, found " + std::to_string(points.size()),
                 "add the missing points, or remove an empty line within the contour");
        }
        Element element;
        element.label = contour.name.empty() ? "line " + std::to_string(contour.line)
                                             : "contour " + contour.name;
        element.ring = std::move(points);
        return element;
    }

    // Either every contour says what it is, or none does and nesting decides.
    void SetKinds(std::vector<Element>* elements) const {
        const auto isTold = [](const Contour& contour) { return !contour.kind.empty(); };
        const auto told = std::count_if(contours_.begin(), contours_.end(), isTold);
        if (told == 0) {
            ClassifyByNesting(elements, source_);
            return;
        }
        for (std::size_t i = 0; i < contours_.size(); ++i) {
            if (!isTold(contours_[i])) {
                Fail(contours_[i].line, "this contour has no kind, others have",
                     "write solid or hole for all contours or for none");
            }
            (*elements)[i].isSolid = contours_[i].kind == "solid";
        }
    }

    const PointsTable table_;
    const std::string& source_;
    std::vector<Contour> contours_;
};

}  // namespace

SectionModel ReadPointsCsv(const std::string& text, const std::string& source,
                           const InputOptions& options) {
    CheckInputOptions(options);
    return Reader(ReadPointsTable(text, source), source).Read(options);
}

}  // namespace halvorn::engine
