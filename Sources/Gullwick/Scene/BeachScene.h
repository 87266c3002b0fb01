#pragma once

#include "Engine/Loop/DelayedWork.h"
#include "Engine/Raster/Colour.h"
#include "Engine/Stage/Stage.h"
#include "GullCore/Beach.h"
#include "GullCore/Hunt.h"
#include "Gullwick/Scene/Look.h"
#include "Gullwick/Scene/Reveal.h"
#include "Gullwick/Scene/Textures.h"
#include "Gullwick/Scene/TrailCanvas.h"

#include <glm/vec2.hpp>
#include <memory>
#include <optional>
#include <vector>

namespace gull {

/// The world of one beach: sand, sea, light, camera, detector and dug items. It is created once and dressed
/// again for every beach. It knows no rules: the controller tells it where the coil is, how strong the signal
/// is, how far the tide has run and what a dig found.
///
/// x to the right, y up, z toward the viewer; the plot lies at x from -8 to 8 and z from -5 (seaward) to 5.
/// All times are seconds of the caller's clock. Still things are in the stage's still layer, moving ones in
/// its moving layer. Single-threaded.
class BeachScene {
  public:
    /// `delayedWork` is owned by the caller and must outlive the scene. Dressed for beach 1.
    explicit BeachScene(DelayedWork& delayedWork);
    ~BeachScene();
    BeachScene(const BeachScene&) = delete;
    BeachScene& operator=(const BeachScene&) = delete;

    double introStart = -100;          ///< scene time at which the camera's fly-in began
    std::optional<double> floodStart;  ///< scene time at which the flood began
    double tide = 0;                   ///< how far the tide has run, 0 to 1
    double time = 0;                   ///< scene time of the last update()
    double shake = 0;                  ///< strength of the camera's shake; decays by itself
    bool reduceMotion = false;         ///< suppresses the fly-in and the shake
    TrailCanvas trail;                 ///< the marks of sweeps and digs

    /// Clears the beach and dresses the scene for beach `number`. Numbers beyond the eighth share its light.
    /// Stops the program if the number is negative or too large to seed the dressing.
    void setBeach(int number);
    int beachNumber() const { return beachNumber_; }
    const BeachLook& look() const { return look_; }

    /// Fits the framing to a view of this width / height: a narrow view (below 1.55) sees the beach from
    /// farther back. Values below 0.3 count as 0.3.
    void frame(double aspect);
    /// A step of `dt` seconds that ends at `time`. `coilLift` raises the rig above its hover height (world
    /// units); `signal` (0 to 1) and `tint` light its ring.
    void update(double time, double dt, const PlotPoint& coil, const glm::dvec2& coilVelocity,
                double coilLift, double signal, const Colour& tint);

    /// A ring spreading over the sand, `strength` 0 to 1.
    void ripple(const PlotPoint& at, const Colour& tint, double strength, double size = 1);
    /// Shows the arrow at `from` pointing toward `to` for 2.4 s.
    void showPing(const PlotPoint& from, const PlotPoint& to);
    /// Makes a hole with its heap, a spray of sand, and the reveal of the item that was found.
    void dig(const PlotPoint& at, const Hunt::DigOutcome& outcome);
    /// Everything dug up on this beach, including finished reveals.
    const std::vector<Reveal>& reveals() const;

    /// The plot point under `point` of a view of `viewSize` (points, origin top left), clamped to the plot.
    PlotPoint plotPoint(const glm::dvec2& point, const glm::dvec2& viewSize) const;

    Stage& stage() { return stage_; }
    const Stage& stage() const { return stage_; }
    Textures& textures() { return textures_; }

  private:
    struct Parts;

    Stage stage_;
    Textures textures_;
    int beachNumber_ = 1;
    BeachLook look_;
    std::unique_ptr<Parts> parts_;
};

}  // namespace gull
