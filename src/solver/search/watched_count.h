#pragma once

#include <atomic>
#include <cstdint>

namespace kavit {

// A number that one thread moves on and others may sleep for. The standard atomic's notify is a
// system call whether anybody sleeps or not, and a search moves these numbers on some ten thousand
// times a second; this one asks first. Sleepers announce themselves before they look at the number
// for the last time, and who moves it on looks for sleepers after that, both in the one order of
// all such steps: either the sleeper sees the new number, or he is seen.
class WatchedCount {
  public:
    explicit WatchedCount(std::int32_t count) : count_(count) {}

    // What was written before a Set of this number is seen.
    [[nodiscard]] std::int32_t Get() const { return count_.load(std::memory_order_acquire); }
    void Set(std::int32_t count) {
        count_.store(count, std::memory_order_seq_cst);
        if (sleepers_.load(std::memory_order_seq_cst) != 0) count_.notify_all();
    }
    // Returns when the number is not `count`.
    void SleepWhile(std::int32_t count) {
        sleepers_.fetch_add(1, std::memory_order_seq_cst);
        count_.wait(count, std::memory_order_seq_cst);
        sleepers_.fetch_sub(1, std::memory_order_relaxed);
    }

  private:
    std::atomic<std::int32_t> count_;
    std::atomic<std::int32_t> sleepers_{0};
};

}  // namespace kavit
