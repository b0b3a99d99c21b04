#pragma once

#include <string>

#include "output/solve_report.h"

namespace kavit {

// All that is known of one level at the end, for the terminal as for JSON.
struct LevelReport {
    std::string Name;     // as given
    bool Loaded = false;  // the board was read; if not, Solve holds only Code, LastMsg and Lines
    std::string Reason;   // why it could not be read, with the place
    SolveReport Solve;
    std::string SolFile;   // the solution file that was written
    std::string SolError;  // why it could not be
    std::string DumpError;
};

}  // namespace kavit
