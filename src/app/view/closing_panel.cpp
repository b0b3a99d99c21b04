#include "app/view/closing_panel.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/view/layer_chart.h"
#include "app/view/plain_text.h"

namespace kavit {

ClosingPanel::ClosingPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmClosing"));
    heading_ = new QToolButton(this);
    heading_->setObjectName(QStringLiteral("btnClosing"));
    heading_->setText(tr("What the search took"));
    heading_->setToolTip(tr("Show or hide the figures of the last search (F8)"));
    heading_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    heading_->setCheckable(true);
    heading_->setAutoRaise(true);
    heading_->setFocusPolicy(Qt::StrongFocus);
    connect(heading_, &QToolButton::toggled, this, &ClosingPanel::Opened);

    inside_ = new QWidget(this);
    text_ = new QPlainTextEdit(inside_);
    text_->setObjectName(QStringLiteral("txtClosing"));
    text_->setAccessibleName(tr("Figures of the last search"));
    text_->setReadOnly(true);
    text_->setTabChangesFocus(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    chart_ = new LayerChart(inside_);
    save_ = new QPushButton(tr("Save Chart..."), inside_);
    save_->setObjectName(QStringLiteral("btnSaveChart"));
    save_->setToolTip(tr("As a picture (.png, .svg) or a table (.csv)"));
    connect(save_, &QPushButton::clicked, this, &ClosingPanel::SaveChartClicked);

    auto* chart = new QVBoxLayout;
    chart->addWidget(chart_, 1);
    chart->addWidget(save_, 0, Qt::AlignRight);
    auto* row = new QHBoxLayout(inside_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(text_, 1);
    row->addLayout(chart, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(heading_);
    column->addWidget(inside_);
}

void ClosingPanel::Show(const Screen& screen) {
    const QString text = Shown(screen.Closing);
    save_->setEnabled(!text.isEmpty());
    if (text == text_->toPlainText()) return;
    text_->setPlainText(text);
    chart_->ShowLayers(screen.ForwLayers, screen.BackLayers);
}

void ClosingPanel::Open(bool open) {
    heading_->setChecked(open);
    heading_->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    inside_->setVisible(open);
}

}  // namespace kavit
