#pragma once

#include <QWidget>
#include <array>

#include "app/picture_set.h"
#include "level/board.h"

namespace kavit {

// The grid of 17 by 19 cells. It keeps the picture of every cell, grows with the window (cells are
// 22 pixels at the least) and repaints only what changed.
class BoardView : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kLeastCell = 22;
    static constexpr int kUnitsPerCell = 330;  // unit of the mouse coordinates of CellMove

    explicit BoardView(QWidget* parent = nullptr);

    void ShowCell(int index, Picture picture);
    [[nodiscard]] Picture PictureAt(int index) const {
        return pictures_[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] QRect CellRect(int index) const;
    // -1 beside the grid.
    [[nodiscard]] int CellAt(const QPoint& point) const;
    // Cells painted since the window opened: tests count them.
    [[nodiscard]] qint64 CellsPainted() const { return cellsPainted_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    void CellDown(int index);
    // x and y from the corner of the cell where the button went down.
    void CellMove(int index, int x, int y);
    void CellUp(int index);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    [[nodiscard]] QPoint Units(const QPointF& point) const;

    std::array<Picture, kCells> pictures_{};
    PictureSet art_;
    int edge_ = kLeastCell;
    QPoint origin_;
    int downCell_ = -1;
    QPointF dragged_;  // where the pointer was last while the button is down
    qint64 cellsPainted_ = 0;
};

}  // namespace kavit
