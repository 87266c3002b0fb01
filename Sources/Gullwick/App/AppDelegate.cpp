#include "Gullwick/App/AppDelegate.h"

#include "Engine/Compositor/Renderer.h"
#include "Engine/Log/Log.h"
#include "Engine/Raster/Text.h"
#include "Engine/Sound/AudioDevice.h"
#include "Engine/Touch/Seat.h"
#include "Engine/Touch/Trackpads.h"
#include "Engine/Window/GameControllers.h"
#include "Engine/Window/Window.h"
#include "Engine/Window/WindowOpening.h"
#include "Gullwick/App/AppIcon.h"
#include "Gullwick/App/BeachNumber.h"
#include "Gullwick/App/Commands.h"
#include "Gullwick/App/Environment.h"
#include "Gullwick/App/FrameProbe.h"
#include "Gullwick/App/IconRenderer.h"
#include "Gullwick/App/LeaveSignals.h"
#include "Gullwick/App/Numbers.h"
#include "Gullwick/App/PlayerInput.h"
#include "Gullwick/App/PlayersLanguage.h"
#include "Gullwick/App/PresentPace.h"
#include "Gullwick/App/Screenshot.h"
#include "Gullwick/App/SilenceHint.h"
#include "Gullwick/App/TierChooser.h"
#include "Gullwick/App/Trace.h"
#include "Gullwick/Feedback/CombinedHaptics.h"
#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Game/TouchSurface.h"
#include "Gullwick/HUD/BeachSelect.h"
#include "Gullwick/HUD/Overlay.h"
#include "Gullwick/Settings/AppSettings.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <map>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace gull {

struct AppDelegate::Parts final : WindowCommands {
    explicit Parts(const CommandLine& commandLine)
        : probePath(environmentVariable("GULLWICK_PROBE")),
          window(openWindow(windowOptions(commandLine))),
          game(loop, settings, feedbackForGame(), AppSettings::progressURL(std::getenv), !probePath,
               seed(commandLine)) {
        if (AppSettings::defaultFile(std::getenv).empty()) {
            Log::say("there is no home folder, so settings are not kept");
        }
        const GraphicsInfo info = graphicsInfo();
        Log::note("display: {}; OpenGL: {}, {}, {}", window.driverName(), info.renderer, info.vendor,
                  info.version);
        game.allowPausing(!probePath);
        renderer.setTier(tiers.tier());
        // The frame timer sets the pace; only on a GPU is waiting for the screen free, too.
        window.setVsync(!software);
        game.waitForPictures();
        connect();
        resized();
        sketch();
        if (probePath) runProbe();
    }

    /// A new game starts the surf at once, so a measurement is muted before the game exists.
    Feedback& feedbackForGame() {
        feedback.muted = probePath.has_value();
        return feedback;
    }

    Window::Options windowOptions(const CommandLine& commandLine) const {
        Window::Options options;
        options.applicationId = AppIcon::applicationId();
        options.icon = AppIcon::image(64);
        options.scale = requestedScale();
        if (probePath) return options;
        options.place = windowPlace(settings.window());
        options.isFullScreen = settings.fullScreen() || commandLine.has("--fullscreen");
        return options;
    }

    /// Stored for the next start.
    void rememberPlace() {
        const std::string place = text(window.place());
        if (!probePath && place != settings.window()) settings.window = place;
    }

    void rememberFullScreen(bool on) {
        if (!probePath) settings.fullScreen = on;
    }

    static std::optional<std::uint64_t> seed(const CommandLine& commandLine) {
        const auto text = commandLine.value("--seed");
        return text ? parseUnsigned(*text) : std::nullopt;
    }

    void connect() {
        WindowHandlers handlers;
        handlers.key = [this](const KeyEvent& event) { handle(event); };
        handlers.mouse = [this](const MouseEvent& event) {
            pictureIsOld = true;
            input.noteMouse(event);
            // A click belongs to the finger as it is now.
            if (event.kind == MouseEvent::Kind::down) input.poll(clock.now());
            if (!overlay.handle(event) && !clickTile(event)) surface.mouse(event);
        };
        handlers.contacts = [this](const std::vector<Contact>& contacts) { input.windowContacts(contacts); };
        handlers.raw = [this](const void* event) { controllers.handle(event); };
        handlers.resized = [this] { resized(); };
        handlers.exposed = [this] {
            pictureIsOld = true;
            renderer.setPicturePreserved(false);
        };
        handlers.focusChanged = [this](bool) { followFocus(); };
        handlers.minimisedChanged = [this](bool) { followFocus(); };
        handlers.fullScreenChanged = [this](bool on) { rememberFullScreen(on); };
        handlers.closeRequested = [this] { loop.quit(0); };
        window.setHandlers(std::move(handlers));
    }

    /// Whether the player means the game: its window has the keyboard, and its session the devices.
    void followFocus() {
        const bool isMeant = window.hasFocus() && !window.isMinimised() && seat.isOurs();
        if (isMeant == std::exchange(wasMeant, isMeant)) return;
        hadAttention = true;
        pictureIsOld = true;
        isMeant ? surface.focusGained() : surface.focusLost();
    }

    /// A window that never had the player's attention, as where no window manager hands out the keyboard,
    /// plays on. One that lost it during the fly-in is paused when play begins.
    void pauseInBackground() {
        const bool isAway = window.isMinimised() || (hadAttention && !wasMeant);
        if (!isAway || game.isPaused || !settings.pauseInBackground()) return;
        game.pause();
        pictureIsOld = true;
    }

    /// First the commands (few work over an open menu or card), then menu or card, then the beach.
    void handle(const KeyEvent& event) {
        pictureIsOld = true;
        if (!overlay.asks() && !event.isRepeat && perform(menus(), event, overlay.wantsInput())) {
            overlay.closeMenu();
            return;
        }
        if (overlay.handle(event)) return;
        surface.key(event);
    }

    /// In the beach select a free pointer opens the tile under it; beside the tiles its clicks do nothing.
    bool clickTile(const MouseEvent& event) {
        if (game.phase != GameController::Phase::selecting || surface.isCaptured()) return false;
        if (event.kind != MouseEvent::Kind::down) return false;
        if (event.button == 1)
            if (const auto tile = BeachSelect::tileAt(overlay.drawing(), event.x, event.y))
                game.openTile(*tile);
        return true;
    }

    std::vector<Menu> menus() { return buildMenus(game, surface, settings, feedback, *this, language); }

    void resized() {
        game.world().frame(window.width() / std::max(window.height(), 1.0));
        pictureIsOld = true;
        surface.setViewSize({window.width(), window.height()});
        renderer.setPicturePreserved(false);
    }

    void runProbe() {
        window.raise();
        if (const auto text = environmentVariable("GULLWICK_PROBE_BEACH")) {
            if (const auto number = parseInteger(*text)) {
                if (const auto problem = beachProblem(*number)) {
                    throw std::runtime_error("GULLWICK_PROBE_BEACH: " + *problem);
                }
                game.beginBeach(static_cast<int>(*number), false);
            }
        }
        FrameProbe::View view;
        view.width = [this] { return static_cast<int>(window.width()); };
        view.height = [this] { return static_cast<int>(window.height()); };
        view.scale = [this] { return window.scale(); };
        view.snapshot = [this] {
            renderer.setPicturePreserved(false);
            drawScene();
            return renderer.readBack(pixelSize());
        };
        probe.emplace(loop, game, std::move(view), *probePath);
    }

    PixelSize pixelSize() const { return {window.pixelWidth(), window.pixelHeight()}; }

    /// Two plain colours for sea and sand until the first picture is made: a driver that compiles programs on
    /// their first draw needs seconds once.
    void sketch() {
        const BeachLook& look = game.world().look();
        const RGB sea = look.water.mixed(look.skyMid, skyInSea);
        renderer.fillPlaceholder(pixelSize(), window.framebuffer(), sea.scaled(sketchLight).colour(),
                                 look.sand.scaled(sketchLight).colour(), seaShare);
        const Window::Part whole{0, 0, window.pixelWidth(), window.pixelHeight()};
        window.present({&whole, 1});
    }

    /// The very first picture is worth waiting for: only the sketch is visible before it, so all time goes
    /// into it.
    void drawScene() {
        renderer.draw(game.world().stage(), pixelSize(), window.framebuffer(),
                      drawnTime < 0 ? BuildMode::complete : BuildMode::gradual);
    }

    void drawFrame() {
        const double start = clock.now();
        pictureIsOld = false;
        surface.setCovered(overlay.wantsInput());
        drawScene();
        drawOverlay();
        if (std::exchange(screenshotWanted, false)) saveScreenshot();
        const double waited = waitForTurn();
        present();
        leaveSignals.defer();
        game.pictureShown();
        trace.frameShown(loop.now());
        if (probe) probe->framePresented();
        const double end = clock.now();
        // On a graphics card the time goes into waiting for the screen, and nothing has to give way.
        const double work = end - start - waited + stepTime;
        renderer.frameTook(software ? work : 0);
        chooseTier(end - lastPresent);
        lastPresent = end;
        if (observer) observer({end, work, renderer.settled()});
    }

    /// Without a screen's own rhythm pictures keep that of the timer. Returns the seconds of waiting.
    double waitForTurn() {
        if (!software) return 0;
        renderer.finish();
        const double finished = clock.now(), turn = pace.timeFor(finished);
        sleep(turn - finished);
        return turn - finished;
    }

    static void sleep(double seconds) {
        if (seconds > 0) std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    }

    void drawOverlay() {
        renderer.drawOverlay(overlay.update(clock.now(), window.width(), window.height(), window.scale()));
    }

    void present() {
        std::vector<Window::Part> parts;
        for (const PixelRect& part : renderer.changes())
            parts.push_back({part.x, part.y, part.width, part.height});
        renderer.setPicturePreserved(window.present(parts));
    }

    /// The window's contents, HUD and menus included. The words about it come later.
    void saveScreenshot() {
        overlay.tell(Screenshot::save(renderer.readBack(pixelSize()), Screenshot::folder(std::getenv)), 3.4);
        feedback.play(Sound::tap, 1.0F);
    }

    void chooseTier(double interval) {
        const GameController::Phase phase = game.phase;
        // A pause, and the frame that ends it, say nothing about the machine.
        const bool stoodStill = std::exchange(wasPaused, game.isPaused.get()) || game.isPaused;
        if (phase == GameController::Phase::playing && !stoodStill) tiers.record(interval);
        if (phase == GameController::Phase::intro && lastPhase != phase) {
            tiers.beginBeach();
            renderer.setTier(tiers.tier());
        }
        lastPhase = phase;
    }

    /// One costly thing a frame, while nothing moves that would show it. The rest of the shader warm-up runs
    /// now and then during play.
    void prepareAhead() {
        const bool flyingIn = game.phase == GameController::Phase::intro;
        if (flyingIn && (overlay.prepareIcon() || feedback.prepareOne())) return;
        if (warmedUp || (!flyingIn && ++framesCold < warmUpGap)) return;
        framesCold = 0;
        if (prepareLanguage()) return;
        warmedUp = renderer.warmUp(warmUpBudget);
    }

    /// Whether to draw a picture: after every step of the game, and during a pause when something besides the
    /// beach changes.
    bool isFrameDue() {
        if (game.world().time != drawnTime) return !isQuiet() || clock.now() >= lastPresent + quietInterval;
        if (!game.isPaused || clock.now() < lastPresent + GameController::frameInterval) return false;
        return pictureIsOld || !renderer.settled() || overlay.isMoving(clock.now());
    }

    /// Behind a card nobody watches the waves: while nothing else moves, a few pictures a second are enough.
    bool isQuiet() {
        const GameController::Phase phase = game.phase;
        const bool hasCard =
            phase == GameController::Phase::finished || phase == GameController::Phase::selecting;
        return hasCard && renderer.onlyWaterMoved() && drawnCoil == game.coil() && !pictureIsOld &&
               !overlay.isMoving(clock.now());
    }

    /// Seconds until something is due.
    double spareTime() {
        if (!game.isPaused) return std::max(0.0, loop.nextDue() - loop.now());
        const bool changes =
            !window.isMinimised() && (pictureIsOld || !renderer.settled() || overlay.isMoving(clock.now()));
        return changes ? std::max(0.0, lastPresent + GameController::frameInterval - clock.now())
                       : pausedWait;
    }

    void turn() {
        window.pump(spareTime());
        if (leaveSignals.received()) loop.quit(0);
        const double start = clock.now();
        followFocus();
        input.poll(start);
        silence.poll(start);
        audio.poll(start);
        loop.runDue();
        pauseInBackground();
        stepTime = clock.now() - start;
        trace.follow(start, wasMeant, game, window, trackpads, audio);
        if (window.isMinimised() || !isFrameDue()) return;
        drawFrame();
        drawnTime = game.world().time;
        drawnCoil = game.coil();
        if (!game.isPaused &&
            (game.phase == GameController::Phase::intro || game.phase == GameController::Phase::playing))
            prepareAhead();
    }

    // WindowCommands
    void showAbout() override { overlay.showAbout(GULL_VERSION); }
    void askReset() override {
        overlay.askReset([this] { game.resetProgress(); });
    }
    void minimise() override { window.minimise(); }
    void toggleFullScreen() override {
        const bool on = !window.isFullScreen();
        window.setFullScreen(on);
        rememberFullScreen(on);
    }
    bool isFullScreen() const override { return window.isFullScreen(); }
    void takeScreenshot() override { screenshotWanted = true; }
    void quit() override { loop.quit(0); }
    void speak(const std::string& code) override {
        settings.language = code;
        language = playersLanguage(code);
    }
    bool hasFont(const Language& asked) override {
        const auto [known, isNew] = fonts.try_emplace(asked.code(), false);
        if (isNew) known->second = canShow(asked.ownName());
        return known->second;
    }
    /// The search for a font takes time if none of the usual ones serves; false when everything is known.
    bool prepareLanguage() {
        const std::size_t before = fonts.size();
        for (const Language& each : Language::all()) {
            if (fonts.size() == before) hasFont(each);
        }
        return fonts.size() > before;
    }

    LeaveSignals leaveSignals;  ///< until the first picture, which may take seconds, there is nothing to save
    std::optional<std::string> probePath;
    UptimeClock clock;
    MainLoop loop{clock};
    AppSettings settings{AppSettings::defaultFile(std::getenv)};
    Language language = playersLanguage(settings.language());
    std::map<std::string, bool> fonts;  ///< by language code: whether there is a font for it
    Window window;
    Renderer renderer;
    const bool software = graphicsInfo().isSoftware;
    TierChooser tiers{software};
    PresentPace pace{GameController::frameInterval};
    AudioDevice audio;
    Seat seat;
    Trackpads trackpads;
    GameControllers controllers{[this] { return clock.now(); }};
    CombinedHaptics haptics{{&trackpads, &controllers}};
    Feedback feedback{settings, loop, &audio, &haptics};
    GameController game;
    TouchSurface surface{game, settings, window, clock};
    PlayerInput input{trackpads, controllers, surface, game};
    SilenceHint silence{game, feedback, settings};
    IconRenderer iconSource{&renderer, game.world().textures()};
    ItemIcons icons{iconSource};
    Overlay overlay{game, settings, language, icons, [this] { return menus(); }};
    std::optional<FrameProbe> probe;
    Trace trace;
    std::function<void(const FrameTiming&)> observer;
    static constexpr double sketchLight = 0.85;    // the picture is this much darker than the look's colours
    static constexpr double skyInSea = 0.35;       // share of the sky that the sea reflects
    static constexpr double seaShare = 0.34;       // of the picture's height
    static constexpr double warmUpBudget = 0.004;  // seconds a frame
    static constexpr int warmUpGap = 10;           // frames of play
    bool warmedUp = false;
    int framesCold = 0;
    static constexpr double pausedWait = 0.2;  // seconds between two checks of the devices
    bool pictureIsOld = true;                  ///< something happened since the last picture
    bool wasPaused = false;
    bool screenshotWanted = false;
    bool wasMeant = false;
    bool hadAttention = false;
    static constexpr double quietInterval = 0.1;  // seconds
    PlotPoint drawnCoil;
    double drawnTime = -1;
    double stepTime = 0;
    double lastPresent = 0;
    GameController::Phase lastPhase = GameController::Phase::intro;
};

AppDelegate::AppDelegate(const CommandLine& commandLine) : parts_(std::make_unique<Parts>(commandLine)) {}
AppDelegate::~AppDelegate() = default;

int AppDelegate::run() {
    while (!parts_->loop.quitting()) parts_->turn();
    parts_->rememberPlace();
    return parts_->loop.exitStatus();
}

GameController& AppDelegate::game() {
    return parts_->game;
}
MainLoop& AppDelegate::loop() {
    return parts_->loop;
}
void AppDelegate::onFrame(std::function<void(const FrameTiming&)> observer) {
    parts_->observer = std::move(observer);
}

}  // namespace gull
