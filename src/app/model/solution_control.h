#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/model/desk.h"
#include "app/model/settings_control.h"
#include "level/replay_cursor.h"
#include "output/solve_report.h"

namespace kavit {

// The last solution, as long as it belongs to the board that is shown: its text, its file, the
// clipboard, and its replay on the board.
//
// Of two solutions one is chosen: the one that is replayed and copied. The replay has one place,
// whether the clock, ANIM, the bar or a key moves it.
class SolutionControl {
  public:
    SolutionControl(Desk& desk, const SettingsControl& settings)
        : desk_(desk), settings_(settings) {}

    // `knownAs` is the name of one that was known already, "" of what the last search found.
    void Keep(SolveReport report, const std::string& knownAs);
    // Save Solution, any time after a solve.
    void Save(const std::filesystem::path& folder);
    // A report with a solution. Its file is written or asked for, unless it starts in the middle of
    // a game; `folder` is where the level is.
    void Take(SolveReport report, const std::filesystem::path& folder, bool write);
    void Forget() { report_.reset(); }
    [[nodiscard]] bool Known() const { return report_.has_value(); }

    void Copy();
    void ShowText();
    // RETURN, and whatever else takes text and replay off the board.
    void SetAside();

    // btnANIM while it is about the replay.
    void AnimReleased(bool left);
    void AnimTick();

    // The bar and its keys.
    void Choose(int solution);
    void GoTo(std::int64_t move);
    // A letter of the text was clicked; goes behind that move when its line is a solution.
    void TextClicked(const std::string& line, std::int64_t column);
    void StepMove(bool forward) { GoTo(replay_.At() + (forward ? 1 : -1)); }
    void StepPush(bool forward);
    void PlayOrPause();
    void Pause();
    void ShowReplay();
    void SetSpeed(int index);
    void Present();

  private:
    [[nodiscard]] std::vector<std::string> Names() const;
    void Write(const std::filesystem::path& folder);
    void WriteTo(const std::filesystem::path& file);
    [[nodiscard]] std::filesystem::path AskFile(const std::filesystem::path& folder,
                                                const std::string& name);
    void Begin();
    void Load();
    void Sought();
    [[nodiscard]] const KeptSolution& Chosen() const { return *report_->Kept[chosen_]; }

    Desk& desk_;
    const SettingsControl& settings_;
    std::optional<SolveReport> report_;
    std::string knownAs_;
    ReplayCursor replay_;
    std::size_t chosen_ = 0;
    int speed_ = kNormalSpeed;
    std::filesystem::path saveFolder_;  // where the user put the last file
};

}  // namespace kavit
