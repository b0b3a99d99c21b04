#include "cli/text_report.h"

#include "level/shown_text.h"
#include "output/closing_block.h"
#include "output/number_text.h"

namespace kavit {

namespace {

std::string ResultLine(const SolveReport& solve) {
    if (!solve.Fault.empty()) return solve.Fault;
    std::string line = solve.Lines.Left.value_or("");
    if (solve.Lines.Right && !solve.Lines.Right->empty()) line += "  " + *solve.Lines.Right;
    return line;
}

// What is certain about the solutions, in words that say what they are about.
std::string ProofLines(const SolveReport& solve) {
    std::string text;
    const auto proved = [&text](const std::string& what) { text += "Proved: " + what + "\n"; };
    if (solve.FewestMovesProved) {
        proved("no solution has fewer than " + B(solve.Kept[0]->SolMoves) + " moves");
    } else if (solve.MovesLowerBound) {
        proved("a solution needs at least " + B(*solve.MovesLowerBound) + " moves");
    }
    if (solve.MovesProved) {
        proved("no solution with " + B(solve.Kept[1]->SolPushes) + " pushes has fewer than " +
               B(solve.Kept[1]->SolMoves) + " moves");
    }
    // A level that was solved has the fewest pushes without a word.
    if (solve.Code != Result::Ok && solve.PushesProved) proved("no solution has fewer pushes");
    if (solve.PushesLowerBound && !solve.PushesProved)
        proved("a solution needs at least " + B(*solve.PushesLowerBound) + " pushes");
    return text;
}

// The move strings, with a word on each where there are two.
std::string SolutionLines(const SolveReport& solve) {
    if (!solve.HasSolution()) return "";
    const std::string first = solve.Kept[0]->SolString + "\n";
    if (!solve.HasTwoSolutions()) return "\n" + first;
    return "\nWith the fewest moves:\n" + first + "With the fewest pushes:\n" +
           solve.Kept[1]->SolString + "\n";
}

}  // namespace

std::string TextReport(const LevelReport& report) {
    if (!report.Loaded) return "";
    const SolveReport& solve = report.Solve;
    std::string text = ShownText(report.Name) + "\n\n" + BoardText(solve.Request.Level, "\n") +
                       "\n" + ResultLine(solve) + "\n" + ProofLines(solve);
    if (solve.Code == Result::OutOfMemory && !report.Reason.empty()) text += report.Reason + "\n";
    if (report.Recorded) text += RecordedText(*report.Recorded, solve) + "\n";
    text += SolutionLines(solve);
    if (!solve.Refused()) text += "\n" + ClosingBlock(solve.Counters, solve.Sizes.NumPos);
    return text + "\n";
}

}  // namespace kavit
