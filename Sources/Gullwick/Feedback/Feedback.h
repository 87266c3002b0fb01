#pragma once

#include "Engine/Input/Haptics.h"
#include "Engine/Loop/DelayedWork.h"
#include "Engine/Loop/MainLoop.h"
#include "Engine/Sound/SoundOutput.h"
#include "Gullwick/Feedback/Sound.h"

#include <cstddef>
#include <map>
#include <vector>

namespace gull {

class AppSettings;

/// Makes the game heard and felt: sounds that are made on first use and cached, played on twelve voices in
/// turn; haptic pulses, single and as thumps; the surf that never stops. Obeys the sound and haptics switches
/// and a global mute.
///
/// Single-threaded.
class Feedback {
  public:
    using Sound = gull::Sound;

    static constexpr float surfVolume = 0.32F;

    /// Everything is owned by the caller and must outlive this object. `output` null: nothing is heard;
    /// `haptics` null: nothing is felt.
    Feedback(const AppSettings& settings, MainLoop& loop, SoundOutput* output, HapticPerformer* haptics);
    ~Feedback();
    Feedback(const Feedback&) = delete;
    Feedback& operator=(const Feedback&) = delete;

    /// When true, nothing is heard or felt at all.
    bool muted = false;

    /// Plays `sound` immediately at volume `gain` (0.85 to 1 in use) times the player's volume. A thirteenth
    /// sound cuts off the oldest. Silently dropped if sound is off or unavailable.
    void play(const Sound& sound, float gain);
    /// One haptic pulse; dropped if the last one was less than `minGap` seconds ago.
    void haptic(HapticPattern pattern, double minGap);
    /// `count` pulses (0 or more), `gap` seconds apart, the first at once.
    void thump(int count, double gap, HapticPattern pattern);
    /// Cancels the remaining pulses of `thump`.
    void cancelPending();

    /// True if a tick would be heard now; tries to open the output.
    bool isHeard();
    /// True if a pulse would be felt now.
    bool isFelt() const;

    /// Starts the surf if it is not running and sets its volume according to the sound switch.
    void startSurf();
    /// Sets the volume of the surf according to the sound switch and the player's volume: call it after
    /// either changed. The surf keeps running, inaudibly, while sound is off.
    void applySoundSwitch();

    /// Silences the surf while the game is paused.
    void holdSurf(bool held);

    /// Makes one of the game's sounds that is not made yet, the costliest first, so that none has to be made
    /// in the middle of play: call it in idle moments. False if nothing is left to make (or sound is off).
    bool prepareOne();

    bool surfStarted() const { return surfStarted_; }
    /// The voice that the next sound takes, 0 to 11.
    int nextVoice() const { return nextVoice_; }
    /// Number of different sounds made so far.
    std::size_t cachedSounds() const { return cache_.size(); }

  private:
    const std::vector<float>& samples(const Sound& sound);

    const AppSettings& settings_;
    MainLoop& loop_;
    SoundOutput* output_;
    HapticPerformer* haptics_;
    DelayedWork delayed_;
    std::map<Sound, std::vector<float>> cache_;
    std::vector<float> surf_;
    bool surfStarted_ = false;
    bool surfHeld_ = false;
    int nextVoice_ = 0;
    double lastHaptic_;
};

}  // namespace gull
