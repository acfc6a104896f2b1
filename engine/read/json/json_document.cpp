#include "read/json/json_document.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "HalvornEngine.h"
#include "base/text.h"
#include "base/utf8.h"

namespace halvorn::engine {

namespace {

using nlohmann::json;

constexpr std::size_t kMaxDepth = 32;
constexpr std::size_t kMaxExcerpt = 24;

// "line 3, column 14" of the last of the characters read so far.
std::string LineAndColumn(const std::string& text, std::size_t charactersRead) {
    const std::string_view read =
        std::string_view(text).substr(0, charactersRead > 0 ? charactersRead - 1 : 0);
    const auto line = 1 + std::count(read.begin(), read.end(), '\n');
    const std::size_t lineStart = read.rfind('\n') + 1;  // npos + 1 is 0
    return "line " + std::to_string(line) + ", column " +
           std::to_string(read.size() - lineStart + 1);
}

// The end of a token, where the fault is; never the rest of a cut UTF-8 character.
std::string EndOf(const std::string& token) {
    std::size_t start = token.size() > kMaxExcerpt ? token.size() - kMaxExcerpt : 0;
    while (start > 0 && start < token.size() && IsContinuation(token[start])) ++start;
    return token.substr(start);
}

// Whether there is nothing but white space, perhaps after a byte-order mark.
bool IsBlank(std::string_view text) {
    return TrimmedView(WithoutByteOrderMark(text), " \t\r\n").empty();
}

// The parser's own words without its prefix and without the unbounded "last read" text.
std::string ReasonOf(const std::string& message) {
    const std::size_t column = message.find("column ");
    const std::size_t start = column == std::string::npos ? 0 : message.find(": ", column) + 2;
    const std::size_t end = message.find("; last read");
    return message.substr(start, end == std::string::npos ? end : end - start);
}

// Builds the document event by event, where repeated keys and the place of every value are still
// seen; the ready-made builder silently keeps the last of equal keys.
class StrictBuilder : public json::json_sax_t {
public:
    StrictBuilder(const std::string& text, std::string source)
        : text_(text), source_(std::move(source)) {}

    json TakeDocument() { return std::move(document_); }

    bool null() override { return Place(nullptr) != nullptr; }
    bool boolean(bool value) override { return Place(value) != nullptr; }
    bool number_integer(number_integer_t value) override { return Place(value) != nullptr; }
    bool number_unsigned(number_unsigned_t value) override { return Place(value) != nullptr; }
    bool number_float(number_float_t value, const string_t& /*literal*/) override {
        return Place(value) != nullptr;
    }
    bool string(string_t& value) override { return Place(std::move(value)) != nullptr; }
    bool binary(binary_t& value) override { return Place(std::move(value)) != nullptr; }
    bool start_object(std::size_t /*size*/) override { return Open(json::object()); }
    bool start_array(std::size_t /*size*/) override { return Open(json::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& name) override {
        if (containers_.back()->contains(name)) {
            throw InputError(source_, Here(), "the key \"" + Excerpt(name) + "\" appears twice",
                             "keep one of the two");
        }
        key_ = std::move(name);
        return true;
    }

    bool parse_error(std::size_t position, const std::string& lastToken,
                     const json::exception& error) override {
        constexpr int kNumberOverflow = 406;
        const std::string where = LineAndColumn(text_, position);
        const std::string read = SingleLine(EndOf(lastToken));
        if (error.id == kNumberOverflow) {
            throw InputError(source_, path_ + NextToken() + ": " + where,
                             "the number " + read + " is beyond the range of a double",
                             "write a finite number");
        }
        if (IsBlank(text_)) {
            throw InputError(source_, where, "the input is empty",
                             "give a section in JSON (see --help)");
        }
        std::string problem = "not valid JSON: " + SingleLine(ReasonOf(error.what()));
        if (position <= text_.size()) problem += " at '" + read + "'";
        throw InputError(source_, where, problem,
                         "correct it there (JSON has no comments, no trailing commas, no NaN and "
                         "no Infinity)");
    }

private:
    std::string NextToken() const {
        if (containers_.empty()) return "";
        const json& parent = *containers_.back();
        std::string token = "/";
        token += parent.is_array() ? std::to_string(parent.size()) : PointerToken(key_);
        return token;
    }

    std::string Here() const { return path_.empty() ? "top level" : path_; }

    json* Place(json value) {
        if (containers_.empty()) return &(document_ = std::move(value));
        json& parent = *containers_.back();
        if (parent.is_array()) return &parent.emplace_back(std::move(value));
        return &(parent[key_] = std::move(value));
    }

    bool Open(json container) {
        if (containers_.size() >= kMaxDepth) {
            throw InputError(source_, Here(),
                             "nested more than " + std::to_string(kMaxDepth) + " deep",
                             "remove the surplus brackets");
        }
        const std::string token = NextToken();
        pathLengths_.push_back(path_.size());
        containers_.push_back(Place(std::move(container)));
        path_ += token;
        return true;
    }

    bool Close() {
        containers_.pop_back();
        path_.resize(pathLengths_.back());
        pathLengths_.pop_back();
        return true;
    }

    const std::string& text_;
    std::string source_;
    json document_;
    std::vector<json*> containers_;         // open ones, outermost first
    std::vector<std::size_t> pathLengths_;  // length of path_ before each of them
    std::string path_;                      // JSON pointer of the innermost
    std::string key_;                       // of the value that comes next in an object
};

}  // namespace

json ParseJson(const std::string& text, const std::string& source) {
    // The parser takes a zero byte for the end of its input.
    const std::size_t zero = text.find('\0');
    if (zero != std::string::npos) {
        throw InputError(source, LineAndColumn(text, zero + 1), "not JSON: a zero byte",
                         "remove it, or save the file as UTF-8 text");
    }
    StrictBuilder builder(text, source);
    json::sax_parse(text, &builder);
    return builder.TakeDocument();
}

std::string PointerToken(const std::string& key) {
    return WithReplaced(Excerpt(key), {{'~', "~0"}, {'/', "~1"}});
}

}  // namespace halvorn::engine
