#pragma once

#include <string>

#include "cli/level_report.h"

namespace kavit {

// The answer to one level for a reader: name, picture, result line, move strings, and what the
// search took. "" for a level that could not be read: that is no answer but an error.
[[nodiscard]] std::string TextReport(const LevelReport& report);

}  // namespace kavit
