#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/model/screen.h"
#include "output/solve_session.h"

// What the model needs of a window. The real one is in app/view, the one of the tests a few fields.
namespace kavit {

// Where the keyboard goes.
enum class Place : std::uint8_t { NextButton, TextBox, Cancel, Apply, Memory, Blocks, Time, Board };

enum class Choices : std::uint8_t { OkCancel, YesNo, SaveDiscardCancel };
enum class Choice : std::uint8_t { Yes, No, Cancel };  // OK and Save are Yes, Discard is No

enum class FileKind : std::uint8_t { Level, Solution, Collection };

class View {
  public:
    virtual ~View() = default;

    virtual void Show(const Screen& screen) = 0;
    virtual void Focus(Place place) = 0;

    // A box with OK that nobody waits for.
    virtual void Say(const std::string& text) = 0;
    // These wait. Closing a box or a dialog is Cancel, or nothing.
    [[nodiscard]] virtual Choice Ask(const std::string& text, Choices choices) = 0;
    [[nodiscard]] virtual std::optional<std::string> AskOpenFile(const std::string& folder,
                                                                 const std::string& name) = 0;
    // `what` says in the dialog's title what is to be saved.
    [[nodiscard]] virtual std::optional<std::string> AskSaveFile(FileKind kind,
                                                                 const std::string& folder,
                                                                 const std::string& name,
                                                                 const std::string& what) = 0;
    [[nodiscard]] virtual std::optional<std::string> AskText(const std::string& title,
                                                             const std::string& prompt,
                                                             const std::string& answer) = 0;

    [[nodiscard]] virtual std::string Clipboard() const = 0;
    virtual void SetClipboard(const std::string& text) = 0;

    // Topics 1 to 5 of the help window; the level's name is for topic 4.
    virtual void ShowHelp(int topic, const std::string& levelName) = 0;

    // Runs the request away from the window's thread. What the search says on the way and its
    // report come back to the model on the window's thread: SearchSaid, SearchCame, SearchEnded.
    virtual void StartSearch(SolveSession& session, const SolveRequest& request) = 0;

    // The same for what is drawn; its report alone comes back: Aside.Ended.
    virtual void StartAside(SolveSession& session, const SolveRequest& request) = 0;

    // Ends the program.
    virtual void Quit() = 0;
};

}  // namespace kavit
