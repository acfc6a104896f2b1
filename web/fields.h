/// @file fields.h
/// The members of an object of a request, checked as they are read.
#ifndef HALVORN_WEB_FIELDS_H
#define HALVORN_WEB_FIELDS_H

#include <algorithm>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace halvorn::web {

/// One object of a request. A member that is null counts as missing. Every function throws an
/// InputError that names the member when it is not of the kind that is asked for.
class Fields {
public:
    /// @param keys  all that it may have: a misspelt one would be lost without a word
    Fields(const nlohmann::ordered_json& object, std::string place,
           std::initializer_list<std::string_view> keys);

    bool Has(const char* key) const { return Find(key) != nullptr; }
    /// Returns a member that must be there.
    std::string Text(const char* key) const;
    std::vector<std::string> Texts(const char* key) const;
    /// These return nothing when the member is missing.
    std::optional<std::string> MaybeText(const char* key) const;
    std::optional<double> MaybeNumber(const char* key) const;
    std::optional<bool> MaybeBool(const char* key) const;
    std::optional<Fields> MaybeObject(const char* key,
                                      std::initializer_list<std::string_view> keys) const;

    /// Returns what a word among some means; nothing when the member is missing.
    template <typename Meaning>
    std::optional<Meaning> MaybeChoice(
        const char* key, std::initializer_list<std::pair<std::string_view, Meaning>> words) const {
        const std::optional<std::string> given = MaybeText(key);
        if (!given) return std::nullopt;
        std::string known;
        for (const auto& [word, meaning] : words) {
            if (word == *given) return meaning;
            known += (known.empty() ? "" : ", ") + std::string(word);
        }
        Fail(key, "\"" + given->substr(0, kLongestWord) + "\" is no word for it", "give one of " + known);
    }

    /// @throws InputError always
    [[noreturn]] void Fail(std::string_view key, const std::string& problem,
                           const std::string& mend) const;

private:
    static constexpr std::size_t kLongestWord = 30;  // that a message repeats

    const nlohmann::ordered_json* Find(const char* key) const;

    const nlohmann::ordered_json* object_;
    std::string place_;
};

}  // namespace halvorn::web

#endif
