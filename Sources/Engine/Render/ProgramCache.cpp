#include "Engine/Render/ProgramCache.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <regex>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace gull {

namespace {

using Defines = std::vector<std::string>;

/// The features' names in the shaders.
constexpr std::pair<Feature, const char*> featureNames[] = {
    {Feature::diffuseMap, "DIFFUSE_MAP"},
    {Feature::normalMap, "NORMAL_MAP"},
    {Feature::multiplyMap, "MULTIPLY_MAP"},
    {Feature::paintable, "PAINTABLE"},
    {Feature::water, "WATER"},
    {Feature::additive, "ADDITIVE"},
    {Feature::sunShadow, "SUN_SHADOW"},
    {Feature::contactShadows, "CONTACT_SHADOWS"},
    {Feature::bloom, "BLOOM"},
    {Feature::staticOutput, "OUT_STATIC"},
    {Feature::displayOutput, "OUT_DISPLAY"},
    {Feature::waterOutput, "OUT_WATER"},
    {Feature::noToneMapping, "NO_TONE_MAPPING"},
    {Feature::waterDepth, "WATER_DEPTH"},
    {Feature::roughness, "ROUGHNESS"},
    {Feature::uniformsPerPixel, "UNIFORMS_PER_PIXEL"},
    {Feature::sparkle, "SPARKLE"},
    {Feature::movingShadow, "MOVING_SHADOW"},
    {Feature::rectangles, "RECTANGLES"},
    {Feature::fewTaps, "FEW_TAPS"},
    {Feature::paint, "PAINT"},
    {Feature::faded, "FADED"},
    {Feature::plainColour, "PLAIN_COLOUR"},
    {Feature::edges, "EDGES"},
};

/// A kind of program: its shaders and the features that the vertex shader depends on.
struct KindDescription {
    const char* name;
    std::string_view vertex;
    std::string_view fragment;
    Features vertexFeatures = {};
    Defines defines = {};  ///< defined always, in both stages
};

KindDescription describe(ProgramKind kind) {
    using namespace shaders;
    switch (kind) {
        case ProgramKind::surface:
            return {"surface", surfaceVertex, surfaceFragment, {Feature::uniformsPerPixel}};
        case ProgramKind::mattSurface:
            return {"matt surface",
                    surfaceVertex,
                    mattFragment,
                    {Feature::diffuseMap, Feature::sunShadow, Feature::noToneMapping},
                    {"MATT", "UNIFORMS_PER_PIXEL"}};
        case ProgramKind::sky:
            return {"sky", fullScreen, skyFragment};
        case ProgramKind::particles:
            return {"particles", particleVertex, particleFragment};
        case ProgramKind::depth:
            return {"depth", depthVertex, depthFragment};
        case ProgramKind::sunDepth:
            return {"sun depth", depthVertex, depthFragment, {}, {"FROM_SUN"}};
        case ProgramKind::areaDepth:
            return {"depth of areas", areaVertex, depthFragment};
        case ProgramKind::farthestDepth:
            return {"farthest depth", fullScreen, farthestDepthFragment};
        case ProgramKind::contactShadows:
            return {"contact shadows", fullScreen, contactShadowsFragment};
        case ProgramKind::contactShadowBlur:
            return {"contact shadow blur", fullScreen, contactShadowBlurFragment};
        case ProgramKind::brightPass:
            return {"bright pass", fullScreen, brightFragment};
        case ProgramKind::bloomBlur:
            return {"bloom blur", fullScreen, blurFragment};
        case ProgramKind::toneMapping:
            return {"tone mapping", fullScreen, toneMappingFragment};
        case ProgramKind::resolve:
            return {"resolve", areaVertex, resolveFragment};
        case ProgramKind::paint:
            return {"paint", paintVertex, paintFragment};
        case ProgramKind::movingCover:
            return {"moving cover", relightVertex, movingCoverFragment, {Feature::rectangles}};
        case ProgramKind::relight:
            return {"relight", relightVertex, relightFragment, {Feature::rectangles}};
        case ProgramKind::lightChange:
            return {"change of light", relightVertex, lightChangeFragment, {Feature::rectangles}};
        case ProgramKind::waterOverlay:
            return {"water overlay", depthVertex, overlayFragment, {}, {"UNIFORMS_PER_PIXEL"}};
        case ProgramKind::edgeSmoothing:
            return {"edge smoothing", edgeSmoothingVertex, edgeSmoothingFragment};
        case ProgramKind::bitmap:
            break;
    }
    return {"bitmap", bitmapVertex, bitmapFragment};
}

bool isLit(ProgramKind kind) {
    return kind == ProgramKind::surface || kind == ProgramKind::mattSurface;
}

std::string head(const ShaderDialect& dialect, const Defines& defines) {
    std::string lines = dialect.isVersion410 ? "#version 410 core\n"
                                             : "#version 330 core\n"
                                               "#extension GL_ARB_separate_shader_objects : require\n";
    if (!dialect.hasManyVaryings) lines += "#define UNIFORMS_PER_PIXEL\n";
    for (const std::string& define : defines) lines += "#define " + define + "\n";
    return lines;
}

}  // namespace

ProgramSource programSource(const ProgramKey& key, const ShaderDialect& dialect) {
    const KindDescription kind = describe(key.kind);
    Defines fragment = kind.defines, vertex = kind.defines;
    if (isLit(key.kind)) fragment.push_back("LIGHTING " + std::to_string(static_cast<int>(key.lighting)));
    if (key.kind == ProgramKind::mattSurface) vertex = fragment;
    for (const auto& [feature, name] : featureNames) {
        if (!key.features.has(feature)) continue;
        fragment.emplace_back(name);
        if (kind.vertexFeatures.has(feature)) vertex.emplace_back(name);
    }
    if (key.lamps > 0) {
        fragment.push_back("LAMPS " + std::to_string(key.lamps));
        // A program that reads uniforms is handed no lamps.
        if (!key.features.has(Feature::uniformsPerPixel)) vertex.push_back(fragment.back());
    }
    return {kind.name, head(dialect, vertex) + "#define VERTEX\n" + std::string(kind.vertex),
            head(dialect, fragment) + std::string(kind.fragment)};
}

std::shared_ptr<const ShaderStage> compileStage(StateKeeper& keeper, ShaderStage::Kind kind,
                                                const std::string& name, const std::string& text) {
    try {
        return std::make_shared<ShaderStage>(keeper, kind, name, text, samplerUnits);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(withFileNames(error.what()));
    }
}

std::string withFileNames(const std::string& messages) {
    // Drivers' formats: "0:30012(5): error" (Mesa), "0(30012) : error" (NVIDIA), "ERROR: 0:30012: " (others).
    static const std::regex place(R"(\b\d+([:(])(\d{1,4})(\d{4})\b)");
    std::string named;
    auto rest = messages.cbegin();
    for (std::sregex_iterator match(messages.begin(), messages.end(), place), end; match != end; ++match) {
        const std::size_t file = std::stoul((*match)[2]);
        if (file == 0 || file > shaders::fileNames.size()) continue;
        named.append(rest, (*match)[0].first).append(shaders::fileNames[file - 1]);
        named.append((*match)[1]).append(std::to_string(std::stoul((*match)[3])));
        rest = (*match)[0].second;
    }
    return named.append(rest, messages.cend());
}

const Program& ProgramCache::get(const ProgramKey& key) {
    if (const auto known = programs_.find(key); known != programs_.end()) return known->second;
    const ProgramSource source = programSource(key, dialect_);
    auto vertex = stage(ShaderStage::Kind::vertex, source.name, source.vertex);
    auto fragment = stage(ShaderStage::Kind::fragment, source.name, source.fragment);
    return programs_.emplace(key, Program(keeper_, std::move(vertex), std::move(fragment))).first->second;
}

std::vector<ProgramKey> ProgramCache::keys() const {
    std::vector<ProgramKey> keys;
    for (const auto& [key, program] : programs_) keys.push_back(key);
    return keys;
}

std::shared_ptr<const ShaderStage> ProgramCache::stage(ShaderStage::Kind kind, const std::string& name,
                                                       const std::string& text) {
    std::shared_ptr<const ShaderStage>& stage = stages_[text];
    if (!stage) stage = compileStage(keeper_, kind, name, text);
    return stage;
}

}  // namespace gull
