#include "app/model/solve_control.h"

#include <cmath>

#include "level/transform.h"
#include "output/number_text.h"

namespace kavit {

void SolveControl::Start() {
    OpenLevel& level = levels_.Level();
    if (level.Bad) return;
    desk_.Screen.Title = "Solving " + level.Name();
    solution_.Forget();
    // A shift leaves it where the man stood before.
    if (const auto man = FindMan(level.Board)) {
        level.Board.ManPos = static_cast<std::int16_t>(*man);
    }
    desk_.Fire(Event::SearchBegun);
    desk_.ShowBoard(level.Board);
    desk_.ShowMsg(Result::Ok);
    desk_.ClearLabels();
    desk_.Screen.Progress = 0;
    begun_ = clock_();
    ShowElapsed();

    // What the report needs is taken now: nothing of it can change while the solve runs.
    SolveRequest request;
    request.Level = level.Board;
    request.Options = choices_.Options();
    request.MaxTime = settings_.Values().Fields.MaxTime;
    request.LevelName = level.Name();
    request.BoardImported = level.Built();
    request.BoardMoved = level.Moved();
    request.HideExpert = choices_.HideExpert();
    session_.ForgetStop();
    desk_.Window().StartSearch(session_, request);
}

void SolveControl::Stop() {
    (void)session_.RequestStop();
}

void SolveControl::LeaveOutOfMemory() {
    desk_.Fire(Event::MemoryLeft);
    desk_.ClearLabels();
    desk_.Screen.Progress = 0;
    desk_.ShowMsg(Result::LevelOpened);
}

void SolveControl::WatchTick() {
    if (desk_.Now() == State::Solving) ShowElapsed();
}

void SolveControl::ShowElapsed() {
    desk_.Screen.Timer =
        B(std::llrint(clock_() - begun_)) + "/" + B(settings_.Values().Fields.MaxTime);
}

void SolveControl::SearchSaid(const MessageLines& lines) {
    desk_.PutLines(lines);
}

void SolveControl::SearchCame(const SolveProgress& progress) {
    desk_.Screen.Progress = progress.Positions;
    desk_.Screen.Debug = "Pos.Count = " + B(progress.Positions);
}

void SolveControl::SideChanged(char side) {
    if (!choices_.HideExpert()) desk_.Screen.Side = std::string(1, side);
}

void SolveControl::SearchEnded(SolveReport report) {
    ShowElapsed();
    desk_.PutLines(report.Lines);
    desk_.SetTitle(levels_.Level().Name());
    if (report.HasSolution()) {
        desk_.Fire(Event::SolutionFound);
        desk_.Screen.Progress = report.Counters.BucketCnt;
        desk_.Screen.Debug = "Pos.Count = " + B(report.Counters.BucketCnt) +
                             (report.MovesProved ? "; fewest moves proved" : "");
        const std::string fault = report.Fault;
        solution_.Take(std::move(report), levels_.Folder());
        if (!fault.empty()) desk_.Say(fault);  // what the search found holds all the same
        return;
    }
    if (!report.Fault.empty()) {  // the search can't go on, but the program can
        desk_.Fire(Event::EndedWithout);
        desk_.ShowMsg(Result::Ok);
        return desk_.Say(report.Fault);
    }
    if (report.Refused()) {
        desk_.Fire(Event::CheckFailed);
        return desk_.ClearLabels();
    }
    desk_.Screen.Progress = report.Counters.BucketCnt;
    desk_.Screen.Debug = "Pos.Count = " + B(report.Counters.BucketCnt);
    desk_.Fire(report.Code == Result::OutOfMemory ? Event::MemoryRanOut : Event::EndedWithout);
}

}  // namespace kavit
