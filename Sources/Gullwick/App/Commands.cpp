#include "Gullwick/App/Commands.h"

#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Game/TouchSurface.h"
#include "Gullwick/Settings/AppSettings.h"

#include <fmt/format.h>

namespace gull {

namespace {

using Phase = GameController::Phase;

Menu programMenu(WindowCommands& window) {
    return {"Gullwick",
            {{.title = "About Gullwick", .action = [&window] { window.showAbout(); }},
             Command::separator(),
             {.title = "Quit Gullwick",
              .shortcut = Shortcut::withCommand(U'q'),
              .anywhere = true,
              .action = [&window] { window.quit(); }}}};
}

std::vector<Command> beaches(GameController& game) {
    std::vector<Command> commands;
    for (const BeachSpec& beach : Campaign::beaches()) {
        const int number = beach.number;
        commands.push_back({.title = fmt::format("{}  {}", number, beach.name),
                            .shortcut = Shortcut::withCommand(U'0' + static_cast<char32_t>(number)),
                            .enabled = game.progress->isUnlocked(number),
                            .action = [&game, number] {
                                if (game.progress->isUnlocked(number)) game.beginBeach(number, true);
                            }});
    }
    return commands;
}

Menu gameMenu(GameController& game, WindowCommands& window) {
    const auto key = [&game](const KeyAction::Any& action) { return [&game, action] { game.key(action); }; };
    return {"Game",
            {{.title = "Dig", .shortcut = {Key::returnKey}, .action = key(KeyAction::Confirm{})},
             {.title = "Ping (costs 5 s of tide)",
              .shortcut = Shortcut::plain(U'h'),
              .enabled = game.phase == Phase::playing && !game.isPaused,
              .action = key(KeyAction::Ping{})},
             {.title = "Restart This Beach",
              .shortcut = Shortcut::plain(U'r'),
              .action = key(KeyAction::Restart{})},
             {.title = "Next Beach",
              .shortcut = Shortcut::plain(U'n'),
              .enabled = game.phase == Phase::finished && game.earnedStars > 0,
              .action = key(KeyAction::Next{})},
             {.title = "All Beaches…", .shortcut = Shortcut::plain(U'l'), .action = key(KeyAction::Levels{})},
             {.title = "Beaches", .submenu = beaches(game)},
             Command::separator(),
             {.title = "Reset Progress…", .action = [&window] { window.askReset(); }},
             {.title = game.isPaused ? "Go On" : "Pause",
              .shortcut = Shortcut::plain(U'p'),
              .enabled = game.phase == Phase::playing,
              .action = key(KeyAction::Pause{})}}};
}

void toggleHaptics(AppSettings& settings, Feedback& feedback) {
    settings.haptics = !settings.haptics();
    if (settings.haptics()) feedback.thump(2, 0.06, HapticPattern::levelChange);
}

void toggleSound(AppSettings& settings, Feedback& feedback) {
    settings.sound = !settings.sound();
    feedback.applySoundSwitch();
    if (settings.sound()) feedback.play(Sound::found, 1.0F);
}

void toggleTrackpad(GameController& game, TouchSurface& surface) {
    if (game.phase == Phase::selecting) {
        game.closeSelect();
    } else {
        surface.toggleTrackpad();
    }
}

/// From full to silent, in tenths.
std::vector<Command> volumes(Setting<int>& volume, Feedback& feedback) {
    std::vector<Command> commands;
    for (int percent = 100; percent >= 0; percent -= 10) {
        commands.push_back({.title = fmt::format("{} %", percent),
                            .checked = volume() == percent,
                            .action = [&volume, &feedback, percent] {
                                volume = percent;
                                feedback.applySoundSwitch();
                                feedback.play(Sound::tap, 1.0F);
                            }});
    }
    return commands;
}

Menu optionsMenu(GameController& game, TouchSurface& surface, AppSettings& settings, Feedback& feedback) {
    return {
        "Options",
        {{.title = "Haptic Feedback",
          .checked = settings.haptics(),
          .action = [&] { toggleHaptics(settings, feedback); }},
         {.title = "Sound", .checked = settings.sound(), .action = [&] { toggleSound(settings, feedback); }},
         {.title = "Trackpad Sweeps the Beach",
          .shortcut = {Key::escape},
          .checked = settings.trackpadSweep(),
          .action = [&] { toggleTrackpad(game, surface); },
          // Opening the menu has freed the pointer: what counts is the check mark.
          .chosen = [&] { surface.setTrackpad(!settings.trackpadSweep()); }},
         Command::separator(),
         {.title = "Show Ticks",
          .checked = settings.showTicks(),
          .action = [&] { settings.showTicks = !settings.showTicks(); }},
         {.title = "Reduce Motion",
          .checked = settings.reduceMotion(),
          .action = [&] { settings.reduceMotion = !settings.reduceMotion(); }},
         {.title = "Pause in Background",
          .checked = settings.pauseInBackground(),
          .action = [&] { settings.pauseInBackground = !settings.pauseInBackground(); }},
         {.title = "Effects Volume", .submenu = volumes(settings.effectsVolume, feedback)},
         {.title = "Surf Volume", .submenu = volumes(settings.surfVolume, feedback)}}};
}

Menu windowMenu(WindowCommands& window) {
    return {"Window",
            {{.title = "Minimize",
              .shortcut = Shortcut::withCommand(U'm'),
              .action = [&window] { window.minimise(); }},
             {.title = window.isFullScreen() ? "Exit Full Screen" : "Enter Full Screen",
              .shortcut = {Key::f11},
              .anywhere = true,
              .action = [&window] { window.toggleFullScreen(); }},
             {.title = "Take Screenshot", .shortcut = {Key::f12}, .anywhere = true, .action = [&window] {
                  window.takeScreenshot();
              }}}};
}

}  // namespace

std::vector<Menu> buildMenus(GameController& game, TouchSurface& surface, AppSettings& settings,
                             Feedback& feedback, WindowCommands& window) {
    return {programMenu(window), gameMenu(game, window), optionsMenu(game, surface, settings, feedback),
            windowMenu(window)};
}

}  // namespace gull
