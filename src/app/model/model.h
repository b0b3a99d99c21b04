#pragma once

#include <filesystem>
#include <string>

#include "app/model/album_control.h"
#include "app/model/aside_control.h"
#include "app/model/choices_control.h"
#include "app/model/desk.h"
#include "app/model/editor_control.h"
#include "app/model/import_control.h"
#include "app/model/level_control.h"
#include "app/model/play_control.h"
#include "app/model/settings_control.h"
#include "app/model/solution_control.h"
#include "app/model/solve_control.h"
#include "solver/solver.h"

namespace kavit {

// The window without its toolkit: the controllers, each of which owns its data, and the commands
// that belong to more than one of them. Everything here runs on the window's thread.
class Model {
  public:
    // `folder` is where the program was started.
    Model(View& view, const std::string& program, const std::filesystem::path& folder,
          SecondsClock clock);

    // Start-up: "" or why the program can't start.
    [[nodiscard]] std::string Load();
    // Carries out a command and shows what it left.
    template <typename Command>
    void Run(Command command) {
        command(*this);
        Choices.Show();
        Present();
        desk_.Show();
    }

    void SolveClicked();
    void AnimReleased(bool left);
    void EscapePressed();
    void PaletteClicked(int tool);
    void ShowHelp(int topic);
    // Keys and presses that go to the editor, to the replay or to hand play, whichever is there.
    void ArrowPressed(int direction, bool control);
    void EndPressed(bool last);
    void SpacePressed();
    void Undo();
    void Redo();
    void CellDown(int cell, bool rightButton);
    void CellMove(int cell);
    void CellUp(int cell);
    // The level as it is, neither solved nor played.
    void Restart();

  private:
    void Present();

    Desk desk_;
    std::filesystem::path folder_;
    kavit::Solver solver_;

  public:
    SettingsControl Settings{desk_, solver_};
    SolutionControl Solution{desk_, Settings};
    LevelControl Levels;
    EditorControl Editor{desk_, Settings, Levels, Solution};
    ImportControl Import{desk_, Levels, Editor};
    ChoicesControl Choices{desk_, Settings, Levels, Solution};
    SolveControl Solve;
    AlbumControl Album{desk_, Levels, Solution, Solve};
    PlayControl Play{desk_, Levels, Solution, Solve};
    AsideControl Aside{desk_, Levels};
};

}  // namespace kavit
