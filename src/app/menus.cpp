#include "app/menus.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "app/shell/examples.h"

namespace kavit {

using Qt::StringLiterals::operator""_L1;

Menus::Menus(QMainWindow* window) : QObject(window), window_(window), bar_(window->menuBar()) {
    MakeFile();
    MakeSearch();
    MakeExamples();
    MakeOptimizer();
    QAction* configure = bar_->addAction(tr("&Configure"));
    configure->setObjectName("mnuConfigure"_L1);
    configure->setToolTip(tr("Sizes, time limit and the solution file"));
    connect(configure, &QAction::triggered, this, [this] { emit Chosen("mnuConfigure"_L1); });
    MakeHash();
    MakeHelp();
}

QMenu* Menus::AddMenu(const char* name, const QString& caption) {
    QMenu* menu = bar_->addMenu(caption);
    menu->setObjectName(QLatin1String(name));
    menu->setToolTipsVisible(true);
    return menu;
}

QAction* Menus::AddEntry(QMenu* menu, const QString& name, const QString& caption,
                         const QString& tip) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    action->setToolTip(tip);
    connect(action, &QAction::triggered, this, [this, name] { emit Chosen(name); });
    return action;
}

QAction* Menus::AddChoice(QMenu* menu, const QString& name, const QString& caption,
                          const QString& tip) {
    QAction* action = AddEntry(menu, name, caption, tip);
    action->setCheckable(true);
    return action;
}

void Menus::MakeFile() {
    QMenu* file = AddMenu("mnuFile", tr("&File"));
    AddEntry(file, "mnuOpen0"_L1, tr("&Open File"), tr("Read a level from a file"))
        ->setShortcut(QKeySequence::Open);
    AddEntry(file, "mnuOpen1"_L1, tr("&Restart"), tr("Show the level as it was at the start"))
        ->setShortcut(Qt::CTRL | Qt::Key_R);
    AddEntry(file, "mnuOpen2"_L1, tr("&Next Level"), tr("The next level file of the folder"))
        ->setShortcut(Qt::CTRL | Qt::Key_PageDown);
    AddEntry(file, "mnuOpen3"_L1, tr("&Previous Level"), tr("The level file of the folder before"))
        ->setShortcut(Qt::CTRL | Qt::Key_PageUp);
    file->addSeparator();
    AddEntry(file, "mnuSave"_L1, tr("&Save Configuration"), tr("Keep the settings for next time"))
        ->setShortcut(QKeySequence::Save);
    file->addSeparator();
    AddEntry(file, "mnuEditBoard"_L1, tr("&Edit Board"), tr("Draw on the board"))
        // F2 as well: Ctrl+E is a cursor key while a text field has the focus.
        ->setShortcuts({Qt::CTRL | Qt::Key_E, Qt::Key_F2});
    AddEntry(file, "mnuImport"_L1, tr("&Import"), tr("Paste or type the text of a level"))
        ->setShortcut(Qt::CTRL | Qt::Key_I);
    file->addSeparator();
    AddEntry(file, "mnuCopyBoard"_L1, tr("Copy &Board"),
             tr("Put the level on the clipboard as text"))
        ->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_C);
    AddEntry(file, "mnuCopySolution"_L1, tr("&Copy Solution"),
             tr("Put the solution on the clipboard as text"))
        ->setShortcut(QKeySequence::Copy);
    AddEntry(file, "mnuPasteLevel"_L1, tr("Paste &Level"), tr("Take the level on the clipboard"))
        ->setShortcut(QKeySequence::Paste);
    file->addSeparator();
    QAction* exit = AddEntry(file, "mnuExit"_L1, tr("E&xit"), tr("End the program"));
    exit->setShortcut(Qt::CTRL | Qt::Key_Q);
    exit->setMenuRole(QAction::QuitRole);
}

void Menus::MakeSearch() {
    QMenu* search = AddMenu("mnuSearch", tr("&Search"));
    AddChoice(search, "mnuSea1"_L1, tr("&Forward"), tr("Search from the start only"));
    AddChoice(search, "mnuSea2"_L1, tr("&Backward"), tr("Search from the goals only"));
    AddChoice(search, "mnuSea3"_L1, tr("B&oth"), tr("Search from both ends"));
}

void Menus::MakeExamples() {
    QMenu* examples = AddMenu("mnuExample", tr("E&xamples"));
    for (const Example& example : kExamples) {
        if (example.Index == 5) examples->addSeparator();
        AddEntry(examples, QStringLiteral("mnuEx%1").arg(example.Index), tr(example.Caption),
                 QLatin1String(example.File));
    }
    examples->addSeparator();
    AddEntry(examples, "mnuEx10"_L1, tr("&Other"), tr("Read a file of a given name"));
    AddEntry(examples, "mnuEx11"_L1, tr("&Next"), tr("The next number of that name"));
}

void Menus::MakeOptimizer() {
    QMenu* optimizer = AddMenu("mnuOptimizer", tr("&Optimizer"));
    AddChoice(optimizer, "mnuOpt0"_L1, tr("&None (0)"), tr("Moves do not count"));
    AddChoice(optimizer, "mnuOpt1"_L1, tr("&Something (1)"), tr("Best moves met by the search"));
    AddChoice(optimizer, "mnuOpt2"_L1, tr("Something &more (2)"),
              tr("Improve the moves after the search"));
    AddChoice(optimizer, "mnuOpt3"_L1, tr("Something &plus (3)"),
              tr("Look on for fewer moves with more pushes"));
    AddChoice(optimizer, "mnuOptSpec"_L1, tr("Spe&cial"), tr("Keep more ways to the same place"));
}

void Menus::MakeHash() {
    QMenu* hash = AddMenu("mnuHasher", tr("H&ash"));
    AddChoice(hash, "mnuHash0"_L1, tr("&Default"), tr("The usual hash function"));
    AddChoice(hash, "mnuHash1"_L1, tr("Case &1"), tr("Another hash function"));
    AddChoice(hash, "mnuHash2"_L1, tr("Case &2"), tr("Another step between the slots"));
}

void Menus::MakeHelp() {
    QMenu* help = AddMenu("mnuH", tr("&Help"));
    AddEntry(help, "mnuHlp0"_L1, QStringLiteral("E&spañol"), QStringLiteral("Ayuda en español"));
    AddEntry(help, "mnuHlp1"_L1, QStringLiteral("&Français"), QStringLiteral("Aide en français"));
    AddEntry(help, "mnuHlp2"_L1, tr("&English"), tr("Help in English"))
        ->setShortcut(QKeySequence::HelpContents);
    help->addSeparator();
    AddEntry(help, "mnuHlpInfo"_L1, tr("Show &Info"), tr("The name of the level"));
    AddEntry(help, "mnuHlpAbout"_L1, tr("&About"), tr("About this program"))
        ->setMenuRole(QAction::AboutRole);
}

}  // namespace kavit
