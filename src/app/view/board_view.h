#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "app/model/board_marks.h"
#include "app/view/picture_set.h"
#include "level/board.h"

namespace kavit {

// The board as large as the widget allows, in cells of whole pixels of the screen: the rectangle of
// the level, or the whole grid of 17 by 19 while the level is drawn. It repaints what changed.
//
// The mouse and, where the cursor is on, the keyboard press cells: arrows move the cursor, Space
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
    void ShowWholeGrid(bool whole);
    void TurnCursor(bool on);
    [[nodiscard]] bool CursorOn() const { return cursorOn_; }

    [[nodiscard]] Picture PictureAt(int cell) const {
        return pictures_[static_cast<std::size_t>(cell)];
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
    // A digit was typed while the cursor is on.
    void ToolTyped(int tool);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    struct Extent {
        int Top = 0;
        int Left = 0;
        int Rows = Maxrow;
        int Cols = Maxcol;
        bool operator==(const Extent&) const = default;
    };

    void LayOut();
    void UpdateCell(int cell);
    [[nodiscard]] Extent ShownExtent() const;
    [[nodiscard]] QRect PixelRect(int cell) const;
    // -1 beside what is shown.
    [[nodiscard]] int CellAt(const QPointF& point) const;
    [[nodiscard]] int NearestCell(const QPointF& point) const;
    void MoveCursor(int direction, bool drag);
    void EndKeyDrag();
    void EndPress();
    void PaintMarks(QPainter& painter) const;
    void PaintPath(QPainter& painter) const;

    std::array<Picture, kCells> pictures_{};
    BoardMarks marks_;
    PictureSet art_;
    bool wholeGrid_ = false;
    Extent extent_;
    int edge_ = kLeastCell;  // in pixels of the screen, as is the origin
    QPoint origin_;
    int lastCell_ = -1;  // under the pressed button
    QPointF dragged_;    // where the pointer was last while the button is down
    int hovered_ = -1;
    bool cursorOn_ = false;
    int cursor_ = kCells / 2;
    bool keyDrag_ = false;
};

}  // namespace kavit
