#include "Engine/Render/SurfacePass.h"

#include "Engine/Render/MeshDraws.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

#include <algorithm>
#include <cmath>

namespace gull {

namespace {

using Output = Shading::Output;

LightModel lightModel(const Material& material) {
    switch (material.lighting) {
        case Material::Lighting::constant:
            return LightModel::constant;
        case Material::Lighting::lambert:
            return LightModel::lambert;
        case Material::Lighting::physicallyBased:
            break;
    }
    return LightModel::physicallyBased;
}

/// Only surfaces with full lighting gain from it; the others are few and large.
bool isSmall(const DrawItem& item, const Shading& shading) {
    return shading.small && !shading.matt && item.material->lighting == Material::Lighting::physicallyBased &&
           item.material->blend != Material::Blend::add;
}

/// The number of lamps in the program: all of them if any reaches the item, to keep programs few. Small
/// things are always lit by all of them: that costs their few pixels less than one more program.
int reachingLamps(const DrawItem& item, const Shading& shading) {
    const auto reaches = [&](const Lamp& lamp) {
        return lamp.end <= 0 || glm::distance(lamp.position, item.middle) < lamp.end + item.radius;
    };
    const bool isLit =
        isSmall(item, shading) || std::any_of(shading.lamps.begin(), shading.lamps.end(), reaches);
    return isLit ? FrameBlock::lampsInProgram(shading.lamps.size()) : 0;
}

/// The static layer's surfaces share one program with every map; stand-ins replace missing ones.
bool hasAllMaps(const DrawItem& item, const Shading& shading) {
    return shading.output == Output::staticLayer && !item.blended &&
           item.material->lighting == Material::Lighting::physicallyBased;
}

bool isMatt(const DrawItem& item, const Shading& shading) {
    return shading.matt && !item.blended && item.material->metalness < 0.5;
}

ProgramKey mattProgram(const Shading& shading, const DrawItem& item) {
    const bool lit = item.material->lighting != Material::Lighting::constant;
    ProgramKey key{ProgramKind::mattSurface, {}, lit ? LightModel::lambert : LightModel::constant};
    key.features.set(Feature::diffuseMap, static_cast<bool>(item.material->diffuseMap));
    key.features.set(Feature::sunShadow, lit && shading.sunShadow);
    key.features.set(Feature::noToneMapping, shading.noToneMapping);
    return key;
}

/// Whole turns of a repeated map are left out: after a year of drifting a float would be too coarse for the
/// rest.
glm::vec4 placement(const Channel& channel) {
    glm::dvec2 offset = channel.offset;
    if (channel.wrapS == Wrap::repeat) offset.x -= std::floor(offset.x);
    if (channel.wrapT == Wrap::repeat) offset.y -= std::floor(offset.y);
    return {glm::vec2(channel.scale), glm::vec2(offset)};
}

/// The maps of `item` and the transforms of their texture coordinates.
void addMaps(RenderContext& context, DrawState& state, const DrawItem& item, const Shading& shading) {
    const Material& material = *item.material;
    const bool quick = shading.output == Output::display || shading.output == Output::water;
    const auto quality = quick ? TextureCache::Quality::quick : TextureCache::Quality::fine;
    const auto add = [&](int unit, const Channel& channel, const char* place) {
        if (!channel) return;
        state.textures.push_back(context.textures.binding(unit, channel, quality));
        state.uniforms.emplace_back(place, placement(channel));
    };
    add(unitDiffuse, material.diffuseMap, "diffusePlace");
    add(unitNormal, material.normalMap, "normalPlace");
    add(unitMultiply, material.multiplyMap, "multiplyPlace");
    if (!hasAllMaps(item, shading)) return;
    const auto standIn = [&](int unit, const std::shared_ptr<Texture>& texture) {
        state.textures.push_back(context.textures.binding(unit, texture, Wrap::repeat, Wrap::repeat));
    };
    if (!material.diffuseMap) standIn(unitDiffuse, context.standIns.whiteMap);
    if (!material.normalMap) standIn(unitNormal, context.standIns.flatMap);
}

void addInputs(RenderContext& context, DrawState& state, const SurfacePass& pass) {
    const SurfaceInputs& inputs = pass.inputs;
    const auto add = [&](int unit, TextureRef texture, unsigned sampler = 0) {
        if (texture) state.textures.push_back({unit, texture, sampler});
    };
    add(unitEnvironment, inputs.environment, inputs.environmentSampler);
    add(unitSunShadow, inputs.sunShadow ? inputs.sunShadow : context.standIns.farthestShadow.depth());
    add(unitContactShadows,
        inputs.contactShadows ? inputs.contactShadows : context.standIns.openSky.colour());
    add(unitStaticDepth, inputs.groundDepth);
    add(unitStaticLit, inputs.groundLight);
    add(unitBloom, inputs.bloom);
    add(unitWaterMirror, inputs.waterMirror ? inputs.waterMirror : context.standIns.nothing.colour());
}

void addMaterial(const RenderContext& context, DrawState& state, const DrawItem& item,
                 const InverseToneMapping& emissive) {
    const Material& material = *item.material;
    const auto uvSet = [](const Channel& channel) { return static_cast<float>(channel.uvSet); };
    const auto strength = [](const Channel& channel) {
        return channel ? static_cast<float>(channel.intensity) : 0;
    };
    const auto alpha = static_cast<float>(material.diffuse.a * material.opacity) * item.opacity;
    const RenderOptions& options = context.options;
    state.uniforms.insert(
        state.uniforms.end(),
        {{"model", glm::mat4(item.model)},
         {"normalMatrix", item.normalMatrix},
         {"uvSets",
          glm::vec3(uvSet(material.diffuseMap), uvSet(material.normalMap), uvSet(material.multiplyMap))},
         {"diffuse", glm::vec4(linear(material.diffuse), item.blended ? alpha : 1.0F)},
         {"multiply", glm::vec4(linear(material.multiply), options.brightestLight)},
         {"emission", glm::vec4(emissive.lightOf(linear(material.emission)), options.contactShadowOfSun)},
         {"surface", glm::vec4(material.metalness, material.roughness, strength(material.normalMap),
                               options.waterDensity)},
         {"mapStrength", glm::vec4(strength(material.diffuseMap), strength(material.multiplyMap),
                                   options.glintSpread, material.sparkle)}});
}

/// The mean colour of the map, all that matt surfaces need to know of it at their vertices.
void addMeanColour(const RenderContext& context, DrawState& state, const Material& material) {
    glm::vec3 mean(1);
    if (material.diffuseMap) mean = context.textures.mean(*material.diffuseMap.texture);
    state.uniforms.emplace_back("diffuseMean", glm::vec4(mean, material.doubleSided ? 1 : 0));
    state.uniforms.emplace_back("diffuseGain", glm::vec4(1.0F / glm::max(mean, glm::vec3(1.0F / 255)), 0));
}

}  // namespace

bool isUnlit(const DrawItem& item) {
    return item.material->lighting == Material::Lighting::constant;
}

bool isWater(const DrawItem& item) {
    return item.material->smooth && item.blended &&
           item.material->lighting == Material::Lighting::physicallyBased;
}

bool isFilm(const DrawItem& item) {
    return isWater(item) && item.material->diffuse.a <= 0;
}

ProgramKey surfaceProgram(const Shading& shading, const DrawItem& item) {
    if (isMatt(item, shading)) return mattProgram(shading, item);
    const Material& material = *item.material;
    const bool lit = material.lighting != Material::Lighting::constant;
    const bool full = material.lighting == Material::Lighting::physicallyBased;
    const bool all = hasAllMaps(item, shading), small = isSmall(item, shading);
    const bool solid = !item.blended || small, water = isWater(item);
    const bool isStatic = shading.output == Output::staticLayer,
               isDisplay = shading.output == Output::display;
    const bool isWaterAlone = shading.output == Output::water;
    const std::pair<Feature, bool> choices[] = {
        {Feature::diffuseMap, all || material.diffuseMap},
        {Feature::normalMap, all || (lit && material.normalMap)},
        {Feature::multiplyMap, material.multiplyMap && !isStatic},
        {Feature::paintable, all || (material.multiplyMap && isStatic)},
        {Feature::water, water},
        {Feature::additive, item.blended && material.blend == Material::Blend::add},
        {Feature::sunShadow, all || (lit && shading.sunShadow && (solid || water))},
        {Feature::contactShadows, all || (lit && shading.contactShadows && !item.blended)},
        {Feature::bloom, shading.bloom && isWaterAlone},
        {Feature::staticOutput, isStatic},
        {Feature::displayOutput, isDisplay},
        {Feature::waterOutput, isWaterAlone},
        {Feature::noToneMapping, shading.noToneMapping && isDisplay},
        {Feature::waterDepth, shading.waterDepth && water},
        {Feature::roughness, full && solid},
        {Feature::uniformsPerPixel, small},
        {Feature::sparkle, all || (full && material.sparkle > 0 && !isDisplay && !small)},
    };
    ProgramKey key{ProgramKind::surface, {}, lightModel(material), lit ? reachingLamps(item, shading) : 0};
    for (const auto& [feature, on] : choices) key.features.set(feature, on);
    return key;
}

void drawSurface(RenderContext& context, const SurfacePass& pass, const DrawItem& item,
                 const PixelArea& area) {
    if (item.area.intersection(area).empty()) return;
    const Material& material = *item.material;
    const bool overwrites = pass.shading.output == Output::water;
    DrawState state;
    state.target = pass.target;
    state.program = &context.programs.get(surfaceProgram(pass.shading, item));
    state.frameUniforms = pass.frameUniforms;
    state.depthTest = DepthTest::lessOrEqual;
    state.writesDepth = material.writesDepth && !overwrites;
    if ((item.blended || isSmall(item, pass.shading)) && !overwrites)
        state.blending =
            material.blend == Material::Blend::add && !isUnlit(item) ? Blending::add : Blending::over;
    state.culling = materialCulling(item);
    addInputs(context, state, pass);
    addMaps(context, state, item, pass.shading);
    addMaterial(context, state, item, pass.emissive);
    if (isMatt(item, pass.shading)) addMeanColour(context, state, material);
    drawMesh(context, state, item, pass.view, area, pass.shading.hidden);
}

}  // namespace gull
