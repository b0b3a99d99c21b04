#pragma once

#include <chrono>

#include "app/shell/shell_view.h"
#include "output/watch.h"

namespace kavit {

class SystemClock final : public ShellClock {
  public:
    [[nodiscard]] double SecondsOfDay() const override { return day_.Now(); }
    [[nodiscard]] double Milliseconds() const override {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration<double, std::milli>(now).count();
    }

  private:
    DayClock day_;
};

}  // namespace kavit
