#pragma once

#include <algorithm>
#include <cstdint>

// Decides when a search lets the window breathe.
//
// The search asks at every position, some millions of times a second, so the common answer must
// cost a decrement and a branch. The clock is read only every `stride_` questions, and the stride
// follows the speed of the search so that two reads lie about kLookMs apart. A search can slow down
// at once (a heavy position, memory that is touched for the first time); with 2 ms between two
// looks it may become ten times slower and STOP still waits less than 50 ms.
namespace kavit {

class YieldPacer {
  public:
    static constexpr double kLookMs = 2;
    static constexpr double kYieldMs = 20;

    void Start(double nowMs) {
        lastLook_ = lastYield_ = nowMs;
        stride_ = left_ = 1;
    }

    // True every `stride_` questions: read the clock and call DueAt.
    [[nodiscard]] bool TimeToLook() { return --left_ <= 0; }

    // Sets the next stride; true when events are to be processed now.
    [[nodiscard]] bool DueAt(double nowMs) {
        const double passed = std::max(nowMs - lastLook_, kLookMs / 64);
        const double wanted = static_cast<double>(stride_) * (kLookMs / passed);
        // It grows by no more than a factor of 4 at a time: one fast stretch proves little.
        stride_ = std::clamp<std::int64_t>(static_cast<std::int64_t>(wanted), 1,
                                           std::min<std::int64_t>(stride_ * 4, kMostStride));
        left_ = stride_;
        lastLook_ = nowMs;
        return nowMs - lastYield_ >= kYieldMs;
    }

    // Events were processed; what they took does not count as search.
    void Yielded(double nowMs) { lastLook_ = lastYield_ = nowMs; }

  private:
    static constexpr std::int64_t kMostStride = 1 << 20;

    double lastLook_ = 0;
    double lastYield_ = 0;
    std::int64_t stride_ = 1;
    std::int64_t left_ = 1;
};

}  // namespace kavit
