#include "Engine/Render/InverseToneMapping.h"

#include <algorithm>
#include <glm/common.hpp>
#include <glm/exponential.hpp>
#include <glm/geometric.hpp>
#include <glm/gtc/color_space.hpp>

namespace gull {

// The formulas are those of toneMapping.glsl, which also says what they are for.

namespace {

constexpr glm::vec3 luminance(0.2126F, 0.7152F, 0.0722F);
constexpr int steps = 20;  // by then the error is far below what eight bits show

glm::vec3 toneCurve(const glm::vec3& x) {
    return glm::clamp(x * (2.51F * x + 0.03F) / (x * (2.43F * x + 0.59F) + 0.14F), 0.0F, 1.0F);
}

glm::vec3 inverseToneCurve(const glm::vec3& c) {
    const glm::vec3 a = 2.51F - 2.43F * c, b = 0.59F * c - 0.03F;
    return (b + glm::sqrt(b * b + 0.56F * a * c)) / (2.0F * a);
}

glm::vec3 shoulderless(const glm::vec3& c) {
    const glm::vec3 over = glm::clamp(c - 0.8F, 0.0F, 0.2F);
    return glm::min(c, 0.8F) + over / (1.0F - 0.96F * over);
}

}  // namespace

InverseToneMapping::InverseToneMapping(const FrameBlock& block)
    : on_(block.grade.x > 0),
      gain_(block.grade.x > 0 ? glm::vec3(block.toneGain) * block.eye.w : glm::vec3(block.eye.w)),
      huePreservation_(block.toneGain.w),
      contrast_(block.grade.y),
      saturation_(block.grade.z) {}

glm::vec3 InverseToneMapping::lightOf(const glm::vec3& colour) const {
    const float brightest = std::max({colour.r, colour.g, colour.b});
    if (!on_ || brightest <= 0) return colour / gain_;
    const float beyond = std::max(brightest, 1.0F);
    glm::vec3 c = shoulderless(glm::convertLinearToSRGB(colour / beyond));
    c = glm::vec3(glm::dot(c, luminance)) + (c - glm::dot(c, luminance)) / saturation_;
    c = (c - 0.5F) / (1 + contrast_) + 0.5F;
    const glm::vec3 wanted = glm::convertSRGBToLinear(glm::clamp(c, 0.0F, 0.999F));
    glm::vec3 aim = wanted, light = inverseToneCurve(aim);
    for (int step = 0; step < steps; ++step) {
        aim = glm::clamp(aim + wanted - curved(light), 0.0F, 0.999F);
        light = inverseToneCurve(aim);
    }
    return light * beyond / gain_;
}

glm::vec3 InverseToneMapping::curved(const glm::vec3& light) const {
    const float l = std::max(glm::dot(light, luminance), 1e-4F);
    const float most = std::max({light.r, light.g, light.b, 1e-4F});
    const float k = l * (2.51F * l + 0.03F) / (l * (2.43F * l + 0.59F) + 0.14F);
    const float over = std::max(most * k / l - 0.8F, 0.0F);
    const glm::vec3 hueKept = light * std::min(k / l, (0.8F + over / (1 + 10 * over)) / most);
    return glm::mix(toneCurve(light), hueKept,
                    glm::mix(huePreservation_, 0.6F, glm::clamp(l - 0.5F, 0.0F, 1.0F)));
}

}  // namespace gull
