#include "cli/solve_command.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "cli/complain.h"
#include "cli/json_report.h"
#include "cli/read_level.h"
#include "cli/signals.h"
#include "cli/text_report.h"
#include "level/refusal.h"
#include "level/shown_text.h"
#include "output/dumps.h"
#include "output/solution_file.h"
#include "solver/store/machine.h"

namespace kavit {

namespace {

int BoxesOf(const Board& board) {
    return static_cast<int>(std::count_if(board.Cell.begin(), board.Cell.end(), [](auto cell) {
        return cell == kBox || cell == kBoxOnGoal;
    }));
}

// The reason in a few words that levels with the same trouble share.
std::string KindText(const Refusal& refusal) {
    switch (refusal.Kind) {
        case RefusalKind::NothingButFloor:
            return "nothing but floor";
        case RefusalKind::NoMan:
            return "no man";
        case RefusalKind::SeveralMen:
            return "several men";
        case RefusalKind::NoBox:
            return "no box";
        case RefusalKind::BoxesAndGoals:
            return "boxes and goals differ";
        case RefusalKind::SolvedAlready:
            return "solved already";
        case RefusalKind::WallOpen:
            return "wall open";
        case RefusalKind::OutOfReach:
            return "out of reach";
    }
    return "";
}

}  // namespace

SolveCommand::SolveCommand(const Options& options)
    : options_(options),
      files_(ListFiles(options.Levels)),
      available_(AvailableMemory("")),
      session_(solver_),
      feed_(files_, options.Chosen, session_),
      target_(options.SolTarget, files_),
      book_(options.Output) {}

ExitStatus SolveCommand::Run() {
    const SignalGuard guard(session_);
    if (options_.List) {
        if (!List()) return ExitStatus::NotWritten;
        return status_;
    }
    if (!CheckOptions()) return status_;
    const auto start = std::chrono::steady_clock::now();
    RunLevels();
    if (answers_.Failed()) return ExitStatus::NotWritten;
    Finish(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    return status_;
}

// What holds for all levels: the targets of files, and the store that most levels take.
bool SolveCommand::CheckOptions() {
    const std::string wrongTarget = target_.Wrong();
    if (!wrongTarget.empty()) Complain("--sol: " + wrongTarget);
    const std::string wrongBook = book_.Wanted() ? book_.Wrong(files_) : "";
    if (!wrongBook.empty()) Complain("--output: " + wrongBook);
    if (!wrongTarget.empty() || !wrongBook.empty()) {
        status_ = ExitStatus::WrongUsage;
        return false;
    }
    const StoreChoice choice = ChooseStore(options_, 0, available_);
    if (!choice.Wrong.empty()) {
        Complain(choice.Wrong);
        status_ = choice.Usage ? ExitStatus::WrongUsage : ExitStatus::OutOfMemory;
        return false;
    }
    if (options_.Memory || options_.MaxPositions) Complain(StoreText(choice, available_));
    return true;
}

void SolveCommand::RunLevels() {
    bool any = false;
    bool stopped = false;
    while (auto entry = feed_.Next()) {
        if (session_.StopRequested() && entry->Code != Result::Stopped) {
            if (!std::exchange(stopped, true)) Complain("stopped before " + ShownText(entry->Name));
            TakeStatus(ExitStatus::Stopped);
            if (!book_.Wanted()) return;
            book_.Add(*entry, ReadEntry(*entry));  // the file keeps all levels
            continue;
        }
        any = true;
        LevelReport report = ReadEntry(*entry);
        if (report.Loaded) Solve(*entry, report);
        Publish(report);
        if (answers_.Failed()) return;
        summary_.Add(report);
        if (book_.Wanted()) book_.Add(*entry, report);
    }
    if (!any && !stopped) {
        Complain("no level has such a number or title");
        TakeStatus(ExitStatus::NotReadable);
    }
}

// Names that this program takes again, one a line. False when they could not be written.
bool SolveCommand::List() {
    while (auto entry = feed_.Next()) {
        // A file in which no level was recognized is not necessarily one without a level.
        const bool unknown = entry->Level.BoardText.empty();
        const LevelReport report = unknown ? ReadEntry(*entry) : LevelReport{};
        if (report.Solve.Code == Result::CantOpen || report.Solve.Code == Result::NothingToOpen) {
            Complain(ShownText(entry->Name), report.Reason);
            TakeStatus(ExitStatus::NotReadable);
            continue;
        }
        if (!answers_.Write(ShownText(entry->Name) + "\n")) return false;
    }
    return true;
}

LevelReport SolveCommand::ReadEntry(const LevelEntry& entry) {
    LevelReport report;
    report.Name = entry.Name;
    report.File = entry.File;
    report.Index = std::max<std::int64_t>(entry.Level.Index, 1);
    report.Title = entry.Level.Title;
    report.OneOfMany = entry.FromCollection && !entry.OnlyOne;
    const ReadReply read = ReadLevel(entry, options_.Strict, report.Solve.Request.Level);
    report.Loaded = read.Loaded();
    report.Reason = read.Reason;
    if (!report.Loaded) {
        report.Solve.Code = report.Solve.LastMsg = read.Code;
        report.Solve.Lines = MessageCatalogue().ShowMsg(read.Code, {});
    } else if (!entry.Level.Solution.empty()) {
        report.Recorded = PlayRecorded(report.Solve.Request.Level, entry.Level.Solution);
    }
    return report;
}

void SolveCommand::Solve(const LevelEntry& entry, LevelReport& report) {
    SolveRequest request = report.Solve.Request;
    request.Options = options_.Solver;
    request.MaxTime = options_.MaxTime;
    request.LevelName = entry.LevelName;
    request.BoardImported = entry.FromStandardInput;
    request.HideExpert = !options_.Expert;
    report.Solve.Request = request;
    if (!MakeStore(report)) return;
    report.Solve = session_.Run(request, progress_);
    progress_.Clear();
    Explain(report);
    if (report.Solve.HasSolution() && target_.Wanted()) target_.Write(report);
    if (!report.Solve.Refused()) Dump(report);
}

// The store for the boxes of this level; false when there is no room for it.
bool SolveCommand::MakeStore(LevelReport& report) {
    const StoreChoice choice =
        ChooseStore(options_, BoxesOf(report.Solve.Request.Level), available_);
    std::string wrong = choice.Wrong;
    if (wrong.empty() && !solver_.ApplySizes(choice.Fields).Ok)
        wrong = "Insuficient Memory: " + StoreText(choice, available_);
    if (wrong.empty()) return true;
    report.Reason = wrong;
    report.Solve.Code = report.Solve.LastMsg = Result::OutOfMemory;
    report.Solve.Lines = MessageCatalogue().ShowMsg(Result::OutOfMemory, {});
    return false;
}

// In words, why a level got no solution.
void SolveCommand::Explain(LevelReport& report) const {
    const SolveReport& solve = report.Solve;
    const Board& board = solve.Request.Level;
    report.Kind = solve.Lines.Left.value_or("");
    if (solve.Code == Result::TooManyBoxes) {
        report.Reason = std::to_string(BoxesOf(board)) + " boxes";
        report.Kind = "too many boxes";
    } else if (solve.Code == Result::FrozenBlock) {
        report.Kind = "frozen box";
    } else if (solve.Code == Result::OutOfMemory) {
        report.Reason =
            FullStoreText(ChooseStore(options_, BoxesOf(board), available_), available_);
    } else {
        const std::vector<Refusal> refusals = WhyRefused(board);
        for (const Refusal& refusal : refusals)
            report.Reason += (report.Reason.empty() ? "" : "; ") + refusal.Text;
        if (!refusals.empty()) report.Kind = KindText(refusals.front());
    }
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
    } else if (!report.Reason.empty()) {
        Complain(name, report.Reason);
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

void SolveCommand::Finish(double seconds) {
    for (const std::string& line : summary_.Lines(seconds)) Complain(line);
    if (!book_.Wanted()) return;
    const std::string wrong = book_.Write(files_.size() == 1 ? feed_.Header() : CollectionHeader{});
    if (wrong.empty()) return;
    Complain("--output: " + ShownText(wrong));
    TakeStatus(ExitStatus::NotWritten);
}

// The first level that was not solved decides, before any file that could not be written.
void SolveCommand::TakeStatus(ExitStatus status) {
    if (status_ == ExitStatus::Solved ||
        (status_ == ExitStatus::NotWritten && status != ExitStatus::Solved)) {
        status_ = status;
    }
}

}  // namespace kavit
