#include "input/input_text.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include "input/input_error.h"

namespace halvorn::host {

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

std::string SingleLine(std::string_view text) {
    std::string line(text);
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < 0x20U || c == 0x7F) c = ' ';
    }
    return line;
}

}  // namespace halvorn::host
