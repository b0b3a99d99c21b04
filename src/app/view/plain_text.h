#pragma once

#include <QFile>
#include <QString>
#include <string>

// The model's texts and the toolkit's.
namespace kavit {

[[nodiscard]] inline QString Shown(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
[[nodiscard]] inline std::string Utf8(const QString& text) {
    return text.toStdString();
}

// File names are bytes; those that are no UTF-8 must come back as they were.
[[nodiscard]] inline QString FromPath(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}
[[nodiscard]] inline std::string ToPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace kavit
