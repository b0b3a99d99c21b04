#pragma once

#include <string>

#include "cli/level_report.h"

namespace kavit {

// One object on one line, the line end included. What is not known is null, never a made-up number;
// bytes of a name that are no UTF-8 are replaced.
[[nodiscard]] std::string JsonLine(const LevelReport& report);

}  // namespace kavit
