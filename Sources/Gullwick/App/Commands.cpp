#include "Gullwick/App/Commands.h"

#include "Gullwick/Feedback/Feedback.h"
#include "Gullwick/Game/GameController.h"
#include "Gullwick/Game/TouchSurface.h"
#include "Gullwick/Settings/AppSettings.h"

#include <fmt/format.h>

namespace gull {

namespace {

using Phase = GameController::Phase;

Menu programMenu(WindowCommands& window, const Language& language) {
    return {"Gullwick",
            {{.title = language.tr("About Gullwick"), .action = [&window] { window.showAbout(); }},
             Command::separator(),
             {.title = language.tr("Quit Gullwick"),
              .shortcut = Shortcut::withCommand(U'q'),
              .anywhere = true,
              .action = [&window] { window.quit(); }}}};
}

std::vector<Command> beaches(GameController& game, const Language& language) {
    std::vector<Command> commands;
    for (const BeachSpec& beach : Campaign::beaches()) {
        const int number = beach.number;
        commands.push_back({.title = fmt::format("{}  {}", number, language.translated(beach.name)),
                            .shortcut = Shortcut::withCommand(U'0' + static_cast<char32_t>(number)),
                            .enabled = game.progress->isUnlocked(number),
                            .action = [&game, number] {
                                if (game.progress->isUnlocked(number)) game.beginBeach(number, true);
                            }});
    }
    return commands;
}

Menu gameMenu(GameController& game, WindowCommands& window, const Language& language) {
    const auto key = [&game](const KeyAction::Any& action) { return [&game, action] { game.key(action); }; };
    return {language.tr("Game"),
            {{.title = language.tr("Dig"), .shortcut = {Key::returnKey}, .action = key(KeyAction::Confirm{})},
             {.title = language.tr("Ping (costs 5 s of tide)"),
              .shortcut = Shortcut::plain(U'h'),
              .enabled = game.phase == Phase::playing && !game.isPaused,
              .action = key(KeyAction::Ping{})},
             {.title = language.tr("Restart This Beach"),
              .shortcut = Shortcut::plain(U'r'),
              .action = key(KeyAction::Restart{})},
             {.title = language.tr("Next Beach"),
              .shortcut = Shortcut::plain(U'n'),
              .enabled = game.phase == Phase::finished && game.earnedStars > 0,
              .action = key(KeyAction::Next{})},
             {.title = language.tr("All Beaches…"),
              .shortcut = Shortcut::plain(U'l'),
              .action = key(KeyAction::Levels{})},
             {.title = language.tr("Beaches"), .submenu = beaches(game, language)},
             Command::separator(),
             {.title = language.tr("Reset Progress…"), .action = [&window] { window.askReset(); }},
             {.title = game.isPaused ? language.tr("Go On") : language.tr("Pause"),
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

/// Each by its own name. A name that no font can show appears in the current language.
std::vector<Command> languages(const AppSettings& settings, WindowCommands& window,
                               const Language& language) {
    std::vector<Command> commands{{.title = language.tr("As the System"),
                                   .checked = settings.language().empty(),
                                   .action = [&window] { window.speak({}); }},
                                  Command::separator()};
    for (const Language& each : Language::all()) {
        const bool hasFont = window.hasFont(each);
        commands.push_back({.title = hasFont ? each.ownName() : language.tr("{} (no font)", each.code()),
                            .enabled = hasFont,
                            .checked = settings.language() == each.code(),
                            .action = [&window, code = each.code()] { window.speak(code); }});
    }
    return commands;
}

Menu optionsMenu(GameController& game, TouchSurface& surface, AppSettings& settings, Feedback& feedback,
                 WindowCommands& window, const Language& language) {
    return {language.tr("Options"),
            {{.title = language.tr("Haptic Feedback"),
              .checked = settings.haptics(),
              .action = [&] { toggleHaptics(settings, feedback); }},
             {.title = language.tr("Sound"),
              .checked = settings.sound(),
              .action = [&] { toggleSound(settings, feedback); }},
             {.title = language.tr("Trackpad Sweeps the Beach"),
              .shortcut = {Key::escape},
              .checked = settings.trackpadSweep(),
              .action = [&] { toggleTrackpad(game, surface); },
              // Opening the menu has freed the pointer, so the check mark decides.
              .chosen = [&] { surface.setTrackpad(!settings.trackpadSweep()); }},
             Command::separator(),
             {.title = language.tr("Show Ticks"),
              .checked = settings.showTicks(),
              .action = [&] { settings.showTicks = !settings.showTicks(); }},
             {.title = language.tr("Reduce Motion"),
              .checked = settings.reduceMotion(),
              .action = [&] { settings.reduceMotion = !settings.reduceMotion(); }},
             {.title = language.tr("Pause in Background"),
              .checked = settings.pauseInBackground(),
              .action = [&] { settings.pauseInBackground = !settings.pauseInBackground(); }},
             {.title = language.tr("Effects Volume"), .submenu = volumes(settings.effectsVolume, feedback)},
             {.title = language.tr("Surf Volume"), .submenu = volumes(settings.surfVolume, feedback)},
             {.title = language.tr("Language"), .submenu = languages(settings, window, language)}}};
}

Menu windowMenu(WindowCommands& window, const Language& language) {
    return {
        language.tr("Window"),
        {{.title = language.tr("Minimize"),
          .shortcut = Shortcut::withCommand(U'm'),
          .action = [&window] { window.minimise(); }},
         {.title = window.isFullScreen() ? language.tr("Exit Full Screen") : language.tr("Enter Full Screen"),
          .shortcut = {Key::f11},
          .anywhere = true,
          .action = [&window] { window.toggleFullScreen(); }},
         {.title = language.tr("Take Screenshot"),
          .shortcut = {Key::f12},
          .anywhere = true,
          .action = [&window] { window.takeScreenshot(); }}}};
}

}  // namespace

std::vector<Menu> buildMenus(GameController& game, TouchSurface& surface, AppSettings& settings,
                             Feedback& feedback, WindowCommands& window, const Language& language) {
    return {programMenu(window, language), gameMenu(game, window, language),
            optionsMenu(game, surface, settings, feedback, window, language), windowMenu(window, language)};
}

}  // namespace gull
