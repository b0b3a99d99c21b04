#include "app/model/import_control.h"

#include <string_view>

namespace kavit {
namespace {

// Far more than a level with its title takes. The text box would be busy with more for a long time;
// a collection goes to the list and may be of any size.
constexpr std::size_t kMostPasted = 100000;

// Does any line of the text look like a row with a wall?
bool HoldsLevel(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view row = text.substr(0, end);
        if (row.find('#') != std::string_view::npos &&
            row.find_first_not_of(" .$*#@+-_") == std::string_view::npos) {
            return true;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

}  // namespace

void ImportControl::Open() {
    if (desk_.Refused(Need::Levels)) return;
    OpenBox();
    typed_ = !draft_.empty();
    desk_.ShowMsg(Result::CanPaste);
}

void ImportControl::OpenBox() {
    levels_.PrepareWindow();
    desk_.Screen.BoxText = draft_;
    desk_.Fire(Event::ImportOpened);
    desk_.Window().Focus(Place::TextBox);
}

void ImportControl::TextChanged(const std::string& text) {
    if (desk_.Now() != State::Importing || text == desk_.Screen.BoxText) return;
    typed_ = true;
    desk_.Screen.BoxText = draft_ = text;
}

void ImportControl::Return() {
    if (typed_) return Take();
    desk_.Fire(Event::SetAside);  // the box was left as it was opened
    desk_.Window().Focus(Place::NextButton);
}

void ImportControl::Paste() {
    const std::string text = desk_.Window().Clipboard();
    const bool drawing = IsEditing(desk_.Now());
    if (!drawing && desk_.Refused(Need::Levels)) return;
    auto album = AlbumOfText(text);
    const bool tooLong = !album && text.size() > kMostPasted;
    if (tooLong || (!album && !HoldsLevel(text))) {
        // While a level is drawn, the right line says what is wrong with it.
        (drawing ? desk_.Screen.Left : desk_.Screen.Right) =
            tooLong ? "The text on the clipboard is too long for a level"
                    : "There is no level on the clipboard";
        return;
    }
    if (drawing) return Draw(album ? album->Entries.front().Level.BoardText : text);
    levels_.PrepareWindow();
    if (album) return levels_.OpenAlbum(std::move(*album));
    draft_ = text;
    OpenBox();
    Take();
}

// A text that can't be taken leaves the drawing as it is.
void ImportControl::Draw(const std::string& text) {
    Board board = levels_.Level().Board;
    const ReadReply reply = ImportLevelText(text, board, [this](const InvalidChar& invalid) {
        return levels_.AskInvalid(invalid, "OK reads on, Cancel keeps the drawing.");
    });
    if (reply.Cancelled) return;
    if (reply.Loaded()) return editor_.Put(board);
    desk_.ShowMsg(reply.Code);
    levels_.ShowPlace(reply);
}

// The text stays for mending when it can't be taken, and the board stays as it is.
void ImportControl::Take() {
    Board board = levels_.Level().Board;
    const ReadReply reply = ImportLevelText(draft_, board, [this](const InvalidChar& invalid) {
        return levels_.AskInvalid(invalid, "OK reads on, Cancel goes back to the text.");
    });
    if (!reply.Loaded()) {
        typed_ = true;
        desk_.Window().Focus(Place::TextBox);
        desk_.ShowMsg(reply.Code);
        return levels_.ShowPlace(reply);
    }
    if (!levels_.MayLeave()) return;
    if (draft_.empty()) return desk_.Fire(Event::SetAside);  // no level, and nothing changes
    draft_.clear();
    levels_.TakePasted(board);
    desk_.Window().Focus(Place::NextButton);
}

}  // namespace kavit
