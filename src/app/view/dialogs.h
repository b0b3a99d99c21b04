#pragma once

#include <QString>
#include <optional>
#include <string>

#include "app/model/view.h"

class QWidget;

namespace kavit {

// The questions of the window. Every text is shown as written.

// A box with OK. Nobody waits for it; the same text is not shown twice at a time.
void ShowBox(QWidget* parent, const QString& text);
[[nodiscard]] Choice AskBox(QWidget* parent, const QString& text, Choices choices);
[[nodiscard]] std::optional<std::string> AskForOpenFile(QWidget* parent, const std::string& folder,
                                                        const std::string& name);
[[nodiscard]] std::optional<std::string> AskForSaveFile(QWidget* parent, FileKind kind,
                                                        const std::string& folder,
                                                        const std::string& name,
                                                        const QString& what);
// A picture (.png, .svg) or a table (.csv); "" when the user gives none.
[[nodiscard]] QString AskForChartFile(QWidget* parent);
[[nodiscard]] std::optional<std::string> AskForText(QWidget* parent, const QString& title,
                                                    const QString& prompt, const QString& answer);

}  // namespace kavit
