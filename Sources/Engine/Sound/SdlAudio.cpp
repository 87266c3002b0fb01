#include "Engine/Sound/SdlAudio.h"

#include <SDL.h>

namespace gull {
namespace {

constexpr int wantedRate = 48000;
constexpr Uint8 wantedChannels = 2;
constexpr Uint16 wantedFrames = 512;

void sayNothing(const char*, int, const char*, int, const char*, ...) {}

/// ALSA's library writes half a page to standard error on a machine without a sound card; we report that
/// ourselves, once.
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

SdlAudio::~SdlAudio() {
    close();
    if (isUp_) SDL_AudioQuit();
}

void SdlAudio::fill(void* self, Uint8* bytes, int length) {
    auto* samples = reinterpret_cast<float*>(bytes);  // SDL's buffer is made for the format asked for
    static_cast<SdlAudio*>(self)->fill_({samples, static_cast<std::size_t>(length) / sizeof(float)});
}

bool SdlAudio::open(const std::function<Fill(const Format&)>& begin, std::string& problem) {
    quietenAlsa();
    // Not by SDL_InitSubSystem, whose counts belong to the main thread. Once initialised it stays so: while
    // the sound server is away for a moment, SDL would find another driver and keep the card from the server.
    if (!isUp_) isUp_ = SDL_AudioInit(nullptr) == 0;
    SDL_AudioSpec wanted{};
    SDL_AudioSpec spec{};
    wanted.freq = wantedRate;
    wanted.format = AUDIO_F32SYS;
    wanted.channels = wantedChannels;
    wanted.samples = wantedFrames;
    wanted.callback = &SdlAudio::fill;
    wanted.userdata = this;
    constexpr int mayDiffer =
        SDL_AUDIO_ALLOW_FREQUENCY_CHANGE | SDL_AUDIO_ALLOW_CHANNELS_CHANGE | SDL_AUDIO_ALLOW_SAMPLES_CHANGE;
    // No name: the default device, which the system may move.
    if (isUp_) id_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &spec, mayDiffer);
    if (id_ == 0) {
        problem = SDL_GetError();
        return false;
    }
    fill_ = begin({spec.freq, spec.channels, spec.samples});
    SDL_PauseAudioDevice(id_, 0);
    return true;
}

void SdlAudio::close() {
    if (id_ != 0) SDL_CloseAudioDevice(id_);
    id_ = 0;
    fill_ = {};
}

bool SdlAudio::isLost() {
    return id_ != 0 && SDL_GetAudioDeviceStatus(id_) == SDL_AUDIO_STOPPED;
}

std::string SdlAudio::driver() {
    const char* name = isUp_ ? SDL_GetCurrentAudioDriver() : nullptr;
    return name ? name : "";
}

std::vector<std::string> SdlAudio::devices() {
    std::vector<std::string> result;
    for (int index = 0; isUp_ && index < SDL_GetNumAudioDevices(0); ++index)
        if (const char* name = SDL_GetAudioDeviceName(index, 0)) result.emplace_back(name);
    return result;
}

}  // namespace gull
