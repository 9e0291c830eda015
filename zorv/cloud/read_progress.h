#pragma once

#include <cstdint>
#include <string>

#include "zorv/core/progress.h"

namespace zorv::detail {

/// Shows the host's progress bar from 0 to 100 while this lives, and moves it: at most 52 messages in all.
class ReadProgress {
  public:
    ReadProgress(const std::wstring& text, std::uint64_t whole) : total(whole) {
        ZoProgressBarRouter::ShowProgressBar(text.c_str(), 0, kUpper);
    }
    ~ReadProgress() { ZoProgressBarRouter::HideProgressBar(); }
    ReadProgress(const ReadProgress&) = delete;
    ReadProgress& operator=(const ReadProgress&) = delete;

    /// So much of the whole is done.
    void Reach(std::uint64_t done) {
        if (total == 0) return;
        const double part = static_cast<double>(done) / static_cast<double>(total);
        const int at = part < 1.0 ? static_cast<int>(part * kUpper) : kUpper;
        if (at < shown + kStep) return;
        shown = at;
        ZoProgressBarRouter::SetProgressBarPos(at);
    }

  private:
    static constexpr int kUpper = 100;
    static constexpr int kStep = 2;

    std::uint64_t total;
    int shown = 0;
};

}  // namespace zorv::detail
