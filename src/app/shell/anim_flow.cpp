#include "app/shell/pictures.h"
#include "app/shell/shell.h"

// The replay of the solution and the button that starts, stops and repeats it.
namespace kavit {

void Shell::AnimMouseUp(bool left) {
    if (solving_) return;  // the solution is not written yet
    if (animation_.Caption() == AnimCaption::Done) return FinishEditing();
    const AnimOrders orders =
        animation_.MouseUp(left ? kLeftButton : kLeftButton + 1, board_,
                           report_.Kept[0].value_or(KeptSolution{}), seaPhase_);
    if (orders.RedrawBoard) ShowBoard();
    Obey(orders);
}

void Shell::AnimTick() {
    // A message box of a tick lets further ticks through: one is enough.
    if (inAnimTick_) return;
    inAnimTick_ = true;
    Obey(animation_.Tick());
    inAnimTick_ = false;
}

void Shell::Obey(const AnimOrders& orders) {
    for (const CellPaint& paint : orders.Repaint) view_.ShowCell(paint.Cell, paint.What);
    ShowAnim();
    if (!orders.RightLine.empty()) view_.SetText(Control::txtRight, Tr(orders.RightLine.c_str()));
    if (orders.ShowCounts) ShowMsg(6);
    if (!orders.Warning.empty()) Say(Tr(orders.Warning.c_str()));
}

}  // namespace kavit
