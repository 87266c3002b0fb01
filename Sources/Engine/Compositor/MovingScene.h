#pragma once

#include "Engine/Compositor/MovingLight.h"
#include "Engine/Compositor/MovingShadow.h"
#include "Engine/Compositor/StaticLayer.h"
#include "Engine/Render/DrawList.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/SurfacePass.h"

namespace gull {

/// What a frame draws over the static layer, and the light it stands in. Borrows from the stage, the static
/// layer and the mesh cache; good for one frame.
struct MovingScene {
    const Stage& stage;
    const Viewpoint& view;  ///< of the static layer
    DrawList list;          ///< without what stands still
    StaticPictures ground;
    TextureRef environment;
    TextureRef movingShadow;  ///< none: nothing throws one
    MovingReach reach;
    unsigned frameUniforms = 0;

    /// Gathers the stage's water and moving things, draws their shadow into `shadow`, marks in the layer's
    /// relief where their shadow and lamps may be seen, and uploads their light to `frame`.
    static MovingScene gather(RenderContext& context, const Stage& stage, StaticLayer& layer,
                              DrawList::Detail detail, MovingShadow& shadow, FrameUniforms& frame);

    MovingLight::Inputs lightInputs() const { return {view, frameUniforms, ground, movingShadow, reach}; }
    /// How moving things are drawn into `target`. `lamps`: whether they are lit by their own.
    SurfacePass surfacePass(const DrawTarget& target, Shading::Output output, bool lamps = true) const;
};

}  // namespace gull
