#include "cli/text_report.h"

#include "output/closing_block.h"
#include "output/number_text.h"
#include "output/shown_text.h"

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
    if (solve.MovesProved) {
        const KeptSolution& kept = *solve.Kept[1];
        text += "Proved: no solution with " + B(kept.SolPushes) + " pushes has fewer than " +
                B(kept.SolMoves) + " moves\n";
    }
    if (solve.Code == Result::Ok || !solve.PushesLowerBound) return text;
    if (solve.PushesProved) return text + "Proved: no solution has fewer pushes\n";
    return text + "Proved: a solution needs at least " + B(*solve.PushesLowerBound) + " pushes\n";
}

}  // namespace

std::string TextReport(const LevelReport& report) {
    if (!report.Loaded) return "";
    const SolveReport& solve = report.Solve;
    std::string text = ShownText(report.Name) + "\n\n" + BoardText(solve.Request.Level, "\n") +
                       "\n" + ResultLine(solve) + "\n" + ProofLines(solve);
    if (solve.Code == Result::OutOfMemory && !report.Reason.empty()) text += report.Reason + "\n";
    if (report.Recorded) text += RecordedText(*report.Recorded, solve) + "\n";
    if (solve.HasSolution()) text += "\n" + solve.Kept[0]->SolString + "\n";
    if (solve.HasTwoSolutions()) text += solve.Kept[1]->SolString + "\n";
    if (!solve.Refused()) text += "\n" + ClosingBlock(solve.Counters, solve.Sizes.NumPos);
    return text + "\n";
}

}  // namespace kavit
