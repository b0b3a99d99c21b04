#include "app/view/level_list.h"

#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QToolButton>
#include <algorithm>
#include <string_view>

#include "app/view/theme.h"
#include "level/level_reader.h"
#include "level/outside.h"

namespace kavit {
namespace {

std::vector<std::string_view> RowsOf(std::string_view text) {
    std::vector<std::string_view> rows;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        rows.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return rows;
}

std::size_t WidthOf(const std::vector<std::string_view>& rows) {
    std::size_t width = 0;
    for (const std::string_view row : rows) width = std::max(width, row.size());
    return width;
}

// Squares of whole pixels: too small for the artwork, but the shape of the level is seen.
QPixmap PictureOf(const std::string& text, int edge, qreal ratio, bool dark) {
    const QColor floor = dark ? QColor(0x2a, 0x30, 0x38) : QColor(0xe9, 0xeb, 0xee);
    const QColor wall = dark ? QColor(0x7f, 0x8e, 0xa6) : QColor(0x56, 0x62, 0x75);
    const QColor goal = dark ? QColor(0x3f, 0xbf, 0xac) : QColor(0x12, 0x78, 0x6c);
    const QColor man = dark ? QColor(0x7f, 0xb8, 0xff) : QColor(0x1c, 0x4c, 0x86);
    const int pixels = qRound(edge * ratio);
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    const auto rows = RowsOf(text);
    const int most = static_cast<int>(std::max(rows.size(), WidthOf(rows)));
    if (most == 0) return pixmap;
    const int cell = std::max(1, pixels / most);
    const int left = (pixels - cell * static_cast<int>(WidthOf(rows))) / 2;
    const int top = (pixels - cell * static_cast<int>(rows.size())) / 2;
    Board board;
    (void)ImportLevelText(text, board, {});
    const std::vector<int> outside = OutsideFloor(board);
    QPainter painter(&pixmap);
    painter.scale(1 / ratio, 1 / ratio);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t col = 0; col < rows[row].size(); ++col) {
            const char code = rows[row][col];
            const int index = (static_cast<int>(row) + 1 - board.MinRow) * Maxcol +
                              static_cast<int>(col) + 1 - board.MinCol;
            if (code == ' ' && std::count(outside.begin(), outside.end(), index) > 0) continue;
            const QRect square(left + static_cast<int>(col) * cell,
                               top + static_cast<int>(row) * cell, cell, cell);
            const QRect mark = square.adjusted(cell / 4, cell / 4, -(cell / 4), -(cell / 4));
            painter.fillRect(square, code == '#' ? wall : floor);
            if (code == '.') painter.fillRect(mark, goal);
            if (code == '$') painter.fillRect(square, QColor(0xd9, 0x8a, 0x2b));
            if (code == '*') painter.fillRect(square, goal);
            if (code == '@' || code == '+') painter.fillRect(mark, man);
        }
    }
    return pixmap;
}

}  // namespace

void LevelTable::Show(std::vector<LevelRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    pictures_.clear();
    endResetModel();
}

void LevelTable::Mark(int row, const std::string& mark) {
    rows_.at(static_cast<std::size_t>(row)).Mark = mark;
    emit dataChanged(index(row, kMark), index(row, kMark));
}

int LevelTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int LevelTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant LevelTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const LevelRow& row = rows_[static_cast<std::size_t>(index.row())];
    if (role == Qt::TextAlignmentRole && index.column() != kTitle) return Qt::AlignCenter;
    if (role == Qt::DecorationRole && index.column() == kNumber) {
        const bool dark = IsDark(QGuiApplication::palette());
        const int key = 2 * index.row() + (dark ? 1 : 0);
        if (!pictures_.contains(key))
            pictures_.insert(key, new QPixmap(PictureOf(row.BoardText, kPicture,
                                                        qGuiApp->devicePixelRatio(), dark)));
        return *pictures_.object(key);
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    switch (index.column()) {
        case kNumber:
            return index.row() + 1;
        case kTitle:
            return QString::fromStdString(row.Title);
        case kSize: {
            const auto rows = RowsOf(row.BoardText);
            return tr("%1 x %2").arg(WidthOf(rows)).arg(rows.size());
        }
        case kBoxes:
            return static_cast<int>(
                std::count_if(row.BoardText.begin(), row.BoardText.end(),
                              [](char code) { return code == '$' || code == '*'; }));
        default:
            return QString::fromStdString(row.Mark);
    }
}

QVariant LevelTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    switch (section) {
        case kNumber:
            return tr("Level");
        case kTitle:
            return tr("Title");
        case kSize:
            return tr("Size");
        case kBoxes:
            return tr("Boxes");
        default:
            return tr("Pushes/Moves");
    }
}

LevelList::LevelList(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmLevels"));
    setAccessibleName(tr("Levels"));
    filter_ = new QLineEdit(this);
    filter_->setObjectName(QStringLiteral("txtFilter"));
    filter_->setPlaceholderText(tr("Type to filter"));
    filter_->setAccessibleName(tr("Filter of the levels"));
    filter_->setClearButtonEnabled(true);
    auto* close = new QToolButton(this);
    close->setObjectName(QStringLiteral("btnCloseList"));
    close->setText(QStringLiteral("✕"));
    close->setToolTip(tr("Close the list"));
    close->setAccessibleName(close->toolTip());
    close->setFocusPolicy(Qt::StrongFocus);
    connect(close, &QToolButton::clicked, this, &LevelList::Closed);

    shown_ = new QSortFilterProxyModel(this);
    shown_->setSourceModel(&table_);
    shown_->setFilterKeyColumn(-1);
    shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        const QSignalBlocker quiet(*this);  // who hides a level has not chosen the next one
        shown_->setFilterFixedString(text);
    });

    view_ = new QTableView(this);
    view_->setObjectName(QStringLiteral("lstLevels"));
    view_->setAccessibleName(tr("Levels"));
    view_->setModel(shown_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
    view_->setTabKeyNavigation(false);
    view_->setShowGrid(false);
    view_->setIconSize({LevelTable::kPicture, LevelTable::kPicture});
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);  // no row is measured
    view_->verticalHeader()->setDefaultSectionSize(LevelTable::kPicture + 6);
    view_->horizontalHeader()->setSectionResizeMode(LevelTable::kTitle, QHeaderView::Stretch);
    view_->setWordWrap(false);
    view_->setColumnWidth(LevelTable::kNumber, LevelTable::kPicture + 44);
    view_->setColumnWidth(LevelTable::kSize, 64);
    view_->setColumnWidth(LevelTable::kBoxes, 56);
    view_->setColumnWidth(LevelTable::kMark, 108);
    view_->setMinimumWidth(440);
    connect(view_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& now) {
                if (now.isValid()) emit LevelChosen(shown_->mapToSource(now).row());
            });

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(filter_, 0, 0, 1, 3);
    grid->addWidget(close, 0, 3);
    grid->addWidget(view_, 1, 0, 1, 4);
    const auto add = [&](const char* name, const QString& caption, int column) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QLatin1String(name));
        grid->addWidget(button, 2, column);
        return button;
    };
    connect(add("btnPrevious", tr("Previous"), 0), &QPushButton::clicked, this,
            [this] { GoTo(-1, false); });
    connect(add("btnNext", tr("Next"), 1), &QPushButton::clicked, this, [this] { GoTo(1, false); });
    connect(add("btnNextUnsolved", tr("Next Unsolved"), 2), &QPushButton::clicked, this,
            [this] { GoTo(1, true); });
    solveAll_ = add("btnSolveAll", tr("Solve All"), 3);
    connect(solveAll_, &QPushButton::clicked, this, &LevelList::SolveAllClicked);
}

void LevelList::Show(std::vector<LevelRow> rows) {
    const QSignalBlocker quiet(*this);
    filter_->clear();
    table_.Show(std::move(rows));
}

void LevelList::Choose(int row) {
    const QSignalBlocker quiet(*this);
    const QModelIndex index = shown_->mapFromSource(table_.index(row, LevelTable::kTitle));
    view_->setCurrentIndex(index);
    if (index.isValid()) view_->scrollTo(index);
}

std::optional<int> LevelList::Chosen() const {
    const QModelIndex now = shown_->mapToSource(view_->currentIndex());
    return now.isValid() ? std::optional(now.row()) : std::nullopt;
}

void LevelList::ShowSolvingAll(bool solving) {
    solveAll_->setText(solving ? tr("Stop") : tr("Solve All"));
}

// Among the levels that the filter shows, from the chosen one; there is no way around the end.
void LevelList::GoTo(int step, bool unsolvedOnly) {
    for (int at = view_->currentIndex().row() + step; at >= 0 && at < shown_->rowCount();
         at += step) {
        const QModelIndex index = shown_->index(at, LevelTable::kTitle);
        if (unsolvedOnly && table_.Marked(shown_->mapToSource(index).row())) continue;
        view_->setCurrentIndex(index);
        return;
    }
}

}  // namespace kavit
