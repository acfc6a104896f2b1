// Runs a target on every file of a folder and on fixed mutations of each, where there is no fuzzer.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "fuzz/byte_program.h"

int main(int argc, char** argv) {
    if (argc != 2) return std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]), 2;
    constexpr int kMutations = 3000;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        const std::vector<char> seed{std::istreambuf_iterator<char>(stream), {}};
        if (seed.empty()) return std::fprintf(stderr, "%s is empty\n", file.c_str()), 1;
        for (unsigned k = 0; k <= kMutations; ++k) {
            std::fprintf(stderr, "\r%s, mutation %u", file.filename().c_str(), k);
            std::vector<std::uint8_t> input(seed.begin(), seed.end());
            std::mt19937 random(k);
            for (unsigned change = 0; k > 0 && change <= random() % 4; ++change) {
                input[random() % input.size()] = static_cast<std::uint8_t>(random());
            }
            LLVMFuzzerTestOneInput(input.data(), input.size());
        }
        std::fprintf(stderr, "\n");
    }
    std::fprintf(stderr, "%zu files, %d mutations of each\n", files.size(), kMutations);
    return files.empty() ? 1 : 0;
}
