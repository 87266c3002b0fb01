#include "Gullwick/Scene/Reveal.h"

#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace gull {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double depth = 0.3;       // how far below the sand an item starts
constexpr double startScale = 0.4;  // share of its size at which it starts
constexpr double junkRise = 0.32;   // seconds
constexpr double junkToss = 0.5;    // seconds
constexpr double junkEnd = 0.9;

struct Timing {
    double rise;  ///< world units
    double size;
    double hold;  ///< seconds until it flies off
    double end;   ///< seconds until it is gone
};

constexpr Timing chestTiming{1.55, 1.15, 2.75, 3.3};
constexpr Timing treasureTiming{2.0, 1.45, 1.45, 1.95};

const Timing& timing(ItemKind kind) {
    return kind == ItemKind::chest ? chestTiming : treasureTiming;
}

double easeOut(double t) {
    const double rest = 1 - std::clamp(t, 0.0, 1.0);
    return 1 - rest * rest * rest;
}

void poseTreasure(const Reveal& reveal, double e) {
    const Timing& t = timing(reveal.kind);
    const bool chest = reveal.kind == ItemKind::chest;
    const double q = easeOut(e / 0.42);
    glm::dvec3 position = reveal.ground;
    position.y += -depth + t.rise * q + 0.06 * q * std::sin(4 * e);
    double scale = t.size * (startScale + (1 - startScale) * q);
    if (e > t.hold) {
        const glm::dvec3 away(0, Terrain::height(0, 6) + 0.4, 6.5);
        const double g = easeOut((e - t.hold) / (t.end - t.hold));
        position += (away - position) * g;
        scale *= 1 - g;
    }
    Node& node = *reveal.node;
    node.position = position;
    node.scale = glm::dvec3(scale);
    node.eulerAngles = chest ? glm::dvec3(0.25, 0.35 * std::sin(1.5 * e), 0) : glm::dvec3(0, 2.6 * e, 0);
    if (chest) {
        if (Node* lid = node.find("lid")) lid->eulerAngles.x = -1.9 * easeOut((e - 0.7) / 0.6);
    }
    if (reveal.glow) {
        reveal.glow->position = position + glm::dvec3(0, 0.3, 0.4);
        const double fade = std::max(0.0, 1 - std::max(0.0, e - t.hold) / 0.4);
        reveal.glow->light->intensity = (chest ? 2.2 : 1) * q * 140 * fade;
    }
}

void poseJunk(const Reveal& reveal, double e) {
    const double q = easeOut(e / junkRise);
    glm::dvec3 position = reveal.ground;
    position.y += -depth + q;
    if (e > junkRise) {
        const double f = std::min((e - junkRise) / junkToss, 1.0);
        position += (reveal.rest - position) * f;
        // An arc with a bounce that dies away.
        position.y += 0.35 * std::sin(pi * f) + 0.2 * (1 - f) * std::abs(std::sin(2.6 * pi * f));
    }
    Node& node = *reveal.node;
    node.position = position;
    node.scale = glm::dvec3(startScale + (1 - startScale) * q);
    node.eulerAngles =
        e <= junkRise + junkToss ? glm::dvec3(9 * e, 5.4 * e, 0) : glm::dvec3(pi / 2, 0.8, 0.2);
}

}  // namespace

double Reveal::duration() const {
    return isTreasure(kind) ? timing(kind).end : junkEnd;
}

void Reveal::pose(double time) const {
    if (!node) return;
    isTreasure(kind) ? poseTreasure(*this, time - start) : poseJunk(*this, time - start);
}

}  // namespace gull
