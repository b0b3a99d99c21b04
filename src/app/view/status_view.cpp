#include "app/view/status_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <algorithm>

#include "app/view/plain_text.h"

namespace kavit {
namespace {

// The bar counts in parts of the store: it takes no numbers of 63 bits.
constexpr int kBarParts = 10000;

}  // namespace

StatusView::StatusView(QWidget* parent)
    : QWidget(parent),
      left_(AddLine("txtLeft", tr("Status"))),
      right_(AddLine("txtRight", tr("Status details"))),
      progress_(new QProgressBar(this)),
      timer_(AddLabel("lblTimer", tr("Elapsed seconds"), tr("Elapsed seconds / time limit"))),
      side_(AddLabel("lblSeaTimer", tr("Search side"), tr("The side that is searched"))),
      debug_(AddLabel("lblDebug", tr("Search figures"), tr("Positions that the search stored"))),
      details_(AddLabel("lblDetails", tr("Progress of the search"),
                        tr("Layers searched from both ends, positions in the present one, pace, "
                           "memory, and what is proved so far"))),
      size_(AddLabel("lblSize", tr("Sizes"), tr("Max Positions / Blocks in force"))) {
    progress_->setObjectName(QStringLiteral("PBarAdvance"));
    progress_->setAccessibleName(tr("Positions stored"));
    progress_->setToolTip(tr("How full the store of positions is"));
    progress_->setTextVisible(false);
    progress_->setRange(0, kBarParts);
    QSizePolicy keep = progress_->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    progress_->setSizePolicy(keep);
    size_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // Places of two read-outs that nothing fills.
    auto* start = AddLine("txtIni", tr("Start of the search"));
    auto* now = AddLine("txtNow", tr("Time now"));
    start->hide();
    now->hide();

    auto* lines = new QGridLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    auto* halves = new QHBoxLayout;  // whose widths no text below changes
    halves->addWidget(left_, 1);
    halves->addWidget(right_, 1);
    lines->addLayout(halves, 0, 0, 1, 6);
    lines->addWidget(progress_, 1, 0, 1, 6);
    lines->addWidget(timer_, 2, 0);
    lines->addWidget(side_, 2, 1);
    lines->addWidget(debug_, 2, 2, 1, 2);
    lines->addWidget(start, 2, 4);
    lines->addWidget(now, 2, 4);
    lines->addWidget(size_, 2, 5);
    lines->addWidget(details_, 3, 0, 1, 6);
    lines->setColumnStretch(2, 1);
    lines->setColumnStretch(3, 1);
}

QLabel* StatusView::AddLabel(const char* name, const QString& accessibleName, const QString& tip) {
    auto* label = new QLabel(this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setAccessibleName(accessibleName);
    label->setToolTip(tip);
    return label;
}

// A line is there to be read: the keyboard passes it by, so that Ctrl+C stays the window's. The
// mouse can select its text.
QLineEdit* StatusView::AddLine(const char* name, const QString& accessibleName) {
    auto* line = new QLineEdit(this);
    line->setObjectName(QLatin1String(name));
    line->setReadOnly(true);
    line->setFocusPolicy(Qt::ClickFocus);
    line->setAccessibleName(accessibleName);
    return line;
}

void StatusView::Show(const Screen& screen) {
    const auto put = [](QLineEdit* line, const std::string& text) {
        if (Utf8(line->text()) == text) return;
        line->setText(Shown(text));
        line->setCursorPosition(0);
    };
    put(left_, screen.Left);
    put(right_, screen.Right);
    timer_->setText(Shown(screen.Timer));
    side_->setText(Shown(screen.Side));
    debug_->setText(Shown(screen.Debug));
    details_->setText(Shown(screen.Details));
    size_->setText(Shown(screen.Size));
    const double part = static_cast<double>(screen.Progress) /
                        static_cast<double>(std::max<std::int64_t>(screen.ProgressMost, 1));
    progress_->setValue(static_cast<int>(std::clamp(part, 0.0, 1.0) * kBarParts));
    progress_->setVisible(!IsEditing(screen.Phase));
}

}  // namespace kavit
