#include "Engine/Sound/AudioDevice.h"

#include "Engine/Log/Log.h"
#include "Engine/Sound/SoundStream.h"

#include <SDL.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace gull {
namespace {

constexpr int wantedRate = 48000;
constexpr Uint8 wantedChannels = 2;
constexpr Uint16 wantedFrames = 512;

constexpr double lookInterval = 1;    // seconds between looks for a device that has appeared
constexpr double retryInterval = 30;  // seconds between attempts while none has

}  // namespace

struct AudioDevice::Impl {
    bool hasSubsystem = false;
    SDL_AudioDeviceID id = 0;  // 0: not open
    SDL_AudioSpec spec{};
    std::optional<SoundStream> stream;

    // What a device that is opened later has to be told.
    std::span<const float> loopSamples;
    float loopVolume = 0;
    bool owesLoop = false;
    bool owesVolume = false;

    bool isWanted = false;
    bool hasComplained = false;
    std::string problem;
    double nextLook = 0;
    double nextTry = 0;
    int outputsAtFailure = 0;

    bool open();
    void close();
    bool fail();
    bool isLost() const { return SDL_GetAudioDeviceStatus(id) == SDL_AUDIO_STOPPED; }
    int outputs() const { return hasSubsystem ? std::max(SDL_GetNumAudioDevices(0), 0) : 0; }
    void payDebts();
    void fadeOut();
    static void SDLCALL fill(void* self, Uint8* bytes, int length);
};

void AudioDevice::Impl::fill(void* self, Uint8* bytes, int length) {
    auto* samples = reinterpret_cast<float*>(bytes);  // SDL's buffer is made for the format asked for
    static_cast<Impl*>(self)->stream->render({samples, static_cast<std::size_t>(length) / sizeof(float)});
}

namespace {

void sayNothing(const char*, int, const char*, int, const char*, ...) {}

/// ALSA's library writes half a page to standard error when a machine has no sound card; what is wrong is
/// said by ourselves, once.
void quietenAlsa() {
#ifdef __linux__
    static void* const library = SDL_LoadObject("libasound.so.2");
    if (!library) return;
    using SetHandler = int (*)(void (*)(const char*, int, const char*, int, const char*, ...));
    if (const auto set =
            reinterpret_cast<SetHandler>(SDL_LoadFunction(library, "snd_lib_error_set_handler"))) {
        set(sayNothing);
    }
#endif
}

}  // namespace

bool AudioDevice::Impl::open() {
    quietenAlsa();
    hasSubsystem = hasSubsystem || SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
    if (!hasSubsystem) return fail();
    SDL_AudioSpec wanted{};
    wanted.freq = wantedRate;
    wanted.format = AUDIO_F32SYS;
    wanted.channels = wantedChannels;
    wanted.samples = wantedFrames;
    wanted.callback = &Impl::fill;
    wanted.userdata = this;
    constexpr int mayDiffer =
        SDL_AUDIO_ALLOW_FREQUENCY_CHANGE | SDL_AUDIO_ALLOW_CHANNELS_CHANGE | SDL_AUDIO_ALLOW_SAMPLES_CHANGE;
    // No name: the default device, which the system may move.
    id = SDL_OpenAudioDevice(nullptr, 0, &wanted, &spec, mayDiffer);
    if (id == 0) return fail();
    problem.clear();
    stream.emplace(spec.freq, spec.channels);
    owesLoop = !loopSamples.empty();
    owesVolume = true;
    payDebts();
    SDL_PauseAudioDevice(id, 0);
    return true;
}

bool AudioDevice::Impl::fail() {
    problem = SDL_GetError();
    outputsAtFailure = outputs();
    if (!hasComplained) {
        Log::say("no sound: {}. Playing on in silence.", problem);
        hasComplained = true;
    }
    return false;
}

void AudioDevice::Impl::close() {
    if (id != 0) SDL_CloseAudioDevice(id);
    id = 0;
    stream.reset();
}

void AudioDevice::Impl::payDebts() {
    using Command = SoundStream::Command;
    if (owesLoop) owesLoop = !stream->send({Command::Kind::loop, 0, 0, loopSamples});
    if (owesVolume) owesVolume = !stream->send({Command::Kind::loopVolume, 0, loopVolume, {}});
}

void AudioDevice::Impl::fadeOut() {
    if (isLost() || !stream->send({SoundStream::Command::Kind::fadeOut, 0, 0, {}})) return;
    // A device that has stopped asking for samples is not waited for.
    for (Uint32 waited = 0; waited < 100 && !stream->hasFadedOut(); waited += 5) SDL_Delay(5);
    const auto buffered = static_cast<Uint32>(1000 * spec.samples / spec.freq + 1);
    SDL_Delay(std::min<Uint32>(buffered, 50));
}

AudioDevice::AudioDevice() : impl_(std::make_unique<Impl>()) {}

AudioDevice::~AudioDevice() {
    silence();
    impl_->close();
    if (impl_->hasSubsystem) SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

bool AudioDevice::start() {
    // Only the first call opens; poll() decides when it is worth another attempt.
    if (!std::exchange(impl_->isWanted, true)) impl_->open();
    return impl_->id != 0;
}

void AudioDevice::play(int voice, std::span<const float> samples, float volume) {
    if (impl_->stream) impl_->stream->send({SoundStream::Command::Kind::play, voice, volume, samples});
}

void AudioDevice::loop(std::span<const float> samples) {
    impl_->loopSamples = samples;
    impl_->owesLoop = true;
    if (impl_->stream) impl_->payDebts();
}

void AudioDevice::setLoopVolume(float volume) {
    impl_->loopVolume = volume;
    impl_->owesVolume = true;
    if (impl_->stream) impl_->payDebts();
}

void AudioDevice::silence() {
    impl_->loopSamples = {};
    impl_->loopVolume = 0;
    impl_->owesLoop = false;
    if (!impl_->stream) return;
    impl_->fadeOut();
    SDL_LockAudioDevice(impl_->id);
    impl_->stream->silence();
    SDL_UnlockAudioDevice(impl_->id);
}

void AudioDevice::poll(double now) {
    Impl& impl = *impl_;
    if (impl.id != 0 && impl.isLost()) {
        impl.close();
        impl.nextLook = 0;
        impl.nextTry = 0;
    }
    if (impl.id != 0) {
        impl.payDebts();
        return;
    }
    if (!impl.isWanted || now < impl.nextLook) return;
    impl.nextLook = now + lookInterval;
    const bool isUnchanged = impl.outputs() == impl.outputsAtFailure;
    // Without a single output another attempt is in vain, and some drivers complain aloud about each.
    const bool isHopeless = impl.hasSubsystem && impl.outputs() == 0;
    if (isUnchanged && (isHopeless || now < impl.nextTry)) return;
    impl.nextTry = now + retryInterval;
    impl.open();
}

AudioDevice::Description AudioDevice::describe() const {
    Description result;
    if (!impl_->hasSubsystem) {
        result.problem = impl_->problem;
        return result;
    }
    if (const char* driver = SDL_GetCurrentAudioDriver()) result.driver = driver;
    for (int index = 0; index < impl_->outputs(); ++index)
        if (const char* name = SDL_GetAudioDeviceName(index, 0)) result.devices.emplace_back(name);
    result.isOpen = impl_->id != 0;
    result.problem = impl_->problem;
    if (result.isOpen) {
        result.rate = impl_->spec.freq;
        result.channels = impl_->spec.channels;
        result.bufferFrames = impl_->spec.samples;
    }
    return result;
}

}  // namespace gull
