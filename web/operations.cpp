#include "operations.h"

#include <HalvornEngine.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string_view>

#include "fields.h"
#include "options.h"
#include "rows.h"

namespace halvorn::web {

using engine::Section;
using engine::SectionReport;
using nlohmann::ordered_json;

namespace {

ordered_json Version(const Fields& /*request*/) {
    return {{"library", "HalvornSectionTools"},
            {"version", HALVORN_VERSION},
            {"results_version", engine::kResultsVersion}};
}

ordered_json Families(const Fields& /*request*/) {
    ordered_json rows = ordered_json::array();
    for (const engine::CatalogueFamily& family : engine::Catalogue().Families()) {
        rows.push_back(
            {{"name", family.name}, {"series", family.series}, {"profiles", family.profiles}});
    }
    return {{"families", rows}};
}

ordered_json Names(const Fields& request) {
    const engine::Catalogue catalogue;
    const auto family = request.MaybeText("family");
    return {{"names", family ? catalogue.Names(*family) : catalogue.Names()}};
}

ordered_json Profile(const Fields& request) {
    const std::string name = request.Text("name");
    const auto profile = engine::Catalogue().Find(name);
    // The same words as for a section of that name.
    if (!profile) (void)Section::Profile(name);
    return {{"profile", ProfileRow(*profile)}};
}

ordered_json Similar(const Fields& request) {
    return {{"names", engine::Catalogue().Similar(request.Text("name"))}};
}

ordered_json Find(const Fields& request) {
    engine::FindOptions options;
    options.unit = request.MaybeText("unit");
    const engine::ProfileSearch found = engine::FindProfiles(request.Text("query"), {}, options);
    ordered_json rows = ordered_json::array();
    for (const engine::FoundProfile& profile : found.profiles) {
        rows.push_back({{"name", profile.name}, {"values", ValueRows(profile.values, "")}});
    }
    return {{"profiles", rows}, {"limited", found.isLimited}};
}

ordered_json Shapes(const Fields& /*request*/) {
    return {{"shapes", ShapeRows()}};
}

ordered_json BoxRow(const Section& section) {
    const engine::Point low = section.PointOfBox(engine::Along::Low, engine::Along::Low);
    const engine::Point high = section.PointOfBox(engine::Along::High, engine::Along::High);
    return ordered_json::array({low.x, low.y, high.x, high.y});
}

// A section that is evaluated once something needs its report.
class Evaluation {
public:
    explicit Evaluation(const Fields& request)
        : request_(request),
          section_(ReadSection(SectionFields(request))),
          options_(ReadEvaluateOptions(request)),
          unit_(request.MaybeText("unit").value_or("")) {}

    const Fields& Request() const { return request_; }
    const Section& Input() const { return section_; }
    const std::string& Unit() const { return unit_; }
    engine::CsvOptions Csv() const { return {options_.wantsClassValues}; }
    const SectionReport& Report() {
        if (!report_) report_ = section_.Evaluate(options_);
        return *report_;
    }

private:
    const Fields& request_;
    Section section_;
    engine::EvaluateOptions options_;
    std::string unit_;
    std::optional<SectionReport> report_;
};

struct Wanted {
    std::string_view name;
    ordered_json (*make)(Evaluation&);
};

// What an evaluation can give.
constexpr Wanted kWanted[] = {
    {"values", [](Evaluation& e) { return ordered_json{{"groups", GroupRows(e.Report().Values(), e.Unit())}}; }},
    {"class_values", [](Evaluation& e) { return ValueRows(e.Report().ClassValues(), e.Unit()); }},
    {"stresses", [](Evaluation& e) { return StressRows(e.Report().Stresses(), e.Unit()); }},
    {"findings", [](Evaluation& e) { return FindingRows(e.Report().Findings()); }},
    {"svg", [](Evaluation& e) { return ordered_json(e.Report().Svg(ReadFigureOptions(e.Request()))); }},
    {"table", [](Evaluation& e) { return ordered_json(e.Report().Table(ReadTableOptions(e.Request()))); }},
    {"json", [](Evaluation& e) { return ordered_json(e.Report().Json()); }},
    {"csv", [](Evaluation& e) { return ordered_json(engine::CsvHeader(e.Csv()) + e.Report().CsvRow(e.Csv())); }},
    {"material", [](Evaluation& e) { return PolygonRows(e.Input().Material()); }},
    {"box", [](Evaluation& e) { return BoxRow(e.Input()); }},
    {"methods", [](Evaluation&) { return MethodRows(); }},
};

ordered_json Evaluate(const Fields& request) {
    Evaluation evaluation(request);
    ordered_json answer = {{"source", evaluation.Input().Source()},
                           {"name", evaluation.Input().Name()},
                           {"unit", evaluation.Input().LengthUnit()}};
    for (const std::string& name : request.Texts("want")) {
        const auto* const wanted =
            std::find_if(std::begin(kWanted), std::end(kWanted),
                         [&](const Wanted& each) { return each.name == name; });
        if (wanted == std::end(kWanted)) {
            request.Fail("want", "\"" + name.substr(0, 30) + "\" is nothing that an evaluation gives",
                         "see docs/web.md");
        }
        answer[name] = wanted->make(evaluation);
    }
    return answer;
}

ordered_json Diagnose(const Fields& request) {
    return {{"findings", FindingRows(ReadSection(SectionFields(request)).Diagnose())}};
}

ordered_json Convert(const Fields& request) {
    return {{"text", ReadSection(SectionFields(request)).FileText()}};
}

ordered_json Layers(const Fields& request) {
    const Fields section = SectionFields(request);
    const SectionText drawing = ReadSectionText(section);
    if (drawing.format != engine::TextFormat::Dxf) {
        section.Fail("format", "only drawings have layers", "give \"dxf\"");
    }
    ordered_json names = ordered_json::array();
    ordered_json read = ordered_json::array();
    ordered_json entities = ordered_json::object();
    for (const engine::DrawingLayer& layer :
         engine::LayersOfDrawing(drawing.text, drawing.source)) {
        names.push_back(layer.name);
        if (!layer.isHidden) read.push_back(layer.name);
        ordered_json& counts = entities[layer.name] = ordered_json::object();
        for (const auto& [kind, count] : layer.counts) counts[kind] = count;
    }
    return {{"layers", names}, {"read", read}, {"entities", entities}};
}

struct Operation {
    std::string_view name;
    std::initializer_list<std::string_view> keys;
    ordered_json (*answer)(const Fields&);
};

const Operation kOperations[] = {
    {"version", {"op"}, Version},
    {"families", {"op"}, Families},
    {"names", {"op", "family"}, Names},
    {"profile", {"op", "name"}, Profile},
    {"similar", {"op", "name"}, Similar},
    {"find", {"op", "query", "unit"}, Find},
    {"shapes", {"op"}, Shapes},
    {"evaluate", {"op", "section", "options", "unit", "want", "figure", "table"}, Evaluate},
    {"diagnose", {"op", "section"}, Diagnose},
    {"convert", {"op", "section"}, Convert},
    {"layers", {"op", "section"}, Layers},
};

ordered_json Parsed(const std::string& request) {
    try {
        return ordered_json::parse(request);
    } catch (const ordered_json::exception&) {
        throw engine::InputError("request", "it is no JSON", "give an object with \"op\"");
    }
}

}  // namespace

ordered_json Answer(const std::string& request) {
    const ordered_json document = Parsed(request);
    const auto op = document.is_object() ? document.find("op") : document.end();
    std::string known;
    for (const Operation& operation : kOperations) {
        if (op != document.end() && *op == operation.name) {
            ordered_json answer = {{"ok", true}};
            answer.update(operation.answer(Fields(document, "", operation.keys)));
            return answer;
        }
        known += (known.empty() ? "" : ", ") + std::string(operation.name);
    }
    throw engine::InputError("request", "/op", "it names no operation", "give one of " + known);
}

std::string Written(const ordered_json& answer) {
    return answer.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace halvorn::web
