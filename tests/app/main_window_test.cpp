#include "app/view/main_window.h"
#include "app/view/layer_chart.h"
#include "app/view/theme.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <memory>

#include "app/box_catcher.h"
#include "app/view/board_view.h"
#include "support/levels.h"
#include "support/temp_folder.h"

namespace {

using kavit::test::kEasy;
using kavit::test::kLong;

// The menus in their order, each entry by its name.
constexpr const char* kMenus =
    "mnuOpen0=Open File, mnuOpen1=Restart, mnuOpen2=Next Level, mnuOpen3=Previous Level, "
    "mnuSaveLevel=Save Level, mnuSaveLevelAs=Save Level As, mnuSaveSolution=Save Solution, "
    "mnuSaveCollection=Save Collection, mnuLevelList=List of Levels, "
    "mnuNextUnsolved=Next Unsolved, mnuSolveAll=Solve the List, mnuKnown=Show Known Solution, "
    "mnuSave=Save Configuration, mnuEditBoard=Edit Board, mnuImport=Import, "
    "mnuCopyBoard=Copy Board, mnuCopySolution=Copy Solution, mnuPasteLevel=Paste Level, "
    "mnuExit=Exit\n"
    "mnuSea1=Forward, mnuSea2=Backward, mnuSea3=Both\n"
    "mnuEx1=First steps, mnuEx2=Corner shop, mnuEx3=Two rooms, mnuEx5=Warehouse, "
    "mnuEx6=Crossing, mnuEx7=Long way, mnuEx8=Masterpiece, mnuEx10=Other, mnuEx11=Next\n"
    "mnuOpt0=hidden None (0), mnuOpt1=Something (1), mnuOpt2=Something more (2), "
    "mnuOpt3=hidden Something plus (3), mnuOptProved=Fewest moves, proved, "
    "mnuOpt4=Fewest moves of all (4), mnuOptSpec=hidden Special\n"
    "mnuConfigure=Configure\n"
    "mnuHash0=Default, mnuHash1=Case 1, mnuHash2=Case 2, mnuHash3=Mixed\n"
    "mnuUndo=Undo, mnuRedo=Redo, mnuUndoPush=Undo to the Last Push, "
    "mnuRedoPush=Redo to the Next Push, mnuPlayRestart=Back to the Start, "
    "mnuSolveHere=Solve from Here, mnuCopyPlayed=Copy Played Moves, "
    "mnuSavePlayed=Save Played Moves\n"
    "mnuShape0=Pen, mnuShape1=Rectangle, mnuShape2=Fill, mnuAside=Solve while Drawing\n"
    "mnuDead=Dead Squares, mnuReach=Reach of a Box, mnuClosing=Figures of the Search, "
    "mnuTheme0=Colours of the System, mnuTheme1=Light, mnuTheme2=Dark\n"
    "mnuHlp0=Español, mnuHlp1=Français, mnuHlp2=English, mnuHlpInfo=Show Info, "
    "mnuHlpAbout=About";

// The controls by the names that users' scripts know them by.
constexpr const char* kControls =
    "btnSOLVE btnANIM btnCLEAR txtLeft txtRight lblTimer lblSeaTimer PBarAdvance lblOpt lblSize "
    "lblDebug txtNow txtIni frmCommands frmSizes cmbMemory cmbBlocks cmbTime chkWriteSol "
    "chkNoWriteSol frmbtnApply frmbtnCancel rtxtImport TimerWatch TimerAnim OptMovPus0 OptMovPus1 "
    "mnuFile mnuSearch mnuExample mnuOptimizer mnuHasher mnuH btnMover0 btnMover4 btnSpMov0 "
    "btnSpMov4 ImgEdit0 ImgEdit9";

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

  private:
    template <typename T = QPushButton>
    T* Find(const char* name) {
        T* found = window_->findChild<T*>(QLatin1String(name));
        if (found == nullptr) qFatal("no %s", name);
        return found;
    }
    kavit::BoardView* Board() { return window_->findChild<kavit::BoardView*>(); }
    QString Caption(const char* name) { return Find(name)->text(); }
    QString Line(const char* name) { return Find<QLineEdit>(name)->text(); }
    void Click(const char* name, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Find(name), button);
    }
    void Choose(const char* name) { Find<QAction>(name)->trigger(); }
    void Open(const char* name, const char* text) {
        window_->OpenGiven(folder_->Write(name, text));
    }
    // SOLVE, and the wait for its end.
    void Solve() {
        Click("btnSOLVE");
        QTRY_VERIFY_WITH_TIMEOUT(Caption("btnSOLVE") != QString("STOP"), 60000);
    }
    void Drop(const std::string& file) {
        QMimeData mime;
        mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(file))});
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window_.get(), &enter);
        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window_.get(), &drop);
        QTest::qWait(1);
    }

    std::unique_ptr<TempFolder> folder_;
    std::unique_ptr<BoxCatcher> boxes_;
    std::unique_ptr<kavit::MainWindow> window_;

  private slots:
    void initTestCase() { QApplication::setApplicationVersion("9.8.7"); }
    void init() {
        QSettings(QSettings::IniFormat, QSettings::UserScope, "kavit", "window").clear();
        folder_ = std::make_unique<TempFolder>();
        folder_->Write("Kavit.ini", " 2000000  8  300  1  0  1 \r\n");
        boxes_ = std::make_unique<BoxCatcher>();
        window_ = std::make_unique<kavit::MainWindow>("kavit", folder_->Path());
        QCOMPARE(window_->Load(), std::string());
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup() {
        QVERIFY(boxes_->Plain);
        window_.reset();
    }

    void controlsAndMenus() {
        for (const QString& name : QString(kControls).split(' ')) {
            QVERIFY2(window_->findChild<QObject*>(name), qPrintable(name));
        }
        // What each menu holds, by name and caption.
        const auto read = [](const QAction* action) {
            const QString text = action->text().remove('&').section('\t', 0, 0);
            return action->objectName() + (action->isVisible() ? "=" : "=hidden ") + text;
        };
        QStringList menus;
        for (const QAction* top : window_->menuBar()->actions()) {
            QStringList entries;
            if (top->menu() == nullptr) entries += read(top);
            for (const QAction* entry : top->menu() ? top->menu()->actions() : QList<QAction*>())
                if (!entry->isSeparator()) entries += read(entry);
            menus += entries.join(", ");
        }
        QCOMPARE(menus.join("\n"), QString(kMenus));
        // No two visible entries of a menu answer to the same letter.
        for (QMenu* menu : window_->menuBar()->findChildren<QMenu*>()) {
            QString letters;
            for (const QAction* action : menu->actions()) {
                const qsizetype at = action->text().indexOf('&');
                QVERIFY2(at >= 0 || action->isSeparator() || menu->objectName() == "mnuExample",
                         qPrintable(action->text()));
                if (at < 0) continue;
                const QChar letter = action->text().at(at + 1).toLower();
                QVERIFY2(!letters.contains(letter), qPrintable(action->text()));
                letters += letter;
            }
        }
        for (int tool = 0; tool < 10; ++tool) {
            const std::string name = "ImgEdit" + std::to_string(tool);
            const auto* button = Find<QToolButton>(name.c_str());
            QVERIFY(!button->accessibleName().isEmpty());
            const auto shown = [button](QIcon::State state) {
                return button->icon().pixmap(button->iconSize(), QIcon::Normal, state).toImage();
            };
            QVERIFY(shown(QIcon::On) != shown(QIcon::Off));
        }
        for (const char* hidden : {"OptMovPus0", "OptMovPus1", "frmSizes", "frmCommands"}) {
            QVERIFY(!Find<QWidget>(hidden)->isVisible());
        }
        QCOMPARE(window_->windowTitle(), QString("kavit"));
    }

    void boardGrows() {
        window_->resize(100, 100);
        QTest::qWait(20);
        QVERIFY(Board()->CellRect(0).width() >= 22);
        window_->resize(1400, 1000);
        QTest::qWait(20);
        QVERIFY(Board()->CellRect(0).width() > 40);
        QVERIFY(Board()->rect().contains(Board()->CellRect(322)));
    }

    // The keyboard goes to the button that is pressed next, never to a status line: Ctrl+C copies
    // the solution wherever it was before.
    void focus() {
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        Open("a.xsb", kEasy);
        Solve();
        const std::pair<const char*, std::function<void()>> steps[] = {
            {"btnSOLVE",
             [&] {
                 Choose("mnuImport");
                 Click("btnSOLVE");
             }},
            {"btnSOLVE",
             [&] {
                 Choose("mnuImport");
                 QTest::keyClick(window_.get(), Qt::Key_Escape);
             }},
            {"btnSOLVE",
             [&] {
                 Choose("mnuConfigure");
                 Click("frmbtnCancel");
             }},
            {"btnSOLVE",
             [&] {
                 Choose("mnuConfigure");
                 Find<QComboBox>("cmbBlocks")->setEditText("9");
                 Click("frmbtnApply");
             }},
            {"frmbtnCancel", [&] { Choose("mnuConfigure"); }},
        };
        for (const auto& [name, step] : steps) {
            step();
            QVERIFY2(QApplication::focusWidget() == Find<QWidget>(name),
                     qPrintable(QApplication::focusWidget()->objectName()));
            QApplication::clipboard()->clear();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
            QCOMPARE(QApplication::clipboard()->text(), QString("rRR"));
        }
        for (int i = 0; i < 40; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QVERIFY(!QApplication::focusWidget()->objectName().startsWith("txt"));
        }
    }

    void solveTextReturnAnimate() {
        Open("a.xsb", kEasy);
        QCOMPARE(Line("txtLeft"), QString("You can edit this board (Menu File)"));
        Solve();
        QCOMPARE(Caption("btnSOLVE"), QString("TEXT"));
        QCOMPARE(Line("txtLeft"), QString("Solution:  3/2"));
        QCOMPARE(QApplication::clipboard()->text(), QString("rRR"));
        Click("btnSOLVE");
        auto* text = Find<QPlainTextEdit>("rtxtImport");
        QVERIFY(text->isVisible() && text->isReadOnly());
        QVERIFY(text->toPlainText().contains("#@ $ .#"));
        QCOMPARE(Caption("btnSOLVE"), QString("RETURN"));
        text->setFocus();
        text->selectAll();
        QTest::keyClick(text, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().contains("RESULT:  3/ 2"));
        Click("btnSOLVE");
        QVERIFY(!text->isVisible());
        Find<QTimer>("TimerAnim")->setInterval(5);
        Click("btnANIM");
        QCOMPARE(Caption("btnANIM"), QString("STOP"));
        QTRY_COMPARE(Caption("btnANIM"), QString("REPEAT"));
        QCOMPARE(Line("txtRight"), QString("Moves:  3/3"));
        QCOMPARE(Board()->PictureAt(24), kavit::Picture::BoxOnGoal);
        // Right starts again, left goes on.
        Find<QTimer>("TimerAnim")->setInterval(3600000);
        Click("btnANIM", Qt::RightButton);
        QCOMPARE(Board()->PictureAt(20), kavit::Picture::ManDown);
        QCOMPARE(Caption("btnANIM"), QString("STOP"));
        QTest::keyClick(window_.get(), Qt::Key_F6);
        Find<QTimer>("TimerAnim")->setInterval(5);
        QTRY_COMPARE(Caption("btnANIM"), QString("CONT< >REPEAT"));
        QTest::keyClick(window_.get(), Qt::Key_F6, Qt::ShiftModifier);
        QCOMPARE(Caption("btnANIM"), QString("STOP"));
    }

    // STOP, the close button, Exit and a dropped file in the middle of a search.
    void windowStaysAliveWhileSolving() {
        Open("long.xsb", kavit::test::kEndless);
        Find<QComboBox>("cmbBlocks")->setEditText("20");
        Click("frmbtnApply");
        const std::string other = folder_->Write("other.xsb", kEasy);
        Click("btnSOLVE");
        QCOMPARE(window_->windowTitle(), QString("Solving long"));
        QTRY_VERIFY(Line("txtLeft").startsWith("Solver is now thinking"));
        QTRY_VERIFY(Find<QLabel>("lblDebug")->text().startsWith("Pos.Count = "));
        const QString running = "Solver is running";
        const std::pair<std::function<void()>, QString> refused[] = {
            {[&] { window_->close(); }, running},
            {[&] { Drop(other); }, running},
            {[&] { Choose("mnuExit"); }, running},
            {[&] { Choose("mnuConfigure"); }, "Can't change; " + running}};
        for (const auto& [action, box] : refused) {
            action();
            QTest::qWait(5);
            QVERIFY(window_->isVisible());
            QCOMPARE(boxes_->Take(), box);
            QTest::qWait(20);
        }
        QCOMPARE(Caption("btnSOLVE"), QString("STOP"));
        QVERIFY(Find<QTimer>("TimerWatch")->isActive());
        Click("btnSOLVE");
        QTRY_COMPARE(Caption("btnSOLVE"), QString("SOLVE"));
        QCOMPARE(Line("txtLeft"), QString("Interrupted by user !"));
        QCOMPARE(window_->windowTitle(), QString("kavit long"));
        QVERIFY(!Find<QTimer>("TimerWatch")->isActive());
        Drop(other);
        QCOMPARE(window_->windowTitle(), QString("kavit other"));
        window_->close();
        QVERIFY(!window_->isVisible());
    }

    // A window that goes away in the middle of a search takes the search with it.
    void goesWhileSolving() {
        Open("long.xsb", kLong);
        Click("btnSOLVE");
        window_.reset();
    }

    void expertMenus() {
        for (const char* tool : {"ImgEdit2", "ImgEdit3", "ImgEdit1"}) {
            QTest::mouseClick(Find<QToolButton>(tool), Qt::LeftButton);
            QVERIFY(!Find<QToolButton>(tool)->isChecked());
        }
        QVERIFY(!Find<QMenu>("mnuSearch")->menuAction()->isVisible());
        QTest::mouseDClick(Find<QLabel>("lblOpt"), Qt::LeftButton);
        QVERIFY(boxes_->Take().startsWith("You found an EsterEgg"));
        for (const char* menu : {"mnuSearch", "mnuHasher"}) {
            QVERIFY(Find<QMenu>(menu)->menuAction()->isVisible());
        }
        QVERIFY(!Find<QMenu>("mnuExample")->menuAction()->isVisible());
        Choose("mnuSea2");
        QVERIFY(Find<QAction>("mnuSea2")->isChecked() && !Find<QAction>("mnuSea3")->isChecked());
        Choose("mnuSea2");
        QVERIFY(Find<QAction>("mnuSea2")->isChecked());
        Choose("mnuOptSpec");  // does nothing at level 1
        QVERIFY(!Find<QAction>("mnuOptSpec")->isChecked());
        Choose("mnuOpt3");
        Choose("mnuOptSpec");
        QVERIFY(Find<QLabel>("lblOpt")->font().underline());
        Open("a.xsb", kEasy);
        Solve();
        QCOMPARE(Line("txtLeft"), QString("Best solution   3/2"));
        QVERIFY(Find<QLabel>("lblDebug")->text().contains("fewest moves proved"));
    }

    void drawWithTheMouse() {
        Choose("mnuEditBoard");
        const auto at = [&](int cell) { return Board()->CellRect(cell).center(); };
        const auto paint = [&](const char* tool, int cell) {
            QTest::mouseClick(Find<QToolButton>(tool), Qt::LeftButton);
            QTest::mouseClick(Board(), Qt::LeftButton, {}, at(cell));
        };
        for (const int row : {0, 2}) {
            QTest::mousePress(Board(), Qt::LeftButton, {}, at(row * 19));
            for (const int x : {1, 5}) {  // a pointer in a hurry
                QMouseEvent move(QEvent::MouseMove, at(row * 19 + x),
                                 Board()->mapToGlobal(at(row * 19 + x)), Qt::NoButton,
                                 Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(Board(), &move);
            }
            QTest::mouseRelease(Board(), Qt::LeftButton, {}, at(row * 19 + 5));
        }
        paint("ImgEdit4", 19);
        paint("ImgEdit4", 24);
        paint("ImgEdit5", 20);
        paint("ImgEdit2", 22);
        paint("ImgEdit1", 23);
        paint("ImgEdit4", 60);
        QTest::mouseClick(Board(), Qt::RightButton, {}, at(60));  // erases
        QCOMPARE(Board()->PictureAt(60), kavit::Picture::Floor);
        paint("ImgEdit0", 20);
        QCOMPARE(boxes_->Take(), QString("You can't erase the Man"));
        Click("btnMover4");
        Click("btnSpMov1");
        Click("btnANIM");
        QCOMPARE(Caption("btnSOLVE"), QString("SOLVE"));
        Solve();
        QCOMPARE(Line("txtLeft"), QString("Solution:  2/1"));
        QCOMPARE(QApplication::clipboard()->text(), QString("lL"));
        Choose("mnuEditBoard");
        paint("ImgEdit3", 60);
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        QTest::keyClick(window_.get(), Qt::Key_Escape);
        QCOMPARE(boxes_->Take(), QString("Undo all changes since the editing began?"));
        Click("btnANIM");
        Choose("mnuCopyBoard");
        QVERIFY(QApplication::clipboard()->text().contains("#.$ @#"));
        QVERIFY(!QApplication::clipboard()->text().contains('*'));
    }

    // Keys go to the game while the focus stands on a button, and to the replay behind a solve.
    void playWithKeys() {
        Open("room.xsb", "#######\n#@ $ .#\n#     #\n#######\n");
        const auto press = [&](std::initializer_list<int> keys) {
            for (const int key : keys)
                QTest::keyClick(window_->focusWidget(), static_cast<Qt::Key>(key));
        };
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Backspace});
        QCOMPARE(Line("txtRight"), QString("Moves: 1"));
        Choose("mnuRedo");
        QCOMPARE(Board()->PictureAt(22), kavit::Picture::ManRight);
        Choose("mnuSolveHere");
        QTRY_COMPARE(Caption("btnSOLVE"), QString("TEXT"));
        QCOMPARE(Line("txtRight"), QString("1 push so far, 1 to go, best 2"));
        QVERIFY(Find<QWidget>("frmReplay")->isVisible());
        Board()->setFocus();
        press({Qt::Key_End});
        QCOMPARE(Find<QSlider>("sldMoves")->value(), 1);
        QCOMPARE(Board()->PictureAt(24), kavit::Picture::BoxOnGoal);
        Find<QSlider>("sldMoves")->setValue(0);
        QCOMPARE(Caption("btnANIM"), QString("ANIM"));
        press({Qt::Key_Space});
        QTRY_COMPARE(Caption("btnANIM"), QString("REPEAT"));
        QTest::mouseClick(Find<QToolButton>("btnFirst"), Qt::LeftButton);
        emit Find<QComboBox>("cmbArrows")->activated(0);
        press({Qt::Key_Backspace});
        QCOMPARE(Line("txtRight"), QString("Moves: 1"));
        // A click walks, two push.
        const auto click = [&](int cell) {
            QTest::mouseClick(Board(), Qt::LeftButton, {}, Board()->CellRect(cell).center());
        };
        click(43);
        QCOMPARE(Board()->PictureAt(43), kavit::Picture::ManRight);
        click(22);
        click(21);
        QCOMPARE(Board()->PictureAt(21), kavit::Picture::Box);
    }

    void drawWithTheKeyboard() {
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        Choose("mnuAside");
        Choose("mnuEditBoard");
        QVERIFY(Board()->hasFocus());
        const auto press = [&](const QString& keys, Qt::KeyboardModifiers with = {}) {
            const QHash<QChar, Qt::Key> names = {{'l', Qt::Key_Left},  {'d', Qt::Key_Down},
                                                 {'r', Qt::Key_Right}, {'u', Qt::Key_Up},
                                                 {' ', Qt::Key_Space}, {'x', Qt::Key_Delete}};
            for (const QChar key : keys) QTest::keyClick(Board(), names.value(key), with);
        };
        press(QString(20, 'u') + QString(20, 'l'));  // to the corner, and no further
        press("rrrr", Qt::ShiftModifier);
        press("dd", Qt::ShiftModifier);
        press("llll", Qt::ShiftModifier);
        press("uu", Qt::ShiftModifier);
        const auto put = [&](int tool, const QString& keys) {
            QTest::keyClick(Board(), static_cast<Qt::Key>(Qt::Key_0 + tool));
            press(keys);
        };
        put(5, "dr ");
        put(2, "r ");
        put(1, "r  ");
        put(2, "d x");
        QVERIFY(Line("txtRight").contains("wall open"));
        Choose("mnuUndo");
        Choose("mnuUndo");
        QCOMPARE(Line("txtRight"), QString());
        QTRY_COMPARE(Find<QLabel>("lblAside")->text(), QString("Solution: 1/1"));
        Click("btnANIM");
        Choose("mnuCopyBoard");
        QCOMPARE(QApplication::clipboard()->text().remove('\r'), QString("#####\n#@$.#\n#####\n"));
    }

    // Everything that takes the keyboard says what it is.
    void accessibleNames() {
        Open("room.xsb", kEasy);
        Solve();
        Choose("mnuClosing");
        int controls = 0;
        const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* at) {
            if (at->state().invisible || at->role() == QAccessible::ScrollBar) return;
            if (at->state().focusable) {
                ++controls;
                const QByteArray what = at->object() ? at->object()->objectName().toUtf8() : "?";
                QVERIFY2(!at->text(QAccessible::Name).isEmpty(), what);
                QVERIFY2(at->role() != QAccessible::NoRole, what);
            }
            for (int i = 0; i < at->childCount(); ++i)
                if (QAccessibleInterface* child = at->child(i)) walk(child);
        };
        walk(QAccessible::queryAccessibleInterface(window_.get()));
        QVERIFY2(controls > 20, qPrintable(QString::number(controls)));
        // Tab comes to all of them, and the board is among them.
        QSet<QWidget*> seen;
        for (QWidget* at = window_->nextInFocusChain(); !seen.contains(at);
             at = at->nextInFocusChain())
            seen.insert(at);
        QVERIFY(seen.contains(Board()) && Board()->focusPolicy() == Qt::StrongFocus);
    }

    // Texts stand out from their grounds, in both themes: 4.5 to 1 and more.
    void contrast() {
        const auto light = [](const QColor& colour) {
            const auto part = [](double c) {
                return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
            };
            return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
                   0.0722 * part(colour.blueF());
        };
        using P = QPalette;
        const std::pair<P::ColorRole, P::ColorRole> pairs[] = {{P::WindowText, P::Window},
                                                               {P::Text, P::Base},
                                                               {P::ButtonText, P::Button},
                                                               {P::ToolTipText, P::Base},
                                                               {P::PlaceholderText, P::Base},
                                                               {P::HighlightedText, P::Highlight},
                                                               {P::Link, P::Base}};
        for (const auto theme : {kavit::Theme::Light, kavit::Theme::Dark}) {
            const QPalette palette = kavit::PaletteOf(theme);
            QCOMPARE(kavit::IsDark(palette), theme == kavit::Theme::Dark);
            for (const auto group : {P::Active, P::Disabled}) {
                for (const auto& [text, ground] : pairs) {
                    const double a = light(palette.color(group, text));
                    const double b = light(palette.color(group, ground));
                    const double ratio = (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
                    QVERIFY2(ratio >= 4.5,
                             qPrintable(QString("%1 on %2: %3").arg(text).arg(ground).arg(ratio)));
                }
            }
        }
        Choose("mnuTheme2");
        QTRY_VERIFY(kavit::IsDark(window_->palette()));
        const QImage dark = Board()->grab().toImage();
        Choose("mnuTheme1");
        QTRY_VERIFY(!kavit::IsDark(window_->palette()));
        QVERIFY(Board()->grab().toImage() != dark);
        Choose("mnuTheme0");
    }

    void chartIsSaved() {
        Open("a.xsb", kEasy);
        Solve();
        auto* chart = window_->findChild<kavit::LayerChart*>();
        for (const char* name : {"layers.csv", "layers.svg", "layers.png"}) {
            const QString file = QString::fromStdString(folder_->Path(name));
            QCOMPARE(chart->Save(file), QString());
            QVERIFY(QFileInfo(file).size() > 20);
        }
        QVERIFY(chart->Csv().startsWith("layer,forward,backward\n0,1,"));
        QVERIFY(chart->Save("layers.xyz").contains("layers.xyz"));
        QVERIFY(!chart->Save("/nowhere/layers.png").isEmpty());
    }

    void importAndPaste() {
        Choose("mnuImport");
        QTest::keyClicks(Find<QPlainTextEdit>("rtxtImport"), "#####");
        QTest::keyClick(Find<QPlainTextEdit>("rtxtImport"), Qt::Key_Return);
        QTest::keyClicks(Find<QPlainTextEdit>("rtxtImport"), "#@$.#");
        QTest::keyClick(Find<QPlainTextEdit>("rtxtImport"), Qt::Key_Return);
        QTest::keyClicks(Find<QPlainTextEdit>("rtxtImport"), "#####");
        Click("btnSOLVE");
        QCOMPARE(Board()->PictureAt(21), kavit::Picture::Box);
        Solve();
        QCOMPARE(Line("txtLeft"), QString("Solution:  1/1"));
        QApplication::clipboard()->setText(kEasy);
        Choose("mnuPasteLevel");
        QCOMPARE(Board()->PictureAt(24), kavit::Picture::Goal);
        QCOMPARE(Caption("btnSOLVE"), QString("SOLVE"));
    }

    // A collection is listed; a click in the list opens a level, and the list can be closed.
    void listOfLevels() {
        Open("album.txt", (std::string(kEasy) + "\n#####\n#@$.#\n#####\nTitle: <b>Two\n").c_str());
        auto* dock = Find<QDockWidget>("dckLevels");
        QVERIFY(dock->isVisible());
        auto* table = dock->findChild<QTableView*>();
        QCOMPARE(table->model()->rowCount(), 2);
        QCOMPARE(window_->windowTitle(), QString("kavit album-1"));
        table->setCurrentIndex(table->model()->index(1, 1));
        QCOMPARE(window_->windowTitle(), QString("kavit album-2"));
        Solve();
        QCOMPARE(table->model()->index(1, 4).data().toString(), QString("1/1"));
        Choose("mnuSolveAll");
        QTRY_COMPARE(table->model()->index(0, 4).data().toString(), QString("2/3"));
        Choose("mnuLevelList");
        QVERIFY(!dock->isVisible());
        Choose("mnuLevelList");
        QVERIFY(dock->isVisible());
    }

    // Names and texts of the user's show as written.
    void nothingIsMarkup() {
        Open("<b>x & y[*].xsb", "#####\n#<$.#\n#####\n");
        QCOMPARE(boxes_->Take(), QString("Invalid char '<' in Xsb; Assumed Space\n\nOK reads on, "
                                         "Cancel ends the program."));
        QVERIFY(window_->windowTitle().contains("<b>x & y"));
        Choose("mnuHlpInfo");
        auto* help = Find<QDialog>("HelpForm");
        QVERIFY(help->findChild<QPlainTextEdit*>()->toPlainText().contains("<b>x & y[*]"));
        for (const char* topic : {"mnuHlp0", "mnuHlp1", "mnuHlp2", "mnuHlpAbout"}) {
            Choose(topic);
            QVERIFY(help->findChild<QPlainTextEdit*>()->toPlainText().size() > 100);
        }
        QVERIFY(help->findChild<QPlainTextEdit*>()->toPlainText().contains("Kavit 9.8.7"));
        QTest::mouseClick(help->findChild<QPushButton*>("btnClose"), Qt::LeftButton);
        QVERIFY(!help->isVisible());
        for (const QLabel* label : window_->findChildren<QLabel*>()) {
            if (label->objectName().startsWith("lbl")) {
                QCOMPARE(label->textFormat(), Qt::PlainText);
            }
        }
    }

    void solutionIsSavedUnderTheNameAsWritten() {
        Find<QAbstractButton>("chkNoWriteSol")->click();
        boxes_->OnDialog = [](QDialog* dialog) { dialog->accept(); };
        boxes_->Answer = QMessageBox::Yes;
        for (const char* box : {"", "<b>my \"best\" &amp; %1.sol exists already. Replace it?"}) {
            Open("<b>my \"best\" &amp; %1.xsb", kEasy);
            Solve();
            QCOMPARE(boxes_->Take(), QString(box));
            QVERIFY(std::filesystem::exists(folder_->Path("<b>my \"best\" &amp; %1.sol")));
        }
    }

    void openDialogAndSettings() {
        folder_->Write("lev2.xsb", kEasy);
        folder_->Write("lev10.xsb", kEasy);
        boxes_->OnDialog = [&](QDialog* dialog) {
            QCOMPARE(dialog->objectName(), QString("CommonDialog1"));
            auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
            for (const QString& refused : {QString("levels"), QString(120, 'x')}) {
                name->setText(refused);
                dialog->accept();
                QVERIFY(dialog->isVisible());
            }
            QCOMPARE(static_cast<QFileDialog*>(dialog)->directory().dirName(), QString("levels"));
            static_cast<QFileDialog*>(dialog)->setDirectory(folder_->Path().c_str());
            name->setText("lev2.xsb");
            dialog->accept();
        };
        std::filesystem::create_directory(folder_->Path("levels"));
        Choose("mnuOpen0");
        boxes_->OnDialog = nullptr;
        const QString said = boxes_->Take().remove(QChar(0x200B));  // where a long word may break
        QVERIFY2(said.startsWith("file ") && said.endsWith("xxx Not found"), qPrintable(said));
        QCOMPARE(window_->windowTitle(), QString("kavit lev2"));
        Choose("mnuOpen2");
        QCOMPARE(window_->windowTitle(), QString("kavit lev10"));

        Choose("mnuConfigure");
        QVERIFY(Find("frmbtnCancel")->isVisible());
        Find<QComboBox>("cmbTime")->setEditText("100");
        Find<QComboBox>("cmbMemory")->setEditText("300000");
        Click("frmbtnApply");
        QVERIFY(!Find<QWidget>("frmSizes")->isVisible());
        QCOMPARE(Find<QLabel>("lblSize")->text(), QString("300000/8"));
        // Neither switch: asked for the file. Its name comes with the level's.
        QTest::mouseClick(Find<QAbstractButton>("chkNoWriteSol"), Qt::LeftButton);
        boxes_->OnDialog = [&](QDialog* dialog) {
            QCOMPARE(dialog->objectName(), QString("dlgSaveSolution"));
            auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
            QCOMPARE(name->text(), QString("lev10.sol"));
            name->setText("kept");
            dialog->accept();
        };
        Solve();
        QVERIFY(folder_->Read("kept.sol").starts_with("rRR"));
        boxes_->OnDialog = [&](QDialog* dialog) {
            static_cast<QInputDialog*>(dialog)->setTextValue("lev2");
            dialog->accept();
        };
        Choose("mnuEx10");
        QCOMPARE(window_->windowTitle(), QString("kavit lev2"));
        QTest::mouseClick(Find<QAbstractButton>("chkWriteSol"), Qt::LeftButton);
        Choose("mnuSave");
        QCOMPARE(folder_->Read("Kavit.ini"), std::string(" 300000  8  100  1  1  0 \r\n"));
        // The next session asks where this one opened its level.
        window_.reset();
        window_ = std::make_unique<kavit::MainWindow>("kavit", folder_->Path("levels"));
        QCOMPARE(window_->Load(), std::string());
        boxes_->OnDialog = [&](QDialog* dialog) {
            QCOMPARE(static_cast<QFileDialog*>(dialog)->directory(), QDir(folder_->Path().c_str()));
            dialog->reject();
        };
        Choose("mnuOpen0");
    }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
