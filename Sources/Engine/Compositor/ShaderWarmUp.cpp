#include "Engine/Compositor/ShaderWarmUp.h"

#include "Engine/Compositor/Stopwatch.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/SurfacePass.h"
#include "Engine/Render/TextureUnits.h"
#include "Engine/Stage/Primitives.h"

#include <algorithm>

namespace gull {

namespace {

/// As in play, the sides of pictures are not powers of two and those of materials' maps are.
constexpr PixelSize pictureSize{5, 5};
constexpr int shadowMapSize = 4;
constexpr int mapSize = 4;

bool isSurface(const ProgramKey& key) {
    return key.kind == ProgramKind::surface || key.kind == ProgramKind::mattSurface;
}

/// What play hardly ever asks for is compiled when it does: each program takes one or two megabytes. That is
/// three lamps at once, and opaque surfaces that are not physically based.
bool isRare(const ProgramUse& use) {
    return use.lamps > 2 || (isSurface(use.key) && use.material.blend == Material::Blend::opaque &&
                             use.material.lighting != Material::Lighting::physicallyBased);
}

bool isNeeded(const ProgramUse& use, RenderTier tier) {
    if (isRare(use)) return false;
    if (tier == RenderTier::full) return use.pass == PassKind::fullFrame || use.pass == PassKind::unlit;
    // Of flights what most surfaces are drawn with.
    const bool isMatt = use.key.kind == ProgramKind::mattSurface;
    return use.pass == PassKind::fastFrame || (use.pass == PassKind::flight && isMatt);
}

}  // namespace

struct ShaderWarmUp::Stock {
    explicit Stock(GraphicsDevice& device)
        : fast(device, pictureSize, {{Format::bgra8}, Format::depth24}),
          flight(device, pictureSize, {{Format::bgra8}, Format::depth16}),
          full(device, pictureSize, {{Format::rgba16f}, Format::depth24, 4}),
          halfPicture(device, pictureSize, {{Format::bgra8}}),
          cover(device, pictureSize, {{Format::r8}}),
          light(plainTarget(device, Format::rgba16f, 0)),
          surface(plainTarget(device, Format::rgba8, 0)),
          depth(device, pictureSize, {{}, Format::depth24}),
          movingShadow(makeShadowMap(device, shadowMapSize)),
          quickEnvironment(makeSampler(device, {Filter::linearNearestMip, true, true})),
          frame(device) {
        device.clear(depth.whole(), {{}, 1});
        device.clear(movingShadow.whole(), {{}, 1});
        frame.upload({});
    }

    const Target& targetOf(const ProgramUse& use) const {
        if (use.key.kind == ProgramKind::lightChange) return halfPicture;
        if (use.key.kind == ProgramKind::movingCover) return cover;
        return use.pass == PassKind::flight ? flight : use.pass == PassKind::fullFrame ? full : fast;
    }

    Target fast, flight, full, halfPicture, cover;
    Target light, surface, depth, movingShadow;
    GlSampler quickEnvironment;
    FrameUniforms frame;
    std::shared_ptr<Texture> map = std::make_shared<Texture>(Image(mapSize, mapSize));
    GeometryRef triangle = std::make_shared<const Geometry>(primitives::plane(1, 1));
};

bool ShaderWarmUp::run(RenderTier tier, double budget) {
    if (tier_ != tier) {
        tier_ = tier;
        stock_ = std::make_shared<Stock>(context_.device);
        left_ = programUses(stock_->map);
        std::erase_if(left_, [&](const ProgramUse& use) { return !isNeeded(use, tier); });
        std::reverse(left_.begin(), left_.end());
    }
    const Stopwatch watch;
    while (!left_.empty()) {
        draw(left_.back());
        left_.pop_back();
        context_.device.finish();
        if (watch.elapsed() >= budget) break;
    }
    if (!left_.empty()) return false;
    stock_.reset();
    context_.collectGarbage();
    return true;
}

void ShaderWarmUp::draw(const ProgramUse& use) {
    const DrawTarget target = stock_->targetOf(use).whole();
    if (isSurface(use.key))
        drawSurfaceUse(use, target);
    else
        drawPictureUse(use, target);
}

void ShaderWarmUp::drawSurfaceUse(const ProgramUse& use, const DrawTarget& target) {
    const bool isFast = use.pass == PassKind::fastFrame, isFlight = use.pass == PassKind::flight;
    const bool isDisplay = isFast || isFlight || use.pass == PassKind::unlit;
    const std::vector<Lamp> lamps(static_cast<std::size_t>(use.lamps));
    Viewpoint view;
    view.size = pictureSize;
    SurfacePass pass{target, stock_->frame.name(), view, {}, {}};
    pass.inputs.environment = context_.environments.get(nullptr, glm::vec3(0)).cube;
    if (isFast) pass.inputs.environmentSampler = stock_->quickEnvironment.name();
    pass.inputs.groundDepth = stock_->depth.depth();
    pass.inputs.groundLight = stock_->light.colour();
    pass.shading.output = isDisplay ? Shading::Output::display : Shading::Output::linear;
    pass.shading.lamps = lamps;
    pass.shading.small = isFast;
    pass.shading.matt = isFlight;
    pass.shading.waterDepth = use.pass == PassKind::fullFrame;

    DrawItem item;
    item.mesh = &context_.meshes.mesh(stock_->triangle);
    item.element = item.mesh->elements.front();
    item.material = &use.material;
    item.blended = use.material.blend != Material::Blend::opaque;
    item.area = PixelArea::whole(pictureSize);
    drawSurface(context_, pass, item, item.area);
}

void ShaderWarmUp::drawPictureUse(const ProgramUse& use, const DrawTarget& target) {
    constexpr VertexRange triangle{0, 3};
    VertexStreams& streams = context_.streams;
    DrawState state;
    state.target = target;
    state.program = &context_.programs.get(use.key);
    state.frameUniforms = stock_->frame.name();
    const TextureRef surface = stock_->surface.colour();
    state.textures = {{unitStaticLit, stock_->light.colour()},
                      {unitStaticShade, surface},
                      {unitStaticSurface, surface},
                      {unitStaticNormal, surface},
                      {unitPaint, surface},
                      {unitMovingCover, stock_->cover.colour()},
                      {unitStaticDepth, stock_->depth.depth()},
                      {unitSource, stock_->fast.colour()},
                      {unitMovingShadow, stock_->movingShadow.depth()},
                      context_.textures.binding(unitDiffuse, stock_->map, Wrap::clamp, Wrap::clamp)};
    state.vertexArray = streams.noVertices.name();
    switch (use.key.kind) {
        case ProgramKind::particles:
            state.depthTest = DepthTest::lessOrEqual;
            state.blending = Blending::over;
            streams.particles.upload(std::vector<float>(27));
            state.vertexArray = streams.particles.vertexArray();
            break;
        case ProgramKind::lightChange:
        case ProgramKind::movingCover:
            streams.areas.upload({0, 0, 4, 0, 4, 4});
            state.vertexArray = streams.areas.vertexArray();
            break;
        case ProgramKind::relight:
            state.depthTest = DepthTest::always;
            state.writesDepth = true;
            break;
        default:  // the sky, edge smoothing
            state.depthTest = DepthTest::lessOrEqual;
            break;
    }
    context_.device.draw(state, {&triangle, 1});
}

}  // namespace gull
