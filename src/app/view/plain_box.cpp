#include "app/view/plain_box.h"

#include <QApplication>

namespace kavit {
namespace {

// A line is broken at blanks and slashes. What has none for this long may be broken anywhere.
constexpr int kLongWord = 50;
constexpr QChar kMayBreak(0x200B);

QString Breakable(const QString& text) {
    QString result;
    int word = 0;
    for (const QChar c : text) {
        word = c.isSpace() || c == QLatin1Char('/') ? 0 : word + 1;
        if (word > kLongWord && !c.isLowSurrogate() && !c.isMark()) {
            result += kMayBreak;
            word = 1;
        }
        result += c;
    }
    return result;
}

}  // namespace

void PutPlain(QMessageBox& box, const QString& text) {
    box.setTextFormat(Qt::PlainText);
    box.setText(Breakable(text));
    box.setWindowTitle(QApplication::applicationName());
}

}  // namespace kavit
