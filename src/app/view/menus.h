#pragma once

#include <QKeySequence>
#include <QObject>
#include <functional>
#include <vector>

#include "app/model/model.h"

class QAction;
class QMainWindow;
class QMenu;

namespace kavit {

// Carries out a command of the model from a widget.
using RunCommand = std::function<void(const std::function<void(Model&)>&)>;

// The menu bar. Every menu and entry has its object name, a mnemonic and, where there is a usual
// one, a shortcut.
class Menus : public QObject {
    Q_OBJECT

  public:
    Menus(QMainWindow* window, RunCommand run);

    void Show(const Screen& screen);
    void ShowTheme(int theme);
    void ShowClosing(bool open);

  signals:
    // What is the window's own.
    void ThemeChosen(int theme);
    void ClosingChosen(bool open);

  private:
    using Command = std::function<void(Model&)>;

    void MakeFile();
    void MakeSearch();
    void MakeExamples();
    void MakeOptimizer();
    void MakeHash();
    void MakePlay();
    void MakeDraw();
    void MakeView();
    void MakeHelp();
    QMenu* AddMenu(const char* name, const QString& caption);
    QAction* AddEntry(QMenu* menu, const QString& name, const QString& caption, const QString& tip,
                      Command command, const QKeySequence& keys = {});
    QAction* AddChoice(QMenu* menu, const QString& name, const QString& caption, const QString& tip,
                       Command command);

    QMainWindow* window_;
    RunCommand run_;
    std::vector<QAction*> searches_;    // by SeaType
    std::vector<QAction*> optimizers_;  // by OptLevel
    std::vector<QAction*> hashes_;      // by HashCase
    QAction* proved_ = nullptr;
    QAction* special_ = nullptr;
    std::vector<QAction*> shapes_;  // by EditorControl::Shape
    std::vector<QAction*> themes_;  // by Theme
    QAction* aside_ = nullptr;
    QAction* dead_ = nullptr;
    QAction* reach_ = nullptr;
    QAction* closing_ = nullptr;
    std::vector<QAction*> hidden_;  // until the expert menus are found
};

}  // namespace kavit
