#pragma once

#include "Engine/Gl/DrawState.h"
#include "Engine/Gl/StateChanges.h"
#include "Engine/Gl/StateKeeper.h"
#include "Engine/Gl/TextureUnit.h"
#include "Engine/Raster/Image.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace gull {

/// The values that a clear writes; an empty one leaves its buffer alone.
struct ClearValues {
    std::optional<std::array<float, 4>> colour;
    std::optional<double> depth;
};

/// The current OpenGL context as an interface of values: a draw, a clear or a copy states everything it
/// depends on, and the device sets only what differs from the call before.
///
/// Order of calls: make textures, targets, vertices and programs; upload; then draw, clear, copy and read in
/// any order. Needs OpenGL 4.1 core, or 3.3 with separate shader objects. One context, one device, one
/// thread.
class GraphicsDevice final : public StateKeeper {
  public:
    /// Draws read textures at units below this.
    static constexpr int unitCount = editingUnit;

    /// Throws std::runtime_error with a readable message when the context is too old.
    GraphicsDevice();
    GraphicsDevice(const GraphicsDevice&) = delete;
    GraphicsDevice& operator=(const GraphicsDevice&) = delete;

    /// Draws triangles: runs of vertices, or of the vertex array's 32-bit indices. Each run is one draw call.
    void draw(const DrawState& state, std::span<const VertexRange> vertices);
    void drawIndexed(const DrawState& state, std::span<const VertexRange> indices);
    /// Clears the target's scissor rectangle, or its whole framebuffer.
    void clear(const DrawTarget& target, const ClearValues& values);
    /// Copies `area` of a texture to the same place in another of the same format and size, by the fastest
    /// way the context offers.
    void copyColour(TextureRef from, TextureRef to, const PixelArea& area);
    void copyDepth(TextureRef from, TextureRef to, const PixelArea& area);
    /// The framebuffer's pixels from its lower left corner, top row first.
    Image readColour(unsigned framebuffer, const PixelSize& size);
    /// The depth (0 to 1) within `area` into `depths`, which holds all of a picture `width` pixels wide,
    /// lowest row first.
    void readDepth(unsigned framebuffer, const PixelArea& area, int width, std::vector<float>& depths);
    /// Waits until everything issued so far is drawn.
    void finish();

    /// Makes the next call set all state. Call it after binding or creating anything in the context without
    /// this device.
    void forgetState() override;
    /// Before each draw, sets all state to useless values, so that a draw that relies on an earlier one goes
    /// visibly wrong. For tests; slow.
    void setSpoiling(bool spoiling) { spoiling_ = spoiling; }

  private:
    struct Unit {
        TextureRef texture;
        unsigned sampler = 0;
    };

    void apply(const DrawState& state);
    void applyFixed(const ContextState& wanted);
    void bindTextures(const std::vector<TextureBinding>& textures);
    void spoil(const DrawState& state);
    void copy(TextureRef from, TextureRef to, const PixelArea& area, bool depth);

    std::optional<ContextState> state_;  ///< empty: unknown
    std::array<std::optional<Unit>, unitCount> units_;
    bool copiesImages_ = false;
    bool spoiling_ = false;
};

}  // namespace gull
