#include "app/view/board_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "app/view/theme.h"
#include "level/steps.h"

namespace kavit {

BoardView::BoardView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Cell"));
    setAccessibleName(tr("Board"));
    setAccessibleDescription(tr("The level, 17 rows of 19 squares"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

QSize BoardView::minimumSizeHint() const {
    return {Maxcol * kLeastCell, Maxrow * kLeastCell};
}

QSize BoardView::sizeHint() const {
    return {Maxcol * 32, Maxrow * 32};
}

// The smallest rectangle that holds all that is not floor; the whole grid when everything is.
BoardView::Extent BoardView::ShownExtent() const {
    int top = Maxrow;
    int left = Maxcol;
    int bottom = -1;
    int right = -1;
    for (int cell = 0; cell < kCells && !wholeGrid_; ++cell) {
        if (PictureAt(cell) == Picture::Floor || PictureAt(cell) == Picture::Outside) continue;
        top = std::min(top, cell / Maxcol);
        left = std::min(left, cell % Maxcol);
        bottom = std::max(bottom, cell / Maxcol);
        right = std::max(right, cell % Maxcol);
    }
    if (bottom < 0) return {};
    return {top, left, bottom - top + 1, right - left + 1};
}

// In pixels of the screen: a cell of 38.75 of them would be blurred.
void BoardView::LayOut() {
    extent_ = ShownExtent();
    const qreal ratio = devicePixelRatioF();
    const int width = static_cast<int>(this->width() * ratio);
    const int height = static_cast<int>(this->height() * ratio);
    edge_ = std::max(1, std::min(width / extent_.Cols, height / extent_.Rows));
    origin_ = {(width - edge_ * extent_.Cols) / 2, (height - edge_ * extent_.Rows) / 2};
    update();
}

QRect BoardView::PixelRect(int cell) const {
    return {origin_.x() + (cell % Maxcol - extent_.Left) * edge_,
            origin_.y() + (cell / Maxcol - extent_.Top) * edge_, edge_, edge_};
}

QRect BoardView::CellRect(int cell) const {
    const QRect pixels = PixelRect(cell);
    const qreal ratio = devicePixelRatioF();
    return QRectF(pixels.x() / ratio, pixels.y() / ratio, edge_ / ratio, edge_ / ratio)
        .toAlignedRect();
}

int BoardView::CellAt(const QPointF& point) const {
    const QPointF inside = point * devicePixelRatioF() - QPointF(origin_);
    const int col = static_cast<int>(std::floor(inside.x() / edge_));
    const int row = static_cast<int>(std::floor(inside.y() / edge_));
    if (col < 0 || row < 0 || col >= extent_.Cols || row >= extent_.Rows) return -1;
    return (row + extent_.Top) * Maxcol + col + extent_.Left;
}

int BoardView::NearestCell(const QPointF& point) const {
    const qreal ratio = devicePixelRatioF();
    const QPointF pixel = point * ratio;
    const QRectF board(origin_.x(), origin_.y(), edge_ * extent_.Cols, edge_ * extent_.Rows);
    return CellAt(QPointF(std::clamp(pixel.x(), board.left(), board.right() - 1),
                          std::clamp(pixel.y(), board.top(), board.bottom() - 1)) /
                  ratio);
}

void BoardView::UpdateCell(int cell) {
    if (cell >= 0) update(CellRect(cell));
}

bool BoardView::Show(const std::array<Picture, kCells>& pictures) {
    const std::array<Picture, kCells> before = std::exchange(pictures_, pictures);
    if (ShownExtent() != extent_) {
        LayOut();
    } else {
        for (int cell = 0; cell < kCells; ++cell)
            if (before[static_cast<std::size_t>(cell)] != PictureAt(cell)) UpdateCell(cell);
    }
    return before != pictures_;
}

void BoardView::ShowMarks(const BoardMarks& marks) {
    if (marks == marks_) return;
    marks_ = marks;
    update();
}

void BoardView::ShowWholeGrid(bool whole) {
    if (whole == wholeGrid_) return;
    wholeGrid_ = whole;
    LayOut();
}

void BoardView::TurnCursor(bool on) {
    if (on == cursorOn_) return;
    EndKeyDrag();
    cursorOn_ = on;
    UpdateCell(cursor_);
}

void BoardView::resizeEvent(QResizeEvent* /*event*/) {
    LayOut();
}

void BoardView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) update();
    QWidget::changeEvent(event);
}

void BoardView::paintEvent(QPaintEvent* event) {
    art_.SetSize(edge_, IsDark(palette()));
    QPainter painter(this);
    const qreal ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    for (int row = 0; row < extent_.Rows; ++row) {
        for (int col = 0; col < extent_.Cols; ++col) {
            const int cell = (row + extent_.Top) * Maxcol + col + extent_.Left;
            if (!event->region().intersects(CellRect(cell))) continue;
            if (PictureAt(cell) == Picture::Outside) continue;
            painter.drawPixmap(PixelRect(cell), art_.At(PictureAt(cell)));
        }
    }
    painter.setRenderHint(QPainter::Antialiasing);
    PaintMarks(painter);
}

namespace {

// A stroke that is seen on any ground: light within dark.
template <typename Draw>
void DoubleStroke(QPainter& painter, const QColor& colour, qreal width, Draw draw) {
    for (const auto& [ink, pen] : {std::pair(QColor(Qt::black), width * 1.8), {colour, width}}) {
        painter.setPen(QPen(ink, pen, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        draw();
    }
}

}  // namespace

void BoardView::PaintMarks(QPainter& painter) const {
    const qreal unit = edge_ / 22.0;
    const QColor light = QColor(0xff, 0xe0, 0x66);
    const auto frame = [&](int cell, qreal inset) {
        return QRectF(PixelRect(cell)).adjusted(inset, inset, -inset, -inset);
    };
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(200, 60, 60, 150), unit));
    for (const int cell : marks_.Dead) {
        const QRectF box = frame(cell, 0);
        for (const qreal part : {0.25, 0.5, 0.75})
            painter.drawLine(box.topLeft() + QPointF(box.width() * part, 0),
                             box.topLeft() + QPointF(0, box.height() * part));
        for (const qreal part : {0.0, 0.25, 0.5, 0.75})
            painter.drawLine(box.topLeft() + QPointF(box.width(), box.height() * part),
                             box.topLeft() + QPointF(box.width() * part, box.height()));
    }
    for (const int cell : marks_.Reach) {
        painter.setPen(QPen(Qt::black, unit));
        painter.setBrush(light);
        painter.drawEllipse(QRectF(PixelRect(cell)).center(), 3 * unit, 3 * unit);
    }
    painter.setBrush(Qt::NoBrush);
    for (const int cell : marks_.Stuck) {
        const QRectF box = frame(cell, 4 * unit);
        DoubleStroke(painter, QColor(0xff, 0x5c, 0x5c), 2 * unit, [&] {
            painter.drawLine(box.topLeft(), box.bottomRight());
            painter.drawLine(box.topRight(), box.bottomLeft());
        });
    }
    for (const int cell : marks_.Wrong) {
        const QRectF box = frame(cell, 1.5 * unit);
        painter.setPen(QPen(Qt::white, 3 * unit));
        painter.drawRect(box);
        painter.setPen(QPen(QColor(0xc0, 0, 0), 2 * unit, Qt::DashLine, Qt::FlatCap));
        painter.drawRect(box);
    }
    PaintPath(painter);
    if (marks_.Selected >= 0)
        DoubleStroke(painter, light, 2 * unit,
                     [&] { painter.drawRect(frame(marks_.Selected, 2 * unit)); });
    if (cursorOn_ && hasFocus())
        DoubleStroke(painter, Qt::white, 1.5 * unit,
                     [&] { painter.drawEllipse(frame(cursor_, 2 * unit)); });
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2 * devicePixelRatioF()));
        painter.drawRect(
            QRectF(QPointF(0, 0), QSizeF(size()) * devicePixelRatioF()).adjusted(1, 1, -1, -1));
    }
}

void BoardView::PaintPath(QPainter& painter) const {
    if (marks_.Path.size() < 2) return;
    const qreal unit = edge_ / 22.0;
    QPainterPath way(QRectF(PixelRect(marks_.Path.front())).center());
    for (const int cell : marks_.Path) way.lineTo(QRectF(PixelRect(cell)).center());
    const QPointF end = way.currentPosition();
    const QPointF before = QRectF(PixelRect(marks_.Path[marks_.Path.size() - 2])).center();
    const QPointF along = (end - before) / edge_ * 5 * unit;
    const QPointF across(-along.y(), along.x());
    way.moveTo(end - along + across);
    way.lineTo(end);
    way.lineTo(end - along - across);
    painter.setBrush(Qt::NoBrush);
    DoubleStroke(painter, QColor(0x7f, 0xd4, 0xff), 2.5 * unit, [&] { painter.drawPath(way); });
}

void BoardView::mousePressEvent(QMouseEvent* event) {
    const bool right = event->button() == Qt::RightButton;
    if (event->button() != Qt::LeftButton && !right) return QWidget::mousePressEvent(event);
    if (lastCell_ >= 0 && event->buttons() != event->button()) return;  // the other one is down
    EndPress();
    dragged_ = event->position();
    lastCell_ = CellAt(dragged_);
    if (lastCell_ < 0) return;
    UpdateCell(cursor_);
    cursor_ = lastCell_;
    UpdateCell(cursor_);
    emit CellDown(lastCell_, right);
}

// A fast pointer skips squares: the way is walked in steps below a square, and each new square of
// it is told once.
void BoardView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) EndPress();
    if (lastCell_ < 0) {
        const int cell = CellAt(event->position());
        if (std::exchange(hovered_, cell) != cell) emit CellHovered(cell);
        return;
    }
    const QPointF from = dragged_;
    const QPointF way = event->position() - from;
    dragged_ = event->position();
    const qreal cell = edge_ / devicePixelRatioF();
    const int steps =
        1 + static_cast<int>(std::max(std::abs(way.x()), std::abs(way.y())) / (0.5 * cell));
    for (int step = 1; step <= steps; ++step) {
        const int now = NearestCell(from + way * step / steps);
        if (std::exchange(lastCell_, now) != now) emit CellMove(now);
    }
}

void BoardView::mouseReleaseEvent(QMouseEvent* event) {
    if (lastCell_ < 0 || event->buttons() != Qt::NoButton) {
        return QWidget::mouseReleaseEvent(event);
    }
    EndPress();
}

// A message box that a press opens takes the release away.
void BoardView::EndPress() {
    if (lastCell_ >= 0) emit CellUp(std::exchange(lastCell_, -1));
}

void BoardView::leaveEvent(QEvent* /*event*/) {
    if (std::exchange(hovered_, -1) != -1) emit CellHovered(-1);
}

void BoardView::keyPressEvent(QKeyEvent* event) {
    if (!cursorOn_) return QWidget::keyPressEvent(event);
    const bool drag = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->key() >= Qt::Key_0 && event->key() <= Qt::Key_9 && !event->modifiers()) {
        emit ToolTyped(event->key() - Qt::Key_0);
        return;
    }
    switch (event->key()) {
        case Qt::Key_Left:
            return MoveCursor(0, drag);
        case Qt::Key_Down:
            return MoveCursor(1, drag);
        case Qt::Key_Right:
            return MoveCursor(2, drag);
        case Qt::Key_Up:
            return MoveCursor(3, drag);
        case Qt::Key_Space:
        case Qt::Key_Delete:
            if (keyDrag_) return;
            emit CellDown(cursor_, event->key() == Qt::Key_Delete);
            emit CellUp(cursor_);
            return;
        default:
            return QWidget::keyPressEvent(event);
    }
}

void BoardView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Shift) EndKeyDrag();
    QWidget::keyReleaseEvent(event);
}

void BoardView::MoveCursor(int direction, bool drag) {
    const int to = NextCell(cursor_, direction);
    if (to < 0 || lastCell_ >= 0) return;
    if (!drag) EndKeyDrag();
    if (drag && !keyDrag_) emit CellDown(cursor_, false);
    keyDrag_ = drag;
    UpdateCell(cursor_);
    cursor_ = to;
    UpdateCell(cursor_);
    if (drag) emit CellMove(cursor_);
}

void BoardView::EndKeyDrag() {
    if (std::exchange(keyDrag_, false)) emit CellUp(cursor_);
}

void BoardView::focusOutEvent(QFocusEvent* event) {
    EndKeyDrag();
    QWidget::focusOutEvent(event);
}

}  // namespace kavit
