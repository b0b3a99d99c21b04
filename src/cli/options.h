#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "solver/solver.h"

namespace kavit {

// What the command line asks for.
struct Options {
    std::vector<std::string> Levels;  // files, folders, "-"
    Sizes Fields;
    SolverOptions Solver;
    std::string SolTarget;  // file or folder of solution files; "" for none
    bool Expert = false;    // full report, suffixed names
    bool Json = false;
    std::string DumpPrefix;         // of the files that show the levels of the search; "" for none
    std::int64_t DumpPosition = 0;  // the stored position to show; 0 for none
    bool Strict = false;            // an invalid character ends the read
};

// What to do: solve by the options, or print a text and end.
struct CommandLine {
    std::optional<Options> Command;
    std::string Text;  // help or version for standard output, or what is wrong for standard error
    bool Wrong = false;
};

[[nodiscard]] CommandLine ReadCommandLine(int argc, const char* const* argv);

}  // namespace kavit
