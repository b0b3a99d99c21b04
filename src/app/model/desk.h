#pragma once

#include <string>

#include "app/model/screen.h"
#include "app/model/view.h"
#include "app/model/window_state.h"
#include "level/board.h"
#include "level/result.h"
#include "output/messages.h"

namespace kavit {

// What all controllers share: the window, what it shows, and what it is busy with.
class Desk {
  public:
    // `program` names the program in window titles.
    Desk(View& view, std::string program) : view_(view), program_(std::move(program)) {}

    kavit::Screen Screen;

    [[nodiscard]] State Now() const { return machine_.Now(); }
    void Fire(Event event) { machine_.Fire(event); }
    // Says why a command can't be carried out now.
    [[nodiscard]] bool Refused(Need need);

    // Draws the screen; every call below that waits for the user does so first.
    void Show();
    [[nodiscard]] View& Window() {
        Show();
        return view_;
    }
    void Say(const std::string& text) { Window().Say(text); }

    void ShowMsg(Result number, const MessageValues& values = {});
    void PutLines(const MessageLines& lines);
    void ShowBoard(const Board& board, Picture man = Picture::ManDown);
    // The program's name and what it is about.
    void SetTitle(const std::string& rest);
    // As behind a level that was just read.
    void ClearLabels();

  private:
    View& view_;
    std::string program_;
    StateMachine machine_;
    MessageCatalogue messages_;
};

}  // namespace kavit
