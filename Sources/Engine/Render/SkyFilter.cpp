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

/// A polynomial for atan on 0..1, error below 1e-5. Branchless, so that several directions are computed at
/// once; a million are looked up.
float fastAtan2(float y, float x) {
    float ax = std::abs(x), ay = std::abs(y);
    float big = ax < ay ? ay : ax, small = ax < ay ? ax : ay;
    float t = small / (big < 1e-30F ? 1e-30F : big);
    float s = t * t;
    float r =
        t * (0.99997726F + s * (-0.33262347F +
                                s * (0.19354346F + s * (-0.11643287F + s * (0.05265332F - s * 0.0117212F)))));
    const float steep = pi / 2 - r;
    r = ay > ax ? steep : r;
    const float behind = pi - r;
    r = x < 0 ? behind : r;
    return std::copysign(r, y);
}

/// Unit directions and where they point on a panorama: u and v from 0 to 1, v = 0 is up.
struct Directions {
    static constexpr std::size_t most = 128;
    std::array<float, most> x, y, z, flat, u, v;

    void findPlaces(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) flat[i] = std::sqrt(x[i] * x[i] + z[i] * z[i]);
        for (std::size_t i = 0; i < count; ++i) {
            u[i] = fastAtan2(x[i], -z[i]) / (2 * pi) + 0.5F;
            v[i] = 0.5F - fastAtan2(y[i], flat[i]) / pi;
        }
    }
};

/// An equirectangular picture and its mipmaps.
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

    /// Brightens everything below the horizon: from no gain at the horizon to all of it 30 degrees below.
    void lightGround(const glm::vec3& times) {
        for (Level& level : levels)
            for (int y = level.height / 2; y < level.height; ++y) {
                float below = (static_cast<float>(y) + 0.5F) / static_cast<float>(level.height) - 0.5F;
                glm::vec3 gain = 1.0F + (times - 1.0F) * std::min(below * 6, 1.0F);
                for (int x = 0; x < level.width; ++x)
                    level.pixels[static_cast<std::size_t>(y * level.width + x)] *= gain;
            }
    }

    /// The mean over the whole sphere.
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

    static glm::vec3 bilinear(const Level& level, float u, float v) {
        float x = u * static_cast<float>(level.width) - 0.5F;
        float y = std::clamp(v * static_cast<float>(level.height) - 0.5F, 0.0F,
                             static_cast<float>(level.height - 1));
        // Rounded down by hand, because neither std::floor nor % is one instruction on every processor.
        int x0 = static_cast<int>(x), y0 = static_cast<int>(y);
        if (static_cast<float>(x0) > x) --x0;
        float s = x - static_cast<float>(x0), t = y - static_cast<float>(y0);
        if (x0 < 0) x0 += level.width;
        int x1 = x0 + 1 < level.width ? x0 + 1 : 0, y1 = std::min(y0 + 1, level.height - 1);
        return (level.at(x0, y0) * (1 - s) + level.at(x1, y0) * s) * (1 - t) +
               (level.at(x0, y1) * (1 - s) + level.at(x1, y1) * s) * t;
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

/// The directions of the lobe into which a rough mirror sends light, in a frame whose z axis is the mirror
/// direction.
struct Lobe {
    std::size_t count = 0;
    std::array<float, Directions::most> x, y, z;
    /// The level of the panorama whose pixels cover about this direction's share of the sky.
    std::array<const Panorama::Level*, Directions::most> level;
    float weights = 0;  ///< sum; each direction's weight is its z
};

/// Importance samples of the Trowbridge-Reitz lobe seen straight on, with the sky level whose pixels cover
/// each sample's solid angle: level = log2(sample's angle / pixel's angle) / 2.
Lobe lobe(float roughness, int looks, const Panorama& sky) {
    Lobe result;
    const auto panoramaWidth = static_cast<float>(sky.levels.front().width);
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
        float pixelAngle = 2 * pi * pi / (panoramaWidth * panoramaWidth);
        float level = 0.5F * std::log2(sampleAngle / pixelAngle) + 0.5F;
        const auto wanted = static_cast<std::size_t>(std::lround(std::max(level, 0.0F)));
        result.x[result.count] = light.x;
        result.y[result.count] = light.y;
        result.z[result.count] = light.z;
        result.level[result.count] = &sky.levels[std::min(wanted, sky.levels.size() - 1)];
        result.weights += light.z;
        ++result.count;
    }
    return result;
}

glm::vec3 lookThrough(const Lobe& lobe, const glm::vec3& mirror) {
    const glm::vec3 side = glm::normalize(
        glm::cross(std::abs(mirror.y) < 0.9F ? glm::vec3(0, 1, 0) : glm::vec3(1, 0, 0), mirror));
    const glm::vec3 up = glm::cross(mirror, side);
    Directions to;
    for (std::size_t i = 0; i < lobe.count; ++i) {
        to.x[i] = side.x * lobe.x[i] + up.x * lobe.y[i] + mirror.x * lobe.z[i];
        to.y[i] = side.y * lobe.x[i] + up.y * lobe.y[i] + mirror.y * lobe.z[i];
        to.z[i] = side.z * lobe.x[i] + up.z * lobe.y[i] + mirror.z * lobe.z[i];
    }
    to.findPlaces(lobe.count);
    glm::vec3 sum(0);
    for (std::size_t i = 0; i < lobe.count; ++i)
        sum += Panorama::bilinear(*lobe.level[i], to.u[i], to.v[i]) * lobe.z[i];
    return sum / lobe.weights;
}

/// Projects the sky onto nine spherical harmonics, each times its basis constant squared and the share of its
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
    result.dome = {small->width,
                   {small->pixels.begin(), small->pixels.begin() + small->width * (small->height / 2)}};
    const glm::vec3 mean = panorama.mean();

    constexpr int looksOf[FilteredSky::levels] = {1, 8, 24, 48, 64, 64};
    for (int level = 0; level < FilteredSky::levels; ++level) {
        const int size = FilteredSky::baseSize >> level;
        const float roughness = static_cast<float>(level) / (FilteredSky::levels - 1);
        Lobe looks;
        if (level > 0) looks = lobe(roughness, looksOf[level], panorama);
        auto& faces = result.faces[static_cast<std::size_t>(level)];
        faces.reserve(static_cast<std::size_t>(6 * size * size));
        for (int row = 0; row < 6 * size; ++row) {
            Directions to;
            const float t = (static_cast<float>(row % size) + 0.5F) / static_cast<float>(size) * 2 - 1;
            for (int x = 0; x < size; ++x) {
                const float s = (static_cast<float>(x) + 0.5F) / static_cast<float>(size) * 2 - 1;
                const glm::vec3 direction = faceDirection(row / size, s, t);
                const auto i = static_cast<std::size_t>(x);
                to.x[i] = direction.x;
                to.y[i] = direction.y;
                to.z[i] = direction.z;
            }
            const auto count = static_cast<std::size_t>(size);
            if (level == 0) to.findPlaces(count);
            for (std::size_t i = 0; i < count; ++i)
                faces.emplace_back(
                    level == 0 ? Panorama::bilinear(panorama.levels.front(), to.u[i], to.v[i])
                               : glm::mix(lookThrough(looks, {to.x[i], to.y[i], to.z[i]}), mean, mirrorFill),
                    1.0F);
        }
    }
    return result;
}

}  // namespace gull
