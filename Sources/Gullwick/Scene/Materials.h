#pragma once

#include "Engine/Stage/Material.h"
#include "Gullwick/Scene/Look.h"

#include <memory>

namespace gull::Materials {

/// A physically based material of one colour.
std::shared_ptr<Material> pbr(const Colour& colour, double metal, double rough);
inline std::shared_ptr<Material> pbr(const RGB& colour, double metal, double rough) {
    return pbr(colour.colour(), metal, rough);
}
/// The same with a picture on it.
std::shared_ptr<Material> pictured(const std::shared_ptr<Texture>& picture, double metal, double rough);
/// An additive glow: adds `picture` times the material's multiply colour, initially black, and hides nothing.
std::shared_ptr<Material> additive(const std::shared_ptr<Texture>& picture);

}  // namespace gull::Materials
