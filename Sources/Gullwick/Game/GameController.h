#pragma once

#include "Engine/Input/Haptics.h"
#include "Engine/Language/Message.h"
#include "Engine/Loop/DelayedWork.h"
#include "Engine/Loop/MainLoop.h"
#include "Engine/Loop/Published.h"
#include "GullCore/Detector.h"
#include "GullCore/Hunt.h"
#include "GullCore/Levels.h"
#include "GullCore/Progress.h"
#include "GullCore/Rng.h"
#include "Gullwick/Game/Controls.h"
#include "Gullwick/Game/Countdown.h"
#include "Gullwick/Game/KeyAction.h"
#include "Gullwick/Game/Toast.h"
#include "Gullwick/Game/TutorialHints.h"
#include "Gullwick/Scene/BeachScene.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <glm/vec2.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace gull {

class AppSettings;
class Feedback;
class ProgressFile;
struct Sound;

/// Drives the game: runs one beach at a time from its opening to the result card, sixty steps a second; turns
/// input into sweeps, digs and pings; and tells scene and feedback what happened. The published properties
/// are what the HUD shows; observers of changes() hear of every change just before it is made, and at least
/// every 0.05 s.
///
/// Single-threaded: the loop's frame timer, input, delayed work and toasts all come from the loop's thread.
/// All times are seconds of the loop's clock.
class GameController {
    mutable ChangeNotifier changes_;              // declared before the properties, which refer to it
    std::unique_ptr<ProgressFile> progressFile_;  // null: progress is not saved

  public:
    enum class Phase {
        intro,      ///< the camera flies in; the finger steers, but nothing can be dug and the tide rests
        playing,    ///< the tide runs, the detector ticks, clicks dig
        flooding,   ///< the tide ran out; the sea comes in before the result
        finished,   ///< the result card is up
        selecting,  ///< the beach select is up, over a paused beach
    };

    static constexpr double frameInterval = 1.0 / 60;  ///< seconds
    static constexpr double largestStep = 0.05;        ///< longest step of game time in a frame, seconds
    static constexpr double floodSeconds = 2.0;        ///< from the end of the tide to the result card
    static constexpr double saveAgainInterval = 30;    ///< seconds between attempts to save progress
    static constexpr int selectColumns = 4;            ///< tiles of the beach select in a row
    static constexpr int selectRows = 2;

    /// `loop`, `settings` and `feedback` are owned by the caller and must outlive the controller. With
    /// `persists`, progress is loaded from `progressURL` and saved there; a failed save is repeated every
    /// `saveAgainInterval` and at the end. Otherwise the file is never touched. Without a seed, beaches are
    /// laid out at random. Opens the highest unlocked beach without the fly-in and starts the frame timer.
    GameController(MainLoop& loop, const AppSettings& settings, Feedback& feedback,
                   std::filesystem::path progressURL, bool persists, std::optional<std::uint64_t> seed = {});
    ~GameController();
    GameController(const GameController&) = delete;
    GameController& operator=(const GameController&) = delete;

    ChangeNotifier& changes() const { return changes_; }

    Published<Phase> phase{changes_, Phase::intro};
    Published<BeachSpec> spec{changes_, Campaign::beach(1)};  ///< the beach being played
    Published<double> timeLeft{changes_};         ///< tide left as the tide clock shows it, seconds
    Published<std::vector<bool>> tray{changes_};  ///< a slot for each of spec's treasures; true once dug
    Published<int> junkCount{changes_};           ///< junk dug on this beach
    Published<double> meter{changes_};            ///< smoothed signal, 0 to 1
    Published<bool> meterIsTreasure{changes_, true};
    Published<std::optional<Message>> toast{changes_};
    Published<CampaignProgress> progress{changes_};
    Published<int> earnedStars{changes_};                   ///< of the beach that just ended, 0 to 3
    Published<bool> isNewBest{changes_};                    ///< the beach that just ended beat its best haul
    Published<int> haul{changes_};                          ///< worth of what was found on this beach
    Published<std::optional<ItemKind>> lastFind{changes_};  ///< the last treasure dug on this beach
    Published<int> findStamp{changes_};  ///< rises with every find, so that two equal finds can be told apart
    Published<bool> captured{changes_};  ///< a finger steers and the pointer is locked; the surface's to set
    Published<int> pings{changes_};      ///< used on this beach
    Published<int> selection{changes_, 1};  ///< beach under the cursor of the beach select, 1 to 8
    Published<bool> isPaused{changes_};     ///< nothing moves, ticks or runs out until resume()
    Published<int> refusedBeach{
        changes_};  ///< the locked beach that was requested last, 0 after any other move
    Published<bool> isFirstLoss{changes_};   ///< the last beach is the first one not passed in this run
    Published<Controls> controls{changes_};  ///< in the player's hand; set by PlayerInput
    Published<int> tickStamp{changes_};  ///< rises with every tick heard, the second of a junk pair included

    // --- Life of a beach

    /// Sets up beach `number` (clamped into the campaign for the rules) with a fresh layout and opens it,
    /// with the fly-in if `animated`. With a seed, the seed determines the layout; otherwise the generator
    /// continues.
    void beginBeach(int number, bool animated, std::optional<std::uint64_t> seed = {});
    /// The same beach again, with the fly-in.
    void restart();
    /// On a result card with a star: opens the next beach, or the beach select after the last. Otherwise does
    /// nothing.
    void nextBeach();
    void openSelect();
    /// Returns to where the beach select was opened; does nothing if it is not open.
    void closeSelect();
    /// Opens the beach under the select's cursor; if it is locked, refuses with a sound.
    void openSelected();
    /// In the beach select: moves the cursor to that tile (1 to 8) first.
    void openTile(int tile);
    /// Erases all progress, the saved file included, and opens beach 1.
    void resetProgress();
    /// Ends the beach: stars, record, save, result card. Only while playing or flooding.
    void finish();

    /// Stops a beach in play and everything on it, including the loop's time. Does nothing in any other phase
    /// or if pausing is not allowed. Opening a beach or the select resumes by itself.
    void pause();
    void resume();
    /// Whether pausing is allowed: measurements must not stop.
    void allowPausing(bool allowed) { pausingAllowed_ = allowed; }

    // --- Input

    /// A finger is at this place of the trackpad (0 to 1 from its near left corner): moves the target, or the
    /// cursor of the beach select.
    void fingerMoved(double nx, double ny);
    /// Digs, opens the chosen beach or leaves the result card, depending on the phase.
    void click();
    /// Digs at the coil; ignored outside play and while a dig is in progress.
    void dig();
    /// Shows the way to the nearest treasure for a part of the tide; ignored outside play.
    void ping();
    void key(const KeyAction::Any& action);
    /// Sets the coil's target; the coil follows within frames. A place that is not finite is ignored.
    void setTarget(const PlotPoint& target);
    /// Puts the coil at its target immediately, unless a dig holds it.
    void arrive();

    /// From now on toasts wait for pictures: their time starts with the next picture shown.
    void waitForPictures() { toasts_.waitForPictures(); }
    void pictureShown() { toasts_.pictureShown(); }
    void showToast(Message text, double seconds) { toasts_.show(std::move(text), seconds); }
    /// Shows `text` after the time of the toast that opens the beach.
    void queueHint(Message text, double seconds) { toasts_.queueHint(std::move(text), seconds); }

    // --- Stepping

    /// One step of the game, up to the loop's present time. The frame timer calls it; extra calls do no harm.
    void frame();

    // --- What the HUD, the self-test and snapshots look at

    const Hunt& hunt() const { return hunt_; }
    const PlotPoint& coil() const { return coil_; }
    const PlotPoint& target() const { return target_; }
    const Reading& reading() const { return reading_; }  ///< of the last frame
    Phase returnPhase() const { return returnPhase_; }
    double busyUntil() const { return busyUntil_; }  ///< end of the dig that holds coil and detector
    BeachScene& world() { return world_; }
    const BeachScene& world() const { return world_; }
    /// The colour in which the detector shows `reading` on this beach.
    Colour tintColour(const Reading& reading) const;

    // --- Composing a still picture

    /// Moves the hunt's tide clock by `seconds`.
    void debugAdvance(double seconds);
    /// Brings scene and HUD to rest in their state at scene time `time`, without running a frame.
    void debugSettle(double time);
    /// Skips the rest of the intro.
    void debugForcePlaying();
    /// Puts coil and target at that point at once.
    void setCoil(const PlotPoint& coil) { coil_ = target_ = coil; }
    /// Ends the wait of a dig in progress.
    void clearBusy() { busyUntil_ = 0; }

  private:
    // GameController.cpp
    void later(double delay, std::function<void()> work);
    void enterPlay();
    void beginFlood();
    double tideLeft() const;
    double tideShare() const;
    // GameControllerFrame.cpp
    void easeCoil(double now, double dt);
    void sweep();
    void detect(double dt);
    void pulse();
    void tick(HapticPattern pattern, double minGap, const Sound& sound, float gain);
    void runTide(double now);
    void refreshHud(double dt);
    // GameControllerInput.cpp
    void hover(int tile);
    void uncover(const BuriedItem& treasure, double now);
    void discard(const BuriedItem& junk, double now);
    void missed(double now);

    MainLoop& loop_;
    const AppSettings& settings_;
    Feedback& feedback_;
    DelayedWork delayed_{loop_};  // work that follows on this beach; the start of a beach cancels it
    Phase returnPhase_ = Phase::playing;
    BeachScene world_;
    SplitMix64 rng_;
    Hunt hunt_;
    PulseClock clock_;
    PlotPoint coil_{0.5, 0.3};
    PlotPoint target_{0.5, 0.3};
    PlotPoint lastSwept_{-1, -1};
    glm::dvec2 velocity_{0, 0};  // of the coil, in scene units per second
    double busyUntil_ = 0;
    double digStart_ = -100;
    bool wasPinpoint_ = false;
    int missCount_ = 0;
    bool shownJunkTip_ = false;  // once per run of the program
    bool pausingAllowed_ = true;
    bool hasLost_ = false;          // in this run of the program
    std::uint64_t generation_ = 0;  // rises with every beach; delayed work of an older beach does nothing
    double lastFrame_;
    double hudClock_ = 0;  // seconds since the HUD was last refreshed
    Reading reading_ = Reading::silent();
    Toast toasts_{loop_, toast};
    TutorialHints tutorial_;
    Countdown countdown_;
    MainLoop::Timer timer_;
    MainLoop::Timer saveTimer_;
};

}  // namespace gull
