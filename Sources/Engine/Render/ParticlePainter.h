#pragma once

#include "Engine/Render/DrawList.h"
#include "Engine/Render/Program.h"
#include "Engine/Render/TextureCache.h"

#include <map>
#include <vector>

namespace gull {

/// Draws particle systems as camera-facing squares, one draw call a system.
class ParticlePainter {
  public:
    ParticlePainter(VertexStages& stages, TextureCache& textures);

    /// What `item` shows at scene time `time`; `display`: developed for the screen.
    void draw(const ParticleItem& item, const Viewpoint& view, double time, bool display);

  private:
    const Program& program(bool added, bool display);

    VertexStages& stages_;
    TextureCache& textures_;
    GlVertexArray array_;
    GlBuffer buffer_;
    std::map<int, Program> programs_;
    std::vector<Particle> particles_;
    std::vector<float> vertices_;
};

}  // namespace gull
