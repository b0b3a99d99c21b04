#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "app/model/board_marks.h"
#include "app/view/picture_set.h"
#include "level/board.h"

namespace kavit {

// The board as large as the widget allows, in cells of whole pixels of the screen: the rectangle of
// the level, or the whole grid of 17 by 19 while the level is drawn.
//
// The mouse and, while the level is drawn, the keyboard press cells: arrows move a cursor, Space
// presses, Delete presses with the right button, and with Shift the arrows drag. Keys that it has
// no use for go to the window.
class BoardView : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kLeastCell = 22;

    explicit BoardView(QWidget* parent = nullptr);

    // True when a cell changed.
    bool Show(const std::array<Picture, kCells>& pictures);
    void ShowMarks(const BoardMarks& marks);
    // The whole grid, and the cursor.
    void ShowEditing(bool on);
    [[nodiscard]] bool Editing() const { return editing_; }

    [[nodiscard]] Picture PictureAt(int cell) const {
        return pictures_.at(static_cast<std::size_t>(cell));
    }
    [[nodiscard]] QRect CellRect(int cell) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    void CellDown(int cell, bool rightButton);
    // The button is down and the pointer came to this cell; beside the board, to the nearest.
    void CellMove(int cell);
    void CellUp(int cell);
    // The pointer is over this cell, no button pressed; -1: beside the board.
    void CellHovered(int cell);
    // A digit was typed while the level is drawn.
    void ToolTyped(int tool);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    static constexpr QRect kWholeGrid{0, 0, Maxcol, Maxrow};

    void LayOut();
    // In columns and rows.
    [[nodiscard]] QRect ShownExtent() const;
    [[nodiscard]] QRect PixelRect(int cell) const;
    // The column and the row there, or as if there were one.
    [[nodiscard]] QPoint SquareAt(const QPointF& point) const;
    // None beside what is shown.
    [[nodiscard]] std::optional<int> CellAt(const QPointF& point) const;
    [[nodiscard]] int NearestCell(const QPointF& point) const;
    void Hover(std::optional<int> cell);
    void MoveCursor(int direction, bool drag);
    void EndKeyDrag();
    void EndPress();
    void PaintMarks(QPainter& painter) const;
    void PaintPath(QPainter& painter) const;

    std::array<Picture, kCells> pictures_{};
    BoardMarks marks_;
    PictureSet art_;
    bool editing_ = false;
    QRect extent_ = kWholeGrid;
    int edge_ = kLeastCell;  // in pixels of the screen, as is the origin
    QPoint origin_;
    std::optional<int> lastCell_;  // under the pressed button
    QPointF dragged_;              // where the pointer was last while the button is down
    std::optional<int> hovered_;
    int cursor_ = kCells / 2;
    bool keyDrag_ = false;
};

}  // namespace kavit
