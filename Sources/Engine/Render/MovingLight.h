#pragma once

#include "Engine/Render/KeptLayer.h"

#include <array>
#include <compare>
#include <map>

namespace gull {

/// What the shadow and the lamps of things that move do to the light on what rests. Reads the kept layer, the
/// moving shadow map and the lamps where FramePainter has bound them.
class MovingLight {
  public:
    /// Where they may be seen.
    struct Reach {
        /// By the marks of a ReliefGrid; no two areas overlap.
        std::array<std::vector<PixelArea>, 4> areas;
        bool shadow = false;  ///< whether anything throws one
        int lamps = 0;        ///< in programs, see FrameBlock::lampsInProgram()
    };

    explicit MovingLight(Studio& studio);

    /// Fills `target` with the kept layer's light and depth under moving shadows and lamps.
    void drawOver(const Target& target, const Reach& reach, const KeptLayer& kept);
    /// Finds, at half resolution, how the developed picture changes within `part`. Binds a target of its own.
    void find(const Reach& reach, const KeptLayer& kept, const PixelArea& part);
    /// Changes the bound target, which is of this `size` and shows the kept layer's developed picture, so
    /// within `part`.
    void apply(const Reach& reach, const PixelSize& size, const PixelArea& part);
    /// Draws what find() draws for these marks, if anything, where it does not show. Binds a target of its
    /// own.
    void rehearse(const Reach& reach, const KeptLayer& kept, int marks);

  private:
    /// What a program does: lights what has some marks, or finds the `change` that this makes.
    struct Kind {
        bool change = false;
        bool shadow = false;
        int lamps = 0;
        bool plainFilm = false;
        bool paint = false;
        auto operator<=>(const Kind&) const = default;
    };

    /// Sets up what find() draws into and with.
    void begin(const KeptLayer& kept);
    static Kind kind(bool change, const Reach& reach, int marks, const KeptLayer& kept);
    const Program& program(const Kind& kind);

    Studio& studio_;
    Program cover_;
    Program apply_;
    std::map<Kind, Program> programs_;
    Target covered_;  ///< how far moving things cover the sun
    Target change_;   ///< what is added to the picture; alpha: how much of it that hides
};

}  // namespace gull
