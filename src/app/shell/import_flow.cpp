#include <string_view>

#include "app/shell/shell.h"
#include "level/level_reader.h"

// Levels from pasted text: the import box, RETURN, and a paste anywhere in the window.
namespace kavit {
namespace {

// Far more than a level with its title takes. The text box would be busy with more for a long time.
constexpr std::size_t kMostPasted = 100000;

}  // namespace

void Shell::ImportBoard() {
    if (Refused(Guard::Levels)) return;
    SetAnim(AnimCaption::Anim, false);
    ApplyPending();
    // What was typed before and not taken is still there.
    OpenImport(importDraft_);
    importMode_ = !importDraft_.empty();
    ShowMsg(static_cast<int>(Result::CanPaste));
}

void Shell::OpenImport(const std::string& text) {
    importing_ = true;
    FillImport(text, false);
    SetImportVisible(true);
    view_.SetFocus(Control::rtxtImport);
    SetSolve(SolveState::Return);
    view_.SetEnabled(Control::btnSOLVE, true);
}

// The text set here is no typing of the user.
void Shell::FillImport(const std::string& text, bool readOnly) {
    fillingImport_ = true;
    view_.SetText(Control::rtxtImport, text);
    fillingImport_ = false;
    view_.SetReadOnly(Control::rtxtImport, readOnly);
}

void Shell::ImportTextChanged() {
    if (fillingImport_ || !importing_) return;
    importMode_ = true;
    importDraft_ = view_.Text(Control::rtxtImport);
}

void Shell::PasteLevel() {
    const std::string text = view_.Clipboard();
    if (Refused(Guard::Levels)) return;
    if (text.size() > kMostPasted || !HoldsLevelRow(text)) {
        const bool tooLong = text.size() > kMostPasted;
        view_.SetText(Control::txtRight,
                      tooLong ? Tr("The text on the clipboard is too long for a level")
                              : Tr("There is no level on the clipboard"));
        return;
    }
    SetAnim(AnimCaption::Anim, false);
    ApplyPending();
    importDraft_ = text;
    OpenImport(text);
    importMode_ = true;
    ReturnClicked();
}

// What RETURN does with the text of the box. The text stays for mending when it can't be taken, and
// the board stays as it is.
void Shell::TakeImport(const std::string& text) {
    const ReadReply reply = ImportLevelText(
        text, board_, [this](const InvalidChar& invalid) { return AskInvalid(invalid); });
    seaResult_ = reply.Code;
    if (!reply.Loaded()) {
        SetImportVisible(true);
        view_.SetFocus(Control::rtxtImport);
        ShowMsg(static_cast<int>(reply.Code));
        return ShowPlace(reply);
    }
    if (!text.empty()) {
        levelName_.clear();
        SetTitle("");
    }
    importDraft_.clear();
    importMode_ = false;
    importing_ = false;
    ForgetSolution();
    boardImported_ = true;
    boardMoved_ = false;
    badBoard_ = false;
    ShowBoard();
    ClearLabels();
    SetAnim(AnimCaption::Anim, false);
    SetSolve(SolveState::Solve);
    view_.SetEnabled(Control::btnSOLVE, true);
    view_.SetEnabled(Control::btnCLEAR, true);
    ShowMsg(static_cast<int>(Result::CanEditBoard));
}

}  // namespace kavit
