// Sections of one contour each through the library alone, for benchmarks/python_benchmark:
// halvorn-benchmark-batch FILE VERTICES reads x0, y0, x1, ... of all sections as doubles and prints
// the sum of the areas and the least seconds that a pass over them took, of ten.
#include <CSectionTools.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

namespace {

std::vector<double> ReadDoubles(const char* path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::vector<double> numbers(static_cast<std::size_t>(file.tellg()) / sizeof(double));
    file.seekg(0);
    file.read(static_cast<char*>(static_cast<void*>(numbers.data())),
              static_cast<std::streamsize>(numbers.size() * sizeof(double)));
    return numbers;
}

double AreaOf(double* coordinates, int vertices) {
    CSectionTools tools;
    tools.PushContour(vertices, coordinates, 1);
    double value[17];
    tools.GetCalculValues(0.0, 0.0, &value[0], &value[1], &value[2], &value[3], &value[4],
                          &value[5], &value[6], &value[7], &value[8], &value[9], &value[10],
                          &value[11], &value[12], &value[13], &value[14], &value[15], &value[16]);
    return value[3];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::vector<double> coordinates = ReadDoubles(argv[1]);
    const auto vertices = static_cast<std::size_t>(std::atoi(argv[2]));
    using Clock = std::chrono::steady_clock;
    double area = 0.0;
    double least = HUGE_VAL;
    for (int pass = 0; pass < 10; ++pass) {
        area = 0.0;
        const auto start = Clock::now();
        for (std::size_t i = 0; i + 2 * vertices <= coordinates.size(); i += 2 * vertices) {
            area += AreaOf(coordinates.data() + i, static_cast<int>(vertices));
        }
        least = std::min(least, std::chrono::duration<double>(Clock::now() - start).count());
    }
    std::printf("%.17g %.9g\n", area, least);
}
