#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "cli/level_report.h"

namespace kavit {

// What became of many levels, in two lines at the end: how many by status (refused ones by reason,
// too), the time, and the slowest five.
class RunSummary {
  public:
    void Add(const LevelReport& report);
    // Lines without an end, none for less than two levels.
    [[nodiscard]] std::vector<std::string> Lines(double seconds) const;

  private:
    std::int64_t levels_ = 0;
    std::map<std::string, std::int64_t> byStatus_;
    std::map<std::string, std::int64_t> refused_;  // by reason
    std::vector<std::pair<double, std::string>> slowest_;
};

}  // namespace kavit
