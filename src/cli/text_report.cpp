#include "cli/text_report.h"

#include "cli/exit_status.h"
#include "cli/level_list.h"
#include "output/closing_block.h"
#include "output/number_text.h"

namespace kavit {

namespace {

std::string ResultLine(const LevelReport& report) {
    if (!report.Fault.empty()) return report.Fault;
    std::string line = report.Lines.Left.value_or("");
    if (report.Lines.Right && !report.Lines.Right->empty()) line += "  " + *report.Lines.Right;
    return line;
}

// What level 3 claims, in words that say what it is about: solution 1 has the fewest pushes.
std::string ProofLine(const LevelReport& report) {
    if (!report.Solve.Counters.MovesProved) return "";
    const KeptSolution& kept = report.Solve.Kept[1];
    return "Proved: no solution with " + B(kept.SolPushes) + " pushes has fewer than " +
           B(kept.SolMoves) + " moves\n";
}

}  // namespace

std::string TextReport(const LevelReport& report) {
    if (!report.Analysed) return "";
    const ReportInput& solve = report.Solve;
    std::string text = ShownName(report.Name) + "\n\n" + BoardText(solve.Level, "\n") + "\n" +
                       ResultLine(report) + "\n" + ProofLine(report);
    if (report.Solved()) {
        text += "\n" + solve.Kept[0].SolString + "\n";
        if (solve.Kept[0].SolMoves != solve.Kept[1].SolMoves) {
            text += solve.Kept[1].SolString + "\n";
        }
    }
    if (StatusOf(report.Code) != ExitStatus::Refused) {
        text += "\n" + ClosingBlock(solve.Counters, solve.NumPos);
    }
    return text + "\n";
}

}  // namespace kavit
