#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/model/desk.h"
#include "app/model/settings_control.h"
#include "level/replay_cursor.h"
#include "output/solve_report.h"

namespace kavit {

// The last solution, as long as it belongs to the board that is shown: its text, its file, the
// clipboard, and its replay on the board.
class SolutionControl {
  public:
    SolutionControl(Desk& desk, const SettingsControl& settings)
        : desk_(desk), settings_(settings) {}

    // A report with a solution; its file is written or asked for. `folder` is where the level is.
    void Take(SolveReport report, const std::filesystem::path& folder);
    // One that was known already.
    void Show(SolveReport report) { report_ = std::move(report); }
    // Save Solution, any time after a solve.
    void Save(const std::filesystem::path& folder);
    void Forget() { report_.reset(); }
    [[nodiscard]] bool Known() const { return report_.has_value(); }

    void Copy();
    void ShowText();
    // RETURN, and whatever else takes text and replay off the board.
    void SetAside();

    // btnANIM while it is about the replay.
    void AnimReleased(bool left);
    void AnimTick();

  private:
    void Write(const std::filesystem::path& folder);
    void WriteTo(const std::filesystem::path& file);
    [[nodiscard]] std::filesystem::path AskFile(const std::filesystem::path& folder,
                                                const std::string& name);
    void Begin();
    void ShowReplay();

    Desk& desk_;
    const SettingsControl& settings_;
    std::optional<SolveReport> report_;
    ReplayCursor replay_;
    std::filesystem::path saveFolder_;  // where the user put the last file
};

}  // namespace kavit
