#include "app/view/preferences.h"

#include <QSettings>
#include <algorithm>
#include <iterator>

namespace kavit {
namespace {

QSettings Store() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("kavit"),
                     QStringLiteral("window"));
}

// A number that somebody may have edited.
int Number(const QSettings& store, const char* name, int otherwise, int most) {
    return std::clamp(store.value(QLatin1String(name), otherwise).toInt(), 0, most);
}

}  // namespace

Preferences Preferences::Load() {
    const QSettings store = Store();
    Preferences preferences;
    preferences.Look = static_cast<Theme>(Number(store, "theme", 0, 2));
    preferences.Speed =
        Number(store, "speed", kNormalSpeed, static_cast<int>(std::size(kReplaySpeeds)) - 1);
    preferences.Closing = store.value(QStringLiteral("figures")).toBool();
    preferences.Aside = store.value(QStringLiteral("aside")).toBool();
    preferences.Geometry = store.value(QStringLiteral("geometry")).toByteArray();
    preferences.Folder = store.value(QStringLiteral("folder")).toString();
    return preferences;
}

void Preferences::Save() const {
    QSettings store = Store();
    store.setValue(QStringLiteral("theme"), static_cast<int>(Look));
    store.setValue(QStringLiteral("speed"), Speed);
    store.setValue(QStringLiteral("figures"), Closing);
    store.setValue(QStringLiteral("aside"), Aside);
    store.setValue(QStringLiteral("geometry"), Geometry);
    store.setValue(QStringLiteral("folder"), Folder);
}

}  // namespace kavit
