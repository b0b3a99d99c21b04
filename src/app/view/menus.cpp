#include "app/view/menus.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "app/model/examples.h"

namespace kavit {

using Qt::StringLiterals::operator""_L1;

Menus::Menus(QMainWindow* window, RunCommand run)
    : QObject(window), window_(window), run_(std::move(run)) {
    MakeFile();
    MakeSearch();
    MakeExamples();
    MakeOptimizer();
    QAction* configure = window_->menuBar()->addAction(tr("&Configure"));
    configure->setObjectName("mnuConfigure"_L1);
    configure->setToolTip(tr("Sizes, time limit and the solution file"));
    connect(configure, &QAction::triggered, this,
            [this] { run_([](Model& m) { m.Settings.Configure(); }); });
    MakeHash();
    MakePlay();
    MakeDraw();
    MakeView();
    MakeHelp();
}

void Menus::Show(const Screen& screen) {
    const auto check = [](const std::vector<QAction*>& entries, int chosen) {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            entries[i]->setChecked(static_cast<int>(i) == chosen);
        }
    };
    check(searches_, screen.SeaType);
    check(optimizers_, screen.OptLevel);
    check(hashes_, screen.HashCase);
    proved_->setChecked(screen.OptLevel == 3);
    check(shapes_, screen.Shape);
    for (QAction* shape : shapes_) shape->setEnabled(IsEditing(screen.Phase));
    aside_->setChecked(screen.AsideOn);
    dead_->setChecked(screen.ShowDead);
    reach_->setChecked(screen.ShowReach);
    special_->setChecked(screen.OptSpecial);
    for (QAction* action : hidden_) action->setVisible(screen.ExpertMenus);
}

QMenu* Menus::AddMenu(const char* name, const QString& caption) {
    QMenu* menu = window_->menuBar()->addMenu(caption);
    menu->setObjectName(QLatin1String(name));
    menu->setToolTipsVisible(true);
    return menu;
}

QAction* Menus::AddEntry(QMenu* menu, const QString& name, const QString& caption,
                         const QString& tip, Command command, const QKeySequence& keys) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    action->setToolTip(tip);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, command = std::move(command)] {
        if (command) run_(command);
    });
    return action;
}

QAction* Menus::AddChoice(QMenu* menu, const QString& name, const QString& caption,
                          const QString& tip, Command command) {
    QAction* action = AddEntry(menu, name, caption, tip, std::move(command));
    action->setCheckable(true);
    return action;
}

void Menus::MakeFile() {
    QMenu* file = AddMenu("mnuFile", tr("&File"));
    AddEntry(
        file, "mnuOpen0"_L1, tr("&Open File"), tr("Read a level from a file"),
        [](Model& m) { m.Levels.Open(); }, QKeySequence::Open);
    AddEntry(
        file, "mnuOpen1"_L1, tr("&Restart"),
        tr("Show the level as it is now, changes included, without its solution"),
        [](Model& m) { m.Restart(); }, Qt::CTRL | Qt::Key_R);
    AddEntry(
        file, "mnuOpen2"_L1, tr("&Next Level"), tr("The next level file of the folder"),
        [](Model& m) { m.Levels.Step(1); }, Qt::CTRL | Qt::Key_PageDown);
    AddEntry(
        file, "mnuOpen3"_L1, tr("&Previous Level"), tr("The level file of the folder before"),
        [](Model& m) { m.Levels.Step(-1); }, Qt::CTRL | Qt::Key_PageUp);
    file->addSeparator();
    AddEntry(
        file, "mnuSaveLevel"_L1, tr("Sa&ve Level"), tr("Write the level into its file"),
        [](Model& m) { m.Levels.Save(); }, QKeySequence::Save);
    AddEntry(
        file, "mnuSaveLevelAs"_L1, tr("Save Level &As"), tr("Write the level into another file"),
        [](Model& m) { m.Levels.SaveAs(); }, Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    AddEntry(file, "mnuSaveSolution"_L1, tr("Save Sol&ution"), tr("Write the solution file"),
             [](Model& m) { m.Solution.Save(m.Levels.Folder()); });
    AddEntry(file, "mnuSaveCollection"_L1, tr("Save Collec&tion"),
             tr("Write the listed levels with the solutions that are known"),
             [](Model& m) { m.Album.Save(); });
    file->addSeparator();
    AddEntry(
        file, "mnuLevelList"_L1, tr("List o&f Levels"), tr("Show or hide the list of levels"),
        [](Model& m) { m.Album.Toggle(); }, Qt::CTRL | Qt::Key_L);
    AddEntry(
        file, "mnuNextUnsolved"_L1, tr("Next Unsolve&d"), tr("The next level without a mark"),
        [](Model& m) { m.Album.NextUnsolved(); }, Qt::CTRL | Qt::SHIFT | Qt::Key_PageDown);
    AddEntry(file, "mnuSolveAll"_L1, tr("Solve t&he List"),
             tr("Solve all levels of the list that have no mark; again to stop"),
             [](Model& m) { m.Album.SolveAll(); });
    AddEntry(file, "mnuKnown"_L1, tr("Show &Known Solution"),
             tr("The solution that the list has for this level, without a search"),
             [](Model& m) { m.Album.ShowKnown(); });
    file->addSeparator();
    AddEntry(file, "mnuSave"_L1, tr("&Save Configuration"), tr("Keep the settings for next time"),
             [](Model& m) { m.Settings.Save(); });
    file->addSeparator();
    AddEntry(file, "mnuEditBoard"_L1, tr("&Edit Board"), tr("Draw on the board"),
             [](Model& m) { m.Editor.Open(); })
        // F2 as well: Ctrl+E is a cursor key while a text field has the focus.
        ->setShortcuts({Qt::CTRL | Qt::Key_E, Qt::Key_F2});
    AddEntry(
        file, "mnuImport"_L1, tr("&Import"), tr("Paste or type the text of a level"),
        [](Model& m) { m.Import.Open(); }, Qt::CTRL | Qt::Key_I);
    file->addSeparator();
    AddEntry(
        file, "mnuCopyBoard"_L1, tr("Copy &Board"), tr("Put the level on the clipboard as text"),
        [](Model& m) { m.Levels.Copy(); }, Qt::CTRL | Qt::SHIFT | Qt::Key_C);
    AddEntry(
        file, "mnuCopySolution"_L1, tr("&Copy Solution"),
        tr("Put the solution on the clipboard as text"), [](Model& m) { m.Solution.Copy(); },
        QKeySequence::Copy);
    AddEntry(
        file, "mnuPasteLevel"_L1, tr("Paste &Level"), tr("Take the level on the clipboard"),
        [](Model& m) { m.Import.Paste(); }, QKeySequence::Paste);
    file->addSeparator();
    AddEntry(
        file, "mnuExit"_L1, tr("E&xit"), tr("End the program"), [](Model& m) { m.Levels.Exit(); },
        Qt::CTRL | Qt::Key_Q)
        ->setMenuRole(QAction::QuitRole);
}

void Menus::MakeSearch() {
    QMenu* search = AddMenu("mnuSearch", tr("&Search"));
    hidden_.push_back(search->menuAction());
    const auto add = [&](int index, const QString& caption, const QString& tip) {
        return AddChoice(search, QStringLiteral("mnuSea%1").arg(index), caption, tip,
                         [index](Model& m) { m.Choices.SearchChosen(index); });
    };
    QAction* forward = add(1, tr("&Forward"), tr("Search from the start only"));
    QAction* backward = add(2, tr("&Backward"), tr("Search from the goals only"));
    QAction* both = add(3, tr("B&oth"), tr("Search from both ends"));
    searches_ = {both, forward, backward};
}

void Menus::MakeExamples() {
    QMenu* examples = AddMenu("mnuExample", tr("E&xamples"));
    examples->menuAction()->setVisible(false);
    const auto add = [&](int index, const QString& caption, const QString& tip) {
        AddEntry(examples, QStringLiteral("mnuEx%1").arg(index), caption, tip,
                 [index](Model& m) { m.Levels.Example(index); });
    };
    for (const Example& example : kExamples) {
        if (example.Index == 5) examples->addSeparator();
        add(example.Index, tr(example.Caption), QLatin1String(example.File));
    }
    examples->addSeparator();
    add(kExampleOther, tr("&Other"), tr("Read a file of a given name"));
    add(kExampleNext, tr("&Next"), tr("The next number of that name"));
}

void Menus::MakeOptimizer() {
    QMenu* optimizer = AddMenu("mnuOptimizer", tr("&Optimizer"));
    const auto add = [&](const QString& caption, const QString& tip) {
        const int level = static_cast<int>(optimizers_.size());
        optimizers_.push_back(AddChoice(optimizer, QStringLiteral("mnuOpt%1").arg(level), caption,
                                        tip, [level](Model& m) { m.Choices.OptChosen(level); }));
    };
    add(tr("&None (0)"), tr("Moves do not count"));
    add(tr("&Something (1)"), tr("Best moves met by the search"));
    add(tr("Something &more (2)"), tr("Improve the moves after the search"));
    const QString proved =
        tr("Improve the moves after the search, and prove that no solution of as few pushes has "
           "fewer");
    add(tr("Something &plus (3)"), proved);
    // The same for everybody: the entry above belongs to the expert menus.
    proved_ = AddChoice(optimizer, "mnuOptProved"_L1, tr("Fewest moves, pro&ved"), proved,
                        [](Model& m) { m.Choices.OptChosen(3); });
    add(tr("&Fewest moves of all (4)"),
        tr("Find the fewest moves of any solution, with more pushes where that saves moves"));
    special_ = AddChoice(optimizer, "mnuOptSpec"_L1, tr("Spe&cial"),
                         tr("Keep more ways to the same place"),
                         [](Model& m) { m.Choices.SpecialChosen(); });
    hidden_.insert(hidden_.end(), {optimizers_[0], optimizers_[3], special_});
}

void Menus::MakeHash() {
    QMenu* hash = AddMenu("mnuHasher", tr("H&ash"));
    hidden_.push_back(hash->menuAction());
    const auto add = [&](const QString& caption, const QString& tip) {
        const int index = static_cast<int>(hashes_.size());
        hashes_.push_back(AddChoice(hash, QStringLiteral("mnuHash%1").arg(index), caption, tip,
                                    [index](Model& m) { m.Choices.HashChosen(index); }));
    };
    add(tr("&Default"), tr("The usual hash function"));
    add(tr("Case &1"), tr("Another hash function"));
    add(tr("Case &2"), tr("Another step between the slots"));
    add(tr("&Mixed"), tr("The table for large stores; the usual one from 8,000,000 positions on"));
}

void Menus::ShowTheme(int theme) {
    for (std::size_t i = 0; i < themes_.size(); ++i)
        themes_[i]->setChecked(static_cast<int>(i) == theme);
}

void Menus::ShowClosing(bool open) {
    closing_->setChecked(open);
}

void Menus::MakePlay() {
    QMenu* play = AddMenu("mnuPlay", tr("&Play"));
    AddEntry(
        play, "mnuUndo"_L1, tr("&Undo"), tr("Take back the last step, of play or of drawing"),
        [](Model& m) { m.Undo(); }, QKeySequence::Undo);
    AddEntry(play, "mnuRedo"_L1, tr("&Redo"), tr("Do again what was taken back"), [](Model& m) {
        m.Redo();
    })->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    AddEntry(
        play, "mnuUndoPush"_L1, tr("Undo to the Last &Push"), tr("Back to behind a push"),
        [](Model& m) { m.Play.UndoPush(); }, Qt::CTRL | Qt::Key_Backspace);
    AddEntry(
        play, "mnuRedoPush"_L1, tr("Redo to the &Next Push"), tr("On to behind a push"),
        [](Model& m) { m.Play.RedoPush(); }, Qt::CTRL | Qt::SHIFT | Qt::Key_Backspace);
    AddEntry(play, "mnuPlayRestart"_L1, tr("&Back to the Start"),
             tr("Take back all moves; they can be done again"), [](Model& m) { m.Play.Restart(); });
    play->addSeparator();
    AddEntry(
        play, "mnuSolveHere"_L1, tr("&Solve from Here"),
        tr("Solve the position on the board; what was played is kept"),
        [](Model& m) { m.Play.SolveFromHere(); }, Qt::Key_F7);
    play->addSeparator();
    AddEntry(play, "mnuCopyPlayed"_L1, tr("&Copy Played Moves"),
             tr("Put the moves up to here on the clipboard"), [](Model& m) { m.Play.Copy(); });
    AddEntry(play, "mnuSavePlayed"_L1, tr("Save Played &Moves"),
             tr("Write the level and the moves up to here to a file"),
             [](Model& m) { m.Play.Save(); });
}

void Menus::MakeDraw() {
    QMenu* draw = AddMenu("mnuDraw", tr("&Draw"));
    const auto add = [&](const QString& caption, const QString& tip, const QKeySequence& keys) {
        const auto shape = static_cast<EditorControl::Shape>(shapes_.size());
        shapes_.push_back(AddChoice(draw, QStringLiteral("mnuShape%1").arg(shapes_.size()), caption,
                                    tip, [shape](Model& m) { m.Editor.SelectShape(shape); }));
        shapes_.back()->setShortcut(keys);
    };
    add(tr("&Pen"), tr("Draw square by square"), Qt::ALT | Qt::Key_1);
    add(tr("&Rectangle"), tr("Draw the outline of a room from corner to corner"),
        Qt::ALT | Qt::Key_2);
    add(tr("&Fill"), tr("Fill all squares of a kind that hang together"), Qt::ALT | Qt::Key_3);
    draw->addSeparator();
    aside_ = AddChoice(draw, "mnuAside"_L1, tr("&Solve while Drawing"),
                       tr("After each pause, solve what is drawn within small limits"),
                       [](Model& m) { m.Aside.Turn(); });
}

void Menus::MakeView() {
    QMenu* view = AddMenu("mnuView", tr("&View"));
    dead_ = AddChoice(view, "mnuDead"_L1, tr("&Dead Squares"),
                      tr("Hatch the squares from which no box reaches a goal"),
                      [](Model& m) { m.Play.TurnDead(); });
    dead_->setShortcut(Qt::Key_F3);
    reach_ = AddChoice(view, "mnuReach"_L1, tr("&Reach of a Box"),
                       tr("Dot the squares that the box under the pointer can be pushed to"),
                       [](Model& m) { m.Play.TurnReach(); });
    reach_->setShortcut(Qt::Key_F4);
    closing_ = AddChoice(view, "mnuClosing"_L1, tr("&Figures of the Search"),
                         tr("What the last search took, and its positions by layer"), {});
    closing_->setShortcut(Qt::Key_F8);
    connect(closing_, &QAction::toggled, this, &Menus::ClosingChosen);
    view->addSeparator();
    const auto add = [&](const QString& caption, const QString& tip) {
        const int theme = static_cast<int>(themes_.size());
        themes_.push_back(
            AddChoice(view, QStringLiteral("mnuTheme%1").arg(theme), caption, tip, {}));
        connect(themes_.back(), &QAction::triggered, this,
                [this, theme] { emit ThemeChosen(theme); });
    };
    add(tr("Colours of the &System"), tr("Light or dark, as the desktop is"));
    add(tr("&Light"), tr("Dark text on a light ground"));
    add(tr("Dar&k"), tr("Light text on a dark ground"));
}

void Menus::MakeHelp() {
    QMenu* help = AddMenu("mnuH", tr("&Help"));
    const auto add = [&](const QString& name, const QString& caption, const QString& tip,
                         int topic) {
        return AddEntry(help, name, caption, tip, [topic](Model& m) { m.ShowHelp(topic); });
    };
    add("mnuHlp0"_L1, QStringLiteral("E&spañol"), QStringLiteral("Ayuda en español"), 1);
    add("mnuHlp1"_L1, QStringLiteral("&Français"), QStringLiteral("Aide en français"), 2);
    add("mnuHlp2"_L1, tr("&English"), tr("Help in English"), 3)
        ->setShortcut(QKeySequence::HelpContents);
    help->addSeparator();
    add("mnuHlpInfo"_L1, tr("Show &Info"), tr("The name of the level"), 4);
    add("mnuHlpAbout"_L1, tr("&About"), tr("About this program"), 5)
        ->setMenuRole(QAction::AboutRole);
}

}  // namespace kavit
