#include "app/view/main_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QUrl>
#include <chrono>

#include "app/view/board_view.h"
#include "app/view/closing_panel.h"
#include "app/view/command_column.h"
#include "app/view/dialogs.h"
#include "app/view/help_window.h"
#include "app/view/layer_chart.h"
#include "app/view/level_list.h"
#include "app/view/menus.h"
#include "app/view/palette_view.h"
#include "app/view/plain_box.h"
#include "app/view/plain_text.h"
#include "app/view/replay_bar.h"
#include "app/view/search_thread.h"
#include "app/view/settings_panel.h"
#include "app/view/status_view.h"
#include "app/view/text_box.h"

// Artwork and help texts lie in a library, whose resources are not found unless asked for.
static void LoadResources() {
    Q_INIT_RESOURCE(art);
    Q_INIT_RESOURCE(help);
}

namespace kavit {
namespace {

constexpr int kWatchMs = 1000;
constexpr int kRestMs = 700;

double SteadySeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

}  // namespace

MainWindow::MainWindow(const std::string& program, const std::filesystem::path& folder)
    : model_(new Model(*this, program, folder, SteadySeconds)),
      menus_(new Menus(this, [this](const auto& command) { Run(command); })),
      boardArea_(new QWidget(this)),
      board_(new BoardView(boardArea_)),
      text_(new TextBox(boardArea_)),
      column_(new CommandColumn(this)),
      replay_(new ReplayBar(this)),
      status_(new StatusView(this)),
      list_(new LevelList(this)),
      dock_(new QDockWidget(tr("Levels"), this)),
      closing_(new ClosingPanel(this)),
      watch_(new QTimer(this)),
      anim_(new QTimer(this)),
      rest_(new QTimer(this)),
      search_(std::make_unique<SearchThread>(nullptr)),
      aside_(std::make_unique<SearchThread>(nullptr)) {
    LoadResources();
    setObjectName(QStringLiteral("Form1"));
    setAcceptDrops(true);
    MakeTimers();
    MakeList();
    LayOut();
    Connect();
    ConnectReplay();
    ConnectPreferences();
    MakeShortcuts();
    OrderFocus();
}

MainWindow::~MainWindow() {
    preferences_.Geometry = saveGeometry();
    preferences_.Save();
}

void MainWindow::Run(const std::function<void(Model&)>& command) {
    model_->Run(command);
}

void MainWindow::OpenGiven(const std::string& fullName) {
    Run([&](Model& m) { m.Levels.OpenGiven(fullName); });
}

void MainWindow::MakeTimers() {
    watch_->setObjectName(QStringLiteral("TimerWatch"));
    watch_->setInterval(kWatchMs);
    connect(watch_, &QTimer::timeout, this, [this] { Run([](Model& m) { m.Solve.WatchTick(); }); });
    rest_->setSingleShot(true);
    rest_->setInterval(kRestMs);
    connect(rest_, &QTimer::timeout, this, [this] { Run([](Model& m) { m.Aside.Rested(); }); });
    anim_->setObjectName(QStringLiteral("TimerAnim"));
    connect(anim_, &QTimer::timeout, this,
            [this] { Run([](Model& m) { m.Solution.AnimTick(); }); });
}

// The list stands left of the board while there is one, and can be closed or moved.
void MainWindow::MakeList() {
    dock_->setObjectName(QStringLiteral("dckLevels"));
    dock_->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    dock_->setWidget(list_);
    dock_->hide();
    addDockWidget(Qt::LeftDockWidgetArea, dock_);
    connect(list_, &LevelList::LevelChosen, this,
            [this](int row) { Run([=](Model& m) { m.Album.Choose(row); }); });
    connect(list_, &LevelList::SolveAllClicked, this,
            [this] { Run([](Model& m) { m.Album.SolveAll(); }); });
    connect(list_, &LevelList::Closed, this,
            [this] { Run([](Model& m) { m.Album.ShowList(false); }); });
}

// Thousands of rows are shown once; after that only marks change.
void MainWindow::ShowList(const Screen& screen) {
    const bool same = shownList_->size() == screen.List->size() &&
                      std::equal(shownList_->begin(), shownList_->end(), screen.List->begin(),
                                 [](const ListRow& a, const ListRow& b) {
                                     return a.Title == b.Title && a.BoardText == b.BoardText;
                                 });
    if (shownList_ != screen.List) {
        std::vector<LevelRow> rows;
        for (const ListRow& row : *screen.List) {
            const int index = static_cast<int>(&row - screen.List->data());
            if (same) {
                list_->Mark(index, row.Mark);
            } else {
                rows.push_back({row.Title, row.BoardText, row.Mark});
            }
        }
        if (!same) list_->Show(std::move(rows));
        shownList_ = screen.List;
    }
    // A level that is not of the list has no row, so that a click on any row opens that one.
    if (list_->Chosen().value_or(-1) != screen.ListChosen) list_->Choose(screen.ListChosen);
    list_->ShowSolvingAll(screen.SolvingAll);
    dock_->setVisible(screen.ListVisible);
}

// The text box lies over the board and takes its place while it is shown.
void MainWindow::LayOut() {
    auto* over = new QGridLayout(boardArea_);
    over->setContentsMargins(0, 0, 0, 0);
    over->addWidget(board_, 0, 0);
    over->addWidget(text_, 0, 0);
    text_->raise();

    auto* center = new QWidget(this);
    auto* grid = new QGridLayout(center);
    grid->addWidget(boardArea_, 0, 0);
    grid->addWidget(column_, 0, 1);
    grid->addWidget(replay_, 1, 0, 1, 2);
    grid->addWidget(status_, 2, 0, 1, 2);
    grid->addWidget(closing_, 3, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
    setCentralWidget(center);
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
}

void MainWindow::Connect() {
    connect(column_, &CommandColumn::SolveClicked, this,
            [this] { Run([](Model& m) { m.SolveClicked(); }); });
    connect(column_, &CommandColumn::AnimReleased, this,
            [this](bool left) { Run([=](Model& m) { m.AnimReleased(left); }); });
    connect(column_, &CommandColumn::ClearClicked, this,
            [this] { Run([](Model& m) { m.Editor.Clear(); }); });
    connect(column_, &CommandColumn::LetterDoubleClicked, this,
            [this] { Run([](Model& m) { m.Choices.LetterDoubleClicked(); }); });
    connect(column_, &CommandColumn::ShiftClicked, this,
            [this](int index) { Run([=](Model& m) { m.Editor.Shift(index); }); });
    connect(column_, &CommandColumn::MirrorRotateClicked, this,
            [this](int index) { Run([=](Model& m) { m.Editor.MirrorRotate(index); }); });
    connect(column_->Palette(), &PaletteView::ToolClicked, this,
            [this](int tool) { Run([=](Model& m) { m.PaletteClicked(tool); }); });

    connect(board_, &BoardView::CellDown, this,
            [this](int cell, bool right) { Run([=](Model& m) { m.CellDown(cell, right); }); });
    connect(board_, &BoardView::CellMove, this,
            [this](int cell) { Run([=](Model& m) { m.CellMove(cell); }); });
    connect(board_, &BoardView::CellUp, this,
            [this](int cell) { Run([=](Model& m) { m.CellUp(cell); }); });
    connect(board_, &BoardView::ToolTyped, this,
            [this](int tool) { Run([=](Model& m) { m.Editor.SelectTool(tool); }); });
    connect(board_, &BoardView::CellHovered, this,
            [this](int cell) { Run([=](Model& m) { m.Play.CellHovered(cell); }); });
    connect(text_, &TextBox::LetterClicked, this, [this](const QString& line, int column) {
        Run([&](Model& m) { m.Solution.TextClicked(Utf8(line), column); });
    });
    connect(text_, &TextBox::Edited, this, [this](const QString& text) {
        Run([&](Model& m) { m.Import.TextChanged(Utf8(text)); });
    });

    const SettingsPanel* panel = column_->Panel();
    connect(panel, &SettingsPanel::Edited, this, [this](const PanelFields& fields) {
        Run([&](Model& m) { m.Settings.Edited(fields); });
    });
    connect(panel, &SettingsPanel::SizeChosen, this,
            [this] { Run([](Model& m) { m.Settings.SizeChosen(); }); });
    connect(panel, &SettingsPanel::ApplyClicked, this,
            [this] { Run([](Model& m) { m.Settings.Apply(); }); });
    connect(panel, &SettingsPanel::CancelClicked, this,
            [this] { Run([](Model& m) { m.Settings.Cancel(); }); });
    connect(panel, &SettingsPanel::WriteSolClicked, this,
            [this](bool on) { Run([=](Model& m) { m.Settings.SetWriteSol(on); }); });
    connect(panel, &SettingsPanel::NoWriteSolClicked, this,
            [this](bool on) { Run([=](Model& m) { m.Settings.SetNoWriteSol(on); }); });

    connect(search_.get(), &SearchThread::Said, this, [this](const MessageLines& lines) {
        Run([&](Model& m) { m.Solve.SearchSaid(lines); });
    });
    connect(search_.get(), &SearchThread::Came, this, [this](const SolveProgress& progress) {
        Run([&](Model& m) { m.Solve.SearchCame(progress); });
    });
    connect(search_.get(), &SearchThread::Side, this,
            [this](char side) { Run([=](Model& m) { m.Solve.SideChanged(side); }); });
    connect(aside_.get(), &SearchThread::Ended, this,
            [this](const std::shared_ptr<SolveReport>& report) {
                Run([&](Model& m) { m.Aside.Ended(*report); });
            });
    connect(search_.get(), &SearchThread::Ended, this,
            [this](const std::shared_ptr<SolveReport>& report) {
                Run([&](Model& m) { m.Solve.SearchEnded(*report); });
            });
}

void MainWindow::ConnectReplay() {
    connect(replay_, &ReplayBar::Go, this,
            [this](std::int64_t move) { Run([=](Model& m) { m.Solution.GoTo(move); }); });
    connect(replay_, &ReplayBar::StepPush, this,
            [this](bool forward) { Run([=](Model& m) { m.Solution.StepPush(forward); }); });
    connect(replay_, &ReplayBar::PlayClicked, this,
            [this] { Run([](Model& m) { m.Solution.PlayOrPause(); }); });
    connect(replay_, &ReplayBar::SolutionChosen, this,
            [this](int index) { Run([=](Model& m) { m.Solution.Choose(index); }); });
    connect(replay_, &ReplayBar::ArrowOwnerChosen, this, [this](bool replay) {
        Run([=](Model& m) { m.Play.GiveArrows(replay); });
        board_->setFocus();
    });
    connect(replay_, &ReplayBar::SpeedChosen, this, [this](int index) {
        preferences_.Speed = index;
        Run([=](Model& m) { m.Solution.SetSpeed(index); });
    });
}

void MainWindow::ConnectPreferences() {
    preferences_ = Preferences::Load();
    restoreGeometry(preferences_.Geometry);
    const auto look = [this](int theme) {
        preferences_.Look = static_cast<Theme>(theme);
        ApplyTheme(preferences_.Look);
        menus_->ShowTheme(theme);
    };
    const auto open = [this](bool on) {
        preferences_.Closing = on;
        closing_->Open(on);
        menus_->ShowClosing(on);
    };
    connect(menus_, &Menus::ThemeChosen, this, look);
    connect(menus_, &Menus::ClosingChosen, this, open);
    connect(closing_, &ClosingPanel::Opened, this, open);
    connect(closing_, &ClosingPanel::SaveChartClicked, this, &MainWindow::SaveChart);
    look(static_cast<int>(preferences_.Look));
    open(preferences_.Closing);
    model_->Solution.SetSpeed(preferences_.Speed);
    if (preferences_.Aside) model_->Aside.Turn();
}

void MainWindow::SaveChart() {
    const QString name = AskForChartFile(this);
    if (name.isEmpty()) return;
    const QString fault = closing_->Chart()->Save(name);
    if (!fault.isEmpty()) ShowBox(this, fault);
}

// Keys of the replay and of hand play.
bool MainWindow::TakeKey(int key, Qt::KeyboardModifiers modifiers) {
    const bool control = modifiers.testFlag(Qt::ControlModifier);
    const auto run = [this](const auto& command) {
        Run(command);
        return true;
    };
    const auto arrow = [&](int direction) {
        return run([=](Model& m) { m.ArrowPressed(direction, control); });
    };
    switch (key) {
        case Qt::Key_Left:
            return arrow(0);
        case Qt::Key_Down:
            return arrow(1);
        case Qt::Key_Right:
            return arrow(2);
        case Qt::Key_Up:
            return arrow(3);
        case Qt::Key_Home:
            return run([](Model& m) { m.EndPressed(false); });
        case Qt::Key_End:
            return run([](Model& m) { m.EndPressed(true); });
        case Qt::Key_Backspace:
            return run([](Model& m) { m.Undo(); });
        case Qt::Key_Space:
            return run([](Model& m) { m.SpacePressed(); });
        default:
            return false;
    }
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (!TakeKey(event->key(), event->modifiers())) QMainWindow::keyPressEvent(event);
}

// A button with the focus would take the arrows for a walk to its neighbours; Tab does that.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_Space && TakeKey(key->key(), key->modifiers())) return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::MakeShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto command) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, command);
    };
    add(Qt::Key_F5, [this] { column_->PressSolve(); });
    add(Qt::Key_F6, [this] { column_->PressAnim(true); });
    // What the right mouse button does there.
    add(Qt::SHIFT | Qt::Key_F6, [this] { column_->PressAnim(false); });
    add(Qt::Key_Escape, [this] { Run([](Model& m) { m.EscapePressed(); }); });
}

// Commands first, then what they work on.
void MainWindow::OrderFocus() {
    const QList<QWidget*> stops =
        column_->Stops() + QList<QWidget*>{board_, text_, replay_, status_, closing_};
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        button->installEventFilter(this);
    for (qsizetype i = 1; i < stops.size(); ++i) setTabOrder(stops[i - 1], stops[i]);
    stops[0]->setFocus();
}

void MainWindow::Show(const Screen& screen) {
    // "[*]" is the toolkit's mark for unsaved changes; doubled, it shows as written.
    setWindowTitle(Shown(screen.Title).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    menus_->Show(screen);
    const bool editing = IsEditing(screen.Phase);
    if (editing && !board_->Editing()) board_->setFocus();  // the arrows draw
    board_->ShowEditing(editing);
    const bool drawn = board_->Show(screen.Cells);
    const bool turned = std::exchange(preferences_.Aside, screen.AsideOn) != screen.AsideOn;
    if (drawn || turned) rest_->start();
    board_->ShowMarks(screen.Marks);
    replay_->Show(screen.Replay);
    closing_->Show(screen);
    const bool inBoard = board_->hasFocus() || text_->hasFocus();
    text_->Show(screen);
    if (inBoard) (HasBox(screen.Phase) ? static_cast<QWidget*>(text_) : board_)->setFocus();
    column_->Show(screen);
    status_->Show(screen);
    ShowList(screen);
    const auto run = [](QTimer* timer, bool on) {
        if (on != timer->isActive()) on ? timer->start() : timer->stop();
    };
    run(watch_, IsSolving(screen.Phase));
    const int tick = kReplaySpeeds[static_cast<std::size_t>(screen.Replay.Speed)].TickMs;
    if (anim_->interval() != tick) anim_->setInterval(tick);  // which would begin it anew
    run(anim_, IsPlaying(screen.Phase));
}

void MainWindow::Focus(Place place) {
    QWidget* widget = board_;
    if (place == Place::TextBox) {
        widget = text_;
    } else if (place == Place::NextButton) {
        if (column_->NextButton() != nullptr) widget = column_->NextButton();
    } else if (place != Place::Board) {
        widget = column_->Panel()->WidgetAt(place);
    }
    widget->setFocus(Qt::OtherFocusReason);
}

void MainWindow::Say(const std::string& text) {
    ShowBox(this, Shown(text));
}

Choice MainWindow::Ask(const std::string& text, Choices choices) {
    return AskBox(this, Shown(text), choices);
}

std::optional<std::string> MainWindow::AskOpenFile(const std::string& folder,
                                                   const std::string& name) {
    // A session's first dialog begins where the last session ended.
    const bool first = name.empty() && QFileInfo(preferences_.Folder).isDir();
    auto chosen = AskForOpenFile(this, first ? ToPath(preferences_.Folder) : folder, name);
    if (chosen) preferences_.Folder = QFileInfo(FromPath(*chosen)).absolutePath();
    return chosen;
}

std::optional<std::string> MainWindow::AskSaveFile(FileKind kind, const std::string& folder,
                                                   const std::string& name,
                                                   const std::string& what) {
    return AskForSaveFile(this, kind, folder, name, Shown(what));
}

std::optional<std::string> MainWindow::AskText(const std::string& title, const std::string& prompt,
                                               const std::string& answer) {
    return AskForText(this, Shown(title), Shown(prompt), Shown(answer));
}

std::string MainWindow::Clipboard() const {
    return Utf8(QApplication::clipboard()->text());
}

void MainWindow::SetClipboard(const std::string& text) {
    QApplication::clipboard()->setText(Shown(text));
}

void MainWindow::ShowHelp(int topic, const std::string& levelName) {
    if (help_ == nullptr) help_ = new HelpWindow(this);
    help_->ShowTopic(topic, Shown(levelName));
}

void MainWindow::StartSearch(SolveSession& session, const SolveRequest& request) {
    search_->Start(session, request);
}

void MainWindow::StartAside(SolveSession& session, const SolveRequest& request) {
    aside_->Start(session, request);
}

void MainWindow::Quit() {
    quitting_ = true;
    close();
}

// The close button is Exit, which may refuse or ask.
void MainWindow::closeEvent(QCloseEvent* event) {
    if (!quitting_) Run([](Model& m) { m.Levels.Exit(); });
    event->setAccepted(quitting_);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const std::string name = ToPath(event->mimeData()->urls().value(0).toLocalFile());
    if (name.empty()) return;  // of another machine
    event->acceptProposedAction();
    // The program that the file was dragged from waits for the answer: open it afterwards.
    QTimer::singleShot(0, this, [this, name] { OpenGiven(name); });
}

}  // namespace kavit
