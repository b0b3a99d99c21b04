#pragma once

#include <QAbstractTableModel>
#include <QCache>
#include <QPixmap>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace kavit {

// One level of a collection or a folder, as the list shows it.
struct LevelRow {
    std::string Title;
    std::string BoardText;  // rows joined by \n
    std::string Mark;       // "" unsolved, "70/224", or why it cannot be solved
};

// The levels as a table: number and picture, title, size, boxes, mark. A picture is painted when it
// comes into view, so that thousands of levels take no time to open.
class LevelTable : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { kNumber, kTitle, kSize, kBoxes, kMark, kColumns };
    static constexpr int kPicture = 48;  // edge of a picture

    using QAbstractTableModel::QAbstractTableModel;

    void Show(std::vector<LevelRow> rows);
    void Mark(int row, const std::string& mark);
    [[nodiscard]] bool Marked(int row) const {
        return !rows_[static_cast<std::size_t>(row)].Mark.empty();
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    std::vector<LevelRow> rows_;
    mutable QCache<int, QPixmap> pictures_{400};  // two to a row: on a light ground, on a dark one
};

// The list beside the board: a filter, the table, and the ways through it.
class LevelList : public QWidget {
    Q_OBJECT

  public:
    explicit LevelList(QWidget* parent = nullptr);

    // Rows are counted from 0, in the order of the collection, whatever the filter hides.
    void Show(std::vector<LevelRow> rows);
    void Mark(int row, const std::string& mark) { table_.Mark(row, mark); }
    void Choose(int row);
    [[nodiscard]] std::optional<int> Chosen() const;
    void ShowSolvingAll(bool solving);

  signals:
    void LevelChosen(int row);
    void SolveAllClicked();
    void Closed();

  private:
    void GoTo(int step, bool unsolvedOnly);

    LevelTable table_;
    QSortFilterProxyModel* shown_ = nullptr;
    QTableView* view_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QPushButton* solveAll_ = nullptr;
};

}  // namespace kavit
