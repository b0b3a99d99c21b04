#pragma once

#include <string>

#include "app/model/desk.h"
#include "app/model/level_control.h"

namespace kavit {

// Levels from pasted text: the import box, RETURN, and a paste anywhere in the window.
class ImportControl {
  public:
    ImportControl(Desk& desk, LevelControl& levels) : desk_(desk), levels_(levels) {}

    void Open();
    void TextChanged(const std::string& text);
    // RETURN on the box.
    void Return();
    void Paste();

  private:
    void OpenBox();
    void Take();

    Desk& desk_;
    LevelControl& levels_;
    std::string draft_;  // typed or pasted and not taken yet; comes back with the next Import
    bool typed_ = false;
};

}  // namespace kavit
