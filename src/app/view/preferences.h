#pragma once

#include <QByteArray>
#include <QString>

#include "app/view/theme.h"
#include "level/replay_cursor.h"

namespace kavit {

// What the window keeps for its user, in the toolkit's settings and apart from Kavit.ini, whose
// line is the solver's.
struct Preferences {
    Theme Look = Theme::System;
    int Speed = kNormalSpeed;  // index of kReplaySpeeds
    bool Closing = false;      // the panel of figures is open
    bool Aside = false;        // what is drawn is solved beside the drawing
    QByteArray Geometry;
    QString Folder;  // where the last level was opened

    [[nodiscard]] static Preferences Load();
    void Save() const;
};

}  // namespace kavit
