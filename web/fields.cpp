#include "fields.h"

#include <HalvornEngine.h>

namespace halvorn::web {

using nlohmann::ordered_json;

Fields::Fields(const ordered_json& object, std::string place,
               std::initializer_list<std::string_view> keys)
    : object_(&object), place_(std::move(place)) {
    if (!object.is_object()) Fail("", "it is not an object", "give an object");
    for (const auto& [key, value] : object.items()) {
        if (std::find(keys.begin(), keys.end(), key) != keys.end()) continue;
        std::string known;
        for (const std::string_view each : keys) {
            known += (known.empty() ? "" : ", ") + std::string(each);
        }
        Fail(key.substr(0, kLongestWord), "there is no such key", "the keys are " + known);
    }
}

void Fields::Fail(std::string_view key, const std::string& problem,
                  const std::string& mend) const {
    const std::string place = place_ + (key.empty() ? "" : "/") + std::string(key);
    throw engine::InputError("request", place, problem, mend);
}

const ordered_json* Fields::Find(const char* key) const {
    const auto found = object_->find(key);
    return found == object_->end() || found->is_null() ? nullptr : &*found;
}

std::optional<std::string> Fields::MaybeText(const char* key) const {
    const ordered_json* const member = Find(key);
    if (member == nullptr) return std::nullopt;
    if (!member->is_string()) Fail(key, "it is not a text", "give a text");
    return member->get<std::string>();
}

std::string Fields::Text(const char* key) const {
    std::optional<std::string> text = MaybeText(key);
    if (!text) Fail(key, "it is missing", "give a text");
    return *std::move(text);
}

std::vector<std::string> Fields::Texts(const char* key) const {
    const ordered_json* const member = Find(key);
    if (member == nullptr) return {};
    std::vector<std::string> texts;
    if (!member->is_array()) Fail(key, "it is not a list", "give a list of texts");
    for (const ordered_json& each : *member) {
        if (!each.is_string()) Fail(key, "it holds what is not a text", "give a list of texts");
        texts.push_back(each.get<std::string>());
    }
    return texts;
}

std::optional<double> Fields::MaybeNumber(const char* key) const {
    const ordered_json* const member = Find(key);
    if (member == nullptr) return std::nullopt;
    if (!member->is_number()) Fail(key, "it is not a number", "give a number");
    return member->get<double>();
}

std::optional<bool> Fields::MaybeBool(const char* key) const {
    const ordered_json* const member = Find(key);
    if (member == nullptr) return std::nullopt;
    if (!member->is_boolean()) Fail(key, "it is neither true nor false", "give true or false");
    return member->get<bool>();
}

std::optional<Fields> Fields::MaybeObject(const char* key,
                                          std::initializer_list<std::string_view> keys) const {
    const ordered_json* const member = Find(key);
    if (member == nullptr) return std::nullopt;
    return Fields(*member, place_ + "/" + key, keys);
}

}  // namespace halvorn::web
