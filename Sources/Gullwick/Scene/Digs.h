#pragma once

#include "Engine/Loop/DelayedWork.h"
#include "Engine/Stage/Stage.h"
#include "Gullwick/Scene/Look.h"
#include "Gullwick/Scene/Reveal.h"
#include "Gullwick/Scene/Textures.h"

#include <glm/vec3.hpp>
#include <memory>
#include <optional>
#include <vector>

namespace gull {

/// The results of digging on a beach: holes with a rim and a spoil heap, sprays of sand, and the items found.
class Digs {
  public:
    /// All three are owned by the caller and must outlive it.
    Digs(Stage& stage, Textures& textures, DelayedWork& delayedWork);

    /// Starts over on a new beach. Everything dug up is added to `beachRoot`, which must outlive the beach.
    void begin(Node& beachRoot, const BeachLook& look);
    /// Makes a hole at `ground` and starts the reveal of the item from it.
    void dig(const glm::dvec3& ground, const std::optional<ItemKind>& found, double time);
    /// Advances the running reveals.
    void update(double time);

    const std::vector<Reveal>& reveals() const { return reveals_; }

  private:
    void leaveHole(const glm::dvec3& ground);
    void spray(const glm::dvec3& ground, double time);
    std::shared_ptr<ParticleSystem> sandSpray(double time) const;
    std::shared_ptr<ParticleSystem> sparkle(ItemKind kind, double time) const;
    void raise(ItemKind kind, const glm::dvec3& ground, double time);
    void end(Reveal& reveal);
    void removeAfter(double seconds, Node& node);

    Stage& stage_;
    Textures& textures_;
    DelayedWork& delayedWork_;
    Node* beachRoot_ = nullptr;
    RGB sand_;
    std::shared_ptr<Material> spoil_;
    GeometryRef rim_;
    GeometryRef heap_;
    std::vector<Reveal> reveals_;
    std::uint64_t digCount_ = 0;
    /// Expires with the beach, which stops delayed work of an earlier one.
    std::shared_ptr<char> beachToken_;
};

}  // namespace gull
