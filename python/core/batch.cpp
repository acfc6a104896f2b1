#include "batch.h"

#include <CSectionTools.h>
#include <HalvornEngine.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <limits>
#include <thread>

#include "arguments.h"
#include "hole_places.h"
#include "section_values.h"

namespace halvorn::python {

namespace {

// Fewer vertices than these, some 100 us of work, are not worth the start of a thread.
constexpr std::size_t kVerticesPerThread = 5000;

// Returns the index of the part that holds an item; negative when no part does.
std::ptrdiff_t PartOf(const std::vector<std::int64_t>& offsets, std::int64_t item) {
    const auto after = std::upper_bound(offsets.begin(), offsets.end(), item);
    return after == offsets.end() ? -1 : after - offsets.begin() - 1;
}

// What the wholes of a table of offsets and their parts are called.
struct Words {
    const char* table;
    const char* whole;
    const char* parts;
    std::int64_t fewest;  // parts of a whole
};

// Returns what is wrong with offsets that must run from 0 to `end`.
std::string FindFault(const std::vector<std::int64_t>& offsets, std::size_t end, const Words& words,
                      const std::vector<std::int64_t>& sections) {
    const std::string table = words.table + std::string(": ");
    if (offsets.empty() || offsets.front() != 0) {
        return table + "expected 0 and then where each " + words.whole + " ends";
    }
    for (std::size_t i = 0; i + 1 < offsets.size(); ++i) {
        const std::int64_t size = offsets[i + 1] - offsets[i];
        if (size >= words.fewest && size <= std::numeric_limits<int>::max()) continue;
        const std::ptrdiff_t section = PartOf(sections, static_cast<std::int64_t>(i));
        return table + words.whole + " " + std::to_string(i) +
               (section < 0 ? "" : " (section " + std::to_string(section) + ")") + " has " +
               std::to_string(size) + " " + words.parts + ", at least " +
               std::to_string(words.fewest) + " and at most " +
               std::to_string(std::numeric_limits<int>::max()) + " are allowed";
    }
    if (offsets.back() == static_cast<std::int64_t>(end)) return "";
    return table + "the last is " + std::to_string(offsets.back()) + ", but there are " +
           std::to_string(end) + " " + words.parts;
}

// Those that belong to the plastic moduli: y of the horizontal one, x of the vertical one.
void WritePlasticAxes(const std::vector<Outline>& outlines, const SectionValues& row, double* out) {
    std::fill(out, out + 2, std::numeric_limits<double>::quiet_NaN());
    if (std::isnan(row.values[0])) return;
    std::vector<engine::Contour> contours;
    contours.reserve(outlines.size());
    for (const Outline& outline : outlines) {
        engine::Points& points = contours.emplace_back().points;
        points.reserve(outline.count);
        for (std::size_t i = 0; i < outline.count; ++i) {
            points.emplace_back(outline.coordinates[2 * i], outline.coordinates[2 * i + 1]);
        }
    }
    if (const auto axes = engine::GrossPlasticAxes(contours)) {
        out[0] = axes->y;
        out[1] = axes->x;
    }
}

void ComputeSection(Batch& batch, std::size_t section, double* values, double* losses) {
    CSectionTools tools;
    SectionRounding rounding;
    std::vector<Outline> outlines;
    const auto last = static_cast<std::size_t>(batch.sectionOffsets[section + 1]);
    for (auto i = static_cast<std::size_t>(batch.sectionOffsets[section]); i < last; ++i) {
        const std::int64_t first = batch.contourOffsets[i];
        const auto count = static_cast<std::size_t>(batch.contourOffsets[i + 1] - first);
        double* const points = batch.coordinates.data() + 2 * first;
        tools.PushContour(static_cast<int>(count), points, batch.flags[i]);
        rounding.AddContour(points, count, batch.flags[i] != 0);
        outlines.push_back({points, count, batch.flags[i] != 0});
    }
    SectionValues row = ReadingOrder(tools, batch.dx[section], batch.dy[section], rounding);
    if (FindMisplacedHole(outlines)) {
        row.values.fill(std::numeric_limits<double>::quiet_NaN());
        row.loss = {};
    }
    double* const out = values + section * batch.ColumnCount();
    std::copy(row.values.begin(), row.values.end(), out);
    if (batch.wantsPlasticAxes) WritePlasticAxes(outlines, row, out + kValueCount);
    losses[section] = row.loss.relative;
}

}  // namespace

std::string NameBatchPoint(const Batch& batch, std::size_t point) {
    std::string name = "points[" + std::to_string(point) + "]";
    const auto item = static_cast<std::int64_t>(point);
    const std::ptrdiff_t contour = PartOf(batch.contourOffsets, item);
    const std::ptrdiff_t section = contour < 0 ? -1 : PartOf(batch.sectionOffsets, contour);
    if (section < 0) return name;
    const std::int64_t first = batch.contourOffsets[static_cast<std::size_t>(contour)];
    return name + " (section " + std::to_string(section) + ", contour " + std::to_string(contour) +
           ", its point " + std::to_string(item - first) + ")";
}

std::string FindOffsetFault(const Batch& batch) {
    const std::size_t contours = std::max<std::size_t>(1, batch.contourOffsets.size()) - 1;
    if (batch.contourOffsets.empty() || batch.contourOffsets.front() != 0) {
        return "contour_offsets: expected 0 and then where each contour ends";
    }
    std::string fault = FindFault(batch.sectionOffsets, contours,
                                  {"section_offsets", "section", "contours", 1}, {});
    if (fault.empty()) {
        fault = FindFault(batch.contourOffsets, batch.coordinates.size() / 2,
                          {"contour_offsets", "contour", "points", kFewestRingPoints},
                          batch.sectionOffsets);
    }
    if (fault.empty() && batch.flags.size() != contours) {
        fault = "flags: one per contour is needed: " + std::to_string(contours) +
                " contours, found " + std::to_string(batch.flags.size()) + " flags";
    }
    return fault;
}

std::size_t ChooseThreadCount(const Batch& batch) {
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t worth = 1 + batch.coordinates.size() / 2 / kVerticesPerThread;
    return std::min({processors, worth, batch.SectionCount()});
}

bool ComputeBatch(Batch& batch, std::size_t threadCount, double* values, double* losses,
                  const std::function<bool()>& isInterrupted) {
    const std::size_t count = batch.SectionCount();
    // Some parts for each thread, so that one with large sections does not leave the others idle.
    const std::size_t part = std::max<std::size_t>(1, count / (16 * threadCount));
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> isStopped = false;
    std::vector<std::exception_ptr> failures(threadCount);
    const auto work = [&](std::size_t thread) {
        try {
            for (std::size_t first = next.fetch_add(part); first < count;
                 first = next.fetch_add(part)) {
                for (std::size_t i = first; i < std::min(first + part, count); ++i) {
                    if (thread == 0 && isInterrupted()) isStopped = true;
                    if (isStopped) return;
                    ComputeSection(batch, i, values, losses);
                }
            }
        } catch (...) {
            failures[thread] = std::current_exception();
            isStopped = true;
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(threadCount - 1);
    try {
        while (threads.size() + 1 < threadCount) threads.emplace_back(work, threads.size() + 1);
    } catch (const std::exception&) {
        // Those that there are do the work.
    }
    work(0);
    for (std::thread& thread : threads) thread.join();
    for (const std::exception_ptr& failure : failures) {
        if (failure) std::rethrow_exception(failure);
    }
    return !isStopped;
}

}  // namespace halvorn::python
