#pragma once

#include <QWidget>
#include <array>

#include "app/view/picture_set.h"
#include "level/board.h"

namespace kavit {

// The grid of 17 by 19 cells. It keeps the picture of every cell, grows with the window (cells are
// 22 pixels at the least) and repaints only what changed.
class BoardView : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kLeastCell = 22;

    explicit BoardView(QWidget* parent = nullptr);

    void Show(const std::array<Picture, kCells>& pictures);
    [[nodiscard]] Picture PictureAt(int index) const {
        return pictures_[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] QRect CellRect(int index) const;
    // -1 beside the grid.
    [[nodiscard]] int CellAt(const QPoint& point) const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    void CellDown(int index);
    // The pointer came to this cell with the button down; beside the grid, the cell next to it.
    void CellMove(int index);
    void CellUp();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    [[nodiscard]] int NearestCell(const QPointF& point) const;

    std::array<Picture, kCells> pictures_{};
    PictureSet art_;
    int edge_ = kLeastCell;
    QPoint origin_;
    bool down_ = false;
    QPointF dragged_;  // where the pointer was last while the button is down
};

}  // namespace kavit
