#include "output/animation.h"

#include "output/number_text.h"

namespace kavit {

namespace {

// Where the replay starts. ManPos may name the square before a shift, so the board is asked first.
int ManCell(const Board& board) {
    for (int cell = 0; cell < kCells; ++cell) {
        const std::uint8_t code = board.Cell[static_cast<std::size_t>(cell)];
        if (code == kMan || code == kManOnGoal) return cell;
    }
    return board.ManPos;
}

bool OnBoard(int cell) {
    return cell >= 0 && cell < kCells;
}

}  // namespace

std::string_view CaptionText(AnimCaption caption) {
    switch (caption) {
        case AnimCaption::Anim:
            return "ANIM";
        case AnimCaption::Stop:
            return "STOP";
        case AnimCaption::Cont:
            return "CONT< >REPEAT";
        case AnimCaption::Repeat:
            return "REPEAT";
        case AnimCaption::Done:
            return "DONE";
    }
    return "";
}

AnimOrders Animation::MouseUp(int button, const Board& board, const KeptSolution& solution,
                              int seaPhase) {
    switch (caption_) {
        case AnimCaption::Cont:
            if (button != kLeftButton) return Begin(board, solution, seaPhase);
            if (moves_ < solMoves_) Run(true, AnimCaption::Stop);
            return {};
        case AnimCaption::Anim:
        case AnimCaption::Repeat:
            return Begin(board, solution, seaPhase);
        case AnimCaption::Stop:
            stop_ = true;
            return {};  // the next tick ends the run
        case AnimCaption::Done:
            return {};
    }
    return {};
}

AnimOrders Animation::Begin(const Board& board, const KeptSolution& solution, int seaPhase) {
    AnimOrders orders;
    caption_ = AnimCaption::Anim;
    if (seaPhase == 0 || solution.SolMoves == 0) {
        orders.RightLine = "Nothing to Show";
        return orders;
    }
    board_ = board;
    solution_ = solution.SolString;
    solMoves_ = solution.SolMoves;
    moves_ = 0;
    pushes_ = 0;
    manPos_ = ManCell(board);
    Run(true, AnimCaption::Stop);
    orders.RedrawBoard = true;
    return orders;
}

AnimOrders Animation::Tick() {
    if (!running_) return {};  // the last event of a timer that was just switched off
    if (stop_) {
        Run(false, AnimCaption::Cont);
        return {};
    }
    return AnimStep(++moves_);
}

AnimOrders Animation::AnimStep(int k) {
    AnimOrders orders;
    const auto at = static_cast<std::size_t>(k - 1);
    const char letter = at < solution_.size() ? solution_[at] : '\0';
    const bool push = kPushLetters.find(letter) != std::string_view::npos;
    const std::size_t d = (push ? kPushLetters : kWalkLetters).find(letter);
    if (d == std::string_view::npos) {
        orders.Warning = "Solution disaster";
        return orders;
    }
    const int man = manPos_ + Dir[d];
    const int box = man + Dir[d];
    if (!OnBoard(manPos_) || !OnBoard(man) || (push && !OnBoard(box))) {
        orders.Warning = "Move" + S(k) + " of the solution (\"" + letter + "\" from cell" +
                         S(manPos_) + ") leaves the board; the replay ends here";
        Run(false, AnimCaption::Repeat);
        return orders;
    }

    orders.Repaint.push_back({manPos_, IsGoal(manPos_) ? Picture::Goal : Picture::Floor});
    const auto facing = static_cast<Picture>(static_cast<std::size_t>(Picture::ManLeft) + d);
    orders.Repaint.push_back({man, IsGoal(man) ? Picture::ManOnGoal : facing});
    if (push) {
        orders.Repaint.push_back({box, IsGoal(box) ? Picture::BoxOnGoal : Picture::Box});
        ++pushes_;
    }
    manPos_ = man;
    if (k == solMoves_) Run(false, AnimCaption::Repeat);
    orders.ShowCounts = true;
    return orders;
}

void Animation::SetCaption(AnimCaption caption) {
    Run(false, caption);
}

void Animation::Run(bool on, AnimCaption caption) {
    running_ = on;
    stop_ = false;
    caption_ = caption;
}

bool Animation::IsGoal(int cell) const {
    const std::uint8_t code = board_.Cell[static_cast<std::size_t>(cell)];
    return code == kGoal || code == kBoxOnGoal || code == kManOnGoal;
}

}  // namespace kavit
