#include "app/model/solution_control.h"

#include <iterator>

#include "output/atomic_file.h"
#include "output/solution_file.h"

namespace kavit {

void SolutionControl::Keep(SolveReport report, const std::string& knownAs) {
    report_ = std::move(report);
    knownAs_ = knownAs;
    chosen_ = 0;
    Load();
}

// The solutions by what they are, with moves and pushes. Only what is proved is said without
// "found".
std::vector<std::string> SolutionControl::Names() const {
    const auto name = [](const std::string& what, const KeptSolution& solution) {
        return what + ": " + std::to_string(solution.SolMoves) + "/" +
               std::to_string(solution.SolPushes);
    };
    const KeptSolution& moves = *report_->Kept[0];
    const KeptSolution& pushes = *report_->Kept[1];
    if (!knownAs_.empty()) return {name(knownAs_, moves)};
    const char* const fewestPushes =
        report_->PushesProved ? "fewest pushes" : "fewest pushes found";
    if (report_->HasTwoSolutions()) {
        return {name(report_->FewestMovesProved ? "fewest moves" : "fewest moves found", moves),
                name(fewestPushes, pushes)};
    }
    return {name(report_->FewestMovesProved ? "fewest moves and pushes" : fewestPushes, pushes)};
}

// The file comes last of what can fail: the text view and the clipboard have the solution by then.
void SolutionControl::Take(SolveReport report, const std::filesystem::path& folder, bool write) {
    Keep(std::move(report), "");
    desk_.Window().SetClipboard(report_->Kept[0]->SolString);
    if (write) Write(folder);
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
    std::string what;
    for (const std::string& solution : Names()) what += (what.empty() ? "" : ", ") + solution;
    const auto answer = desk_.Window().AskSaveFile(FileKind::Solution, start.string(), name, what);
    if (!answer) return {};
    std::filesystem::path file = *answer;
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
        if (!IsSolving(desk_.Now())) desk_.Screen.Right = "Nothing to Show";
        return;
    }
    desk_.Window().SetClipboard(Chosen().SolString);
    desk_.Screen.Right = "The solution is on the clipboard";
}

void SolutionControl::ShowText() {
    if (IsPlaying(desk_.Now())) return desk_.Say("Stop Animation first");
    desk_.Screen.BoxText = SolutionViewText(*report_);
    desk_.Fire(Event::TextAsked);
}

void SolutionControl::SetAside() {
    desk_.Fire(Event::SetAside);
    if (!Known()) return;
    replay_.First();
    desk_.ShowBoard(report_->Request.Level);  // without what a replay left there
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
    if (Chosen().SolMoves == 0) {
        desk_.Screen.Right = "Nothing to Show";
        return;
    }
    replay_.First();
    desk_.ShowBoard(replay_.Position());
    desk_.Fire(Event::PlayStarted);
}

void SolutionControl::Load() {
    replay_ = ReplayCursor(report_->Request.Level, Chosen().SolString);
}

void SolutionControl::Choose(int solution) {
    if (!ShowsSolution(desk_.Now())) return;
    chosen_ = static_cast<std::size_t>(solution);
    Load();
    Sought();
}

void SolutionControl::GoTo(std::int64_t move) {
    if (!ShowsSolution(desk_.Now())) return;
    replay_.Seek(move);
    Sought();
}

void SolutionControl::TextClicked(const std::string& line, std::int64_t column) {
    if (desk_.Now() != State::ShowingText) return;
    for (std::size_t k = 0; k < (report_->HasTwoSolutions() ? 2 : 1); ++k) {
        if (line != report_->Kept[k]->SolString) continue;
        SetAside();
        Choose(static_cast<int>(k));
        return GoTo(column + 1);
    }
}

void SolutionControl::StepPush(bool forward) {
    if (!ShowsSolution(desk_.Now())) return;
    if (forward) replay_.ForwardPush();
    if (!forward) replay_.BackPush();
    Sought();
}

// A replay that runs goes on from the new place.
void SolutionControl::Sought() {
    if (desk_.Now() == State::Halting) desk_.Fire(Event::PlayHalted);
    if (replay_.AtEnd()) {
        desk_.Fire(Event::PlayDone);
    } else if (!IsPlaying(desk_.Now())) {
        desk_.Fire(replay_.At() == 0 ? Event::SoughtStart : Event::Sought);
    }
    ShowReplay();
}

void SolutionControl::PlayOrPause() {
    if (desk_.Now() == State::Replaying) return Pause();
    AnimReleased(true);
}

void SolutionControl::Pause() {
    desk_.Fire(Event::HaltAsked);
    desk_.Fire(Event::PlayHalted);
}

void SolutionControl::SetSpeed(int index) {
    if (index >= 0 && index < static_cast<int>(std::size(kReplaySpeeds))) speed_ = index;
}

// The bar, as it is now. A solution that is no longer on the board has none.
void SolutionControl::Present() {
    ReplayLook& look = desk_.Screen.Replay;
    look.Speed = speed_;
    look.Visible = Known() && ShowsSolution(desk_.Now());
    if (!look.Visible) return;
    look.Names = Names();
    look.Chosen = static_cast<int>(chosen_);
    look.At = replay_.At();
    look.Moves = replay_.Moves();
    look.PushesAt = replay_.PushesAt();
    look.Pushes = replay_.Pushes();
    look.PushMarks = replay_.PushMarks();
    look.Playing = IsPlaying(desk_.Now());
}

void SolutionControl::AnimTick() {
    if (desk_.Now() == State::Halting) return desk_.Fire(Event::PlayHalted);
    if (desk_.Now() != State::Replaying) return;  // the last event of a timer just switched off
    if (!replay_.Forward()) return desk_.Say("Solution disaster");
    if (replay_.At() == replay_.Moves()) desk_.Fire(Event::PlayDone);
    ShowReplay();
}

void SolutionControl::ShowReplay() {
    desk_.ShowBoard(replay_.Position(), PictureOfMan(replay_.Facing()));
    MessageValues values;
    values.AnimMoves = replay_.At();
    values.AnimPushes = replay_.PushesAt();
    values.SolMoves[0] = Chosen().SolMoves;
    values.SolPushes[0] = Chosen().SolPushes;
    desk_.ShowMsg(Result::AnimProgress, values);
}

}  // namespace kavit
