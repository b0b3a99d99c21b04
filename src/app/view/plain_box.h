#pragma once

#include <QMessageBox>

namespace kavit {

// Gives a message box its text, shown as written: no tag in a file's name is markup, and no name is
// so long that it leaves the screen.
void PutPlain(QMessageBox& box, const QString& text);

}  // namespace kavit
