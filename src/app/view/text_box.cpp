#include "app/view/text_box.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextBlock>

#include "app/view/plain_text.h"

namespace kavit {

TextBox::TextBox(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName(QStringLiteral("rtxtImport"));
    setAccessibleName(tr("Level or solution text"));
    QFont courier(QStringLiteral("Courier"));
    courier.setStyleHint(QFont::Monospace);
    courier.setFixedPitch(true);
    setFont(courier);
    setTabChangesFocus(true);
    setAcceptDrops(false);  // a file dropped here is opened by the window
    connect(this, &QPlainTextEdit::textChanged, this, [this] { emit Edited(toPlainText()); });
}

void TextBox::Show(const Screen& screen) {
    const QSignalBlocker blocked(this);  // what is shown here nobody typed
    const bool visible = HasBox(screen.Phase);
    if (visible) {
        const QString text = Shown(screen.BoxText);
        if (toPlainText() != text) setPlainText(text);
        const bool readOnly = screen.Phase == State::ShowingText;
        setReadOnly(readOnly);
        if (readOnly) {  // the toolkit lets the mouse alone select such text
            setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        }
    }
    setVisible(visible);
}

void TextBox::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || textCursor().hasSelection()) return;
    const QTextCursor at = cursorForPosition(event->position().toPoint());
    emit LetterClicked(at.block().text(), at.positionInBlock());
}

// Return on a letter is a click on it.
void TextBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReadOnly() || !enter) return QPlainTextEdit::keyPressEvent(event);
    emit LetterClicked(textCursor().block().text(), textCursor().positionInBlock());
}

// While it is read-only the box leaves Ctrl+C to the window, which copies the solution, unless a
// part of it is selected.
bool TextBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && textCursor().hasSelection() &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QPlainTextEdit::event(event);
}

}  // namespace kavit
