#pragma once

#include "Engine/Loop/Clock.h"
#include "Engine/Loop/DelayedWork.h"
#include "Engine/Loop/MainLoop.h"
#include "Gullwick/Scene/BeachScene.h"

#include <gtest/gtest.h>

#include <functional>
#include <glm/geometric.hpp>
#include <string_view>
#include <vector>

namespace gull {

inline void forEachNode(const Node& node, const std::function<void(const Node&)>& visit) {
    visit(node);
    for (const auto& child : node.children()) forEachNode(*child, visit);
}

inline std::vector<const Node*> nodesNamed(const Node& root, std::string_view name) {
    std::vector<const Node*> found;
    forEachNode(root, [&](const Node& node) {
        if (node.name == name) found.push_back(&node);
    });
    return found;
}

/// The layer that draws a node.
inline Layer layerOf(const Node& node) {
    const Node* at = &node;
    while (at->layer == Layer::inherited && at->parent()) at = at->parent();
    return at->layer;
}

inline void expectNear(const glm::dvec3& actual, const glm::dvec3& expected, double tolerance = 1e-9) {
    EXPECT_LT(glm::distance(actual, expected), tolerance)
        << actual.x << ", " << actual.y << ", " << actual.z << " instead of " << expected.x << ", "
        << expected.y << ", " << expected.z;
}

inline Hunt::DigOutcome treasure(ItemKind kind) {
    return Hunt::Treasure{BuriedItem{0, kind, {0.5, 0.5}, 0}};
}
inline Hunt::DigOutcome junk(ItemKind kind) {
    return Hunt::Junk{BuriedItem{0, kind, {0.5, 0.5}, 0}};
}

/// A scene on a manual clock.
struct SceneOnClock {
    ManualClock clock{100};
    MainLoop loop{clock};
    DelayedWork delayedWork{loop};
    BeachScene scene{delayedWork};
    PlotPoint coil{0.5, 0.5};

    SceneOnClock() { step(0); }

    void step(double dt) {
        loop.turn(clock, dt);
        scene.update(clock.now(), dt, coil, {0, 0}, 0, 0, {1, 1, 1, 1});
    }
    Node& node(std::string_view name) { return *scene.stage().root.find(name); }
};

}  // namespace gull
