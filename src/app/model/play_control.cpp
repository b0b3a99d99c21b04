#include "app/model/play_control.h"

#include "level/steps.h"
#include "output/atomic_file.h"
#include "solver/board_hints.h"

namespace kavit {
namespace {

// Cells that a box passes on a way, its own first.
std::vector<int> CellsOfWay(int man, int box, const std::string& way) {
    std::vector<int> cells = {box};
    for (const char letter : way) {
        man = NextCell(man, DirectionOf(letter));
        if (IsPush(letter)) cells.push_back(NextCell(man, DirectionOf(letter)));
    }
    return cells;
}

std::string Count(std::int64_t number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "es");
}

// There is no solution, whatever the memory and the time.
bool Unsolvable(const SolveReport& report) {
    return report.Code == Result::NoSolution || report.Code == Result::FrozenBlock;
}

}  // namespace

bool PlayControl::OnBoard() const {
    const State now = desk_.Now();
    return now == State::Ready || (ShowsSolution(now) && !arrowsReplay_);
}

void PlayControl::GiveArrows(bool replay) {
    if (!ShowsSolution(desk_.Now())) return;
    arrowsReplay_ = replay;
    if (!replay) {
        solution_.Pause();
        Changed();
    } else {
        solution_.ShowReplay();
    }
}

void PlayControl::Do(bool (HandPlay::*command)()) {
    if (OnBoard() && (play_.*command)()) Changed();
}

void PlayControl::Step(int direction) {
    if (OnBoard() && play_.Step(direction)) Changed();
}

void PlayControl::Changed() {
    chosen_.reset();
    pointed_.reset();
    desk_.Screen.Left = "Pushes: " + std::to_string(play_.Pushes());
    desk_.Screen.Right =
        "Moves: " + std::to_string(play_.Moves()) + (play_.Solved() ? " - solved!" : "");
}

void PlayControl::CellDown(int cell, bool rightButton) {
    if (!OnBoard()) return;
    const bool box = HoldsBox(CodeAt(play_.Position(), cell));
    const bool again = chosen_ && chosen_->Box() == cell;
    downCell_ = cell;
    if (rightButton || again || (chosen_ && !box && !chosen_->To(cell))) {
        chosen_.reset();
    } else if (box) {
        chosen_.emplace(play_.Position(), cell);
    } else if (chosen_) {
        PushTo(cell);
    } else if (play_.Walk(cell)) {
        Changed();
    }
}

// A drag from a box ends where it is to go.
void PlayControl::CellUp(int cell) {
    if (OnBoard() && chosen_ && chosen_->Box() == downCell_ && cell != downCell_) PushTo(cell);
    downCell_ = -1;
}

void PlayControl::CellHovered(int cell) {
    hovered_ = cell;
    pointed_.reset();
}

bool PlayControl::LeaveBox() {
    const bool was = chosen_.has_value();
    chosen_.reset();
    return was;
}

void PlayControl::PushTo(int cell) {
    if (play_.PushBox(chosen_->Box(), cell)) Changed();
}

void PlayControl::Copy() {
    desk_.Window().SetClipboard(play_.Played());
    desk_.Screen.Right = "The played moves are on the clipboard";
}

void PlayControl::Save() {
    const std::string name = levels_.Level().Name();
    const auto answer =
        desk_.Window().AskSaveFile(FileKind::Solution, levels_.Folder().string(),
                                   (name.empty() ? "board" : name) + "-played.sol", "played moves");
    if (!answer) return;
    const std::string text = BoardText(start_, "\n") + "\n" + play_.Played() + "\n";
    const std::string fault = WriteWholeFile(*answer, text);
    if (!fault.empty()) desk_.Say(fault);
}

void PlayControl::SolveFromHere() {
    if (!OnBoard()) return;
    if (play_.Solved()) {
        desk_.Screen.Right = "It is solved already";
        return;
    }
    asked_ = play_.Cursor();
    solve_.StartFrom(play_.Position(), SolveControl::Purpose::FromHere,
                     [this](const SolveReport& report) { Came(report); });
}

void PlayControl::Came(const SolveReport& report) {
    const std::int64_t pushes = asked_.PushesAt();
    if (report.HasSolution()) {
        const int toGo = report.Kept[1]->SolPushes;
        desk_.Screen.Right = Count(pushes, "push") + " so far, " + std::to_string(toGo) +
                             " to go, best " + std::to_string(pushes + toGo);
        return;
    }
    if (!Unsolvable(report)) return;
    desk_.Screen.Right = "There is no solution from here";
    turn_.emplace(pushes);
    AskNext();
}

void PlayControl::AskNext() {
    const auto push = turn_->Next();
    if (!push) return SayTurn();
    ReplayCursor cursor = asked_;
    cursor.SeekPush(*push);
    desk_.Screen.Right =
        "There is no solution from here; asking behind push " + std::to_string(*push);
    solve_.StartFrom(cursor.Position(), SolveControl::Purpose::Probe,
                     [this](const SolveReport& report) { Answered(report); });
}

void PlayControl::Answered(const SolveReport& report) {
    using enum TurningPoint::Solvable;
    if (!report.HasSolution() && report.Cause == StopCause::User) return SayTurn();
    const bool yes = report.HasSolution() || report.Code == Result::AlreadySolved;
    turn_->Answer(*turn_->Next(), yes ? Yes : Unsolvable(report) ? No : Unknown);
    AskNext();
}

// In moves, as the line is read, for the pushes that were asked about.
void PlayControl::SayTurn() {
    const auto place = [&](std::int64_t push) {
        ReplayCursor cursor = asked_;
        cursor.SeekPush(push);
        return "move " + std::to_string(cursor.At()) + " (push " + std::to_string(push) + ")";
    };
    std::string& line = desk_.Screen.Right;
    line = "No solution from here";
    if (turn_->LastYes() < 0 && turn_->Exact()) {
        line += ", nor from the start";
    } else if (turn_->Exact()) {
        line += "; solvable up to " + place(turn_->LastYes()) + ", not after " +
                place(turn_->FirstNo());
    } else {
        line += turn_->LastYes() < 0 ? "" : "; solvable up to " + place(turn_->LastYes());
        line += ", not after " + place(turn_->FirstNo()) + "; between them unknown";
    }
}

void PlayControl::Present() {
    const Board& level = levels_.Level().Board;
    if (level.Cell != start_.Cell) {
        start_ = level;
        play_ = HandPlay(level);
        chosen_.reset();
        pointed_.reset();
    }
    if (!ShowsSolution(desk_.Now())) arrowsReplay_ = true;
    desk_.Screen.Replay.OwnsArrows = ShowsSolution(desk_.Now()) && arrowsReplay_;
    desk_.Screen.ShowDead = showDead_;
    desk_.Screen.ShowReach = showReach_;
    if (IsEditing(desk_.Now())) return;  // the editor has marks of its own
    BoardMarks& marks = desk_.Screen.Marks = {};
    if (OnBoard()) {
        desk_.ShowBoard(play_.Position(), PictureOfMan(play_.Cursor().Facing()));
        Mark(marks);
    }
    if (showDead_) marks.Dead = HintsOf(level).DeadSquares;
}

void PlayControl::Mark(BoardMarks& marks) {
    const Board& position = play_.Position();
    marks.Stuck = HintsOf(position).StuckBoxes;
    if (chosen_) {
        marks.Selected = chosen_->Box();
        marks.Reach = chosen_->Cells();
        const auto way = hovered_ < 0 ? std::nullopt : chosen_->To(hovered_);
        if (way && !way->empty()) marks.Path = CellsOfWay(position.ManPos, chosen_->Box(), *way);
    } else if (showReach_ && hovered_ >= 0 && HoldsBox(CodeAt(position, hovered_))) {
        if (!pointed_) pointed_.emplace(position, hovered_);
        marks.Reach = pointed_->Cells();
    }
}

}  // namespace kavit
