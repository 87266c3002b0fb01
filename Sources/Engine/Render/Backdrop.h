#pragma once

#include "Engine/Render/KeptLayer.h"

namespace gull {

/// The kept picture with what drifts on it: what the moving layer's own things are drawn over. It is brought
/// up to date one strip a frame, as many strips as keep the work of a frame small; wide, smooth surfaces are
/// shaded at half resolution.
class Backdrop {
  public:
    /// The most strips that a whole turn takes; the studio's pace says how large one is.
    static constexpr int mostStrips = 10;

    explicit Backdrop(Studio& studio);

    /// Follows what changed in `kept` and, when `moving`, makes the next strip, unless `kept` is at work on a
    /// change; returns where the picture changed. The Frame block must hold the kept layer's view, its
    /// textures must be bound; `shading` is that of developed pictures.
    std::vector<PixelArea> update(const DrawLayer& drifting, const Shading& shading, KeptLayer& kept,
                                  double time, bool moving);
    /// Developed, with depth.
    const Target& picture() const { return picture_; }

    /// Where what drifts may be seen.
    const PixelArea& reach() const { return reach_; }
    /// Draws what drifts within `area` over whatever the bound target shows there.
    void draw(const DrawLayer& drifting, const Shading& shading, const KeptLayer& kept, const PixelArea& area,
              double time);

  private:
    void findReach(const DrawLayer& drifting, const KeptLayer& kept);
    PixelArea nextStrip();
    void shadeHalf(const DrawLayer& drifting, const Shading& shading, const KeptLayer& kept,
                   const PixelArea& area);

    Studio& studio_;
    Program film_;
    Target picture_;
    Target half_;
    PixelArea reach_;
    int nextRow_ = 0;  ///< of the picture, where the next strip begins
};

}  // namespace gull
