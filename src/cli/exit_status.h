#pragma once

#include "level/result.h"
#include "output/solve_report.h"

namespace kavit {

// What kavit-solve says to the program that started it. Of several levels the first one that was
// not solved decides; that something could not be written counts only when all were solved.
enum class ExitStatus {
    Solved = 0,
    WrongUsage = 1,
    Refused = 2,
    NoSolution = 3,
    OutOfMemory = 4,
    NotReadable = 5,
    Fault = 6,
    NotWritten = 7,
    Stopped = 8,
};

// The status of a level by the number that ended its solve.
[[nodiscard]] inline ExitStatus StatusOf(Result result) {
    switch (static_cast<int>(result)) {
        case 0:
            return ExitStatus::Solved;
        case 1:
        case 2:
        case 9:
        case 14:
            return ExitStatus::Refused;
        case 3:
            return ExitStatus::NoSolution;
        case 4:
            return ExitStatus::OutOfMemory;
        case 8:
            return ExitStatus::Stopped;
        default:
            return ExitStatus::NotReadable;
    }
}

// The status of one solve in a word, as JSON and the summary say it.
[[nodiscard]] inline const char* StatusWord(const SolveReport& solve) {
    if (!solve.Fault.empty()) return "fault";
    switch (StatusOf(solve.Code)) {
        case ExitStatus::Solved:
            return "solved";
        case ExitStatus::Refused:
            return "refused";
        case ExitStatus::NoSolution:
            return "no-solution";
        case ExitStatus::OutOfMemory:
            return "out-of-memory";
        case ExitStatus::Stopped:
            return "stopped";
        default:
            return "not-readable";
    }
}

}  // namespace kavit
