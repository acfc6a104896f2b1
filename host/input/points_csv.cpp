#include "input/points_csv.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <sstream>

#include "catalogue/csv_table.h"
#include "input/input_error.h"
#include "input/input_text.h"
#include "input/nesting.h"

namespace halvorn::host {

namespace {

constexpr std::size_t kFewestPoints = 3;

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// A finite number with a decimal point and nothing else.
std::optional<double> NumberIn(const std::string& text) {
    const std::size_t sign = text.starts_with('+') && !text.starts_with("+-") ? 1 : 0;
    const char* const begin = text.data() + sign;
    const char* const end = text.data() + text.size();
    double number = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, number);
    if (begin == end || stop != end || error != std::errc() || !std::isfinite(number)) return {};
    return number;
}

// One ring while it is read.
struct Contour {
    std::string name;    // in the column, else its number
    std::string kind;    // "solid", "hole", or empty: nesting decides
    std::size_t line{};  // of its first point
    Points points;
};

class Reader {
public:
    Reader(const std::string& text, const std::string& source) : text_(text), source_(source) {}

    SectionModel Read(const InputOptions& options) {
        // Spreadsheets mark their files as UTF-8.
        std::istringstream stream(text_.starts_with("\xEF\xBB\xBF") ? text_.substr(3) : text_);
        std::string line;
        while (std::getline(stream, line)) {
            ++lineNumber_;
            ReadLine(Trimmed(line));
        }
        return Section(options);
    }

private:
    [[noreturn]] void Fail(std::size_t line, const std::string& problem,
                           const std::string& remedy) const {
        throw InputError(source_ + ": line " + std::to_string(line), problem, remedy);
    }

    void ReadLine(const std::string& line) {
        if (line.starts_with('#')) return ReadComment(line);
        // A spreadsheet writes an empty row as its separators alone.
        if (line.find_first_not_of(",;") == std::string::npos) {
            isNewContour_ = true;
            return;
        }
        if (separator_ == 0) separator_ = SeparatorOf(line);
        std::vector<std::string> cells = SplitCsvLine(line, separator_);
        for (std::string& cell : cells) cell = Trimmed(cell);
        // A letter begins a header, whatever comes first; digits and signs begin a point.
        const bool isHeader =
            !hasRead_ && cells[0].find_first_of("0123456789") == std::string::npos;
        hasRead_ = true;
        if (isHeader) return ReadHeader(cells);
        ReadPoint(cells);
    }

    static char SeparatorOf(const std::string& line) {
        if (line.find(';') != std::string::npos) return ';';
        return line.find('\t') != std::string::npos ? '\t' : ',';
    }

    // A comma can only be the decimal one where other characters separate the cells and no number
    // of the file has a point: 1,234 beside 2.5 could be a thousand.
    double Coordinate(std::string text) {
        const std::string written = text;
        if (separator_ != ',') {
            const char mark = text.find(',') != std::string::npos   ? ','
                              : text.find('.') != std::string::npos ? '.'
                                                                    : decimalMark_;
            if (decimalMark_ != 0 && mark != decimalMark_) {
                Fail(lineNumber_,
                     "\"" + Excerpt(written) + "\" has a decimal " +
                         (mark == ',' ? "comma, numbers above have a point"
                                      : "point, numbers above have a comma"),
                     "write all numbers in one way, without marks between thousands");
            }
            decimalMark_ = mark;
            if (mark == ',') std::replace(text.begin(), text.end(), ',', '.');
        }
        const std::optional<double> number = NumberIn(text);
        if (number) return *number;
        Fail(lineNumber_, "\"" + Excerpt(written) + "\" is not a finite number",
             "write plain numbers such as 12.5");
    }

    void ReadComment(const std::string& line) {
        const std::size_t key = line.find("unit:");
        if (key == std::string::npos) return;
        unit_ = Trimmed(line.substr(key + 5));
        if (unit_ != "mm" && unit_ != "cm" && unit_ != "m" && unit_ != "in") {
            Fail(lineNumber_, "unknown unit \"" + Excerpt(unit_) + "\"", "write mm, cm, m or in");
        }
    }

    void ReadHeader(const std::vector<std::string>& cells) const {
        static const std::vector<std::string> names = {"x", "y", "contour", "kind"};
        for (std::size_t i = 0; i < cells.size(); ++i) {
            std::string name = cells[i];
            for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            if (i < names.size() && name == names[i]) continue;
            Fail(lineNumber_, "neither a point nor a header: \"" + Excerpt(cells[i]) + "\"",
                 "write x,y or x,y,contour or x,y,contour,kind above the points");
        }
    }

    void ReadPoint(const std::vector<std::string>& cells) {
        if (cells.size() < 2 || cells.size() > 4) {
            Fail(lineNumber_, "expected 2 to 4 cells, found " + std::to_string(cells.size()),
                 "write x,y and perhaps the contour's name and kind");
        }
        const double x = Coordinate(cells[0]);
        const double y = Coordinate(cells[1]);
        Contour& contour = ContourOf(cells.size() > 2 ? cells[2] : "");
        const std::string kind = cells.size() > 3 ? cells[3] : "";
        if (!kind.empty() && kind != "solid" && kind != "hole") {
            Fail(lineNumber_, "unknown kind \"" + Excerpt(kind) + "\"", "write solid or hole");
        }
        if (contour.points.empty()) contour.kind = kind;
        if (contour.kind != kind) {
            const auto called = [](const std::string& k) {
                return k.empty() ? "nothing" : "a " + k;
            };
            Fail(lineNumber_,
                 "the contour is " + called(contour.kind) + " above and " + called(kind) + " here",
                 "give all its points the same kind");
        }
        contour.points.emplace_back(x, y);
    }

    // The contour of a point: that of its name, or without names the one since the last empty line.
    Contour& ContourOf(const std::string& name) {
        const bool startsOne =
            contours_.empty() || (name.empty() ? isNewContour_ : contours_.back().name != name);
        isNewContour_ = false;
        if (!startsOne) return contours_.back();
        for (const Contour& other : contours_) {
            if (!name.empty() && other.name == name) {
                Fail(lineNumber_, "contour " + Excerpt(name) + " is continued after another one",
                     "keep the points of a contour together");
            }
        }
        contours_.push_back({name, "", lineNumber_, {}});
        return contours_.back();
    }

    SectionModel Section(const InputOptions& options) {
        if (contours_.empty())
            throw InputError(source_, "there are no points", "write one x,y a line");
        SectionModel section;
        section.source = source_;
        section.unit = !unit_.empty() ? unit_ : options.unit.value_or("mm");
        if (unit_.empty() && !options.unit) {
            section.isUnitAssumed = true;
            section.remarks.emplace_back(
                "the unit is taken for mm: write '# unit: mm' into the file or give --unit");
        }
        if (!unit_.empty() && options.unit && *options.unit != unit_) {
            throw InputError(source_, "the file is in " + unit_ + ", --unit says " + *options.unit,
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

    const std::string& text_;
    const std::string& source_;
    char separator_ = 0;    // 0: no line was read that has one
    char decimalMark_ = 0;  // likewise
    std::size_t lineNumber_ = 0;
    bool hasRead_ = false;
    bool isNewContour_ = true;
    std::string unit_;
    std::vector<Contour> contours_;
};

}  // namespace

SectionModel ReadPointsCsv(const std::string& text, const std::string& source,
                           const InputOptions& options) {
    return Reader(text, source).Read(options);
}

}  // namespace halvorn::host
