#include "app/view/command_column.h"

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "app/view/palette_view.h"
#include "app/view/plain_text.h"
#include "app/view/settings_panel.h"

namespace kavit {

CommandColumn::CommandColumn(QWidget* parent)
    : QWidget(parent),
      solve_(AddButton("btnSOLVE", tr("SOLVE"), tr("Solve the level (F5)"))),
      anim_(AddButton("btnANIM", tr("ANIM"),
                      tr("Replay the solution (F6). Stopped: left button goes on, right button or "
                         "Shift+F6 starts again"))),
      clear_(AddButton("btnCLEAR", tr("CLEAR"), tr("Empty the board"))),
      letter_(new QLabel(this)),
      palette_(new PaletteView(this)),
      editor_(new QWidget(this)),
      aside_(new QLabel(this)),
      panel_(new SettingsPanel(this)) {
    letter_->setObjectName(QStringLiteral("lblOpt"));
    letter_->setTextFormat(Qt::PlainText);
    letter_->setAccessibleName(tr("Optimizer level"));
    letter_->setToolTip(
        tr("Optimizer level: None, Something, More, Plus or Fewest moves of all; underlined with "
           "Special"));
    QFont big = letter_->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.5);
    letter_->setFont(big);
    letter_->setAlignment(Qt::AlignCenter);
    letter_->installEventFilter(this);
    anim_->installEventFilter(this);
    MakeEditorButtons();
    aside_->setObjectName(QStringLiteral("lblAside"));
    aside_->setTextFormat(Qt::PlainText);
    aside_->setWordWrap(true);
    aside_->setAccessibleName(tr("Solution of what is drawn"));

    auto* moves = new QRadioButton(tr("Moves"), this);
    moves->setObjectName(QStringLiteral("OptMovPus0"));
    auto* pushes = new QRadioButton(tr("Pushes"), this);
    pushes->setObjectName(QStringLiteral("OptMovPus1"));
    moves->hide();
    pushes->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(solve_);
    column->addWidget(anim_);
    column->addWidget(clear_);
    column->addWidget(letter_);
    column->addWidget(palette_, 0, Qt::AlignHCenter);
    column->addWidget(editor_);
    column->addWidget(aside_);
    column->addWidget(panel_);
    column->addStretch(1);
    column->addWidget(moves);
    column->addWidget(pushes);
    setMinimumWidth(sizeHint().width());  // what comes and goes must not move the board
    for (QWidget* part : {static_cast<QWidget*>(aside_), editor_, static_cast<QWidget*>(panel_)})
        part->hide();

    connect(solve_, &QPushButton::clicked, this, &CommandColumn::SolveClicked);
    connect(clear_, &QPushButton::clicked, this, &CommandColumn::ClearClicked);
    // A left release comes as a click, from the keyboard too; other buttons need the filter.
    connect(anim_, &QPushButton::clicked, this, [this] { emit AnimReleased(true); });
}

QPushButton* CommandColumn::AddButton(const char* name, const QString& caption,
                                      const QString& tip) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    return button;
}

// Placed as they move the level: the arrows around the middle, the turns below.
void CommandColumn::MakeEditorButtons() {
    editor_->setObjectName(QStringLiteral("frmCommands"));
    auto* grid = new QGridLayout(editor_);
    grid->setContentsMargins(0, 0, 0, 0);
    struct Entry {
        const char* Name;
        QString Caption;
        QString Tip;
        int Row;
        int Column;
    };
    const Entry shifts[] = {
        {"btnMover0", tr("Left"), tr("Move the level one square left"), 1, 0},
        {"btnMover1", tr("Down"), tr("Move the level one square down"), 2, 1},
        {"btnMover2", tr("Right"), tr("Move the level one square right"), 1, 2},
        {"btnMover3", tr("Up"), tr("Move the level one square up"), 0, 1},
        {"btnMover4", tr("Center"), tr("Move the level to the middle"), 1, 1},
    };
    const Entry turns[] = {
        {"btnSpMov0", tr("+ 90"), tr("Turn the level a quarter clockwise"), 3, 2},
        {"btnSpMov1", tr("H Mirror"), tr("Swap left and right"), 4, 0},
        {"btnSpMov2", tr("- 90"), tr("Turn the level a quarter counter-clockwise"), 3, 0},
        {"btnSpMov3", tr("V Mirror"), tr("Swap top and bottom"), 4, 2},
        {"btnSpMov4", tr("180"), tr("Turn the level upside down"), 3, 1},
    };
    const auto add = [&](const Entry& entry, auto signal, int index) {
        QPushButton* button = AddButton(entry.Name, entry.Caption, entry.Tip);
        grid->addWidget(button, entry.Row, entry.Column);
        connect(button, &QPushButton::clicked, this,
                [this, signal, index] { emit(this->*signal)(index); });
    };
    for (int i = 0; i < 5; ++i) add(shifts[i], &CommandColumn::ShiftClicked, i);
    for (int i = 0; i < 5; ++i) add(turns[i], &CommandColumn::MirrorRotateClicked, i);
}

void CommandColumn::Show(const Screen& screen) {
    solve_->setText(Shown(screen.Keys.Solve));
    anim_->setText(Shown(screen.Keys.Anim));
    solve_->setEnabled(screen.Keys.SolveOn);
    anim_->setEnabled(screen.Keys.AnimOn);
    clear_->setEnabled(screen.Keys.ClearOn);
    letter_->setText(Shown(screen.Optimizer));
    QFont font = letter_->font();
    font.setUnderline(screen.OptimizerUnderlined);
    letter_->setFont(font);
    const bool editing = IsEditing(screen.Phase);
    palette_->Show(editing ? screen.Tool : kNoTool);
    editor_->setVisible(editing);
    aside_->setText(Shown(screen.Aside));
    aside_->setVisible(!screen.Aside.empty());
    panel_->Show(screen);
}

QWidget* CommandColumn::NextButton() const {
    for (QPushButton* button : {solve_, anim_, clear_}) {
        if (button->isEnabled()) return button;
    }
    return nullptr;
}

QList<QWidget*> CommandColumn::Stops() const {
    QList<QWidget*> stops = {solve_, anim_, clear_};
    for (auto* tool : palette_->findChildren<QToolButton*>()) stops += tool;
    for (auto* button : editor_->findChildren<QPushButton*>()) stops += button;
    return stops + panel_->Stops();
}

void CommandColumn::PressSolve() {
    solve_->click();
}

void CommandColumn::PressAnim(bool left) {
    if (left) return anim_->click();
    emit AnimReleased(false);
}

bool CommandColumn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && watched == anim_) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton &&
            anim_->rect().contains(mouse->position().toPoint()))
            emit AnimReleased(false);
    }
    if (event->type() == QEvent::MouseButtonDblClick && watched == letter_)
        emit LetterDoubleClicked();
    return QWidget::eventFilter(watched, event);
}

}  // namespace kavit
