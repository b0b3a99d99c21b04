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
QRect BoardView::ShownExtent() const {
    QRect shown;
    for (int cell = 0; cell < kCells; ++cell)
        if (PictureAt(cell) != Picture::Floor && PictureAt(cell) != Picture::Outside)
            shown |= QRect(cell % Maxcol, cell / Maxcol, 1, 1);
    return editing_ || shown.isEmpty() ? kWholeGrid : shown;
}

// In pixels of the screen: a cell of 38.75 of them would be blurred.
void BoardView::LayOut() {
    extent_ = ShownExtent();
    const qreal ratio = devicePixelRatioF();
    const int width = static_cast<int>(this->width() * ratio);
    const int height = static_cast<int>(this->height() * ratio);
    edge_ = std::max(1, std::min(width / extent_.width(), height / extent_.height()));
    origin_ = {(width - edge_ * extent_.width()) / 2, (height - edge_ * extent_.height()) / 2};
    update();
}

QRect BoardView::PixelRect(int cell) const {
    return {origin_.x() + (cell % Maxcol - extent_.left()) * edge_,
            origin_.y() + (cell / Maxcol - extent_.top()) * edge_, edge_, edge_};
}

QRect BoardView::CellRect(int cell) const {
    const QRect pixels = PixelRect(cell);
    const qreal ratio = devicePixelRatioF();
    return QRectF(pixels.x() / ratio, pixels.y() / ratio, edge_ / ratio, edge_ / ratio)
        .toAlignedRect();
}

QPoint BoardView::SquareAt(const QPointF& point) const {
    const QPointF inside = (point * devicePixelRatioF() - QPointF(origin_)) / edge_;
    return extent_.topLeft() + QPoint(static_cast<int>(std::floor(inside.x())),
                                      static_cast<int>(std::floor(inside.y())));
}

std::optional<int> BoardView::CellAt(const QPointF& point) const {
    const QPoint square = SquareAt(point);
    if (!extent_.contains(square)) return std::nullopt;
    return square.y() * Maxcol + square.x();
}

int BoardView::NearestCell(const QPointF& point) const {
    const QPoint square = SquareAt(point);
    return std::clamp(square.y(), extent_.top(), extent_.bottom()) * Maxcol +
           std::clamp(square.x(), extent_.left(), extent_.right());
}

bool BoardView::Show(const std::array<Picture, kCells>& pictures) {
    if (pictures == pictures_) return false;
    pictures_ = pictures;
    LayOut();
    return true;
}

void BoardView::ShowMarks(const BoardMarks& marks) {
    if (marks == marks_) return;
    marks_ = marks;
    update();
}

void BoardView::ShowEditing(bool on) {
    if (on == editing_) return;
    editing_ = on;
    LayOut();
}

void BoardView::resizeEvent(QResizeEvent* /*event*/) {
    LayOut();
}

void BoardView::paintEvent(QPaintEvent* /*event*/) {
    art_.SetSize(edge_, IsDark(palette()));
    QPainter painter(this);
    const qreal ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    for (int cell = 0; cell < kCells; ++cell)
        if (PictureAt(cell) != Picture::Outside && extent_.contains(cell % Maxcol, cell / Maxcol))
            painter.drawPixmap(PixelRect(cell), art_.At(PictureAt(cell)));
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
    if (marks_.Selected)
        DoubleStroke(painter, light, 2 * unit,
                     [&] { painter.drawRect(frame(*marks_.Selected, 2 * unit)); });
    if (!hasFocus()) return;
    if (editing_)
        DoubleStroke(painter, Qt::white, 1.5 * unit,
                     [&] { painter.drawEllipse(frame(cursor_, 2 * unit)); });
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2 * devicePixelRatioF()));
    painter.drawRect(
        QRectF(QPointF(0, 0), QSizeF(size()) * devicePixelRatioF()).adjusted(1, 1, -1, -1));
}

void BoardView::PaintPath(QPainter& painter) const {
    if (marks_.Path.empty()) return;
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
    DoubleStroke(painter, QColor(0x7f, 0xd4, 0xff), 2.5 * unit, [&] { painter.drawPath(way); });
}

void BoardView::mousePressEvent(QMouseEvent* event) {
    const bool right = event->button() == Qt::RightButton;
    if (event->button() != Qt::LeftButton && !right) return QWidget::mousePressEvent(event);
    if (event->buttons() != event->button()) return;  // another one is down
    EndPress();
    dragged_ = event->position();
    lastCell_ = CellAt(dragged_);
    if (!lastCell_) return;
    cursor_ = *lastCell_;
    update();
    emit CellDown(cursor_, right);
}

// A fast pointer skips squares: the way is walked in steps below a square, and each new square of
// it is told once.
void BoardView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) EndPress();
    if (!lastCell_) return Hover(CellAt(event->position()));
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
    if (event->buttons() == Qt::NoButton) EndPress();
}

// A message box that a press opens takes the release away.
void BoardView::EndPress() {
    if (const auto cell = std::exchange(lastCell_, std::nullopt)) emit CellUp(*cell);
}

void BoardView::leaveEvent(QEvent* /*event*/) {
    Hover(std::nullopt);
}

void BoardView::Hover(std::optional<int> cell) {
    if (std::exchange(hovered_, cell) != cell) emit CellHovered(cell.value_or(-1));
}

void BoardView::keyPressEvent(QKeyEvent* event) {
    if (!editing_) return QWidget::keyPressEvent(event);
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
}

void BoardView::MoveCursor(int direction, bool drag) {
    const int to = NextCell(cursor_, direction);
    if (to < 0 || lastCell_) return;
    if (!drag) EndKeyDrag();
    if (drag && !keyDrag_) emit CellDown(cursor_, false);
    keyDrag_ = drag;
    cursor_ = to;
    update();
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
