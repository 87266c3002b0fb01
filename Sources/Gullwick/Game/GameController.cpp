#include "Gullwick/Game/GameController.h"

#include "GullCore/ProgressFile.h"
#include "Gullwick/Feedback/Feedback.h"

#include <algorithm>
#include <random>
#include <utility>

namespace gull {
namespace {

constexpr PlotPoint openingCoil{0.5, 0.28};
constexpr double introSeconds = 1.3;         // a little less than the camera's fly-in
constexpr double introSecondsAtOnce = 0.01;  // without a fly-in
constexpr double openingToastSeconds = 3.4;

std::uint64_t randomSeed() {
    std::random_device device;
    return std::uint64_t{device()} << 32 | device();
}

}  // namespace

GameController::GameController(MainLoop& loop, const AppSettings& settings, Feedback& feedback,
                               std::filesystem::path progressURL, bool persists,
                               std::optional<std::uint64_t> seed)
    : progressFile_(persists ? std::make_unique<ProgressFile>(std::move(progressURL)) : nullptr),
      progress(changes_, progressFile_ ? progressFile_->load() : CampaignProgress{}),
      loop_(loop),
      settings_(settings),
      feedback_(feedback),
      world_(delayed_),
      rng_(seed ? *seed : randomSeed()),
      // beginBeach() replaces it at once, but its burial counts: the generator's second use lays out the
      // first beach played, and the meaning of a seed depends on that.
      hunt_(Campaign::beach(progress->highestUnlocked()), rng_),
      lastFrame_(loop.now()) {
    beginBeach(progress->highestUnlocked(), false);
    timer_ = loop_.every(frameInterval, [this] { frame(); });
    if (progressFile_) {
        saveTimer_ = loop_.every(saveAgainInterval, [this] {
            if (auto saved = progressFile_->retry()) progress = std::move(*saved);
        });
    }
}

GameController::~GameController() {
    resume();  // the loop is not ours
}

/// Runs `work` after `delay` seconds, unless this controller is gone or another beach has begun by then.
void GameController::later(double delay, std::function<void()> work) {
    delayed_.after(delay, [this, generation = generation_, work = std::move(work)] {
        if (generation == generation_) work();
    });
}

void GameController::beginBeach(int number, bool animated, std::optional<std::uint64_t> seed) {
    resume();
    delayed_.cancelPending();
    feedback_.cancelPending();
    ++generation_;
    if (seed) rng_ = SplitMix64(*seed);
    hunt_ = Hunt(Campaign::beach(number), rng_);
    spec = Campaign::beach(number);
    world_.setBeach(number);

    timeLeft = tideLeft();
    tray = std::vector<bool>(spec->treasures.size(), false);
    junkCount = 0;
    pings = 0;
    earnedStars = 0;
    isNewBest = false;
    haul = 0;
    lastFind = std::nullopt;

    coil_ = target_ = openingCoil;
    clock_ = PulseClock();
    wasPinpoint_ = false;
    countdown_.reset();
    busyUntil_ = 0;
    missCount_ = 0;
    toasts_.dropWaiting();
    selection = number;
    refusedBeach = 0;
    if (number == 1)
        tutorial_.start();
    else
        tutorial_.end();
    // The meter, the toast, the last sweep and the like stay: they belong to the player, not to the beach.

    phase = Phase::intro;
    if (animated) world_.introStart = world_.time;
    later(animated ? introSeconds : introSecondsAtOnce, [this] {
        if (phase == Phase::intro) enterPlay();
    });
    feedback_.startSurf();
}

void GameController::enterPlay() {
    phase = Phase::playing;
    if (tutorial_.stage() == 1) {
        toasts_.showOpening(TutorialHints::opening(controls), TutorialHints::openingSeconds);
    } else {
        toasts_.showOpening(message("Beach {} · find {} of {} before high tide", spec->number, spec->need,
                                    spec->treasures.size()),
                            openingToastSeconds);
    }
}

void GameController::restart() {
    beginBeach(spec->number, true);
}

void GameController::nextBeach() {
    if (phase != Phase::finished || earnedStars < 1) return;
    if (spec->number < static_cast<int>(Campaign::beaches().size()))
        beginBeach(spec->number + 1, true);
    else
        openSelect();
}

void GameController::openSelect() {
    if (phase == Phase::selecting) return;
    resume();
    returnPhase_ = phase == Phase::intro ? Phase::playing : phase.get();
    selection = spec->number;
    refusedBeach = 0;
    phase = Phase::selecting;
}

void GameController::closeSelect() {
    // A flood that ended during the select is not made up for: the beach stays flooded until another begins.
    if (phase == Phase::selecting) phase = returnPhase_;
}

void GameController::openSelected() {
    if (progress->isUnlocked(selection)) {
        beginBeach(selection, true);
        return;
    }
    refusedBeach = selection.get();
    feedback_.haptic(HapticPattern::generic, 0.016);
    feedback_.play(Sound::miss, 1.0F);
}

void GameController::openTile(int tile) {
    if (phase != Phase::selecting) return;
    hover(tile);
    openSelected();
}

void GameController::pause() {
    if (phase != Phase::playing || isPaused || !pausingAllowed_) return;
    isPaused = true;
    feedback_.holdSurf(true);
    loop_.pause();
}

void GameController::resume() {
    if (!isPaused) return;
    loop_.resume();
    feedback_.holdSurf(false);
    isPaused = false;
}

void GameController::beginFlood() {
    phase = Phase::flooding;
    world_.floodStart = world_.time;
    feedback_.play(Sound::wave, 1.0F);
    feedback_.thump(3, 0.12, HapticPattern::levelChange);
    later(floodSeconds, [this] { finish(); });
}

void GameController::finish() {
    if (phase != Phase::playing && phase != Phase::flooding) return;
    earnedStars = hunt_.stars();
    haul = hunt_.haul();
    isNewBest = progress.mutate(
        [this](CampaignProgress& record) { return record.record(spec->number, earnedStars, haul); });
    // Progress that another running game has saved meanwhile comes back with it.
    if (progressFile_) progress = progressFile_->save(progress);
    const bool passed = earnedStars >= 1;
    isFirstLoss = !passed && !std::exchange(hasLost_, true);
    phase = Phase::finished;
    feedback_.play(passed ? Sound::win : Sound::lose, 1.0F);
    if (passed) feedback_.thump(2, 0.1, HapticPattern::levelChange);
}

void GameController::resetProgress() {
    progress = CampaignProgress{};
    if (progressFile_) progressFile_->erase();
    beginBeach(1, true);
}

double GameController::tideLeft() const {
    return std::max(0.0, hunt_.spec().tideSeconds - hunt_.elapsed());
}

double GameController::tideShare() const {
    return std::min(hunt_.elapsed() / hunt_.spec().tideSeconds, 1.0);
}

void GameController::debugAdvance(double seconds) {
    hunt_.advance(seconds);
    timeLeft = tideLeft();
    world_.tide = tideShare();
}

void GameController::debugSettle(double time) {
    world_.tide = tideShare();
    const Reading here = hunt_.reading(coil_);
    world_.update(time, frameInterval, coil_, {0, 0}, 0, here.strength, tintColour(here));
    meter = here.strength;
    meterIsTreasure = here.isTreasure();
    timeLeft = tideLeft();
}

void GameController::debugForcePlaying() {
    if (phase == Phase::intro) phase = Phase::playing;
}

}  // namespace gull
