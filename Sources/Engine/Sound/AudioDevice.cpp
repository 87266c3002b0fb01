#include "Engine/Sound/AudioDevice.h"

#include "Engine/Log/Log.h"
#include "Engine/Sound/SdlAudio.h"
#include "Engine/Sound/SoundStream.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace gull {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr const char* noAnswer = "the sound system does not answer";

/// A stream that can be silenced while it is rendered.
class Line {
  public:
    explicit Line(const AudioSystem::Format& format)
        : format_(format), stream_(format.rate, format.channels) {}

    void render(std::span<float> out) {
        renderedAt_.store(Clock::now(), std::memory_order_relaxed);
        const std::lock_guard lock(rendering_);
        stream_.render(out);
    }
    bool send(const SoundStream::Command& command) { return stream_.send(command); }
    /// False while the sound system hangs: commands sent then would all be heard at once when it continues.
    bool isFlowing() const {
        return Clock::now() - renderedAt_.load(std::memory_order_relaxed) < buffer() + Seconds(0.3);
    }
    void silence() {
        const std::lock_guard lock(rendering_);
        stream_.silence();
    }
    bool hasFadedOut() const { return stream_.hasFadedOut(); }
    /// The duration of a buffer.
    Seconds buffer() const { return Seconds(1.0 * format_.bufferFrames / format_.rate); }

  private:
    using Clock = std::chrono::steady_clock;

    AudioSystem::Format format_;
    std::atomic<Clock::time_point> renderedAt_{Clock::now()};
    std::mutex rendering_;  // free except while silence() is called
    SoundStream stream_;
};

}  // namespace

/// The state that the main thread and the keeper share; it lives as long as either.
struct AudioDevice::Shared {
    std::unique_ptr<AudioSystem> system;  // only for the keeper
    Timing timing;

    std::mutex mutex;  // guards the members below, never held while calling the system
    std::condition_variable changed;
    bool isLeaving = false;
    bool isAttempting = true;
    bool isDone = false;
    std::shared_ptr<Line> line;  // null: nothing is open
    Description description;
};

struct AudioDevice::Impl {
    std::shared_ptr<Shared> shared = std::make_shared<Shared>();
    bool isWanted = false;
    std::shared_ptr<Line> line;  // receives the commands
    double patientUntil = -1;    // uptime at which the current attempt began
    bool hasComplained = false;

    // Commands for a device that is opened later.
    std::span<const float> loopSamples;
    float loopVolume = 0;
    bool owesLoop = false;
    bool owesVolume = false;

    void takeLine();
    void payDebts();
    void complain(const std::string& problem);
    void fadeOut() const;
};

/// The keeper's thread.
void AudioDevice::keep(const std::shared_ptr<Shared>& shared) {
    AudioSystem& system = *shared->system;
    std::unique_lock lock(shared->mutex);
    const auto pause = [&](double seconds) {
        shared->changed.wait_for(lock, Seconds(seconds), [&] { return shared->isLeaving; });
    };
    while (!shared->isLeaving) {
        shared->isAttempting = true;
        lock.unlock();
        Description found;
        std::shared_ptr<Line> line;
        found.isOpen = system.open(
            [&](const AudioSystem::Format& format) {
                line = std::make_shared<Line>(format);
                found.rate = format.rate;
                found.channels = format.channels;
                found.bufferFrames = format.bufferFrames;
                return [line](std::span<float> out) { line->render(out); };
            },
            found.problem);
        found.driver = system.driver();
        found.devices = system.devices();
        lock.lock();
        shared->isAttempting = false;
        shared->line = found.isOpen ? line : nullptr;
        shared->description = found;
        shared->changed.notify_all();
        if (!found.isOpen) {
            pause(shared->timing.retry);
            continue;
        }
        bool isLost = false;
        while (!shared->isLeaving && !isLost) {
            pause(shared->timing.look);
            lock.unlock();
            isLost = system.isLost();
            lock.lock();
        }
        shared->line.reset();
        lock.unlock();
        system.close();
        lock.lock();
    }
    lock.unlock();
    shared->system.reset();
    lock.lock();
    shared->isDone = true;
    shared->changed.notify_all();
}

void AudioDevice::Impl::takeLine() {
    if (!isWanted) return;
    const std::lock_guard lock(shared->mutex);
    if (shared->line == line) return;
    line = shared->line;
    owesLoop = !loopSamples.empty();
    owesVolume = true;
}

void AudioDevice::Impl::payDebts() {
    using Command = SoundStream::Command;
    if (!line) return;
    if (owesLoop) owesLoop = !line->send({Command::Kind::loop, 0, 0, loopSamples});
    if (owesVolume) owesVolume = !line->send({Command::Kind::loopVolume, 0, loopVolume, {}});
}

void AudioDevice::Impl::complain(const std::string& problem) {
    if (std::exchange(hasComplained, true)) return;
    Log::say("no sound: {}. Playing on in silence.", problem);
}

void AudioDevice::Impl::fadeOut() const {
    if (!line->send({SoundStream::Command::Kind::fadeOut, 0, 0, {}})) return;
    // Does not wait for a device that no longer asks for samples.
    constexpr Seconds step(0.005);
    for (Seconds waited(0); waited < Seconds(0.1) && !line->hasFadedOut(); waited += step)
        std::this_thread::sleep_for(step);
    if (line->hasFadedOut()) std::this_thread::sleep_for(std::min(line->buffer(), Seconds(0.05)));
}

AudioDevice::AudioDevice() : AudioDevice(std::make_unique<SdlAudio>(), Timing()) {}

AudioDevice::AudioDevice(std::unique_ptr<AudioSystem> system, const Timing& timing)
    : impl_(std::make_unique<Impl>()) {
    impl_->shared->system = std::move(system);
    impl_->shared->timing = timing;
}

AudioDevice::~AudioDevice() {
    silence();
    if (!impl_->isWanted) return;
    std::unique_lock lock(impl_->shared->mutex);
    impl_->shared->isLeaving = true;
    impl_->shared->changed.notify_all();
    impl_->shared->changed.wait_for(lock, Seconds(impl_->shared->timing.farewell),
                                    [this] { return impl_->shared->isDone; });
}

bool AudioDevice::start() {
    if (!std::exchange(impl_->isWanted, true)) {
        // Detached from the start: it may never return from the sound system.
        std::thread([shared = impl_->shared] { keep(shared); }).detach();
        return true;
    }
    const std::lock_guard lock(impl_->shared->mutex);
    return impl_->shared->line || impl_->shared->isAttempting;
}

void AudioDevice::play(int voice, std::span<const float> samples, float volume) {
    if (impl_->line && impl_->line->isFlowing())
        impl_->line->send({SoundStream::Command::Kind::play, voice, volume, samples});
}

void AudioDevice::loop(std::span<const float> samples) {
    impl_->loopSamples = samples;
    impl_->owesLoop = true;
    impl_->payDebts();
}

void AudioDevice::setLoopVolume(float volume) {
    impl_->loopVolume = volume;
    impl_->owesVolume = true;
    impl_->payDebts();
}

void AudioDevice::silence() {
    impl_->loopSamples = {};
    impl_->loopVolume = 0;
    impl_->owesLoop = false;
    if (!impl_->line) return;
    impl_->fadeOut();
    impl_->line->silence();
}

void AudioDevice::poll(double now) {
    impl_->takeLine();
    impl_->payDebts();
    if (!impl_->isWanted || impl_->line) {
        impl_->patientUntil = -1;
        return;
    }
    std::unique_lock lock(impl_->shared->mutex);
    if (!impl_->shared->isAttempting) {
        const std::string problem = impl_->shared->description.problem;
        lock.unlock();
        if (!problem.empty()) impl_->complain(problem);
        return;
    }
    if (impl_->patientUntil < 0) impl_->patientUntil = now + impl_->shared->timing.patience;
    lock.unlock();
    if (now > impl_->patientUntil) impl_->complain(noAnswer);
}

void AudioDevice::await(double seconds) {
    std::unique_lock lock(impl_->shared->mutex);
    impl_->shared->changed.wait_for(lock, Seconds(seconds), [this] { return !impl_->shared->isAttempting; });
}

AudioDevice::Description AudioDevice::describe() const {
    const std::lock_guard lock(impl_->shared->mutex);
    Description result = impl_->shared->description;
    result.isOpen = impl_->shared->line != nullptr;
    if (impl_->isWanted && impl_->shared->isAttempting) result.problem = noAnswer;
    return result;
}

}  // namespace gull
