#include "tool/batch.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "read/open_section.h"
#include "tool/progress_bar.h"

namespace halvorn::tool {

using namespace engine;

namespace {

// What became of one section.
struct Outcome {
    bool isDone = false;
    bool isLeftOut = false;
    std::string text;  // the line of the table, or the reason why there is none
};

CsvOptions CsvOptionsOf(const BatchOptions& options) {
    return {options.section.values.wantsClassValues};
}

Outcome EvaluateOne(const std::string& argument, const BatchOptions& options) {
    try {
        // Layers are those of the drawings in the batch; nothing else has any.
        SectionOptions section = options.section;
        if (!IsDrawing(argument)) section.input.layers.clear();
        const SectionReport report = EvaluateInput(argument, section);
        return {true, false,
                options.format == BatchFormat::Csv ? report.CsvRow(CsvOptionsOf(options))
                                                   : report.JsonLine()};
    } catch (const std::exception& error) {
        return {true, true, error.what()};
    }
}

// Sections in work: workers take the next one, the owner waits for each in turn.
class Queue {
public:
    Queue(const std::vector<BatchEntry>& entries, const BatchOptions& options)
        : entries_(entries), options_(options), outcomes_(entries.size()) {
        const std::size_t wanted = options.threads > 0
                                       ? options.threads
                                       : std::max(1U, std::thread::hardware_concurrency());
        for (std::size_t i = 0; i < std::min(wanted, entries.size()); ++i) {
            workers_.emplace_back([this](const std::stop_token& stop) { Work(stop); });
        }
    }

    // Waits for section `i`, calling `tick` several times a second; its outcome is given away.
    Outcome Take(std::size_t i, const std::function<void(std::size_t finished)>& tick) {
        std::unique_lock lock(mutex_);
        while (!changed_.wait_for(lock, std::chrono::milliseconds(100),
                                  [&] { return outcomes_[i].isDone; })) {
            tick(finished_);
        }
        tick(finished_);
        return std::move(outcomes_[i]);
    }

private:
    void Work(const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            const std::size_t i = next_++;
            if (i >= entries_.size()) return;
            Outcome outcome = EvaluateOne(entries_[i].argument, options_);
            const std::lock_guard lock(mutex_);
            outcomes_[i] = std::move(outcome);
            ++finished_;
            changed_.notify_one();
        }
    }

    const std::vector<BatchEntry>& entries_;
    const BatchOptions& options_;
    std::vector<Outcome> outcomes_;
    std::size_t finished_ = 0;
    std::mutex mutex_;  // of the two above
    std::condition_variable changed_;
    std::atomic<std::size_t> next_ = 0;
    std::vector<std::jthread> workers_;  // last, so that they end before what they use
};

}  // namespace

SectionReport EvaluateInput(const std::string& argument, const SectionOptions& options) {
    return Section::Open(argument, options.input).Evaluate(options.values);
}

std::size_t RunBatch(const std::vector<BatchEntry>& entries, const BatchOptions& options,
                     const std::function<void(const std::string& line)>& write,
                     const std::function<void(const std::string& message)>& complain) {
    ProgressBar bar(options.showsProgress);
    Queue queue(entries, options);
    if (options.format == BatchFormat::Csv) write(CsvHeader(CsvOptionsOf(options)));
    std::size_t leftOut = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Outcome outcome =
            queue.Take(i, [&](std::size_t finished) { bar.Show(finished, entries.size()); });
        if (!outcome.isLeftOut) {
            write(outcome.text);
            continue;
        }
        bar.Clear();
        const std::string& place = entries[i].place;
        complain(place.empty() ? outcome.text : place + ": " + outcome.text);
        ++leftOut;
    }
    return leftOut;
}

}  // namespace halvorn::tool
