#include "app/shell/shell.h"
#include "output/number_text.h"

// What the search tells while it runs. Progress comes far more often than anyone can read, so it is
// only noted; it reaches the window when events are processed.
namespace kavit {
namespace {

constexpr int kBreathsPerShow = 5;
constexpr double kMsgMs = 100;

}  // namespace

// One message for each level of a search can be thousands a second. What they say of the search is
// as true a little later; anything else is shown at once.
void Shell::ShowMsg(Result number) {
    const bool mayWait = number == Result::Thinking || number == Result::ImprovingMoves ||
                         number == Result::BeyondOptimum;
    const double nowMs = clock_.Milliseconds();
    if (mayWait && nowMs - lastMsgMs_ < kMsgMs) {
        waitingMsg_ = number;
        return;
    }
    lastMsgMs_ = nowMs;
    ShowMsg(static_cast<int>(number));
}

void Shell::ShowProgress(std::int64_t bucketCnt) {
    progress_ = bucketCnt;
}

void Shell::ShowSide(char side) {
    side_ = side;
}

void Shell::Yield() {
    if (pacer_.TimeToLook()) BreatheAt(clock_.Milliseconds());
}

void Shell::BreatheAt(double nowMs) {
    if (!pacer_.DueAt(nowMs)) return;
    // Drawing costs more than looking for events, and nobody reads more than ten numbers a second.
    if (++breaths_ % kBreathsPerShow == 0) FlushProgress();
    view_.ProcessEvents();
    pacer_.Yielded(clock_.Milliseconds());
}

void Shell::FlushProgress() {
    if (waitingMsg_) PutMsg(static_cast<int>(*waitingMsg_));
    if (progress_ != shownProgress_) {
        shownProgress_ = progress_;
        view_.SetProgress(static_cast<int>(progress_));
        view_.SetText(Control::lblDebug, Tr("Pos.Count = ") + B(progress_));
    }
    if (side_ != shownSide_) {
        shownSide_ = side_;
        if (!hideExpert_) view_.SetText(Control::lblSeaTimer, std::string(1, side_));
    }
}

void Shell::WatchTick() {
    if (!solving_) return;
    view_.SetText(Control::lblTimer, watch_.Tick(clock_.SecondsOfDay(), *this));
}

}  // namespace kavit
