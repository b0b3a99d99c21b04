#pragma once

#include <optional>

#include "app/model/desk.h"
#include "app/model/level_control.h"
#include "app/model/settings_control.h"
#include "app/model/solution_control.h"
#include "solver/types.h"

namespace kavit {

// The menus Search, Optimizer and Hash, and the way to the hidden ones. A menu toggles the entry
// that was chosen by itself, so every command ends by showing the choices as they are.
class ChoicesControl {
  public:
    ChoicesControl(Desk& desk, SettingsControl& settings, LevelControl& levels,
                   SolutionControl& solution)
        : desk_(desk), settings_(settings), levels_(levels), solution_(solution) {}

    void SearchChosen(int index);  // 1 forward, 2 backward, 3 both
    void OptChosen(int level);
    void SpecialChosen();
    void HashChosen(int index);
    void PaletteClicked(int tool) { eggCode_ = (eggCode_ * 10 + tool) % 1000; }
    void LetterDoubleClicked();

    [[nodiscard]] SolverOptions Options() const;
    [[nodiscard]] bool HideExpert() const { return hideExpert_; }
    void Show();

  private:
    Desk& desk_;
    SettingsControl& settings_;
    LevelControl& levels_;
    SolutionControl& solution_;
    int seaType_ = 0;
    std::optional<int> hashCase_;  // none: what suits the size of the store
    bool optSpecial_ = false;
    bool hideExpert_ = true;
    int eggCode_ = 0;
};

}  // namespace kavit
