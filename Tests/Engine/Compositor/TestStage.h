#pragma once

#include "Engine/Stage/Stage.h"

#include <memory>

namespace gull::test {

/// A small beach-like stage: a rippled slope with posts and balls (still), a shallow sea, a rig with a lamp,
/// a ring of light and a burst of particles (moving), under a sky with a low sun.
struct ShoreStage {
    ShoreStage();

    Stage stage;
    Node* camera = nullptr;
    Node* ground = nullptr;
    Node* rig = nullptr;
    Node* sea = nullptr;
    Node* ring = nullptr;
    Node* lamp = nullptr;
    Node* sun = nullptr;
    std::shared_ptr<Texture> marks;  ///< multiplied onto the ground
    std::shared_ptr<Material> groundMaterial;
};

/// A white Lambert square, 4 x 4, facing a camera without tone mapping straight above it, under one
/// directional light of intensity 1000 that shines along `toward` its middle.
struct FlatStage {
    FlatStage();

    Stage stage;
    Node* camera = nullptr;
    Node* plane = nullptr;
    Node* sun = nullptr;
    std::shared_ptr<Material> material;
};

std::shared_ptr<Texture> plainTexture(const Colour& colour, int width = 4, int height = 4);

/// The sRGB bytes of a linear value, as a correct encoder would give them (a double).
double encodedByte(double linear);

}  // namespace gull::test
