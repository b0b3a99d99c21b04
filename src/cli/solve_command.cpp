#include "cli/solve_command.h"

#include <exception>

#include "cli/complain.h"
#include "cli/json_report.h"
#include "cli/read_level.h"
#include "cli/signals.h"
#include "cli/text_report.h"
#include "output/dumps.h"

namespace kavit {

SolveCommand::SolveCommand(const Options& options)
    : options_(options),
      levels_(ListLevels(options.Levels)),
      hooks_(solver_),
      target_(options.SolTarget, levels_) {}

ExitStatus SolveCommand::Run() {
    const SignalGuard guard(hooks_.Interrupted(), hooks_);
    ExitStatus wrong = ExitStatus::Solved;
    if (!ApplyOptions(wrong)) return wrong;

    for (const LevelSource& source : levels_) {
        if (hooks_.Interrupted()) {
            Complain("stopped before " + ShownName(source.Name));
            TakeStatus(ExitStatus::Stopped);
            break;
        }
        Publish(SolveLevel(source));
        if (answers_.Failed()) return ExitStatus::NotWritten;
    }
    return status_;
}

// The sizes and the target of solution files, which hold for all levels.
bool SolveCommand::ApplyOptions(ExitStatus& status) {
    const std::string wrong = target_.Wrong();
    if (!wrong.empty()) {
        Complain("--sol: " + wrong);
        status = ExitStatus::WrongUsage;
        return false;
    }
    const ApplyReply applied = solver_.ApplySizes(options_.Fields);
    if (!applied.Ok) {
        Complain(std::string(applied.Message) + " (--max-positions " +
                 std::to_string(options_.Fields.NumPos) + " --blocks " +
                 std::to_string(options_.Fields.Blocks) + ")");
        status = ExitStatus::OutOfMemory;
        return false;
    }
    return true;
}

LevelReport SolveCommand::SolveLevel(const LevelSource& source) {
    LevelReport report;
    report.Name = source.Name;
    const ReadReply read =
        ReadLevel(source, options_.Strict, hooks_.Interrupted(), report.Solve.Level);
    report.Code = read.Code;
    report.Reason = read.Reason;
    if (!read.Loaded()) {
        ShowResult(report, report.Code);
        return report;
    }

    ReportInput& solve = report.Solve;
    solve.LevelName = LevelNameOf(source);
    solve.BoardImported = source.Origin == LevelSource::Kind::StandardInput;
    solve.HideExpert = !options_.Expert;
    solve.OptLevel = static_cast<int>(options_.Solver.OptLevel);
    solve.OptSpecial = options_.Solver.OptSpecial;
    solve.HashCase = static_cast<int>(options_.Solver.HashCase.value_or(HashCase::Default));
    report.Analysed = true;

    hooks_.Start();
    try {
        Solve(report);
    } catch (const std::exception& fault) {
        report.Fault = fault.what();
    }
    hooks_.Finish();
    ReadSolver(solve, solver_);
    solve.SeaStart = hooks_.Watch().SeaStart();
    solve.LastTick = hooks_.Watch().LastTick();
    if (report.Solved() && target_.Wanted()) target_.Write(report);
    if (StatusOf(report.Code) != ExitStatus::Refused) Dump(report);
    return report;
}

// What the last search left behind, whichever way it ended.
void SolveCommand::Dump(LevelReport& report) const {
    const std::string base = SolutionBaseName(report.Solve);
    if (!options_.DumpPrefix.empty()) {
        report.DumpError = DumpLevels(options_.DumpPrefix, base, solver_);
    }
    if (options_.DumpPosition > 0 && report.DumpError.empty()) {
        constexpr int kDistanceFile = 12;
        report.DumpError = DumpPosition(options_.DumpPosition, kDistanceFile, base, solver_);
    }
}

void SolveCommand::Solve(LevelReport& report) {
    const Board& board = report.Solve.Level;
    report.Code = solver_.AnalyseBoard(board, options_.Solver);
    if (report.Code == Result::Ok) report.Code = solver_.Search(hooks_);
    if (report.Code != Result::Ok) {
        report.Solve.TimeOut = hooks_.StopSea == StopCause::Time;
        ShowResult(report, report.Code);
        return;
    }
    Optimize(report);
    solver_.BuildSolutions();
}

void SolveCommand::Optimize(LevelReport& report) {
    Result shown = Result::Solution;
    if (options_.Solver.OptLevel >= OptLevel::SomethingMore) {
        const Result result = solver_.OptimizeMoves(hooks_);
        shown = result;
        if (result <= Result::Ok) shown = Result::BestSolution;
        if (result == Result::OutOfMemory) shown = Result::OutOfMemoryWithSolution;
        if (result == Result::Stopped) shown = Result::StoppedWithSolution;
        if (result > Result::Ok) report.Solve.SeaResult = result;
        if (result == Result::OutOfMemory) hooks_.RequestStop(StopCause::Memory);
    }
    report.Solve.StopSea = hooks_.Stopping();
    report.Solve.TimeOut = hooks_.StopSea == StopCause::Time;
    ShowResult(report, Result::Solution);
    report.SolvedMessage = report.Lines.Left.value_or("");
    ShowResult(report, shown);
}

void SolveCommand::ShowResult(LevelReport& report, Result number) const {
    MessageValues values;
    ReadValues(values, solver_, hooks_);
    MessageCatalogue catalogue;
    report.LastMsg = number;
    report.Lines = catalogue.ShowMsg(number, values);
}

void SolveCommand::Publish(const LevelReport& report) {
    const std::string name = ShownName(report.Name);
    if (!report.Analysed) {
        Complain(name, report.Lines.Left.value_or("") +
                           (report.Reason.empty() ? "" : ": " + report.Reason));
    }
    if (!report.Fault.empty()) Complain(name, report.Fault);
    for (const std::string& error : {report.SolError, report.DumpError}) {
        if (!error.empty()) Complain(name, ShownName(error));
    }

    const std::string answer = options_.Json ? JsonLine(report) : TextReport(report);
    if (!answers_.Write(answer) && !answers_.Reason().empty()) {
        Complain("standard output: " + answers_.Reason());
    }
    TakeStatus(report.Fault.empty() ? StatusOf(report.Code) : ExitStatus::Fault);
    if (!report.SolError.empty() || !report.DumpError.empty()) TakeStatus(ExitStatus::NotWritten);
}

// The first level that was not solved decides, before any file that could not be written.
void SolveCommand::TakeStatus(ExitStatus status) {
    if (status_ == ExitStatus::Solved ||
        (status_ == ExitStatus::NotWritten && status != ExitStatus::Solved)) {
        status_ = status;
    }
}

}  // namespace kavit
