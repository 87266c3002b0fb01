#pragma once

#include "Engine/Stage/Node.h"
#include "Gullwick/Scene/Textures.h"

#include <memory>
#include <numbers>
#include <vector>

/// What the models of items are made of.
namespace gull::itemParts {

using MaterialRef = std::shared_ptr<Material>;

constexpr double quarter = std::numbers::pi / 2;

MaterialRef gold(double rough = 0.22);
MaterialRef brass();
MaterialRef iron();
MaterialRef rust();
MaterialRef aluminium();
MaterialRef glass();
MaterialRef ruby();
MaterialRef emerald();

Node& part(Node& parent, Geometry geometry, std::vector<MaterialRef> materials,
           const glm::dvec3& at = {0, 0, 0}, const glm::dvec3& angles = {0, 0, 0});
/// Gives `node` fewer triangles for quick pictures, in which it is about a hundred pixels wide.
void coarser(Node& node, Geometry geometry);

/// A gem whose facets are cut again into smaller ones, which lie in the plane of the large ones but mirror in
/// all directions: what the eye sees inside a cut stone, some of it dark, some bright, flashing as it turns.
Geometry cutStone(double radius, int facets);

// One builder a kind; each adds its parts to `parent`.
void coin(Node& parent, Textures& textures);
void ring(Node& parent);
void watch(Node& parent, Textures& textures);
void key(Node& parent);
void gem(Node& parent);
void compass(Node& parent, Textures& textures);
/// Its lid is a node of that name, whose origin is the hinge.
void chest(Node& outer, Textures& textures);
void cap(Node& parent);
void can(Node& parent, Textures& textures);
void nail(Node& parent);
void foil(Node& parent);

}  // namespace gull::itemParts
