#include "app/model/choices_control.h"

#include "solver/store/store_size.h"

namespace kavit {
namespace {

constexpr int kEggCode = 231;
constexpr const char* kOptLetters[] = {"N", "S", "M", "P", "F"};

}  // namespace

void ChoicesControl::Show() {
    const int level = settings_.Values().OptLevel;
    desk_.Screen.SeaType = seaType_;
    desk_.Screen.OptLevel = level;
    desk_.Screen.HashCase =
        hashCase_.value_or(static_cast<int>(HashFor(settings_.Values().Fields.NumPos)));
    desk_.Screen.OptSpecial = optSpecial_;
    desk_.Screen.Optimizer = kOptLetters[level];
    desk_.Screen.OptimizerUnderlined = optSpecial_;
    desk_.Screen.ExpertMenus = !hideExpert_;
}

// Both, entry 3, is stored as 0.
void ChoicesControl::SearchChosen(int index) {
    if (!desk_.Refused(Need::Change)) seaType_ = index % 3;
}

void ChoicesControl::OptChosen(int level) {
    if (desk_.Refused(Need::Change) || level == settings_.Values().OptLevel ||
        desk_.Refused(Need::Levels)) {
        return;
    }
    settings_.SetOptLevel(level);
    if (level < 2) optSpecial_ = false;
    levels_.Restart();
}

void ChoicesControl::SpecialChosen() {
    if (!desk_.Refused(Need::Change) && settings_.Values().OptLevel >= 2)
        optSpecial_ = !optSpecial_;
}

// In the editor SOLVE and DONE stay as they are, and the board is not solved anyway.
void ChoicesControl::HashChosen(int index) {
    if (desk_.Refused(Need::Hash)) return;
    hashCase_ = index;
    if (!IsEditing(desk_.Now())) solution_.SetAside();
    solution_.Forget();
    desk_.Fire(Event::OptionChanged);
}

void ChoicesControl::LetterDoubleClicked() {
    if (eggCode_ != kEggCode || !hideExpert_) return;
    desk_.Say("You found an EsterEgg\r\n\r\nLook at Search, Optimizer and Hash menus");
    hideExpert_ = false;
}

SolverOptions ChoicesControl::Options() const {
    SolverOptions options{.OptLevel = static_cast<OptLevel>(settings_.Values().OptLevel),
                          .SeaType = static_cast<SeaType>(seaType_),
                          .OptSpecial = optSpecial_};
    if (hashCase_) options.HashCase = static_cast<HashCase>(*hashCase_);
    return options;
}

}  // namespace kavit
