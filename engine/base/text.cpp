#include "base/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "HalvornEngine.h"
#include "base/utf8.h"

namespace halvorn::engine {

namespace {

// A section of a million points takes 40 to 80 MiB; an endless device is stopped here.
constexpr std::size_t kMaxBytes = std::size_t{256} << 20U;

struct CloseFile {
    void operator()(std::FILE* file) const {
        if (file != stdin) std::fclose(file);
    }
};

using File = std::unique_ptr<std::FILE, CloseFile>;

File OpenInput(const std::string& path) {
    if (path == "-") return File(stdin);
    if (path.empty()) {
        throw InputError("command line", "the name of the section file is empty", "give its path");
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw InputError(path, "is a directory", "name a section file in it");
    }
    errno = 0;
    File file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        throw InputError(path, std::string("cannot be opened: ") + std::strerror(errno),
                         "check the path and its permissions");
    }
    return file;
}

// Whether a character breaks a line, steers a terminal or turns the direction of writing: C0, C1
// (also as a lone byte, which is what a terminal of eight bits sees), U+061C, U+200E, U+200F,
// U+2028 to U+202E, U+2066 to U+2069.
bool IsControl(std::string_view character) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(character[i]); };
    switch (character.size()) {
        case 1:
            return byte(0) < 0x20U || (byte(0) >= 0x7FU && byte(0) < 0xA0U);
        case 2:
            return (byte(0) == 0xC2U && byte(1) < 0xA0U) || character == "\u061C";
        case 3:
            return (character >= "\u2028" && character <= "\u202E") ||
                   (character >= "\u2066" && character <= "\u2069") || character == "\u200E" ||
                   character == "\u200F";
        default:
            return false;
    }
}

}  // namespace

std::string SourceName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

std::string ReadInput(const std::string& path) {
    const File file = OpenInput(path);
    std::string text;
    std::array<char, 65536> block{};
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), file.get())) {
        text.append(block.data(), size);
        if (text.size() > kMaxBytes) {
            throw InputError(SourceName(path), "is larger than 256 MiB",
                             "give a section file with fewer points");
        }
    }
    if (std::ferror(file.get()) != 0) {
        throw InputError(SourceName(path), "cannot be read to its end", "check the file");
    }
    return text;
}

std::string WithLineFeeds(std::string_view text) {
    text = WithoutByteOrderMark(text);
    std::string lines;
    lines.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r') {
            lines += text[i];
        } else if (i + 1 == text.size() || text[i + 1] != '\n') {
            lines += '\n';
        }
    }
    return lines;
}

std::string_view TrimmedView(std::string_view text, std::string_view what) {
    const std::size_t first = text.find_first_not_of(what);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(what) - first + 1);
}

std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string Trimmed(std::string_view text, std::string_view what) {
    return std::string(TrimmedView(text, what));
}

std::string InSmallLetters(std::string_view text) {
    std::string letters(text);
    for (char& c : letters) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return letters;
}

std::string InCapitals(std::string_view text) {
    std::string letters(text);
    for (char& c : letters) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return letters;
}

std::string WithReplaced(std::string_view text,
                         std::initializer_list<std::pair<char, std::string_view>> replacements) {
    std::string replaced;
    for (const char c : text) {
        const auto* const found =
            std::find_if(replacements.begin(), replacements.end(),
                         [c](const auto& replacement) { return replacement.first == c; });
        replaced += found == replacements.end() ? std::string_view(&c, 1) : found->second;
    }
    return replaced;
}

std::string SingleLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = SequenceLength(text.substr(i));
        if (IsControl(text.substr(i, length))) {
            line += ' ';
        } else {
            line += text.substr(i, length);
        }
        i += length;
    }
    return line;
}

std::string Excerpt(std::string_view text, std::size_t mostLength) {
    std::string line = SingleLine(text);
    if (line.size() <= mostLength) return line;
    std::size_t end = mostLength;
    while (end > 0 && IsContinuation(line[end])) --end;
    return line.substr(0, end) + "...";
}

}  // namespace halvorn::engine
