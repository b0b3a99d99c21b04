#include "app/view/help_window.h"

#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavit {
namespace {

// A paragraph is one line of the file, so that the window wraps it at its own width.
QString HelpFile(const char* name) {
    QFile file(QStringLiteral(":/help/%1.txt").arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("HelpForm"));
    text_ = new QPlainTextEdit(this);
    text_->setObjectName(QStringLiteral("rchTextHelp"));
    text_->setReadOnly(true);
    text_->setAccessibleName(tr("Help text"));
    auto* close = new QPushButton(tr("Close"), this);
    close->setObjectName(QStringLiteral("btnClose"));
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    connect(this, &QDialog::finished, parent, &QWidget::activateWindow);
    auto* column = new QVBoxLayout(this);
    column->addWidget(text_, 1);
    column->addWidget(close, 0, Qt::AlignRight);
    resize(parent->size() * 0.8);
}

void HelpWindow::Fill(const QString& caption, const QString& text) {
    setWindowTitle(caption);
    text_->setPlainText(text);
}

void HelpWindow::ShowTopic(int topic, const QString& levelName) {
    switch (topic) {
        case 1:
            Fill(QStringLiteral("Ayuda en Español"), HelpFile("spanish"));
            break;
        case 2:
            Fill(QStringLiteral("Aide en français"), HelpFile("french"));
            break;
        case 3:
            Fill(QStringLiteral("Help in English"), HelpFile("english"));
            break;
        case 4:
            Fill(tr("Information"),
                 QStringLiteral("KAVIT20 : Problem Information\n\nName:    ") + levelName);
            break;
        case 5:
            Fill(tr("About"), HelpFile("about").arg(QApplication::applicationVersion()));
            break;
    }
    show();
    raise();
    activateWindow();
}

}  // namespace kavit
