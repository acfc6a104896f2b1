#include "catalogue/catalogue.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/dimension_checks.h"
#include "base/text.h"
#include "base/units.h"
#include "catalogue/csv_table.h"
#include "catalogue/draw_profile.h"
#include "catalogue/near_names.h"
#include "catalogue/profile_names.h"
#include "catalogue/profile_types.h"
#include "catalogue/published_values.h"
#include "catalogue/read_profiles.h"
#include "model/outlines.h"

namespace halvorn::engine {

namespace {

// A row and the table that it stands in.
struct FoundRow {
    const CsvRecord* row = nullptr;
    const ProfileRows* table = nullptr;
};

// Every row that a name can mean: one that is called so, the user's own before a built-in one; else
// own ones that fold to the same name, else built-in ones. More than one: no one is meant.
std::vector<FoundRow> RowsLike(const Catalogue& catalogue, std::string_view name) {
    static const std::vector<std::shared_ptr<const ProfileRows>> none;
    const CatalogueData* const data = CatalogueAccess::DataOf(catalogue);
    const auto& own = data != nullptr ? data->own : none;
    for (const auto& table : own) {
        if (const CsvRecord* const row = table->Find(name)) return {{row, table.get()}};
    }
    if (const CsvRecord* const row = BuiltInRows().Find(name)) return {{row, &BuiltInRows()}};
    const std::string canonical = CanonicalProfileName(name);
    std::vector<FoundRow> found;
    const auto add = [&](const ProfileRows& table) {
        for (const CsvRecord* const row : table.FindLike(canonical)) found.push_back({row, &table});
    };
    for (const auto& table : own) add(*table);
    if (found.empty()) add(BuiltInRows());
    return found;
}

FoundRow FindRow(const Catalogue& catalogue, std::string_view name) {
    const std::vector<FoundRow> rows = RowsLike(catalogue, name);
    return rows.size() == 1 ? rows.front() : FoundRow{};
}

const CsvRecord& RowOf(const Catalogue& catalogue, std::string_view name) {
    const CsvRecord* const row = FindRow(catalogue, name).row;
    if (row == nullptr) throw std::out_of_range("unknown profile " + std::string(name));
    return *row;
}

// Every row that counts: built-in ones unless an own one has their name, then the own ones.
void ForEachRow(
    const Catalogue& catalogue,
    const std::function<void(const std::string& canonicalName, const CsvRecord&)>& see) {
    const CatalogueData* const data = CatalogueAccess::DataOf(catalogue);
    const auto seeAll = [&](const ProfileRows& table, bool mayStandBack) {
        for (std::size_t i = 0; i < table.Rows().size(); ++i) {
            const CsvRecord& row = table.Rows()[i];
            const auto hasIt = [&](const auto& own) {
                return own->Find(row.Text("name")) != nullptr;
            };
            if (mayStandBack && std::any_of(data->own.begin(), data->own.end(), hasIt)) continue;
            see(table.CanonicalNames()[i], row);
        }
    };
    seeAll(BuiltInRows(), data != nullptr);
    if (data == nullptr) return;
    for (const auto& table : data->own) seeAll(*table, false);
}

// Whether a family that a user names is that of a row.
bool IsOfFamily(const CsvRecord& row, const std::string& wanted) {
    if (wanted.empty()) return false;
    const std::string family = InCapitals(FamilyOf(row));
    const std::string name = InCapitals(row.Text("name"));
    if (family == wanted || SeriesOf(name) == wanted) return true;
    // "ALX" of "ALX C 60": whole words of letters.
    const bool isOfLetters = !FirstLettersOf(wanted.substr(wanted.size() - 1)).empty();
    if (isOfLetters && name.starts_with(wanted) &&
        FirstLettersOf(name.substr(wanted.size())).empty()) {
        return true;
    }
    for (std::size_t start = 0; start < family.size();) {
        const std::size_t hyphen = std::min(family.find('-', start), family.size());
        if (family.compare(start, std::string::npos, wanted) == 0 ||
            family.compare(start, hyphen - start, wanted) == 0) {
            return true;
        }
        start = hyphen + 1;
    }
    return false;
}

std::vector<ProfileNumber> DimensionsIn(const CsvRecord& row) {
    std::vector<ProfileNumber> numbers;
    for (const std::string_view column : DimensionColumns()) {
        const std::optional<double> number = row.Number(column);
        if (number) numbers.push_back({std::string(column), *number, column == "slope" ? 0 : 1});
    }
    return numbers;
}

std::vector<ProfileNumber> PublishedIn(const CsvRecord& row) {
    std::vector<ProfileNumber> numbers;
    for (PublishedValue& value : PublishedValuesOf(row, UnitOf(row))) {
        const auto columns = PublishedColumns();
        const auto column = std::find_if(columns.begin(), columns.end(),
                                         [&](const auto& each) { return each.key == value.key; });
        numbers.push_back({std::move(value.key), value.number, column->power});
    }
    return numbers;
}

// Takes the rows of a new table that an own one has already out of it.
ProfileRows WithoutRepeated(const ProfileRows& table, const CatalogueData& data,
                            std::vector<Finding>* findings) {
    ProfileRows kept(table.Source());
    for (const CsvRecord& row : table.Rows()) {
        const std::string& name = row.Text("name");
        const auto first = std::find_if(data.own.begin(), data.own.end(), [&](const auto& own) {
            return own->Find(name) != nullptr;
        });
        if (first == data.own.end()) {
            kept.Add(row);
            continue;
        }
        Finding& finding = findings->emplace_back();
        finding.severity = Severity::Error;
        finding.element = table.Source() + ": line " + std::to_string(row.Line()) + ", column name";
        const CsvRecord& taken = *(*first)->Find(name);
        finding.problem = '"' + Excerpt(name) + "\" stands in " + (*first)->Source() + ", line " +
                          std::to_string(taken.Line()) + ", already, as \"" +
                          Excerpt(taken.Text("name")) + '"';
        finding.mend = "rename one of them, or remove this row";
    }
    return kept;
}

// One line for all built-in profiles that stand back.
void AddRemark(const ProfileRows& table, std::vector<Finding>* findings) {
    constexpr std::size_t kMost = 3;
    std::string names;
    std::size_t count = 0;
    for (const CsvRecord& row : table.Rows()) {
        if (BuiltInRows().Find(row.Text("name")) == nullptr) continue;
        if (count++ < kMost) names += (count > 1 ? ", " : "") + Excerpt(row.Text("name"));
    }
    if (count == 0) return;
    if (count > kMost) names += " and " + std::to_string(count - kMost) + " more";
    Finding& finding = findings->emplace_back();
    finding.element = table.Source();
    finding.problem = names + (count == 1 ? " goes before the built-in profile of that name"
                                          : " go before the built-in profiles of these names");
}

// @param division  in the unit of the row
shapes::Outline Draw(const CsvRecord& row, const shapes::ArcDivision& division) {
    try {
        return DrawProfile(row, division);
    } catch (const shapes::DimensionError& error) {
        throw InputError(row.Text("name"), error.what(), error.Remedy());
    }
}

}  // namespace

Catalogue CatalogueAccess::Of(std::shared_ptr<const CatalogueData> data) {
    Catalogue catalogue;
    catalogue.data_ = std::move(data);
    return catalogue;
}

ExtendedCatalogue Catalogue::With(const std::string& path) const {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        throw InputError(path, "is a folder, and a catalogue is one table",
                         "name a .csv file in it");
    }
    return WithText(ReadInput(path), SourceName(path));
}

ExtendedCatalogue Catalogue::WithText(const std::string& text, const std::string& source) const {
    ExtendedCatalogue extended;
    auto data = std::make_shared<CatalogueData>();
    if (data_ != nullptr) *data = *data_;
    const ProfileRows read = ReadProfiles(text, source, &extended.findings);
    ProfileRows table = WithoutRepeated(read, *data, &extended.findings);
    AddRemark(table, &extended.findings);
    data->own.push_back(std::make_shared<const ProfileRows>(std::move(table)));
    extended.catalogue = CatalogueAccess::Of(std::move(data));
    return extended;
}

std::vector<std::string> Catalogue::Names() const {
    std::vector<std::string> names;
    ForEachRow(*this, [&](const std::string&, const CsvRecord& row) {
        names.push_back(row.Text("name"));
    });
    return names;
}

std::vector<std::string> Catalogue::Names(std::string_view family) const {
    const std::string wanted = InCapitals(Trimmed(family));
    std::vector<std::string> names;
    ForEachRow(*this, [&](const std::string&, const CsvRecord& row) {
        if (IsOfFamily(row, wanted)) names.push_back(row.Text("name"));
    });
    return names;
}

std::vector<CatalogueFamily> Catalogue::Families() const {
    std::vector<CatalogueFamily> families;
    ForEachRow(*this, [&](const std::string&, const CsvRecord& row) {
        const std::string name = FamilyOf(row);
        auto family = std::find_if(families.begin(), families.end(),
                                   [&](const CatalogueFamily& each) { return each.name == name; });
        if (family == families.end()) family = families.insert(family, {name, {}, 0});
        ++family->profiles;
        const std::string series = SeriesOf(row.Text("name"));
        std::vector<std::string>& known = family->series;
        if (series.empty()) return;
        if (std::find(known.begin(), known.end(), series) == known.end()) known.push_back(series);
    });
    return families;
}

std::optional<CatalogueProfile> Catalogue::Find(std::string_view name) const {
    const FoundRow found = FindRow(*this, name);
    if (found.row == nullptr) return std::nullopt;
    const CsvRecord& row = *found.row;
    CatalogueProfile profile;
    profile.name = row.Text("name");
    profile.family = FamilyOf(row);
    profile.standard = row.Text("standard");
    profile.type = row.Text("type");
    profile.unit = UnitOf(row);
    profile.source = found.table->Source();
    profile.dimensions = DimensionsIn(row);
    profile.published = PublishedIn(row);
    return profile;
}

CatalogueProfile InLengthUnit(const CatalogueProfile& profile, const std::string& unit) {
    if (!IsLengthUnit(unit)) {
        throw InputError("options", "the unit is " + Excerpt(unit), "give mm, cm, m or in");
    }
    CatalogueProfile converted = profile;
    converted.unit = unit;
    const double ratio = MetresPer(unit) / MetresPer(profile.unit);
    for (auto* const numbers : {&converted.dimensions, &converted.published}) {
        for (ProfileNumber& number : *numbers) number.number /= std::pow(ratio, number.power);
    }
    return converted;
}

std::vector<std::string> Catalogue::Similar(std::string_view name) const {
    constexpr std::size_t kMost = 3;
    const TypedName typed(name);
    std::vector<std::pair<NameDistance, std::string>> byDistance;
    ForEachRow(*this, [&](const std::string& canonical, const CsvRecord& row) {
        if (std::optional<NameDistance> distance = typed.DistanceTo(canonical)) {
            byDistance.emplace_back(std::move(*distance), row.Text("name"));
        }
    });
    std::stable_sort(byDistance.begin(), byDistance.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> names;
    for (const auto& [distance, similar] : byDistance) {
        if (names.size() < kMost) names.push_back(similar);
    }
    return names;
}

std::vector<std::string> CatalogueNames() {
    return Catalogue().Names();
}

bool IsCatalogueProfile(std::string_view name, const Catalogue& catalogue) {
    return FindRow(catalogue, name).row != nullptr;
}

std::string SeveralProfiles(std::string_view name, const Catalogue& catalogue) {
    const std::vector<FoundRow> rows = RowsLike(catalogue, name);
    if (rows.size() < 2) return "";
    std::string list;
    for (const FoundRow& each : rows) {
        list += (list.empty() ? "" : ", ") + Excerpt(each.row->Text("name"));
    }
    return list;
}

std::string FamilyList(const Catalogue& catalogue) {
    std::string list;
    for (const CatalogueFamily& family : catalogue.Families()) {
        list += (list.empty() ? "" : ", ") + family.name;
    }
    return list;
}

std::vector<Element> CatalogueElements(std::string_view name, const std::string& unit,
                                       const shapes::ArcDivision& division,
                                       bool wantsPublishedValues, const Catalogue& catalogue) {
    const CsvRecord& row = RowOf(catalogue, name);
    const double factor = MetresPer(UnitOf(row)) / MetresPer(unit);
    const shapes::Outline drawn = Draw(row, division.Scaled(1.0 / factor));
    std::vector<Element> elements = ElementsOf(drawn);
    if (wantsPublishedValues) {
        elements.resize(1);
        elements.front().ring = KeyholeRing(drawn);
        elements.front().given = PublishedStandIn(row, drawn, unit);
    }
    for (Element& element : elements) {
        element.label = row.Text("name");
        for (Point& point : element.ring) point = factor * point;
    }
    return elements;
}

SectionModel CatalogueSection(std::string_view name, const InputOptions& options) {
    const CsvRecord& row = RowOf(options.catalogue, name);
    SectionModel section;
    section.unit = options.unit.value_or(UnitOf(row));
    const double chordTolerance =
        options.chordTolerance * MetresPer("mm") / MetresPer(section.unit);
    section.elements =
        CatalogueElements(name, section.unit, shapes::ArcDivision::ChordError(chordTolerance),
                          options.wantsPublishedValues, options.catalogue);
    section.source = section.name = section.elements.front().label;
    section.description = row.Text("standard");
    section.published = PublishedValuesOf(row, section.unit);
    return section;
}

}  // namespace halvorn::engine
