#pragma once

#include "Engine/Stage/Node.h"
#include "Gullwick/Scene/Look.h"
#include "Gullwick/Scene/Textures.h"

#include <array>
#include <map>
#include <optional>

namespace gull {

/// The sea: a plane of water that heaves with the swell, rises with the tide and surges in the flood, with
/// foam at its edge, a film of water where the swash has wetted the sand, and three breakers rolling in.
class Sea {
  public:
    /// Adds the sea to `parent`, in the moving layer.
    Sea(Node& parent, Textures& textures);

    void setLook(const BeachLook& look, Textures& textures);
    void update(double time, double tide, const std::optional<double>& floodStart);

    /// Height of the water's surface. `tide` 0 to 1 lifts it by 0.2, the flood by 0.85 more within 1.6 s.
    static double level(double time, double tide, const std::optional<double>& floodStart);

  private:
    struct Breaker {
        Node* node;
        std::shared_ptr<Material> material;
    };

    /// The level without the swell.
    static double mean(double tide);

    Node& water_;
    std::shared_ptr<Material> waterMaterial_;
    Node& film_;
    std::shared_ptr<Material> filmMaterial_;
    Node& foam_;
    std::shared_ptr<Material> foamMaterial_;
    std::array<Breaker, 3> breakers_{};
    std::map<int, GeometryRef> foamShapes_;  ///< by the steps of the water level
    std::map<int, GeometryRef> filmShapes_;  ///< by the steps of the level up to which the sand is wet
};

}  // namespace gull
