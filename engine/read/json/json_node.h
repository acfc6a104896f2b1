/// @file json_node.h
/// Checked reading of a JSON document: every complaint knows its place.
#ifndef HALVORN_ENGINE_READ_JSON_JSON_NODE_H
#define HALVORN_ENGINE_READ_JSON_JSON_NODE_H

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace halvorn::engine {

/// What a number may be.
enum class Sign { Any, NotNegative, Positive };

/// One value of a document and the way to it. A node refers to its parent node and to the document;
/// both must outlive it. Places are put together only when a message needs one.
class Node {
public:
    /// The top level of a document that came from `source`.
    Node(const nlohmann::json& document, const std::string& source)
        : value_(&document), source_(&source) {}

    /// This place as a JSON pointer; empty at the top level.
    std::string Pointer() const;

    /// Throws an InputError at this place.
    [[noreturn]] void Fail(const std::string& problem, const std::string& remedy) const;

    /// Fails unless this is an object.
    void RequireObject() const;
    /// Fails unless this is an object all of whose keys are known.
    void RequireKeys(const std::vector<std::string_view>& known) const;
    bool Has(const char* key) const { return value_->contains(key); }
    /// The member `key`; fails when it is missing.
    Node At(const char* key) const;

    /// The number of elements; fails unless this is an array. `content` says of what.
    std::size_t Size(const std::string& content) const;
    /// An element of an array, unchecked.
    Node operator[](std::size_t index) const;

    double Number(Sign sign = Sign::Any) const;
    std::string Text() const;

    /// The value that the text here stands for; fails with the list of choices.
    template <typename T>
    T Choice(const std::vector<std::pair<std::string_view, T>>& choices) const {
        const std::string found = Text();
        std::vector<std::string_view> names;
        for (const auto& [name, value] : choices) {
            if (name == found) return value;
            names.push_back(name);
        }
        FailChoice(found, names);
    }

private:
    Node(const Node& parent, const char* key, std::size_t index)
        : parent_(&parent), key_(key), index_(index), source_(parent.source_) {}

    [[noreturn]] void FailType(const std::string& expected) const;
    [[noreturn]] void FailChoice(const std::string& found,
                                 const std::vector<std::string_view>& names) const;

    const nlohmann::json* value_ = nullptr;
    const Node* parent_ = nullptr;
    const char* key_ = nullptr;  // null for an element of an array
    std::size_t index_ = 0;
    const std::string* source_;
};

}  // namespace halvorn::engine

#endif
