#pragma once

#include "Engine/Gl/Target.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/ShadowMap.h"

#include <cstdint>
#include <utility>

namespace gull {

struct RenderContext;

/// Draws a whole stage from anywhere in one quick pass, for the times when the camera travels and no picture
/// can be reused: half resolution or less, no multisampling, no contact shadows, matt surfaces.
class FlightPass {
  public:
    explicit FlightPass(RenderContext& context);

    /// Draws at `share` (0 to 1) of the size of `view`'s picture. The result is valid until the next draw.
    const Target& draw(const Stage& stage, const Viewpoint& view, double share);
    /// Releases the memory that only a flight needs.
    void arrived();
    /// The last picture; empty before the first and after arrived().
    const Target& picture() const { return picture_; }

  private:
    TextureRef sunShadow(const Stage& stage, const DrawList& list);

    RenderContext& context_;
    FrameUniforms frame_;
    Target picture_;
    ShadowMap shadow_;
    /// Stage::id() and the serial of its static content when the map was drawn.
    std::pair<std::uint64_t, std::uint64_t> shadowOf_{0, 0};
    double shadowTime_ = 0;  ///< the stage's time when the map was drawn
};

}  // namespace gull
