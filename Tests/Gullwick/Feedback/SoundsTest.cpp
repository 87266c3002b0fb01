#include "Gullwick/Feedback/Sounds.h"

#include "Engine/Sound/Mixer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

namespace gull {
namespace {

/// A sound as given by the formulas, computed outside this program in double precision: its length, four of
/// its samples, the sum of the samples' absolute values and of their squares.
struct Reference {
    Sound sound;
    std::size_t frames;
    std::array<std::size_t, 4> at;
    std::array<double, 4> samples;
    double sizes;
    double squares;
};

constexpr Reference references[] = {
    {Sound::beep(0),
     2205,
     {{1, 220, 735, 1470}},
     {{0.000114237006, 0.0934163933, -0.0293415216, 0.00913704441}},
     44.760457038,
     2.002964071},
    {Sound::beep(3),
     2205,
     {{1, 220, 735, 1470}},
     {{0.000249648224, -0.135584478, -0.0368769665, -0.0181565166}},
     65.733667425,
     4.320575282},
    {Sound::beep(9),
     2205,
     {{1, 220, 735, 1470}},
     {{0.000672613741, -0.149771564, 0.0354967371, -0.0297457825}},
     107.698288549,
     11.592544449},
    {Sound::buzz(0),
     2205,
     {{1, 220, 735, 1470}},
     {{0.000169562239, -0.0477160618, -0.0237841935, 0.000838088434}},
     40.582666373,
     1.239734948},
    {Sound::buzz(9),
     2205,
     {{1, 220, 735, 1470}},
     {{0.000423905599, -0.119290154, -0.0594604837, 0.00209522109}},
     101.456665931,
     7.748343426},
    {Sound::lockOn,
     7056,
     {{1, 705, 2352, 4704}},
     {{0.000194608568, 0.0383590993, -0.0589360629, 0.0182309344}},
     260.385688644,
     21.566093540},
    {Sound::shovel,
     14994,
     {{1, 1499, 4998, 9996}},
     {{0.306483141, -0.11386739, 0.000328916284, 0.00451056429}},
     930.400312807,
     253.183684191},
    {Sound::miss,
     11025,
     {{1, 1102, 3675, 7350}},
     {{0.000306085099, 0.0702121751, -0.0125941652, 0.00629368973}},
     225.323566275,
     13.754974713},
    {Sound::found,
     61739,
     {{1, 6173, 20579, 41159}},
     {{0.0567006558, -0.147824958, 0.0320257269, -0.00450435834}},
     2105.756469932,
     232.159234858},
    {Sound::chest,
     123479,
     {{1, 12347, 41159, 82319}},
     {{0.0162254787, 0.109200126, 0.000611724235, -0.000320692921}},
     3807.187339450,
     376.267024867},
    {Sound::junk,
     26460,
     {{1, 2646, 8820, 17640}},
     {{0.0247354111, -0.12641836, -0.0261163989, 0.02100151}},
     1084.157652700,
     171.018960224},
    {Sound::ping,
     52920,
     {{1, 5292, 17640, 35280}},
     {{0.000160666456, -5.59241897e-15, 8.31168696e-15, 1.58698279e-15}},
     1386.449238595,
     103.419961234},
    {Sound::countdown,
     2205,
     {{1, 220, 735, 1470}},
     {{0.0736585628, 0.0119426449, -0.0132042935, 0.00244032881}},
     31.670691955,
     1.756102058},
    {Sound::wave,
     132300,
     {{1, 13230, 44100, 88200}},
     {{1.48126023e-07, -0.0480471147, 0.0595661715, 0.131085376}},
     11776.796712267,
     2078.853677019},
    {Sound::win,
     79380,
     {{1, 7938, 26460, 52920}},
     {{0.0256343681, -0.0433385536, 0.0783434061, 0.0145398382}},
     2840.202910864,
     265.360352503},
    {Sound::lose,
     61739,
     {{1, 6173, 20579, 41159}},
     {{0.017179568, 0.0859804397, 0.037530187, 0.00906184653}},
     1932.882000869,
     126.577968264},
    {Sound::tap,
     1102,
     {{1, 110, 367, 734}},
     {{0.0727952697, -0.019563049, 0.000464421298, -3.29138549e-06}},
     4.960715860,
     0.226897935},
};

constexpr double tolerance = 2e-6;

void expectLike(const Reference& reference, const std::vector<float>& samples) {
    ASSERT_EQ(samples.size(), reference.frames);
    double sizes = 0;
    double squares = 0;
    for (const float sample : samples) {
        ASSERT_LE(std::abs(sample), 1.0F);
        sizes += std::abs(double{sample});
        squares += double{sample} * double{sample};
    }
    for (std::size_t k = 0; k < reference.at.size(); ++k)
        EXPECT_NEAR(double{samples[reference.at[k]]}, reference.samples[k], tolerance)
            << "sample " << reference.at[k];
    const auto frames = static_cast<double>(reference.frames);
    EXPECT_NEAR(sizes, reference.sizes, frames * 1e-7);
    EXPECT_NEAR(squares, reference.squares, 2 * sizes * 1e-6);
}

TEST(SoundsTest, everySoundIsWhatItsFormulaSays) {
    for (const Reference& reference : references) {
        SCOPED_TRACE("kind " + std::to_string(static_cast<int>(reference.sound.kind)) + " level " +
                     std::to_string(reference.sound.level));
        const auto samples = Sounds::make(reference.sound);
        expectLike(reference, samples);
        EXPECT_EQ(samples, Sounds::make(reference.sound)) << "the same at every call";
    }
}

TEST(SoundsTest, surfIsWhatItsFormulaSaysAndJoinsWithoutAStep) {
    const auto surf = Sounds::makeSurf();
    expectLike({{},
                529200,
                {{1, 52920, 176400, 352800}},
                {{-0.00364290915, 0.0229203968, 0.0465630088, -0.0753725673}},
                33335.781674336,
                3823.653363405},
               surf);
    // When looped, the joint is no rougher than the sea beside it.
    Mixer mixer;
    mixer.loop(surf);
    mixer.setLoopVolume(1);
    std::vector<float> heard(surf.size() + 4410);
    mixer.mix(heard);
    const auto roughness = [&](std::size_t from, std::size_t to) {
        float largest = 0;
        for (std::size_t i = from; i < to; ++i)
            largest = std::max(largest, std::abs(heard[i] - heard[i - 1]));
        return largest;
    };
    const std::size_t joint = surf.size();
    EXPECT_LE(roughness(joint - 10, joint + 400), 1.1F * roughness(joint - 4410, joint - 10));
    // No louder or softer on one side of the joint than on the other.
    double before = 0;
    double after = 0;
    for (std::size_t i = 0; i < 4410; ++i) {
        before += double{surf[surf.size() - 1 - i]} * double{surf[surf.size() - 1 - i]};
        after += double{surf[i]} * double{surf[i]};
    }
    EXPECT_LT(std::max(before, after) / std::min(before, after), 3);
}

TEST(SoundsTest, startsAtSilenceUnlessItIsANoise) {
    for (const Sound& sound : {Sound::beep(5), Sound::buzz(5), Sound::lockOn, Sound::miss, Sound::ping,
                               Sound::junk, Sound::wave, Sound::found, Sound::chest, Sound::win, Sound::lose})
        EXPECT_EQ(Sounds::make(sound).front(), 0.0F) << static_cast<int>(sound.kind);
    for (const Sound& sound : {Sound::tap, Sound::countdown, Sound::shovel})
        EXPECT_NE(Sounds::make(sound).front(), 0.0F) << static_cast<int>(sound.kind);
}

TEST(SoundsTest, lengthFollowsTheSampleRateTruncated) {
    EXPECT_EQ(Sounds::make(Sound::found).size(),
              61739U);  // not 61740: 44100 x 1.4 falls just short in doubles
    EXPECT_EQ(Sounds::make(Sound::tap, 48000).size(), 1200U);
    EXPECT_EQ(Sounds::make(Sound::beep(0), 0).size(), 0U);
    EXPECT_EQ(Sounds::make(Sound::beep(0), -10).size(), 0U);
    EXPECT_EQ(Sounds::make(Sound::chest, 1).size(), 2U);
}

TEST(SoundsDeathTest, aLengthThatIsNoNumberOfFramesStopsTheProgram) {
    EXPECT_DEATH(Sounds::make(Sound::tap, std::numeric_limits<double>::infinity()), "number of frames");
    EXPECT_DEATH(Sounds::make(Sound::tap, std::nan("")), "number of frames");
    EXPECT_DEATH(Sounds::make(Sound::tap, -100), "number of frames");
    EXPECT_DEATH(Sounds::make(Sound::win, 1e10), "number of frames");
}

}  // namespace
}  // namespace gull
