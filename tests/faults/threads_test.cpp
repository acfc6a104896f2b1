// Different sections on different threads, with the two process-wide values written meanwhile. The
// thread sanitizer sees the races; without it wrong results would still show shared state.
#include <CSectionTools.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>

namespace {

// Every operation on sections of its own. `size` tells the threads' sections apart.
std::array<double, 20> Compute(double size, double tolerance) {
    CSectionTools section;
    std::vector<double> flat = {0, 0, size, 0, 2 * size, 0};
    std::vector<double> channel = {0, 0, size, 0, size, 1, 1, 1, 1, 9, size, 9, size, 10, 0, 10};
    section.PushContour(3, flat.data(), 1);  // clears the flag of zero areas
    section.PushContour(8, channel.data(), 1);
    CSectionTools copy(section);
    copy.PushContour(3, flat.data(), 0);
    section = copy;
    CSectionTools moved(std::move(copy));
    moved.SetTol3D(tolerance);
    EXPECT_LE(moved.GetTol3D(), 1e-6);

    std::array<double, 20> v{};
    moved.GetCalculValues(0, 0, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8],
                          &v[9], &v[10], &v[11], &v[12], &v[13], &v[14], &v[15], &v[16]);
    section.ComputeWplasticValues(v[14], v[15]);
    const std::vector<std::pair<double, double>> points = {{0, 0}, {size, 0}, {size, 10}};
    std::pair<double, double> cdg;
    section.CalculContourQuelconqueTOOL(1, 1, 1, 3, 0.25, points, {0, 0.5, 0}, v[17], cdg, v[18],
                                        v[19], v[4], v[5], v[6], v[7], v[8]);
    return v;
}

TEST(Threads, DifferentSectionsDoNotDisturbEachOther) {
    constexpr int kThreads = 4, kRounds = 300;
    std::array<std::array<double, 20>, kThreads> alone;
    for (int i = 0; i < kThreads; ++i) alone[static_cast<std::size_t>(i)] = Compute(4 + i, 1e-8);
    EXPECT_NE(alone[0], alone[1]);
    std::atomic<int> waiting{kThreads}, wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            for (--waiting; waiting > 0;) std::this_thread::yield();
            for (int round = 0; round < kRounds; ++round) {
                // Tolerances up to 1e-6 do not change a result, so that any order gives the same.
                const auto v = Compute(4 + i, round % 2 == 0 ? 1e-8 : 1e-7);
                wrong += v != alone[static_cast<std::size_t>(i)];
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
    CSectionTools().SetTol3D(1e-8);
}

}  // namespace
