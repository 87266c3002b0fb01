#include "Engine/Render/SkyFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <glm/geometric.hpp>
#include <glm/gtc/constants.hpp>

namespace gull::test {

namespace {

/// A panorama that `colour` (red, green, blue of 255) paints by the direction.
template <class Paint>
Image panorama(Paint colour, int width = 256) {
    Image image(width, width / 2);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < width; ++x) {
            const double up = (0.5 - (y + 0.5) / image.height) * glm::pi<double>();
            const double azimuth = ((x + 0.5) / width - 0.5) * 2 * glm::pi<double>();
            const glm::ivec3 c = colour(glm::dvec3(std::cos(up) * std::sin(azimuth), std::sin(up),
                                                   -std::cos(up) * std::cos(azimuth)));
            std::uint8_t* p = image.at(x, y);
            for (int k = 0; k < 3; ++k) p[k] = static_cast<std::uint8_t>(c[k]);
            p[3] = 255;
        }
    return image;
}

glm::vec3 irradiance(const FilteredSky& sky, const glm::vec3& n) {
    const auto& c = sky.irradiance;
    return c[0] + c[1] * n.y + c[2] * n.z + c[3] * n.x + c[4] * (n.x * n.y) + c[5] * (n.y * n.z) +
           c[6] * (3 * n.z * n.z - 1) + c[7] * (n.x * n.z) + c[8] * (n.x * n.x - n.y * n.y);
}

/// The texel in the middle of a face.
glm::vec3 middle(const FilteredSky& sky, int level, int face) {
    const int size = FilteredSky::baseSize >> level;
    return glm::vec3(sky.faces[static_cast<std::size_t>(level)]
                              [static_cast<std::size_t>((face * size + size / 2) * size + size / 2)]);
}

TEST(SkyFilter, anEvenSkyLightsAndMirrorsEvenly) {
    // 188 in sRGB is 0.5029 in linear light.
    const FilteredSky sky =
        filterSky(panorama([](const glm::dvec3&) { return glm::ivec3(188); }), glm::vec3(1), 0.3F);
    for (const glm::vec3& n : {glm::vec3(0, 1, 0), glm::vec3(0, -1, 0), glm::vec3(0.6F, 0, 0.8F)})
        EXPECT_NEAR(irradiance(sky, n).g, 0.5029, 0.003);
    for (int level = 0; level < FilteredSky::levels; ++level) {
        const auto& faces = sky.faces[static_cast<std::size_t>(level)];
        const int size = FilteredSky::baseSize >> level;
        ASSERT_EQ(faces.size(), static_cast<std::size_t>(6 * size * size));
        for (const glm::vec4& texel : faces) ASSERT_NEAR(texel.g, 0.5029, 0.001) << level;
    }
}

TEST(SkyFilter, everyFaceLooksItsOwnWay) {
    // Each axis has a colour of its own.
    const auto paint = [](const glm::dvec3& d) {
        const glm::dvec3 a = glm::abs(d);
        const int axis = a.x > a.y && a.x > a.z ? 0 : a.y > a.z ? 1 : 2;
        return glm::ivec3(axis == 0 ? 255 : 0, axis == 1 ? 255 : 0, d[axis] > 0 ? 255 : 0);
    };
    const FilteredSky sky = filterSky(panorama(paint), glm::vec3(1), 0);
    for (int face = 0; face < 6; ++face) {
        const glm::vec3 seen = middle(sky, 0, face);
        const glm::vec3 wanted(face / 2 == 0, face / 2 == 1, face % 2 == 0);
        EXPECT_LT(glm::distance(seen, wanted), 0.01) << "face " << face;
        EXPECT_LT(glm::distance(middle(sky, 1, face), wanted), 0.2) << "face " << face << ", less sharp";
    }
}

TEST(SkyFilter, lightComesFromWhereTheSkyIsBright) {
    // White above, black below: a surface facing up gets all of it, a wall half, one facing down nothing.
    // Nine harmonics represent half of a sphere exactly in these directions.
    const FilteredSky sky =
        filterSky(panorama([](const glm::dvec3& d) { return d.y > 0 ? glm::ivec3(255) : glm::ivec3(0); }),
                  glm::vec3(1), 0);
    EXPECT_NEAR(irradiance(sky, {0, 1, 0}).r, 1, 0.02);
    EXPECT_NEAR(irradiance(sky, {1, 0, 0}).r, 0.5, 0.02);
    EXPECT_NEAR(irradiance(sky, {0, 0, -1}).r, 0.5, 0.02);
    EXPECT_NEAR(irradiance(sky, {0, -1, 0}).r, 0, 0.02);
    // A rough mirror sees some of the other half. The texel beside the middle of a side looks 14 degrees
    // down.
    EXPECT_GT(middle(sky, 5, 2).r, 0.85F);
    EXPECT_LT(middle(sky, 5, 3).r, 0.15F);
    EXPECT_NEAR(middle(sky, 5, 0).r, 0.4F, 0.05F);
}

TEST(SkyFilter, brightensTheGroundAndFillsRoughMirrorsAsAsked) {
    const auto grey = [](const glm::dvec3&) { return glm::ivec3(188); };
    const FilteredSky gained = filterSky(panorama(grey), glm::vec3(1, 2, 1), 0);
    EXPECT_NEAR(middle(gained, 0, 3).g, 2 * 0.5029, 0.01);
    EXPECT_NEAR(middle(gained, 0, 3).r, 0.5029, 0.01);
    EXPECT_NEAR(middle(gained, 0, 2).g, 0.5029, 0.01) << "not the sky";

    const Image half =
        panorama([](const glm::dvec3& d) { return d.y > 0 ? glm::ivec3(255) : glm::ivec3(0); });
    const FilteredSky filled = filterSky(half, glm::vec3(1), 0.5F);
    EXPECT_NEAR(middle(filled, 0, 2).r, 1, 0.01) << "a perfect mirror shows no fill";
    EXPECT_NEAR(middle(filled, 1, 2).r, 0.75, 0.02);
    EXPECT_NEAR(middle(filled, 1, 3).r, 0.25, 0.02);
}

TEST(SkyFilter, noPictureGivesNoLight) {
    const FilteredSky sky = filterSky(Image(), glm::vec3(1), 0);
    EXPECT_EQ(sky.irradiance[0], glm::vec3(0));
    EXPECT_TRUE(sky.faces[0].empty());
}

}  // namespace

}  // namespace gull::test
