#pragma once

#include "Engine/Compositor/MovingLight.h"
#include "Engine/Compositor/MovingShadow.h"
#include "Engine/Compositor/StaticLayer.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/SurfacePass.h"

namespace gull {

/// Everything a frame draws over the static layer, and its light. Borrows from the stage, the static layer
/// and the mesh cache; valid for one frame.
struct MovingScene {
    const Stage& stage;
    const Viewpoint& view;  ///< the static layer's
    DrawList list;          ///< without what stands still
    StaticPictures ground;
    TextureRef environment;
    TextureRef movingShadow;  ///< empty: nothing casts one
    MovingReach reach;
    unsigned frameUniforms = 0;
    InverseToneMapping emissive = {};

    /// Gathers the stage's water and moving things, draws their shadow into `shadow`, marks in the layer's
    /// relief what their shadow and lamps may reach, and uploads their light to `frame`.
    static MovingScene gather(RenderContext& context, const Stage& stage, StaticLayer& layer,
                              DrawList::Detail detail, MovingShadow& shadow, FrameUniforms& frame);

    MovingLight::Inputs lightInputs() const { return {view, frameUniforms, ground, movingShadow, reach}; }
    /// Describes how to draw moving things into `target`. `lamps`: whether their own lamps light them.
    SurfacePass surfacePass(const DrawTarget& target, Shading::Output output, bool lamps = true) const;
};

}  // namespace gull
