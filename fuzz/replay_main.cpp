// Runs a target on every file of a folder and on fixed mutations of each, where there is no fuzzer.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "fuzz/byte_program.h"

namespace {

// What is being run, for the last words of a run that fails.
std::string currentFile;
unsigned currentMutation = 0;

void NameTheInput(int) {
    std::fprintf(stderr, "by %s, mutation %u\n", currentFile.c_str(), currentMutation);
}

bool Replay(const std::filesystem::path& file, unsigned mutations) {
    currentFile = file.filename().string();
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> seed{std::istreambuf_iterator<char>(stream), {}};
    for (currentMutation = 0; currentMutation <= mutations; ++currentMutation) {
        std::vector<std::uint8_t> input(seed.begin(), seed.end());
        std::mt19937 random(currentMutation);
        const unsigned changes = currentMutation == 0 || seed.empty() ? 0 : 1 + random() % 4;
        for (unsigned change = 0; change < changes; ++change) {
            const std::size_t place = random() % input.size();
            input[place] = static_cast<std::uint8_t>(random());
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    return !seed.empty();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3 || !std::filesystem::is_directory(argv[1])) {
        return std::fprintf(stderr, "usage: %s FOLDER [MUTATIONS OF EACH FILE]\n", argv[0]), 2;
    }
    std::signal(SIGABRT, NameTheInput);
    const unsigned mutations = argc == 3 ? static_cast<unsigned>(std::atoi(argv[2])) : 3000;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
        if (Replay(file, mutations)) continue;
        return std::fprintf(stderr, "%s is empty\n", currentFile.c_str()), 1;
    }
    std::printf("%zu files, %u mutations of each\n", files.size(), mutations);
    return files.empty() ? 1 : 0;
}
