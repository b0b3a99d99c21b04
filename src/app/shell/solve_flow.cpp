#include <new>

#include "app/shell/shell.h"
#include "output/atomic_file.h"
#include "output/number_text.h"

// What btnSOLVE does: SOLVE, STOP, TEXT, RETURN. The order of the steps is the order in which a
// user can see them: while the search, the optimizer and the message display run, events come
// through, and each of them finds a window whose captions tell the truth.
namespace kavit {

void Shell::SolveClicked() {
    if (solving_ && solveState_ != SolveState::Stop) return;  // the last steps of a solve
    view_.SetVisible(Control::frmSizes, false);
    configOpen_ = false;
    switch (solveState_) {
        case SolveState::Solve:
            StartSolve();
            break;
        case SolveState::Stop:
            RequestStop(StopCause::User);
            break;
        case SolveState::Text:
            ShowText();
            break;
        case SolveState::Return:
            ReturnClicked();
            break;
    }
}

void Shell::StartSolve() {
    if (badBoard_) return;
    if (editing_) FinishEditing();  // CLEAR enables SOLVE in the editor, too
    view_.SetTitle(Tr("Solving ") + levelName_);
    ForgetSolution();
    StopSea = StopCause::No;
    RefreshDue = false;
    try {
        seaResult_ = solver_.AnalyseBoard(
            board_, {static_cast<OptLevel>(settings_.OptLevel), static_cast<SeaType>(seaType_),
                     static_cast<HashCase>(hashCase_), optSpecial_});
        if (seaResult_ != Result::Ok) {
            ShowMsg(static_cast<int>(seaResult_));
            view_.SetEnabled(Control::btnCLEAR, true);
            return;
        }
        RunSolve();
    } catch (const SolverFault& fault) {
        SolveFailed(fault.what());
    } catch (const std::bad_alloc&) {
        SolveFailed(Tr("Insuficient Memory"));
    }
}

// The search can't go on, but the program can: back to SOLVE, nothing kept.
void Shell::SolveFailed(const std::string& what) {
    view_.SetEnabled(Control::TimerWatch, false);
    ForgetSolution();
    SetSolve(SolveState::Solve);
    SetAnim(AnimCaption::Anim, false);
    view_.SetEnabled(Control::btnCLEAR, true);
    solving_ = false;
    Say(what);
}

void Shell::RunSolve() {
    ShowBoard();
    view_.SetText(Control::txtLeft, "");
    view_.SetText(Control::txtRight, "");
    SetSolve(SolveState::Stop);
    SetAnim(AnimCaption::Anim, false);
    view_.SetEnabled(Control::btnCLEAR, false);

    // What the report needs is taken now: nothing of it can change while the solve runs.
    report_ = {};
    SolveRequest& asked = report_.Request;
    asked.Level = board_;
    asked.LevelName = levelName_;
    asked.HideExpert = hideExpert_;
    asked.Options.OptLevel = static_cast<OptLevel>(settings_.OptLevel);
    asked.Options.OptSpecial = optSpecial_;
    asked.Options.HashCase = static_cast<HashCase>(hashCase_);

    solving_ = true;
    progress_ = shownProgress_ = 0;
    side_ = shownSide_ = 0;
    lastMsgMs_ = 0;
    view_.SetProgress(0);
    view_.SetText(Control::lblTimer, "0/" + B(settings_.Fields.MaxTime));
    view_.SetText(Control::lblSeaTimer, "");
    view_.SetText(Control::lblDebug, "");
    view_.ProcessEvents();
    view_.SetEnabled(Control::TimerWatch, true);
    watch_.Start(clock_.SecondsOfDay(), settings_.Fields.MaxTime);
    seaPhase_ = 1;
    pacer_.Start(clock_.Milliseconds());

    seaResult_ = solver_.Search(*this);
    watch_.Finish(clock_.SecondsOfDay());
    if (!SearchEnded(seaResult_)) return;
    if (settings_.OptLevel < 2) {
        ShowMsg(static_cast<int>(Result::Solution));
    } else {
        RunOptimizer();
    }
    FinishSolved();
}

// True when the level is solved. Out of memory keeps the caption STOP: that state is left by the
// File menu.
bool Shell::SearchEnded(Result result) {
    if (result == Result::Ok) return true;
    FlushProgress();
    seaPhase_ = 0;
    if (result == Result::NoSolution || result == Result::Stopped) {
        view_.SetEnabled(Control::btnCLEAR, true);
        SetSolve(SolveState::Solve);
    }
    view_.SetEnabled(Control::TimerWatch, false);
    ShowMsg(static_cast<int>(result));
    solving_ = false;
    return false;
}

void Shell::RunOptimizer() {
    seaPhase_ = 2;
    Result result = Result::GoOn;
    try {
        result = solver_.OptimizeMoves(*this);
    } catch (const SolverFault& fault) {
        // What the search found holds all the same.
        Say(fault.what());
        RequestStop(StopCause::User);
    }
    watch_.Finish(clock_.SecondsOfDay());
    seaResult_ = result;
    if (static_cast<int>(result) < 1) {
        seaResult_ = Result::Ok;
        ShowMsg(static_cast<int>(Result::BestSolution));
    } else if (result == Result::OutOfMemory) {
        RequestStop(StopCause::Memory);
        ShowMsg(static_cast<int>(Result::OutOfMemoryWithSolution));
    } else if (result == Result::Stopped) {
        ShowMsg(static_cast<int>(Result::StoppedWithSolution));
    } else {
        ShowMsg(static_cast<int>(result));
    }
}

void Shell::FinishSolved() {
    FlushProgress();
    view_.SetText(Control::lblTimer, B(watch_.Elapsed()) + "/" + B(settings_.Fields.MaxTime));
    solver_.BuildSolutions();
    haveSolution_ = true;
    SetAnim(AnimCaption::Anim, true);
    SetSolve(SolveState::Text);
    view_.SetEnabled(Control::btnCLEAR, true);
    view_.SetEnabled(Control::TimerWatch, false);
    const SearchCounters& counters = solver_.Counters();
    std::string debug = Tr("Pos.Count = ") + B(counters.BucketCnt);
    if (counters.MovesProved) debug += "; " + Tr("fewest moves proved");
    view_.SetText(Control::lblDebug, debug);
    WriteSolution();
    solving_ = false;
}

void Shell::ShowText() {
    if (animation_.AnimRunning()) return Say(Tr("Stop Animation first"));
    importMode_ = false;
    importing_ = false;
    FillImport(solutionText_, true);
    SetImportVisible(true);
    view_.SetEnabled(Control::btnANIM, false);
    view_.SetEnabled(Control::btnSOLVE, true);
    SetSolve(SolveState::Return);
}

void Shell::ReturnClicked() {
    SetImportVisible(false);
    boardImported_ = false;
    if (importMode_) {
        TakeImport(view_.Text(Control::rtxtImport));
    } else if (haveSolution_) {
        ShowBoard();
        SetAnim(AnimCaption::Anim, true);
        SetSolve(SolveState::Text);
    } else {
        SetSolve(SolveState::Solve);  // the import box was left as it was opened
    }
}

// The file comes last of what can fail: the text view and the clipboard have the solution by then.
void Shell::WriteSolution() {
    report_.Request.BoardImported = boardImported_;
    report_.Request.BoardMoved = boardMoved_;
    report_.SeaStart = watch_.SeaStart();
    report_.LastTick = watch_.LastTick();
    report_.Cause = StopSea;
    report_.Kept = {solver_.Kept(0), solver_.Kept(1)};
    report_.Counters = solver_.Counters();
    report_.MovesProved = report_.Counters.MovesProved;
    report_.Sizes = solver_.AppliedSizes();
    solutionText_ = SolutionViewText(report_);
    view_.SetClipboard(report_.Kept[0]->SolString);

    const SolutionName name = ChooseSolutionName(report_.Request, settings_.NoWriteSol, settings_.WriteSol);
    std::filesystem::path file;
    switch (name.Choice) {
        case SolutionName::Kind::None:
            break;
        case SolutionName::Kind::Write:
            file = levels_.Folder() / name.Name;
            break;
        case SolutionName::Kind::Ask:
            file = AskSolutionFile(name.Name);
            break;
    }
    if (file.empty()) {
        boardImported_ = false;
    } else if (const std::string fault = WriteWholeFile(file, SolutionFileText(report_));
               !fault.empty()) {
        view_.Message(fault);
    }
    if (!Stopping()) ShowMsg(static_cast<int>(Result::SolutionInClipboard));
}

std::filesystem::path Shell::AskSolutionFile(const std::string& suggested) {
    const std::filesystem::path folder = saveFolder_.empty() ? levels_.Folder() : saveFolder_;
    const auto answer = view_.AskSaveFile(folder.string(), suggested);
    if (!answer || answer->empty()) return {};
    const std::filesystem::path file = *answer;
    saveFolder_ = file.parent_path();
    return file;
}

}  // namespace kavit
