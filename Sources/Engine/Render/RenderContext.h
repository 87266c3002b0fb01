#pragma once

#include "Engine/Gl/GraphicsDevice.h"
#include "Engine/Render/EnvironmentCache.h"
#include "Engine/Render/MeshCache.h"
#include "Engine/Render/ProgramCache.h"
#include "Engine/Render/RenderOptions.h"
#include "Engine/Render/StandIns.h"
#include "Engine/Render/TextureCache.h"
#include "Engine/Render/VertexStreams.h"

namespace gull {

/// What all passes share: the graphics device and the resources on it. Passes take it by reference, beside
/// everything they read and write.
struct RenderContext {
    RenderOptions options;
    GraphicsDevice device;
    ProgramCache programs{device};
    VertexStreams streams{device};
    StandIns standIns{device};
    MeshCache meshes{device};
    TextureCache textures{device};
    EnvironmentCache environments{device, options};

    /// Frees the resources of geometries and textures that no longer exist.
    void collectGarbage() {
        meshes.collectGarbage();
        textures.collectGarbage();
        environments.collectGarbage();
    }
};

}  // namespace gull
