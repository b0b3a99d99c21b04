#pragma once

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <functional>

// Answers the dialogs that a test sets off: message boxes are written down and closed by the
// planned button (OK, Yes or whatever is the default otherwise), other dialogs go to `OnDialog`.
class BoxCatcher : public QObject {
  public:
    BoxCatcher() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Show) return false;
        if (auto* box = qobject_cast<QMessageBox*>(watched)) {
            QStringList buttons;
            for (const auto* button : box->buttons())
                buttons += button->text().remove('&') + (button == box->defaultButton() ? "*" : "");
            Texts.append(box->text() +
                         (buttons.size() > 1 ? " [" + buttons.join(' ') + "]" : QString()));
            Plain = Plain && box->textFormat() == Qt::PlainText;
            QTimer::singleShot(0, box, [this, box] {
                auto* button = box->button(Answer);
                if (button == nullptr) button = box->buttons().constFirst();
                button->click();
            });
        } else if (auto* dialog = qobject_cast<QDialog*>(watched); dialog && OnDialog) {
            QTimer::singleShot(0, dialog, [this, dialog] { OnDialog(dialog); });
        }
        return false;
    }

    QString Take() {
        const QString all = Texts.join(QLatin1Char('\n'));
        Texts.clear();
        return all;
    }

    QStringList Texts;
    bool Plain = true;
    QMessageBox::StandardButton Answer = QMessageBox::Ok;
    std::function<void(QDialog*)> OnDialog;
};
