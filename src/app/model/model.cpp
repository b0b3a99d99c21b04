#include "app/model/model.h"

namespace kavit {

Model::Model(View& view, const std::string& program, const std::filesystem::path& folder,
             SecondsClock clock)
    : desk_(view, program),
      folder_(folder),
      Levels(desk_, Settings, Solution, folder),
      Solve(desk_, Settings, Levels, Solution, Choices, solver_, std::move(clock)) {
    Solve.OnEnded = [this](const SolveReport& report) { Album.Ended(report); };
}

std::string Model::Load() {
    desk_.SetTitle("");
    desk_.ShowMsg(Result::StartUp);
    if (std::string fault = Settings.Load(folder_); !fault.empty()) return fault;
    Choices.Show();
    desk_.Show();
    return "";
}

void Model::SolveClicked() {
    Settings.HidePanel();
    switch (desk_.Now()) {
        case State::EditingBlank:
            Editor.Done();
            return Solve.Start();
        case State::Ready:
        case State::Blank:
            return Solve.Start();
        case State::Solving:
            return Solve.Stop();
        case State::Checking:  // that is over at once
            return;
        case State::OutOfMemory:
            return Solve.LeaveOutOfMemory();
        case State::ShowingText:
            return Solution.SetAside();
        case State::Importing:
            return Import.Return();
        case State::Solved:
        case State::Replaying:
        case State::Halting:
        case State::Paused:
        case State::Replayed:
            return Solution.ShowText();
        case State::Empty:
        case State::Editing:
            return;
    }
}

void Model::AnimReleased(bool left) {
    if (IsEditing(desk_.Now())) return Editor.Done();
    Solution.AnimReleased(left);
}

// Escape leaves the innermost thing that is going on.
void Model::EscapePressed() {
    if (IsSolving(desk_.Now())) {
        Solve.Stop();
    } else if (IsPlaying(desk_.Now())) {
        Solution.Pause();
    } else if (desk_.Screen.PanelVisible) {
        Settings.Cancel();
    } else if (Play.LeaveBox()) {
        return;
    } else if (IsEditing(desk_.Now())) {
        Editor.UndoAll();
    } else if (HasBox(desk_.Now())) {
        Solution.SetAside();  // what was typed comes back with the next Import
        desk_.Window().Focus(Place::NextButton);
    } else if (desk_.Now() == State::OutOfMemory) {
        Solve.LeaveOutOfMemory();
    }
}

// The palette chooses a tool of the editor; without the editor it counts.
void Model::PaletteClicked(int tool) {
    if (IsEditing(desk_.Now())) {
        Editor.SelectTool(tool);
    } else {
        Choices.PaletteClicked(tool);
    }
}

void Model::ShowHelp(int topic) {
    desk_.Window().ShowHelp(topic, Levels.Level().Name());
}

void Model::Restart() {
    Play.Restart();
    Levels.Restart();
}

// Left and right step the replay by pushes, with Ctrl by moves.
void Model::ArrowPressed(int direction, bool control) {
    if (!desk_.Screen.Replay.OwnsArrows) return Play.Step(direction);
    if (direction % 2 != 0) return;
    if (control) return Solution.StepMove(direction == 2);
    Solution.StepPush(direction == 2);
}

void Model::EndPressed(bool last) {
    const ReplayLook& replay = desk_.Screen.Replay;
    if (replay.OwnsArrows) Solution.GoTo(last ? replay.Moves : 0);
}

void Model::SpacePressed() {
    if (desk_.Screen.Replay.OwnsArrows) Solution.PlayOrPause();
}

void Model::Undo() {
    if (IsEditing(desk_.Now())) return Editor.Undo();
    Play.Undo();
}

void Model::Redo() {
    if (IsEditing(desk_.Now())) return Editor.Redo();
    Play.Redo();
}

void Model::CellDown(int cell, bool rightButton) {
    if (IsEditing(desk_.Now())) return Editor.CellDown(cell, rightButton);
    Play.CellDown(cell, rightButton);
}

void Model::CellMove(int cell) {
    if (IsEditing(desk_.Now())) return Editor.CellMove(cell);
    Play.CellHovered(cell);
}

void Model::CellUp(int cell) {
    if (IsEditing(desk_.Now())) return Editor.CellUp();
    Play.CellUp(cell);
}

void Model::Present() {
    Solution.Present();
    Play.Present();
    Editor.Present();
    Aside.Present();
}

}  // namespace kavit
