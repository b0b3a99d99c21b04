#pragma once

#include <QObject>

class QAction;
class QMainWindow;
class QMenu;
class QMenuBar;

namespace kavit {

// The menu bar. Every menu and entry has its object name, a mnemonic and, where there is a usual
// one, a shortcut; Chosen tells which entry was taken. What an entry does is not known here.
class Menus : public QObject {
    Q_OBJECT

  public:
    explicit Menus(QMainWindow* window);

  signals:
    void Chosen(const QString& objectName);

  private:
    void MakeFile();
    void MakeSearch();
    void MakeExamples();
    void MakeOptimizer();
    void MakeHash();
    void MakeHelp();
    QMenu* AddMenu(const char* name, const QString& caption);
    QAction* AddEntry(QMenu* menu, const QString& name, const QString& caption, const QString& tip);
    QAction* AddChoice(QMenu* menu, const QString& name, const QString& caption,
                       const QString& tip);

    QMainWindow* window_;
    QMenuBar* bar_;
};

}  // namespace kavit
