#pragma once

#include "Engine/Gl/StateKeeper.h"

#include <utility>

namespace gull {

enum class GlKind { texture, buffer, vertexArray, framebuffer, renderbuffer, sampler };

/// A new OpenGL name. Tells `keeper`.
unsigned createGlName(StateKeeper& keeper, GlKind kind);
void deleteGlName(GlKind kind, unsigned name);

/// Owns one OpenGL name; movable, not copyable. A default-constructed object is empty: it has name 0 and owns
/// nothing. Create, replace and destroy it with its context current.
template <GlKind kind>
class GlObject {
  public:
    GlObject() = default;
    explicit GlObject(StateKeeper& keeper) : name_(createGlName(keeper, kind)) {}
    ~GlObject() { reset(); }
    GlObject(GlObject&& other) noexcept : name_(std::exchange(other.name_, 0)) {}
    GlObject& operator=(GlObject&& other) noexcept {
        if (this != &other) {
            reset();
            name_ = std::exchange(other.name_, 0);
        }
        return *this;
    }

    unsigned name() const { return name_; }
    explicit operator bool() const { return name_ != 0; }
    void reset() {
        if (name_ != 0) deleteGlName(kind, std::exchange(name_, 0));
    }

  private:
    unsigned name_ = 0;
};

using GlTexture = GlObject<GlKind::texture>;
using GlBuffer = GlObject<GlKind::buffer>;
using GlVertexArray = GlObject<GlKind::vertexArray>;
using GlFramebuffer = GlObject<GlKind::framebuffer>;
using GlRenderbuffer = GlObject<GlKind::renderbuffer>;
using GlSampler = GlObject<GlKind::sampler>;

}  // namespace gull
