#pragma once

#include "Engine/Stage/Node.h"
#include "GullCore/Rng.h"
#include "Gullwick/Scene/Look.h"
#include "Gullwick/Scene/Textures.h"

#include <array>
#include <glm/vec3.hpp>
#include <memory>
#include <vector>

namespace gull {

/// The props that make each beach recognisable. Each builder adds to the node it is given. Scattered things
/// come from a generator seeded with the beach's number, so that a beach looks the same on every visit.
namespace Dressing {

/// A rock: its position and radius.
struct Rock {
    double x;
    double z;
    double size;
};

/// All props of a beach. Stops the program if `beach` is negative or too large to seed the generator.
std::unique_ptr<Node> build(int beach, const BeachLook& look, Textures& textures);

/// The rope on four stakes just outside the plot; all items lie within it.
std::unique_ptr<Node> siteRope();
void scatter(Node& into, const BeachLook& look, SplitMix64& rng, int shells);
void bucket(Node& into, const BeachLook& look, double towardViewer = 0);
void rocks(Node& into, const std::vector<Rock>& at, const BeachLook& look, Textures& textures);
void starfish(Node& into, SplitMix64& rng);
void seaweed(Node& into, SplitMix64& rng);
void driftwood(Node& into, const glm::dvec3& at, double yaw, double length);
void pier(Node& into, Textures& textures);
void rowboat(Node& into, const glm::dvec3& at, double yaw);
void lighthouse(Node& into, Textures& textures);
void wreck(Node& into);
void palm(Node& into, const glm::dvec3& at, double lean);
/// A rod from one point to another.
std::unique_ptr<Node> cylinder(const glm::dvec3& from, const glm::dvec3& to, double radius,
                               std::shared_ptr<Material> material);

}  // namespace Dressing

}  // namespace gull
