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

  private:
    using Command = std::function<void(Model&)>;

    void MakeFile();
    void MakeSearch();
    void MakeExamples();
    void MakeOptimizer();
    void MakeHash();
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
    std::vector<QAction*> hidden_;  // until the expert menus are found
};

}  // namespace kavit
