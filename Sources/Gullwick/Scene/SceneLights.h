#pragma once

#include "Engine/Stage/Stage.h"
#include "Gullwick/Scene/Look.h"
#include "Gullwick/Scene/Textures.h"

#include <glm/vec3.hpp>

namespace gull {

/// Sun, sky and air of a beach.
class SceneLights {
  public:
    /// Adds the lights to `stage`, which must outlive them.
    explicit SceneLights(Stage& stage);

    /// Lights the stage for `look`; `beach` names its sky among the textures.
    void apply(const BeachLook& look, int beach, Textures& textures);

    /// The unit vector toward the sun. Its elevation is at least about 24 degrees, even where the sky shows
    /// the sun lower, so that shadows stay on the beach.
    static glm::dvec3 sunDirection(const BeachLook& look);

  private:
    Stage& stage_;
    Node& sun_;
    std::shared_ptr<Light> sunLight_;
    std::shared_ptr<Light> ambient_;
};

}  // namespace gull
