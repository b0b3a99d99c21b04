#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/model/desk.h"
#include "app/model/settings_file.h"
#include "solver/solver.h"

namespace kavit {

// The sizes of the solver, the two switches about the solution file, and the optimizer's level:
// what Kavit.ini keeps. The panel edits the sizes; they count from APPLY on.
class SettingsControl {
  public:
    SettingsControl(Desk& desk, Solver& solver) : desk_(desk), solver_(solver) {}

    // Kavit.ini of a folder, or the defaults. Returns "" or why the program can't start.
    [[nodiscard]] std::string Load(const std::filesystem::path& folder);
    void Save();

    // The panel.
    void Configure();
    void Edited(const PanelFields& fields);
    void SizeChosen() { desk_.Window().Focus(Place::Apply); }
    void Apply();
    void Cancel();
    // SOLVE puts the panel away as it is.
    void HidePanel();
    // Commands that need the whole window take over what stands in the open panel.
    void ApplyPending();
    // Other sizes for the next solve, as by APPLY; false when they were refused.
    [[nodiscard]] bool Apply(const Sizes& sizes);
    // The most positions that the machine can hold, with the blocks in force.
    [[nodiscard]] std::int64_t MostPositions() const;

    void SetWriteSol(bool on);
    void SetNoWriteSol(bool on);

    [[nodiscard]] const Settings& Values() const { return settings_; }
    void SetOptLevel(int level) { settings_.OptLevel = level; }

  private:
    void ShowSizes();
    void ShowSwitches();
    [[nodiscard]] std::optional<Sizes> PanelSizes();
    [[nodiscard]] bool ApplyFields();
    void ShowMemory();

    Desk& desk_;
    Solver& solver_;
    std::filesystem::path file_;
    Settings settings_;
};

}  // namespace kavit
