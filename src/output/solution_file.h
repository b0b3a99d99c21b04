#pragma once

#include <array>
#include <string>
#include <string_view>

#include "output/solve_report.h"

// What a solve leaves behind: the solution file with its report, the text view, and the name that
// the file gets. All of it is made from the SolveReport of a solved level, without a disk or a
// window; the caller asks for names, writes the file (WriteWholeFile), fills the clipboard with
// solution 0, and shows message 150 when the solve was not stopped.
namespace kavit {

// The optimizer level's part of a file name.
inline constexpr std::array<std::string_view, 5> kOptSuffix = {"_none", "_some", "_more", "_plus",
                                                               "_fewest"};

// The name of the solution file without ".sol"; "" for a board without a name.
[[nodiscard]] std::string SolutionBaseName(const SolveRequest& request);

struct SolutionName {
    enum class Kind { None, Write, Ask };
    Kind Choice = Kind::None;
    std::string Name;  // to write, or to suggest; without a folder

    bool operator==(const SolutionName&) const = default;
};

// Whether and where the solution file goes. When no file is written in the end, because the answer
// is None or the user gave no name, the board no longer counts as imported. `noWriteSol` and
// `writeSol` are the two check boxes: write no file, and write it without asking.
[[nodiscard]] SolutionName ChooseSolutionName(const SolveRequest& request, bool noWriteSol,
                                              bool writeSol);

// The whole file, lines ended by CR LF. There must be a solution, here and for the view.
[[nodiscard]] std::string SolutionFileText(const SolveReport& report);

// What TEXT shows.
[[nodiscard]] std::string SolutionViewText(const SolveReport& report);

// Seconds rounded to 2 decimals, with a point in every locale and no idle zeros: "12.3". A solve
// that seems to end before it starts has passed midnight.
[[nodiscard]] std::string SecondsText(double seaStart, double lastTick);

}  // namespace kavit
