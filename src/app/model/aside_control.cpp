#include "app/model/aside_control.h"

#include <utility>

namespace kavit {
namespace {

constexpr Sizes kSmall = {200000, 30, 3};  // some MB, and three seconds

std::string AnswerOf(const SolveReport& report) {
    if (report.HasSolution()) {
        return "Solution: " + std::to_string(report.Kept[1]->SolMoves) + "/" +
               std::to_string(report.Kept[1]->SolPushes);
    }
    switch (report.Code) {
        case Result::NoSolution:
            return "no solution";
        case Result::FrozenBlock:
            return "a box is stuck";
        case Result::AlreadySolved:
            return "solved already";
        case Result::OutOfMemory:
        case Result::Stopped:
            return "too hard to solve beside the drawing";
        default:
            return "";  // what is wrong with the board is said elsewhere
    }
}

}  // namespace

void AsideControl::Turn() {
    on_ = !on_;
}

void AsideControl::Rested() {
    if (!Wanted() || asked_ == levels_.Level().Board) return;
    rested_ = running_;
    if (running_) {
        (void)session_.RequestStop();
        return;
    }
    asked_ = levels_.Level().Board;
    answer_ = "...";
    if (!solver_.ApplySizes(kSmall).Ok) return;
    SolveRequest request;
    request.Level = *asked_;
    request.MaxTime = kSmall.MaxTime;
    request.Options.Threads = 1;
    session_.ForgetStop();
    running_ = true;
    desk_.Window().StartAside(session_, request);
}

void AsideControl::Ended(const SolveReport& report) {
    running_ = false;
    answer_ = AnswerOf(report);
    if (!std::exchange(rested_, false)) return;
    asked_.reset();  // it was stopped for another drawing: no answer to keep
    Rested();
}

void AsideControl::Present() {
    const bool fits = asked_ && asked_->Cell == levels_.Level().Board.Cell;
    desk_.Screen.AsideOn = on_;
    desk_.Screen.Aside = Wanted() && fits ? answer_ : "";
}

}  // namespace kavit
