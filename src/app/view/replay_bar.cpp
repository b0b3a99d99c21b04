#include "app/view/replay_bar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolButton>

#include "app/view/plain_text.h"
#include "app/view/theme.h"

namespace kavit {

MoveSlider::MoveSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setObjectName(QStringLiteral("sldMoves"));
    setAccessibleName(tr("Move of the solution"));
    setToolTip(tr("Moves of the solution; a mark for each push"));
    setMinimumHeight(28);
}

void MoveSlider::SetMarks(std::vector<std::int64_t> marks) {
    if (marks == marks_) return;
    marks_ = std::move(marks);
    update();
}

// The marks stand where the handle's middle would be. Where there are more pushes than pixels, they
// run together.
void MoveSlider::paintEvent(QPaintEvent* event) {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect groove =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const QRect handle =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    const int span = groove.width() - handle.width();
    {
        QPainter painter(this);
        for (const std::int64_t mark : marks_) {
            const int at =
                QStyle::sliderPositionFromValue(minimum(), maximum(), static_cast<int>(mark), span);
            const int x = groove.left() + handle.width() / 2 + at;
            painter.drawLine(x, height() - 5, x, height());
        }
    }
    QSlider::paintEvent(event);
}

namespace {

// The signs of a player, of bars and triangles in the colour of text: "|<<", "<<", ">", "||".
QIcon Sign(const char* shape, const QColor& colour) {
    constexpr int kEdge = 64;
    QPixmap pixmap(kEdge, kEdge);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const qreal width = kEdge * 0.9 / 3;
    qreal x = (kEdge - width * static_cast<qreal>(qstrlen(shape))) / 2;
    for (const char* part = shape; *part != '\0'; ++part, x += width) {
        if (*part == '|')
            painter.fillRect(QRectF(x + width / 4, 10, width / 2, kEdge - 20), colour);
        const qreal point = *part == '<' ? x : x + width;
        const qreal base = *part == '<' ? x + width : x;
        if (*part == '|') continue;
        QPainterPath triangle(QPointF(base, 10));
        triangle.lineTo(point, kEdge / 2.0);
        triangle.lineTo(base, kEdge - 10);
        painter.fillPath(triangle, colour);
    }
    return QIcon(pixmap);
}

}  // namespace

ReplayBar::ReplayBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmReplay"));
    setAccessibleName(tr("Replay"));
    auto* row = new QHBoxLayout;
    const auto add = [&](const char* name, const char* sign, const QString& tip) {
        auto* button = new QToolButton(this);
        button->setObjectName(QLatin1String(name));
        button->setProperty("sign", QByteArray(sign));
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        button->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(button);
        return button;
    };
    connect(add("btnFirst", "|<<", tr("To the start (Home)")), &QToolButton::clicked, this,
            [this] { emit Go(0); });
    connect(add("btnBack", "<<", tr("Back to the last push (Left)")), &QToolButton::clicked, this,
            [this] { emit StepPush(false); });
    play_ = add("btnPlay", ">", tr("Play (Space)"));
    connect(play_, &QToolButton::clicked, this, &ReplayBar::PlayClicked);
    connect(add("btnForward", ">>", tr("On to the next push (Right)")), &QToolButton::clicked, this,
            [this] { emit StepPush(true); });
    connect(add("btnLast", ">>|", tr("To the end (End)")), &QToolButton::clicked, this,
            [this] { emit Go(look_.Moves); });

    slider_ = new MoveSlider(this);
    connect(slider_, &QSlider::valueChanged, this, [this](int move) { emit Go(move); });
    row->addWidget(slider_, 1);
    place_ = new QLabel(this);
    place_->setObjectName(QStringLiteral("lblPlace"));
    place_->setTextFormat(Qt::PlainText);
    place_->setMinimumWidth(fontMetrics().horizontalAdvance(QString(32, QLatin1Char('0'))));
    place_->setAccessibleName(tr("Place in the solution"));
    row->addWidget(place_);

    auto* choices = new QHBoxLayout;
    const auto choice = [&](const char* name, const QString& label) {
        auto* box = new QComboBox(this);
        box->setObjectName(QLatin1String(name));
        box->setAccessibleName(label);
        box->setToolTip(label);
        choices->addWidget(box);
        return box;
    };
    solution_ = choice("cmbSolution", tr("Solution to replay"));
    connect(solution_, &QComboBox::activated, this, &ReplayBar::SolutionChosen);
    choices->addStretch(1);
    speed_ = choice("cmbSpeed", tr("Speed of the replay"));
    for (const ReplaySpeed& speed : kReplaySpeeds) speed_->addItem(tr("%1x").arg(speed.Factor));
    connect(speed_, &QComboBox::activated, this, &ReplayBar::SpeedChosen);
    arrows_ = choice("cmbArrows", tr("What the arrow keys do"));
    arrows_->addItem(tr("Arrow keys: hand play"));
    arrows_->addItem(tr("Arrow keys: replay"));
    connect(arrows_, &QComboBox::activated, this,
            [this](int index) { emit ArrowOwnerChosen(index == 1); });

    QSizePolicy keep = sizePolicy();  // the board stays where it is when the bar comes
    keep.setRetainSizeWhenHidden(true);
    setSizePolicy(keep);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addLayout(row);
    rows->addLayout(choices);
    DrawThemed(this, [this] { DrawSigns(); });
}

void ReplayBar::DrawSigns() {
    for (QToolButton* button : findChildren<QToolButton*>())
        button->setIcon(Sign(button->property("sign").toByteArray().constData(),
                             palette().color(QPalette::ButtonText)));
}

void ReplayBar::Show(const ReplayLook& look) {
    setVisible(look.Visible);
    if (!look.Visible) return;
    if (look.Names != look_.Names) {
        solution_->clear();
        for (const std::string& name : look.Names) solution_->addItem(Shown(name));
    }
    solution_->setCurrentIndex(look.Chosen);
    speed_->setCurrentIndex(look.Speed);
    arrows_->setCurrentIndex(look.OwnsArrows ? 1 : 0);
    if (look.Playing != look_.Playing) {
        play_->setProperty("sign", QByteArray(look.Playing ? "||" : ">"));
        play_->setToolTip(look.Playing ? tr("Pause (Space)") : tr("Play (Space)"));
        play_->setAccessibleName(play_->toolTip());
        DrawSigns();
    }
    const QSignalBlocker quiet(slider_);
    slider_->setRange(0, static_cast<int>(look.Moves));
    slider_->SetMarks(look.PushMarks);
    slider_->setValue(static_cast<int>(look.At));
    place_->setText(tr("%1/%2 moves, %3/%4 pushes")
                        .arg(look.At)
                        .arg(look.Moves)
                        .arg(look.PushesAt)
                        .arg(look.Pushes));
    look_ = look;
}

}  // namespace kavit
