#include "Engine/Render/SkyMaps.h"

#include "Engine/Log/Require.h"
#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <glm/gtc/matrix_transform.hpp>

namespace gull {

namespace {

// What the maps show, world units: receivers in a ball around the origin, casters up to so far toward the
// sky.
constexpr double ball = 16, tallest = 40;
/// Of whatever hides the sky, on average.
constexpr float casterAlbedo = 0.25F;
/// What light that goes to and fro between the ground and what stands on it adds.
constexpr float toAndFro = 1.12F;

/// The light of sky and ambient light on a white surface, nothing hidden; as skyLight() in the shaders.
glm::vec3 openLight(const FrameBlock& block, const glm::vec3& n) {
    const glm::vec4* c = block.irradiance;
    const glm::vec4 sum = c[0] + c[1] * n.y + c[2] * n.z + c[3] * n.x + c[4] * (n.x * n.y) +
                          c[5] * (n.y * n.z) + c[6] * (3 * n.z * n.z - 1) + c[7] * (n.x * n.z) +
                          c[8] * (n.x * n.x - n.y * n.y);
    return glm::max(glm::vec3(sum), 0.0F) + glm::vec3(block.ambient);
}

glm::dmat4 mapMatrix(const glm::dvec3& toward) {
    const glm::dvec3 up = std::abs(toward.y) < 0.99 ? glm::dvec3(0, 1, 0) : glm::dvec3(0, 0, 1);
    const glm::dmat4 view = glm::lookAt(toward * tallest, glm::dvec3(0), up);
    const glm::dmat4 clip = glm::ortho(-ball, ball, -ball, ball, 0.0, tallest + ball);
    return glm::translate(glm::dmat4(1), glm::dvec3(0.5)) * glm::scale(glm::dmat4(1), glm::dvec3(0.5)) *
           clip * view;
}

int across(int parts) {
    return static_cast<int>(std::ceil(std::sqrt(parts)));
}

}  // namespace

void SkyMaps::setLight(const Stage& stage, const SkyDome* dome, const FrameBlock& block,
                       const RenderOptions& options, const Detail& detail) {
    require(detail.parts > 0 && detail.parts <= most, "{} parts of the sky", detail.parts);
    detail_ = detail;
    parts_.clear();
    for (const SkyPart& sky : divided(dome ? *dome : SkyDome{}, detail.parts))
        parts_.push_back({sky, mapMatrix(glm::dvec3(sky.toward))});
    const glm::vec3 tint(stage.shadeTint), sun(block.sunColour), toSun(block.sunDirection);

    std::vector<glm::vec3> light;
    glm::vec3 level(0);  // on level ground, nothing hidden
    for (const Part& part : parts_) {
        light.push_back((part.sky.radiance * block.fogRange.z * tint + glm::vec3(block.ambient)) *
                        part.sky.share);
        level += light.back() * part.sky.toward.y;
    }
    const glm::vec3 gain = openLight(block, {0, 1, 0}) / glm::max(level, glm::vec3(1e-4F));

    rows_.clear(), ways_.clear(), open_.clear(), hidden_.clear();
    const int side = across(detail.parts);
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        const auto& [sky, matrix] = parts_[i];
        // Into the maps' common texture.
        const double scale = 1.0 / side;
        const int x = static_cast<int>(i) % side, y = static_cast<int>(i) / side;
        const glm::dmat4 placed = glm::translate(glm::dmat4(1), {x * scale, y * scale, 0}) *
                                  glm::scale(glm::dmat4(1), {scale, scale, 1}) * matrix;
        const glm::dmat4 rows = glm::transpose(placed);
        for (int k = 0; k < 3; ++k) rows_.emplace_back(rows[k]);
        const glm::vec3 lit =
            openLight(block, -sky.toward) + sun * std::max(glm::dot(-sky.toward, toSun), 0.0F);
        ways_.emplace_back(sky.toward, sky.share);
        open_.emplace_back(light[i] * gain, x * scale);
        hidden_.emplace_back(lit * (casterAlbedo * sky.share), y * scale);
    }
    groundSky_ = glm::vec4(toAndFro * options.groundAlbedo * openLight(block, {0, 1, 0}), 0);
    groundSun_ = glm::vec4(toAndFro * options.groundAlbedo * sun * std::max(toSun.y, 0.0F), 0);
}

PixelArea SkyMaps::areaOf(int part) const {
    const int side = across(detail_.parts);
    return {part % side * detail_.texels, part / side * detail_.texels, detail_.texels, detail_.texels};
}

void SkyMaps::draw(RenderContext& context, std::span<const DrawLayer* const> layers, int first, int count) {
    const int size = across(detail_.parts) * detail_.texels;
    if (!maps_ || maps_.size().width != size) {
        maps_ = {};
        maps_ = makeShadowMap(context.device, size);
    }
    DrawState state;
    state.program = &context.programs.get({ProgramKind::sunDepth});
    state.depthTest = DepthTest::less;
    state.writesDepth = true;
    for (int i = first; i < std::min(first + count, parts()); ++i) {
        const glm::dmat4& matrix = parts_[static_cast<std::size_t>(i)].matrix;
        const PixelArea area = areaOf(i);
        state.target = {maps_.framebuffer(), area, area};
        context.device.clear(state.target, {{}, 1});
        Viewpoint light;
        light.size = {detail_.texels, detail_.texels};
        light.viewProjection =
            glm::translate(glm::dmat4(1), glm::dvec3(-1)) * glm::scale(glm::dmat4(1), glm::dvec3(2)) * matrix;
        for (const DrawLayer* layer : layers)
            for (const DrawItem& item : layer->opaque) {
                if (!item.castsShadow) continue;
                state.uniforms = {{"toLight", glm::mat4(matrix * item.model)}};
                drawMesh(context, state, item, light, PixelArea::whole(light.size));
            }
    }
}

void SkyMaps::addTo(RenderContext& context, DrawState& state) const {
    const auto texel = static_cast<float>(2 * ball / detail_.texels);
    state.textures.push_back({unitSkyMaps, maps_ ? maps_.depth() : context.standIns.farthestShadow.depth()});
    state.uniforms.insert(
        state.uniforms.end(),
        {{"skyRows", rows_},
         {"skyWays", ways_},
         {"skyOpen", open_},
         {"skyHidden", hidden_},
         {"skyParts", parts()},
         {"skyMap", glm::vec4(1.0F / static_cast<float>(across(detail_.parts)), texel,
                              0.5F * texel / static_cast<float>(tallest + ball),
                              1.0F / static_cast<float>(across(detail_.parts) * detail_.texels))},
         {"groundSky", groundSky_},
         {"groundSun", groundSun_}});
}

}  // namespace gull
