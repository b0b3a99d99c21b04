#include "app/view/board_view.h"

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
    setFocusPolicy(Qt::StrongFocus);
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

// Only what changed is painted again.
void BoardView::Show(const std::array<Picture, kCells>& pictures) {
    for (int index = 0; index < kCells; ++index) {
        const auto at = static_cast<std::size_t>(index);
        if (pictures_[at] == pictures[at]) continue;
        pictures_[at] = pictures[at];
        update(CellRect(index));
    }
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
    }
}

void BoardView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    dragged_ = event->position();
    const int cell = CellAt(dragged_.toPoint());
    down_ = cell >= 0;
    if (down_) emit CellDown(cell);
}

// A fast pointer skips squares: the way is walked in steps below a square, and each new square of
// it is told once.
void BoardView::mouseMoveEvent(QMouseEvent* event) {
    if (!down_ || !(event->buttons() & Qt::LeftButton)) return;
    const QPointF from = dragged_;
    const QPointF way = event->position() - from;
    dragged_ = event->position();
    const int steps =
        1 + static_cast<int>(std::max(std::abs(way.x()), std::abs(way.y())) / (0.5 * edge_));
    int last = NearestCell(from);
    for (int step = 1; step <= steps; ++step) {
        const int cell = NearestCell(from + way * step / steps);
        if (cell == last) continue;
        last = cell;
        emit CellMove(cell);
    }
}

int BoardView::NearestCell(const QPointF& point) const {
    const QPointF inside = point - QPointF(origin_);
    const auto nearest = [this](qreal offset, int most) {
        return std::clamp(static_cast<int>(std::floor(offset / edge_)), 0, most - 1);
    };
    return nearest(inside.y(), Maxrow) * Maxcol + nearest(inside.x(), Maxcol);
}

void BoardView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !down_) return QWidget::mouseReleaseEvent(event);
    emit CellUp();
    down_ = false;
}

}  // namespace kavit
