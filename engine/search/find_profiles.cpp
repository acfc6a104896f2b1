#include <algorithm>
#include <functional>
#include <utility>

#include "HalvornEngine.h"
#include "base/text.h"
#include "base/units.h"
#include "catalogue/catalogue.h"
#include "search/query.h"
#include "values/evaluate.h"
#include "values/values.h"

namespace halvorn::engine {

namespace {

// What is shown of each profile, and the unit of length that the query states for it, if any.
struct Shown {
    Quantity quantity;
    std::string unit;
};

// A profile on its way through the terms.
struct Candidate {
    CatalogueProfile profile;
    std::vector<Value> values;  // of what is shown
};

class Search {
public:
    Search(const std::string& text, const Catalogue& catalogue, const FindOptions& options)
        : query_(ReadQuery(text)), catalogue_(catalogue), options_(options) {
        if (options.unit && !IsLengthUnit(*options.unit)) {
            throw InputError("options", "the unit is " + Excerpt(*options.unit),
                             "give mm, cm, m or in");
        }
        Show(query_.order, "");
        for (const QueryTerm& term : query_.terms) Show(term.quantity, term.unit);
        for (const Shown& shown : shown_) {
            if (shown.quantity.value.key != "mass_per_metre" || options.values.density) continue;
            throw InputError("search", "the mass follows from a density",
                             "give it with --density, for steel 7850");
        }
    }

    ProfileSearch Run() const {
        std::vector<CatalogueProfile> profiles = Profiles();
        CheckUnits(profiles);
        std::vector<Candidate> suitable;
        for (CatalogueProfile& profile : profiles) {
            Candidate candidate{std::move(profile), std::vector<Value>(shown_.size())};
            if (Passes(&candidate)) suitable.push_back(std::move(candidate));
        }
        const bool isOrderSolved = query_.order.IsOfWarping();
        if (!isOrderSolved) Sort(&suitable);
        ProfileSearch search;
        if (std::any_of(shown_.begin(), shown_.end(), IsSolved)) {
            search.isLimited = Solve(isOrderSolved ? suitable.size() : query_.limit, &suitable);
        }
        if (isOrderSolved) Sort(&suitable);
        if (suitable.size() > query_.limit) {
            search.isLimited = true;
            suitable.resize(query_.limit);
        }
        for (Candidate& candidate : suitable) {
            search.profiles.push_back({candidate.profile.name, std::move(candidate.values)});
        }
        return search;
    }

private:
    static bool IsSolved(const Shown& shown) { return shown.quantity.IsOfWarping(); }

    void Show(const Quantity& quantity, const std::string& unit) {
        for (Shown& shown : shown_) {
            if (shown.quantity.value.key != quantity.value.key) continue;
            if (shown.unit.empty()) shown.unit = unit;
            return;
        }
        shown_.push_back({quantity, unit});
    }

    // Of the families, each once and in the catalogue's order.
    std::vector<CatalogueProfile> Profiles() const {
        std::vector<std::string> names;
        if (query_.families.empty()) names = catalogue_.Names();
        for (const std::string& family : query_.families) {
            const std::vector<std::string> more = catalogue_.Names(family);
            if (more.empty()) {
                throw QueryError("family=" + family, "the catalogue has no such family",
                                 "take one of " + FamilyList(catalogue_));
            }
            for (const std::string& name : more) {
                if (std::find(names.begin(), names.end(), name) == names.end()) {
                    names.push_back(name);
                }
            }
        }
        std::vector<CatalogueProfile> profiles;
        profiles.reserve(names.size());
        for (const std::string& name : names) profiles.push_back(*catalogue_.Find(name));
        return profiles;
    }

    // A number without unit means nothing where profiles are in several.
    void CheckUnits(const std::vector<CatalogueProfile>& profiles) const {
        const bool isOne = std::all_of(profiles.begin(), profiles.end(), [&](const auto& profile) {
            return profile.unit == profiles.front().unit;
        });
        if (isOne || options_.unit) return;
        for (const QueryTerm& term : query_.terms) {
            const int power = term.quantity.value.power;
            if (power == 0 || !term.unit.empty()) continue;
            throw QueryError(term.text, "it states no unit, and the profiles are in mm and in in",
                             "write mm" + (power > 1 ? "^" + std::to_string(power) : "") +
                                 " behind the number, or give --unit");
        }
    }

    std::string UnitOf(const std::string& stated, const CatalogueProfile& profile) const {
        return !stated.empty() ? stated : options_.unit.value_or(profile.unit);
    }

    bool Meets(const Candidate& candidate, const QueryTerm& term) const {
        for (std::size_t i = 0; i < shown_.size(); ++i) {
            const Value& value = candidate.values[i];
            if (shown_[i].quantity.value.key != term.quantity.value.key) continue;
            const std::string from = UnitOf(shown_[i].unit, candidate.profile);
            const std::string to = UnitOf(term.unit, candidate.profile);
            const bool isExact =
                term.quantity.kind == Quantity::Kind::Dimension && to == candidate.profile.unit;
            return value.IsComputed() && term.Holds(InUnit(value, from, to).number, isExact);
        }
        return false;
    }

    // Sets those shown values that are meant, and returns whether they meet their terms.
    bool Fill(Candidate* candidate, const std::vector<Value>& values,
              const std::function<bool(const Quantity&)>& isMeant) const {
        for (std::size_t i = 0; i < shown_.size(); ++i) {
            const Quantity& quantity = shown_[i].quantity;
            if (!isMeant(quantity)) continue;
            const Value value = ValueOf(quantity, candidate->profile, values);
            candidate->values[i] =
                InUnit(value, candidate->profile.unit, UnitOf(shown_[i].unit, candidate->profile));
        }
        if (isMeant(query_.order) && !candidate->values.front().IsComputed()) return false;
        return std::all_of(query_.terms.begin(), query_.terms.end(), [&](const QueryTerm& term) {
            return !isMeant(term.quantity) || Meets(*candidate, term);
        });
    }

    Report ReportOf(const Candidate& candidate) const {
        InputOptions input;
        input.catalogue = catalogue_;
        SectionModel section = CatalogueSection(candidate.profile.name, input);
        section.density = options_.values.density;
        return Evaluate(section, {});
    }

    // Everything but torsion, warping and shear; dimensions first, which cost nothing.
    bool Passes(Candidate* candidate) const {
        using Kind = Quantity::Kind;
        const auto isDimension = [](const Quantity& quantity) {
            return quantity.kind == Kind::Dimension;
        };
        const auto isOfReport = [](const Quantity& quantity) {
            return quantity.kind != Kind::Dimension && !quantity.IsOfWarping();
        };
        if (!Fill(candidate, {}, isDimension)) return false;
        const bool needsReport = std::any_of(shown_.begin(), shown_.end(), [&](const Shown& shown) {
            return isOfReport(shown.quantity);
        });
        return !needsReport || Fill(candidate, ReportOf(*candidate).values, isOfReport);
    }

    // Keeps the first `wanted` profiles that also meet the terms of torsion, warping and shear.
    // Returns whether profiles are left that were not tried.
    bool Solve(std::size_t wanted, std::vector<Candidate>* candidates) const {
        std::vector<Candidate> suitable;
        EvaluateOptions options = options_.values;
        options.forces.reset();
        std::size_t tried = 0;
        for (; tried < candidates->size() && suitable.size() < wanted; ++tried) {
            Candidate& candidate = (*candidates)[tried];
            Report report = ReportOf(candidate);
            AddWarping(options, &report);
            if (Fill(&candidate, report.values,
                     [](const Quantity& q) { return q.IsOfWarping(); })) {
                suitable.push_back(std::move(candidate));
            }
            if (options_.progress) options_.progress(tried + 1, candidates->size());
        }
        const bool isAnyLeft = tried < candidates->size();
        *candidates = std::move(suitable);
        return isAnyLeft;
    }

    void Sort(std::vector<Candidate>* candidates) const {
        const auto key = [&](const Candidate& candidate) {
            const std::string from = UnitOf(shown_.front().unit, candidate.profile);
            const double number = InUnit(candidate.values.front(), from, "m").number;
            return query_.isDescending ? -number : number;
        };
        std::stable_sort(candidates->begin(), candidates->end(),
                         [&](const auto& a, const auto& b) { return key(a) < key(b); });
    }

    Query query_;
    const Catalogue& catalogue_;
    const FindOptions& options_;
    std::vector<Shown> shown_;  // first what decides the order
};

}  // namespace

ProfileSearch FindProfiles(const std::string& query, const Catalogue& catalogue,
                           const FindOptions& options) {
    return Search(query, catalogue, options).Run();
}

}  // namespace halvorn::engine
