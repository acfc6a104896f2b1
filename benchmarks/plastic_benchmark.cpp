// The plastic search of both directions by the library, by a one-pass bound and by peers. Before
// anything is measured, every method's moduli are compared with the library's.
#include <CSectionTools.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>

#include "search.h"

namespace {

using namespace halvorn::benchmarks;

CSectionTools Pushed(const Section& section) {
    CSectionTools tools;
    for (std::vector<double> contour : section.contours) {
        tools.PushContour(static_cast<int>(contour.size() / 2), contour.data(), 1);
    }
    return tools;
}

Moduli LibraryModuli(CSectionTools& tools) {
    Moduli moduli;
    tools.ComputeWplasticValues(moduli.x, moduli.y);
    return moduli;
}

// Relative difference of the worse modulus.
double Difference(const Moduli& a, const Moduli& b) {
    return std::max(std::abs(a.x - b.x) / std::abs(b.x), std::abs(a.y - b.y) / std::abs(b.y));
}

// What a method may differ by: the axes of both stop within 1e-7 of balance, and the integer peer
// keeps about seven digits of each coordinate.
constexpr double kAgreement = 1e-5;

bool AgreeWithLibrary(const std::vector<Section>& sections) {
    bool allAgree = true;
    std::vector<Method> methods = {{"one pass", MakeOnePass}};
    methods.insert(methods.end(), Peers().begin(), Peers().end());
    for (const Section& section : sections) {
        if (section.Size() > 10000) continue;  // the same shapes, finer
        CSectionTools tools = Pushed(section);
        const Moduli library = LibraryModuli(tools);
        for (const Method& method : methods) {
            const double difference =
                Difference(PlasticSearch(section, *method.make(section)), library);
            if (difference <= kAgreement) continue;
            std::fprintf(stderr, "%s, %s: differs from the library by %.3g\n", section.name.c_str(),
                         method.name.c_str(), difference);
            allAgree = false;
        }
    }
    return allAgree;
}

void RegisterSearch(const Section& section, const Method& method) {
    benchmark::RegisterBenchmark(("search|" + section.name + "|" + method.name).c_str(),
                                 [section, method](benchmark::State& state) {
                                     const std::unique_ptr<Clipper> clipper = method.make(section);
                                     for (auto _ : state)
                                         benchmark::DoNotOptimize(PlasticSearch(section, *clipper));
                                     state.counters["n"] = static_cast<double>(section.Size());
                                 })
        ->Unit(benchmark::kMicrosecond);
}

template <class Call>
void RegisterLibrary(const Section& section, const std::string& group, Call&& call) {
    benchmark::RegisterBenchmark((group + "|" + section.name + "|library").c_str(),
                                 [section, call](benchmark::State& state) {
                                     CSectionTools tools = Pushed(section);
                                     for (auto _ : state) call(tools);
                                     state.counters["n"] = static_cast<double>(section.Size());
                                 })
        ->Unit(benchmark::kMicrosecond);
}

void RegisterValues(const Section& section) {
    RegisterLibrary(section, "values", [](CSectionTools& tools) {
        double v[17];
        tools.GetCalculValues(0, 0, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8],
                              &v[9], &v[10], &v[11], &v[12], &v[13], &v[14], &v[15], &v[16]);
        benchmark::DoNotOptimize(v);
    });
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<Section> sections = PlasticSections();
    if (!AgreeWithLibrary(sections)) return 1;
    for (const Section& section : sections) {
        RegisterLibrary(section, "search", [](CSectionTools& tools) {
            benchmark::DoNotOptimize(LibraryModuli(tools));
        });
        RegisterSearch(section, {"one pass", MakeOnePass});
        for (const Method& peer : Peers()) RegisterSearch(section, peer);
    }
    for (const std::size_t n : {10000U, 100000U}) {
        const std::string size = std::to_string(n);
        RegisterValues({"wavy ring " + size, {WavyRing(n)}});
        RegisterValues({"comb " + size, {Comb(n / 8)}});
        RegisterValues({"comb turned " + size, {Comb(n / 8, true)}});
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
