#pragma once

#include <QMainWindow>
#include <filesystem>
#include <memory>
#include <string>

#include "app/model/model.h"
#include "app/model/view.h"
#include "app/view/preferences.h"

class QDockWidget;
class QTimer;

namespace kavit {

class BoardView;
class ClosingPanel;
class CommandColumn;
class HelpWindow;
class LevelList;
class Menus;
class ReplayBar;
class SearchThread;
class StatusView;
class TextBox;

// The one window, Form1: its parts, joined to the model in both directions. What a command means
// is not known here.
class MainWindow : public QMainWindow, private View {
    Q_OBJECT

  public:
    // `folder` is where the settings file lies.
    MainWindow(const std::string& program, const std::filesystem::path& folder);
    ~MainWindow() override;

    // "" or why the program can't start.
    [[nodiscard]] std::string Load() { return model_->Load(); }
    void OpenGiven(const std::string& fullName);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void MakeTimers();
    void MakeList();
    void ShowList(const Screen& screen);
    void LayOut();
    void Connect();
    void MakeShortcuts();
    void OrderFocus();
    void ConnectReplay();
    void ConnectPreferences();
    [[nodiscard]] bool TakeKey(int key, Qt::KeyboardModifiers modifiers);
    void SaveChart();
    void Run(const std::function<void(Model&)>& command);

    void Show(const Screen& screen) override;
    void Focus(Place place) override;
    void Say(const std::string& text) override;
    [[nodiscard]] Choice Ask(const std::string& text, Choices choices) override;
    [[nodiscard]] std::optional<std::string> AskOpenFile(const std::string& folder,
                                                         const std::string& name) override;
    [[nodiscard]] std::optional<std::string> AskSaveFile(FileKind kind, const std::string& folder,
                                                         const std::string& name,
                                                         const std::string& what) override;
    [[nodiscard]] std::optional<std::string> AskText(const std::string& title,
                                                     const std::string& prompt,
                                                     const std::string& answer) override;
    [[nodiscard]] std::string Clipboard() const override;
    void SetClipboard(const std::string& text) override;
    void ShowHelp(int topic, const std::string& levelName) override;
    void StartSearch(SolveSession& session, const SolveRequest& request) override;
    void StartAside(SolveSession& session, const SolveRequest& request) override;
    void Quit() override;

    std::unique_ptr<Model> model_;
    Menus* menus_;
    QWidget* boardArea_;
    BoardView* board_;
    TextBox* text_;
    CommandColumn* column_;
    ReplayBar* replay_;
    StatusView* status_;
    LevelList* list_;
    QDockWidget* dock_;
    std::shared_ptr<const std::vector<ListRow>> shownList_ = Screen().List;
    ClosingPanel* closing_;
    QTimer* watch_;
    QTimer* anim_;
    HelpWindow* help_ = nullptr;
    QTimer* rest_;                          // begins anew with each change of a drawing
    std::unique_ptr<SearchThread> search_;  // goes before the model, whose solver it uses
    std::unique_ptr<SearchThread> aside_;
    bool quitting_ = false;
    Preferences preferences_;
};

}  // namespace kavit
