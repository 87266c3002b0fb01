#include "Gullwick/Scene/Dressing.h"

#include "Engine/Log/Require.h"
#include "Engine/Stage/Primitives.h"
#include "Gullwick/Scene/PropParts.h"

#include <glm/geometric.hpp>

namespace gull::Dressing {

namespace {

constexpr std::uint64_t seedFactor = 7919;

void commonDriftwood(Node& into) {
    driftwood(into, {-9.8, 0, -1.2}, 1.3, 2.4);
}

void lastBeach(Node& into) {
    rowboat(into, {-9.9, 0, -5.6}, 0.5);
    palm(into, {10.6, 0, -2.6}, -0.35);
    palm(into, {-10.8, 0, 1.8}, 0.3);
}

}  // namespace

std::unique_ptr<Node> build(int beach, const BeachLook& look, Textures& textures) {
    require(beach >= 0, "no props for beach {}: beaches are numbered from 1", beach);
    auto root = std::make_unique<Node>("dressing");
    Node& into = *root;
    SplitMix64 rng(static_cast<std::uint64_t>(beach) * seedFactor);
    into.add(siteRope());
    scatter(into, look, rng, beach == 2 ? 70 : 26);
    // On the fourth beach a boat lies where it would stand.
    if (beach != 8) bucket(into, look, beach == 4 ? 2.6 : 0);
    switch (beach) {
        case 1:
            rocks(into, {{-10.6, -6.4, 1.1}, {-9.4, -7.6, 0.7}, {11.2, -7.2, 1.3}}, look, textures);
            break;
        case 2:
            starfish(into, rng);
            break;
        case 3:
            pier(into, textures);
            break;
        case 4:
            rocks(into, {{-11, -6.5, 1.8}, {-9.6, -8.6, 1.2}, {11.2, -6.2, 1.6}, {10, -9, 1}}, look,
                  textures);
            rowboat(into, {9.8, 0, -3.4}, -0.9);
            break;
        case 5:
            lighthouse(into, textures);
            rocks(into, {{-10.8, -6.8, 1}}, look, textures);
            break;
        case 6:
            wreck(into);
            break;
        case 7:
            seaweed(into, rng);
            driftwood(into, {-9.9, 0, -2.4}, 0.3, 3.6);
            driftwood(into, {10.1, 0, -4.4}, -0.8, 2.6);
            break;
        default:
            lastBeach(into);
            break;
    }
    if (beach != 7 && beach != 8) commonDriftwood(into);
    return root;
}

std::unique_ptr<Node> cylinder(const glm::dvec3& from, const glm::dvec3& to, double radius,
                               std::shared_ptr<Material> material) {
    auto node = makeNode(primitives::cylinder(radius, glm::distance(from, to), 16), std::move(material));
    const glm::dmat4 place = props::alongSegment(from, to);
    node->position = glm::dvec3(place[3]);
    node->orientation = glm::quat_cast(glm::dmat3(place));
    return node;
}

}  // namespace gull::Dressing
