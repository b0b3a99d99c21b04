#include "app/shell/shell.h"

// The menus Search, Optimizer, Hash and Help, and the way to the hidden ones. A menu toggles the
// entry that was chosen by itself, so every handler ends by showing the choices as they are.
namespace kavit {
namespace {

constexpr int kEggCode = 231;
constexpr const char* kOptLetters[] = {"N", "S", "M", "P"};

}  // namespace

void Shell::ShowChoices() {
    for (int i = 0; i < 3; ++i) {
        view_.SetChecked(At(Control::mnuSea1, i), (seaType_ + 2) % 3 == i);
        view_.SetChecked(At(Control::mnuHash0, i), hashCase_ == i);
    }
    for (int i = 0; i < 4; ++i) view_.SetChecked(At(Control::mnuOpt0, i), settings_.OptLevel == i);
    view_.SetChecked(Control::mnuOptSpec, optSpecial_);
    view_.SetText(Control::lblOpt, kOptLetters[settings_.OptLevel]);
    view_.SetUnderlined(Control::lblOpt, optSpecial_);
}

// 1 forward, 2 backward; 3, both, is stored as 0.
void Shell::SeaClicked(int index) {
    if (!ChangeRefused()) seaType_ = index % 3;
    ShowChoices();
}

void Shell::OptClicked(int index) {
    if (!ChangeRefused() && index != settings_.OptLevel && !Refused(Guard::Levels)) {
        settings_.OptLevel = index;
        if (index < 2) optSpecial_ = false;
        ShowChoices();
        LevelCommand(1);
    }
    ShowChoices();
}

void Shell::OptSpecClicked() {
    if (!ChangeRefused() && settings_.OptLevel >= 2) optSpecial_ = !optSpecial_;
    ShowChoices();
}

void Shell::HashClicked(int index) {
    if (!Refused(Guard::Hash)) {
        hashCase_ = index;
        ForgetSolution();
        // In the editor SOLVE and DONE stay as they are, and the board is not solved anyway.
        if (!editing_) {
            SetImportVisible(false);
            view_.SetEnabled(Control::btnSOLVE, true);
            SetSolve(SolveState::Solve);
            SetAnim(AnimCaption::Anim, false);
            ShowBoard();  // a replay may have left its last move there
        }
    }
    ShowChoices();
}

void Shell::OptLabelDoubleClicked() {
    if (eggCode_ != kEggCode || !hideExpert_) return;
    Say(Tr("You found an EsterEgg\r\n\r\nLook at Search, Optimizer and Hash menus"));
    for (const Control menu : {Control::mnuSearch, Control::mnuOptSpec, Control::mnuHasher,
                               Control::mnuOpt0, Control::mnuOpt3}) {
        view_.SetVisible(menu, true);
    }
    hideExpert_ = false;
}

void Shell::HelpClicked(int topic) {
    view_.ShowHelp(topic, levelName_);
}

}  // namespace kavit
