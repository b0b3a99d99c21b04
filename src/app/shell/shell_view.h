#pragma once

#include <optional>
#include <string>

#include "app/shell/controls.h"
#include "output/animation.h"

// What the command flow needs of a window. The real one is a thin adapter over the toolkit, the one
// of the tests a few maps. All texts are UTF-8 and are shown as written, never as markup.
namespace kavit {

class ShellView {
  public:
    virtual ~ShellView() = default;

    // Controls. Visibility and the enabled state go for widgets, menus and menu entries alike; for
    // a timer, enabled means that it runs.
    virtual void SetText(Control control, const std::string& text) = 0;
    [[nodiscard]] virtual std::string Text(Control control) const = 0;
    virtual void SetEnabled(Control control, bool enabled) = 0;
    virtual void SetVisible(Control control, bool visible) = 0;
    virtual void SetChecked(Control control, bool checked) = 0;
    [[nodiscard]] virtual bool Checked(Control control) const = 0;
    virtual void SetUnderlined(Control control, bool underlined) = 0;
    virtual void SetReadOnly(Control control, bool readOnly) = 0;
    virtual void SetFocus(Control control) = 0;
    virtual void SetTitle(const std::string& title) = 0;
    virtual void SetProgressRange(int most) = 0;
    virtual void SetProgress(int value) = 0;

    virtual void ShowCell(int index, Picture picture) = 0;

    // A message box with OK that is waited for; a Notice is one that is not, so that a search goes
    // on behind it.
    virtual void Message(const std::string& text) = 0;
    virtual void Notice(const std::string& text) = 0;
    [[nodiscard]] virtual bool AskOkCancel(const std::string& text) = 0;
    [[nodiscard]] virtual bool AskYesNo(const std::string& text) = 0;

    // Each returns what was chosen, or nothing when the user cancelled.
    [[nodiscard]] virtual std::optional<std::string> AskOpenFile(const std::string& folder,
                                                                 const std::string& name) = 0;
    [[nodiscard]] virtual std::optional<std::string> AskSaveFile(const std::string& folder,
                                                                 const std::string& name) = 0;
    [[nodiscard]] virtual std::optional<std::string> AskText(const std::string& title,
                                                             const std::string& prompt,
                                                             const std::string& answer) = 0;

    [[nodiscard]] virtual std::string Clipboard() const = 0;
    virtual void SetClipboard(const std::string& text) = 0;

    // Topics 1 to 5 of the help window; the level's name is for topic 4.
    virtual void ShowHelp(int topic, const std::string& levelName) = 0;

    virtual void ProcessEvents() = 0;
    // Events but for the user's input, which waits until the command is through.
    virtual void Repaint() = 0;
    virtual void Quit() = 0;

    // The text in the user's language.
    [[nodiscard]] virtual std::string Translated(const char* text) const { return text; }
};

// The clocks behind the window, replaced in tests.
class ShellClock {
  public:
    virtual ~ShellClock() = default;
    // Seconds since midnight.
    [[nodiscard]] virtual double SecondsOfDay() const = 0;
    // Any clock that never goes back.
    [[nodiscard]] virtual double Milliseconds() const = 0;
};

}  // namespace kavit
