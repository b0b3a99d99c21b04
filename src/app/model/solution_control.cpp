#include "app/model/solution_control.h"

#include "output/atomic_file.h"
#include "output/solution_file.h"

namespace kavit {

// The file comes last of what can fail: the text view and the clipboard have the solution by then.
void SolutionControl::Take(SolveReport report, const std::filesystem::path& folder) {
    report_ = std::move(report);
    desk_.Window().SetClipboard(report_->Kept[0]->SolString);
    Write(folder);
    if (report_ && !report_->EndedEarly()) desk_.ShowMsg(Result::SolutionInClipboard);
}

void SolutionControl::Write(const std::filesystem::path& folder) {
    const Settings& switches = settings_.Values();
    const SolutionName name =
        ChooseSolutionName(report_->Request, switches.NoWriteSol, switches.WriteSol);
    if (name.Choice == SolutionName::Kind::None || desk_.Screen.SolvingAll) return;
    const bool ask = name.Choice == SolutionName::Kind::Ask;
    WriteTo(ask ? AskFile(folder, name.Name) : folder / name.Name);
}

void SolutionControl::Save(const std::filesystem::path& folder) {
    if (desk_.Refused(Need::Change)) return;
    if (!Known()) return desk_.Say("Nothing to Show");
    const std::string name = SolutionBaseName(report_->Request);
    WriteTo(AskFile(folder, name.empty() ? "" : name + ".sol"));
}

// Empty when the user gave none.
std::filesystem::path SolutionControl::AskFile(const std::filesystem::path& folder,
                                               const std::string& name) {
    const std::filesystem::path& start = saveFolder_.empty() ? folder : saveFolder_;
    const auto answer = desk_.Window().AskSaveFile(FileKind::Solution, start.string(), name);
    if (!answer || answer->empty()) return {};
    const std::filesystem::path file = *answer;
    saveFolder_ = file.parent_path();
    return file;
}

void SolutionControl::WriteTo(const std::filesystem::path& file) {
    if (file.empty()) return;
    const std::string fault = WriteWholeFile(file, SolutionFileText(*report_));
    if (!fault.empty()) desk_.Say(fault);
}

void SolutionControl::Copy() {
    if (!Known()) {
        if (desk_.Now() != State::Solving) desk_.Screen.Right = "Nothing to Show";
        return;
    }
    desk_.Window().SetClipboard(report_->Kept[0]->SolString);
    desk_.Screen.Right = "The solution is on the clipboard";
}

void SolutionControl::ShowText() {
    if (IsPlaying(desk_.Now())) return desk_.Say("Stop Animation first");
    desk_.Screen.BoxText = SolutionViewText(*report_);
    desk_.Fire(Event::TextAsked);
}

void SolutionControl::SetAside() {
    desk_.Fire(Event::SetAside);
    if (Known()) desk_.ShowBoard(report_->Request.Level);  // without what a replay left there
}

// Left goes on from where a replay was stopped; any other button starts again.
void SolutionControl::AnimReleased(bool left) {
    switch (desk_.Now()) {
        case State::Solved:
        case State::Replayed:
            return Begin();
        case State::Replaying:
            return desk_.Fire(Event::HaltAsked);
        case State::Paused:
            if (!left) return Begin();
            if (replay_.At() < replay_.Moves()) desk_.Fire(Event::PlayStarted);
            return;
        default:
            return;
    }
}

void SolutionControl::Begin() {
    const KeptSolution& solution = *report_->Kept[0];
    if (solution.SolMoves == 0) {
        desk_.Screen.Right = "Nothing to Show";
        return;
    }
    replay_ = ReplayCursor(report_->Request.Level, solution.SolString);
    desk_.ShowBoard(replay_.Position());
    desk_.Fire(Event::PlayStarted);
}

void SolutionControl::AnimTick() {
    if (desk_.Now() == State::Halting) return desk_.Fire(Event::PlayHalted);
    if (desk_.Now() != State::Replaying) return;  // the last event of a timer just switched off
    if (!replay_.Forward()) return desk_.Say("Solution disaster");
    if (replay_.At() == replay_.Moves()) desk_.Fire(Event::PlayDone);
    ShowReplay();
}

void SolutionControl::ShowReplay() {
    const int facing = replay_.Facing();
    desk_.ShowBoard(replay_.Position(),
                    facing < 0 ? Picture::ManDown
                               : static_cast<Picture>(static_cast<int>(Picture::ManLeft) + facing));
    MessageValues values;
    values.AnimMoves = replay_.At();
    values.AnimPushes = replay_.PushesAt();
    values.SolMoves[0] = report_->Kept[0]->SolMoves;
    values.SolPushes[0] = report_->Kept[0]->SolPushes;
    desk_.ShowMsg(Result::AnimProgress, values);
}

}  // namespace kavit
