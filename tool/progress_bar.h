/// @file progress_bar.h
/// How far a long run is.
#ifndef HALVORN_TOOL_PROGRESS_BAR_H
#define HALVORN_TOOL_PROGRESS_BAR_H

#include <cstddef>
#include <cstdio>
#include <string>

namespace halvorn::tool {

/// One line on standard error, written over and over; nothing where nobody watches.
class ProgressBar {
public:
    explicit ProgressBar(bool isShown) : isShown_(isShown) {}
    ~ProgressBar() { Clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// @param finished  of `total`, which is above 0
    void Show(std::size_t finished, std::size_t total) {
        if (!isShown_ || finished == shown_) return;
        constexpr std::size_t kWidth = 40;
        const std::string done(kWidth * finished / total, '#');
        std::fprintf(stderr, "\r[%-*s] %zu of %zu", static_cast<int>(kWidth), done.c_str(),
                     finished, total);
        std::fflush(stderr);
        shown_ = finished;
    }

    /// Before a message, which then has the line for itself.
    void Clear() {
        if (shown_ > 0) std::fputs("\r\x1b[K", stderr);
        shown_ = 0;
    }

private:
    bool isShown_;
    std::size_t shown_ = 0;
};

}  // namespace halvorn::tool

#endif
