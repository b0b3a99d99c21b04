#include "app/model/album_control.h"

#include "level/refusal.h"
#include "output/atomic_file.h"
#include "output/number_text.h"
#include "output/recorded_solution.h"

namespace kavit {
namespace {

constexpr const char* kNoList = "There is no list of levels";

std::string MarkOf(const RecordedSolution& solution) {
    return B(solution.Pushes) + "/" + B(solution.Moves);
}

}  // namespace

void AlbumControl::Toggle() {
    if (levels_.List().Entries.empty()) return levels_.ListFolder();
    ShowList(!desk_.Screen.ListVisible);
}

void AlbumControl::Choose(int row) {
    levels_.ChooseEntry(row);
}

void AlbumControl::NextUnsolved() {
    const Album& album = levels_.List();
    const auto row = album.NextUnsolved(album.Chosen + 1);
    if (!row) return desk_.Say("No more unsolved levels");
    levels_.ChooseEntry(*row);
}

void AlbumControl::SolveAll() {
    if (desk_.Screen.SolvingAll) return solve_.Stop();
    if (desk_.Refused(Need::Levels)) return;
    if (levels_.List().Entries.empty()) return desk_.Say(kNoList);
    desk_.Screen.SolvingAll = true;
    SolveNext(0);
}

// Every level keeps its mark when it cannot be solved, so that the run comes to an end.
void AlbumControl::SolveNext(int from) {
    const auto row = levels_.List().NextUnsolved(from);
    if (!row || !levels_.ChooseEntry(*row)) return EndSolvingAll();
    solve_.Start();
}

void AlbumControl::EndSolvingAll() {
    desk_.Screen.SolvingAll = false;
}

void AlbumControl::Ended(const SolveReport& report) {
    Album& album = levels_.List();
    if (album.Chosen < 0 || levels_.Level().Built()) return EndSolvingAll();
    AlbumEntry& entry = album.Entries[static_cast<std::size_t>(album.Chosen)];
    const bool stopped = report.Cause == StopCause::User;
    if (!stopped || report.HasSolution()) Mark(entry, report);
    levels_.ShowList();
    if (!desk_.Screen.SolvingAll) return;
    if (stopped) return EndSolvingAll();
    SolveNext(album.Chosen + 1);
}

// The better of two solutions stays: fewer pushes, then fewer moves.
void AlbumControl::Mark(AlbumEntry& entry, const SolveReport& report) {
    if (!report.HasSolution()) {
        const auto reasons = WhyRefused(report.Request.Level);
        entry.Mark = report.Code == Result::NoSolution    ? "no solution"
                     : report.Code == Result::OutOfMemory ? "out of memory"
                     : report.Code == Result::Stopped     ? "time out"
                     : reasons.empty()                    ? report.Lines.Left.value_or("refused")
                                                          : reasons.front().Text;
        return;
    }
    const Board& board = report.Request.Level;
    const RecordedSolution known = PlayRecorded(board, entry.Level.Solution);
    if (!entry.Level.Solution.empty())
        desk_.Screen.Details = RecordedText(known, report, entry.SolutionName());
    const KeptSolution& found = *report.Kept[1];
    const bool better = !known.Solves || found.SolPushes < known.Pushes ||
                        (found.SolPushes == known.Pushes && found.SolMoves < known.Moves);
    if (better) {
        entry.Level.Solution = found.SolString;
        entry.Found = true;
    }
    entry.Mark = MarkOf(PlayRecorded(board, entry.Level.Solution));
}

void AlbumControl::ShowKnown() {
    if (desk_.Refused(Need::Levels)) return;
    const Album& album = levels_.List();
    if (album.Chosen < 0 || levels_.Level().Built()) return desk_.Say("Nothing to Show");
    const AlbumEntry& entry = album.Entries[static_cast<std::size_t>(album.Chosen)];
    if (entry.Level.Solution.empty()) return desk_.Say("Nothing to Show");
    const Board& board = levels_.Level().Board;
    const RecordedSolution known = PlayRecorded(board, entry.Level.Solution);
    if (!known.Solves) {
        return desk_.Say("The recorded solution does not solve the level: " + known.Wrong);
    }
    levels_.Restart();
    SolveReport report;
    report.Request.Level = board;
    report.Request.LevelName = levels_.Level().Name();
    report.Kept[0] = KeptSolution{.SolMoves = static_cast<int>(known.Moves),
                                  .SolPushes = static_cast<int>(known.Pushes),
                                  .SolString = entry.Level.Solution};
    report.Kept[1] = report.Kept[0];
    desk_.Fire(Event::SolutionFound);
    const std::string name = entry.SolutionName();
    desk_.PutLines({name + ": " + S(known.Moves) + "/" + B(known.Pushes), ""});
    solution_.Keep(std::move(report), name);
}

void AlbumControl::Save() {
    const Album& album = levels_.List();
    if (album.Entries.empty()) return desk_.Say(kNoList);
    std::string name = album.Path.empty() ? "pasted" : album.Path.filename().string();
    if (album.Folder() || album.Path.empty()) name += ".sok";
    const auto answer =
        desk_.Window().AskSaveFile(FileKind::Collection, levels_.Folder().string(), name, "");
    if (!answer) return;
    const std::string fault = WriteWholeFile(*answer, CollectionText(album.ToCollection()));
    if (!fault.empty()) return desk_.Say(fault);
    desk_.Screen.Right = "The levels are written with their solutions";
}

}  // namespace kavit
