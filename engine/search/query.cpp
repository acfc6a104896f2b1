#include "search/query.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "base/units.h"

namespace halvorn::engine {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kOperators = "<>=";
constexpr const char* kNames =
    "a key or a symbol of the table, such as area, Wplx, Ix or It, or a dimension such as h or tw";

// The terms of a text; blanks around an operator and before a unit are no ends of one.
std::vector<std::string> TermsOf(std::string_view text) {
    std::vector<std::string> terms;
    bool isOpen = false;  // an operator stands last
    for (std::size_t i = text.find_first_not_of(kBlanks); i < text.size();) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, i), text.size());
        const std::string word(text.substr(i, end - i));
        const bool isOperator = kOperators.find(word.front()) != std::string_view::npos;
        const bool isUnit = word.find_first_of(kOperators) == std::string::npos && !terms.empty() &&
                            (terms.back().back() >= '0' && terms.back().back() <= '9');
        i = std::min(text.find_first_not_of(kBlanks, end), text.size());
        const bool isBeforeOperator =
            i < text.size() && kOperators.find(text[i]) != std::string_view::npos;
        const bool isOfOpen = isOpen && word.find_first_of(kOperators, 1) == std::string::npos;
        if (!terms.empty() && (isOfOpen || isOperator || (isUnit && !isBeforeOperator))) {
            terms.back() += word;
        } else {
            terms.push_back(word);
        }
        isOpen = kOperators.find(terms.back().back()) != std::string_view::npos;
    }
    return terms;
}

struct SplitTerm {
    std::string name, operation, rest;
};

SplitTerm Split(const std::string& term) {
    const std::size_t start = term.find_first_of(kOperators);
    if (start == std::string::npos) {
        throw QueryError(term, "it compares nothing",
                         "write a comparison such as Wplx>=40in^3, or family=, order= or limit=");
    }
    const std::size_t end = std::min(term.find_first_not_of(kOperators, start), term.size());
    return {term.substr(0, start), term.substr(start, end - start), term.substr(end)};
}

// Names that engineers use of what has another one here.
void RefuseWords(const std::string& term, const std::string& name) {
    constexpr std::string_view mass =
        "write m (mass_per_metre) and give --density, or area, which follows the mass";
    constexpr std::pair<std::string_view, std::string_view> kMends[] = {
        {"mass", mass},
        {"weight", mass},
        {"kg", mass},
        {"g", mass},
        {"w",
         "write Welx or Wely for the smaller elastic modulus, Wplx or Wply for the plastic one"},
        {"wx", "write Welx for the smaller elastic modulus, Wplx for the plastic one"},
        {"wy", "write Wely for the smaller elastic modulus, Wply for the plastic one"}};
    const std::string small = InSmallLetters(name);
    for (const auto& [word, mend] : kMends) {
        if (small != word) continue;
        throw QueryError(term, "nothing is called \"" + Excerpt(name) + '"', std::string(mend));
    }
}

// S and Z are the elastic or the plastic modulus by country, and S the static moment in reports.
void RefuseLetters(const std::string& term, const std::string& name) {
    const std::string small = InSmallLetters(name);
    for (const char axis : {'x', 'y'}) {
        const std::string s = std::string("s") + axis, z = std::string("z") + axis;
        if (small != s && small != z) continue;
        const std::string low = axis == 'x' ? "bottom" : "left";
        std::string moduli = "Wpl";
        moduli.append(1, axis).append(" for the plastic modulus, Wel").append(1, axis);
        moduli.append(" for the smaller elastic one or Wel,").append(low);
        moduli.append(" (elastic_modulus_").append(low).append(") for that of one side");
        if (small == z) {
            throw QueryError(term,
                             '"' + name + "\" is the plastic or the elastic modulus by country",
                             "write " + moduli);
        }
        throw QueryError(term,
                         '"' + name + "\" is the static moment, the plastic or the elastic modulus",
                         std::string("write static_moment_") + axis + ", " + moduli);
    }
}

Quantity QuantityOf(const std::string& term, const std::string& name) {
    RefuseLetters(term, name);
    RefuseWords(term, name);
    const std::optional<Quantity> quantity = FindQuantity(name);
    if (quantity) return *quantity;
    const QuantityNames like = QuantitiesLike(name);
    std::string list;
    for (const std::string& each : like.names) list += (list.empty() ? "" : ", ") + each;
    if (like.isAmbiguous) {
        throw QueryError(term, "several values are called \"" + Excerpt(name) + '"',
                         "take one of " + list);
    }
    throw QueryError(term, "nothing is called \"" + Excerpt(name) + '"',
                     "take " + (list.empty() ? "" : list + ", or ") + kNames);
}

QueryTerm::Operator OperatorOf(const std::string& term, const std::string& text) {
    using Operator = QueryTerm::Operator;
    constexpr std::pair<std::string_view, Operator> kKnown[] = {{"<", Operator::Less},
                                                                {"<=", Operator::LessOrEqual},
                                                                {"=", Operator::Equal},
                                                                {"==", Operator::Equal},
                                                                {"=<", Operator::LessOrEqual},
                                                                {">", Operator::Greater},
                                                                {"=>", Operator::GreaterOrEqual},
                                                                {">=", Operator::GreaterOrEqual}};
    for (const auto& [known, operation] : kKnown) {
        if (known == text) return operation;
    }
    throw QueryError(term, "\"" + text + "\" is no comparison", "write >=, <=, >, < or =");
}

// How a unit of a power is written.
std::string UnitText(const std::string& unit, int power) {
    return unit + (power > 1 ? "^" + std::to_string(power) : "");
}

// The unit of length in a text such as "in^3", "cm3" or "mm"; nothing when the power is another.
std::optional<std::string> LengthIn(std::string_view text, int power) {
    for (const LengthUnit& unit : kLengthUnits) {
        const std::string name(unit.name);
        const std::string digit = std::to_string(power);
        if (text == UnitText(name, power) || (power > 1 && text == name + digit)) return name;
        constexpr std::pair<int, std::string_view> kRaised[] = {
            {2, "\u00B2"}, {3, "\u00B3"}, {4, "\u2074"}, {6, "\u2076"}};
        for (const auto& [raised, sign] : kRaised) {
            if (raised == power && text == name + std::string(sign)) return name;
        }
    }
    return std::nullopt;
}

// Half a unit of the last digit of a number that can be read: 0.005 of 53.81.
double HalfDigit(const std::string& number) {
    const std::size_t exponent = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), exponent);
    const auto decimals = static_cast<double>(exponent - std::min(point + 1, exponent));
    const double power =
        exponent == number.size() ? 0.0 : NumberIn(number.substr(exponent + 1)).value_or(0.0);
    return 0.5 * std::pow(10.0, power - decimals);
}

void ReadNumber(const std::string& rest, QueryTerm* term) {
    // The longest number that the text begins with.
    std::size_t end = std::min(rest.find_first_not_of("+-.0123456789eE"), rest.size());
    std::optional<double> number;
    while (end > 0 && !(number = FiniteNumberIn(rest.substr(0, end)))) --end;
    const bool goesOn = end < rest.size() &&
                        std::string_view(".,0123456789").find(rest[end]) != std::string_view::npos;
    if (!number || goesOn) {
        throw QueryError(term->text, "\"" + Excerpt(rest) + "\" is no number",
                         "write one with a decimal point, and perhaps its unit");
    }
    term->number = *number;
    term->halfDigit = HalfDigit(rest.substr(0, end));
    const std::string unit = Trimmed(std::string_view(rest).substr(end));
    if (unit.empty()) return;
    const Value& value = term->quantity.value;
    if (value.power == 0 && unit == value.unit) return;
    if (value.power != 0) {
        if (const std::optional<std::string> length = LengthIn(unit, value.power)) {
            term->unit = *length;
            return;
        }
    }
    const std::string right = value.power != 0 ? "write " + UnitText("mm", value.power) + " or " +
                                                     UnitText("in", value.power)
                              : value.unit.empty() ? "leave it out"
                                                   : "write " + value.unit;
    throw QueryError(term->text, "\"" + Excerpt(unit) + "\" is no unit of " + value.key, right);
}

std::vector<std::string> FamiliesIn(const std::string& term, const std::string& list) {
    std::vector<std::string> families;
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        families.push_back(list.substr(start, end - start));
        if (families.back().empty()) {
            throw QueryError(term, "a family has no name", "write family=W or family=HEA,HEB");
        }
        start = end + 1;
    }
    return families;
}

class QueryReader {
public:
    Query Read(const std::string& text) {
        query_.order = *FindQuantity("area");
        const std::vector<std::string> terms = TermsOf(text);
        if (terms.empty()) {
            throw QueryError(text, "it is empty",
                             "write terms such as \"family=IPE Wplx>=500cm^3 order=area\"");
        }
        for (const std::string& term : terms) Add(term);
        return query_;
    }

private:
    void Add(const std::string& term) {
        const SplitTerm split = Split(term);
        const std::string name = InSmallLetters(split.name);
        if (name == "family" || name == "order" || name == "limit") {
            if (split.operation != "=") {
                throw QueryError(term, name + " is not compared", "write " + name + "=");
            }
            if (std::find(given_.begin(), given_.end(), name) != given_.end()) {
                throw QueryError(term, name + " comes twice", "give it once");
            }
            given_.push_back(name);
            if (name == "family") query_.families = FamiliesIn(term, split.rest);
            if (name == "order") SetOrder(term, split.rest);
            if (name == "limit") SetLimit(term, split.rest);
            return;
        }
        QueryTerm comparison;
        comparison.text = term;
        comparison.quantity = QuantityOf(term, split.name);
        comparison.comparison = OperatorOf(term, split.operation);
        ReadNumber(split.rest, &comparison);
        query_.terms.push_back(comparison);
    }

    void SetOrder(const std::string& term, std::string name) {
        query_.isDescending = name.starts_with('-');
        if (query_.isDescending) name.erase(0, 1);
        query_.order = QuantityOf(term, name);
    }

    void SetLimit(const std::string& term, const std::string& number) {
        const std::optional<int> limit = WholeNumberIn(number);
        if (!limit || *limit < 1) {
            throw QueryError(term, "\"" + Excerpt(number) + "\" is no number of profiles",
                             "write a whole number from 1");
        }
        query_.limit = static_cast<std::size_t>(*limit);
    }

    Query query_;
    std::vector<std::string> given_;
};

}  // namespace

InputError QueryError(const std::string& term, const std::string& problem,
                      const std::string& mend) {
    return {"search", '"' + Excerpt(term) + '"', problem, mend};
}

bool QueryTerm::Holds(double value, bool isExact) const {
    constexpr double kRounding = 1e-9;
    const double slack = kRounding * std::fabs(number);
    switch (comparison) {
        case Operator::Less:
            return value < number - slack;
        case Operator::LessOrEqual:
            return value <= number + slack;
        case Operator::Equal:
            return std::fabs(value - number) <= slack + (isExact ? 0.0 : halfDigit);
        case Operator::GreaterOrEqual:
            return value >= number - slack;
        case Operator::Greater:
            break;
    }
    return value > number + slack;
}

Query ReadQuery(const std::string& text) {
    return QueryReader().Read(text);
}

}  // namespace halvorn::engine
