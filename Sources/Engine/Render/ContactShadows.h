#pragma once

#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/ScreenPass.h"
#include "Engine/Render/Target.h"
#include "Engine/Render/Viewpoint.h"

namespace gull {

/// The soft darkness where things meet: how much of the sky each point's surroundings hide, found from the
/// picture's depth at half resolution.
class ContactShadows {
  public:
    /// Made once: what is compiled for one picture serves all.
    struct Programs {
        explicit Programs(VertexStages& stages);
        Program find;
        Program blur;
    };
    /// Everything must outlive it.
    ContactShadows(const ScreenPass& screen, const RenderOptions& options, const Programs& programs)
        : screen_(screen), options_(options), programs_(programs) {}

    /// From `depth`, a depth texture of the whole picture; works within `area` only. Needs a perspective
    /// view.
    void draw(unsigned depth, const Viewpoint& view, const PixelArea& area);
    /// Makes the result one that darkens nothing, of a few pixels.
    void clear();
    /// Binds the result.
    void bind() const;

  private:
    const ScreenPass& screen_;
    const RenderOptions& options_;
    const Programs& programs_;
    Target raw_;
    Target result_;
};

}  // namespace gull
