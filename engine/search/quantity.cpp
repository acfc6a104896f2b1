#include "search/quantity.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "catalogue/profile_names.h"
#include "catalogue/profile_types.h"
#include "values/values.h"
#include "values/warping_values.h"

namespace halvorn::engine {

namespace {

// A name without what engineers leave out of it: "Wpl,x" is Wplx.
std::string PlainName(std::string_view name) {
    std::string plain(name);
    std::erase_if(plain, [](char c) { return c == ',' || c == '_' || c == '.'; });
    return plain;
}

Quantity DimensionQuantity(std::string_view column) {
    Quantity quantity;
    quantity.kind = Quantity::Kind::Dimension;
    quantity.value.key = quantity.value.symbol = quantity.value.name = std::string(column);
    quantity.value.power = column == "slope" ? 0 : 1;
    quantity.value.method = "dimension of the table";
    return quantity;
}

const std::vector<Quantity>& Quantities() {
    static const std::vector<Quantity> quantities = [] {
        std::vector<Quantity> all;
        for (const std::string_view column : DimensionColumns()) {
            all.push_back(DimensionQuantity(column));
        }
        for (const ValueDescription& description : kValues) {
            all.push_back({Quantity::Kind::Reported, DescribedValue(description, "")});
        }
        for (const ValueDescription& description : kPublishedValues) {
            const std::string_view key = description.key;
            const bool isX = key == "elastic_modulus_x_min";
            if (!isX && key != "elastic_modulus_y_min") continue;
            all.push_back({isX ? Quantity::Kind::SmallerModulusX : Quantity::Kind::SmallerModulusY,
                           DescribedValue(description, "")});
        }
        return all;
    }();
    return quantities;
}

Value Smaller(const std::vector<Value>& values, const char* first, const char* second,
              const Value& asked) {
    Value smaller = asked;
    const Value* const a = FindValue(values, first);
    const Value* const b = FindValue(values, second);
    if (a == nullptr || b == nullptr) {
        smaller.whyMissing = "an elastic modulus is missing";
        return smaller;
    }
    const Value& less = b->number < a->number ? *b : *a;
    smaller.number = less.number;
    smaller.unit = less.unit;
    smaller.method = less.method;
    return smaller;
}

}  // namespace

bool Quantity::IsOfWarping() const {
    return kind == Kind::Reported && engine::IsOfWarping(value.key);
}

std::optional<Quantity> FindQuantity(std::string_view name) {
    std::string plain = PlainName(name);
    std::string small = InSmallLetters(plain);
    if (small == "zxmin" || small == "zymin") {
        plain = PlainName(small[1] == 'x' ? "elastic_modulus_x_min" : "elastic_modulus_y_min");
        small = plain;
    }
    std::optional<Quantity> like;
    std::size_t alike = 0;
    for (const Quantity& quantity : Quantities()) {
        for (const std::string& known : {quantity.value.key, quantity.value.symbol}) {
            if (plain == PlainName(known)) return quantity;
            if (small != InSmallLetters(PlainName(known))) continue;
            if (like && like->value.key == quantity.value.key) continue;
            like = quantity;
            ++alike;
        }
    }
    return alike == 1 ? like : std::nullopt;
}

QuantityNames QuantitiesLike(std::string_view name) {
    constexpr std::size_t kMost = 3;
    const std::string wanted = InSmallLetters(PlainName(name));
    std::vector<std::pair<std::size_t, std::string>> byDistance;
    for (const Quantity& quantity : Quantities()) {
        const std::string &key = quantity.value.key, &symbol = quantity.value.symbol;
        std::size_t distance = wanted.size();
        for (const std::string& known : {key, symbol}) {
            distance = std::min(distance, EditDistance(wanted, InSmallLetters(PlainName(known))));
        }
        if (distance > std::max<std::size_t>(1, wanted.size() / 3)) continue;
        std::string both = symbol;
        if (key != symbol) both.append(" (").append(key).append(")");
        byDistance.emplace_back(distance, std::move(both));
    }
    std::stable_sort(byDistance.begin(), byDistance.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QuantityNames like;
    like.isAmbiguous = byDistance.size() > 1 && byDistance[1].first == 0;
    for (const auto& [distance, known] : byDistance) {
        const bool isWanted = like.isAmbiguous ? distance == 0 : like.names.size() < kMost;
        if (isWanted) like.names.push_back(known);
    }
    return like;
}

Value ValueOf(const Quantity& quantity, const CatalogueProfile& profile,
              const std::vector<Value>& values) {
    Value value = quantity.value;
    switch (quantity.kind) {
        case Quantity::Kind::Dimension: {
            value.whyMissing = "the table does not have it";
            for (const ProfileNumber& dimension : profile.dimensions) {
                if (dimension.key != value.key) continue;
                value.number = dimension.number;
                value.whyMissing.clear();
            }
            if (value.power != 0) value.unit = profile.unit;
            return value;
        }
        case Quantity::Kind::SmallerModulusX:
            return Smaller(values, "elastic_modulus_bottom", "elastic_modulus_top", value);
        case Quantity::Kind::SmallerModulusY:
            return Smaller(values, "elastic_modulus_left", "elastic_modulus_right", value);
        case Quantity::Kind::Reported:
            break;
    }
    const auto found = std::find_if(values.begin(), values.end(),
                                    [&](const Value& each) { return each.key == value.key; });
    if (found != values.end()) return *found;
    value.whyMissing = "the report does not have it";
    return value;
}

}  // namespace halvorn::engine
