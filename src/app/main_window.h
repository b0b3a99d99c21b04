#pragma once

#include <QMainWindow>
#include <filesystem>
#include <memory>
#include <string>

#include "app/shell/shell.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

namespace kavit {

class BoardView;
class PaletteView;
class QtView;
class SettingsPanel;

// The one window, Form1. It builds the controls, hands their signals to the command flow and the
// command flow's wishes to the controls; what a command means is not known here.
class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    // `folder` is where the settings file lies. Tests give their own clock.
    MainWindow(std::string program, std::filesystem::path folder,
               std::unique_ptr<ShellClock> clock = nullptr);
    ~MainWindow() override;

    // Start-up; false when the program must end with status 1.
    [[nodiscard]] bool Start();
    [[nodiscard]] Shell& Commands() { return *shell_; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void CreateBoard();
    void CreateStatus();
    void CreateCommands();
    void CreateEditorButtons();
    void CreateSide();
    void CreateTimers();
    void CreateShortcuts();
    void LayOut();
    void OrderFocus();
    void ConnectButtons();
    void ConnectMenus();
    QLabel* AddLabel(const char* name, const QString& accessibleName, const QString& tip);
    QLineEdit* AddLine(const char* name, const QString& accessibleName);
    QPushButton* AddButton(const char* name, const QString& caption, const QString& tip);

    std::unique_ptr<ShellClock> clock_;
    std::unique_ptr<QtView> view_;
    std::unique_ptr<Shell> shell_;
    std::string program_;
    std::filesystem::path folder_;

    BoardView* board_ = nullptr;
    QPlainTextEdit* import_ = nullptr;
    PaletteView* palette_ = nullptr;
    SettingsPanel* panel_ = nullptr;
    QWidget* boardArea_ = nullptr;
    QWidget* side_ = nullptr;
    QWidget* status_ = nullptr;
};

}  // namespace kavit
