#include "Engine/Raster/Png.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

TEST(Png, GoesRoundWithoutLoss) {
    Image image(33, 7);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            std::uint8_t* pixel = image.at(x, y);
            pixel[3] = static_cast<std::uint8_t>(x % 3 == 0 ? 255 : x % 3 == 1 ? 0 : 128);
            for (int c = 0; c < 3; ++c) pixel[c] = static_cast<std::uint8_t>((x * 7 + y * 31 + c * 90) % 129);
            if (pixel[3] == 0) pixel[0] = pixel[1] = pixel[2] = 0;
        }
    }
    const auto bytes = encodePng(image);
    ASSERT_TRUE(bytes.has_value());
    const auto back = decodePng(*bytes);
    ASSERT_TRUE(back.has_value());
    ASSERT_EQ(back->width, 33);
    ASSERT_EQ(back->height, 7);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        ASSERT_NEAR(back->pixels[i], image.pixels[i], 1) << i;  // half-transparent colours round twice
    }
    EXPECT_EQ(encodePng(image), bytes);

    // An opaque picture has no alpha channel to spend bytes on: colour type 2.
    for (std::size_t i = 3; i < image.pixels.size(); i += 4) image.pixels[i] = 255;
    const auto opaque = encodePng(image);
    ASSERT_TRUE(opaque.has_value());
    EXPECT_EQ(opaque->at(25), 2);
    EXPECT_EQ(decodePng(*opaque), image);
}

TEST(Png, RefusesWhatIsNone) {
    EXPECT_FALSE(encodePng(Image()).has_value());
    EXPECT_FALSE(decodePng({}).has_value());
    EXPECT_FALSE(decodePng({1, 2, 3, 4, 5, 6, 7, 8, 9}).has_value());
    auto cut = *encodePng(Image(64, 64));
    cut.resize(cut.size() / 2);
    EXPECT_FALSE(decodePng(cut).has_value());
}

}  // namespace
}  // namespace gull
