#include "Engine/Raster/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace gull {
namespace {

const Colour white{1, 1, 1, 1};

/// Sum of coverage of a text drawn in white, pixels.
double ink(std::string_view text, const TextStyle& style, double scale = 1) {
    Canvas canvas(400, 60, scale);
    drawText(canvas, text, style, white, 10, 10);
    const Image image = canvas.image();
    double sum = 0;
    for (std::size_t i = 3; i < image.pixels.size(); i += 4) sum += image.pixels[i] / 255.0;
    return sum;
}

TEST(Text, TrackingStandsBetweenCharactersOnly) {
    const double plain = measureText("TIDE", {}).width;
    EXPECT_NEAR(measureText("TIDE", {.tracking = 3}).width, plain + 3 * 3, 0.02);
    EXPECT_NEAR(measureText("T", {.tracking = 3}).width, measureText("T", {}).width, 0.02);
}

TEST(Text, FixedPitchAndTabularDigitsDoNotJitter) {
    EXPECT_NEAR(measureText("1:11", {}).width, measureText("0:48", {}).width, 1e-9);
    const TextStyle tabular{.font = {.size = 32, .design = FontDesign::proportional, .tabularDigits = true}};
    const TextStyle plain{.font = {.size = 32, .design = FontDesign::proportional}};
    EXPECT_NEAR(measureText("1111", tabular).width, measureText("0000", tabular).width, 0.01);
    EXPECT_GT(measureText("0000", plain).width - measureText("1111", plain).width, 5);
}

TEST(Text, SignsThatTheFixedPitchLacksAreAsLargeAsItsLettersAndKeepTheLine) {
    const TextStyle label{.font = {.size = 11, .weight = FontWeight::semibold}};
    const TextSize letters = measureText("M", label);
    for (const char* sign : {"★", "↩"}) {
        const TextSize size = measureText(sign, label);
        EXPECT_GT(size.width, 1.25 * letters.width) << sign;
        EXPECT_NEAR(measureText("M" + std::string(sign), label).height, letters.height, 0.1) << sign;
    }
}

TEST(Text, FiguresInWordsAreLiningFigures) {
    // Old-style ones: 1 has no ascender and 3 hangs below the line.
    const TextStyle words{.font = {.size = 30, .design = FontDesign::serif, .italic = true}};
    const auto rowsOf = [&](const char* figure) {
        Canvas own(40, 50, 1);
        drawText(own, figure, words, {1, 1, 1, 1}, 5, 2);
        int top = -1, bottom = -1;
        for (int y = 0; y < 50; ++y) {
            for (int x = 0; x < 40; ++x) {
                if (own.pixels()[y * own.strideBytes() + x * 4 + 3] < 64) continue;
                if (top < 0) top = y;
                bottom = y;
            }
        }
        return std::pair(top, bottom);
    };
    const auto [top, bottom] = rowsOf("1");
    for (const char* figure : {"0", "3", "7", "9"}) {
        EXPECT_NEAR(rowsOf(figure).first, top, 1) << figure;
        EXPECT_NEAR(rowsOf(figure).second, bottom, 1) << figure;
    }
}

TEST(Text, LongLinesWrapAndAreCutWhereAsked) {
    const std::string tagline =
        "The tide came in early and took the picnic, the map and the good umbrella with it, they say.";
    const Font font{.size = 13, .design = FontDesign::serif, .italic = true};
    const TextSize one = measureText(tagline, {.font = font});
    const TextSize wrapped = measureText(tagline, {.font = font, .maxWidth = 380});
    ASSERT_GT(one.width, 380);
    EXPECT_LE(wrapped.width, 380);
    EXPECT_NEAR(wrapped.height, 2 * one.height, 0.5);
    EXPECT_NEAR(wrapped.baseline, one.baseline, 0.01);
    const TextSize cut = measureText(tagline, {.font = font, .maxWidth = 380, .maxLines = 1});
    EXPECT_NEAR(cut.height, one.height, 0.5);
    EXPECT_LE(cut.width, 380);
}

TEST(Text, SizesAreThoseOfTheOutlinesAtAnySize) {
    // Unhinted: twice the size is twice the width, exactly enough that a layout never shifts with the scale.
    const TextStyle small{.font = {.size = 9.5}};
    const TextStyle large{.font = {.size = 19}};
    EXPECT_NEAR(measureText("SIGNAL · METAL", small).width * 2, measureText("SIGNAL · METAL", large).width,
                0.05);
}

TEST(Text, DrawsAsMuchAtTwiceTheScaleAndLiesWhereItWasMeasured) {
    const TextStyle style{.font = {.size = 20, .weight = FontWeight::bold}};
    EXPECT_NEAR(ink("HAUL", style, 2) / ink("HAUL", style), 4, 0.12);

    const TextSize size = measureText("HAUL", style);
    Canvas canvas(200, 80);
    drawText(canvas, "HAUL", style, white, 40, 30);
    const Image image = canvas.image();
    int left = 200, right = 0, top = 80, bottom = 0;
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 200; ++x) {
            if (image.at(x, y)[3] < 100) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    EXPECT_GE(left, 40);
    EXPECT_LE(right, 40 + size.width);
    EXPECT_GE(top, 30);
    EXPECT_NEAR(bottom + 1, 30 + size.baseline, 1);  // capitals stand on the baseline
}

TEST(Text, ReturnArrowAndStarComeFromAnotherFont) {
    // A missing glyph would be a hollow box of the fixed pitch; all boxes of a size look alike.
    const double arrow = ink("↩", {});
    const double star = ink("★", {});
    const double missing = ink("\U000FFFF0", {});
    EXPECT_GT(arrow, 5);
    EXPECT_GT(star, 10);
    EXPECT_GT(std::abs(star - missing), 1);
    EXPECT_GT(std::abs(arrow - missing), 1);
}

TEST(Text, AlignsLinesWithinTheMeasuredBox) {
    auto firstInkColumn = [](TextAlign align) {
        Canvas canvas(200, 80);
        drawText(canvas, "I\nWIDE WIDE", {.align = align}, white, 0, 0);
        const Image image = canvas.image();
        const int row = static_cast<int>(measureText("I", {}).baseline) - 4;
        for (int x = 0; x < 200; ++x) {
            if (image.at(x, row)[3] > 60) return x;
        }
        return 200;
    };
    const int left = firstInkColumn(TextAlign::left);
    const int centre = firstInkColumn(TextAlign::centre);
    const int right = firstInkColumn(TextAlign::right);
    const double shift = measureText("WIDE WIDE", {}).width - measureText("I", {}).width;
    EXPECT_NEAR(centre - left, shift / 2, 1);
    EXPECT_NEAR(right - left, shift, 1);
}

TEST(Text, StandsUprightInAFlippedCanvas) {
    const TextStyle style{.font = {.size = 20}};
    Canvas upright(60, 40);
    drawText(upright, "F", style, white, 10, 5);
    Canvas flipped(60, 40);
    flipped.flip();
    drawText(flipped, "F", style, white, 10, 40 - 5);
    EXPECT_EQ(upright.image(), flipped.image());
}

TEST(Text, FamiliesAreFound) {
    EXPECT_TRUE(anyFontInstalled());
    EXPECT_NE(describeFont({}).find("JetBrains Mono"), std::string::npos);
    EXPECT_NE(describeFont({.design = FontDesign::serif, .italic = true}).find("Vollkorn-Italic"),
              std::string::npos);
    EXPECT_NE(describeFont({.design = FontDesign::proportional}).find("Inter"), std::string::npos);
    EXPECT_NE(describeFont({.family = "Times New Roman"}).find("Liberation Serif"), std::string::npos);
}

}  // namespace
}  // namespace gull
