#include <system_error>

#include "app/shell/examples.h"
#include "app/shell/shell.h"

// Levels from files: File/Open, Restart, Next and Previous Level, the Examples menu, a file dropped
// on the window or named on the command line.
namespace kavit {

void Shell::LevelCommand(int index) {
    if (Refused(Guard::Levels)) return;
    PrepareForLevel();
    switch (index) {
        case 0:
            return OpenFile();
        case 1:
            return Restart();
        case 2:
            return StepLevel(1);
        case 3:
            return StepLevel(-1);
        default:
            return;
    }
}

void Shell::OpenGiven(const std::string& fullName) {
    if (Refused(Guard::Levels)) return;
    PrepareForLevel();
    OpenPath(fullName);
}

void Shell::PrepareForLevel() {
    SetImportVisible(false);
    SetAnim(AnimCaption::Anim, false);
    ApplyPending();
    view_.SetProgress(0);
    view_.SetText(Control::txtLeft, "");
    view_.SetText(Control::txtRight, "");
}

// After a command that was refused or cancelled once the window had been made ready for a new
// level: the board is still the old one, and so is what can be done with it.
void Shell::Settle() {
    if (haveSolution_) {
        SetSolve(SolveState::Text);
        SetAnim(AnimCaption::Anim, true);
        ShowBoard();  // without what a replay left there
    } else if (solveState_ == SolveState::Return) {
        SetSolve(SolveState::Solve);
    }
}

void Shell::OpenFile() {
    const auto answer = view_.AskOpenFile(levels_.Folder().string(), levels_.OpenFileName());
    if (!answer || answer->empty()) return Settle();
    OpenPath(*answer);
}

void Shell::OpenPath(const std::string& fullName) {
    if (const std::string fault = levels_.Open(fullName); !fault.empty()) {
        Say(Tr(fault.c_str()));
        return Settle();
    }
    OpenStep();
}

void Shell::Restart() {
    ShowBoard();
    ForgetSolution();
    importMode_ = false;
    SetSolve(SolveState::Solve);
    ClearLabels();
    view_.SetEnabled(Control::btnSOLVE, true);
    view_.SetEnabled(Control::btnCLEAR, true);
    ShowMsg(static_cast<int>(Result::LevelOpened));
}

void Shell::StepLevel(int step) {
    if (const std::string fault = step > 0 ? levels_.Next() : levels_.Previous(); !fault.empty()) {
        Say(Tr(fault.c_str()));
        return Settle();
    }
    OpenStep();
}

void Shell::OpenStep() {
    levelName_ = levels_.LevelName();
    SetTitle(levelName_);
    LoadCurrentLevel();
    if (!badBoard_) ShowMsg(static_cast<int>(Result::LevelOpened));
}

void Shell::ClearLabels() {
    for (const Control label : {Control::lblDebug, Control::lblTimer, Control::lblSeaTimer}) {
        view_.SetText(label, "");
    }
}

// A pipe that nobody writes to would stop the window for ever.
ReadReply Shell::ReadCurrentLevel() {
    std::error_code error;
    if (std::filesystem::is_fifo(levels_.LevelPath(), error)) {
        return {Result::CantOpen, false, {}, "it is a pipe"};
    }
    return ReadLevelFile(levels_.LevelPath().string(), board_,
                         [this](const InvalidChar& invalid) { return AskInvalid(invalid); });
}

void Shell::LoadCurrentLevel() {
    const ReadReply reply = ReadCurrentLevel();
    if (reply.Cancelled) {
        badBoard_ = true;
        return view_.Quit();  // "Cancel" ends the program
    }
    ForgetSolution();
    boardImported_ = boardMoved_ = importMode_ = false;
    ShowBoard();
    badBoard_ = !reply.Loaded();
    SetSolve(SolveState::Solve);
    ClearLabels();
    if (badBoard_) {
        ShowMsg(static_cast<int>(reply.Code));
        return ShowPlace(reply);
    }
    view_.SetEnabled(Control::btnSOLVE, true);
    view_.SetEnabled(Control::btnCLEAR, true);
}

// The status lines say what is wrong with a level; this says where, or why a file can't be read.
void Shell::ShowPlace(const ReadReply& reply) {
    if (!reply.Reason.empty()) {
        view_.SetText(Control::lblDebug, reply.Reason);
    } else if (reply.Place.Line > 0) {
        view_.SetText(Control::lblDebug, Tr("line ") + std::to_string(reply.Place.Line) +
                                             Tr(", column ") + std::to_string(reply.Place.Column));
    }
}

InvalidCharAnswer Shell::AskInvalid(const InvalidChar& invalid) {
    return view_.AskOkCancel(InvalidCharText(invalid.Character)) ? InvalidCharAnswer::Space
                                                                 : InvalidCharAnswer::Cancel;
}

void Shell::ExampleCommand(int index) {
    if (Refused(Guard::Hash)) return;
    std::string fault;
    if (index == kExampleOther) {
        const auto answer =
            view_.AskText(Tr("File to Read"), Tr("Enter file name\r\nDefault extension .xsb"),
                          levels_.OtherName());
        if (!answer || answer->empty()) return;
        fault = levels_.OpenOther(*answer);
    } else if (index == kExampleNext) {
        fault = levels_.OpenNextNumbered();
    } else {
        for (const Example& example : kExamples) {
            if (example.Index == index) fault = levels_.OpenExample(example.File);
        }
    }
    if (!fault.empty()) return Say(fault);
    if (editing_) FinishEditing();
    SetImportVisible(false);
    levelName_ = levels_.LevelName();
    SetTitle(levelName_);
    ShowMsg(0);
    LoadCurrentLevel();
    view_.SetProgress(0);
    SetAnim(AnimCaption::Anim, false);
}

void Shell::CopyBoard() {
    view_.SetClipboard(BoardText(board_, "\n"));
    if (!solving_) view_.SetText(Control::txtRight, Tr("The board is on the clipboard"));
}

void Shell::CopySolution() {
    if (!haveSolution_) {
        if (!solving_) view_.SetText(Control::txtRight, Tr("Nothing to Show"));
        return;
    }
    view_.SetClipboard(report_.Kept[0]->SolString);
    view_.SetText(Control::txtRight, Tr("The solution is on the clipboard"));
}

}  // namespace kavit
