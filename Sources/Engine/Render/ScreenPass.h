#pragma once

#include "Engine/Render/GlObjects.h"
#include "Engine/Render/Program.h"

namespace gull {

/// Runs a program over every pixel of the bound target (or of its scissor rectangle).
class ScreenPass {
  public:
    ScreenPass();
    /// `program` must be in use. `depth` (-1 near to 1 far) is what the depth test compares, if it is on.
    void draw(const Program& program, float depth = 0) const;

  private:
    GlVertexArray array_;
};

/// Binds `texture` to `unit` with its own filter.
void bindTexture(int unit, unsigned texture);

}  // namespace gull
