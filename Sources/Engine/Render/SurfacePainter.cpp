#include "Engine/Render/SurfacePainter.h"

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace gull {

namespace {

glm::vec4 place(const Channel& channel) {
    return {glm::vec2(channel.scale), glm::vec2(channel.offset)};
}

/// Only those with light gain from it: the others are few and large.
bool isSmall(const DrawItem& item, const Shading& shading) {
    return shading.small && !shading.matt && item.material->lighting == Material::Lighting::physicallyBased &&
           item.material->blend != Material::Blend::add;
}

/// The whole list when any lamp reaches the item, for the sake of few programs. Small things are all lit by
/// it: what that costs their few pixels is less than a program more.
int reachingLamps(const DrawItem& item, const Shading& shading) {
    const auto reaches = [&](const Lamp& lamp) {
        return lamp.end <= 0 || glm::distance(lamp.position, item.middle) < lamp.end + item.radius;
    };
    const bool isLit =
        isSmall(item, shading) || std::any_of(shading.lamps.begin(), shading.lamps.end(), reaches);
    return isLit ? FrameBlock::lampsInProgram(shading.lamps.size()) : 0;
}

/// What rests is shaded by one program with every map, for the sake of few programs: what a material lacks is
/// bound as a picture that changes nothing. It is sampled as the others are, for a rasteriser in software
/// compiles a program anew for every way in which its textures are sampled.
bool hasAllMaps(const DrawItem& item, const Shading& shading) {
    return shading.output == Shading::Output::kept && !item.blended &&
           item.material->lighting == Material::Lighting::physicallyBased;
}

/// Of two by two pixels, so that it has smaller levels as other pictures do.
Image plainPicture(std::array<std::uint8_t, 4> colour) {
    Image image(2, 2);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) image.pixels[i] = colour[i % 4];
    return image;
}

bool isMatt(const DrawItem& item, const Shading& shading) {
    return shading.matt && !item.blended && item.material->metalness < 0.5;
}

void setState(const DrawItem& item, const Shading& shading) {
    const Material& material = *item.material;
    const bool overwrite = shading.output == Shading::Output::film;
    if ((item.blended || isSmall(item, shading)) && !overwrite) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_ONE, material.blend == Material::Blend::add ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA);
    } else {
        glDisable(GL_BLEND);
    }
    glDepthMask(material.writesDepth && !overwrite ? GL_TRUE : GL_FALSE);
    setCulling(item);
}

}  // namespace

bool isFilm(const DrawItem& item) {
    return item.material->smooth && item.blended &&
           item.material->lighting == Material::Lighting::physicallyBased;
}

void setCulling(const DrawItem& item) {
    if (item.material->doubleSided) {
        glDisable(GL_CULL_FACE);
    } else {
        glEnable(GL_CULL_FACE);
        glFrontFace(glm::determinant(glm::dmat3(item.model)) < 0 ? GL_CW : GL_CCW);
    }
}

void drawChunks(const DrawItem& item, const Viewpoint& view, const PixelArea& area, const Box& hidden) {
    glBindVertexArray(item.mesh->array.name());
    std::uint32_t first = 0, count = 0;
    auto flush = [&] {
        if (count > 0)
            glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(count), GL_UNSIGNED_INT,
                           reinterpret_cast<const void*>(static_cast<std::uintptr_t>(first) * 4));
        count = 0;
    };
    bool cull = item.element.chunkCount > 1;
    for (std::size_t i = 0; i < item.element.chunkCount; ++i) {
        const Mesh::Chunk& chunk = item.mesh->chunks[item.element.firstChunk + i];
        bool touches = !cull || !view.area(chunk.bounds, item.model).intersection(area).empty();
        if (touches && !hidden.empty() && hidden.contains(transformed(chunk.bounds, item.model)))
            touches = false;
        if (!touches || (count > 0 && chunk.first != first + count)) flush();
        if (!touches) continue;
        if (count == 0) first = chunk.first;
        count += chunk.count;
    }
    flush();
}

SurfacePainter::SurfacePainter(VertexStages& stages, TextureCache& textures, const RenderOptions& options)
    : stages_(stages),
      textures_(textures),
      options_(options),
      white_(std::make_shared<Texture>(Texture::Encoding::srgb, plainPicture({255, 255, 255, 255}))),
      level_(std::make_shared<Texture>(Texture::Encoding::linear, plainPicture({128, 128, 255, 255}))) {}

void SurfacePainter::draw(const DrawItem& item, const Shading& shading, const Viewpoint& view,
                          const PixelArea& area) {
    if (item.area.intersection(area).empty()) return;
    const Program& shader = program(item, shading);
    shader.use();
    bool quick = shading.output == Shading::Output::display || shading.output == Shading::Output::film;
    setMaterial(shader, item, quick ? TextureCache::Filter::quick : TextureCache::Filter::fine);
    if (hasAllMaps(item, shading)) bindMissing(*item.material);
    if (isMatt(item, shading)) setMean(shader, *item.material);
    setState(item, shading);
    drawChunks(item, view, area, shading.hidden);
}

/// Of the matt surfaces of a quick picture: few, for quick pictures come first.
const Program& SurfacePainter::mattProgram(const DrawItem& item, const Shading& shading) {
    const Material& material = *item.material;
    const bool lit = material.lighting != Material::Lighting::constant;
    const std::pair<bool, const char*> switches[] = {
        {static_cast<bool>(material.diffuseMap), "DIFFUSE_MAP"},
        {lit && shading.sunShadow, "SUN_SHADOW"},
        {shading.plainFilm, "PLAIN_FILM"},
        {lit, "LIGHTING 1"},
        {!lit, "LIGHTING 0"},
    };
    std::uint32_t key = 0, bit = 1;
    for (const auto& [on, name] : switches) {
        if (on) key |= bit;
        bit <<= 1;
    }
    if (auto found = mattPrograms_.find(key); found != mattPrograms_.end()) return found->second;
    std::vector<std::string> defines{"MATT", "SMALL"};
    for (const auto& [on, name] : switches)
        if (on) defines.emplace_back(name);
    return mattPrograms_
        .emplace(key, Program(stages_, "matt surface", {shaders::surfaceVertex, defines},
                              {shaders::mattFragment, defines}))
        .first->second;
}

const Program& SurfacePainter::program(const DrawItem& item, const Shading& shading) {
    const Material& material = *item.material;
    if (isMatt(item, shading)) return mattProgram(item, shading);
    auto lighting = static_cast<unsigned>(material.lighting == Material::Lighting::constant  ? 0
                                          : material.lighting == Material::Lighting::lambert ? 1
                                                                                             : 2);
    const bool shaded = lighting != 0, all = hasAllMaps(item, shading), small = isSmall(item, shading);
    const bool solid = !item.blended || small;
    const std::pair<bool, const char*> switches[] = {
        {all || material.diffuseMap, "DIFFUSE_MAP"},
        {all || (shaded && material.normalMap), "NORMAL_MAP"},
        {material.multiplyMap && shading.output != Shading::Output::kept, "MULTIPLY_MAP"},
        {all || (material.multiplyMap && shading.output == Shading::Output::kept), "PAINTED"},
        {isFilm(item), "SMOOTH"},
        {item.blended && material.blend == Material::Blend::add, "ADDED"},
        {all || (shaded && shading.sunShadow && (solid || isFilm(item))), "SUN_SHADOW"},
        {all || (shaded && shading.occlusion && !item.blended), "OCCLUSION"},
        {shading.bloom && shading.output == Shading::Output::film, "BLOOM"},
        {shading.output == Shading::Output::kept, "OUT_KEPT"},
        {shading.output == Shading::Output::display, "OUT_DISPLAY"},
        {shading.output == Shading::Output::film, "OUT_FILM"},
        {shading.plainFilm && shading.output == Shading::Output::display, "PLAIN_FILM"},
        {shading.waterDepth && isFilm(item), "WATER_DEPTH"},
        {lighting == 2 && solid, "ROUGHNESS"},
        {small, "SMALL"},
        {all ||
             (lighting == 2 && material.sparkle > 0 && shading.output != Shading::Output::display && !small),
         "SPARKLE"},
    };
    int lamps = shaded ? reachingLamps(item, shading) : 0;
    std::uint32_t key = lighting + static_cast<std::uint32_t>(lamps) * 4;
    std::uint32_t bit = 32;
    for (const auto& [on, name] : switches) {
        if (on) key |= bit;
        bit <<= 1;
    }
    if (auto found = programs_.find(key); found != programs_.end()) return found->second;
    std::vector<std::string> defines{"LIGHTING " + std::to_string(lighting)};
    for (const auto& [on, name] : switches)
        if (on) defines.emplace_back(name);
    if (lamps > 0) defines.push_back("LAMPS " + std::to_string(lamps));
    std::vector<std::string> passed;  // what the vertex shader hands over
    if (small)
        passed.emplace_back("SMALL");
    else if (lamps > 0)
        passed.push_back(defines.back());
    return programs_
        .emplace(key, Program(stages_, "surface", {shaders::surfaceVertex, passed},
                              {shaders::surfaceFragment, defines}))
        .first->second;
}

void SurfacePainter::bindMissing(const Material& material) {
    if (!material.diffuseMap)
        textures_.bind(unitDiffuse, white_, Wrap::repeat, Wrap::repeat, TextureCache::Filter::fine);
    if (!material.normalMap)
        textures_.bind(unitNormal, level_, Wrap::repeat, Wrap::repeat, TextureCache::Filter::fine);
}

void SurfacePainter::setMean(const Program& program, const Material& material) {
    glm::vec3 mean(1);
    if (material.diffuseMap) mean = textures_.mean(*material.diffuseMap.texture);
    program.set("diffuseMean", glm::vec4(mean, material.doubleSided ? 1 : 0));
    program.set("diffuseGain", glm::vec4(1.0F / glm::max(mean, glm::vec3(1.0F / 255)), 0));
}

void SurfacePainter::setMaterial(const Program& program, const DrawItem& item, TextureCache::Filter filter) {
    const Material& material = *item.material;
    program.set("model", glm::mat4(item.model));
    program.set("normalMatrix", item.normalMatrix);
    if (material.diffuseMap) {
        textures_.bind(unitDiffuse, material.diffuseMap, filter);
        program.set("diffusePlace", place(material.diffuseMap));
    }
    if (material.normalMap) {
        textures_.bind(unitNormal, material.normalMap, filter);
        program.set("normalPlace", place(material.normalMap));
    }
    if (material.multiplyMap) {
        textures_.bind(unitMultiply, material.multiplyMap, filter);
        program.set("multiplyPlace", place(material.multiplyMap));
    }
    auto set = [](const Channel& channel) { return static_cast<float>(channel.uvSet); };
    program.set("uvSets",
                glm::vec3(set(material.diffuseMap), set(material.normalMap), set(material.multiplyMap)));

    auto alpha = static_cast<float>(material.diffuse.a * material.opacity) * item.opacity;
    program.set("diffuse", glm::vec4(linear(material.diffuse), item.blended ? alpha : 1.0F));
    program.set("multiply", glm::vec4(linear(material.multiply), options_.brightestLight));
    program.set("emission", glm::vec4(linear(material.emission), options_.occlusionOfSun));
    auto strength = [](const Channel& channel) {
        return channel ? static_cast<float>(channel.intensity) : 0;
    };
    program.set("surface", glm::vec4(material.metalness, material.roughness, strength(material.normalMap),
                                     options_.waterDensity));
    program.set("mapStrength", glm::vec4(strength(material.diffuseMap), strength(material.multiplyMap),
                                         options_.glintSpread, material.sparkle));
}

}  // namespace gull
