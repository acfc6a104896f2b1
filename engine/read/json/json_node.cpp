#include "read/json/json_node.h"

#include <algorithm>

#include "HalvornEngine.h"
#include "base/text.h"
#include "read/json/json_document.h"

namespace halvorn::engine {

namespace {

std::string QuotedList(const std::vector<std::string_view>& names) {
    std::string list;
    for (const std::string_view name : names) {
        list += (list.empty() ? "\"" : ", \"") + std::string(name) + "\"";
    }
    return list;
}

}  // namespace

void Node::Fail(const std::string& problem, const std::string& remedy) const {
    const std::string place = Pointer();
    throw InputError(*source_, place.empty() ? "top level" : place, problem, remedy);
}

std::string Node::Pointer() const {
    if (parent_ == nullptr) return "";
    return parent_->Pointer() + "/" +
           (key_ != nullptr ? PointerToken(key_) : std::to_string(index_));
}

void Node::FailType(const std::string& expected) const {
    const std::string article = value_->is_array() || value_->is_object() ? "an " : "a ";
    Fail("expected " + expected + ", found " +
             (value_->is_null() ? "null" : article + value_->type_name()),
         "write " + expected + " here");
}

void Node::FailChoice(const std::string& found, const std::vector<std::string_view>& names) const {
    Fail("unknown value \"" + Excerpt(found) + "\"", "write one of " + QuotedList(names));
}

void Node::RequireObject() const {
    if (!value_->is_object()) FailType("an object");
}

void Node::RequireKeys(const std::vector<std::string_view>& known) const {
    RequireObject();
    for (const auto& item : value_->items()) {
        if (std::find(known.begin(), known.end(), item.key()) == known.end()) {
            Fail("unknown key \"" + Excerpt(item.key()) + "\"",
                 "remove it or use one of " + QuotedList(known));
        }
    }
}

Node Node::At(const char* key) const {
    const auto member = value_->find(key);
    if (member == value_->end()) {
        Fail("missing key \"" + std::string(key) + "\"", "add it");
    }
    Node node(*this, key, 0);
    node.value_ = &*member;
    return node;
}

std::size_t Node::Size(const std::string& content) const {
    if (!value_->is_array()) FailType("an array of " + content);
    return value_->size();
}

Node Node::operator[](std::size_t index) const {
    Node node(*this, nullptr, index);
    node.value_ = &(*value_)[index];
    return node;
}

double Node::Number(Sign sign) const {
    if (!value_->is_number()) FailType("a number");
    const double number = value_->get<double>();
    if (sign == Sign::Positive && !(number > 0.0)) {
        Fail("must be greater than 0, found " + value_->dump(), "write a positive number");
    }
    if (sign == Sign::NotNegative && number < 0.0) {
        Fail("must not be negative, found " + value_->dump(), "write 0 or a positive number");
    }
    return number;
}

std::string Node::Text() const {
    if (!value_->is_string()) FailType("a text in quotes");
    return value_->get<std::string>();
}

}  // namespace halvorn::engine
