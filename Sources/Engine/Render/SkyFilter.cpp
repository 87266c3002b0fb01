#include "Engine/Render/SkyFilter.h"

#include <algorithm>
#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

std::array<float, 256> makeDecodeTable() {
    std::array<float, 256> table{};
    for (std::size_t i = 0; i < 256; ++i) {
        double c = static_cast<double>(i) / 255;
        table[i] = static_cast<float>(c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
    }
    return table;
}

/// A polynomial for atan on 0..1, error below 1e-5; a million directions are looked up.
float fastAtan2(float y, float x) {
    float ax = std::abs(x), ay = std::abs(y);
    float big = std::max(ax, ay), t = big > 0 ? std::min(ax, ay) / big : 0;
    float s = t * t;
    float r =
        t * (0.99997726F + s * (-0.33262347F +
                                s * (0.19354346F + s * (-0.11643287F + s * (0.05265332F - s * 0.0117212F)))));
    if (ay > ax) r = pi / 2 - r;
    if (x < 0) r = pi - r;
    return y < 0 ? -r : r;
}

/// An equirectangular picture and its halvings.
struct Panorama {
    struct Level {
        int width;
        int height;
        std::vector<glm::vec3> pixels;
        const glm::vec3& at(int x, int y) const {
            return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                          static_cast<std::size_t>(x)];
        }
    };
    std::vector<Level> levels;

    explicit Panorama(const Image& sky) {
        const std::array<float, 256> decode = makeDecodeTable();
        Level base{sky.width, sky.height, {}};
        base.pixels.reserve(sky.pixels.size() / 4);
        for (std::size_t i = 0; i < sky.pixels.size(); i += 4)
            base.pixels.emplace_back(decode[sky.pixels[i]], decode[sky.pixels[i + 1]],
                                     decode[sky.pixels[i + 2]]);
        levels.push_back(std::move(base));
        while (levels.back().width >= 8 && levels.back().height >= 4) {
            const Level& from = levels.back();
            Level half{from.width / 2, from.height / 2, {}};
            half.pixels.reserve(static_cast<std::size_t>(half.width * half.height));
            for (int y = 0; y < half.height; ++y)
                for (int x = 0; x < half.width; ++x)
                    half.pixels.push_back((from.at(2 * x, 2 * y) + from.at(2 * x + 1, 2 * y) +
                                           from.at(2 * x, 2 * y + 1) + from.at(2 * x + 1, 2 * y + 1)) *
                                          0.25F);
            levels.push_back(std::move(half));
        }
    }

    /// Brightens what lies below the horizon: not at the horizon itself, in full from 30 degrees below it.
    void lightGround(const glm::vec3& times) {
        for (Level& level : levels)
            for (int y = level.height / 2; y < level.height; ++y) {
                float below = (static_cast<float>(y) + 0.5F) / static_cast<float>(level.height) - 0.5F;
                glm::vec3 gain = 1.0F + (times - 1.0F) * std::min(below * 6, 1.0F);
                for (int x = 0; x < level.width; ++x)
                    level.pixels[static_cast<std::size_t>(y * level.width + x)] *= gain;
            }
    }

    /// Of the whole sphere.
    glm::vec3 mean() const {
        const Level& level = levels.back();
        glm::vec3 sum(0);
        float weights = 0;
        for (int y = 0; y < level.height; ++y) {
            float weight = std::sin(pi * (static_cast<float>(y) + 0.5F) / static_cast<float>(level.height));
            for (int x = 0; x < level.width; ++x, weights += weight) sum += level.at(x, y) * weight;
        }
        return sum / weights;
    }

    glm::vec3 bilinear(const Level& level, float u, float v) const {
        float x = u * static_cast<float>(level.width) - 0.5F;
        float y = std::clamp(v * static_cast<float>(level.height) - 0.5F, 0.0F,
                             static_cast<float>(level.height - 1));
        float fx = std::floor(x), fy = std::floor(y);
        int x0 = (static_cast<int>(fx) + level.width) % level.width, x1 = (x0 + 1) % level.width;
        int y0 = static_cast<int>(fy), y1 = std::min(y0 + 1, level.height - 1);
        float s = x - fx, t = y - fy;
        return (level.at(x0, y0) * (1 - s) + level.at(x1, y0) * s) * (1 - t) +
               (level.at(x0, y1) * (1 - s) + level.at(x1, y1) * s) * t;
    }

    /// `direction` of length 1; `level` 0 is the finest, any number beyond the coarsest counts as that.
    glm::vec3 look(const glm::vec3& direction, std::size_t level) const {
        float u = fastAtan2(direction.x, -direction.z) / (2 * pi) + 0.5F;
        float flat = std::sqrt(direction.x * direction.x + direction.z * direction.z);
        float v = 0.5F - fastAtan2(direction.y, flat) / pi;
        return bilinear(levels[std::min(level, levels.size() - 1)], u, v);
    }
};

glm::vec3 faceDirection(int face, float s, float t) {
    switch (face) {
        case 0:
            return glm::normalize(glm::vec3(1, -t, -s));
        case 1:
            return glm::normalize(glm::vec3(-1, -t, s));
        case 2:
            return glm::normalize(glm::vec3(s, 1, t));
        case 3:
            return glm::normalize(glm::vec3(s, -1, -t));
        case 4:
            return glm::normalize(glm::vec3(s, -t, 1));
        default:
            return glm::normalize(glm::vec3(-s, -t, -1));
    }
}

/// One direction of the lobe that a rough mirror sends light into, in the mirror direction's own frame.
struct LobeLook {
    glm::vec3 direction;  ///< z along the mirror direction
    float weight;
    std::size_t level;  ///< of the panorama: its pixels cover about this look's share of the sky
};

/// Importance samples of the Trowbridge-Reitz lobe seen straight on, with the sky level whose pixels cover
/// each sample's solid angle: level = log2(sample's angle / pixel's angle) / 2.
std::vector<LobeLook> lobe(float roughness, int looks, int panoramaWidth) {
    std::vector<LobeLook> result;
    float alpha = roughness * roughness, a2 = alpha * alpha;
    for (int i = 0; i < looks; ++i) {
        float e = (static_cast<float>(i) + 0.5F) / static_cast<float>(looks);
        float turn = static_cast<float>(i) * 2.39996323F;
        float cosine2 = (1 - e) / (1 + (a2 - 1) * e);  // of the half vector
        float cosine = std::sqrt(cosine2), sine = std::sqrt(1 - cosine2);
        glm::vec3 half(sine * std::cos(turn), sine * std::sin(turn), cosine);
        glm::vec3 light = half * (2 * cosine) - glm::vec3(0, 0, 1);
        if (light.z <= 0) continue;
        float d = cosine2 * (a2 - 1) + 1;
        float density = a2 / (pi * d * d) / 4;
        float sampleAngle = 1 / (static_cast<float>(looks) * density);
        float pixelAngle =
            2 * pi * pi / (static_cast<float>(panoramaWidth) * static_cast<float>(panoramaWidth));
        float level = 0.5F * std::log2(sampleAngle / pixelAngle) + 0.5F;
        result.push_back({light, light.z, static_cast<std::size_t>(std::lround(std::max(level, 0.0F)))});
    }
    return result;
}

glm::vec3 lookThrough(const Panorama& sky, const std::vector<LobeLook>& looks, const glm::vec3& mirror) {
    glm::vec3 side = glm::normalize(
        glm::cross(std::abs(mirror.y) < 0.9F ? glm::vec3(0, 1, 0) : glm::vec3(1, 0, 0), mirror));
    glm::vec3 up = glm::cross(mirror, side);
    glm::vec3 sum(0);
    float weights = 0;
    for (const LobeLook& look : looks) {
        sum += sky.look(side * look.direction.x + up * look.direction.y + mirror * look.direction.z,
                        look.level) *
               look.weight;
        weights += look.weight;
    }
    return sum / weights;
}

/// Projects the sky on nine spherical harmonics, each times its basis constant squared and the share of its
/// band that the cosine lobe passes (1, 2/3, 1/4, after division by pi).
std::array<glm::vec3, 9> project(const Panorama::Level& sky) {
    std::array<glm::dvec3, 9> sum{};
    for (int y = 0; y < sky.height; ++y) {
        double elevation = (0.5 - (y + 0.5) / sky.height) * std::numbers::pi;
        double angle = std::cos(elevation) * 2 * std::numbers::pi * std::numbers::pi / sky.width / sky.height;
        for (int x = 0; x < sky.width; ++x) {
            double azimuth = ((x + 0.5) / sky.width - 0.5) * 2 * std::numbers::pi;
            double dx = std::cos(elevation) * std::sin(azimuth), dy = std::sin(elevation);
            double dz = -std::cos(elevation) * std::cos(azimuth);
            const double basis[9] = {
                1, dy, dz, dx, dx * dy, dy * dz, 3 * dz * dz - 1, dx * dz, dx * dx - dy * dy};
            for (std::size_t k = 0; k < 9; ++k) sum[k] += glm::dvec3(sky.at(x, y)) * (basis[k] * angle);
        }
    }
    constexpr double y0 = 0.282095, y1 = 0.488603, y2 = 1.092548, y20 = 0.315392, y22 = 0.546274;
    const double factor[9] = {y0 * y0,     y1 * y1 * 2 / 3, y1 * y1 * 2 / 3, y1 * y1 * 2 / 3, y2 * y2 / 4,
                              y2 * y2 / 4, y20 * y20 / 4,   y2 * y2 / 4,     y22 * y22 / 4};
    std::array<glm::vec3, 9> result;
    for (std::size_t k = 0; k < 9; ++k) result[k] = glm::vec3(sum[k] * factor[k]);
    return result;
}

}  // namespace

FilteredSky filterSky(const Image& sky, const glm::vec3& groundGain, float mirrorFill) {
    FilteredSky result;
    if (sky.empty()) return result;
    Panorama panorama(sky);
    panorama.lightGround(groundGain);
    const Panorama::Level* small = &panorama.levels.front();
    for (const Panorama::Level& level : panorama.levels)
        if (level.width >= 64) small = &level;
    result.irradiance = project(*small);
    const glm::vec3 mean = panorama.mean();

    constexpr int looksOf[FilteredSky::levels] = {1, 16, 32, 64, 64, 64};
    for (int level = 0; level < FilteredSky::levels; ++level) {
        int size = FilteredSky::baseSize >> level;
        float roughness = static_cast<float>(level) / (FilteredSky::levels - 1);
        std::vector<LobeLook> looks;
        if (level > 0) looks = lobe(roughness, looksOf[level], sky.width);
        auto& faces = result.faces[static_cast<std::size_t>(level)];
        faces.reserve(static_cast<std::size_t>(6 * size * size));
        for (int face = 0; face < 6; ++face)
            for (int y = 0; y < size; ++y)
                for (int x = 0; x < size; ++x) {
                    float s = (static_cast<float>(x) + 0.5F) / static_cast<float>(size) * 2 - 1;
                    float t = (static_cast<float>(y) + 0.5F) / static_cast<float>(size) * 2 - 1;
                    glm::vec3 direction = faceDirection(face, s, t);
                    faces.emplace_back(
                        level == 0 ? panorama.look(direction, 0)
                                   : glm::mix(lookThrough(panorama, looks, direction), mean, mirrorFill),
                        1.0F);
                }
    }
    return result;
}

}  // namespace gull
