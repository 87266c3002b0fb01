#include "Engine/Render/ProgramList.h"

#include "Engine/Render/SurfacePass.h"

#include <set>

namespace gull {

namespace {

using Lighting = Material::Lighting;
using Blend = Material::Blend;

/// The materials that stages are made of, insofar as their programs differ.
std::vector<Material> materials(const std::shared_ptr<Texture>& map) {
    std::vector<Material> all;
    const auto add = [&](Lighting lighting, Blend blend, bool diffuse, bool normal) -> Material& {
        Material& material = all.emplace_back();
        material.lighting = lighting;
        material.blend = blend;
        material.writesDepth = blend == Blend::opaque;
        if (diffuse) material.diffuseMap.texture = map;
        if (normal) material.normalMap.texture = map;
        return material;
    };
    for (const bool diffuse : {false, true}) {
        for (const bool normal : {false, true}) {
            add(Lighting::physicallyBased, Blend::opaque, diffuse, normal);
            add(Lighting::physicallyBased, Blend::opaque, diffuse, normal).metalness = 1;
        }
        add(Lighting::physicallyBased, Blend::alpha, diffuse, false);
        add(Lighting::lambert, Blend::opaque, diffuse, false);
        add(Lighting::lambert, Blend::alpha, diffuse, false);
        for (const Blend blend : {Blend::opaque, Blend::alpha, Blend::add})
            add(Lighting::constant, blend, diffuse, false);
    }
    Material& sand = add(Lighting::physicallyBased, Blend::opaque, true, true);
    sand.multiplyMap.texture = map;
    sand.sparkle = 1;
    Material& foam = add(Lighting::lambert, Blend::alpha, true, false);
    foam.smooth = true;
    for (const bool diffuse : {false, true}) {
        Material& water = add(Lighting::physicallyBased, Blend::alpha, diffuse, true);
        water.smooth = true;
        water.writesDepth = true;
    }
    return all;
}

bool isWaterMaterial(const Material& material) {
    return material.smooth && material.lighting == Lighting::physicallyBased;
}

/// Whether a pass of this kind draws surfaces of this material.
bool draws(PassKind pass, const Material& material) {
    const bool blended = material.blend != Blend::opaque, water = isWaterMaterial(material);
    switch (pass) {
        case PassKind::staticLayer:
            return !blended;
        case PassKind::snapshot:
        case PassKind::flight:
            return true;
        case PassKind::icon:
            return !material.smooth && !material.multiplyMap;
        case PassKind::fullFrame:
            return !material.multiplyMap;
        case PassKind::fastFrame:
            return !material.multiplyMap && !material.smooth;
        case PassKind::unlit:
            return blended && material.lighting == Lighting::constant;
        case PassKind::waterLayer:
            return !water && !material.multiplyMap;
        case PassKind::water:
        case PassKind::waterGlow:
            return water;
        case PassKind::picture:
            break;
    }
    return false;
}

bool hasLamps(PassKind pass) {
    return pass == PassKind::snapshot || pass == PassKind::icon || pass == PassKind::fullFrame ||
           pass == PassKind::fastFrame;
}

/// A surface of `material`.
DrawItem itemOf(const Material& material) {
    DrawItem item;
    item.material = &material;
    item.blended = material.blend != Blend::opaque;
    return item;
}

void addSurfaces(std::vector<ProgramUse>& uses, PassKind pass, const Shading& shading,
                 const std::vector<Material>& materials) {
    const std::vector<Lamp> lamps(FrameBlock::mostLamps);  // without an end: they reach everything
    for (const Material& material : materials) {
        if (!draws(pass, material)) continue;
        if (shading.output == Shading::Output::staticLayer && material.blend != Blend::opaque) continue;
        // Unlit blended things are drawn over finished pictures alone.
        const bool unlit = material.lighting == Lighting::constant && material.blend != Blend::opaque;
        if (unlit && shading.output != Shading::Output::display) continue;
        for (const int count : FrameBlock::lampPrograms) {
            if (count > 0 && (!hasLamps(pass) || material.lighting == Lighting::constant)) continue;
            Shading lit = shading;
            lit.lamps = std::span(lamps).first(static_cast<std::size_t>(count));
            uses.push_back({surfaceProgram(lit, itemOf(material)), pass, material, count});
        }
    }
}

/// The programs that change the static layer's light, for each combination of moving shadows, lamps and
/// paint.
void addMovingLight(std::vector<ProgramUse>& uses) {
    for (const bool paint : {true, false})
        for (const bool shadow : {true, false})
            for (const int lamps : FrameBlock::lampPrograms) {
                ProgramKey relight{ProgramKind::relight, {}, LightModel::constant, lamps};
                relight.features.set(Feature::movingShadow, shadow);
                relight.features.set(Feature::paint, paint);
                uses.push_back({relight, PassKind::fullFrame, {}, lamps});
                if (!shadow && lamps == 0) continue;
                ProgramKey change = relight;
                change.kind = ProgramKind::lightChange;
                change.features.set(Feature::rectangles);
                change.features.set(Feature::fewTaps);
                uses.push_back({change, PassKind::fastFrame, {}, lamps});
            }
    uses.push_back({{ProgramKind::movingCover, {Feature::rectangles}}, PassKind::fullFrame});
}

void addSkyAndParticles(std::vector<ProgramUse>& uses) {
    uses.push_back({{ProgramKind::sky, {Feature::staticOutput}}, PassKind::staticLayer});
    uses.push_back({{ProgramKind::sky}, PassKind::snapshot});
    uses.push_back({{ProgramKind::sky, {Feature::displayOutput}}, PassKind::flight});
    for (const bool additive : {false, true}) {
        ProgramKey key{ProgramKind::particles};
        key.features.set(Feature::additive, additive);
        for (const PassKind pass :
             {PassKind::fastFrame, PassKind::waterLayer, PassKind::flight, PassKind::unlit})
            uses.push_back({key, pass});
    }
}

void addPicturePasses(std::vector<ProgramUse>& uses) {
    using enum ProgramKind;
    for (const ProgramKind kind :
         {depth, sunDepth, areaDepth, farthestDepth, contactShadows, contactShadowBlur, brightPass, bloomBlur,
          toneMapping, resolve, paint, waterOverlay, bitmap})
        uses.push_back({{kind}, PassKind::picture});
    uses.push_back({{waterOverlay, {Feature::edges}}, PassKind::picture});
    uses.push_back({{edgeSmoothing}, PassKind::fastFrame});
    uses.push_back({{bitmap, {Feature::faded}}, PassKind::picture});
    uses.push_back({{bitmap, {Feature::plainColour}}, PassKind::picture});
}

}  // namespace

std::vector<ProgramUse> programUses(const std::shared_ptr<Texture>& map) {
    const std::vector<Material> all = materials(map);
    std::vector<ProgramUse> uses;
    using Output = Shading::Output;
    const auto add = [&](PassKind pass, const Shading& shading) { addSurfaces(uses, pass, shading, all); };

    // Play shows these first: finds in their glow, and the light they cast.
    add(PassKind::fastFrame, {.output = Output::display, .small = true});
    addMovingLight(uses);
    addSkyAndParticles(uses);
    add(PassKind::fullFrame, {.output = Output::linear, .waterDepth = true});
    add(PassKind::unlit, {.output = Output::display});
    add(PassKind::waterLayer, {.output = Output::display});
    add(PassKind::water, {.output = Output::water});
    add(PassKind::water, {.output = Output::water, .bloom = true});
    add(PassKind::waterGlow, {.output = Output::linear, .waterDepth = true});
    add(PassKind::flight, {.output = Output::display, .matt = true});
    add(PassKind::staticLayer, {.output = Output::staticLayer, .contactShadows = true});
    // A snapshot draws everything without paint with the static layer's program.
    Shading snapshot{.output = Output::linear, .contactShadows = true, .waterDepth = true};
    add(PassKind::snapshot, snapshot);
    add(PassKind::icon, {.output = Output::linear});
    snapshot.output = Output::staticLayer;
    add(PassKind::snapshot, snapshot);
    add(PassKind::icon, {.output = Output::staticLayer});
    addPicturePasses(uses);
    return uses;
}

std::vector<ProgramKey> programList() {
    std::set<ProgramKey> keys;
    for (const ProgramUse& use : programUses(std::make_shared<Texture>(Image(1, 1)))) keys.insert(use.key);
    return {keys.begin(), keys.end()};
}

}  // namespace gull
