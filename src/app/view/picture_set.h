#pragma once

#include <QPixmap>
#include <array>

#include "app/model/screen.h"

namespace kavit {

// The artwork drawn at one size: each picture is drawn from its SVG when size or theme change, so
// that cells stay crisp at any scale. On a dark ground the drawings keep their shapes and change
// some colours.
class PictureSet {
  public:
    // Edge in pixels of the screen.
    void SetSize(int edge, bool dark);
    [[nodiscard]] const QPixmap& At(Picture picture) const {
        return pixmaps_[static_cast<std::size_t>(picture)];
    }

    // One picture on its own, for buttons and icons; edge in logical pixels.
    [[nodiscard]] static QPixmap Draw(Picture picture, int edge, qreal pixelRatio, bool dark);

  private:
    int edge_ = 0;
    bool dark_ = false;
    std::array<QPixmap, kPictures> pixmaps_;
};

}  // namespace kavit
