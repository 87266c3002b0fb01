#pragma once

#include "Engine/Stage/Node.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace gull {

/// Everything a renderer needs to draw a scene: plain data, no GPU. Announce changes of the still layer with
/// touchStill(); the moving layer may change at any time without notice.
class Stage {
  public:
    struct Fog {
        Colour colour;
        double start = 0;  ///< distance from the camera, world units
        double end = 0;    ///< 0: no fog
        double densityExponent = 1;
    };

    Stage();
    /// Unique in the process, never reused: a renderer tells stages apart by it.
    std::uint64_t id() const { return id_; }

    Node root;                            ///< its layer is Layer::still
    Node* pointOfView = nullptr;          ///< carries the camera; borrowed, under the root
    std::shared_ptr<Texture> background;  ///< equirectangular sky; null: transparent black
    std::shared_ptr<Texture> environment;
    double environmentIntensity = 1;
    glm::dvec3 shadeTint{1, 1, 1};  ///< linear; multiplies environment and ambient light on rough surfaces
    Fog fog;
    double time = 0;  ///< scene time, seconds: what the particles follow
    /// While the camera moves, the world transform at which it will come to rest: a renderer may prepare that
    /// picture ahead of time.
    std::optional<glm::dmat4> restingView;

    /// The still layer changed everywhere / within `box` (world space). A renderer may take a few frames to
    /// show the change.
    void touchStill();
    void touchStill(const Box& box);
    /// Only multiply maps changed, within `box`.
    void touchPaint(const Box& box);
    /// Rises with every touch.
    std::uint64_t stillSerial() const { return serial_; }
    struct StillChange {
        std::uint64_t serial;
        Box box;
        bool onlyPaint;
    };
    /// The touches after `serial`; empty if everything changed.
    std::optional<std::vector<StillChange>> stillChangesSince(std::uint64_t serial) const;

  private:
    void remember(const Box& box, bool onlyPaint);

    std::uint64_t id_;
    std::uint64_t serial_ = 1;
    std::uint64_t wholeSerial_ = 1;  ///< the last touch of everything
    std::deque<StillChange> touches_;
};

}  // namespace gull
