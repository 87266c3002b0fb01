#pragma once

#include "Engine/Gl/GlObjects.h"

#include <cstddef>

namespace gull {

/// Where all shaders find their uniform block "Frame".
inline constexpr unsigned frameBlockBinding = 0;

/// The buffer behind a uniform block.
class UniformBuffer {
  public:
    explicit UniformBuffer(StateKeeper& keeper) : buffer_(keeper) {}
    /// Replaces the contents; draws issued before still read the old ones.
    void upload(const void* bytes, std::size_t size);
    unsigned name() const { return buffer_.name(); }

  private:
    GlBuffer buffer_;
};

}  // namespace gull
