#pragma once

#include <QHash>
#include <QObject>
#include <array>

#include "app/shell/shell_view.h"

class QMainWindow;

namespace kavit {

class BoardView;
class HelpWindow;

// The window as the command flow sees it: finds every control by its object name and passes texts
// and states on. What comes from files and names is set as plain text everywhere.
class QtView final : public ShellView {
  public:
    // All controls must exist by now.
    explicit QtView(QMainWindow* window);

    void SetText(Control control, const std::string& text) override;
    [[nodiscard]] std::string Text(Control control) const override;
    void SetEnabled(Control control, bool enabled) override;
    void SetVisible(Control control, bool visible) override;
    void SetChecked(Control control, bool checked) override;
    [[nodiscard]] bool Checked(Control control) const override;
    void SetUnderlined(Control control, bool underlined) override;
    void SetReadOnly(Control control, bool readOnly) override;
    void SetFocus(Control control) override;
    void SetTitle(const std::string& title) override;
    void SetProgressRange(int most) override;
    void SetProgress(int value) override;
    void ShowCell(int index, Picture picture) override;
    void Message(const std::string& text) override;
    void Notice(const std::string& text) override;
    [[nodiscard]] bool AskOkCancel(const std::string& text) override;
    [[nodiscard]] bool AskYesNo(const std::string& text) override;
    [[nodiscard]] std::optional<std::string> AskOpenFile(const std::string& folder,
                                                         const std::string& name) override;
    [[nodiscard]] std::optional<std::string> AskSaveFile(const std::string& folder,
                                                         const std::string& name) override;
    [[nodiscard]] std::optional<std::string> AskText(const std::string& title,
                                                     const std::string& prompt,
                                                     const std::string& answer) override;
    [[nodiscard]] std::string Clipboard() const override;
    void SetClipboard(const std::string& text) override;
    void ShowHelp(int topic, const std::string& levelName) override;
    void ProcessEvents() override;
    void Repaint() override;
    void Quit() override;
    [[nodiscard]] std::string Translated(const char* text) const override;

  private:
    [[nodiscard]] QObject* Of(Control control) const {
        return controls_[static_cast<std::size_t>(control)];
    }

    QMainWindow* window_;
    BoardView* board_;
    HelpWindow* help_ = nullptr;
    std::array<QObject*, kControlCount> controls_{};
};

}  // namespace kavit
