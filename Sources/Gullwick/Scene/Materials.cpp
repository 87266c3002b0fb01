#include "Gullwick/Scene/Materials.h"

namespace gull::Materials {

std::shared_ptr<Material> pbr(const Colour& colour, double metal, double rough) {
    auto material = std::make_shared<Material>();
    material->diffuse = colour;
    material->metalness = metal;
    material->roughness = rough;
    return material;
}

std::shared_ptr<Material> pictured(const std::shared_ptr<Texture>& picture, double metal, double rough) {
    auto material = pbr(Colour{1, 1, 1, 1}, metal, rough);
    material->diffuseMap.texture = picture;
    return material;
}

std::shared_ptr<Material> additive(const std::shared_ptr<Texture>& picture) {
    auto material = std::make_shared<Material>();
    material->lighting = Material::Lighting::constant;
    material->diffuseMap.texture = picture;
    material->multiply = {0, 0, 0, 1};
    material->blend = Material::Blend::add;
    material->writesDepth = false;
    return material;
}

}  // namespace gull::Materials
