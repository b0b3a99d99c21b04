#include "app/board_view.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace kavit {

BoardView::BoardView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Cell"));
    setAccessibleName(tr("Board"));
    setAccessibleDescription(tr("The level, 17 rows of 19 squares"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
}

QSize BoardView::minimumSizeHint() const {
    return {Maxcol * kLeastCell, Maxrow * kLeastCell};
}

QSize BoardView::sizeHint() const {
    return {Maxcol * 32, Maxrow * 32};
}

QRect BoardView::CellRect(int index) const {
    return {origin_.x() + index % Maxcol * edge_, origin_.y() + index / Maxcol * edge_, edge_,
            edge_};
}

int BoardView::CellAt(const QPoint& point) const {
    const QPoint inside = point - origin_;
    if (inside.x() < 0 || inside.y() < 0) return -1;
    const int column = inside.x() / edge_;
    const int row = inside.y() / edge_;
    return column < Maxcol && row < Maxrow ? row * Maxcol + column : -1;
}

void BoardView::ShowCell(int index, Picture picture) {
    Picture& shown = pictures_[static_cast<std::size_t>(index)];
    if (shown == picture) return;
    shown = picture;
    update(CellRect(index));
}

void BoardView::resizeEvent(QResizeEvent* /*event*/) {
    edge_ = std::max(kLeastCell, std::min(width() / Maxcol, height() / Maxrow));
    origin_ = {std::max(0, (width() - edge_ * Maxcol) / 2),
               std::max(0, (height() - edge_ * Maxrow) / 2)};
}

void BoardView::paintEvent(QPaintEvent* event) {
    art_.SetSize(edge_, devicePixelRatioF());
    QPainter painter(this);
    for (int index = 0; index < kCells; ++index) {
        const QRect rect = CellRect(index);
        if (!event->region().intersects(rect)) continue;
        painter.drawPixmap(rect.topLeft(), art_.At(PictureAt(index)));
        ++cellsPainted_;
    }
}

void BoardView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    dragged_ = event->position();
    downCell_ = CellAt(dragged_.toPoint());
    if (downCell_ >= 0) emit CellDown(downCell_);
}

// A fast pointer skips squares: the way is walked in steps below a square, and each new square of
// it is told once.
void BoardView::mouseMoveEvent(QMouseEvent* event) {
    if (downCell_ < 0 || !(event->buttons() & Qt::LeftButton)) return;
    const QPointF from = dragged_;
    const QPointF way = event->position() - from;
    dragged_ = event->position();
    const int steps =
        1 + static_cast<int>(std::max(std::abs(way.x()), std::abs(way.y())) / (0.5 * edge_));
    for (int step = 1; step <= steps; ++step) {
        const QPoint before = Units(from + way * (step - 1) / steps);
        const QPoint now = Units(from + way * step / steps);
        const auto square = [](int units) {
            return (units + 1000 * kUnitsPerCell) / kUnitsPerCell;
        };
        if (square(before.x()) == square(now.x()) && square(before.y()) == square(now.y()))
            continue;
        emit CellMove(downCell_, now.x(), now.y());
    }
}

// From the corner of the cell where the button went down.
QPoint BoardView::Units(const QPointF& point) const {
    const QPointF offset = point - QPointF(CellRect(downCell_).topLeft());
    const qreal scale = static_cast<qreal>(kUnitsPerCell) / edge_;
    return {static_cast<int>(std::floor(offset.x() * scale)),
            static_cast<int>(std::floor(offset.y() * scale))};
}

void BoardView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || downCell_ < 0) {
        return QWidget::mouseReleaseEvent(event);
    }
    emit CellUp(downCell_);
    downCell_ = -1;
}

}  // namespace kavit
