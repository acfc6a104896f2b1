#include "catalogue/read_profiles.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "base/units.h"
#include "base/utf8.h"
#include "catalogue/csv_table.h"
#include "catalogue/draw_profile.h"
#include "catalogue/profile_names.h"
#include "catalogue/profile_types.h"

namespace halvorn::engine {

namespace {

constexpr std::size_t kTextColumns = 5;  // the first ones, which hold texts

// The columns of every row that is read, whatever those of the text.
const CsvColumns& Columns() {
    static const CsvColumns columns = [] {
        std::vector<std::string> names = {"name", "family", "standard", "type", "unit"};
        for (const std::string_view column : DimensionColumns()) names.emplace_back(column);
        for (const PublishedColumn& column : PublishedColumns()) names.emplace_back(column.name);
        return std::make_shared<const std::vector<std::string>>(std::move(names));
    }();
    return columns;
}

std::size_t IndexOf(std::string_view column) {
    return static_cast<std::size_t>(std::find(Columns()->begin(), Columns()->end(), column) -
                                    Columns()->begin());
}

// A title without what spreadsheets and their users vary: "R root" is r_root.
std::string PlainTitle(std::string_view title) {
    std::string plain = InSmallLetters(title);
    std::erase_if(plain, [](char c) { return c == ' ' || c == '_' || c == '-'; });
    return plain;
}

// The column that a title names; nothing for a column that means nothing here.
std::optional<std::size_t> ColumnOf(std::string_view title) {
    for (std::size_t i = 0; i < Columns()->size(); ++i) {
        if (PlainTitle((*Columns())[i]) == PlainTitle(title)) return i;
    }
    return std::nullopt;
}

// "a, b and c".
std::string Listed(const std::vector<std::string>& words, const char* last) {
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) list += i + 1 == words.size() ? " " + std::string(last) + " " : ", ";
        list += words[i];
    }
    return list;
}

std::string TypeNames() {
    std::vector<std::string> names;
    for (const ProfileType& type : ProfileTypes()) names.emplace_back(type.name);
    return Listed(names, "or");
}

const char* SeparatorName(char separator) {
    return separator == ';' ? "semicolons" : separator == '\t' ? "tabs" : "commas";
}

bool HasOpenQuote(const std::string& line) {
    return std::count(line.begin(), line.end(), '"') % 2 != 0;
}

// A row that is left out.
struct RowFault : ProfileFault {};

class ProfileReader {
public:
    ProfileReader(const std::string& source, std::vector<Finding>* findings)
        : source_(source), findings_(*findings), rows_(source) {}

    ProfileRows Read(const std::string& text) {
        if (IsUtf16(text)) {
            throw InputError(source_, "it is UTF-16 text or no text at all", "save it as UTF-8");
        }
        const std::string plain = WithLineFeeds(text);
        if (const std::size_t foreign = LineOfForeignByte(plain)) {
            throw InputError(source_, foreign, "the text is not UTF-8", "save it as UTF-8");
        }
        lines_ = LinesOf(plain);
        std::string line;
        while (NextLine(&line)) {
            if (line.find_first_not_of(" ,;\t\"") == std::string::npos) continue;
            if (Trimmed(line, " \t\"").starts_with('#')) continue;
            if (HasOpenQuote(line)) {
                RefuseQuote();
            } else if (columns_.empty()) {
                ReadTitles(line);
            } else {
                ReadRow(line);
            }
        }
        if (columns_.empty()) {
            throw InputError(source_, "the table is empty",
                             "name the columns in its first line: name,type,h,b and so on");
        }
        if (!hasRows_) RemarkNoRows();
        return std::move(rows_);
    }

private:
    void RemarkNoRows() {
        Finding& finding = findings_.emplace_back();
        finding.element = source_;
        finding.problem = "the table names its columns and has no rows";
        finding.mend = "write one profile a line below them";
    }

    // A cell in quotes may hold line feeds. A quote that never closes takes no other line.
    bool NextLine(std::string* line) {
        lineNumber_ += linesOfRow_;
        linesOfRow_ = 1;
        if (lineNumber_ > lines_.size()) return false;
        *line = lines_[lineNumber_ - 1];
        std::string joined = *line;
        std::size_t last = lineNumber_;
        while (HasOpenQuote(joined) && last < lines_.size()) joined += ' ' + lines_[last++];
        if (HasOpenQuote(joined)) return true;
        *line = std::move(joined);
        linesOfRow_ = last - lineNumber_ + 1;
        return true;
    }

    void RefuseQuote() {
        const char* const problem = "a quote opens in this line and is never closed";
        const char* const mend = "close it, or remove it; within a quoted cell double it";
        if (columns_.empty()) throw InputError(source_, lineNumber_, problem, mend);
        Complain({"", problem, mend});
    }

    void ReadTitles(const std::string& line) {
        if (separator_ == 0 && DeclaredSeparator(line) != 0) {
            separator_ = DeclaredSeparator(line);
            return;
        }
        if (separator_ == 0) separator_ = CsvSeparatorOf(line);
        numbers_.emplace(separator_);
        for (const std::string& cell : SplitCsvLine(line, separator_)) AddTitle(Trimmed(cell));
        for (const char* column : {"name", "type"}) {
            if (std::find(columns_.begin(), columns_.end(), IndexOf(column)) != columns_.end()) {
                continue;
            }
            throw InputError(
                source_, lineNumber_,
                "no column is called " + std::string(column) + ", so that it is no catalogue",
                "name the columns above the rows: name,type,h,b and so on");
        }
        if (!withUnits_.empty()) RemarkUnits();
    }

    // Titles such as "Ix [cm4]", which mean a column but not its unit.
    void RemarkUnits() {
        const bool isOne = withUnits_.size() == 1;
        std::vector<std::string> quoted, plain;
        for (const std::string& title : withUnits_) {
            quoted.push_back('"' + Excerpt(title) + '"');
            plain.push_back((*Columns())[*ColumnOf(WithoutUnit(title))]);
        }
        Finding& finding = findings_.emplace_back();
        finding.element = source_ + ": line " + std::to_string(lineNumber_);
        finding.problem = (isOne ? "the column " : "the columns ") + Listed(quoted, "and") +
                          (isOne ? " is" : " are") + " not read: titles state no unit";
        finding.mend = "write " + Listed(plain, "and") +
                       " with every number in mm, mm^2 and so on, or in inches with a column unit";
    }

    static std::string WithoutUnit(const std::string& title) {
        return title.substr(0, title.find_first_of("[("));
    }

    void AddTitle(const std::string& title) {
        const auto fail = [&](const std::string& problem, const char* mend) {
            throw InputError(source_, lineNumber_, problem, mend);
        };
        const std::optional<std::size_t> column = ColumnOf(title);
        if (column && std::find(columns_.begin(), columns_.end(), column) != columns_.end()) {
            fail("two columns are called " + (*Columns())[*column], "remove or rename one");
        }
        columns_.push_back(column);
        if (!column && ColumnOf(WithoutUnit(title))) withUnits_.push_back(title);
    }

    void ReadRow(const std::string& line) {
        hasRows_ = true;
        const std::vector<std::string> cells = SplitCsvLine(line, separator_);
        try {
            if (cells.size() == 1) CheckSeparator(line);
            Add(RecordOf(cells));
        } catch (const RowFault& fault) {
            Complain(fault);
        }
    }

    void CheckSeparator(const std::string& line) const {
        for (const char other : {';', '\t', ','}) {
            if (other == separator_ || line.find(other) == std::string::npos) continue;
            const std::string problem = std::string("the cells are separated by ") +
                                        SeparatorName(other) + ", those of the titles by " +
                                        SeparatorName(separator_);
            const char* const mend = "separate all cells in one way";
            // One line for all where the first row is so.
            if (rows_.Rows().empty()) throw InputError(source_, lineNumber_, problem, mend);
            Fail("", problem, mend);
        }
    }

    void Complain(const ProfileFault& fault) {
        Finding& finding = findings_.emplace_back();
        finding.severity = Severity::Error;
        finding.element = source_ + ": line " + std::to_string(lineNumber_);
        if (!fault.column.empty()) finding.element += ", column " + fault.column;
        finding.problem = fault.problem;
        finding.mend = fault.mend;
    }

    [[noreturn]] static void Fail(std::string_view column, const std::string& problem,
                                  const std::string& mend) {
        throw RowFault{{std::string(column), problem, mend}};
    }

    CsvRecord RecordOf(const std::vector<std::string>& cells) {
        std::vector<std::string> record(Columns()->size());
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string cell = Trimmed(cells[i], " \t\n");
            if (cell.empty()) continue;
            if (i >= columns_.size()) {
                Fail("",
                     "found " + std::to_string(cells.size()) + " cells under a header of " +
                         std::to_string(columns_.size()),
                     MendOfCells());
            }
            if (const std::optional<std::size_t> column = columns_[i]) {
                record[*column] = *column < kTextColumns ? cell : Number(cell, *column);
            }
        }
        SetAlternatives(&record);
        return {Columns(), std::move(record), lineNumber_};
    }

    std::string MendOfCells() const {
        if (linesOfRow_ > 1) {
            return "look for a quote that opens in this line and closes in line " +
                   std::to_string(lineNumber_ + linesOfRow_ - 1);
        }
        return std::string("put a text that holds a separator into double quotes") +
               (separator_ == ',' ? "; with decimal commas separate the cells by semicolons" : "");
    }

    std::string Number(const std::string& cell, std::size_t column) {
        const auto dimensions = DimensionColumns();
        const std::string& title = (*Columns())[column];
        if (std::find(dimensions.begin(), dimensions.end(), title) != dimensions.end()) {
            if (const std::optional<double> fraction = FractionIn(cell))
                return EveryDigit(*fraction);
        }
        try {
            return numbers_->WithPoint(cell);
        } catch (const CsvNumberError& error) {
            Fail(title, error.what(), error.Mend());
        }
    }

    // What tables write in more than one way.
    static void SetAlternatives(std::vector<std::string>* record) {
        const auto at = [&](const char* column) -> std::string& {
            return (*record)[IndexOf(column)];
        };
        at("type") = InSmallLetters(at("type"));
        at("unit") = CatalogueUnit(at("unit"));
        const ProfileType* const type = FindProfileType(at("type"));
        if (type != nullptr && (type->Draws("r") || type->Draws("r_root"))) {
            std::string &r = at("r"), &root = at("r_root");
            if (r.empty()) r = root;
            if (root.empty()) root = r;
            if (r != root) {
                Fail("r_root", "it differs from the column r", "give the root radius once");
            }
        }
        std::string &h = at("h"), &b = at("b");
        if (at("type") != "chs") return;
        if (h.empty()) h = b;
        if (b.empty()) b = h;
        if (h != b)
            Fail("b", "a round tube has one diameter", "write that of h, or leave it empty");
    }

    void Add(CsvRecord row) {
        const std::string& name = row.Text("name");
        if (CanonicalProfileName(name).empty()) {
            Fail("name", name.empty() ? "the cell is empty" : "the name has no letter or digit",
                 "name the profile");
        }
        if (FindProfileType(row.Text("type")) == nullptr) {
            Fail("type",
                 row.Text("type").empty() ? "the cell is empty"
                                          : '"' + Excerpt(row.Text("type")) + "\" is no type",
                 "write " + TypeNames());
        }
        if (row.Text("unit") != "mm" && row.Text("unit") != "in") {
            Fail("unit", '"' + Excerpt(row.Text("unit")) + "\" is no unit of a catalogue",
                 "write mm or in");
        }
        CheckPublished(row);
        CheckDimensions(row);
        if (const std::optional<ProfileFault> fault = FindProfileFault(row)) {
            throw RowFault{*fault};
        }
        if (const CsvRecord* const first = rows_.Find(name)) {
            Fail("name",
                 '"' + Excerpt(name) + "\" stands in line " + std::to_string(first->Line()) +
                     " already, as \"" + Excerpt(first->Text("name")) + '"',
                 "rename one of them, or remove this row");
        }
        rows_.Add(std::move(row));
    }

    // What every section has more than 0 of.
    static void CheckPublished(const CsvRecord& row) {
        for (const char* column :
             {"area", "Ix", "Iy", "Zx_min", "Zy_min", "Sx", "Sy", "It", "t_nom"}) {
            const std::optional<double> number = row.Number(column);
            if (number && !(*number > 0.0)) {
                Fail(column, "it is not above 0", "correct it, or leave the cell empty");
            }
        }
    }

    // What the type does not draw would be lost; 0 says that there is none.
    static void CheckDimensions(const CsvRecord& row) {
        const ProfileType& type = *FindProfileType(row.Text("type"));
        const std::string name(type.name);
        const bool hasRoot = type.Draws("r") || type.Draws("r_root");
        for (const std::string_view column : DimensionColumns()) {
            const bool isKnown = type.Draws(column) || column == "t_nom" ||
                                 (hasRoot && (column == "r" || column == "r_root")) ||
                                 (name == "chs" && column == "b");
            if (isKnown || row.Number(column).value_or(0.0) == 0.0) continue;
            std::string mend = "leave the cell empty";
            std::vector<std::string> drawn;
            for (const DimensionColumn& each : type.columns) drawn.emplace_back(each.name);
            for (const ProfileType& other : ProfileTypes()) {
                if (other.shape == type.shape && other.Draws(column)) {
                    mend += ", or choose the type " + std::string(other.name);
                }
            }
            Fail(column,
                 "the type " + name + " has no " + std::string(column) + "; it is drawn from " +
                     Listed(drawn, "and"),
                 mend);
        }
        const double slope = row.Number("slope").value_or(0.0);
        if (slope > 1.0) {
            Fail("slope", ShortNumber(slope, 6) + " looks like percent or degrees",
                 "write the rise per unit of width, " + ShortNumber(slope / 100.0, 6) + " for " +
                     ShortNumber(slope, 6) + " %");
        }
    }

    const std::string& source_;
    std::vector<Finding>& findings_;
    std::vector<std::string> lines_;      // of the text
    std::vector<std::string> withUnits_;  // titles that state one
    ProfileRows rows_;
    std::vector<std::optional<std::size_t>> columns_;  // of the text; empty: no titles were read
    char separator_ = 0;                               // likewise
    std::optional<CsvNumbers> numbers_;                // likewise
    std::size_t lineNumber_ = 0;
    std::size_t linesOfRow_ = 1;
    bool hasRows_ = false;
};

}  // namespace

ProfileRows ReadProfiles(const std::string& text, const std::string& source,
                         std::vector<Finding>* findings) {
    return ProfileReader(source, findings).Read(text);
}

}  // namespace halvorn::engine
