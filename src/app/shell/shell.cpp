#include "app/shell/shell.h"

#include "app/shell/pictures.h"

namespace kavit {

Shell::Shell(ShellView& view, const ShellClock& clock, std::string program,
             std::filesystem::path folder)
    : view_(view),
      clock_(clock),
      program_(std::move(program)),
      startFolder_(std::move(folder)),
      levels_(startFolder_) {}

bool Shell::FormLoad() {
    HashClicked(0);
    SetTitle("");
    Reset();
    SeaClicked(3);
    if (!LoadSettings()) return false;
    for (const Control button : {Control::btnSOLVE, Control::btnANIM, Control::btnCLEAR}) {
        view_.SetEnabled(button, false);
    }
    // The expert menus: only the reveal below the optimizer's letter shows them.
    for (const Control menu : {Control::mnuExample, Control::mnuSearch, Control::mnuHasher,
                               Control::mnuOpt0, Control::mnuOpt3, Control::mnuOptSpec}) {
        view_.SetVisible(menu, false);
    }
    for (const Control part :
         {Control::frmSizes, Control::frmCommands, Control::rtxtImport, Control::txtNow,
          Control::txtIni, Control::OptMovPus0, Control::OptMovPus1}) {
        view_.SetVisible(part, false);
    }
    view_.SetText(Control::lblSeaTimer, "");
    ShowTools();
    ShowBoard();
    return true;
}

void Shell::Reset() {
    solving_ = false;
    StopAnimation();
    ShowMsg(77);
    seaResult_ = Result::Ok;
    levelName_.clear();
    ForgetSolution();
}

void Shell::ForgetSolution() {
    haveSolution_ = false;
    seaPhase_ = 0;
}

// Guards. They come first in every handler, so they hold for a menu, a shortcut, a drop and the
// command line alike.
bool Shell::Refused(Guard guard) {
    if (RefusedWhileSolving()) return true;
    if (animation_.AnimRunning()) {
        Say(Tr("Stop Animation first"));
        return true;
    }
    if (guard == Guard::Edit && importVisible_) {
        Say(Tr("You are seeing TEXT"));
        return true;
    }
    if (guard == Guard::Levels && editing_) {
        Say(Tr("You are editing"));
        return true;
    }
    return false;
}

bool Shell::RefusedWhileSolving() {
    if (solving_) Say(Tr("Solver is running"));
    return solving_;
}

bool Shell::ChangeRefused() {
    if (solving_) Say(Tr("Can't change; Solver is running"));
    return solving_;
}

void Shell::Say(const std::string& text) {
    if (solving_) {
        view_.Notice(text);
    } else {
        view_.Message(text);
    }
}

void Shell::PutMsg(int number) {
    waitingMsg_.reset();
    MessageValues values = ReadValues(solver_, StopSea);
    values.AnimMoves = animation_.AnimMoves();
    values.AnimPushes = animation_.AnimPushes();
    if (number == static_cast<int>(Result::AnimProgress)) {
        // The replay shows the solution that it was given, whatever the solver did since.
        values.SolMoves[0] = report_.Kept[0].value_or(KeptSolution{}).SolMoves;
        values.SolPushes[0] = report_.Kept[0].value_or(KeptSolution{}).SolPushes;
    }
    const MessageLines lines = messages_.ShowMsg(number, values);
    if (lines.Left) view_.SetText(Control::txtLeft, *lines.Left);
    if (lines.Right) view_.SetText(Control::txtRight, *lines.Right);
}

void Shell::ShowMsg(int number) {
    PutMsg(number);
    // Only a solve takes input while it is at work. A key that was typed ahead must not start the
    // next command in the middle of this one.
    if (solving_) {
        view_.ProcessEvents();
    } else {
        view_.Repaint();
    }
}

void Shell::ShowBoard() {
    for (int cell = 0; cell < kCells; ++cell) {
        view_.ShowCell(cell, PictureOf(board_.Cell[static_cast<std::size_t>(cell)]));
    }
}

void Shell::SetTitle(const std::string& rest) {
    view_.SetTitle(rest.empty() ? program_ : program_ + " " + rest);
}

void Shell::SetSolve(SolveState state) {
    solveState_ = state;
    switch (state) {
        case SolveState::Solve:
            view_.SetText(Control::btnSOLVE, Tr("SOLVE"));
            break;
        case SolveState::Stop:
            view_.SetText(Control::btnSOLVE, Tr("STOP"));
            break;
        case SolveState::Text:
            view_.SetText(Control::btnSOLVE, Tr("TEXT"));
            break;
        case SolveState::Return:
            view_.SetText(Control::btnSOLVE, Tr("RETURN"));
            break;
    }
}

void Shell::SetAnim(AnimCaption caption, bool enabled) {
    animation_.SetCaption(caption);
    ShowAnim();
    view_.SetEnabled(Control::btnANIM, enabled);
}

void Shell::ShowAnim() {
    view_.SetText(Control::btnANIM, Tr(CaptionText(animation_.Caption()).data()));
    view_.SetEnabled(Control::TimerAnim, animation_.AnimRunning());
}

void Shell::StopAnimation() {
    if (animation_.AnimRunning()) animation_.SetCaption(AnimCaption::Anim);
    ShowAnim();
}

void Shell::SetImportVisible(bool visible) {
    importVisible_ = visible;
    view_.SetVisible(Control::rtxtImport, visible);
}

void Shell::ExitClicked() {
    if (!RefusedWhileSolving()) view_.Quit();
}

// Escape leaves the innermost thing that is going on.
void Shell::EscapePressed() {
    if (solving_) {
        RequestStop(StopCause::User);
    } else if (animation_.AnimRunning()) {
        AnimMouseUp(true);
    } else if (configOpen_) {
        CancelClicked();
    } else if (editing_) {
        UndoAll();
    } else if (importVisible_) {
        SetImportVisible(false);  // what was typed comes back with the next Import
        importMode_ = importing_ = false;
        Settle();
    }
}

}  // namespace kavit
