#include "app/view/main_window.h"
#include "app/view/layer_chart.h"
#include "app/view/level_list.h"
#include "app/view/preferences.h"
#include "app/view/replay_bar.h"
#include "app/view/theme.h"

#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QHelpEvent>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMetaMethod>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <memory>

#include "app/box_catcher.h"
#include "app/view/board_view.h"
#include "support/levels.h"
#include "support/temp_folder.h"

namespace {

using kavit::test::kEasy;
using kavit::test::kLong;

// What an object of the window may have been told.
constexpr const char* kProperties =
    "text title windowTitle toolTip accessibleName accessibleDescription shortcut visible enabled "
    "checkable checked focusPolicy maximumSize readOnly textFormat alignment "
    "orientation "
    "interval singleShot editable insertPolicy tabChangesFocus autoDefault spacing contentsMargins "
    "lineWrapMode textVisible maximum value frameShape frameShadow acceptDrops mouseTracking "
    "autoRaise popupMode arrowType iconSize toolTipsVisible menuRole features autoFillBackground "
    "selectionMode selectionBehavior editTriggers alternatingRowColors sortingEnabled showGrid "
    "currentIndex pageStep singleStep widgetResizable sizeAdjustPolicy wordWrap tabKeyNavigation "
    "placeholderText clearButtonEnabled toolButtonStyle default acceptMode fileMode defaultSuffix "
    "labelText textValue font minimumSize sizePolicy currentText plainText filterKeyColumn "
    "filterCaseSensitivity textInteractionFlags";

QString TextOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QSize)
        return QString("%1x%2").arg(value.toSize().width()).arg(value.toSize().height());
    if (value.typeId() == QMetaType::QFont) {
        const auto font = value.value<QFont>();
        const QFont usual = QApplication::font();
        return QString(font.family() != usual.family() ? "another " : "") +
               (font.fixedPitch() ? "fixed " : "") + (font.bold() ? "bold " : "") +
               (font.styleHint() == QFont::Monospace ? "mono " : "") +
               (font.pointSizeF() > usual.pointSizeF() ? "large" : "");
    }
    if (value.typeId() == QMetaType::QSizePolicy)
        return value.value<QSizePolicy>().retainSizeWhenHidden() ? "kept" : "";
    if (value.typeId() != qMetaTypeId<QMargins>()) return value.toString();
    const auto margins = value.value<QMargins>();
    return QString("%1,%2,%3,%4")
        .arg(margins.left())
        .arg(margins.top())
        .arg(margins.right())
        .arg(margins.bottom());
}

// How many listen to each signal of an object that a user or the window itself sets off.
struct Listeners : QObject {
    static QString Of(const QObject* object) {
        static const QRegularExpression heard(
            "^(clicked|finished|triggered|toggled|activated|timeout|\\w*[tT]extChanged|"
            "valueChanged|"
            "sliderMoved|currentChanged|cursorPositionChanged|[A-Z]\\w*)\\(");
        QString text;
        for (int i = 0; i < object->metaObject()->methodCount(); ++i) {
            const QMetaMethod method = object->metaObject()->method(i);
            const QByteArray name = method.methodSignature();
            if (method.methodType() != QMetaMethod::Signal || !heard.match(name).hasMatch())
                continue;
            const int count = (object->*&Listeners::receivers)(("2" + name).constData());
            if (count > 0) text += QString(" %1:%2").arg(name).arg(count);
        }
        return text;
    }
};

// What lies in a layout, and where.
QString ItemsOf(const QLayout& layout) {
    QString text;
    const auto* grid = qobject_cast<const QGridLayout*>(&layout);
    const auto* box = qobject_cast<const QBoxLayout*>(&layout);
    for (int i = 0; i < layout.count(); ++i) {
        const QWidget* widget = layout.itemAt(i)->widget();
        text +=
            " " +
            (widget == nullptr ? "-" : widget->metaObject()->className() + widget->objectName());
        int at[4] = {};
        if (grid != nullptr) grid->getItemPosition(i, &at[0], &at[1], &at[2], &at[3]);
        if (grid != nullptr)
            text += QString("@%1,%2,%3,%4").arg(at[0]).arg(at[1]).arg(at[2]).arg(at[3]);
        if (box != nullptr) text += QString("*%1").arg(box->stretch(i));
    }
    for (int i = 0; grid != nullptr && i < grid->columnCount(); ++i)
        text += QString(" |%1").arg(grid->columnStretch(i));
    for (int i = 0; grid != nullptr && i < grid->rowCount(); ++i)
        text += QString(" -%1").arg(grid->rowStretch(i));
    return text;
}

// Columns and rows of a table.
QString TableOf(const QTableView& table) {
    const QAbstractItemModel& model = *table.model();
    QString text = QString(" rows %1 %2 now %3")
                       .arg(table.verticalHeader()->isHidden())
                       .arg(table.verticalHeader()->defaultSectionSize())
                       .arg(table.currentIndex().row());
    for (int column = 0; column < model.columnCount(); ++column)
        text += QString(" |%1 %2")
                    .arg(model.headerData(column, Qt::Horizontal).toString())
                    .arg(table.horizontalHeader()->sectionResizeMode(column) == QHeaderView::Stretch
                             ? -1
                             : table.columnWidth(column));
    for (int i = 0; i < model.rowCount() * model.columnCount(); ++i) {
        const QModelIndex at = model.index(i / model.columnCount(), i % model.columnCount());
        text += QString(" |%1 %2 %3")
                    .arg(at.data().toString(), at.data(Qt::ToolTipRole).toString())
                    .arg(at.data(Qt::TextAlignmentRole).toInt());
    }
    return text;
}

// An object and all within, one a line, with what is not 0; none of what the toolkit makes its own
// controls of.
void Describe(const QObject* object, const QString& indent, QString& text) {
    const bool known = object->isWidgetType() || object->inherits("QLayout") ||
                       object->inherits("QAction") || object->inherits("QTimer") ||
                       object->inherits("QShortcut") || object->inherits("QSortFilterProxyModel");
    if (!known || object->objectName().startsWith("qt_")) return;
    text += indent + object->metaObject()->className() + " " + object->objectName();
    for (const QString& name : QString(kProperties).split(' ')) {
        QString value = TextOf(object->property(qPrintable(name))).replace('\n', ' ').left(180);
        if (name == "plainText") value = value.left(40);
        if (name == "minimumSize")  // letters are not as wide everywhere
            value = value.replace(QRegularExpression("[1-9]\\d*"), "some").remove("0x0");
        const bool usual = value == "0" || value == "0x0" || value.startsWith("16777215") ||
                           value == "NoFocus" || value == "TextHeuristicRole" ||
                           value == "ToolButtonIconOnly" || value.startsWith("524287") ||
                           value == (name == "enabled" || name == "visible" ? "true" : "false");
        if (value.isEmpty() || usual) continue;
        if ((object->objectName() == "lblMemory" || value.endsWith("/300")) && name == "text")
            value = "the machine's";
        text += " " + name + "=" + value;
    }
    text += Listeners::Of(object);
    if (const auto* layout = qobject_cast<const QLayout*>(object)) text += ItemsOf(*layout);
    if (const auto* files = qobject_cast<const QFileDialog*>(object))
        text += " " + files->nameFilters().join(';') + " now " + files->selectedNameFilter();
    if (const auto* list = qobject_cast<const QComboBox*>(object))
        for (int i = 0; i < list->count(); ++i) text += " |" + list->itemText(i);
    if (const auto* table = qobject_cast<const QTableView*>(object)) text += TableOf(*table);
    text += '\n';
    for (const char* whole :
         {"QComboBox", "QLineEdit", "QAbstractScrollArea", "QAbstractButton", "QFileDialog"})
        if (object->inherits(whole)) return;
    for (const QObject* child : object->children()) Describe(child, indent + " ", text);
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

  private:
    template <typename T = QAbstractButton>
    T* Find(const char* name) {
        T* found = window_->findChild<T*>(QLatin1String(name));
        if (found == nullptr) qFatal("no %s", name);
        return found;
    }
    kavit::BoardView* Board() { return window_->findChild<kavit::BoardView*>(); }
    QString Caption(const char* name) { return Find(name)->text(); }
    QString Line(const char* name) { return Find<QLineEdit>(name)->text(); }
    // Chooses entries of menus and clicks buttons, by their names.
    void Do(const char* names) {
        for (const QString& name : QString(names).split(' ')) {
            if (auto* entry = window_->findChild<QAction*>(name)) {
                entry->trigger();
            } else {
                QTest::mouseClick(Find(name.toLatin1()), Qt::LeftButton);
            }
        }
    }
    void ClickCell(int cell, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Board(), button, {}, Board()->CellRect(cell).center());
    }
    void Activate() {
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    }
    // What the screen has of the board is what it would paint now.
    void BoardIsPainted() {
        const QRect at(Board()->mapTo(window_.get(), QPoint()), Board()->size());
        const auto image = [](const QPixmap& seen) {
            return seen.toImage().convertToFormat(QImage::Format_RGB32);
        };
        QTRY_COMPARE(image(window_->screen()->grabWindow(window_->winId()).copy(at)),
                     image(Board()->grab()));
    }
    // What changes on purpose is taken over from the file that is left where the test ran.
    void IsAsIn(const QString& name, const QString& found) {
        QFile left(name);
        QVERIFY(left.open(QFile::WriteOnly) && left.write(found.toUtf8()) > 0);
        QFile file(KAVIT_APP_FILES "/" + name);
        QVERIFY(file.open(QFile::ReadOnly));
        const QStringList lines = found.split('\n');
        const QStringList wanted = QString::fromUtf8(file.readAll()).split('\n');
        for (qsizetype i = 0; i < std::min(lines.size(), wanted.size()); ++i)
            QCOMPARE(lines[i], wanted[i]);
        QCOMPARE(lines.size(), wanted.size());
    }
    void Open(const char* name, const char* text) {
        window_->OpenGiven(folder_->Write(name, text));
    }
    // SOLVE, and the wait for its end.
    void Solve() {
        Do("btnSOLVE");
        QTRY_VERIFY_WITH_TIMEOUT(!Find<QTimer>("TimerWatch")->isActive(), 60000);
    }
    void Drop(const std::string& file) {
        QMimeData mime;
        mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(file))});
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window_.get(), &enter);
        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window_.get(), &drop);
        QVERIFY(drop.isAccepted());
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
        if (window_) QTRY_VERIFY(window_->findChildren<QMessageBox*>().isEmpty());
        window_.reset();
    }

    // Every object with what it was told.
    void isMadeAsWritten() {
        Do("mnuHlpAbout");
        QString found;
        Describe(window_.get(), "", found);
        found += "keyboard: " + window_->focusWidget()->objectName() + ", then";
        for (QWidget* at = window_->nextInFocusChain(); at != window_.get();
             at = at->nextInFocusChain())
            if (at->focusPolicy() & Qt::TabFocus) found += " " + at->objectName();
        found += '\n';
        // What is there then and was not before.
        QString before = found;
        const auto then = [&](const char* what) {
            QString now;
            Describe(window_.get(), "", now);
            found += QString("> %1\n").arg(what);
            for (const QString& line : now.split('\n'))
                if (!before.contains(line + '\n')) found += line + '\n';
            before = now;
        };
        Open("album.txt", (std::string(kEasy) + "\n#####\n#*@$.#\n#####\nTitle: T\n").c_str());
        Do("mnuOptProved");
        then("a list");
        Do("mnuOpt4 mnuOpen2 mnuDead mnuReach btnClosing");
        then("choices");
        Solve();
        then("solved");
        Do("btnSOLVE");
        then("its text");
        Do("btnSOLVE");
        Find<QTimer>("TimerAnim")->setInterval(3600000);
        Do("mnuHlp1 btnANIM");
        then("a replay");
        Do("btnANIM");
        QTRY_COMPARE(Caption("btnANIM"), QString("CONT< >REPEAT"));
        Do("mnuHlp2 mnuConfigure mnuClosing");
        then("sizes");
        Do("mnuAside mnuEditBoard");
        then("drawing");
        Do("btnANIM mnuOpen3");
        Solve();
        then("another solution");
        boxes_->OnDialog = [&found](QDialog* dialog) {
            Describe(dialog, "", found);
            dialog->reject();
        };
        Do("mnuSaveSolution mnuSaveLevelAs mnuSaveCollection mnuOpen0 mnuEx10 btnSaveChart");
        found += boxes_->Take();
        IsAsIn("window.txt", found);
    }

    // What comes of each command that no other test gives, one a line: a menu entry or a button by
    // its name, LIST=CHOICE, LIST:TEXT, or a key.
    void hearsEachCommand() {
        Activate();
        Find<QTimer>("TimerAnim")->setInterval(3600000);
        const std::string room = "\n#######\n#@ $ .#\n#     #\n#######\n";
        Open("album.txt", (kEasy + room + "Solution: rRR\n" + room + "Title: T\n").c_str());
        boxes_->OnDialog = [this](QDialog* dialog) {
            boxes_->Texts.append(dialog->objectName());
            const bool chart = dialog->objectName() == "dlgSaveChart";
            if (chart) dialog->findChild<QLineEdit*>("fileNameEdit")->setText("no.such");
            dialog->done(chart ? QDialog::Accepted : QDialog::Rejected);
        };
        QString found;
        const QString commands =
            "mnuNextUnsolved mnuKnown btnFirst cmbSpeed=4 cmbSolution=0 btnLast mnuOpen1 "
            "key:Right key:Right key:Down key:Up key:Left mnuUndoPush mnuRedoPush "
            "mnuPlayRestart mnuSavePlayed mnuCopyPlayed mnuSaveLevel mnuHash2 mnuHash3 mnuHash1 "
            "mnuHash0 mnuOpt2 mnuSea1 mnuSea2 mnuSea3 mnuSolveAll mnuNextUnsolved "
            "mnuSaveSolution btnSaveChart btnCloseList mnuPlayRestart mnuConfigure cmbMemory:x "
            "frmbtnApply cmbMemory:100 cmbBlocks:x frmbtnApply cmbBlocks:7 cmbTime:x "
            "frmbtnApply cmbTime:9 cmbBlocks=1 frmbtnApply mnuEditBoard mnuShape1 mnuShape2 "
            "mnuShape0 btnCLEAR mnuUndo mnuRedo mnuShape2 btnANIM";
        for (const QString& command : commands.split(' ')) {
            const QStringList parts = command.split(QRegularExpression("[=:]"));
            if (parts[0] == "key") {
                QTest::keyClick(Board(), static_cast<Qt::Key>(QKeySequence(parts[1])[0].key()));
            } else if (command.contains('=')) {
                auto* list = Find<QComboBox>(qPrintable(parts[0]));
                list->setCurrentIndex(parts[1].toInt());
                emit list->activated(parts[1].toInt());
            } else if (command.contains(':')) {
                Find<QComboBox>(qPrintable(parts[0]))->setEditText(parts[1]);
            } else {
                Do(qPrintable(command));
            }
            QTRY_VERIFY_WITH_TIMEOUT(!Find<QTimer>("TimerWatch")->isActive(), 60000);
            found += command + ": " + window_->windowTitle().section(' ', 1) + " | " +
                     Line("txtLeft") + " | " + Line("txtRight") + " | " +
                     Find<QLabel>("lblDebug")->text() + " | " +
                     window_->focusWidget()->objectName();
            for (const char* name : {"mnuHash", "mnuShape"})
                for (const auto* entry : window_->findChildren<QAction*>())
                    if (entry->objectName().startsWith(name) && entry->isChecked())
                        found += " " + entry->objectName();
            found += " |";
            for (int cell = 19; cell < 76; ++cell)
                if (cell % 19 < 7)
                    found += QString::number(static_cast<int>(Board()->PictureAt(cell)), 16);
            found += " | " +
                     boxes_->Take().replace('\n', ' ').replace(folder_->Path().c_str(), "FOLDER") +
                     '\n';
        }
        IsAsIn("commands.txt", found);
    }

    // Board, marks and signs as they were looked at once; nothing here has a letter in it.
    void looksAsPainted() {
        QImage found(880, 490, QImage::Format_RGB32);
        found.fill(Qt::gray);
        QPainter painter(&found);
        kavit::BoardView board;
        board.setPalette(kavit::PaletteOf(kavit::Theme::Light));
        board.resize(430, 374);
        std::array<kavit::Picture, kavit::kCells> cells{};
        for (std::size_t cell = 21; cell < 90; ++cell)
            cells.at(cell) = static_cast<kavit::Picture>(cell * 7 % kavit::kPictures);
        board.Show(cells);
        kavit::BoardMarks marks;
        marks.Dead = {21, 40};
        marks.Reach = {42, 43};
        marks.Stuck = {46, 66};
        marks.Wrong = {68, 50};
        marks.Path = {22, 23, 24, 43, 62};
        marks.Selected = 72;
        board.ShowMarks(marks);
        painter.drawPixmap(0, 0, board.grab());
        board.ShowEditing(true);
        painter.drawPixmap(440, 0, board.grab());
        Open("a.xsb", kEasy);
        Solve();
        int x = 0;
        for (const QToolButton* button : window_->findChildren<QToolButton*>()) {
            if (button->objectName().startsWith("qt_")) continue;
            painter.drawPixmap(x, 380, button->icon().pixmap(24, 24));
            painter.drawPixmap(x, 406, button->icon().pixmap({24, 24}, QIcon::Normal, QIcon::On));
            x += 26;
        }
        auto* slider = Find<QSlider>("sldMoves");
        slider->setPalette(board.palette());
        slider->resize(300, 28);
        painter.drawPixmap(x, 380, slider->grab());
        for (const bool dark : {false, true}) {
            kavit::LevelTable table;
            kavit::ApplyTheme(dark ? kavit::Theme::Dark : kavit::Theme::Light);
            table.Show({{"", " ####\n##.$*#\n#@ ###\n#+#  \n###", ""}});
            painter.drawPixmap(
                dark ? 50 : 0, 440,
                table.index(0, 0).data(Qt::DecorationRole).value<QPixmap>().scaled(48, 48));
        }
        painter.end();
        found.save("pictures.png");
        const QImage seen = QImage(KAVIT_APP_FILES "/pictures.png").convertedTo(found.format());
        QCOMPARE(seen.size(), found.size());
        int others = 0;
        for (int y = 0; y < found.height(); ++y)
            for (int at = 0; at < found.width(); ++at)
                others +=
                    std::abs(qGray(found.pixel(at, y)) - qGray(seen.pixel(at, y))) > 40 ? 1 : 0;
        QVERIFY2(others < 10, qPrintable(QString("%1 pixels differ").arg(others)));
    }

    void controls() {
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
        Activate();
        Open("a.xsb", kEasy);
        Solve();
        for (const auto& [names, name] : {std::pair{"mnuImport btnSOLVE", "btnSOLVE"},
                                          {"mnuConfigure frmbtnCancel", "btnSOLVE"},
                                          {"mnuConfigure", "frmbtnCancel"}}) {
            Do(names);
            QVERIFY2(QApplication::focusWidget() == Find<QWidget>(name),
                     qPrintable(QApplication::focusWidget()->objectName()));
            QApplication::clipboard()->clear();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
            QCOMPARE(QApplication::clipboard()->text(), QString("rRR"));
        }
        Find<QComboBox>("cmbBlocks")->setEditText("9");
        Do("frmbtnApply");
        QCOMPARE(QApplication::focusWidget(), Find<QWidget>("btnSOLVE"));
    }

    void solveTextReturnAnimate() {
        Open("a.xsb", kEasy);
        QCOMPARE(Line("txtLeft"), QString("You can edit this board (Menu File)"));
        Solve();
        QCOMPARE(Caption("btnSOLVE"), QString("TEXT"));
        QCOMPARE(Line("txtLeft"), QString("Solution:  3/2"));
        QCOMPARE(QApplication::clipboard()->text(), QString("rRR"));
        Activate();
        Board()->setFocus();
        QTest::keyClick(window_.get(), Qt::Key_F5);
        auto* text = Find<QPlainTextEdit>("rtxtImport");
        QVERIFY(text->hasFocus());
        QVERIFY(text->isVisible() && text->isReadOnly());
        QVERIFY(text->toPlainText().contains("#@ $ .#"));
        QCOMPARE(Caption("btnSOLVE"), QString("RETURN"));
        text->setFocus();
        text->selectAll();
        QTest::keyClick(text, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().contains("RESULT:  3/ 2"));
        // A click or Return on a letter of the solution goes to it.
        QTextCursor letter = text->document()->find("rRR");
        letter.setPosition(letter.selectionStart() + 1);
        const QPoint at = text->cursorRect(letter).center();
        QTest::mouseClick(text->viewport(), Qt::RightButton, {}, at);
        QVERIFY(text->isVisible());
        QTest::mouseClick(text->viewport(), Qt::LeftButton, {}, at);
        QVERIFY(!text->isVisible() && Board()->hasFocus());
        QCOMPARE(Find<QSlider>("sldMoves")->value(), 2);
        Do("btnSOLVE");
        letter = text->document()->find("rRR");
        text->setTextCursor(letter);
        QTest::keyClick(text, Qt::Key_Enter);
        QVERIFY(!text->isVisible());
        Do("btnFirst");
        Find<QTimer>("TimerAnim")->setInterval(5);
        const auto sign = [this] {
            return Find<QToolButton>("btnPlay")->icon().pixmap(24, 24).toImage();
        };
        const QImage still = sign();
        Do("btnANIM");
        QVERIFY(sign() != still);
        QCOMPARE(Caption("btnANIM"), QString("STOP"));
        QTRY_COMPARE(Caption("btnANIM"), QString("REPEAT"));
        QCOMPARE(Line("txtRight"), QString("Moves:  3/3"));
        QCOMPARE(Board()->PictureAt(24), kavit::Picture::BoxOnGoal);
        // Right starts again, left goes on.
        Find<QTimer>("TimerAnim")->setInterval(3600000);
        const auto key = [&](Qt::KeyboardModifiers with) {
            QTest::keyClick(window_.get(), Qt::Key_F6, with);
        };
        const auto click = [&](Qt::MouseButton button) {
            QTest::mouseClick(Find("btnANIM"), button);
        };
        const std::pair<std::function<void()>, int> begins[] = {
            {[&] { click(Qt::RightButton); }, 0},
            {[&] { click(Qt::LeftButton); }, 1},
            {[&] { key(Qt::ShiftModifier); }, 0},
            {[&] { key({}); }, 1}};
        for (const auto& [begin, from] : begins) {
            Find<QSlider>("sldMoves")->setValue(1);
            begin();
            QCOMPARE(Find<QSlider>("sldMoves")->value(), from);
            QCOMPARE(Caption("btnANIM"), QString("STOP"));
            Do("btnPlay");
        }
        Do("btnForward");
        QCOMPARE(Find<QSlider>("sldMoves")->value(), 2);
        Do("btnForward btnBack");
        QCOMPARE(Find<QSlider>("sldMoves")->value(), 2);
    }

    // STOP, the close button, Exit and a dropped file in the middle of a search.
    void windowStaysAliveWhileSolving() {
        Open("long.xsb", kavit::test::kEndless);
        Find<QComboBox>("cmbBlocks")->setEditText("20");
        Do("frmbtnApply");
        const std::string other = folder_->Write("other.xsb", kEasy);
        Do("btnSOLVE");
        QTRY_COMPARE(window_->windowTitle(), QString("Solving long"));
        QTRY_VERIFY(Line("txtLeft").startsWith("Solver is now thinking"));
        QTRY_VERIFY(Find<QLabel>("lblDebug")->text().startsWith("Pos.Count = "));
        const QString running = "Solver is running";
        const std::pair<std::function<void()>, QString> refused[] = {
            {[&] {
                 window_->close();
                 window_->close();
                 Do("mnuConfigure");
             },
             running + "\nCan't change; " + running},
            {[&] { Drop(other); }, running},
            {[&] { Do("mnuExit"); }, running},
            {[&] { Do("mnuConfigure"); }, "Can't change; " + running}};
        for (const auto& [action, box] : refused) {
            action();
            QTest::qWait(5);
            QVERIFY(window_->isVisible());
            QCOMPARE(boxes_->Take(), box);
            QTest::qWait(20);
        }
        QCOMPARE(Caption("btnSOLVE"), QString("STOP"));
        QVERIFY(Find<QTimer>("TimerWatch")->isActive());
        Do("btnSOLVE");
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
        Do("btnSOLVE");
        window_.reset();
    }

    void expertMenus() {
        for (const char* tool : {"ImgEdit2", "ImgEdit3", "ImgEdit1"}) {
            Do(tool);
            QVERIFY(!Find<QToolButton>(tool)->isChecked());
        }
        QVERIFY(!Find<QMenu>("mnuSearch")->menuAction()->isVisible());
        QTest::mouseDClick(Find<QLabel>("lblOpt"), Qt::LeftButton);
        QVERIFY(boxes_->Take().startsWith("You found an EsterEgg"));
        for (const char* menu : {"mnuSearch", "mnuHasher"}) {
            QVERIFY(Find<QMenu>(menu)->menuAction()->isVisible());
        }
        QVERIFY(!Find<QMenu>("mnuExample")->menuAction()->isVisible());
        Do("mnuSea2");
        QVERIFY(Find<QAction>("mnuSea2")->isChecked() && !Find<QAction>("mnuSea3")->isChecked());
        Do("mnuSea2");
        QVERIFY(Find<QAction>("mnuSea2")->isChecked());
        Do("mnuOptSpec");  // does nothing at level 1
        QVERIFY(!Find<QAction>("mnuOptSpec")->isChecked());
        Do("mnuOpt3 mnuOptSpec");
        QVERIFY(Find<QLabel>("lblOpt")->font().underline());
        Open("a.xsb", kEasy);
        Solve();
        QCOMPARE(Line("txtLeft"), QString("Best solution   3/2"));
        QVERIFY(Find<QLabel>("lblDebug")->text().contains("fewest moves proved"));
    }

    void drawWithTheMouse() {
        Do("mnuEditBoard");
        const auto at = [&](int cell) { return Board()->CellRect(cell).center(); };
        const auto paint = [&](const char* tool, int cell) {
            Do(tool);
            ClickCell(cell);
        };
        const auto send = [&](QEvent::Type type, const QPointF& to, Qt::MouseButton button,
                              Qt::MouseButtons buttons) {
            QMouseEvent event(type, to, Board()->mapToGlobal(to), button, buttons, {});
            QApplication::sendEvent(Board(), &event);
        };
        const auto drag = [&](const QPointF& to) {
            send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        };
        const QSignalSpy ups(Board(), &kavit::BoardView::CellUp);
        const QSignalSpy moves(Board(), &kavit::BoardView::CellMove);
        for (const int row : {0, 2}) {
            QTest::mousePress(Board(), Qt::LeftButton, {}, at(row * 19));
            send(QEvent::MouseButtonPress, at(row * 19), Qt::RightButton,
                 Qt::LeftButton | Qt::RightButton);  // and nothing comes of it
            send(QEvent::MouseButtonRelease, at(row * 19), Qt::RightButton, Qt::LeftButton);
            drag(at(row * 19 + 1));
            drag(at(row * 19 + 5));  // a pointer in a hurry
            QTest::mouseRelease(Board(), Qt::LeftButton, {}, at(row * 19 + 5));
        }
        QCOMPARE(ups.count(), 2);
        QCOMPARE(moves.count(), 10);
        ClickCell(0);
        QCOMPARE(ups.count(), 3);
        // Beside the board the drag goes along its edge; a release may get lost.
        send(QEvent::MouseButtonPress, at(0), Qt::LeftButton, Qt::LeftButton);
        drag({-9, -9});
        QCOMPARE(moves.count(), 10);
        drag(at(1) - QPoint(0, 99));
        QCOMPARE(moves.count(), 11);
        BoardIsPainted();
        send(QEvent::MouseButtonPress, at(0), Qt::LeftButton, Qt::LeftButton);
        QCOMPARE(ups.count(), 4);
        const QSignalSpy over(Board(), &kavit::BoardView::CellHovered);
        for (const int cell : {0, 60, 60})
            send(QEvent::MouseMove, at(cell), Qt::NoButton, Qt::NoButton);
        QCOMPARE(ups.count(), 5);
        QCOMPARE(over.count(), 2);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(Board(), &leave);
        QCOMPARE(over.last().at(0).toInt(), -1);
        for (const auto& [tool, cell] : {std::pair{"ImgEdit4", 19},
                                         {"ImgEdit4", 24},
                                         {"ImgEdit5", 20},
                                         {"ImgEdit2", 22},
                                         {"ImgEdit1", 23},
                                         {"ImgEdit4", 60}})
            paint(tool, cell);
        ClickCell(60, Qt::RightButton);  // erases
        QCOMPARE(Board()->PictureAt(60), kavit::Picture::Floor);
        paint("ImgEdit0", 20);
        QCOMPARE(boxes_->Take(), QString("You can't erase the Man"));
        Do("btnMover4 btnSpMov1 btnANIM");
        QCOMPARE(Caption("btnSOLVE"), QString("SOLVE"));
        Solve();
        QCOMPARE(Line("txtLeft"), QString("Solution:  2/1"));
        QCOMPARE(QApplication::clipboard()->text(), QString("lL"));
        Do("mnuEditBoard");
        paint("ImgEdit3", 60);
        Activate();
        QTest::keyClick(window_.get(), Qt::Key_Escape);
        QCOMPARE(boxes_->Take(), QString("Undo all changes since the editing began? [Yes No]"));
        Do("btnANIM mnuCopyBoard");
        QVERIFY(QApplication::clipboard()->text().contains("#.$ @#"));
        QVERIFY(!QApplication::clipboard()->text().contains('*'));
        boxes_->Answer = QMessageBox::Cancel;
        Do("mnuExit");
        QVERIFY(window_->isVisible());
        QCOMPARE(boxes_->Take(), QString("The board was changed. Save it? [Save Cancel Discard]"));
    }

    // Keys go to the game while the focus stands on a button, and to the replay behind a solve.
    void playWithKeys() {
        Open("room.xsb", "#######\n#@ $ .#\n#     #\n#######\n");
        const auto press = [&](std::initializer_list<int> keys) {
            for (const int key : keys)
                QTest::keyClick(window_->focusWidget(), static_cast<Qt::Key>(key));
        };
        Activate();
        Find("btnSOLVE")->setFocus();
        press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Backspace});
        QVERIFY(Find("btnSOLVE")->hasFocus());  // and was not left by the arrow
        QCOMPARE(Line("txtRight"), QString("Moves: 1"));
        Do("mnuRedo");
        QCOMPARE(Board()->PictureAt(22), kavit::Picture::ManRight);
        Do("mnuSolveHere");
        QTRY_COMPARE(Caption("btnSOLVE"), QString("TEXT"));
        QCOMPARE(Line("txtRight"), QString("1 push so far, 1 to go, best 2"));
        QVERIFY(Find<QWidget>("frmReplay")->isVisible());
        Board()->setFocus();
        press({Qt::Key_End});
        QCOMPARE(Find<QSlider>("sldMoves")->value(), 1);
        QCOMPARE(Board()->PictureAt(24), kavit::Picture::BoxOnGoal);
        press({Qt::Key_Home});
        QCOMPARE(Find<QSlider>("sldMoves")->value(), 0);
        QCOMPARE(Caption("btnANIM"), QString("ANIM"));
        press({Qt::Key_Space});
        QTRY_COMPARE(Caption("btnANIM"), QString("REPEAT"));
        Do("btnFirst");
        Find<QComboBox>("cmbArrows")->setFocus();
        emit Find<QComboBox>("cmbArrows")->activated(0);
        QVERIFY(Board()->hasFocus());
        press({Qt::Key_Backspace});
        QCOMPARE(Line("txtRight"), QString("Moves: 1"));
        // A click walks, two push.
        ClickCell(43);
        QCOMPARE(Board()->PictureAt(43), kavit::Picture::ManRight);
        ClickCell(22);
        ClickCell(21);
        QCOMPARE(Board()->PictureAt(21), kavit::Picture::Box);
        const QImage plain = Board()->grab().toImage();
        Do("mnuDead");
        QVERIFY(Board()->grab().toImage() != plain);
        BoardIsPainted();
    }

    void drawWithTheKeyboard() {
        Activate();
        Do("mnuAside mnuEditBoard");
        QVERIFY(Board()->hasFocus());
        QCOMPARE(Board()->grab().toImage().pixelColor(1, 9),
                 Board()->palette().color(QPalette::Highlight));
        const auto press = [&](const QString& keys, Qt::KeyboardModifiers with = {}) {
            const QHash<QChar, Qt::Key> names = {{'l', Qt::Key_Left},  {'d', Qt::Key_Down},
                                                 {'r', Qt::Key_Right}, {'u', Qt::Key_Up},
                                                 {' ', Qt::Key_Space}, {'x', Qt::Key_Delete}};
            for (const QChar key : keys) QTest::keyClick(Board(), names.value(key), with);
        };
        press(QString(20, 'u') + QString(20, 'l'));  // to the corner, and no further
        BoardIsPainted();
        const QSignalSpy ups(Board(), &kavit::BoardView::CellUp);
        for (int i = 0; i < 4; ++i) QTest::keyPress(Board(), Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyRelease(Board(), Qt::Key_Right);
        QCOMPARE(ups.count(), 0);
        QTest::keyRelease(Board(), Qt::Key_Shift);
        QCOMPARE(ups.count(), 1);
        QCOMPARE(Board()->PictureAt(0), kavit::Picture::Wall);
        press("dd", Qt::ShiftModifier);
        press("llll", Qt::ShiftModifier);
        press("u", Qt::ShiftModifier);
        const auto before = ups.count();
        QTest::keyPress(Board(), Qt::Key_Up, Qt::ShiftModifier);
        Find("btnANIM")->setFocus();
        QCOMPARE(ups.count(), before + 1);
        BoardIsPainted();
        Board()->setFocus();
        const auto put = [&](int tool, const QString& keys) {
            QTest::keyClick(Board(), static_cast<Qt::Key>(Qt::Key_0 + tool));
            press(keys);
        };
        for (const int tool : {0, 9}) {
            put(tool, "");
            QVERIFY(Find(qPrintable(QString("ImgEdit%1").arg(tool)))->isChecked());
        }
        put(5, "dr ");
        put(2, "r ");
        put(1, "r  ");
        put(2, "d x");
        QVERIFY(Line("txtRight").contains("wall open"));
        Do("mnuUndo mnuUndo");
        QCOMPARE(Line("txtRight"), QString());
        QTRY_COMPARE(Find<QLabel>("lblAside")->text(), QString("Solution: 1/1"));
        Do("btnANIM mnuCopyBoard");
        QCOMPARE(QApplication::clipboard()->text().remove('\r'), QString("#####\n#@$.#\n#####\n"));
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
        kavit::PictureSet set;
        kavit::PictureSet other;
        for (const bool dark : {false, true}) set.SetSize(22, dark);
        other.SetSize(22, true);
        QCOMPARE(set.At(kavit::Picture::Wall).toImage(), other.At(kavit::Picture::Wall).toImage());
        Open("album.txt", (std::string(kEasy) + "\n#####\n#@$.#\n#####\n").c_str());
        const auto painted = [&] {
            const QModelIndex first = Find<QTableView>("lstLevels")->model()->index(0, 0);
            return std::array{Board()->grab().toImage(),
                              Find<QToolButton>("btnPlay")->icon().pixmap(24, 24).toImage(),
                              first.data(Qt::DecorationRole).value<QPixmap>().toImage()};
        };
        Do("mnuTheme2");
        QTRY_VERIFY(kavit::IsDark(window_->palette()));
        const auto dark = painted();
        Do("mnuTheme1");
        QTRY_VERIFY(!kavit::IsDark(window_->palette()));
        for (std::size_t i = 0; i < dark.size(); ++i) QVERIFY(painted()[i] != dark[i]);
        Do("mnuTheme0");
    }

    // A number in the file that somebody edited.
    void speedOutOfRange() {
        QSettings(QSettings::IniFormat, QSettings::UserScope, "kavit", "window")
            .setValue("speed", 99);
        QCOMPARE(kavit::Preferences::Load().Speed,
                 static_cast<int>(std::size(kavit::kReplaySpeeds)) - 1);
    }

    // What a picture is told is on the screen without another reason to paint.
    void paintsWhatItIsTold() {
        struct Paints : QObject {
            int Count = 0;
            bool eventFilter(QObject* /*widget*/, QEvent* event) override {
                Count += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
        } paints;
        kavit::BoardView board;
        kavit::LayerChart chart;
        kavit::MoveSlider slider;
        for (QWidget* widget : std::initializer_list<QWidget*>{&board, &chart, &slider}) {
            widget->show();
            QVERIFY(QTest::qWaitForWindowExposed(widget));
            widget->installEventFilter(&paints);
        }
        kavit::BoardMarks marks;
        marks.Selected = 3;
        const std::function<void()> tells[] = {
            [&] { board.Show({kavit::Picture::Wall}); },
            [&] { board.ShowMarks(marks); },
            [&] { board.ShowEditing(true); },
            [&] { QTest::keyClick(&board, Qt::Key_Right); },
            [&] { QTest::mousePress(&board, Qt::LeftButton, {}, board.CellRect(44).center()); },
            [&] { chart.ShowLayers({1}, {}); },
            [&] { slider.SetMarks({1}); }};
        for (const auto& tell : tells) {
            QTest::qWait(20);
            paints.Count = 0;
            tell();
            QTRY_VERIFY2(paints.Count > 0, qPrintable(QString::number(&tell - tells)));
        }
    }

    // Lines, bars and words of the saved drawing, and what the pointer is told; how wide letters
    // are is the machine's. Then the colours that a theme chooses.
    void chartAndColours() {
        const auto path = [&](const char* name) {
            return QString::fromStdString(folder_->Path(name));
        };
        kavit::LayerChart chart;
        chart.resize(400, 200);
        QString found;
        for (const std::size_t layers : {0, 1, 4, 7}) {
            std::vector<std::int64_t> forward{1, 12, 0, 1000, 345678, 99, 1};
            forward.resize(layers);
            chart.ShowLayers(forward, {forward.begin(), forward.begin() + layers / 2});
            chart.setPalette(kavit::PaletteOf(static_cast<kavit::Theme>(1 + layers % 2)));
            QCOMPARE(chart.Save(path("layers.svg")), QString());
            QCOMPARE(chart.Save(path("layers.csv")), QString());
            found += folder_->Read("layers.svg").c_str();
            found += folder_->Read("layers.csv").c_str();
            for (int x = 44; x <= 404; x += 20) {
                QHelpEvent help(QEvent::ToolTip, {x, 50}, {x, 50});
                const bool told = QApplication::sendEvent(&chart, &help) && help.isAccepted();
                found += told ? QToolTip::text() + '\n' : "-\n";
            }
        }
        for (const auto theme : {kavit::Theme::System, kavit::Theme::Light, kavit::Theme::Dark}) {
            kavit::ApplyTheme(theme);
            for (int i = 0; i < 3 * QPalette::NColorRoles; ++i) {
                const auto group = static_cast<QPalette::ColorGroup>(i / QPalette::NColorRoles);
                const auto role = static_cast<QPalette::ColorRole>(i % QPalette::NColorRoles);
                const bool ours = theme != kavit::Theme::System ||
                                  (group == QPalette::Disabled && role == QPalette::Text);
                if (ours) found += QApplication::palette().color(group, role).name() + '\n';
            }
        }
        kavit::ApplyTheme(kavit::Theme::System);
        found.remove(QRegularExpression("(?<=<text)[^>]*|font-[^\\n]*| [a-z]+=\"[0-9.]+mm\""));
        IsAsIn("chart.txt", found);
        QCOMPARE(chart.Save(path("layers.png")), QString());
        QCOMPARE(QImage(path("layers.png")).size(), chart.sizeHint() * 2);
        QVERIFY(chart.Save("layers.xyz").contains("layers.xyz"));
        QVERIFY(!chart.Save("/nowhere/layers.png").isEmpty());
    }

    void importAndPaste() {
        Do("mnuImport");
        for (const char* row : {"#####", "#@$.#", "#####"}) {
            QTest::keyClicks(Find<QPlainTextEdit>("rtxtImport"), row);
            QTest::keyClick(Find<QPlainTextEdit>("rtxtImport"), Qt::Key_Return);
        }
        Do("btnSOLVE");
        QCOMPARE(Board()->PictureAt(21), kavit::Picture::Box);
        Solve();
        QCOMPARE(Line("txtLeft"), QString("Solution:  1/1"));
        QApplication::clipboard()->setText(kEasy);
        Do("mnuPasteLevel");
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
        Do("mnuOpen3");
        QCOMPARE(table->currentIndex().row(), 0);
        Do("btnNextUnsolved");  // there is none behind
        QCOMPARE(table->currentIndex().row(), 0);
        Do("btnNext btnNext");
        QCOMPARE(window_->windowTitle(), QString("kavit album-2"));
        Do("btnPrevious btnPrevious");
        QCOMPARE(window_->windowTitle(), QString("kavit album-1"));
        Do("btnSolveAll");
        QCOMPARE(Caption("btnSolveAll"), QString("Stop"));
        QTRY_COMPARE(table->model()->index(0, 4).data().toString(), QString("2/3"));
        // Marks come to the rows that the filter leaves; other levels are shown anew.
        Find<QLineEdit>("txtFilter")->setText("<B>");
        QCOMPARE(table->model()->rowCount(), 1);
        QCOMPARE(window_->windowTitle(), QString("kavit album-1"));
        const auto picture = [&] {
            return table->model()->index(0, 0).data(Qt::DecorationRole).value<QPixmap>().toImage();
        };
        const QImage two = picture();
        const std::string one = "#####\n#@$.#\n#####\n";
        Open("album.txt", (one + "\n" + one + "Title: <b>Two\n").c_str());
        QCOMPARE(Line("txtFilter"), QString());
        QVERIFY(picture() == two);
        Open("album.txt", (one + "\n" + one + "Title: Three\n").c_str());
        QCOMPARE(table->model()->index(1, 1).data().toString(), QString("Three"));
        Open("album.txt", (kEasy + ("\n" + one) + "Title: Three\n").c_str());
        QVERIFY(picture() != two);
        // Who stays with a drawing stays in its row.
        Do("mnuEditBoard");
        ClickCell(60);
        Do("btnANIM");
        boxes_->Answer = QMessageBox::Cancel;
        table->setCurrentIndex(table->model()->index(1, 1));
        QCOMPARE(boxes_->Take(), QString("The board was changed. Save it? [Save Cancel Discard]"));
        QCOMPARE(table->currentIndex().row(), 0);
        boxes_->Answer = QMessageBox::Discard;
        table->setCurrentIndex(table->model()->index(1, 1));
        QCOMPARE(table->currentIndex().row(), 1);
        // A level from elsewhere has no row, and the list's are a click away.
        QApplication::clipboard()->setText(kEasy);
        Do("mnuPasteLevel");
        QVERIFY(!table->currentIndex().isValid());
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->visualRect(table->model()->index(1, 1)).center());
        QCOMPARE(window_->windowTitle(), QString("kavit album-2"));
        Do("mnuLevelList");
        QVERIFY(!dock->isVisible());
        Do("mnuLevelList");
        QVERIFY(dock->isVisible());
    }

    // Names and texts of the user's show as written.
    void nothingIsMarkup() {
        Open("<b>x & y[*].xsb", "#####\n#<$.#\n#####\n");
        QCOMPARE(boxes_->Take(), QString("Invalid char '<' in Xsb; Assumed Space\n\nOK reads on, "
                                         "Cancel ends the program. [OK Cancel]"));
        QVERIFY(window_->windowTitle().contains("<b>x & y"));
        Do("mnuHlpInfo");
        auto* help = Find<QDialog>("HelpForm");
        QVERIFY(help->findChild<QPlainTextEdit*>()->toPlainText().contains("<b>x & y[*]"));
        QStringList begins;
        for (const char* topic : {"mnuHlp0", "mnuHlp1", "mnuHlp2", "mnuHlpAbout"}) {
            Do(topic);
            begins << help->windowTitle() + ": " +
                          help->findChild<QPlainTextEdit*>()->toPlainText().section(' ', 1, 1);
        }
        QCOMPARE(begins.join("; "), QString("Ayuda en Español: resuelve; Aide en français: résout; "
                                            "Help in English: solves; About: 9.8.7\n\nEste"));
        QCOMPARE(help->size(), window_->size() * 0.8);
        QTest::mouseClick(help->findChild<QPushButton*>("btnClose"), Qt::LeftButton);
        QVERIFY(!help->isVisible());
    }

    void solutionIsSavedUnderTheNameAsWritten() {
        Find<QAbstractButton>("chkNoWriteSol")->click();
        boxes_->OnDialog = [](QDialog* dialog) { dialog->accept(); };
        boxes_->Answer = QMessageBox::Yes;
        for (const char* box :
             {"", "<b>my \"best\" &amp; %1.sol exists already. Replace it? [Yes No*]"}) {
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
        Do("mnuOpen0");
        boxes_->OnDialog = nullptr;
        QString said = boxes_->Take();
        QCOMPARE(said.count(QChar(0x200B)), 2);  // where a long word may break
        said.remove(QChar(0x200B));
        QVERIFY2(said.startsWith("file ") && said.endsWith("xxx Not found"), qPrintable(said));
        QCOMPARE(window_->windowTitle(), QString("kavit lev2"));
        Do("mnuOpen2");
        QCOMPARE(window_->windowTitle(), QString("kavit lev10"));

        Do("mnuConfigure");
        QVERIFY(Find("frmbtnCancel")->isVisible());
        Find<QComboBox>("cmbTime")->setEditText("100");
        Find<QComboBox>("cmbMemory")->setEditText("300000");
        Do("frmbtnApply");
        QVERIFY(!Find<QWidget>("frmSizes")->isVisible());
        QCOMPARE(Find<QLabel>("lblSize")->text(), QString("300000/8"));
        // Neither switch: asked for the file. Its name comes with the level's.
        Do("chkNoWriteSol");
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
        Do("mnuEx10");
        QCOMPARE(window_->windowTitle(), QString("kavit lev2"));
        Do("chkWriteSol mnuSave");
        QCOMPARE(folder_->Read("Kavit.ini"), std::string(" 300000  8  100  1  1  0 \r\n"));
        // The next session asks where this one opened its level.
        window_.reset();
        window_ = std::make_unique<kavit::MainWindow>("kavit", folder_->Path("levels"));
        QCOMPARE(window_->Load(), std::string());
        boxes_->OnDialog = [&](QDialog* dialog) {
            QCOMPARE(static_cast<QFileDialog*>(dialog)->directory(), QDir(folder_->Path().c_str()));
            dialog->reject();
        };
        Do("mnuOpen0");
    }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
