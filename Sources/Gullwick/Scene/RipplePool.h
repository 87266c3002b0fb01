#pragma once

#include "Engine/Stage/Node.h"
#include "Gullwick/Scene/Textures.h"

#include <array>
#include <glm/vec3.hpp>

namespace gull {

/// The rings that spread over the sand at every tick; eighteen are used in turn.
class RipplePool {
  public:
    static constexpr std::size_t count = 18;

    /// Adds the rings to `parent`, hidden, in the moving layer.
    RipplePool(Node& parent, Textures& textures);

    /// A ring at `ground`, laid on the slope there; `strength` 0 to 1.
    void start(const glm::dvec3& ground, const Colour& tint, double strength, double time);
    void update(double time);
    void hideAll();

  private:
    struct Ring {
        Node* node = nullptr;
        std::shared_ptr<Material> material;
        double start = -100;
        double strength = 0;
        Colour tint{1, 1, 1, 1};
    };
    std::array<Ring, count> rings_;
    std::size_t next_ = 0;
};

}  // namespace gull
