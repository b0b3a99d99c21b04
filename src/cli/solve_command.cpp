#include "cli/solve_command.h"

#include <cstdint>
#include <exception>
#include <iostream>
#include <istream>
#include <string_view>

#include "cli/json_report.h"
#include "cli/signals.h"
#include "cli/text_report.h"
#include "level/level_reader.h"

namespace kavit {

namespace {

void Complain(const std::string& sentence) {
    std::cerr << "kavit-solve: " + sentence + "\n";
}

std::string PlaceText(const TextPlace& place) {
    if (place.Line == 0) return "";
    return "line " + std::to_string(place.Line) + ", column " + std::to_string(place.Column);
}

// Answers for the user, who was asked before by --strict, and tells of what was taken as a space.
// A file that is no level at all has hundreds of such characters; the first one says enough.
class InvalidChars {
  public:
    InvalidChars(std::string level, bool strict) : level_(std::move(level)), strict_(strict) {}
    ~InvalidChars() {
        if (count_ > 1) Complain(level_ + ": " + std::to_string(count_ - 1) + " more of that kind");
    }
    InvalidChars(const InvalidChars&) = delete;
    InvalidChars& operator=(const InvalidChars&) = delete;

    InvalidCharAnswer Ask(const InvalidChar& invalid) {
        question_ = InvalidCharText(invalid.Character);
        if (strict_) return InvalidCharAnswer::Cancel;
        if (++count_ == 1) Complain(level_ + ": " + PlaceText(invalid.Place) + ": " + question_);
        return InvalidCharAnswer::Space;
    }
    // What is wrong, without what would have been done about it.
    [[nodiscard]] std::string Question() const { return question_.substr(0, question_.find(';')); }

  private:
    std::string level_;
    bool strict_;
    int count_ = 0;
    std::string question_;
};

}  // namespace

SolveCommand::SolveCommand(const Options& options)
    : options_(options),
      levels_(ListLevels(options.Levels)),
      hooks_(solver_),
      target_(options.SolTarget, levels_) {}

ExitStatus SolveCommand::Run() {
    const SignalGuard guard(hooks_.Interrupted(), hooks_.StopSea);
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
    if (!Read(source, report)) return report;

    ReportInput& solve = report.Solve;
    solve.LevelName = LevelNameOf(source);
    solve.BoardImported = source.Origin == LevelSource::Kind::StandardInput;
    solve.HideExpert = !options_.Expert;
    solve.OptLevel = options_.Solver.OptLevel;
    solve.OptSpecial = options_.Solver.OptSpecial;
    solve.HashCase = options_.Solver.HashCase;
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
    return report;
}

// False when there is nothing to solve; the report then says why.
bool SolveCommand::Read(const LevelSource& source, LevelReport& report) {
    InvalidChars invalid(ShownName(source.Name), options_.Strict);
    const AskInvalidChar ask = [&](const InvalidChar& met) { return invalid.Ask(met); };

    ReadReply reply;
    switch (source.Origin) {
        case LevelSource::Kind::NoLevel:
            reply.Code = source.EmptyFolder ? Result::NothingToOpen : Result::CantOpen;
            reply.Reason = source.Reason;
            break;
        case LevelSource::Kind::StandardInput: {
            InputBuffer buffer(hooks_.Interrupted());
            std::istream input(&buffer);
            reply = ReadLevelStream(input, report.Solve.Level, ask);
            if (hooks_.Interrupted()) reply = {Result::Stopped, false, {}, ""};
            break;
        }
        case LevelSource::Kind::File:
            reply = ReadLevelFile(source.Name, report.Solve.Level, ask);
            break;
    }
    if (reply.Loaded()) return true;

    report.Code = reply.Code;
    report.Reason = reply.Reason;
    if (reply.Cancelled) {
        // The catalogue has no words for it: the window ends the whole program here.
        report.Code = Result::CantOpen;
        report.Reason = invalid.Question();
    }
    const std::string place = PlaceText(reply.Place);
    if (!place.empty()) report.Reason += (report.Reason.empty() ? "" : ", ") + place;
    ShowResult(report, report.Code);
    return false;
}

void SolveCommand::Solve(LevelReport& report) {
    const Board& board = report.Solve.Level;
    report.Code = solver_.AnalyseBoard(board, options_.Solver);
    if (report.Code == Result::Ok) report.Code = solver_.Search(hooks_);
    if (report.Code != Result::Ok) {
        report.Solve.TimeOut = hooks_.TimeOut;
        ShowResult(report, report.Code);
        return;
    }
    Optimize(report);
    solver_.BuildSolutions();
}

void SolveCommand::Optimize(LevelReport& report) {
    Result shown = Result::Solution;
    if (options_.Solver.OptLevel >= 2) {
        const Result result = solver_.OptimizeMoves(hooks_);
        shown = result;
        if (result <= Result::Ok) shown = Result::BestSolution;
        if (result == Result::OutOfMemory) shown = Result::OutOfMemoryWithSolution;
        if (result == Result::Stopped) shown = Result::StoppedWithSolution;
        if (result > Result::Ok) report.Solve.SeaResult = result;
        if (result == Result::OutOfMemory) hooks_.StopSea = true;
    }
    report.Solve.StopSea = hooks_.StopSea;
    report.Solve.TimeOut = hooks_.TimeOut;
    ShowResult(report, Result::Solution);
    report.SolvedMessage = report.Lines.Left.value_or("");
    ShowResult(report, shown);
}

void SolveCommand::ShowResult(LevelReport& report, Result number) const {
    MessageValues values;
    ReadValues(values, solver_, hooks_);
    MessageCatalogue catalogue;
    report.Lines = catalogue.ShowMsg(number, values);
}

void SolveCommand::Publish(const LevelReport& report) {
    const std::string name = ShownName(report.Name);
    if (!report.Analysed) {
        Complain(name + ": " + report.Lines.Left.value_or("") +
                 (report.Reason.empty() ? "" : ": " + report.Reason));
    }
    if (!report.Fault.empty()) Complain(name + ": " + report.Fault);
    if (!report.SolError.empty()) Complain(name + ": " + report.SolError);

    const std::string answer = options_.Json ? JsonLine(report) : TextReport(report);
    if (!answers_.Write(answer) && !answers_.Reason().empty()) {
        Complain("standard output: " + answers_.Reason());
    }
    TakeStatus(report.Fault.empty() ? StatusOf(report.Code) : ExitStatus::Fault);
    if (!report.SolError.empty()) TakeStatus(ExitStatus::NotWritten);
}

// The first level that was not solved decides, before any file that could not be written.
void SolveCommand::TakeStatus(ExitStatus status) {
    if (status_ == ExitStatus::Solved ||
        (status_ == ExitStatus::NotWritten && status != ExitStatus::Solved)) {
        status_ = status;
    }
}

}  // namespace kavit
