#pragma once

#include "Engine/Render/FrameBlock.h"

#include <glm/vec3.hpp>

namespace gull {

/// Tone mapping backwards, at the middle of the picture, where there is no vignette: so that what glows is
/// shown in the colour that its material names, whatever the camera makes of light.
class InverseToneMapping {
  public:
    /// Changes nothing.
    InverseToneMapping() = default;
    explicit InverseToneMapping(const FrameBlock& block);

    /// The scene light that is shown as `colour` (linear). Beyond 1 it goes on in proportion.
    glm::vec3 lightOf(const glm::vec3& colour) const;

  private:
    glm::vec3 curved(const glm::vec3& light) const;

    bool on_ = false;
    glm::vec3 gain_{1};  ///< exposure and white balance
    float huePreservation_ = 0;
    float contrast_ = 0;
    float saturation_ = 1;
};

}  // namespace gull
