#include "Engine/Stage/FiniteCheck.h"

#include "Engine/Stage/Stage.h"

#include <cmath>
#include <initializer_list>

namespace gull {
namespace {

bool areFinite(std::initializer_list<double> numbers) {
    for (const double number : numbers)
        if (!std::isfinite(number)) return false;
    return true;
}
bool isFinite(const glm::dvec2& v) {
    return areFinite({v.x, v.y});
}
bool isFinite(const glm::dvec3& v) {
    return areFinite({v.x, v.y, v.z});
}
bool isFinite(const Colour& c) {
    return areFinite({c.r, c.g, c.b, c.a});
}
bool isFinite(const Channel& channel) {
    return isFinite(channel.scale) && isFinite(channel.offset) && std::isfinite(channel.intensity);
}

bool isFinite(const Camera& camera) {
    return areFinite({camera.fieldOfView, camera.zNear, camera.zFar, camera.exposureOffset,
                      camera.bloomIntensity, camera.vignettingIntensity, camera.contrast, camera.saturation});
}
bool isFinite(const Light& light) {
    return isFinite(light.colour) && areFinite({light.intensity, light.attenuationStart, light.attenuationEnd,
                                                light.shadowOrthographicScale});
}
bool isFinite(const Material& material) {
    return isFinite(material.diffuse) && isFinite(material.multiply) && isFinite(material.emission) &&
           isFinite(material.diffuseMap) && isFinite(material.normalMap) && isFinite(material.multiplyMap) &&
           areFinite({material.metalness, material.roughness, material.sparkle, material.opacity});
}
bool isFinite(const ParticleSystem& system) {
    return isFinite(system.direction) && isFinite(system.acceleration) && isFinite(system.colour) &&
           areFinite({system.start, system.birthRate, system.lifeSpan, system.speed, system.size,
                      system.intensity});
}

/// Names what is not finite about a node itself; empty when everything is finite.
const char* fault(const Node& node) {
    if (!isFinite(node.position)) return "its position";
    if (!isFinite(node.eulerAngles)) return "its angles";
    if (const auto& q = node.orientation; q && !areFinite({q->x, q->y, q->z, q->w})) return "its orientation";
    if (!isFinite(node.scale)) return "its scale";
    if (!std::isfinite(node.opacity)) return "its opacity";
    if (node.camera && !isFinite(*node.camera)) return "its camera";
    if (node.light && !isFinite(*node.light)) return "its light";
    for (const auto& material : node.materials)
        if (material && !isFinite(*material)) return "a material";
    for (const auto& system : node.particles)
        if (system && !isFinite(*system)) return "its particles";
    return "";
}

std::string firstFault(const Node& node, const std::string& above) {
    const std::string name = above + "/" + node.name;
    if (const char* what = fault(node); *what) return "node " + name + ": " + what;
    for (const auto& child : node.children())
        if (std::string found = firstFault(*child, name); !found.empty()) return found;
    return {};
}

}  // namespace

std::string nonFiniteNumber(const Stage& stage) {
    if (!std::isfinite(stage.time)) return "the scene's time";
    if (!std::isfinite(stage.environmentIntensity) || !isFinite(stage.shadeTint)) return "the environment";
    if (!isFinite(stage.fog.colour) || !areFinite({stage.fog.start, stage.fog.end})) return "the fog";
    return firstFault(stage.root, "");
}

}  // namespace gull
