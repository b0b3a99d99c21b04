#include "cli/solve_command.h"

#include "cli/complain.h"
#include "cli/json_report.h"
#include "cli/read_level.h"
#include "cli/signals.h"
#include "cli/text_report.h"
#include "output/dumps.h"
#include "output/shown_text.h"
#include "output/solution_file.h"

namespace kavit {

SolveCommand::SolveCommand(const Options& options)
    : options_(options),
      levels_(ListLevels(options.Levels)),
      session_(solver_),
      target_(options.SolTarget, levels_) {}

ExitStatus SolveCommand::Run() {
    const SignalGuard guard(session_);
    ExitStatus wrong = ExitStatus::Solved;
    if (!ApplyOptions(wrong)) return wrong;

    for (const LevelSource& source : levels_) {
        if (session_.StopRequested()) {
            Complain("stopped before " + ShownText(source.Name));
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
    SolveRequest request;
    const ReadReply read = ReadLevel(source, options_.Strict, session_, request.Level);
    report.Loaded = read.Loaded();
    if (!report.Loaded) {
        report.Reason = read.Reason;
        report.Solve.Code = report.Solve.LastMsg = read.Code;
        report.Solve.Lines = MessageCatalogue().ShowMsg(read.Code, {});
        return report;
    }

    request.Options = options_.Solver;
    request.MaxTime = options_.Fields.MaxTime;
    request.LevelName = LevelNameOf(source);
    request.BoardImported = source.Origin == LevelSource::Kind::StandardInput;
    request.HideExpert = !options_.Expert;
    report.Solve = session_.Run(request, progress_);
    progress_.Clear();
    if (report.Solve.HasSolution() && target_.Wanted()) target_.Write(report);
    if (!report.Solve.Refused()) Dump(report);
    return report;
}

// What the last search left behind, whichever way it ended.
void SolveCommand::Dump(LevelReport& report) const {
    const std::string base = SolutionBaseName(report.Solve.Request);
    if (!options_.DumpPrefix.empty()) {
        report.DumpError = DumpLevels(options_.DumpPrefix, base, solver_);
    }
    if (options_.DumpPosition > 0 && report.DumpError.empty()) {
        constexpr int kDistanceFile = 12;
        report.DumpError = DumpPosition(options_.DumpPosition, kDistanceFile, base, solver_);
    }
}

void SolveCommand::Publish(const LevelReport& report) {
    const std::string name = ShownText(report.Name);
    const SolveReport& solve = report.Solve;
    if (!report.Loaded) {
        Complain(name, solve.Lines.Left.value_or("") +
                           (report.Reason.empty() ? "" : ": " + report.Reason));
    }
    if (!solve.Fault.empty()) Complain(name, solve.Fault);
    for (const std::string& error : {report.SolError, report.DumpError}) {
        if (!error.empty()) Complain(name, ShownText(error));
    }

    const std::string answer = options_.Json ? JsonLine(report) : TextReport(report);
    if (!answers_.Write(answer) && !answers_.Reason().empty()) {
        Complain("standard output: " + answers_.Reason());
    }
    TakeStatus(solve.Fault.empty() ? StatusOf(solve.Code) : ExitStatus::Fault);
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
