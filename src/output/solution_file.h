#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "level/board.h"
#include "level/result.h"
#include "solver/solver.h"

// What a solve leaves behind: the solution file with its report, the text view, and the name that
// the file gets. All of it is made from one ReportInput, without a disk or a window; the caller
// asks for names, writes the file (WriteWholeFile), fills the clipboard with solution 0, and shows
// message 150 when the solve was not stopped.
namespace kavit {

// The optimizer level's part of a file name.
inline constexpr std::array<std::string_view, 4> kOptSuffix = {"_none", "_some", "_more", "_plus"};

struct ReportInput {
    Board Level;
    std::string LevelName;       // "" for a board that was drawn or imported
    bool BoardImported = false;  // drawn or imported
    bool BoardMoved = false;     // shifted, mirrored or turned since it was read

    bool HideExpert = true;  // plain names and a short report
    int OptLevel = 1;
    bool OptSpecial = false;
    int HashCase = 0;
    bool chkNoWriteSol = false;  // write no file
    bool chkWriteSol = false;    // write without asking

    std::array<KeptSolution, 2> Kept;
    SearchCounters Counters;
    std::int64_t NumPos = 0;
    double SeaStart = 0;  // of the watch; seconds since midnight
    double LastTick = 0;

    bool StopSea = false;  // also when the optimizer ran out of memory
    bool TimeOut = false;
    Result SeaResult = Result::Ok;  // of the last phase: Stopped or OutOfMemory after a stop
};

// Takes both kept solutions, the counters and NumPos from a solver.
void ReadSolver(ReportInput& report, const Solver& solver);

// The name of the solution file without ".sol"; "" for a board without a name.
[[nodiscard]] std::string SolutionBaseName(const ReportInput& report);

struct SolutionName {
    enum class Kind { None, Write, Ask };
    Kind Choice = Kind::None;
    std::string Name;  // to write, or to suggest; without a folder

    bool operator==(const SolutionName&) const = default;
};

// Whether and where the solution file goes. When no file is written in the end, because the answer
// is None or the user gave no name, the board no longer counts as imported.
[[nodiscard]] SolutionName ChooseSolutionName(const ReportInput& report);

// The whole file, lines ended by CR LF.
[[nodiscard]] std::string SolutionFileText(const ReportInput& report);

// What TEXT shows.
[[nodiscard]] std::string SolutionViewText(const ReportInput& report);

// Seconds rounded to 2 decimals, with a point in every locale and no idle zeros: "12.3". A solve
// that seems to end before it starts has passed midnight.
[[nodiscard]] std::string SecondsText(double seaStart, double lastTick);

}  // namespace kavit
