#pragma once

#include <string>

#include "app/model/desk.h"
#include "app/model/editor_control.h"
#include "app/model/level_control.h"

namespace kavit {

// Levels from pasted text: the import box, RETURN, and a paste anywhere in the window. In the
// editor the pasted level takes the place of the drawing.
class ImportControl {
  public:
    ImportControl(Desk& desk, LevelControl& levels, EditorControl& editor)
        : desk_(desk), levels_(levels), editor_(editor) {}

    void Open();
    void TextChanged(const std::string& text);
    // RETURN on the box.
    void Return();
    void Paste();

  private:
    void OpenBox();
    void Take();
    void Draw(const std::string& text);

    Desk& desk_;
    LevelControl& levels_;
    EditorControl& editor_;
    std::string draft_;  // typed or pasted and not taken yet; comes back with the next Import
    bool typed_ = false;
};

}  // namespace kavit
