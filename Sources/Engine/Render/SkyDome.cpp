#include "Engine/Render/SkyDome.h"

#include <cmath>
#include <glm/geometric.hpp>
#include <numbers>

namespace gull {

std::vector<SkyPart> divided(const SkyDome& dome, int count) {
    constexpr float pi = std::numbers::pi_v<float>;
    std::vector<SkyPart> parts(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        SkyPart& part = parts[static_cast<std::size_t>(i)];
        const float up = (static_cast<float>(i) + 0.5F) / static_cast<float>(count);
        const float turn = static_cast<float>(i) * 2.39996323F, flat = std::sqrt(1 - up * up);
        part.toward = {flat * std::sin(turn), up, -flat * std::cos(turn)};
    }
    const int rows = dome.width > 0 ? static_cast<int>(dome.pixels.size()) / dome.width : 0;
    if (rows == 0) {
        for (SkyPart& part : parts) part.share = 2 / static_cast<float>(count);
        return parts;
    }
    for (int y = 0; y < rows; ++y) {
        const auto edge = [&](int row) {
            return std::sin(pi / 2 * (1 - static_cast<float>(row) / static_cast<float>(rows)));
        };
        const float share = (edge(y) - edge(y + 1)) * 2 / static_cast<float>(dome.width);
        const float elevation = pi / 2 * (1 - (static_cast<float>(y) + 0.5F) / static_cast<float>(rows));
        for (int x = 0; x < dome.width; ++x) {
            const float azimuth =
                ((static_cast<float>(x) + 0.5F) / static_cast<float>(dome.width) - 0.5F) * 2 * pi;
            const glm::vec3 toward(std::cos(elevation) * std::sin(azimuth), std::sin(elevation),
                                   -std::cos(elevation) * std::cos(azimuth));
            SkyPart* nearest = &parts.front();
            for (SkyPart& part : parts)
                if (glm::dot(part.toward, toward) > glm::dot(nearest->toward, toward)) nearest = &part;
            nearest->share += share;
            nearest->radiance += dome.pixels[static_cast<std::size_t>(y * dome.width + x)] * share;
        }
    }
    for (SkyPart& part : parts) part.radiance /= std::max(part.share, 1e-6F);
    return parts;
}

}  // namespace gull
