#include "app/help_window.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/help_texts.h"

namespace kavit {

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("HelpForm"));
    text_ = new QPlainTextEdit(this);
    text_->setObjectName(QStringLiteral("rchTextHelp"));
    text_->setReadOnly(true);
    text_->setAccessibleName(tr("Help text"));
    auto* close = new QPushButton(tr("Close"), this);
    close->setObjectName(QStringLiteral("btnClose"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* column = new QVBoxLayout(this);
    column->addWidget(text_, 1);
    column->addWidget(close, 0, Qt::AlignRight);
    resize(parent->size() * 0.8);
}

void HelpWindow::ShowTopic(int topic, const std::string& levelName) {
    const std::string_view caption = HelpCaption(topic);
    setWindowTitle(QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size())));
    text_->setPlainText(QString::fromStdString(HelpText(topic, levelName)));
    text_->moveCursor(QTextCursor::Start);
    show();
    raise();
    activateWindow();
}

}  // namespace kavit
