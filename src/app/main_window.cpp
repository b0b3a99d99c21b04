#include "app/main_window.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFile>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include "app/board_view.h"
#include "app/menus.h"
#include "app/palette_view.h"
#include "app/qt_view.h"
#include "app/settings_panel.h"
#include "app/system_clock.h"

// The artwork lies in a library, whose resources are not found unless they are asked for.
static void LoadArtwork() {
    Q_INIT_RESOURCE(art);
}

namespace kavit {

MainWindow::MainWindow(std::string program, std::filesystem::path folder,
                       std::unique_ptr<ShellClock> clock)
    : clock_(clock ? std::move(clock) : std::make_unique<SystemClock>()),
      program_(std::move(program)),
      folder_(std::move(folder)) {
    LoadArtwork();
    setObjectName(QStringLiteral("Form1"));
    setAcceptDrops(true);
    CreateBoard();
    CreateStatus();
    CreateSide();
    CreateTimers();
    LayOut();
    ConnectMenus();
    view_ = std::make_unique<QtView>(this);
    shell_ = std::make_unique<Shell>(*view_, *clock_, program_, folder_);
    ConnectButtons();
    CreateShortcuts();
    OrderFocus();
}

MainWindow::~MainWindow() = default;

bool MainWindow::Start() {
    return shell_->FormLoad();
}

QLabel* MainWindow::AddLabel(const char* name, const QString& accessibleName, const QString& tip) {
    auto* label = new QLabel(this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setAccessibleName(accessibleName);
    label->setToolTip(tip);
    return label;
}

QLineEdit* MainWindow::AddLine(const char* name, const QString& accessibleName) {
    auto* line = new QLineEdit(this);
    line->setObjectName(QLatin1String(name));
    line->setReadOnly(true);
    line->setAccessibleName(accessibleName);
    return line;
}

QPushButton* MainWindow::AddButton(const char* name, const QString& caption, const QString& tip) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

// The text box lies over the board and takes its place while it is shown.
void MainWindow::CreateBoard() {
    boardArea_ = new QWidget(this);
    board_ = new BoardView(boardArea_);
    import_ = new QPlainTextEdit(boardArea_);
    import_->setObjectName(QStringLiteral("rtxtImport"));
    import_->setAccessibleName(tr("Level or solution text"));
    QFont courier(QStringLiteral("Courier"));
    courier.setStyleHint(QFont::Monospace);
    courier.setFixedPitch(true);
    import_->setFont(courier);
    import_->setTabChangesFocus(true);
    import_->setAcceptDrops(false);  // a file dropped here is opened by the window
    import_->installEventFilter(this);
    auto* over = new QGridLayout(boardArea_);
    over->setContentsMargins(0, 0, 0, 0);
    over->addWidget(board_, 0, 0);
    over->addWidget(import_, 0, 0);
    import_->raise();
}

void MainWindow::CreateStatus() {
    status_ = new QWidget(this);
    auto* progress = new QProgressBar(this);
    progress->setObjectName(QStringLiteral("PBarAdvance"));
    progress->setAccessibleName(tr("Positions stored"));
    progress->setToolTip(tr("How full the store of positions is"));
    progress->setTextVisible(false);
    QSizePolicy keep = progress->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    progress->setSizePolicy(keep);

    auto* timer = AddLabel("lblTimer", tr("Elapsed seconds"), tr("Elapsed seconds / time limit"));
    auto* side = AddLabel("lblSeaTimer", tr("Search side"), tr("The side that is searched"));
    auto* debug =
        AddLabel("lblDebug", tr("Search figures"), tr("Positions that the search stored"));
    auto* size = AddLabel("lblSize", tr("Sizes"), tr("Max Positions / Blocks in force"));
    size->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto* lines = new QGridLayout(status_);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->addWidget(AddLine("txtLeft", tr("Status")), 0, 0, 1, 3);
    lines->addWidget(AddLine("txtRight", tr("Status details")), 0, 3, 1, 3);
    lines->addWidget(progress, 1, 0, 1, 6);
    lines->addWidget(timer, 2, 0);
    lines->addWidget(side, 2, 1);
    lines->addWidget(debug, 2, 2, 1, 2);
    lines->addWidget(AddLine("txtIni", tr("Start of the search")), 2, 4);
    lines->addWidget(AddLine("txtNow", tr("Time now")), 2, 4);
    lines->addWidget(size, 2, 5);
    lines->setColumnStretch(2, 1);
    lines->setColumnStretch(3, 1);
}

void MainWindow::CreateSide() {
    side_ = new QWidget(this);
    palette_ = new PaletteView(side_);
    panel_ = new SettingsPanel(side_);

    auto* optimizer =
        AddLabel("lblOpt", tr("Optimizer level"),
                 tr("Optimizer level: None, Something, More or Plus; underlined with Special"));
    QFont big = optimizer->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.5);
    optimizer->setFont(big);
    optimizer->setAlignment(Qt::AlignCenter);

    auto* column = new QVBoxLayout(side_);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(AddButton("btnSOLVE", tr("SOLVE"), tr("Solve the level (F5)")));
    column->addWidget(AddButton("btnANIM", tr("ANIM"),
                                tr("Replay the solution (F6). Stopped: left button goes on, right "
                                   "button or Shift+F6 starts again")));
    column->addWidget(AddButton("btnCLEAR", tr("CLEAR"), tr("Empty the board")));
    column->addWidget(optimizer);
    column->addWidget(palette_, 0, Qt::AlignHCenter);
    CreateEditorButtons();
    column->addWidget(panel_);
    column->addStretch(1);
    auto* moves = new QRadioButton(tr("Moves"), side_);
    moves->setObjectName(QStringLiteral("OptMovPus0"));
    auto* pushes = new QRadioButton(tr("Pushes"), side_);
    pushes->setObjectName(QStringLiteral("OptMovPus1"));
    column->addWidget(moves);
    column->addWidget(pushes);
}

void MainWindow::CreateEditorButtons() {
    auto* frame = new QWidget(side_);
    frame->setObjectName(QStringLiteral("frmCommands"));
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    struct Place {
        QString Tip;
        int Row;
        int Column;
    };
    const Place shifts[] = {
        {tr("Move the level one square left"), 1, 0},  {tr("Move the level one square down"), 2, 1},
        {tr("Move the level one square right"), 1, 2}, {tr("Move the level one square up"), 0, 1},
        {tr("Move the level to the middle"), 1, 1},
    };
    const Place turns[] = {
        {tr("Turn the level a quarter clockwise"), 3, 2},
        {tr("Swap left and right"), 4, 0},
        {tr("Turn the level a quarter counter-clockwise"), 3, 0},
        {tr("Swap top and bottom"), 4, 2},
        {tr("Turn the level upside down"), 3, 1},
    };
    const auto add = [&](const QString& name, std::string_view caption, const Place& place) {
        auto* button = AddButton("", tr(caption.data()), place.Tip);
        button->setObjectName(name);
        grid->addWidget(button, place.Row, place.Column);
        return button;
    };
    for (int i = 0; i < 5; ++i) {
        const auto at = static_cast<std::size_t>(i);
        connect(add(QStringLiteral("btnMover%1").arg(i), kShiftCaptions[at], shifts[at]),
                &QPushButton::clicked, this, [this, i] { shell_->ShiftClicked(i); });
        connect(add(QStringLiteral("btnSpMov%1").arg(i), kMirrorRotateCaptions[at], turns[at]),
                &QPushButton::clicked, this, [this, i] { shell_->MirrorRotateClicked(i); });
    }
    side_->layout()->addWidget(frame);
}

void MainWindow::CreateTimers() {
    auto* watch = new QTimer(this);
    watch->setObjectName(QStringLiteral("TimerWatch"));
    watch->setInterval(1000);
    connect(watch, &QTimer::timeout, this, [this] { shell_->WatchTick(); });
    auto* anim = new QTimer(this);
    anim->setObjectName(QStringLiteral("TimerAnim"));
    anim->setInterval(kAnimTickMs);
    connect(anim, &QTimer::timeout, this, [this] { shell_->AnimTick(); });
}

void MainWindow::LayOut() {
    auto* center = new QWidget(this);
    auto* grid = new QGridLayout(center);
    grid->addWidget(boardArea_, 0, 0);
    grid->addWidget(side_, 0, 1);
    grid->addWidget(status_, 1, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
    setCentralWidget(center);
    side_->setMinimumWidth(side_->sizeHint().width());  // the panel must not move the board
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
}

// Commands first, then what they work on; the status lines, which only show, come last.
void MainWindow::OrderFocus() {
    QStringList names = {QStringLiteral("btnSOLVE"), QStringLiteral("btnANIM"),
                         QStringLiteral("btnCLEAR")};
    for (int i = 0; i < 10; ++i) names += QStringLiteral("ImgEdit%1").arg(i);
    for (int i = 0; i < 5; ++i) names += QStringLiteral("btnMover%1").arg(i);
    for (int i = 0; i < 5; ++i) names += QStringLiteral("btnSpMov%1").arg(i);
    for (const char* name : {"cmbMemory", "cmbBlocks", "cmbTime", "chkWriteSol", "chkNoWriteSol",
                             "frmbtnApply", "frmbtnCancel", "rtxtImport", "txtLeft", "txtRight"}) {
        names += QLatin1String(name);
    }
    for (qsizetype i = 1; i < names.size(); ++i) {
        setTabOrder(findChild<QWidget*>(names[i - 1]), findChild<QWidget*>(names[i]));
    }
    findChild<QWidget*>(names[0])->setFocus();
}

void MainWindow::ConnectButtons() {
    const auto button = [this](const char* name) {
        return findChild<QPushButton*>(QLatin1String(name));
    };
    connect(button("btnSOLVE"), &QPushButton::clicked, this, [this] { shell_->SolveClicked(); });
    connect(button("btnCLEAR"), &QPushButton::clicked, this, [this] { shell_->ClearClicked(); });
    // A left release comes as a click, from the keyboard too; other buttons need the filter.
    connect(button("btnANIM"), &QPushButton::clicked, this, [this] { shell_->AnimMouseUp(true); });
    button("btnANIM")->installEventFilter(this);
    findChild<QLabel*>(QStringLiteral("lblOpt"))->installEventFilter(this);

    connect(board_, &BoardView::CellDown, this, [this](int i) { shell_->CellDown(i); });
    connect(board_, &BoardView::CellMove, this,
            [this](int i, int x, int y) { shell_->CellMove(i, x, y); });
    connect(board_, &BoardView::CellUp, this, [this](int i) { shell_->CellUp(i); });
    connect(palette_, &PaletteView::ToolClicked, this, [this](int t) { shell_->SelectTool(t); });
    connect(import_, &QPlainTextEdit::textChanged, this, [this] { shell_->ImportTextChanged(); });

    connect(panel_, &SettingsPanel::ApplyClicked, this, [this] { shell_->ApplyClicked(); });
    connect(panel_, &SettingsPanel::CancelClicked, this, [this] { shell_->CancelClicked(); });
    connect(panel_, &SettingsPanel::SizeChosen, this, [this] { shell_->SizeChosen(); });
    connect(panel_, &SettingsPanel::WriteSolClicked, this, [this] { shell_->WriteSolClicked(); });
    connect(panel_, &SettingsPanel::NoWriteSolClicked, this,
            [this] { shell_->NoWriteSolClicked(); });
}

// An entry of a menu array is its family and its index.
void MainWindow::ConnectMenus() {
    auto* menus = new Menus(this);
    connect(menus, &Menus::Chosen, this, [this](const QString& name) {
        using Handler = void (Shell::*)();
        using IndexHandler = void (Shell::*)(int);
        static const QHash<QString, Handler> single = {
            {QStringLiteral("mnuSave"), &Shell::SaveSettings},
            {QStringLiteral("mnuEditBoard"), &Shell::EditBoard},
            {QStringLiteral("mnuImport"), &Shell::ImportBoard},
            {QStringLiteral("mnuCopyBoard"), &Shell::CopyBoard},
            {QStringLiteral("mnuCopySolution"), &Shell::CopySolution},
            {QStringLiteral("mnuPasteLevel"), &Shell::PasteLevel},
            {QStringLiteral("mnuExit"), &Shell::ExitClicked},
            {QStringLiteral("mnuOptSpec"), &Shell::OptSpecClicked},
            {QStringLiteral("mnuConfigure"), &Shell::ConfigureClicked},
        };
        static const QHash<QString, IndexHandler> family = {
            {QStringLiteral("mnuOpen"), &Shell::LevelCommand},
            {QStringLiteral("mnuSea"), &Shell::SeaClicked},
            {QStringLiteral("mnuEx"), &Shell::ExampleCommand},
            {QStringLiteral("mnuOpt"), &Shell::OptClicked},
            {QStringLiteral("mnuHash"), &Shell::HashClicked},
        };
        if (const Handler handler = single.value(name)) return (shell_.get()->*handler)();
        if (name == QLatin1String("mnuHlpInfo")) return shell_->HelpClicked(4);
        if (name == QLatin1String("mnuHlpAbout")) return shell_->HelpClicked(5);
        qsizetype digits = name.size();
        while (name.at(digits - 1).isDigit()) --digits;
        const int index = name.mid(digits).toInt();
        if (const IndexHandler handler = family.value(name.left(digits))) {
            return (shell_.get()->*handler)(index);
        }
        shell_->HelpClicked(index + 1);  // mnuHlp0 to mnuHlp2
    });
}

void MainWindow::CreateShortcuts() {
    const auto add = [this](const QKeySequence& keys, const char* button) {
        auto* widget = findChild<QPushButton*>(QLatin1String(button));
        connect(new QShortcut(keys, this), &QShortcut::activated, widget, &QPushButton::click);
    };
    add(Qt::Key_F5, "btnSOLVE");
    add(Qt::Key_F6, "btnANIM");
    // What the right mouse button does there.
    auto* anim = findChild<QPushButton*>(QStringLiteral("btnANIM"));
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F6, this), &QShortcut::activated, anim, [this, anim] {
        if (anim->isEnabled()) shell_->AnimMouseUp(false);
    });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this,
            [this] { shell_->EscapePressed(); });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!shell_->Solving()) return event->accept();
    event->ignore();
    shell_->ExitClicked();  // which refuses
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.constFirst().isLocalFile()) return;
    event->acceptProposedAction();
    const std::string name = QFile::encodeName(urls.constFirst().toLocalFile()).toStdString();
    // The program that the file was dragged from waits for the answer: open it afterwards.
    QTimer::singleShot(0, this, [this, name] { shell_->OpenGiven(name); });
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        watched->objectName() == QLatin1String("btnANIM")) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const auto* button = static_cast<QWidget*>(watched);
        if (mouse->button() != Qt::LeftButton && button->isEnabled() &&
            button->rect().contains(mouse->position().toPoint())) {
            shell_->AnimMouseUp(false);
            return true;
        }
    }
    // While it is read-only the text box leaves Ctrl+C to the window, which copies the solution.
    if (event->type() == QEvent::ShortcutOverride && watched == import_ &&
        import_->textCursor().hasSelection() &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::MouseButtonDblClick &&
        watched->objectName() == QLatin1String("lblOpt")) {
        shell_->OptLabelDoubleClicked();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace kavit
