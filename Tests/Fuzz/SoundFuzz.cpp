#include "Engine/Log/Require.h"
#include "Engine/Sound/SoundOutput.h"
#include "Engine/Sound/SoundStream.h"
#include "Fuzz/FuzzInput.h"

#include <cmath>
#include <numbers>

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<float> sound = [] {
        std::vector<float> samples(5000);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<float>(std::sin(static_cast<double>(i) * std::numbers::pi / 40));
        return samples;
    }();
    FuzzInput input(data, size);
    static constexpr int rates[] = {8000, 22050, 44100, 48000, 96000, 192000, 44099};
    const int channels = 1 + input.below(8);
    SoundStream stream(rates[input.below(7)], channels);
    std::vector<float> out;
    using Command = SoundStream::Command;
    for (int steps = 0; !input.isEmpty() && steps < 400; ++steps) {
        const auto kind = static_cast<Command::Kind>(input.below(4));
        const std::size_t length =
            kind == Command::Kind::fadeOut ? 0 : input.take<std::uint16_t>() % sound.size();
        stream.send({kind, input.below(SoundOutput::voiceCount), static_cast<float>(input.below(256)) / 255,
                     std::span(sound).first(length)});
        if (input.below(3) == 0) {
            out.assign(static_cast<std::size_t>(input.below(250) * channels), 99.0F);
            stream.render(out);
            for (const float sample : out)
                require(sample >= -1 && sample <= 1, "a sample of {} reaches the speakers", sample);
        }
        if (input.below(50) == 0) stream.silence();
    }
    return 0;
}
