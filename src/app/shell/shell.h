#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "app/shell/settings_file.h"
#include "app/shell/shell_view.h"
#include "app/shell/yield_pacer.h"
#include "level/board.h"
#include "level/editor.h"
#include "level/level_files.h"
#include "level/level_reader.h"
#include "level/transform.h"
#include "output/animation.h"
#include "output/messages.h"
#include "output/solution_file.h"
#include "output/watch.h"
#include "solver/solver.h"

// The command flow of the window: the state of the program and a handler for every command, behind
// a window that is known as a ShellView only. It runs on the window's thread; the search runs
// inside SolveClicked and lets events through at its yield points, so that every handler below can
// be called while `Solving` is true and checks that first.
//
// By topic the handlers are in solve_flow, level_flow, editor_flow, anim_flow, settings_flow and
// menu_flow; shell.cpp has what they share.
namespace kavit {

// The caption of btnSOLVE is the state of what it does.
enum class SolveState { Solve, Stop, Text, Return };

class Shell final : private SolverHooks {
  public:
    // `program` names the program in window titles; `folder` is where it was started.
    Shell(ShellView& view, const ShellClock& clock, std::string program,
          std::filesystem::path folder);

    // Start-up; false when the program must end with status 1 (its message was shown).
    [[nodiscard]] bool FormLoad();

    // The buttons.
    void SolveClicked();
    void AnimMouseUp(bool left);
    void ClearClicked();

    // File, Examples.
    void LevelCommand(int index);
    void OpenGiven(const std::string& fullName);  // dropped, or named on the command line
    void ExampleCommand(int index);
    void ExitClicked();  // also when the window is closed
    void CopyBoard();
    void CopySolution();
    void PasteLevel();

    // Editor and import.
    void EditBoard();
    void SelectTool(int tool);
    void CellDown(int index);
    void CellMove(int index, int x, int y);
    void CellUp(int index);
    void ShiftClicked(int index);
    void MirrorRotateClicked(int index);
    void UndoAll();
    void ImportBoard();
    void ImportTextChanged();

    // Escape: STOP while something runs, back in the editor and in the settings panel.
    void EscapePressed();

    // Search, Optimizer, Hash, Help.
    void SeaClicked(int index);
    void OptClicked(int index);
    void OptSpecClicked();
    void HashClicked(int index);
    void OptLabelDoubleClicked();
    void HelpClicked(int topic);

    // Settings.
    void ConfigureClicked();
    void ApplyClicked();
    void CancelClicked();
    void SizeChosen();
    void WriteSolClicked();
    void NoWriteSolClicked();
    void SaveSettings();

    // Timers.
    void WatchTick();
    void AnimTick();

    [[nodiscard]] bool Solving() const { return solving_; }
    [[nodiscard]] bool Editing() const { return editing_; }
    [[nodiscard]] const Board& Level() const { return board_; }
    // For the figures of a search after it, and for tests.
    [[nodiscard]] const Solver& Engine() const { return solver_; }

  private:
    // shell.cpp
    enum class Guard { Levels, Edit, Hash };
    [[nodiscard]] bool Refused(Guard guard);
    [[nodiscard]] bool RefusedWhileSolving();
    [[nodiscard]] bool ChangeRefused();
    void Say(const std::string& text);
    [[nodiscard]] std::string Tr(const char* text) const { return view_.Translated(text); }
    void ShowMsg(int number);
    void PutMsg(int number);
    void ShowBoard();
    void SetSolve(SolveState state);
    void SetAnim(AnimCaption caption, bool enabled);
    void ShowAnim();
    void SetImportVisible(bool visible);
    void StopAnimation();
    void Reset();
    void SetTitle(const std::string& rest);
    void ForgetSolution();

    // anim_flow.cpp
    void Obey(const AnimOrders& orders);

    // yield_flow.cpp
    void ShowMsg(Result number) override;
    void ShowProgress(std::int64_t bucketCnt) override;
    void ShowSide(char side) override;
    void Yield() override;
    void BreatheAt(double nowMs);
    void FlushProgress();

    // solve_flow.cpp
    void StartSolve();
    void RunSolve();
    [[nodiscard]] bool SearchEnded(Result result);
    void RunOptimizer();
    void FinishSolved();
    void SolveFailed(const std::string& what);
    void ReturnClicked();
    void ShowText();
    void WriteSolution();
    [[nodiscard]] std::filesystem::path AskSolutionFile(const std::string& suggested);

    // level_flow.cpp
    void PrepareForLevel();
    void Settle();
    void OpenFile();
    void OpenPath(const std::string& fullName);
    void Restart();
    void StepLevel(int step);
    void OpenStep();
    void ClearLabels();
    [[nodiscard]] ReadReply ReadCurrentLevel();
    void LoadCurrentLevel();
    void ShowPlace(const ReadReply& reply);
    [[nodiscard]] InvalidCharAnswer AskInvalid(const InvalidChar& invalid);

    // import_flow.cpp
    void OpenImport(const std::string& text);
    void FillImport(const std::string& text, bool readOnly);
    void TakeImport(const std::string& text);

    // editor_flow.cpp
    void FinishEditing();
    void ShowTools();
    void ShowEdit(const EditReply& reply);
    void ShowTransform(const TransformReply& reply);
    void ShowEditorButtons(bool visible);

    // settings_flow.cpp
    [[nodiscard]] bool LoadSettings();
    void ShowSettings();
    void ShowSizes();
    [[nodiscard]] bool ApplyFields();
    [[nodiscard]] bool Apply(const Sizes& fields);
    void ApplyPending();
    void HidePanel();
    [[nodiscard]] std::optional<Sizes> PanelFields();

    // menu_flow.cpp
    void ShowChoices();

    ShellView& view_;
    const ShellClock& clock_;
    std::string program_;
    std::filesystem::path startFolder_;

    Board board_;
    Board boardBackup_;         // from the moment the editor was opened
    bool movedBackup_ = false;  // boardMoved_ of that moment
    Solver solver_;
    MessageCatalogue messages_;
    SolveWatch watch_;
    YieldPacer pacer_;
    LevelFolder levels_;
    Editor editor_;
    Animation animation_;

    SolveState solveState_ = SolveState::Solve;
    bool solving_ = false;
    bool inAnimTick_ = false;
    bool editing_ = false;
    bool badBoard_ = false;
    bool importVisible_ = false;
    bool importMode_ = false;
    bool importing_ = false;  // the box takes a level; otherwise it shows the solution
    bool fillingImport_ = false;
    bool configOpen_ = false;

    bool boardImported_ = false;
    bool boardMoved_ = false;
    std::string levelName_;
    int seaPhase_ = 0;
    Result seaResult_ = Result::Ok;

    // The last solution, as long as it belongs to the board that is shown.
    bool haveSolution_ = false;
    SolveReport report_;
    std::string solutionText_;
    std::string importDraft_;  // typed or pasted and not taken yet
    std::filesystem::path saveFolder_;

    Settings settings_;
    int seaType_ = 0;
    int hashCase_ = 0;
    bool optSpecial_ = false;
    bool hideExpert_ = true;
    int eggCode_ = 0;

    std::int64_t shownProgress_ = 0;
    std::int64_t progress_ = 0;
    char side_ = 0;
    char shownSide_ = 0;
    std::optional<Result> waitingMsg_;  // a solver's message that was not shown yet
    double lastMsgMs_ = 0;
    unsigned breaths_ = 0;  // times that events came through
};

}  // namespace kavit
