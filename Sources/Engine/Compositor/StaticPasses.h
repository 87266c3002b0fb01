#pragma once

#include "Engine/Compositor/EdgeCells.h"
#include "Engine/Compositor/PaintLayer.h"
#include "Engine/Compositor/ReliefGrid.h"
#include "Engine/Compositor/StaticPictures.h"
#include "Engine/Render/ContactShadows.h"
#include "Engine/Render/FrameUniforms.h"
#include "Engine/Render/PostProcessing.h"
#include "Engine/Render/ShadowMap.h"
#include "Engine/Render/SurfacePass.h"
#include "Engine/Render/WaterMirror.h"

#include <vector>

namespace gull {

struct RenderContext;

/// The passes that make the static layer's pictures, in the order in which they build on each other, and
/// these pictures. Each works within a part of the picture and leaves the rest. StaticLayer decides when to
/// draw what.
class StaticPasses {
  public:
    /// The scene to draw: borrowed, valid for one frame.
    struct Scene {
        const Stage& stage;
        const DrawList& list;
    };

    explicit StaticPasses(RenderContext& context);

    /// Starts with empty pictures of the view through `view`. The sun's shadow map has as many texels a side
    /// as the light asks for, but at most `mostShadow`.
    void begin(const Viewpoint& view, int mostShadow);
    /// Takes over the light of this frame; call it before the passes of a frame.
    void prepare(const Scene& scene);

    /// 1. The sun's shadow map: a part of its texels, or the part that `changed` (world space) covers.
    void drawSunShadow(const Scene& scene, const PixelArea& texels);
    void redrawSunShadow(const Scene& scene, const Box& changed);
    /// 2. The maps of what hides the sky: `count` of them from `first` on. Begin with the first: it takes
    /// over the light.
    void drawSkyMaps(const Scene& scene, int first, int count);
    /// 3. What the water mirrors.
    void drawMirror(const Scene& scene);
    /// 4. Depth, and the farthest depth in coarse pixels.
    void drawDepth(const Scene& scene, const PixelArea& area);
    /// 5. What the CPU knows of the depth: relief and edges.
    void readDepth(const Scene& scene, const PixelArea& area);
    /// 6. How much of the light of sky and ground arrives: from the maps and the picture's depth.
    void drawContactShadows(const PixelArea& area);
    /// 7. Light and surfaces from shadow map, depth and contact shadows: one sample a pixel.
    void drawSurfaces(const Scene& scene, const PixelArea& area);
    /// 8. The same with four samples a pixel in the cells of `area` that show an edge.
    void drawEdges(const Scene& scene, const PixelArea& area);
    /// 9. The glow around bright light, including the sun's in the sea, which moves but hardly leaves its
    /// place.
    void findBloom(const Scene& scene);
    /// 10. Paint, and the tone-mapped picture from light, paint and bloom.
    void drawPicture(const PixelArea& area);

    bool castsSunShadow(const Scene& scene) const { return scene.list.sun.castsShadow(); }
    int skyMaps() const;
    int shadowSize(const Scene& scene) const;  ///< texels a side; the scene has a sun
    const Viewpoint& view() const { return view_; }
    StaticPictures pictures() const;
    ReliefGrid& relief() { return relief_; }
    const ReliefGrid& relief() const { return relief_; }

  private:
    bool hasContactShadows() const;
    SurfacePass surfacePass(const Scene& scene, const DrawTarget& target) const;
    void drawScene(const Scene& scene, const SurfacePass& pass, const PixelArea& area);
    bool showsSky(const DrawList& list, const PixelArea& area) const;
    Target lightWithWater(const Scene& scene, const std::vector<const DrawItem*>& water);

    RenderContext& context_;
    Viewpoint view_;
    int mostShadow_ = 0;
    bool sunShadow_ = false;
    TextureRef environment_;
    FrameBlock block_;
    FrameUniforms frame_;
    ShadowMap shadow_;
    SkyMaps sky_;
    std::shared_ptr<const SkyDome> dome_;
    WaterMirror mirror_;
    ContactShadows contact_;
    Target depth_;
    std::vector<float> depths_;  ///< the contents of depth_, lowest row first
    ReliefGrid relief_;
    EdgeCells edges_;
    Target farthest_;
    Target light_;  ///< lit, shade, surface, normal
    PaintLayer paint_;
    Target tile_;  ///< multisampled
    Target picture_;
    Bloom bloom_;
    TextureRef glow_;
};

}  // namespace gull
