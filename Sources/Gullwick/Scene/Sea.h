#pragma once

#include "Engine/Stage/Node.h"
#include "Gullwick/Scene/Look.h"
#include "Gullwick/Scene/Textures.h"

#include <array>
#include <map>
#include <optional>

namespace gull {

/// The sea: a plane of water that heaves with the swell, rises with the tide and surges in the flood, with
/// foam at its edge and three breakers rolling in.
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

    /// The strip of foam, bent along the shoreline for a water level of `level`, centred on the origin.
    const GeometryRef& foamAlongShore(double level);

    Node& water_;
    std::shared_ptr<Material> waterMaterial_;
    Node& foam_;
    std::shared_ptr<Material> foamMaterial_;
    std::array<Breaker, 3> breakers_{};
    std::map<int, GeometryRef> foamShapes_;  ///< by quantised water level
};

}  // namespace gull
